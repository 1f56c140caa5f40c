#pragma once

#include <cstdint>

namespace nucleo {

/// Rectángulo de celdas con las dos esquinas incluidas. Normalizado cuando `fila1 <= fila2` y
/// `col1 <= col2`; quien lo construye decide si lo está.
struct RangoCeldas {
    int fila1 = 0;
    int col1 = 0;
    int fila2 = 0;
    int col2 = 0;

    bool contiene(int fila, int col) const {
        return fila1 <= fila && fila <= fila2 && col1 <= col && col <= col2;
    }
    bool interseca(const RangoCeldas& otro) const {
        return fila1 <= otro.fila2 && otro.fila1 <= fila2 && col1 <= otro.col2 && otro.col1 <= col2;
    }
    /// Número de celdas de un rango normalizado.
    std::int64_t celdas() const {
        return (std::int64_t{fila2} - fila1 + 1) * (std::int64_t{col2} - col1 + 1);
    }
    bool operator==(const RangoCeldas&) const = default;
};

} // namespace nucleo
