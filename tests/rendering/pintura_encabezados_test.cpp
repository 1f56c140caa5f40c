#include "tests/rendering/lienzo.h"

#include <gtest/gtest.h>

namespace {

TEST(PinturaEncabezados, LaEsquinaEsDelEncabezado) {
    Lienzo l;
    l.pintar();
    EXPECT_TRUE(l.todo(l.tema.fondoEncabezado.rgb(), QRect(0, 0, 47, 25)));
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(47, 0, 1, 300)));
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(0, 25, 600, 1)));
}

TEST(PinturaEncabezados, LosSeleccionadosCambianDeFondo) {
    Lienzo l;
    l.seleccion = {1, 1, 2, 2, 1, 1};
    l.pintar();
    const QRgb elegido = l.tema.fondoEncabezadoSel.rgb();
    const QRgb normal = l.tema.fondoEncabezado.rgb();
    const auto col = [](int i) { return QPoint(48 + 88 * i + 3, 3); };
    const auto fila = [](int i) { return QPoint(3, 26 + 24 * i + 3); };
    EXPECT_EQ(l.pixel(col(0)), normal);
    EXPECT_EQ(l.pixel(col(1)), elegido);
    EXPECT_EQ(l.pixel(col(2)), elegido);
    EXPECT_EQ(l.pixel(col(3)), normal);
    EXPECT_EQ(l.pixel(fila(0)), normal);
    EXPECT_EQ(l.pixel(fila(1)), elegido);
    EXPECT_EQ(l.pixel(fila(2)), elegido);
    EXPECT_EQ(l.pixel(fila(3)), normal);
}

TEST(PinturaEncabezados, LetrasAlCentroYNumerosALaDerecha) {
    Lienzo l;
    l.hoja.anchos[0] = 200;
    l.pintar();
    const QRgb fondo = l.tema.fondoEncabezado.rgb();
    const Lienzo::Alcance letra = l.distintos(fondo, QRect(48, 0, 199, 25));
    EXPECT_NEAR(letra.centro(), 48 + 100, 1);
    const Lienzo::Alcance numero = l.distintos(fondo, QRect(0, 26, 47, 23));
    EXPECT_GT(numero.primera, 24);
    EXPECT_GT(numero.ultima, 38);
    EXPECT_LT(numero.ultima, 46);
}

TEST(PinturaEncabezados, LosSeparadoresVanEntreColumnasYEntreFilas) {
    Lienzo l;
    l.pintar();
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(48 + 87, 0, 1, 25)));
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(0, 26 + 23, 47, 1)));
}

TEST(PinturaEncabezados, ElNumeroMasLargoCabeACualquierZoom) {
    for (const int porcentaje : {50, 100, 150, 200}) {
        Lienzo l;
        l.r.zoom = porcentaje / 100.0;
        l.r.desplazamientoY = static_cast<int>(65536 * 24 * l.r.zoom) - 200;
        l.pintar();
        const QRgb fondo = l.tema.fondoEncabezado.rgb();
        // Una fila entera hacia la mitad de lo que se ve.
        const int fila = 65536 - 3;
        const QRect rect(0, l.r.yDeFila(fila), 47, l.r.altoFila(fila) - 1);
        ASSERT_TRUE(QRect(0, 26, 47, 274).contains(rect)) << porcentaje;
        const Lienzo::Alcance numero = l.distintos(fondo, rect);
        EXPECT_GE(numero.primera, 2) << porcentaje;
        EXPECT_LE(numero.ultima, 44) << porcentaje;
        EXPECT_GT(numero.ultima - numero.primera, porcentaje == 50 ? 14 : 28) << porcentaje;
    }
}

TEST(PinturaEncabezados, TapanLoQuePasaPorDebajo) {
    Lienzo l;
    l.relleno(0, 0, 0xFF00FF00);
    l.r.desplazamientoX = 40;
    l.r.desplazamientoY = 10;
    l.pintar();
    EXPECT_FALSE(l.hay(0xFF00FF00, QRect(0, 0, 600, 26)));
    EXPECT_FALSE(l.hay(0xFF00FF00, QRect(0, 0, 48, 300)));
    EXPECT_TRUE(l.hay(0xFF00FF00, QRect(48, 26, 40, 10)));
}

} // namespace
