#include "formula/columna_recordada.h"
#include "formula/functions/criterio.h"
#include "formula/indice_exacto.h"
#include "model/hoja.h"
#include "model/limites.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace motor_formulas {
namespace {

using nucleo::TipoValor;
using nucleo::Valor;

/// La búsqueda ordenada, fila a fila.
int buscarLlano(const nucleo::Hoja& hoja, TramoFilas filas, const Valor& buscado, Orden orden) {
    int ultima = -1;
    for (int fila = filas.desde; fila <= filas.hasta; ++fila) {
        const nucleo::Celda* celda = hoja.celdas.buscar(fila, 0);
        if (celda == nullptr || celda->valor.tipo != buscado.tipo)
            continue;
        const bool numeros = buscado.tipo == TipoValor::Numero;
        const double numero = celda->valor.numero;
        const std::string texto = cambiarCaso(celda->valor.texto, false);
        const std::string minusculas = cambiarCaso(buscado.texto, false);
        const bool mayor = numeros ? numero > buscado.numero : texto > minusculas;
        const bool menor = numeros ? numero < buscado.numero : texto < minusculas;
        if (orden == Orden::Ascendente ? mayor : menor)
            return ultima;
        ultima = fila;
    }
    return ultima;
}

class ColumnaLarga {
  public:
    /// `tantos` de cada cien fórmulas dan un valor y las demás nada; `repetidos` filas seguidas dan
    /// el mismo. Las últimas filas no tienen celdas.
    ColumnaLarga(unsigned semilla, int tantos, int repetidos) : azar_(semilla) {
        for (int fila = 0; fila < kAlto; ++fila) {
            hoja_.celdaMut(fila, 0).tipo = nucleo::TipoCelda::Formula;
            if (entre(0, 99) < tantos)
                poner(fila, fila / repetidos);
        }
    }

    int entre(int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar_); }

    Valor valor(int n) {
        return entre(0, 1) == 0 ? Valor::deNumero(n)
                                : Valor::deTexto("T" + std::to_string(100000 + n));
    }

    void poner(int fila, int n) {
        nucleo::Celda& celda = hoja_.celdaMut(fila, 0);
        celda.tipo = nucleo::TipoCelda::Formula;
        celda.valor = entre(0, 400) == 0 ? Valor::deNumero(std::numeric_limits<double>::quiet_NaN())
                                         : valor(n);
        columna_.cambiar(++momento_, fila, celda.valor);
    }

    void comparar(int paso) {
        static const int kBordes[] = {0, 1, 63, 64, 2047, 2048, 2049, 4095, 4096, 6143, 6144, 9000};
        int desde = kBordes[entre(0, 11)];
        int hasta = kBordes[entre(0, 11)];
        if (desde > hasta)
            std::swap(desde, hasta);
        const Valor buscado = valor(entre(-2, kAlto));
        for (const Orden orden : {Orden::Ascendente, Orden::Descendente}) {
            const VistaValor vista = vistaDe(buscado);
            ASSERT_EQ(columna_.buscarOrdenado({desde, hasta}, vista, orden),
                      buscarLlano(hoja_, {desde, hasta}, buscado, orden))
                << "paso " << paso << ": " << desde << " a " << hasta << ", " << buscado.numero
                << buscado.texto;
        }
    }

    static constexpr int kAlto = 6200;

  private:
    std::mt19937 azar_;
    nucleo::Hoja hoja_;
    std::size_t paginas_ = 0;
    ColumnaRecordada columna_{hoja_, 0, paginas_};
    std::uint64_t momento_ = 0;
};

TEST(ColumnaRecordada, BuscaOrdenadoComoFilaAFila) {
    const struct {
        unsigned semilla;
        int tantos;
        int repetidos;
    } casos[] = {{1, 100, 1}, {2, 100, 500}, {3, 2, 1}, {4, 0, 1}, {5, 60, 3000}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.semilla);
        ColumnaLarga columna(caso.semilla, caso.tantos, caso.repetidos);
        for (int paso = 0; paso < 150; ++paso) {
            if (caso.tantos > 0 && columna.entre(0, 3) == 0)
                columna.poner(columna.entre(0, ColumnaLarga::kAlto - 1),
                              columna.entre(0, ColumnaLarga::kAlto));
            ASSERT_NO_FATAL_FAILURE(columna.comparar(paso));
        }
    }
}

