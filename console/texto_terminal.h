#pragma once

#include <string>
#include <string_view>

namespace consola {

/// Columnas que ocupa un texto en una terminal: 0 los signos que se combinan, 2 los ideogramas.
int anchoVisible(std::string_view texto);

/// El texto sin nada que la terminal pueda obedecer: los saltos de línea se ven como "↵", las
/// tabulaciones como espacios, y los demás caracteres de control, los que cambian el sentido de la
/// escritura y los bytes que no son UTF-8, como "�".
std::string paraTerminal(std::string_view texto);

} // namespace consola
