#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/regiones.h"
#include "rendering/renderizador.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using renderizador::Renderizador;

const QSize kVista(800, 600);

class Geometria : public testing::Test {
  protected:
    Geometria() { r.hoja = &hoja; }

    struct Celda {
        int fila;
        int col;
        bool operator==(const Celda&) const = default;
    };
    /// (-1, -1) si el punto no está sobre ninguna.
    Celda en(int x, int y, const QSize& vista = kVista) const {
        Celda celda{-1, -1};
        if (!r.celdaEnPunto({x, y}, vista, celda.fila, celda.col)) {
            return {-1, -1};
        }
        return celda;
    }
    std::vector<int> filas(const QSize& vista = kVista) const {
        std::vector<int> salida{99};
        r.filasVisibles(vista, salida);
        return salida;
    }
    std::vector<int> cols(const QSize& vista = kVista) const {
        std::vector<int> salida{99};
        r.colsVisibles(vista, salida);
        return salida;
    }

    nucleo::Hoja hoja;
    Renderizador r;
};

TEST_F(Geometria, LosTamanosSeRedondeanUnoAUno) {
    r.zoom = 1.5;
    hoja.anchos[3] = 25;
    hoja.altos[2] = 15;
    EXPECT_EQ(r.anchoCol(0), 132);
    EXPECT_EQ(r.anchoCol(3), 38);
    EXPECT_EQ(r.altoFila(0), 36);
    EXPECT_EQ(r.altoFila(2), 23);
    hoja.anchos[0] = hoja.anchos[1] = hoja.anchos[2] = 25;
    EXPECT_EQ(r.xDeCol(4), 48 + 4 * 38) << "suma de redondeados, no redondeo de la suma";
}

TEST_F(Geometria, SinHojaValenLosTamanosPredeterminados) {
    r.hoja = nullptr;
    r.zoom = 2.0;
    r.desplazamientoX = 10;
    r.desplazamientoY = 20;
    EXPECT_EQ(r.anchoCol(7), 176);
    EXPECT_EQ(r.altoFila(7), 48);
    EXPECT_EQ(r.anchoPanelFijo(), 0);
    EXPECT_EQ(r.altoPanelFijo(), 0);
    EXPECT_EQ(r.xDeCol(-1), 48);
    EXPECT_EQ(r.yDeFila(-1), 26);
    EXPECT_EQ(r.xDeCol(2), 48 - 10 + 352);
    EXPECT_EQ(r.yDeFila(3), 26 - 20 + 144);
    EXPECT_EQ(r.rectCelda(3, 2), QRect(390, 150, 176, 48));
    EXPECT_EQ(r.rectCeldaConFusion(3, 2), QRect(390, 150, 176, 48));
    EXPECT_EQ(en(100, 100), (Celda{-1, -1}));
    EXPECT_EQ(r.colEnEncabezado({100, 10}), -1);
    EXPECT_EQ(r.filaEnEncabezado({10, 100}), -1);
    EXPECT_EQ(r.bordeColEnPunto({136, 10}), -1);
    EXPECT_EQ(r.bordeFilaEnPunto({10, 50}), -1);
    EXPECT_EQ(r.tamanoContenido(), QSize(0, 0));
    EXPECT_TRUE(filas().empty());
    EXPECT_TRUE(cols().empty());
}

TEST_F(Geometria, LoInmovilizadoNoSeDesplaza) {
    r.desplazamientoX = 300;
    r.desplazamientoY = 200;
    EXPECT_EQ(r.xDeCol(0), 48 - 300);
    EXPECT_EQ(r.yDeFila(0), 26 - 200);
    hoja.columnasInmovilizadas = 2;
    hoja.filasInmovilizadas = 1;
    EXPECT_EQ(r.anchoPanelFijo(), 176);
    EXPECT_EQ(r.altoPanelFijo(), 24);
    EXPECT_EQ(r.xDeCol(0), 48);
    EXPECT_EQ(r.xDeCol(1), 136);
    EXPECT_EQ(r.xDeCol(2), 48 + 176 - 300);
    EXPECT_EQ(r.xDeCol(4), 48 + 176 - 300 + 176);
    EXPECT_EQ(r.yDeFila(0), 26);
    EXPECT_EQ(r.yDeFila(1), 26 + 24 - 200);
}

