#include "model/hoja.h"

#include <climits>
#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace nucleo;

void escribir(Hoja& hoja, int fila, int col, const std::string& texto) {
    Celda& celda = hoja.celdaMut(fila, col);
    celda.tipo = TipoCelda::Texto;
    celda.entrada = texto;
}

TEST(Hoja, NaceVacia) {
    const Hoja hoja;
    EXPECT_EQ(hoja.nombre, "Hoja 1");
    EXPECT_TRUE(hoja.celdas.empty());
    EXPECT_TRUE(hoja.fusiones.empty());
    EXPECT_TRUE(hoja.anchos.empty());
    EXPECT_TRUE(hoja.altos.empty());
    EXPECT_EQ(hoja.filasInmovilizadas, 0);
    EXPECT_EQ(hoja.columnasInmovilizadas, 0);
    EXPECT_EQ(hoja.ultimaFilaUsada(), -1);
    EXPECT_EQ(hoja.ultimaColUsada(), -1);
}

TEST(Hoja, MirarUnaCeldaNoLaCrea) {
    Hoja hoja;
    EXPECT_EQ(hoja.celda(3, 3), nullptr);
    EXPECT_TRUE(hoja.celdas.empty());
    hoja.celdaMut(3, 3);
    ASSERT_NE(hoja.celda(3, 3), nullptr);
    EXPECT_EQ(*hoja.celda(3, 3), Celda());
    EXPECT_EQ(hoja.celdas.size(), 1U);
    EXPECT_EQ(hoja.celdas.count(claveLocal(3, 3)), 1U);
}

TEST(Hoja, QuitarUnaCeldaQueNoEstaNoHaceNada) {
    Hoja hoja;
    hoja.quitarCelda(1, 1);
    escribir(hoja, 1, 1, "a");
    hoja.quitarCelda(1, 2);
    EXPECT_EQ(hoja.celdas.size(), 1U);
    hoja.quitarCelda(1, 1);
    EXPECT_TRUE(hoja.celdas.empty());
    EXPECT_EQ(hoja.celda(1, 1), nullptr);
}

TEST(Hoja, TamanosPredeterminados) {
    Hoja hoja;
    EXPECT_EQ(hoja.anchoColumna(5), 88);
    EXPECT_EQ(hoja.altoFila(0), 24);
    hoja.anchos[5] = 200;
    hoja.altos[0] = -7;
    EXPECT_EQ(hoja.anchoColumna(5), 200);
    EXPECT_EQ(hoja.altoFila(0), -7) << "un tamaño de archivo se da como está";
    EXPECT_EQ(hoja.anchoColumna(4), 88);
    EXPECT_EQ(hoja.altoFila(1), 24);
}

TEST(Hoja, FusionarNormalizaYDejaSoloLaEsquina) {
    Hoja hoja;
    for (int fila = 0; fila < 6; ++fila)
        for (int col = 0; col < 6; ++col)
            escribir(hoja, fila, col, "x");
    EXPECT_TRUE(hoja.fusionar(3, 3, 1, 1));
    ASSERT_EQ(hoja.fusiones.size(), 1U);
    EXPECT_EQ(hoja.fusiones[0], (RangoFusion{1, 1, 3, 3}));
    for (int fila = 0; fila < 6; ++fila) {
        for (int col = 0; col < 6; ++col) {
            const bool tapada = fila >= 1 && fila <= 3 && col >= 1 && col <= 3 && fila + col > 2;
            EXPECT_EQ(hoja.celda(fila, col) == nullptr, tapada) << fila << ", " << col;
        }
    }
}

TEST(Hoja, FusionarUnaTiraBorraTodoMenosSuPrimeraCelda) {
    Hoja hoja;
    for (int i = 0; i < 4; ++i) {
        escribir(hoja, 0, i, "x");
        escribir(hoja, 10 + i, 0, "x");
    }
    EXPECT_TRUE(hoja.fusionar(0, 0, 0, 3));
    EXPECT_TRUE(hoja.fusionar(13, 0, 10, 0));
    EXPECT_EQ(hoja.celdas.size(), 2U);
    EXPECT_NE(hoja.celda(0, 0), nullptr);
    EXPECT_NE(hoja.celda(10, 0), nullptr);
}

TEST(Hoja, FusionesRechazadas) {
    Hoja hoja;
    escribir(hoja, 5, 5, "x");
    EXPECT_FALSE(hoja.fusionar(2, 2, 2, 2)) << "una sola celda";
    ASSERT_TRUE(hoja.fusionar(2, 2, 4, 4));
    const Hoja antes = hoja;
    EXPECT_FALSE(hoja.fusionar(4, 4, 5, 5)) << "toca una esquina";
    EXPECT_FALSE(hoja.fusionar(0, 0, 2, 2)) << "toca la otra esquina";
    EXPECT_FALSE(hoja.fusionar(0, 0, 9, 9)) << "la contiene";
    EXPECT_FALSE(hoja.fusionar(3, 3, 3, 4)) << "cae dentro";
    EXPECT_FALSE(hoja.fusionar(2, 2, 4, 4)) << "es la misma";
    EXPECT_EQ(hoja, antes) << "un rechazo no cambia nada";
    EXPECT_TRUE(hoja.fusionar(5, 2, 6, 4)) << "pegada por debajo";
    EXPECT_TRUE(hoja.fusionar(2, 5, 4, 6)) << "pegada por la derecha";
    EXPECT_TRUE(hoja.fusionar(0, 2, 1, 4)) << "pegada por encima";
    EXPECT_TRUE(hoja.fusionar(2, 0, 4, 1)) << "pegada por la izquierda";
}

