#pragma once

#include <string>

namespace impresion {

/// Estados de salida de los programas, los mismos que los de la consola.
enum Estado : int { kBien = 0, kMalUso = 1, kNoSeLee = 2, kNoSeEscribe = 3 };

/// Cómo terminó el trabajo; el mensaje, de una línea, es para la salida de errores.
struct Resultado {
    Estado estado = kBien;
    std::string mensaje;
};

} // namespace impresion
