// La geometría con sumas de memoria contra la que recorre filas y columnas una a una.

#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/renderizador.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using renderizador::Renderizador;

/// Un eje recorrido paso a paso.
struct EjeLlano {
    const nucleo::MapaTamanos& tamanos;
    int elementos;
    int predeterminado;
    int fijos;
    int origen;
    int desplazamiento;
    double zoom;

    int tamano(int i) const {
        const auto propio = tamanos.find(i);
        const int sinZoom = propio == tamanos.end() ? predeterminado : propio->second;
        return static_cast<int>(sinZoom * zoom + 0.5);
    }
    int panel() const {
        int suma = 0;
        for (int i = 0; i < fijos; ++i) {
            suma += tamano(i);
        }
        return suma;
    }
    int inicio(int i) const {
        int suma = i < fijos ? origen : origen + panel() - desplazamiento;
        for (int k = i < fijos ? 0 : fijos; k < i; ++k) {
            suma += tamano(k);
        }
        return suma;
    }
    int en(int pixel) const {
        const bool enPanel = pixel < origen + panel();
        int borde = enPanel ? origen : origen + panel() - desplazamiento;
        for (int i = enPanel ? 0 : fijos; i < (enPanel ? fijos : elementos); ++i) {
            if (borde + tamano(i) > pixel) {
                return borde <= pixel ? i : -1;
            }
            borde += tamano(i);
        }
        return -1;
    }
    std::vector<int> visibles(int limite) const {
        std::vector<int> salida;
        for (int i = 0; i < fijos; ++i) {
            salida.push_back(i);
        }
        int pixel = origen + panel() - desplazamiento;
        for (int i = fijos; i < elementos && pixel < limite; ++i) {
            if (pixel + tamano(i) > origen + panel()) {
                salida.push_back(i);
            }
            pixel += tamano(i);
        }
        return salida;
    }
    int borde(int pixel) const {
        if (pixel - 3 < origen) {
            return -1;
        }
        const int i = en(pixel - 3);
        return i >= 0 && std::abs(pixel - (inicio(i) + tamano(i))) < 5 ? i : -1;
    }
    int contenido(int ultimo, int margen, int minimo) const {
        int suma = 0;
        for (int i = fijos; i < std::clamp(ultimo + margen, minimo, elementos); ++i) {
            suma += tamano(i);
        }
        return suma;
    }
};

void comparar(const Renderizador& r, const QSize& vista, std::mt19937& azar) {
    const EjeLlano x{r.hoja->anchos,
                     nucleo::kColumnas,
                     nucleo::kAnchoPredeterminado,
                     r.hoja->columnasInmovilizadas,
                     48,
                     r.desplazamientoX,
                     r.zoom};
    const EjeLlano y{r.hoja->altos,
                     nucleo::kFilas,
                     nucleo::kAltoPredeterminado,
                     r.hoja->filasInmovilizadas,
                     26,
                     r.desplazamientoY,
                     r.zoom};
    ASSERT_EQ(r.anchoPanelFijo(), x.panel());
    ASSERT_EQ(r.altoPanelFijo(), y.panel());
    ASSERT_EQ(r.tamanoContenido(), QSize(x.contenido(r.hoja->ultimaColUsada(), 12, 40),
                                         y.contenido(r.hoja->ultimaFilaUsada(), 40, 120)));
    std::vector<int> salida;
    r.filasVisibles(vista, salida);
    ASSERT_EQ(salida, y.visibles(vista.height()));
    r.colsVisibles(vista, salida);
    ASSERT_EQ(salida, x.visibles(vista.width()));

    std::uniform_int_distribution<int> unaFila(0, 400);
    std::uniform_int_distribution<int> unaCol(0, nucleo::kUltimaColumna);
    for (int vez = 0; vez < 20; ++vez) {
        const int fila = unaFila(azar);
        const int col = unaCol(azar);
        ASSERT_EQ(r.rectCelda(fila, col),
                  QRect(x.inicio(col), y.inicio(fila), x.tamano(col), y.tamano(fila)))
            << fila << ", " << col;
    }
    std::uniform_int_distribution<int> puntoX(-10, vista.width() + 10);
    std::uniform_int_distribution<int> puntoY(-10, vista.height() + 10);
    for (int vez = 0; vez < 60; ++vez) {
        const QPoint punto(puntoX(azar), puntoY(azar));
        const bool dentro = punto.x() >= 48 && punto.y() >= 26 && punto.x() < vista.width() &&
                            punto.y() < vista.height();
        const int colLlana = x.en(punto.x());
        const int filaLlana = y.en(punto.y());
        int fila = -9;
        int col = -9;
        const bool acierto = r.celdaEnPunto(punto, vista, fila, col);
        ASSERT_EQ(acierto, dentro && colLlana >= 0 && filaLlana >= 0)
            << punto.x() << ", " << punto.y();
        if (acierto) {
            ASSERT_EQ(fila, filaLlana);
            ASSERT_EQ(col, colLlana);
        }
        const QPoint arriba(punto.x(), 5);
        const bool hayFila = y.en(26) >= 0;
        ASSERT_EQ(r.colEnEncabezado(arriba), punto.x() >= 48 && hayFila ? colLlana : -1);
        ASSERT_EQ(r.bordeColEnPunto(arriba), hayFila ? x.borde(punto.x()) : -1) << punto.x();
        const QPoint izquierda(5, punto.y());
        const bool hayCol = x.en(48) >= 0;
        ASSERT_EQ(r.filaEnEncabezado(izquierda), punto.y() >= 26 && hayCol ? filaLlana : -1);
        ASSERT_EQ(r.bordeFilaEnPunto(izquierda), hayCol ? y.borde(punto.y()) : -1) << punto.y();
    }
}

TEST(GeometriaAlAzar, IgualQueRecorrerUnoAUno) {
    std::mt19937 azar(7);
    const auto entre = [&](int a, int b) { return std::uniform_int_distribution(a, b)(azar); };
    for (int vez = 0; vez < 60; ++vez) {
        nucleo::Hoja hoja;
        for (int i = entre(0, 40); i > 0; --i) {
            hoja.anchos[entre(0, 30)] = entre(0, 5) == 0 ? 0 : entre(20, 600);
        }
        for (int i = entre(0, 120); i > 0; --i) {
            hoja.altos[entre(0, 300)] = entre(0, 5) == 0 ? 0 : entre(14, 400);
        }
        hoja.columnasInmovilizadas = entre(0, 2) == 0 ? entre(1, 6) : 0;
        hoja.filasInmovilizadas = entre(0, 2) == 0 ? entre(1, 8) : 0;
        hoja.celdaMut(entre(0, 300), entre(0, 60)).tipo = nucleo::TipoCelda::Texto;
        Renderizador r;
        r.hoja = &hoja;
        r.zoom = entre(50, 200) / 100.0;
        r.desplazamientoX = entre(0, 3) == 0 ? 0 : entre(-100, 4000);
        r.desplazamientoY = entre(0, 3) == 0 ? 0 : entre(-100, 9000);
        const QSize vista(entre(60, 1500), entre(40, 900));
        SCOPED_TRACE(testing::Message() << "vez " << vez << ", zoom " << r.zoom);
        comparar(r, vista, azar);
        // Y otra vez tras cambiar por fuera un tamaño que ya estaba.
        if (!hoja.altos.empty()) {
            hoja.altos.begin()->second = entre(0, 90);
        }
        hoja.anchos[entre(0, 10)] = entre(0, 90);
        comparar(r, vista, azar);
        if (HasFatalFailure()) {
            return;
        }
    }
}

} // namespace
