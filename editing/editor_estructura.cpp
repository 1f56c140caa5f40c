#include "editing/cotas.h"
#include "editing/desplazamiento.h"
#include "editing/editor.h"

#include <algorithm>

namespace editor {

using nucleo::Hoja;

void Editor::desplazar(bool filas, int desde, int delta) {
    Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    const Desplazamiento paso{filas, desde, delta};
    registrar({capturar(), hoja->identidad, paso.inverso()});
    desplazarCeldas(*hoja, filas, desde, delta);
    motor_->reescribirTrasEstructura(hoja->nombre, filas, desde, delta);
    libro_.modificado = true;
}

// Más allá del final de la cuadrícula una cantidad mayor no inserta ni elimina nada más.

void Editor::insertarFilas(int fila, int cantidad) {
    if (cantidad < 1)
        return;
    fila = acotarFila(fila);
    desplazar(true, fila, std::min(cantidad, nucleo::kFilas - fila));
}

void Editor::insertarColumnas(int col, int cantidad) {
    if (cantidad < 1)
        return;
    col = acotarColumna(col);
    desplazar(false, col, std::min(cantidad, nucleo::kColumnas - col));
}

void Editor::eliminarFilas(int fila, int cantidad) {
    if (cantidad < 1 || !hojaActiva())
        return;
    fila = acotarFila(fila);
    desplazar(true, fila, -std::min(cantidad, nucleo::kFilas - fila));
    colocar(fila, acotarColumna(seleccion_.activaCol));
    normalizarActiva();
}

void Editor::eliminarColumnas(int col, int cantidad) {
    if (cantidad < 1 || !hojaActiva())
        return;
    col = acotarColumna(col);
    desplazar(false, col, -std::min(cantidad, nucleo::kColumnas - col));
    colocar(acotarFila(seleccion_.activaFila), col);
    normalizarActiva();
}

} // namespace editor
