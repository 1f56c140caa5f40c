#include "model/limites.h"

#include <climits>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

#include "printing/paginas.h"

using impresion::Lamina;
using nucleo::RangoCeldas;

namespace {

const QSize kPapel(680, 900);

void escribir(nucleo::Hoja& hoja, int fila, int col) {
    nucleo::Celda& celda = hoja.celdaMut(fila, col);
    celda.tipo = nucleo::TipoCelda::Numero;
    celda.entrada = "1";
}

std::vector<RangoCeldas> repartir(const nucleo::Hoja& hoja, const RangoCeldas& zona,
                                  const QSize& papel = kPapel) {
    const Lamina lamina(hoja, 0, false, 1.0);
    return impresion::repartir(lamina, hoja, zona, papel);
}

TEST(Paginas, LoQueCabeVaEnUna) {
    nucleo::Hoja hoja;
    escribir(hoja, 36, 6);
    const RangoCeldas zona = impresion::zonaConContenido(hoja);
    EXPECT_EQ(zona, (RangoCeldas{0, 0, 36, 6}));
    EXPECT_EQ(repartir(hoja, zona), (std::vector{zona}));
}

TEST(Paginas, SePartenDeArribaAbajoYDespuesHaciaLaDerecha) {
    nucleo::Hoja hoja;
    escribir(hoja, 0, 0);
    escribir(hoja, 37, 0);
    escribir(hoja, 0, 7);
    escribir(hoja, 37, 7);
    // 7 columnas de 88 caben en 680; 37 filas de 24, en 900.
    EXPECT_EQ(
        repartir(hoja, {0, 0, 37, 7}),
        (std::vector<RangoCeldas>{{0, 0, 36, 6}, {37, 0, 37, 6}, {0, 7, 36, 7}, {37, 7, 37, 7}}));
}

TEST(Paginas, LasQueQuedarianEnBlancoNoSalen) {
    nucleo::Hoja hoja;
    escribir(hoja, 0, 0);
    escribir(hoja, nucleo::kUltimaFila, nucleo::kUltimaColumna);
    EXPECT_EQ(repartir(hoja, impresion::zonaConContenido(hoja)).size(), 2U);
}

TEST(Paginas, UnaCeldaConFondoCuentaYUnaVaciaNo) {
    nucleo::Hoja hoja;
    hoja.celdaMut(0, 0);
    EXPECT_TRUE(repartir(hoja, {0, 0, 0, 0}).empty());
    hoja.celdaMut(0, 0).formato.colorFondo = 0xFF00FF00;
    EXPECT_EQ(repartir(hoja, {0, 0, 0, 0}).size(), 1U);
}

TEST(Paginas, SinContenidoNoHayZona) {
    const nucleo::Hoja hoja;
    EXPECT_LT(impresion::zonaConContenido(hoja).fila2, 0);
}

TEST(Paginas, LoQueNoCabeEnNingunaVaSolo) {
    nucleo::Hoja hoja;
    hoja.altos[1] = INT_MAX;
    hoja.anchos[1] = INT_MAX;
    for (int i = 0; i < 3; ++i) {
        escribir(hoja, i, i);
    }
    EXPECT_EQ(repartir(hoja, {0, 0, 2, 2}),
              (std::vector<RangoCeldas>{{0, 0, 0, 0}, {1, 1, 1, 1}, {2, 2, 2, 2}}));
}

TEST(Paginas, SinSitioParaNadaTampocoSeCuelga) {
    nucleo::Hoja hoja;
    escribir(hoja, 0, 0);
    escribir(hoja, 2, 2);
    EXPECT_EQ(repartir(hoja, {0, 0, 2, 2}, {0, -5}).size(), 2U);
}

TEST(Paginas, SonComoMuchoLasDelTope) {
    nucleo::Hoja hoja;
    for (int fila = 0; fila < 200; ++fila) {
        for (int col = 0; col < 100; ++col) {
            escribir(hoja, fila, col);
        }
    }
    EXPECT_EQ(repartir(hoja, {0, 0, 199, 99}, {88, 24}).size(), impresion::kMaximoPaginas + 1);
}

TEST(Paginas, CadaCeldaEscritaEstaEnUnaSola) {
    std::mt19937 azar(20261121);
    const auto hasta = [&azar](int tope) {
        return static_cast<int>(azar() % static_cast<unsigned>(tope + 1));
    };
    for (int vuelta = 0; vuelta < 40; ++vuelta) {
        nucleo::Hoja hoja;
        std::set<std::pair<int, int>> escritas;
        for (int i = 0; i < 60; ++i) {
            const int fila = hasta(400);
            const int col = hasta(60);
            escribir(hoja, fila, col);
            escritas.insert({fila, col});
            hoja.altos[hasta(400)] = hasta(500);
            hoja.anchos[hasta(60)] = hasta(700);
        }
        const Lamina lamina(hoja, 0, false, 1.0);
        const auto paginas =
            impresion::repartir(lamina, hoja, impresion::zonaConContenido(hoja), kPapel);
        std::size_t contadas = 0;
        for (const RangoCeldas& pagina : paginas) {
            const QSize medida = lamina.medir(pagina);
            EXPECT_TRUE(medida.width() <= kPapel.width() || pagina.col1 == pagina.col2);
            EXPECT_TRUE(medida.height() <= kPapel.height() || pagina.fila1 == pagina.fila2);
            std::size_t dentro = 0;
            for (const auto& [fila, col] : escritas) {
                dentro += pagina.contiene(fila, col) ? 1 : 0;
            }
            EXPECT_GT(dentro, 0U) << "una página en blanco";
            contadas += dentro;
        }
        EXPECT_EQ(contadas, escritas.size()) << "vuelta " << vuelta;
    }
}

TEST(Paginas, SeRepitenLasFilasInmovilizadasSiDejanSitio) {
    nucleo::Hoja hoja;
    hoja.filasInmovilizadas = 3;
    EXPECT_EQ(impresion::filasQueSeRepiten(hoja, {0, 0, 99, 5}, 1.0, 900), 3);
    EXPECT_EQ(impresion::filasQueSeRepiten(hoja, {0, 0, 2, 5}, 1.0, 900), 0) << "no hay más filas";
    EXPECT_EQ(impresion::filasQueSeRepiten(hoja, {1, 0, 99, 5}, 1.0, 900), 0);
    EXPECT_EQ(impresion::filasQueSeRepiten(hoja, {0, 0, 99, 5}, 1.0, 143), 0);
    for (const int filas : {INT_MAX, INT_MIN, -1}) {
        hoja.filasInmovilizadas = filas;
        EXPECT_EQ(impresion::filasQueSeRepiten(hoja, {0, 0, 99, 5}, 1.0, 900), 0) << filas;
    }
}

TEST(Paginas, AjustarEncogeHastaQueCabe) {
    nucleo::Hoja hoja;
    EXPECT_EQ(impresion::escalaParaElAncho(hoja, {0, 0, 0, 6}, false, 680), 1.0);
    for (const int columnas : {8, 11, 20, 37, 60}) {
        for (const bool encabezados : {false, true}) {
            const RangoCeldas zona{0, 0, 0, columnas - 1};
            const double escala = impresion::escalaParaElAncho(hoja, zona, encabezados, 680);
            const Lamina lamina(hoja, 0, encabezados, escala);
            const int ocupa = lamina.medir(zona).width() + lamina.orla().width();
            EXPECT_LE(ocupa, 680) << columnas;
            EXPECT_GT(ocupa, 600) << columnas << ": encoge de más";
        }
    }
    EXPECT_EQ(impresion::escalaParaElAncho(hoja, {0, 0, 0, 701}, true, 680), 0.1);
    hoja.anchos[0] = INT_MAX;
    EXPECT_EQ(impresion::escalaParaElAncho(hoja, {0, 0, 0, 3}, true, 680), 0.1);
}

} // namespace