TEST_F(Geometria, UnaFusionEsUnRectanguloAncladoEnSuPrimeraCelda) {
    hoja.anchos[2] = 100;
    hoja.fusionar(1, 1, 3, 2);
    const QRect esperado(48 + 88, 26 + 24, 188, 72);
    EXPECT_EQ(r.rectCeldaConFusion(1, 1), esperado);
    EXPECT_EQ(r.rectCeldaConFusion(3, 2), esperado);
    EXPECT_EQ(r.rectCeldaConFusion(0, 0), QRect(48, 26, 88, 24));
    EXPECT_EQ(r.rectCelda(3, 2), QRect(48 + 176, 26 + 72, 100, 24));
    // A caballo del límite fijo sigue siendo un solo rectángulo.
    hoja.columnasInmovilizadas = 2;
    r.desplazamientoX = 50;
    EXPECT_EQ(r.rectCeldaConFusion(3, 2), esperado);
}

TEST_F(Geometria, ElUltimoPixelDeUnaColumnaEsSuyo) {
    EXPECT_EQ(en(48, 26), (Celda{0, 0}));
    EXPECT_EQ(en(48 + 87, 26 + 23), (Celda{0, 0}));
    EXPECT_EQ(en(48 + 88, 26 + 24), (Celda{1, 1}));
    EXPECT_EQ(en(47, 100), (Celda{-1, -1}));
    EXPECT_EQ(en(100, 25), (Celda{-1, -1}));
    EXPECT_EQ(en(799, 599), (Celda{23, 8}));
    EXPECT_EQ(en(800, 100), (Celda{-1, -1}));
    EXPECT_EQ(en(100, 600), (Celda{-1, -1}));
}

TEST_F(Geometria, NoSeAciertaBajoElPanelFijo) {
    hoja.columnasInmovilizadas = 1;
    hoja.filasInmovilizadas = 1;
    r.desplazamientoX = 100;
    r.desplazamientoY = 30;
    EXPECT_EQ(en(50, 30), (Celda{0, 0}));
    EXPECT_EQ(en(48 + 88, 60), (Celda{2, 2})) << "la columna B está entera bajo el panel";
    EXPECT_EQ(en(48 + 87, 60), (Celda{2, 0}));
}

TEST_F(Geometria, MasAllaDeLaUltimaCeldaNoHayNada) {
    r.desplazamientoX = 702 * 88 - 100;
    r.desplazamientoY = 65536 * 24 - 100;
    EXPECT_EQ(en(48 + 99, 26 + 99), (Celda{65535, 701}));
    EXPECT_EQ(en(48 + 100, 26 + 99), (Celda{-1, -1}));
    EXPECT_EQ(en(48 + 99, 26 + 100), (Celda{-1, -1}));
    EXPECT_EQ(r.colEnEncabezado({48 + 99, 0}), 701);
    EXPECT_EQ(r.colEnEncabezado({48 + 100, 0}), -1);
}

TEST_F(Geometria, UnDesplazamientoNegativoDejaUnHuecoSinCeldas) {
    r.desplazamientoX = -50;
    EXPECT_EQ(en(48 + 49, 30), (Celda{-1, -1}));
    EXPECT_EQ(en(48 + 50, 30), (Celda{0, 0}));
}

TEST_F(Geometria, LosEncabezadosSeAciertanEnSuFranja) {
    EXPECT_EQ(r.colEnEncabezado({48 + 88, 25}), 1);
    EXPECT_EQ(r.colEnEncabezado({48 + 88, 26}), -1);
    EXPECT_EQ(r.colEnEncabezado({47, 10}), -1);
    EXPECT_EQ(r.colEnEncabezado({5000, 10}), 56) << "no lo acota la vista";
    EXPECT_EQ(r.filaEnEncabezado({47, 26 + 24}), 1);
    EXPECT_EQ(r.filaEnEncabezado({48, 26 + 24}), -1);
    EXPECT_EQ(r.filaEnEncabezado({10, 25}), -1);
}

TEST_F(Geometria, LaFranjaDeUnEncabezadoEmpiezaEnSuPrimerPixel) {
    EXPECT_EQ(r.colEnEncabezado({48, 0}), 0);
    EXPECT_EQ(r.colEnEncabezado({48, -1000}), 0) << "por arriba no se acota";
    EXPECT_EQ(r.filaEnEncabezado({0, 26}), 0);
    EXPECT_EQ(r.filaEnEncabezado({-1000, 26}), 0) << "por la izquierda no se acota";
    EXPECT_EQ(r.filaEnEncabezado({0, 26 + 24 * 1000}), 1000) << "no lo acota la vista";
}

TEST_F(Geometria, LosEncabezadosLleganHastaDondeSeMira) {
    hoja.anchos[0] = hoja.altos[0] = 20000000;
    EXPECT_EQ(r.colEnEncabezado({16777215, 10}), 0);
    EXPECT_EQ(r.colEnEncabezado({16777216, 10}), -1);
    EXPECT_EQ(r.filaEnEncabezado({10, 16777215}), 0);
    EXPECT_EQ(r.filaEnEncabezado({10, 16777216}), -1);
}

