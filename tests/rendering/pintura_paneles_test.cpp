// Las cuatro regiones que dejan las filas y columnas inmovilizadas, y las fusiones que las cruzan.

#include "tests/rendering/lienzo.h"

#include <gtest/gtest.h>

namespace {

constexpr QRgb kVerde = 0xFF00FF00;
constexpr QRgb kAzul = 0xFF0000FF;
constexpr QRgb kRojo = 0xFFFF0000;

class PinturaPaneles : public testing::Test {
  protected:
    void inmovilizar(int filas, int columnas) {
        l.hoja.filasInmovilizadas = filas;
        l.hoja.columnasInmovilizadas = columnas;
    }
    QRect cuerpo() const {
        const int x = 48 + l.r.anchoPanelFijo() + 1;
        const int y = 26 + l.r.altoPanelFijo() + 1;
        return {x, y, l.vista.width() - x, l.vista.height() - y};
    }
    QRect panelIzquierdo() const { return {48, 26, l.r.anchoPanelFijo() - 1, 274}; }
    QRect panelSuperior() const { return {48, 26, 552, l.r.altoPanelFijo() - 1}; }
    QRgb panel() const { return l.tema.lineaPanelFijo.rgb(); }

    Lienzo l;
};

TEST_F(PinturaPaneles, SinInmovilizarNoHayLinea) {
    l.pintar();
    EXPECT_FALSE(l.hay(panel(), l.imagen.rect()));
}

TEST_F(PinturaPaneles, LaLineaVaDeUnLadoAOtroConDosPixeles) {
    inmovilizar(2, 1);
    l.pintar();
    const int x = 48 + 88;
    const int y = 26 + 48;
    EXPECT_TRUE(l.todo(panel(), QRect(x - 1, 0, 2, 300)));
    EXPECT_TRUE(l.todo(panel(), QRect(0, y - 1, 600, 2)));
    EXPECT_NE(l.pixel(x - 2, 200), panel());
    EXPECT_NE(l.pixel(x + 1, 200), panel());
    inmovilizar(2, 0);
    l.pintar();
    EXPECT_NE(l.pixel(x, 200), panel());
    EXPECT_EQ(l.pixel(300, y), panel());
}

TEST_F(PinturaPaneles, CadaRegionPintaLoSuyo) {
    inmovilizar(1, 1);
    l.relleno(0, 0, kRojo);
    l.relleno(0, 3, kVerde);
    l.relleno(10, 0, kAzul);
    l.relleno(10, 3, 0xFF00FFFF);
    l.r.desplazamientoX = 100;
    l.r.desplazamientoY = 150;
    l.pintar();
    EXPECT_EQ(l.pixel(60, 30), kRojo);
    EXPECT_EQ(l.pixel(l.r.rectCelda(0, 3).center()), kVerde);
    EXPECT_EQ(l.pixel(l.r.rectCelda(10, 0).center()), kAzul);
    EXPECT_EQ(l.pixel(l.r.rectCelda(10, 3).center()), 0xFF00FFFF);
}

TEST_F(PinturaPaneles, LoQueQuedaAMediasBajoElPanelNoAsomaSobreEl) {
    inmovilizar(2, 2);
    l.relleno(2, 2, kVerde);     // asoma a medias por los dos lados
    l.hoja.fusionar(4, 3, 8, 6); // y esta fusión también, más abajo
    l.relleno(4, 3, kAzul);
    l.r.desplazamientoX = 130;
    l.r.desplazamientoY = 10;
    l.seleccion = {3, 2, 9, 4, 3, 3};
    l.pintar();
    for (const QRgb color : {kVerde, kAzul, l.tema.bordeSeleccion.rgb()}) {
        EXPECT_FALSE(l.hay(color, panelIzquierdo().adjusted(0, 50, 0, 0))) << color;
        EXPECT_FALSE(
            l.hay(color, panelSuperior().adjusted(0, 0, 0, 0).intersected(panelIzquierdo())))
            << color;
    }
    EXPECT_FALSE(l.hay(kVerde, panelSuperior()));
    EXPECT_FALSE(l.hay(kAzul, panelSuperior()));
    EXPECT_TRUE(l.hay(kAzul, cuerpo()));
}

TEST_F(PinturaPaneles, ElEncabezadoAMediasTampoco) {
    inmovilizar(0, 1);
    l.seleccion = {0, 1, 0, 1, 0, 1};
    l.r.desplazamientoX = 40;
    l.pintar();
    const QRgb elegido = l.tema.fondoEncabezadoSel.rgb();
    EXPECT_FALSE(l.hay(elegido, QRect(48, 0, 87, 25)));
    EXPECT_EQ(l.pixel(48 + 88 + 5, 3), elegido);
    inmovilizar(1, 0);
    l.seleccion = {1, 0, 1, 0, 1, 0};
    l.r.desplazamientoX = 0;
    l.r.desplazamientoY = 10;
    l.pintar();
    EXPECT_FALSE(l.hay(elegido, QRect(0, 26, 47, 23)));
    EXPECT_EQ(l.pixel(5, 26 + 24 + 5), elegido);
}

TEST_F(PinturaPaneles, LaSeleccionQueCruzaElLimiteSigueALosDosLados) {
    inmovilizar(0, 1);
    l.seleccion = {2, 0, 4, 3, 2, 0};
    l.r.desplazamientoX = 100;
    l.pintar();
    const QColor tinte = l.tema.rellenoSeleccion;
    QImage punto(1, 1, QImage::Format_RGB32);
    punto.fill(l.tema.fondo);
    QPainter(&punto).fillRect(0, 0, 1, 1, tinte);
    EXPECT_EQ(l.imagen.pixel(l.r.rectCelda(4, 0).center()), punto.pixel(0, 0));
    EXPECT_EQ(l.imagen.pixel(l.r.rectCelda(4, 3).center()), punto.pixel(0, 0));
    EXPECT_EQ(l.pixel(48, l.r.rectCelda(4, 0).center().y()), l.tema.bordeSeleccion.rgb());
    EXPECT_EQ(l.pixel(l.r.rectCelda(4, 3).right(), l.r.rectCelda(4, 3).center().y()),
              l.tema.bordeSeleccion.rgb());
}

TEST_F(PinturaPaneles, UnaFusionACaballoEsUnSoloRectangulo) {
    inmovilizar(0, 1);
    l.hoja.fusionar(1, 0, 1, 2);
    l.relleno(1, 0, kVerde);
    l.pintar();
    const QRect rect(48, 50, 264, 24);
    EXPECT_TRUE(l.todo(kVerde, QRect(48, 50, 86, 23)));
    EXPECT_TRUE(l.todo(kVerde, QRect(48 + 90, 50, 264 - 92, 23)));
    l.r.desplazamientoX = 50;
    l.pintar();
    EXPECT_EQ(l.pixel(rect.right() - 2, rect.center().y()), kVerde) << "anclada aunque se desplace";
}

TEST(PinturaFusiones, SePintaEnteraDesdeCualquieraDeSusCeldas) {
    Lienzo l;
    l.hoja.fusionar(2, 1, 20, 4);
    l.relleno(2, 1, kVerde);
    // De ninguna de estas vistas se ve la primera celda.
    for (const QPoint& desplazamiento : {QPoint(0, 100), QPoint(200, 0), QPoint(200, 100)}) {
        l.r.desplazamientoX = desplazamiento.x();
        l.r.desplazamientoY = desplazamiento.y();
        l.pintar();
        const QRect asoma =
            l.r.rectCeldaConFusion(2, 1).adjusted(0, 0, -1, -1) & QRect(48, 26, 552, 274);
        EXPECT_TRUE(l.todo(kVerde, asoma)) << desplazamiento.x() << ", " << desplazamiento.y();
    }
}

TEST(PinturaFusiones, DentroNoHayLineasYSeMuestraSuPrimeraCelda) {
    Lienzo l;
    l.hoja.fusionar(0, 0, 2, 2);
    l.relleno(1, 1, kRojo); // celda tapada, que solo puede venir de un archivo
    l.texto(0, 0, "MM").formato.alineacion = nucleo::AlineacionH::Centro;
    l.pintar();
    const QRect rect(48, 26, 264, 72);
    EXPECT_FALSE(l.hay(kRojo, rect));
    EXPECT_FALSE(l.hay(l.tema.lineas.rgb(), rect.adjusted(0, 0, -1, -1)));
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(rect.right(), rect.top(), 1, 72)));
    const Lienzo::Alcance tinta = l.distintos(l.tema.fondo.rgb(), rect.adjusted(0, 0, -1, -1));
    EXPECT_NEAR(tinta.centro(), rect.center().x(), 2);
}

TEST(PinturaFusiones, UnaSolaVezPorRegion) {
    Lienzo l;
    l.hoja.fusionar(0, 0, 3, 3);
    l.relleno(0, 0, 0x80000000);
    l.pintar();
    // Pintado dos veces, un relleno translúcido sería más oscuro.
    EXPECT_NEAR(qRed(l.pixel(100, 60)), 127, 1);
}

} // namespace
