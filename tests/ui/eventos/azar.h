#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace pruebas {

/// Decisiones al azar que dependen solo de la semilla, sea cual sea la biblioteca estándar.
class Azar {
  public:
    explicit Azar(std::uint64_t semilla) : fuente_(semilla) {}

    /// De 0 a `cuantos - 1`.
    int hasta(int cuantos) {
        return static_cast<int>(fuente_() % static_cast<std::uint64_t>(cuantos));
    }
    /// De `desde` a `fin`, los dos incluidos.
    int entre(int desde, int fin) { return desde + hasta(fin - desde + 1); }
    bool deCada(int cuantos) { return hasta(cuantos) == 0; }
    template <typename Lista> const auto& uno(const Lista& lista) {
        return lista[static_cast<std::size_t>(hasta(static_cast<int>(std::size(lista))))];
    }

  private:
    std::mt19937_64 fuente_;
};

} // namespace pruebas
