#pragma once

class QPainter;

namespace renderizador {

/// Grosor, en píxeles de la vista, de una línea de un píxel.
double grosorLinea(const QPainter& pintor);

} // namespace renderizador
