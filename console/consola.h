#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace consola {

/// Hace lo que piden los argumentos (sin el nombre del programa) y devuelve el estado de salida.
/// `interactiva` dice si la salida de errores es una pantalla.
int ejecutar(const std::vector<std::string>& argumentos, std::istream& entrada,
             std::ostream& salida, std::ostream& errores, bool interactiva = false);

} // namespace consola