TEST_F(Geometria, ElBordeDeUnaPrimeraColumnaEstrechaSeAgarra) {
    hoja.anchos[0] = hoja.altos[0] = 4;
    EXPECT_EQ(r.bordeColEnPunto({48 + 3, 10}), 0);
    EXPECT_EQ(r.bordeColEnPunto({48 + 2, 10}), -1) << "corregido cae en la franja de las filas";
    EXPECT_EQ(r.bordeColEnPunto({48 + 4 + 2, 10}), 0);
    EXPECT_EQ(r.bordeFilaEnPunto({10, 26 + 3}), 0);
    EXPECT_EQ(r.bordeFilaEnPunto({10, 26 + 2}), -1);
    EXPECT_EQ(r.bordeFilaEnPunto({10, 26 + 4 + 2}), 0);
    constexpr int kMinimo = std::numeric_limits<int>::min();
    EXPECT_EQ(r.bordeColEnPunto({kMinimo, kMinimo}), -1);
    EXPECT_EQ(r.bordeFilaEnPunto({kMinimo, kMinimo}), -1);
}

TEST_F(Geometria, LoQueNoOcupaPixelesNoSeAcierta) {
    hoja.anchos[0] = 0;
    hoja.anchos[2] = -7;
    hoja.altos[0] = 0;
    EXPECT_EQ(en(48, 26), (Celda{1, 1}));
    EXPECT_EQ(en(48 + 88, 26), (Celda{1, 3}));
    hoja.columnasInmovilizadas = 1;
    hoja.filasInmovilizadas = 1;
    EXPECT_EQ(r.anchoPanelFijo(), 0);
    EXPECT_EQ(en(48, 26), (Celda{1, 1}));
    hoja.columnasInmovilizadas = 3;
    r.desplazamientoX = 88;
    EXPECT_EQ(en(48, 26), (Celda{1, 1}));
    EXPECT_EQ(en(48 + 87, 26), (Celda{1, 1}));
    EXPECT_EQ(en(48 + 88, 26), (Celda{1, 4})) << "la columna 3 está bajo el panel";
}

TEST_F(Geometria, LoQueNoOcupaPixelesNoEsDeNingunaBanda) {
    hoja.anchos[0] = 0;
    hoja.anchos[2] = 0;
    hoja.anchos[4] = 0;
    hoja.columnasInmovilizadas = 2;
    const renderizador::Eje eje(renderizador::medidasColumnas(hoja, 1));
    const auto indices = [](const renderizador::BandaVisible& banda) {
        std::vector<int> salida;
        for (const renderizador::TramoVisible& tramo : banda.tramos)
            salida.push_back(tramo.indice);
        return salida;
    };
    const renderizador::EjeVista vista(eje, 2, 48, 0);
    const renderizador::Bandas bandas = renderizador::bandasVisibles(vista, 48, 48 + 88 * 3);
    EXPECT_EQ(indices(bandas.fija), std::vector<int>{1});
    EXPECT_EQ(indices(bandas.desplazada), (std::vector<int>{3, 5}));
    EXPECT_EQ(renderizador::EjeVista(eje, 2, 48, -10).en(48 + 88), -1) << "el hueco";
    EXPECT_EQ(renderizador::EjeVista(eje, 2, 48, -10).en(48 + 88 + 10), 3);
}

TEST_F(Geometria, UnElementoNegativoEstaDondeLaFranja) {
    r.desplazamientoX = 30;
    r.desplazamientoY = 30;
    EXPECT_EQ(r.xDeCol(-1), 48);
    EXPECT_EQ(r.yDeFila(-1), 26);
    EXPECT_EQ(r.xDeCol(0), 48 - 30);
}

TEST_F(Geometria, UnDesplazamientoNegativoEmpiezaEnLaPrimeraQueSeDesplaza) {
    hoja.columnasInmovilizadas = 2;
    r.desplazamientoX = -100;
    EXPECT_EQ(cols({48 + 176 + 100 + 1, 600}), (std::vector{0, 1, 2}));
    EXPECT_EQ(cols({48 + 176 + 100, 600}), (std::vector{0, 1}));
    EXPECT_EQ(en(48 + 176 + 99, 30), (Celda{-1, -1}));
    EXPECT_EQ(en(48 + 176 + 100, 30), (Celda{0, 2}));
}

