#include "tests/editing/libro_llano.h"

#include "model/direcciones.h"
#include "model/numeros.h"

#include <algorithm>
#include <utility>

namespace pruebas {

namespace {

// Filas y columnas que se siguen por su número: bastantes más de las que las pruebas tocan.
constexpr int kFilasSeguidas = 400;
constexpr int kColumnasSeguidas = 120;

} // namespace

void HistorialLlano::registrar(const Foto& antes) {
    deshacer_.push_back(antes);
    if (deshacer_.size() > 15)
        deshacer_.erase(deshacer_.begin());
    rehacer_.clear();
}

bool HistorialLlano::volver(std::vector<Foto>& desde, std::vector<Foto>& hacia, Foto& presente) {
    if (desde.empty())
        return false;
    hacia.push_back(std::move(presente));
    presente = std::move(desde.back());
    desde.pop_back();
    return true;
}

Foto::Ejes HistorialLlano::ejesNuevos() {
    Foto::Ejes ejes;
    insertar(ejes, true, 0, kFilasSeguidas);
    insertar(ejes, false, 0, kColumnasSeguidas);
    return ejes;
}

void HistorialLlano::insertar(Foto::Ejes& ejes, bool filas, int desde, int cantidad) {
    std::vector<int>& eje = filas ? ejes.filas : ejes.columnas;
    for (int i = 0; i < cantidad; ++i)
        eje.insert(eje.begin() + desde + i, siguiente_++);
    eje.resize(static_cast<std::size_t>(filas ? kFilasSeguidas : kColumnasSeguidas));
}

void HistorialLlano::eliminar(Foto::Ejes& ejes, bool filas, int desde, int cantidad) {
    std::vector<int>& eje = filas ? ejes.filas : ejes.columnas;
    eje.erase(eje.begin() + desde, eje.begin() + desde + cantidad);
    for (int i = 0; i < cantidad; ++i)
        eje.push_back(siguiente_++);
}

void HistorialLlano::redimensionar(const Foto::Ejes& ejes, bool fila, int indice, int tamano) {
    tamanos_[(fila ? ejes.filas : ejes.columnas)[static_cast<std::size_t>(indice)]] = tamano;
}

std::map<int, int> HistorialLlano::tamanos(const Foto::Ejes& ejes, bool filas) const {
    std::map<int, int> resultado;
    const std::vector<int>& eje = filas ? ejes.filas : ejes.columnas;
    for (std::size_t i = 0; i < eje.size(); ++i) {
        if (const auto it = tamanos_.find(eje[i]); it != tamanos_.end())
            resultado[static_cast<int>(i)] = it->second;
    }
    return resultado;
}

HojaLlana copiaLlana(const nucleo::Hoja& hoja) {
    HojaLlana llana{
        hoja.nombre, {}, hoja.fusiones, hoja.filasInmovilizadas, hoja.columnasInmovilizadas};
    for (const auto& [clave, celda] : hoja.celdas)
        llana.celdas.emplace(clave, celda);
    return llana;
}

std::vector<HojaLlana> copiaLlana(const nucleo::Libro& libro) {
    std::vector<HojaLlana> hojas;
    for (const auto& hoja : libro.hojas)
        hojas.push_back(copiaLlana(*hoja));
    return hojas;
}

std::string diferencia(const HojaLlana& una, const HojaLlana& otra) {
    if (una == otra)
        return {};
    if (una.nombre != otra.nombre)
        return "nombres: " + una.nombre + " y " + otra.nombre;
    if (una.fusiones != otra.fusiones)
        return una.nombre + ": las fusiones";
    const auto descrita = [](const HojaLlana& hoja, std::uint64_t clave) -> std::string {
        const auto it = hoja.celdas.find(clave);
        if (it == hoja.celdas.end())
            return "(no existe)";
        const nucleo::Celda& c = it->second;
        return "[" + c.entrada + " → " + nucleo::textoVisible(c.valor, c.formato) + ", tipo " +
               std::to_string(static_cast<int>(c.tipo)) + ", valor de tipo " +
               std::to_string(static_cast<int>(c.valor.tipo)) + "]";
    };
    for (const HojaLlana* hoja : {&una, &otra}) {
        for (const auto& par : hoja->celdas) {
            const std::uint64_t clave = par.first;
            const auto a = una.celdas.find(clave);
            const auto b = otra.celdas.find(clave);
            if (a == una.celdas.end() || b == otra.celdas.end() || !(a->second == b->second))
                return una.nombre + "!" +
                       nucleo::nombreRef(nucleo::filaDeClaveLocal(clave),
                                         nucleo::columnaDeClaveLocal(clave)) +
                       ": " + descrita(una, clave) + " y " + descrita(otra, clave);
        }
    }
    return una.nombre + ": filas o columnas inmovilizadas";
}

std::string diferencia(const std::vector<nucleo::Hoja>& unas,
                       const std::vector<nucleo::Hoja>& otras) {
    if (unas.size() != otras.size())
        return "hay " + std::to_string(unas.size()) + " hojas y " + std::to_string(otras.size());
    for (std::size_t i = 0; i < unas.size(); ++i) {
        if (unas[i] == otras[i])
            continue;
        const std::string celdas = diferencia(copiaLlana(unas[i]), copiaLlana(otras[i]));
        return celdas.empty() ? unas[i].nombre + ": los tamaños" : celdas;
    }
    return {};
}

} // namespace pruebas
