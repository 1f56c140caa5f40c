#include "tests/rendering/lienzo.h"

#include <gtest/gtest.h>

namespace {

/// El color de un relleno translúcido sobre otro opaco.
QRgb mezcla(const QColor& encima, const QColor& debajo) {
    QImage punto(1, 1, QImage::Format_RGB32);
    punto.fill(debajo);
    QPainter(&punto).fillRect(0, 0, 1, 1, encima);
    return punto.pixel(0, 0) | 0xFF000000;
}

/// Verdadero si el contorno de una celda es de un color, `fuera` píxeles hacia arriba y hacia la
/// izquierda. Las esquinas no cuentan: la unión de los trazos es en bisel.
bool contorno(const Lienzo& l, const QRect& celda, QRgb color, int fuera) {
    const QRect borde = celda.adjusted(-fuera, -fuera, 0, 0);
    const int ancho = borde.width() - 4;
    const int alto = borde.height() - 4;
    return l.todo(color, QRect(borde.left() + 2, borde.top(), ancho, 1)) &&
           l.todo(color, QRect(borde.left(), borde.top() + 2, 1, alto)) &&
           l.todo(color, QRect(borde.left() + 2, borde.bottom(), ancho, 1)) &&
           l.todo(color, QRect(borde.right(), borde.top() + 2, 1, alto));
}

class PinturaSeleccion : public testing::Test {
  protected:
    QRect celda(int fila, int col) const { return l.r.rectCelda(fila, col); }
    QRgb borde() const { return l.tema.bordeSeleccion.rgb(); }
    QRgb fondo() const { return l.tema.fondo.rgb(); }
    QRgb tinte() const { return mezcla(l.tema.rellenoSeleccion, l.tema.fondo); }
    QPoint centro(int fila, int col) const { return celda(fila, col).center(); }

    Lienzo l;
};

TEST_F(PinturaSeleccion, UnaCeldaSolaTieneContornoYNoRelleno) {
    l.seleccion = {2, 2, 2, 2, 2, 2};
    l.pintar();
    const QRect c = celda(2, 2);
    EXPECT_TRUE(contorno(l, c, borde(), 1)) << "primer píxel";
    EXPECT_EQ(l.pixel(c.left(), c.center().y()), borde()) << "dos píxeles a la izquierda";
    EXPECT_EQ(l.pixel(c.left() + 1, c.center().y()), fondo());
    EXPECT_EQ(l.pixel(c.right() - 1, c.center().y()), borde()) << "y dos a la derecha";
    EXPECT_EQ(l.pixel(c.right() - 2, c.center().y()), fondo());
    EXPECT_EQ(l.pixel(c.center().x(), c.bottom() - 1), borde());
    EXPECT_TRUE(l.todo(fondo(), c.adjusted(2, 2, -2, -2)));
}

TEST_F(PinturaSeleccion, VariasCeldasSeTinenMenosLaActiva) {
    l.seleccion = {1, 1, 3, 3, 3, 3};
    l.pintar();
    EXPECT_EQ(l.pixel(centro(1, 1)), tinte());
    EXPECT_EQ(l.pixel(centro(2, 3)), tinte());
    EXPECT_EQ(l.pixel(centro(3, 3)), fondo());
    EXPECT_EQ(l.pixel(centro(0, 1)), fondo());
    EXPECT_EQ(l.pixel(centro(4, 4)), fondo());
    const QRect total = celda(1, 1) | celda(3, 3);
    EXPECT_TRUE(contorno(l, total, borde(), 1));
    const QRect activa = celda(3, 3);
    EXPECT_EQ(l.pixel(activa.left(), activa.center().y()), borde());
    EXPECT_NE(l.pixel(activa.left() + 1, activa.center().y()), borde()) << "de un píxel";
    EXPECT_NE(l.pixel(activa.left() - 1, activa.center().y()), borde());
}

TEST_F(PinturaSeleccion, LaActivaFusionadaSeRodeaEntera) {
    l.hoja.fusionar(1, 1, 2, 2);
    l.seleccion = {1, 1, 2, 2, 2, 2};
    l.pintar();
    const QRect total = celda(1, 1) | celda(2, 2);
    EXPECT_TRUE(contorno(l, total, borde(), 1));
    EXPECT_EQ(l.pixel(centro(1, 1)), fondo());
    // Ampliada hasta dentro de la fusión, la selección abarca la fusión entera.
    l.seleccion = {0, 0, 1, 1, 1, 1};
    l.pintar();
    EXPECT_TRUE(contorno(l, celda(0, 0) | celda(2, 2), borde(), 0));
    EXPECT_EQ(l.pixel(centro(0, 2)), tinte());
    EXPECT_EQ(l.pixel(centro(2, 1)), fondo()) << "la fusión activa no se tiñe";
}

TEST_F(PinturaSeleccion, TodaLaHojaSeTineSinSalirseDeLasCeldas) {
    l.seleccion = {0, 0, 65535, 701, 0, 0};
    l.pintar();
    EXPECT_EQ(l.pixel(centro(5, 3)), tinte());
    EXPECT_EQ(l.pixel(centro(0, 0)), fondo());
    EXPECT_FALSE(l.hay(borde(), QRect(400, 200, 200, 100))) << "el otro extremo no se ve";
}

TEST_F(PinturaSeleccion, FueraDeLaVistaNoPintaNada) {
    l.pintar();
    const QImage sin = l.imagen;
    l.seleccion = {5000, 0, 5010, 3, 5000, 0};
    l.pintar();
    EXPECT_EQ(l.imagen.copy(48, 26, 552, 274), sin.copy(48, 26, 552, 274));
}

TEST_F(PinturaSeleccion, SueltaSePintaIgualQueConLasCeldas) {
    l.seleccion = {1, 1, 3, 3, 1, 1};
    l.pintarCon([&](QPainter& p) {
        p.fillRect(l.imagen.rect(), l.tema.fondo);
        l.r.dibujarSeleccion(p, l.vista, l.seleccion);
    });
    EXPECT_EQ(l.pixel(centro(2, 2)), tinte());
    EXPECT_TRUE(contorno(l, celda(1, 1) | celda(3, 3), borde(), 1));
}

} // namespace
