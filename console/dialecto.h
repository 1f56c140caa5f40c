#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace consola {

/// Cómo separa sus campos un archivo de texto.
struct Dialecto {
    char separador = ';';
    bool comillas = true; ///< un campo entre comillas puede contener separadores y saltos de línea

    bool operator==(const Dialecto&) const = default;
};

/// Valores separados por tabulaciones, sin comillas ni escapes.
inline constexpr Dialecto kTsv{'\t', false};
/// El separador que entiende quien escribe los decimales con coma.
inline constexpr Dialecto kCsv{';', true};

/// El separador que pide el usuario: un carácter ASCII visible, o "tab". Nada si no sirve
/// (comillas, letras, cifras y los signos de un número confundirían los campos).
std::optional<char> separadorPedido(std::string_view texto);

/// El separador, ";" o ",", que parece usar el comienzo de un archivo. Gana el que parte todos los
/// registros en el mismo número de campos; si valen los dos o ninguno, ";" si está en el primero.
char detectarSeparador(std::string_view comienzo);

} // namespace consola
