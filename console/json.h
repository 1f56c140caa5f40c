#pragma once

#include <string>
#include <string_view>

namespace consola {

/// Una cadena JSON con sus comillas; lo que no es UTF-8 se sustituye por U+FFFD.
std::string cadenaJson(std::string_view texto);

/// El número más corto que se lee igual; los que JSON no tiene (NaN, infinitos) son "null".
std::string numeroJson(double numero);

} // namespace consola