TEST(Hoja, BuscarYSepararUnaFusion) {
    Hoja hoja;
    hoja.fusionar(0, 0, 1, 1);
    hoja.fusionar(5, 5, 6, 6);
    hoja.fusionar(8, 8, 9, 9);
    EXPECT_EQ(hoja.fusionEn(1, 1), &hoja.fusiones[0]);
    EXPECT_EQ(hoja.fusionEn(5, 6), &hoja.fusiones[1]);
    EXPECT_EQ(hoja.fusionEn(2, 1), nullptr);
    EXPECT_EQ(hoja.fusionEn(1, 2), nullptr);
    EXPECT_EQ(hoja.fusionEn(-1, 0), nullptr);
    escribir(hoja, 5, 5, "queda");
    EXPECT_FALSE(hoja.separar(3, 3));
    EXPECT_TRUE(hoja.separar(6, 5));
    EXPECT_EQ(hoja.fusiones, (std::vector<RangoFusion>{{0, 0, 1, 1}, {8, 8, 9, 9}}));
    EXPECT_NE(hoja.celda(5, 5), nullptr) << "separar no toca las celdas";
}

TEST(Hoja, DeLasFusionesQueSeSolapanMandaLaPrimera) {
    Hoja hoja;
    hoja.fusiones = {{0, 0, 3, 3}, {2, 2, 5, 5}, {2, 2, 2, 2}};
    EXPECT_EQ(hoja.fusionEn(2, 2), &hoja.fusiones[0]);
    EXPECT_TRUE(hoja.separar(2, 2));
    EXPECT_EQ(hoja.fusionEn(2, 2), &hoja.fusiones[0]);
    EXPECT_EQ(hoja.fusiones, (std::vector<RangoFusion>{{2, 2, 5, 5}, {2, 2, 2, 2}}));
}

TEST(Hoja, FusionesHostilesSeConservanSinDesbordar) {
    Hoja hoja;
    hoja.fusiones = {{9, 9, 2, 2},
                     {INT_MIN, INT_MIN, INT_MIN, INT_MIN},
                     {5, INT_MIN, 7, INT_MAX},
                     {2000000000, 0, -2000000000, 5}};
    EXPECT_EQ(hoja.fusionEn(5, 5), &hoja.fusiones[2]) << "la no normalizada no contiene nada";
    EXPECT_EQ(hoja.fusionEn(3, 3), nullptr);
    EXPECT_EQ(hoja.ultimaFilaUsada(), 7);
    EXPECT_EQ(hoja.ultimaColUsada(), INT_MAX) << "quien la usa la acota a la cuadrícula";
    EXPECT_TRUE(hoja.fusionar(INT_MIN, 0, 0, INT_MAX)) << "y fusionar con cualquier extremo";
    EXPECT_FALSE(hoja.fusionar(INT_MAX, INT_MAX, INT_MIN, INT_MIN));
}

TEST(Hoja, LoUsadoEsElContenidoYLasFusiones) {
    Hoja hoja;
    hoja.celdaMut(50, 20).formato.negrita = true;
    EXPECT_EQ(hoja.ultimaFilaUsada(), -1) << "solo tiene formato";
    EXPECT_EQ(hoja.ultimaColUsada(), -1);
    hoja.fusionar(0, 0, 9, 3);
    EXPECT_EQ(hoja.ultimaFilaUsada(), 9);
    EXPECT_EQ(hoja.ultimaColUsada(), 3);
    escribir(hoja, 30, 1, "x");
    EXPECT_EQ(hoja.ultimaFilaUsada(), 30);
    EXPECT_EQ(hoja.ultimaColUsada(), 3);
    hoja.quitarCelda(30, 1);
    EXPECT_EQ(hoja.ultimaFilaUsada(), 9);
}

TEST(Hoja, LasCopiasSonIndependientes) {
    Hoja hoja;
    escribir(hoja, 0, 0, "antes");
    hoja.anchos[3] = 100;
    Hoja copia = hoja;
    EXPECT_EQ(copia, hoja);
    escribir(hoja, 0, 0, "después");
    EXPECT_EQ(copia.celda(0, 0)->entrada, "antes");
    EXPECT_NE(copia, hoja);
    copia = hoja;
    EXPECT_EQ(copia, hoja);
    copia.anchos[3] = 101;
    EXPECT_NE(copia, hoja);
}

TEST(Hoja, SeComparaCampoACampo) {
    const Hoja hoja;
    const std::vector<void (*)(Hoja&)> cambios{
        [](Hoja& h) { h.nombre = "otra"; },
        [](Hoja& h) { h.celdaMut(0, 0); },
        [](Hoja& h) {
            h.fusiones.push_back({0, 0, 1, 1});
        },
        [](Hoja& h) { h.anchos[1] = 88; },
        [](Hoja& h) { h.altos[1] = 24; },
        [](Hoja& h) { h.filasInmovilizadas = 1; },
        [](Hoja& h) { h.columnasInmovilizadas = 1; },
    };
    for (std::size_t i = 0; i < cambios.size(); ++i) {
        Hoja otra;
        EXPECT_EQ(otra, hoja);
        cambios[i](otra);
        EXPECT_NE(otra, hoja) << "cambio " << i;
    }
}

TEST(Hoja, SuIdentidadViajaConLasCopiasYNoLasDistingue) {
    const Hoja una;
    const Hoja otra;
    const Hoja copia = una;
    EXPECT_NE(una.identidad, otra.identidad);
    EXPECT_EQ(una.identidad, copia.identidad);
    EXPECT_EQ(una, otra);
}

} // namespace
