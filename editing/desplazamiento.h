#pragma once

#include "model/hoja.h"

#include <optional>

namespace editor {

/// Inserción (`delta` > 0) o eliminación (`delta` < 0) de filas o columnas a partir de `desde`.
/// Con `delta` 0 nada se mueve.
struct Desplazamiento {
    bool filas = true;
    int desde = 0;
    int delta = 0;

    /// Dónde queda una fila o columna; nada si se elimina o sale de la cuadrícula.
    std::optional<int> destino(int coordenada) const;
    /// El desplazamiento que devuelve a su sitio lo que este mueve.
    Desplazamiento inverso() const { return {filas, desde, -delta}; }
};

/// Mueve celdas, tamaños y fusiones de la hoja; las fórmulas se quedan como están escritas. Lo que
/// saldría de la cuadrícula se pierde, y una fusión que sobresaldría se recorta en su borde.
/// `delta` está entre -65536 y 65536.
void desplazarCeldas(nucleo::Hoja& hoja, bool filas, int desde, int delta);

} // namespace editor
