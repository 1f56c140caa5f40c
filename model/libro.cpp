#include "model/libro.h"

#include <utility>

namespace nucleo {

Libro::Libro() {
    reiniciar();
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): pide memoria para la hoja del otro.
Libro::Libro(Libro&& otro) : Libro() {
    intercambiar(otro);
}

Libro& Libro::operator=(Libro&& otro) noexcept {
    intercambiar(otro);
    return *this;
}

void Libro::intercambiar(Libro& otro) noexcept {
    std::swap(hojas, otro.hojas);
    std::swap(hojaActiva, otro.hojaActiva);
    std::swap(ruta, otro.ruta);
    std::swap(modificado, otro.modificado);
    // Cada vista mira a su grafo: viaja con él.
    std::swap(grafo_, otro.grafo_);
    std::swap(dependientes, otro.dependientes);
    std::swap(precedentes, otro.precedentes);
}

void Libro::reiniciar() {
    // Se reutiliza la primera hoja: así reiniciar no pide memoria ni cuando se ha agotado.
    if (!hojas.empty() && hojas.front())
        *hojas.front() = Hoja{};
    else
        hojas.insert(hojas.begin(), std::make_unique<Hoja>());
    hojas.resize(1);
    limpiarGrafo();
    hojaActiva = 0;
    ruta.clear();
    modificado = false;
}

Hoja* Libro::agregarHoja() {
    auto nueva = std::make_unique<Hoja>();
    std::size_t numero = hojas.size() + 1;
    do {
        nueva->nombre = "Hoja " + std::to_string(numero++);
    } while (indiceHoja(nueva->nombre) >= 0);
    hojas.push_back(std::move(nueva));
    modificado = true;
    return hojas.back().get();
}

int Libro::indiceHoja(std::string_view nombre) const {
    for (std::size_t i = 0; i < hojas.size(); ++i) {
        if (hojas[i]->nombre == nombre)
            return static_cast<int>(i);
    }
    return -1;
}

bool Libro::eliminarHoja(int indice) {
    if (hojas.size() <= 1 || indice < 0 || static_cast<std::size_t>(indice) >= hojas.size())
        return false;
    hojas.erase(hojas.begin() + indice);
    const int quedan = static_cast<int>(hojas.size());
    if (hojaActiva >= quedan)
        hojaActiva = quedan - 1;
    modificado = true;
    return true;
}

bool Libro::renombrarHoja(int indice, const std::string& nombre) {
    if (indice < 0 || static_cast<std::size_t>(indice) >= hojas.size() || nombre.empty())
        return false;
    const int duenya = indiceHoja(nombre);
    if (duenya >= 0 && duenya != indice)
        return false;
    hojas[static_cast<std::size_t>(indice)]->nombre = nombre;
    modificado = true;
    return true;
}

} // namespace nucleo
