#include "rendering/tema.h"

#include <QString>

namespace renderizador {

namespace {

QColor color(const char* texto) {
    return QColor::fromString(QLatin1String(texto));
}

} // namespace

Tema temaClaro() {
    return {
        .oscuro = false,
        .fondo = color("#FFFFFF"),
        .lineas = color("#E3D6C6"),
        .texto = color("#2C2C2C"),
        .fondoEncabezado = color("#F0D4BC"),
        .textoEncabezado = color("#80381A"),
        .fondoEncabezadoSel = color("#D4570A"),
        .textoEncabezadoSel = color("#FFFFFF"),
        .bordeSeleccion = color("#D4570A"),
        .rellenoSeleccion = QColor(212, 87, 10, 28),
        .lineaPanelFijo = color("#D4570A"),
        .textoError = color("#B3400A"),
    };
}

Tema temaOscuro() {
    return {
        .oscuro = true,
        .fondo = color("#FAF6F1"),
        .lineas = color("#DDD1C1"),
        .texto = color("#2C2C2C"),
        .fondoEncabezado = color("#20100A"),
        .textoEncabezado = color("#F0BE96"),
        .fondoEncabezadoSel = color("#904018"),
        .textoEncabezadoSel = color("#FFFFFF"),
        .bordeSeleccion = color("#D4570A"),
        .rellenoSeleccion = QColor(212, 87, 10, 30),
        .lineaPanelFijo = color("#D4570A"),
        .textoError = color("#B3400A"),
    };
}

} // namespace renderizador
