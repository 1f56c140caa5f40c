// Lo que un archivo puede traer sin comprobar: nada de ello cuelga, desborda ni sale de las tablas.

#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/renderizador.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using renderizador::Renderizador;

constexpr int kMinimo = std::numeric_limits<int>::min();
constexpr int kMaximo = std::numeric_limits<int>::max();

/// Llama a toda la geometría; los sanitizadores vigilan.
void recorrer(const Renderizador& r) {
    std::vector<int> salida;
    for (const QSize& vista : {QSize(800, 600), QSize(0, 0), QSize(-5, -5), QSize(kMaximo, 1)}) {
        r.filasVisibles(vista, salida);
        EXPECT_LE(salida.size(), static_cast<std::size_t>(nucleo::kFilas));
        r.colsVisibles(vista, salida);
        EXPECT_LE(salida.size(), static_cast<std::size_t>(nucleo::kColumnas));
    }
    const std::vector<int> valores{kMinimo, -1, 0, 1, 47, 48, 300, 65535, 65536, kMaximo};
    for (const int a : valores) {
        r.anchoCol(a);
        r.altoFila(a);
        for (const int b : valores) {
            EXPECT_GE(r.rectCelda(a, b).width(), 0);
            EXPECT_GE(r.rectCeldaConFusion(a, b).height(), 0);
            int fila = 0;
            int col = 0;
            if (r.celdaEnPunto({a, b}, {kMaximo, kMaximo}, fila, col)) {
                EXPECT_GE(fila, 0);
                EXPECT_LT(fila, nucleo::kFilas);
                EXPECT_GE(col, 0);
                EXPECT_LT(col, nucleo::kColumnas);
            }
            EXPECT_LT(r.colEnEncabezado({a, b}), nucleo::kColumnas);
            EXPECT_LT(r.filaEnEncabezado({a, b}), nucleo::kFilas);
            EXPECT_LT(r.bordeColEnPunto({a, b}), nucleo::kColumnas);
            EXPECT_LT(r.bordeFilaEnPunto({a, b}), nucleo::kFilas);
        }
    }
    EXPECT_GE(r.tamanoContenido().width(), 0);
    EXPECT_GE(r.tamanoContenido().height(), 0);
    EXPECT_GE(r.anchoPanelFijo(), 0);
    EXPECT_GE(r.altoPanelFijo(), 0);
}

TEST(GeometriaHostil, CuentasInmovilizadasImposibles) {
    for (const int cuenta : {-7, kMinimo, 65536, 1000000, kMaximo}) {
        SCOPED_TRACE(cuenta);
        nucleo::Hoja hoja;
        hoja.filasInmovilizadas = cuenta;
        hoja.columnasInmovilizadas = cuenta;
        Renderizador r;
        r.hoja = &hoja;
        recorrer(r);
        EXPECT_EQ(r.anchoPanelFijo(), cuenta < 0 ? 0 : 702 * 88);
        EXPECT_EQ(r.altoPanelFijo(), cuenta < 0 ? 0 : 65536 * 24);
        std::vector<int> filas;
        r.filasVisibles({800, 600}, filas);
        EXPECT_EQ(filas.size(), cuenta < 0 ? 24U : 65536U);
    }
}

TEST(GeometriaHostil, TamanosImposibles) {
    for (const int tamano : {0, -1, kMinimo, 1000000, kMaximo}) {
        SCOPED_TRACE(tamano);
        nucleo::Hoja hoja;
        for (int i = -3; i < 900; ++i) {
            hoja.anchos[i] = tamano;
            hoja.altos[i] = tamano;
        }
        hoja.altos[kMaximo] = hoja.altos[kMinimo] = tamano;
        for (const double zoom : {1.0, 2.0}) {
            Renderizador r;
            r.hoja = &hoja;
            r.zoom = zoom;
            recorrer(r);
        }
    }
}

TEST(GeometriaHostil, UnTamanoNegativoNoOcupa) {
    nucleo::Hoja hoja;
    hoja.anchos[1] = -500;
    Renderizador r;
    r.hoja = &hoja;
    EXPECT_EQ(r.anchoCol(1), 0);
    EXPECT_EQ(r.xDeCol(2), r.xDeCol(1));
    EXPECT_EQ(r.rectCelda(0, 2), QRect(48 + 88, 26, 88, 24));
}

TEST(GeometriaHostil, ZoomSinSentido) {
    nucleo::Hoja hoja;
    hoja.filasInmovilizadas = 3;
    hoja.altos[7] = 60;
    const double infinito = std::numeric_limits<double>::infinity();
    for (const double zoom : {std::nan(""), infinito, -infinito, 0.0, -1.0, 1e-300, 1e300}) {
        SCOPED_TRACE(zoom);
        Renderizador r;
        r.hoja = &hoja;
        r.zoom = zoom;
        recorrer(r);
    }
}

TEST(GeometriaHostil, DesplazamientosExtremos) {
    nucleo::Hoja hoja;
    for (const int desplazamiento : {kMinimo, -1, kMaximo}) {
        SCOPED_TRACE(desplazamiento);
        Renderizador r;
        r.hoja = &hoja;
        r.desplazamientoX = r.desplazamientoY = desplazamiento;
        recorrer(r);
    }
    Renderizador r;
    r.desplazamientoX = kMinimo;
    EXPECT_EQ(r.xDeCol(kMaximo), kMaximo) << "sin hoja también se satura";
}

TEST(GeometriaHostil, FusionesQueSalenDeLaCuadricula) {
    nucleo::Hoja hoja;
    hoja.fusiones = {{-5, -5, 2, 2},
                     {10, 3, 2000000000, 2000000000},
                     {9, 9, 4, 4}, // del revés: no contiene nada
                     {kMinimo, 5, kMaximo, 5}};
    Renderizador r;
    r.hoja = &hoja;
    recorrer(r);
    EXPECT_EQ(r.rectCeldaConFusion(0, 0), QRect(48, 26, 3 * 88, 3 * 24));
    EXPECT_EQ(r.rectCeldaConFusion(20, 100),
              QRect(48 + 3 * 88, 26 + 240, (702 - 3) * 88, (65536 - 10) * 24));
    EXPECT_EQ(r.rectCeldaConFusion(6, 6), r.rectCelda(6, 6));
    EXPECT_EQ(r.rectCeldaConFusion(5, 5).height(), 65536 * 24);
    EXPECT_EQ(r.tamanoContenido(), QSize(702 * 88, 65536 * 24));
}

} // namespace
