#pragma once

#include <cstdint>

namespace pruebas {

/// Hace que el programa que empiece en este proceso sea usado por alguien: contesta a lo que
/// pregunta, acorta el reloj de la recuperación y edita con sucesos sin parar. Por la salida dice,
/// una cosa por línea y antes de que pueda llegar al disco, lo que va pasando (`Vida` lo lee).
void conducir(std::uint64_t semilla);

} // namespace pruebas
