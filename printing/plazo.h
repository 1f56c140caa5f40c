#pragma once

namespace impresion {

/// Estado con que acaba un programa al que se le acaba el plazo o la memoria.
inline constexpr int kFueraDePlazo = 4;

/// Acaba el programa, con `kFueraDePlazo`, cuando pasen esos milisegundos. Con 0 deja de contar.
void ponerPlazo(int milisegundos);

/// Pone un tope a la memoria que el programa puede pedir: al pasarlo, acaba con `kFueraDePlazo`.
void toparMemoria(unsigned long megabytes);

} // namespace impresion
