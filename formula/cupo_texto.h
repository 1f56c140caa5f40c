#pragma once

#include "model/limites.h"

#include <algorithm>
#include <cstddef>

namespace motor_formulas {

/// Cuánto texto pueden hacer las fórmulas de un recálculo. Sin él, veinte celdas que se doblan unas
/// a otras, o mil que copian un texto enorme, agotarían la memoria con un archivo diminuto.
class CupoTexto {
  public:
    void reponer() { hecho_ = 0; }

    /// Bytes del texto más largo que aún puede hacerse.
    std::size_t maximo() const {
        return std::clamp(kMaximoEnTotal - hecho_, kLargoLibre, nucleo::kMaximoTexto);
    }

    /// Gasta los `nuevos` bytes que hay que copiar para hacer un texto de `largo`. Falso, sin
    /// gastar nada, si no puede hacerse.
    bool gastar(std::size_t largo, std::size_t nuevos) {
        if (largo <= kLargoLibre)
            return true;
        if (largo > nucleo::kMaximoTexto || nuevos > kMaximoEnTotal - hecho_)
            return false;
        hecho_ += nuevos;
        return true;
    }

  private:
    static constexpr std::size_t kMaximoEnTotal = std::size_t{256} * 1024 * 1024;
    /// Los textos así de cortos no pesan mucho más que la fórmula que los hace: no se cuentan.
    static constexpr std::size_t kLargoLibre = 256;

    std::size_t hecho_ = 0;
};

} // namespace motor_formulas
