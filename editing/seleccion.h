#pragma once

#include "model/rango.h"

#include <algorithm>
#include <cstdint>

namespace editor {

/// Rectángulo seleccionado: el ancla queda fija y la esquina activa, que lleva el cursor, se mueve.
/// Las esquinas no están ordenadas.
struct Seleccion {
    std::int32_t anclaFila = 0;
    std::int32_t anclaCol = 0;
    std::int32_t activaFila = 0;
    std::int32_t activaCol = 0;

    int filaMin() const { return std::min(anclaFila, activaFila); }
    int filaMax() const { return std::max(anclaFila, activaFila); }
    int colMin() const { return std::min(anclaCol, activaCol); }
    int colMax() const { return std::max(anclaCol, activaCol); }
    /// El rectángulo, normalizado.
    nucleo::RangoCeldas rango() const { return {filaMin(), colMin(), filaMax(), colMax()}; }
    bool esUnaCelda() const { return anclaFila == activaFila && anclaCol == activaCol; }

    bool operator==(const Seleccion&) const = default;
};

} // namespace editor
