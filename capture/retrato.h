#pragma once

#include "capture/peticion.h"

#include <QPixmap>

namespace captura {

/// Abre el libro en la ventana de verdad, la deja como se pide y devuelve su imagen; nula si no se
/// puede abrir. El libro es legible y la hoja existe: la ventana preguntaría, y nadie contesta.
QPixmap retratar(const Peticion& peticion);

} // namespace captura
