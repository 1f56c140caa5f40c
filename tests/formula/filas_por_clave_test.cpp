#include "formula/filas_por_clave.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <vector>

namespace {

using motor_formulas::FilasPorClave;
using motor_formulas::TramoFilas;

std::vector<int> filas(const FilasPorClave& indice, std::uint64_t clave, TramoFilas tramo) {
    const auto halladas = indice.filas(clave, tramo);
    return {halladas.begin(), halladas.end()};
}

TEST(FilasPorClave, SinNingunaNoDaNinguna) {
    FilasPorClave indice;
    indice.empezar();
    indice.terminar();
    EXPECT_TRUE(filas(indice, 0, {0, 100}).empty());
    EXPECT_TRUE(filas(indice, 7, {0, 100}).empty());
}

TEST(FilasPorClave, LlenarDeNuevoOlvidaLoAnterior) {
    FilasPorClave indice;
    indice.empezar();
    indice.anadir(7, 1);
    indice.anadir(7, 2);
    indice.terminar();
    indice.empezar();
    indice.anadir(8, 3);
    indice.terminar();
    EXPECT_TRUE(filas(indice, 7, {0, 100}).empty());
    EXPECT_EQ(filas(indice, 8, {0, 100}), std::vector<int>({3}));
}

TEST(FilasPorClave, AlAzarDaLasMismasQueRecorrerlas) {
    std::mt19937 azar(41);
    for (const unsigned distintas : {1U, 3U, 50U, 100000U}) {
        FilasPorClave indice;
        std::map<std::uint64_t, std::vector<int>> llano;
        indice.empezar();
        for (int fila = 5; fila < 2000; fila += 1 + static_cast<int>(azar() % 3)) {
            // Claves que solo difieren en los bits altos, como las de los números enteros.
            const std::uint64_t clave = std::uint64_t{azar() % distintas} << 44;
            indice.anadir(clave, fila);
            llano[clave].push_back(fila);
        }
        indice.terminar();
        for (int vez = 0; vez < 500; ++vez) {
            const std::uint64_t clave = std::uint64_t{azar() % distintas} << 44;
            const int desde = static_cast<int>(azar() % 2000);
            const int hasta = desde + static_cast<int>(azar() % 2000);
            std::vector<int> esperadas;
            for (const int fila : llano[clave]) {
                if (desde <= fila && fila <= hasta)
                    esperadas.push_back(fila);
            }
            ASSERT_EQ(filas(indice, clave, {desde, hasta}), esperadas)
                << distintas << " claves, clave " << clave << ", de " << desde << " a " << hasta;
        }
    }
}

} // namespace