TEST_F(Geometria, UnBordeSeAgarraACuatroPixeles) {
    const int borde = 48 + 88;
    struct Caso {
        int x;
        int col;
    };
    for (const Caso& caso : {Caso{borde - 5, -1},
                             {borde - 4, 0},
                             {borde, 0},
                             {borde + 2, 0},
                             {borde + 3, -1},
                             {borde + 4, -1},
                             {borde + 5, -1},
                             {48 + 2, -1}}) {
        // A 3 píxeles a la derecha el punto corregido cae ya en la columna siguiente.
        EXPECT_EQ(r.bordeColEnPunto({caso.x, 10}), caso.col) << caso.x;
    }
    EXPECT_EQ(r.bordeColEnPunto({borde, 25}), 0);
    EXPECT_EQ(r.bordeColEnPunto({borde, 26}), -1);
    const int bordeFila = 26 + 24;
    EXPECT_EQ(r.bordeFilaEnPunto({10, bordeFila - 4}), 0);
    EXPECT_EQ(r.bordeFilaEnPunto({10, bordeFila - 5}), -1);
    EXPECT_EQ(r.bordeFilaEnPunto({47, bordeFila}), 0);
    EXPECT_EQ(r.bordeFilaEnPunto({48, bordeFila}), -1);
    EXPECT_EQ(r.bordeFilaEnPunto({10, 28}), -1);
}

TEST_F(Geometria, ElContenidoTieneMargenYMinimo) {
    EXPECT_EQ(r.tamanoContenido(), QSize(40 * 88, 120 * 24));
    r.zoom = 1.5;
    EXPECT_EQ(r.tamanoContenido(), QSize(40 * 132, 120 * 36));
    r.zoom = 1.0;
    hoja.celdaMut(200, 100).tipo = nucleo::TipoCelda::Numero;
    EXPECT_EQ(r.tamanoContenido(), QSize((100 + 12) * 88, (200 + 40) * 24));
    hoja.columnasInmovilizadas = 3;
    hoja.filasInmovilizadas = 2;
    EXPECT_EQ(r.tamanoContenido(), QSize((112 - 3) * 88, (240 - 2) * 24));
    hoja.columnasInmovilizadas = 112;
    hoja.filasInmovilizadas = 500;
    EXPECT_EQ(r.tamanoContenido(), QSize(0, 0));
    hoja.columnasInmovilizadas = hoja.filasInmovilizadas = 0;
    hoja.celdaMut(65535, 701).tipo = nucleo::TipoCelda::Numero;
    EXPECT_EQ(r.tamanoContenido(), QSize(702 * 88, 65536 * 24));
}

TEST_F(Geometria, SeVenLasFijasYLasQueAsoman) {
    EXPECT_EQ(cols(), (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(filas().size(), 24U);
    hoja.filasInmovilizadas = 2;
    r.desplazamientoY = 10000;
    const std::vector<int> vistas = filas({800, 26 + 48 + 50});
    // 10000 píxeles son 416 filas y 16 píxeles: la 418 asoma a medias.
    EXPECT_EQ(vistas, (std::vector{0, 1, 418, 419, 420}));
    r.desplazamientoY = 24;
    EXPECT_EQ(filas({800, 26 + 48 + 1}), (std::vector{0, 1, 3})) << "la 2 está tapada entera";
}

TEST_F(Geometria, LasFijasSeDanAunqueNoQuepan) {
    hoja.filasInmovilizadas = 50;
    const std::vector<int> vistas = filas({800, 100});
    EXPECT_EQ(vistas.size(), 50U);
    EXPECT_EQ(vistas.back(), 49);
}

TEST_F(Geometria, CambiarUnTamanoSeNotaEnElActo) {
    hoja.anchos[1] = 200;
    EXPECT_EQ(r.xDeCol(2), 48 + 288);
    hoja.anchos[1] = 100; // la misma columna: el mapa no crece
    EXPECT_EQ(r.xDeCol(2), 48 + 188);
    nucleo::Hoja otra = hoja;
    r.hoja = &otra;
    otra.anchos[1] = 50;
    EXPECT_EQ(r.xDeCol(2), 48 + 138);
    r.hoja = &hoja;
    EXPECT_EQ(r.xDeCol(2), 48 + 188);
    hoja.anchos = {{0, 10}};
    EXPECT_EQ(r.xDeCol(2), 48 + 98);
    hoja.anchos.clear();
    EXPECT_EQ(r.xDeCol(2), 48 + 176);
    r.zoom = 2.0;
    EXPECT_EQ(r.xDeCol(2), 48 + 352);
    const Renderizador copia = r;
    hoja.anchos[0] = 20;
    EXPECT_EQ(copia.xDeCol(2), 48 + 40 + 176);
}

} // namespace
