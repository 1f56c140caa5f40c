#pragma once

#include "formula/nodo_expr.h"

#include <memory>
#include <string>

namespace motor_formulas {

/// Convierte el texto de una fórmula (sin su "=") en un árbol.
class Parser {
  public:
    /// Nulo si el texto no es una fórmula. El anidamiento no gasta pila.
    std::unique_ptr<NodoExpr> parsear(const std::string& formula);
};

} // namespace motor_formulas
