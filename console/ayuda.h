#pragma once

#include "console/orden.h"

#include <iosfwd>

namespace consola {

/// La ayuda general: todas las órdenes con sus opciones.
void escribirAyuda(std::ostream& salida);
void escribirAyuda(std::ostream& salida, const Orden& orden);

} // namespace consola
