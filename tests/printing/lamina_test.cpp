#include "model/limites.h"

#include <QImage>
#include <QPainter>

#include <climits>
#include <gtest/gtest.h>

#include "printing/lamina.h"
#include "printing/miniatura.h"

using impresion::Lamina;
using nucleo::RangoCeldas;

namespace {

constexpr std::uint32_t kRojo = 0xFFFF0000;
constexpr std::uint32_t kAzul = 0xFF0000FF;

void pintarCelda(nucleo::Hoja& hoja, int fila, int col, std::uint32_t color) {
    hoja.celdaMut(fila, col).formato.colorFondo = color;
}

QImage dibujar(Lamina& lamina, const RangoCeldas& zona, const QSize& tamano) {
    QImage imagen(tamano, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    lamina.dibujar(pintor, zona, tamano);
    return imagen;
}

/// El color del centro de una celda de tamaño predeterminado, contando desde la esquina.
QRgb centro(const QImage& imagen, int fila, int col) {
    return imagen.pixel(col * nucleo::kAnchoPredeterminado + 40,
                        fila * nucleo::kAltoPredeterminado + 12);
}

TEST(Lamina, LaZonaEmpiezaEnElOrigenYAcabaDondeSeDice) {
    nucleo::Hoja hoja;
    pintarCelda(hoja, 100, 20, kRojo);
    pintarCelda(hoja, 101, 21, kAzul);
    pintarCelda(hoja, 102, 21, kRojo);
    Lamina lamina(hoja, 0, false, 1.0);
    const RangoCeldas zona{100, 20, 101, 21};
    EXPECT_EQ(lamina.medir(zona), QSize(176, 48));
    EXPECT_EQ(lamina.orla(), QSize(0, 0));
    const QImage imagen = dibujar(lamina, zona, {400, 200});
    EXPECT_EQ(centro(imagen, 0, 0), kRojo);
    EXPECT_EQ(centro(imagen, 1, 1), kAzul);
    EXPECT_EQ(centro(imagen, 2, 1), QColor(Qt::white).rgb()) << "la zona acaba antes";
    EXPECT_EQ(imagen.pixel(300, 10), QColor(Qt::white).rgb());
}

TEST(Lamina, NadaEstaSeleccionadoNiInmovilizado) {
    nucleo::Hoja hoja;
    hoja.filasInmovilizadas = 2;
    hoja.columnasInmovilizadas = 1;
    Lamina lamina(hoja, 0, false, 1.0);
    const QImage imagen = dibujar(lamina, {0, 0, 9, 3}, {352, 240});
    const QRgb linea = renderizador::temaClaro().lineas.rgb();
    for (int y = 0; y < imagen.height(); ++y) {
        for (int x = 0; x < imagen.width(); ++x) {
            const QRgb color = imagen.pixel(x, y);
            ASSERT_TRUE(color == QColor(Qt::white).rgb() || color == linea) << x << "," << y;
        }
    }
}

TEST(Lamina, LasFilasDeTituloSeRepitenSobreCadaZona) {
    nucleo::Hoja hoja;
    pintarCelda(hoja, 0, 0, kRojo);
    pintarCelda(hoja, 500, 0, kAzul);
    Lamina lamina(hoja, 1, false, 1.0);
    EXPECT_EQ(lamina.orla(), QSize(0, 24));
    const QImage imagen = dibujar(lamina, {500, 0, 510, 2}, {300, 300});
    EXPECT_EQ(centro(imagen, 0, 0), kRojo);
    EXPECT_EQ(centro(imagen, 1, 0), kAzul);
}

TEST(Lamina, LosEncabezadosVanPorDelante) {
    nucleo::Hoja hoja;
    pintarCelda(hoja, 7, 3, kAzul);
    Lamina lamina(hoja, 0, true, 1.0);
    EXPECT_EQ(lamina.orla(), QSize(renderizador::kAnchoEncabezado, renderizador::kAltoEncabezado));
    const QImage imagen = dibujar(lamina, {7, 3, 8, 4}, {400, 200});
    EXPECT_EQ(imagen.pixel(3, 3), renderizador::temaClaro().fondoEncabezado.rgb());
    EXPECT_EQ(imagen.pixel(renderizador::kAnchoEncabezado + 40, renderizador::kAltoEncabezado + 12),
              kAzul);
}

TEST(Lamina, LaEscalaEncoge) {
    nucleo::Hoja hoja;
    pintarCelda(hoja, 1, 1, kRojo);
    Lamina lamina(hoja, 0, false, 0.5);
    EXPECT_EQ(lamina.medir({0, 0, 1, 1}), QSize(88, 24));
    EXPECT_EQ(dibujar(lamina, {0, 0, 1, 1}, {88, 24}).pixel(60, 18), kRojo);
}

TEST(Lamina, LosTamanosHostilesSeSaturan) {
    nucleo::Hoja hoja;
    for (const int tamano : {INT_MAX, INT_MIN, -7, 0}) {
        hoja.anchos[0] = tamano;
        hoja.anchos[1] = tamano;
        hoja.altos[0] = tamano;
        hoja.altos[1] = tamano;
        hoja.filasInmovilizadas = tamano;
        Lamina lamina(hoja, 1, true, 1.0);
        const QSize medida = lamina.medir({0, 0, 1, 1});
        EXPECT_EQ(medida.width(), std::max(0, tamano)) << tamano;
        EXPECT_EQ(dibujar(lamina, {1, 1, 3, 3}, {50, 50}).size(), QSize(50, 50));
    }
}

TEST(Miniatura, EsLaEsquinaDeLaHojaEnUnCuadrado) {
    nucleo::Hoja hoja;
    const QImage vacia = impresion::dibujarMiniatura(hoja, 128);
    pintarCelda(hoja, 0, 0, kRojo);
    for (const int lado : {impresion::kLadoMinimoMiniatura, 128, impresion::kLadoMaximoMiniatura}) {
        const QImage imagen = impresion::dibujarMiniatura(hoja, lado);
        EXPECT_EQ(imagen.size(), QSize(lado, lado));
        EXPECT_NE(imagen.pixel(0, 0), kRojo) << "el borde queda a la vista";
    }
    const QImage imagen = impresion::dibujarMiniatura(hoja, 128);
    EXPECT_EQ(imagen.pixel(3, 3), kRojo);
    EXPECT_NE(imagen, vacia);
    EXPECT_EQ(imagen.pixel(64, 100), vacia.pixel(64, 100));
}

} // namespace
