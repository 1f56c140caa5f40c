#include "formula/functions/catalogo.h"

#include "formula/functions/familias.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace motor_formulas {

namespace {

std::vector<Funcion> reunirFamilias() {
    std::vector<Funcion> todas;
    for (const std::span<const Funcion> familia :
         {funcionesMatematicas(), funcionesEstadisticas(), funcionesCondicionales(),
          funcionesLogicas(), funcionesBusqueda(), funcionesTexto(), funcionesFechas(),
          funcionesFinancieras()})
        todas.insert(todas.end(), familia.begin(), familia.end());
    std::stable_partition(todas.begin(), todas.end(),
                          [](const Funcion& funcion) { return funcion.manejador != nullptr; });
    return todas;
}

/// Tabla sin colisiones: al construirla se busca una semilla con la que cada nombre cae en una
/// casilla distinta, y así una consulta mira una sola casilla.
class IndiceNombres {
  public:
    explicit IndiceNombres(std::span<const Funcion> todas)
        : casillas_(std::bit_ceil(todas.size() * 4)) {
        while (!repartir(todas))
            ++semilla_;
    }

    const Funcion* buscar(std::string_view nombre) const {
        const Funcion* candidata = casillas_[casilla(nombre)];
        return candidata != nullptr && candidata->nombre == nombre ? candidata : nullptr;
    }

  private:
    bool repartir(std::span<const Funcion> todas) {
        std::fill(casillas_.begin(), casillas_.end(), nullptr);
        for (const Funcion& funcion : todas) {
            const Funcion*& destino = casillas_[casilla(funcion.nombre)];
            if (destino != nullptr && destino->nombre != funcion.nombre)
                return false;
            destino = &funcion;
        }
        return true;
    }

    std::size_t casilla(std::string_view nombre) const {
        std::uint64_t mezcla = semilla_ + nombre.size();
        for (const char byte : nombre)
            mezcla = (mezcla ^ static_cast<unsigned char>(byte)) * 0x9e3779b97f4a7c15ULL;
        return (mezcla >> 32) & (casillas_.size() - 1);
    }

    std::vector<const Funcion*> casillas_;
    std::uint64_t semilla_ = 0;
};

} // namespace

std::span<const Funcion> funciones() {
    static const std::vector<Funcion> todas = reunirFamilias();
    return todas;
}

const Funcion* buscarFuncion(std::string_view nombre) {
    static const IndiceNombres indice(funciones());
    return indice.buscar(nombre);
}

nucleo::Valor ejecutarFuncion(const Funcion& funcion, std::vector<Arg>& args,
                              Evaluador& evaluador) {
    if (!funcion.cuenta.admite(args.size()))
        return nucleo::Valor::deError(nucleo::ErrorCelda::ValorInvalido);
    return funcion.manejador(args, evaluador);
}

} // namespace motor_formulas
