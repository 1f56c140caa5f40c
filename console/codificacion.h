#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace consola {

/// Lo que devuelve `siguientePunto` cuando los bytes no son UTF-8 correcto.
inline constexpr char32_t kPuntoInvalido = 0xFFFFFFFF;

/// Lee el punto de código que empieza en `posicion` y avanza hasta el siguiente. Sobre bytes que no
/// son UTF-8 (también los sustitutos y las formas largas) avanza uno y da `kPuntoInvalido`.
char32_t siguientePunto(std::string_view texto, std::size_t& posicion);

/// Añade un punto de código menor que 0x110000 en UTF-8.
void anadirPunto(std::string& texto, char32_t punto);

bool esUtf8(std::string_view texto);

/// Lee los bytes como los escriben los programas antiguos de Windows en español.
std::string desdeWindows1252(std::string_view bytes);

} // namespace consola
