#include "rendering/tema.h"

#include <gtest/gtest.h>

namespace {

using renderizador::Tema;

struct FilaTema {
    const char* nombre;
    QColor Tema::*color;
    QRgb claro;
    QRgb oscuro;
};

const FilaTema kTabla[] = {
    {"fondo", &Tema::fondo, 0xFFFFFFFF, 0xFFFAF6F1},
    {"lineas", &Tema::lineas, 0xFFE3D6C6, 0xFFDDD1C1},
    {"texto", &Tema::texto, 0xFF2C2C2C, 0xFF2C2C2C},
    {"fondoEncabezado", &Tema::fondoEncabezado, 0xFFF0D4BC, 0xFF20100A},
    {"textoEncabezado", &Tema::textoEncabezado, 0xFF80381A, 0xFFF0BE96},
    {"fondoEncabezadoSel", &Tema::fondoEncabezadoSel, 0xFFD4570A, 0xFF904018},
    {"textoEncabezadoSel", &Tema::textoEncabezadoSel, 0xFFFFFFFF, 0xFFFFFFFF},
    {"bordeSeleccion", &Tema::bordeSeleccion, 0xFFD4570A, 0xFFD4570A},
    {"rellenoSeleccion", &Tema::rellenoSeleccion, qRgba(212, 87, 10, 28), qRgba(212, 87, 10, 30)},
    {"lineaPanelFijo", &Tema::lineaPanelFijo, 0xFFD4570A, 0xFFD4570A},
    {"textoError", &Tema::textoError, 0xFFB3400A, 0xFFB3400A},
};

TEST(Tema, CadaColorEsElDeLaTabla) {
    const Tema claro = renderizador::temaClaro();
    const Tema oscuro = renderizador::temaOscuro();
    for (const FilaTema& fila : kTabla) {
        EXPECT_EQ((claro.*fila.color).rgba(), fila.claro) << fila.nombre;
        EXPECT_EQ((oscuro.*fila.color).rgba(), fila.oscuro) << fila.nombre;
    }
}

TEST(Tema, SoloElOscuroDiceQueLoEs) {
    EXPECT_FALSE(renderizador::temaClaro().oscuro);
    EXPECT_TRUE(renderizador::temaOscuro().oscuro);
}

} // namespace
