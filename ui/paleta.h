#pragma once

#include <QPalette>

namespace interfaz {

/// Colores de lo que las hojas de estilo no nombran: listas y campos de los cuadros de archivos.
QPalette paletaClara();
QPalette paletaOscura();

} // namespace interfaz
