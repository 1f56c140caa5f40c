// Cambiar las celdas de un rectángulo, contra hacerlo celda a celda en un mapa.

#include "model/almacen_celdas.h"
#include "model/almacen_operaciones.h"
#include "tests/model/almacen_llano.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <utility>

namespace {

using namespace nucleo;
using prueba::AlmacenLlano;

struct GeometriaMinima {
    static constexpr int kFilas = 8;
    static constexpr int kColumnas = 3;
    static constexpr int kBitsBloque = 1;
    static constexpr int kBitsNodo = 1;
};
struct GeometriaPequena {
    static constexpr int kFilas = 128;
    static constexpr int kColumnas = 13;
    static constexpr int kBitsBloque = 3;
    static constexpr int kBitsNodo = 2;
};

/// Dos copias que se turnan: lo que se cambia en una no se ve en la otra.
template <typename G> void cambiarAlAzar(std::uint32_t semilla) {
    std::mt19937 azar(semilla);
    const auto hasta = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar); };
    std::array<AlmacenEnBloques<G>, 2> almacenes;
    std::array<AlmacenLlano<G>, 2> llanos;
    for (int paso = 0; paso < 600; ++paso) {
        const auto i = static_cast<std::size_t>(hasta(2));
        AlmacenEnBloques<G>& almacen = almacenes[i];
        AlmacenLlano<G>& llano = llanos[i];
        const RangoCeldas rango{hasta(G::kFilas + 2) - 2, hasta(G::kColumnas + 2) - 2,
                                hasta(G::kFilas + 2), hasta(G::kColumnas + 2)};
        switch (hasta(8)) {
        case 0:
            almacenes[1 - i] = almacen;
            llanos[1 - i] = llano;
            break;
        case 1:
            almacen.quitarRango(rango);
            llano.quitarRango(rango);
            break;
        case 2:
        case 3: {
            const std::uint64_t clave = claveLocal(hasta(G::kFilas), hasta(G::kColumnas));
            almacen[clave].entrada = llano.celdas[clave].entrada = std::to_string(paso);
            almacen[clave].tipo = llano.celdas[clave].tipo = TipoCelda::Texto;
            break;
        }
        default: {
            const auto color = static_cast<std::uint32_t>(hasta(3));
            const auto cambio = [=](Celda& celda) {
                celda.formato.colorFondo = color;
                celda.formato.negrita = !celda.formato.negrita;
            };
            almacen.cambiarRango(rango, cambio);
            for (int fila = std::max(rango.fila1, 0); fila <= std::min(rango.fila2, G::kFilas - 1);
                 ++fila) {
                for (int col = std::max(rango.col1, 0);
                     col <= std::min(rango.col2, G::kColumnas - 1); ++col)
                    cambio(llano.celdas[claveLocal(fila, col)]);
            }
        }
        }
        for (std::size_t j = 0; j < 2; ++j) {
            ASSERT_TRUE(almacenes[j].comprobar()) << "paso " << paso;
            ASSERT_EQ(almacenes[j].size(), llanos[j].celdas.size()) << "paso " << paso;
            for (const auto& [clave, celda] : std::as_const(almacenes[j]))
                ASSERT_EQ(celda, llanos[j].celdas.at(clave)) << "paso " << paso;
        }
    }
}

TEST(CambioDeRango, HaceLoMismoQueCeldaACelda) {
    for (std::uint32_t semilla = 1; semilla <= 5; ++semilla) {
        cambiarAlAzar<GeometriaMinima>(semilla);
        cambiarAlAzar<GeometriaPequena>(semilla);
    }
}

TEST(CambioDeRango, LaCuadriculaEnteraCabeEnMuyPoco) {
    AlmacenCeldas almacen;
    const RangoCeldas todo{0, 0, kUltimaFila, kUltimaColumna};
    almacen[claveLocal(100, 7)].entrada = "x";
    int llamadas = 0;
    const auto negrita = [&](Celda& celda) {
        celda.formato.negrita = true;
        ++llamadas;
    };
    almacen.cambiarRango(todo, negrita);
    // Celda a celda serían varios gigabytes y cuarenta y seis millones de llamadas.
    EXPECT_LT(llamadas, 1000);
    EXPECT_EQ(almacen.size(), std::size_t{kFilas} * kColumnas);
    EXPECT_EQ(almacen.contarEn({5, 5, 5, 9}), 5U);
    const AlmacenCeldas copia = almacen;
    almacen[claveLocal(kUltimaFila, kUltimaColumna)].formato.negrita = false;
    EXPECT_TRUE(copia.buscar(kUltimaFila, kUltimaColumna)->formato.negrita);
    EXPECT_TRUE(almacen.buscar(kUltimaFila - 1, kUltimaColumna)->formato.negrita);
    EXPECT_TRUE(almacen.buscar(kUltimaFila, kUltimaColumna - 1)->formato.negrita);
    EXPECT_EQ(almacen.buscar(100, 7)->entrada, "x");
    almacen.cambiarRango(todo, [](Celda& celda) { celda.formato.negrita = false; });
    EXPECT_FALSE(almacen.buscar(3, 3)->formato.negrita);
    EXPECT_TRUE(almacen.comprobar());
}

} // namespace
