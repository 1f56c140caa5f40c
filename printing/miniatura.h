#pragma once

#include "model/hoja.h"

#include <QImage>

namespace impresion {

inline constexpr int kLadoMinimoMiniatura = 16;
inline constexpr int kLadoMaximoMiniatura = 1024;

/// La esquina superior izquierda de una hoja, en un cuadrado de `lado` píxeles, entre los límites
/// de arriba.
QImage dibujarMiniatura(const nucleo::Hoja& hoja, int lado);

} // namespace impresion
