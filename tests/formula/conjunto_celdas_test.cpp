#include "formula/conjunto_celdas.h"
#include "model/limites.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <tuple>
#include <vector>

namespace motor_formulas {
namespace {

using Celda = std::tuple<int, int, int>; // hoja, columna, fila: el orden en que se hallan

std::vector<Celda> halladas(const ConjuntoCeldas& conjunto, const nucleo::BloqueDeHoja& bloque) {
    std::vector<Celda> celdas;
    for (ConjuntoCeldas::Cursor cursor; conjunto.buscar(bloque, cursor); ++cursor.fila)
        celdas.emplace_back(bloque.hoja, bloque.rango.col1 + cursor.col,
                            bloque.rango.fila1 + cursor.fila);
    return celdas;
}

TEST(ConjuntoCeldas, HallaLoMismoQueUnConjuntoOrdenado) {
    std::mt19937 azar(3);
    const auto entre = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar); };
    // Los bordes de las palabras de 64 filas y de las páginas de 4096.
    const std::vector<int> filas = {0,    1,    62,   63,   64,   65,    127,   128,   4094,
                                    4095, 4096, 4097, 8191, 8192, 65471, 65472, 65534, 65535};
    const std::vector<int> cols = {0, 1, 2, 3, 700, 701};
    const auto unaDe = [&](const std::vector<int>& lista) {
        return lista[static_cast<std::size_t>(entre(0, static_cast<int>(lista.size()) - 1))];
    };
    ConjuntoCeldas conjunto;
    std::set<Celda> llano;
    for (int paso = 0; paso < 4000; ++paso) {
        const int hoja = entre(0, 2);
        const int fila = unaDe(filas);
        const int col = unaDe(cols);
        if (entre(0, 2) == 0) {
            conjunto.poner(hoja, fila, col);
            llano.emplace(hoja, col, fila);
        } else {
            conjunto.quitar(hoja, fila, col);
            llano.erase({hoja, col, fila});
        }
        const int f1 = unaDe(filas);
        const int f2 = unaDe(filas);
        const int c1 = unaDe(cols);
        const int c2 = unaDe(cols);
        const nucleo::BloqueDeHoja bloque{
            entre(0, 3), {std::min(f1, f2), std::min(c1, c2), std::max(f1, f2), std::max(c1, c2)}};
        std::vector<Celda> esperadas;
        for (const auto& [h, c, f] : llano) {
            if (h == bloque.hoja && bloque.rango.contiene(f, c))
                esperadas.emplace_back(h, c, f);
        }
        ASSERT_EQ(halladas(conjunto, bloque), esperadas) << "paso " << paso;
        ASSERT_EQ(conjunto.toca(bloque), !esperadas.empty()) << "paso " << paso;
    }
}

TEST(ConjuntoCeldas, PonerYQuitarDosVecesEsComoUna) {
    ConjuntoCeldas conjunto;
    const nucleo::BloqueDeHoja todo{0, {0, 0, nucleo::kUltimaFila, nucleo::kUltimaColumna}};
    conjunto.quitar(0, 5, 5);
    conjunto.poner(0, 5, 5);
    conjunto.poner(0, 5, 5);
    conjunto.quitar(0, 5000, 5); // otra página de la misma columna
    conjunto.quitar(0, 6, 5);
    EXPECT_EQ(halladas(conjunto, todo), (std::vector<Celda>{{0, 5, 5}}));
    conjunto.quitar(0, 5, 5);
    conjunto.quitar(0, 5, 5);
    EXPECT_FALSE(conjunto.toca(todo));
    conjunto.poner(0, 7, 5);
    EXPECT_EQ(halladas(conjunto, todo), (std::vector<Celda>{{0, 5, 7}}));
}

} // namespace
} // namespace motor_formulas
