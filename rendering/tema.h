#pragma once

#include <QColor>

namespace renderizador {

/// Colores de la cuadrícula. Es un valor: quien lo usa guarda su copia.
struct Tema {
    bool oscuro = false;
    QColor fondo;              ///< fondo de toda la vista y de las celdas
    QColor lineas;             ///< líneas entre celdas y separadores de los encabezados
    QColor texto;              ///< texto de celda sin color propio
    QColor fondoEncabezado;    ///< fondo de los encabezados de fila y columna
    QColor textoEncabezado;    ///< rótulos de los encabezados
    QColor fondoEncabezadoSel; ///< fondo de los encabezados seleccionados
    QColor textoEncabezadoSel; ///< rótulos de los encabezados seleccionados
    QColor bordeSeleccion;     ///< contorno de la selección
    QColor rellenoSeleccion;   ///< relleno translúcido de la selección
    QColor lineaPanelFijo;     ///< línea que marca el límite de lo inmovilizado
    QColor textoError;         ///< texto de una celda que vale un error

    bool operator==(const Tema&) const = default;
};

Tema temaClaro();
/// Oscurece solo los encabezados: la cuadrícula sigue siendo clara, de color crema.
Tema temaOscuro();

} // namespace renderizador
