#pragma once

#include "formula/tramo_filas.h"

#include <cstdint>
#include <vector>

namespace motor_formulas {

/// Qué filas de una columna han cambiado desde un momento dado. Los momentos se cuentan en todo el
/// recálculo; solo se guardan los cambios que pueden ser el menor o el mayor desde alguno.
class CambiosColumna {
  public:
    void apuntar(std::uint64_t momento, int fila);
    /// De la menor a la mayor fila cambiadas después de un momento; al revés si ninguna.
    TramoFilas despuesDe(std::uint64_t momento) const;

  private:
    struct Cambio {
        std::uint64_t momento;
        int fila;
    };
    std::vector<Cambio> menores_; ///< filas crecientes
    std::vector<Cambio> mayores_; ///< filas decrecientes
};

} // namespace motor_formulas
