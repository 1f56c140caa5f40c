#pragma once

#include <functional>
#include <string>

#include "formula/tokenizador.h"

namespace motor_formulas {

/// Sustituye cada referencia de una fórmula por lo que `f` devuelva y deja intacto cada otro byte;
/// si `f` devuelve vacío la referencia queda como estaba.
std::string reescribirRefs(const std::string& texto,
                           const std::function<std::string(const RefCelda&)>& f);

} // namespace motor_formulas
