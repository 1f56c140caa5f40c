#include "model/hoja.h"
#include "rendering/mapa_fusiones.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using renderizador::BandaVisible;
using renderizador::MapaFusiones;
using renderizador::Region;

BandaVisible banda(const std::vector<int>& indices) {
    BandaVisible nueva;
    for (const int indice : indices) {
        nueva.tramos.push_back({indice, 0, 10});
    }
    return nueva;
}

TEST(MapaFusiones, SinFusionesALaVistaEstaVacio) {
    const BandaVisible filas = banda({5, 6, 7});
    const BandaVisible cols = banda({0, 1});
    const std::vector<nucleo::RangoFusion> lejos{{0, 0, 4, 9}, {5, 2, 9, 3}, {8, 0, 9, 1}};
    const MapaFusiones mapa(lejos, Region{filas, cols});
    EXPECT_TRUE(mapa.visibles().empty());
    EXPECT_EQ(mapa.en(0, 0), nullptr);
    const BandaVisible ninguna = banda({});
    EXPECT_TRUE(MapaFusiones(lejos, Region{ninguna, cols}).visibles().empty());
}

TEST(MapaFusiones, MandaLaPrimeraComoEnLaHoja) {
    std::mt19937 azar(11);
    const auto entre = [&](int a, int b) { return std::uniform_int_distribution(a, b)(azar); };
    for (int vez = 0; vez < 200; ++vez) {
        nucleo::Hoja hoja;
        for (int i = entre(0, 30); i > 0; --i) {
            // Se pisan y algunas están del revés: así pueden venir de un archivo.
            const int fila = entre(-2, 30);
            const int col = entre(-2, 30);
            hoja.fusiones.push_back({fila, col, fila + entre(-2, 6), col + entre(-2, 6)});
        }
        std::vector<int> indicesFilas;
        std::vector<int> indicesCols;
        for (int i = entre(0, 10); i < 25; i += entre(1, 3)) {
            indicesFilas.push_back(i);
        }
        for (int i = entre(0, 10); i < 25; i += entre(1, 3)) {
            indicesCols.push_back(i);
        }
        const BandaVisible filas = banda(indicesFilas);
        const BandaVisible cols = banda(indicesCols);
        const MapaFusiones mapa(hoja.fusiones, Region{filas, cols});
        std::vector<const nucleo::RangoFusion*> duenas;
        for (std::size_t f = 0; f < indicesFilas.size(); ++f) {
            for (std::size_t c = 0; c < indicesCols.size(); ++c) {
                const auto* esperada = hoja.fusionEn(indicesFilas[f], indicesCols[c]);
                ASSERT_EQ(mapa.en(f, c), esperada)
                    << "vez " << vez << ": " << indicesFilas[f] << ", " << indicesCols[c];
                if (esperada != nullptr) {
                    duenas.push_back(esperada);
                }
            }
        }
        std::sort(duenas.begin(), duenas.end());
        duenas.erase(std::unique(duenas.begin(), duenas.end()), duenas.end());
        ASSERT_EQ(mapa.visibles(), duenas) << "cada dueña, una vez y por orden de creación";
    }
}

} // namespace
