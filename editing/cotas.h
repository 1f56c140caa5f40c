#pragma once

#include "model/limites.h"

#include <algorithm>
#include <cstdint>

namespace editor {

/// La fila de la cuadrícula más cercana. Admite sumas hechas en 64 bits.
constexpr int acotarFila(std::int64_t fila) {
    return static_cast<int>(std::clamp<std::int64_t>(fila, 0, nucleo::kUltimaFila));
}

/// La columna de la cuadrícula más cercana. Admite sumas hechas en 64 bits.
constexpr int acotarColumna(std::int64_t col) {
    return static_cast<int>(std::clamp<std::int64_t>(col, 0, nucleo::kUltimaColumna));
}

} // namespace editor
