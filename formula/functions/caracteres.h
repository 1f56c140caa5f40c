#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

/// Bytes del carácter UTF-8 que empieza en `pos` (dentro del texto), según su byte inicial: de 1 a
/// 4, o 1 si el texto se acaba antes.
std::size_t largoCaracter(std::string_view texto, std::size_t pos);

/// Byte en que acaban los primeros `cuantos` caracteres; el largo del texto si no hay tantos.
std::size_t finDeCaracteres(std::string_view texto, std::size_t cuantos);

std::size_t contarCaracteres(std::string_view texto);

/// Divide un texto en sus caracteres; uno mal formado solo se divide de otro modo.
std::vector<std::string> puntosDeCodigo(std::string_view texto);

} // namespace motor_formulas
