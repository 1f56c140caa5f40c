#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

/// Divide un texto UTF-8 en caracteres según su byte inicial; un texto mal formado solo se divide de
/// otro modo.
std::vector<std::string> puntosDeCodigo(std::string_view texto);

} // namespace motor_formulas
