#pragma once

#include <string>
#include <string_view>

namespace nucleo {

/// Letras de una columna (0 es "A", 26 "AA"); vacío si la columna es negativa.
std::string nombreColumna(int columna);

/// Columna que nombran unas letras, sin distinguir mayúsculas; -1 si no nombran ninguna de las 702.
int columnaDesdeNombre(std::string_view letras);

/// Dirección visible de una celda: (9, 27) es "AB10".
std::string nombreRef(int fila, int columna);

} // namespace nucleo