/// Columnas llenas de números en orden, del todo o solo dentro de cada página o de cada grupo de
/// páginas: lo que se halla partiendo por la mitad y lo que no se puede hallar así.
TEST(ColumnaRecordada, BuscaEnLoQueEstaEnOrdenATrozos) {
    constexpr int kAlto = 4096 + 100;
    using Forma = int (*)(int fila);
    const Forma formas[] = {
        [](int fila) { return fila; },
        [](int fila) { return -fila; },
        [](int fila) { return fila / 64 * 64 - fila % 64; },
        [](int fila) { return fila % 64 - fila / 64 * 64; },
        [](int fila) { return fila / 2048 * 2048 - fila % 2048; },
        [](int fila) { return fila % 2048 - fila / 2048 * 2048; },
        [](int fila) { return fila / 100; },
        [](int fila) { return -(fila / 100); },
        [](int) { return 7; },
        [](int fila) { return fila == 64 ? 9000 : fila; },
        [](int fila) { return fila == 2047 ? 9000 : -fila; },
        [](int fila) { return fila == 1000 ? -9000 : fila; },
    };
    std::mt19937 azar(7);
    for (std::size_t forma = 0; forma < std::size(formas); ++forma) {
        SCOPED_TRACE(forma);
        nucleo::Hoja hoja;
        for (int fila = 0; fila < kAlto; ++fila) {
            nucleo::Celda& celda = hoja.celdaMut(fila, 0);
            celda.tipo = nucleo::TipoCelda::Numero;
            celda.numero = formas[forma](fila);
            celda.valor = Valor::deNumero(celda.numero);
        }
        std::size_t paginas = 0;
        ColumnaRecordada columna(hoja, 0, paginas);
        for (int paso = 0; paso < 60; ++paso) {
            const int fila = std::uniform_int_distribution<int>(0, kAlto - 1)(azar);
            const Valor buscado = Valor::deNumero(formas[forma](fila) + paso % 3 - 1);
            const TramoFilas filas{paso % 4 == 3 ? fila / 2 : 0, paso % 5 == 4 ? fila : kAlto - 1};
            for (const Orden orden : {Orden::Ascendente, Orden::Descendente})
                ASSERT_EQ(columna.buscarOrdenado(filas, vistaDe(buscado), orden),
                          buscarLlano(hoja, filas, buscado, orden))
                    << filas.desde << " a " << filas.hasta << ", " << buscado.numero;
        }
    }
}

TEST(ColumnaRecordada, SoloCuentaLasPaginasConCeldas) {
    nucleo::Hoja hoja;
    std::size_t paginas = 0;
    ColumnaRecordada columna(hoja, 0, paginas);
    for (const int fila : {0, 63, 128}) {
        nucleo::Celda& celda = hoja.celdaMut(fila, 0);
        celda.tipo = nucleo::TipoCelda::Numero;
        celda.numero = fila + 0.5;
    }
    EXPECT_EQ(columna.pagina(0).conNumero, (std::uint64_t{1} << 63) | 1U);
    EXPECT_EQ(columna.pagina(0).numeros[63], 63.5);
    EXPECT_EQ(columna.pagina(1).ocupadas(), 0U);
    EXPECT_EQ(columna.pagina(2).conNumero, 1U);
    EXPECT_EQ(columna.pagina(1023).ocupadas(), 0U);
    EXPECT_EQ(paginas, 2U);
    EXPECT_EQ(columna.valor(1).tipo, TipoValor::Vacio);
    EXPECT_EQ(columna.valor(128).numero, 128.5);
}

TEST(IndiceExacto, UnNaNNoEsIgualANada) {
    nucleo::Hoja hoja;
    const double noNumero = std::numeric_limits<double>::quiet_NaN();
    const double valores[] = {2, noNumero, 1, 2};
    for (int fila = 0; fila < 4; ++fila) {
        nucleo::Celda& celda = hoja.celdaMut(fila, 0);
        celda.tipo = nucleo::TipoCelda::Numero;
        celda.numero = valores[fila];
    }
    std::size_t paginas = 0;
    ColumnaRecordada columna(hoja, 0, paginas);
    IndiceExacto indice;
    indice.construir(columna, {0, 70}, 1);
    const auto filas = [&](double buscado, TramoFilas tramo) {
        std::vector<int> halladas;
        indice.recorrer(columna, tramo, Criterio::desdeValor(Valor::deNumero(buscado)),
                        [&](int fila) {
                            halladas.push_back(fila);
                            return true;
                        });
        return halladas;
    };
    EXPECT_EQ(filas(2, {0, 70}), (std::vector<int>{0, 3}));
    EXPECT_EQ(filas(2, {1, 3}), (std::vector<int>{3}));
    EXPECT_EQ(filas(2, {0, 2}), (std::vector<int>{0}));
    EXPECT_EQ(filas(2, {1, 2}), (std::vector<int>{}));
    EXPECT_EQ(filas(1, {2, 2}), (std::vector<int>{2}));
    EXPECT_EQ(filas(noNumero, {0, 70}), (std::vector<int>{}));
}

TEST(IndiceExacto, SirveHastaQueCambiaUnaFilaSuya) {
    nucleo::Hoja hoja;
    std::size_t paginas = 0;
    ColumnaRecordada columna(hoja, 0, paginas);
    IndiceExacto indice;
    EXPECT_FALSE(indice.sirve(columna, {0, 0}));
    indice.construir(columna, {10, 20}, 5);
    EXPECT_TRUE(indice.sirve(columna, {10, 20}));
    EXPECT_TRUE(indice.sirve(columna, {11, 19}));
    EXPECT_FALSE(indice.sirve(columna, {9, 20}));
    EXPECT_FALSE(indice.sirve(columna, {10, 21}));
    columna.cambiar(5, 15, {}); // antes de construirlo, o a la vez
    EXPECT_TRUE(indice.sirve(columna, {10, 20}));
    for (const int fila : {9, 21}) {
        columna.cambiar(6, fila, {});
        ASSERT_EQ(indice.sirve(columna, {10, 20}), fila == 9) << fila;
    }
    for (const int fila : {10, 20}) {
        ColumnaRecordada otra(hoja, 0, paginas);
        otra.cambiar(6, fila, {});
        EXPECT_FALSE(indice.sirve(otra, {12, 13})) << fila;
    }
}

} // namespace
} // namespace motor_formulas
