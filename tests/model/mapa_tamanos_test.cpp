#include "model/mapa_tamanos.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using nucleo::MapaTamanos;

std::map<int, int> ordenado(const MapaTamanos& tamanos) {
    return {tamanos.begin(), tamanos.end()};
}

TEST(MapaTamanos, SeUsaComoUnMapa) {
    MapaTamanos tamanos{{1, 10}, {2, 20}};
    tamanos[3] = 30;
    tamanos.at(1) = 11;
    tamanos.find(2)->second = 22;
    EXPECT_FALSE(tamanos.emplace(3, 99).second);
    EXPECT_TRUE(tamanos.insert({4, 40}).second);
    tamanos.insert_or_assign(4, 44);
    EXPECT_EQ(ordenado(tamanos), (std::map<int, int>{{1, 11}, {2, 22}, {3, 30}, {4, 44}}));
    EXPECT_EQ(tamanos.erase(4), 1U);
    EXPECT_EQ(tamanos.erase(4), 0U);
    EXPECT_EQ(tamanos.count(3), 1U);
    EXPECT_FALSE(tamanos.contains(4));
    EXPECT_EQ(std::as_const(tamanos).at(3), 30);
    EXPECT_THROW(static_cast<void>(std::as_const(tamanos).at(4)), std::out_of_range);
    EXPECT_EQ(std::as_const(tamanos).find(4), std::as_const(tamanos).end());
    tamanos.clear();
    EXPECT_TRUE(tamanos.empty());
    EXPECT_EQ(tamanos, MapaTamanos());
}

TEST(MapaTamanos, UnaCopiaNoVeLoQueSeEscribeEnLaOtra) {
    // Cada mapa contra un std::map que se copia entero.
    std::mt19937 azar(3);
    const auto hasta = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar); };
    std::vector<MapaTamanos> mapas(4);
    std::vector<std::map<int, int>> llanos(4);
    for (int i = 0; i < 5000; ++i) {
        const auto uno = static_cast<std::size_t>(hasta(4));
        const auto otro = static_cast<std::size_t>(hasta(4));
        const int clave = hasta(12);
        switch (hasta(6)) {
        case 0:
            mapas[uno] = mapas[otro];
            llanos[uno] = llanos[otro];
            break;
        case 1:
            mapas[uno].erase(clave);
            llanos[uno].erase(clave);
            break;
        case 2:
            for (auto& par : mapas[uno])
                ++par.second;
            for (auto& par : llanos[uno])
                ++par.second;
            break;
        case 3:
            if (hasta(8) == 0) {
                mapas[uno].clear();
                llanos[uno].clear();
            }
            break;
        default:
            mapas[uno][clave] = i;
            llanos[uno][clave] = i;
        }
        for (std::size_t j = 0; j < 4; ++j)
            ASSERT_EQ(ordenado(mapas[j]), llanos[j]) << "paso " << i;
        ASSERT_EQ(mapas[uno] == mapas[otro], llanos[uno] == llanos[otro]) << "paso " << i;
    }
}

TEST(MapaTamanos, UnaCopiaComparteHastaQueSeEscribe) {
    MapaTamanos uno{{1, 10}};
    const MapaTamanos copia = uno;
    EXPECT_TRUE(copia.comparteCon(uno));
    EXPECT_EQ(std::as_const(uno).at(1), 10);
    EXPECT_TRUE(copia.comparteCon(uno)) << "leer no aparta";
    uno[1] = 11;
    EXPECT_FALSE(copia.comparteCon(uno));
    uno[1] = 10;
    EXPECT_FALSE(copia.comparteCon(uno)) << "iguales, pero ya no la misma tabla";
    EXPECT_EQ(copia, uno);
    EXPECT_TRUE(MapaTamanos().comparteCon(MapaTamanos()));
}

} // namespace
