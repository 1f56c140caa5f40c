#pragma once

#include "formula/tramo_filas.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace motor_formulas {

/// Las filas que tiene cada clave, de arriba abajo. Se llena de una vez, de la primera fila a la
/// última: empezar, añadir, terminar; y entonces responde. Cuesta lo que sus filas, y preguntar por
/// una clave que está una sola vez, un acceso a la memoria.
class FilasPorClave {
  public:
    void empezar();
    void anadir(std::uint64_t clave, int fila);
    void terminar();

    /// Las de una clave que caen en el tramo.
    std::span<const int> filas(std::uint64_t clave, TramoFilas tramo) const;

  private:
    struct Sitio {
        std::uint64_t clave = 0;
        int primera = kSinFilas;  ///< la fila si es una sola; si no, dónde empiezan en `filas_`
        std::uint32_t cuenta = 0; ///< 0 en un sitio libre
    };
    struct Anadida {
        std::uint64_t clave;
        int fila;
        std::uint32_t sitio;
    };
    static constexpr int kSinFilas = -1;

    /// El sitio de una clave, o el libre en el que se pondría.
    std::size_t sitioDe(std::uint64_t clave) const;

    std::vector<Sitio> sitios_; ///< potencia de dos, la mitad libres
    std::vector<Anadida> anadidas_;
    std::vector<int> filas_;
};

} // namespace motor_formulas
