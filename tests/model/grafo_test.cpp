#include "model/grafo_dependencias.h"
#include "model/libro.h"
#include "model/limites.h"
#include "tests/model/grafo_llano.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>
#include <stdexcept>
#include <vector>

namespace {

using nucleo::BloqueDeHoja;
using nucleo::claveCelda;
using nucleo::GrafoDependencias;
using nucleo::Libro;
using nucleo::VistaDependientes;
using nucleo::VistaPrecedentes;
using Claves = std::vector<std::uint64_t>;

const std::uint64_t A1 = claveCelda(0, 0, 0);
const std::uint64_t A2 = claveCelda(0, 1, 0);
const std::uint64_t B1 = claveCelda(0, 0, 1);
const std::uint64_t C1 = claveCelda(0, 0, 2);

TEST(Grafo, GuardaLosPrecedentesComoSeDan) {
    Libro libro;
    libro.establecerPrecedentes(C1, {B1, A1, B1});
    EXPECT_EQ(libro.precedentes.size(), 1U);
    EXPECT_EQ(libro.precedentes.at(C1), (Claves{B1, A1, B1}));
    EXPECT_EQ(libro.dependientes.size(), 2U);
    EXPECT_EQ(libro.dependientes.at(A1).size(), 1U);
    EXPECT_EQ(libro.dependientes.at(B1).size(), 1U) << "un lector cuenta una vez aunque lea dos";
    EXPECT_EQ(libro.dependientes.at(B1).count(C1), 1U);
    EXPECT_EQ(libro.dependientes.at(B1).count(A1), 0U);
}

TEST(Grafo, LaListaVaciaSacaLaFormula) {
    Libro libro;
    libro.establecerPrecedentes(C1, {A1});
    libro.establecerPrecedentes(C1, {});
    EXPECT_TRUE(libro.precedentes.empty());
    EXPECT_TRUE(libro.dependientes.empty());
    libro.establecerPrecedentes(B1, {});
    EXPECT_EQ(libro.precedentes.count(B1), 0U);
}

TEST(Grafo, SustituirNoDejaRastroDeLoAnterior) {
    Libro libro;
    libro.establecerPrecedentes(C1, {A1, B1});
    libro.establecerPrecedentes(A2, {A1});
    libro.establecerPrecedentes(C1, {A2});
    EXPECT_EQ(libro.dependientes.count(B1), 0U);
    EXPECT_EQ(Claves(libro.dependientes.at(A1).begin(), libro.dependientes.at(A1).end()),
              Claves{A2});
    libro.quitarDependencias(A2);
    EXPECT_EQ(libro.dependientes.count(A1), 0U);
    libro.quitarDependencias(A2);
    EXPECT_EQ(libro.precedentes.size(), 1U);
    libro.limpiarGrafo();
    EXPECT_TRUE(libro.precedentes.empty());
    EXPECT_EQ(libro.dependientes.size(), 0U);
}

TEST(Grafo, PreguntarPorLoQueNoEstaLanza) {
    Libro libro;
    EXPECT_THROW(static_cast<void>(libro.precedentes.at(A1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(libro.dependientes.at(A1)), std::out_of_range);
    EXPECT_TRUE(libro.dependientes.find(A1) == libro.dependientes.end());
    EXPECT_TRUE(libro.precedentes.find(A1) == libro.precedentes.end());
}

TEST(Grafo, LasVistasSeRecorrenComoMapas) {
    Libro libro;
    libro.establecerPrecedentes(C1, {A1, B1});
    libro.establecerPrecedentes(A2, {A1});
    std::size_t parejas = 0;
    for (const auto& [celda, lectores] : libro.dependientes) {
        EXPECT_EQ(lectores.size(), libro.dependientes.at(celda).size());
        ++parejas;
    }
    EXPECT_EQ(parejas, 2U);
    EXPECT_EQ(libro.precedentes.find(A2)->second, Claves{A1});
    EXPECT_EQ(libro.dependientes.find(B1)->second.count(C1), 1U);
    EXPECT_EQ(libro.dependientes.find(B1)->second.count(A2), 0U);
    EXPECT_TRUE(libro.dependientes.contains(B1));
    EXPECT_FALSE(libro.dependientes.contains(C1));

    Claves formulas;
    for (auto it = libro.precedentes.begin(); it != libro.precedentes.end();)
        formulas.push_back((it++)->first);
    EXPECT_EQ(formulas, (Claves{C1, A2})) << "por filas";
    EXPECT_TRUE(libro.precedentes.begin() == libro.precedentes.find(C1));
    EXPECT_FALSE(libro.precedentes.begin() == libro.precedentes.find(A2));
    libro.quitarDependencias(C1);
    EXPECT_EQ(libro.precedentes.begin()->first, A2);
    libro.quitarDependencias(A2);
    EXPECT_TRUE(libro.precedentes.begin() == libro.precedentes.end());
}

TEST(Grafo, LasVistasSiguenAlLibroQueSeMueve) {
    Libro origen;
    origen.establecerPrecedentes(C1, {A1});
    Libro libro = std::move(origen);
    EXPECT_EQ(libro.dependientes.count(A1), 1U);
    Libro otro;
    otro = std::move(libro);
    otro.establecerPrecedentes(B1, {A1});
    EXPECT_EQ(otro.dependientes.at(A1).size(), 2U);
}

TEST(Grafo, LoQueUnaVistaDaSigueAlDia) {
    Libro libro;
    libro.establecerPrecedentes(C1, {A1});
    const nucleo::ConjuntoLectores& lectores = libro.dependientes.at(A1);
    const Claves& leidas = libro.precedentes.at(C1);
    libro.establecerPrecedentes(B1, {A1});
    libro.establecerPrecedentes(C1, {A2, A1});
    EXPECT_EQ(&libro.dependientes.at(A1), &lectores);
    EXPECT_EQ(&libro.precedentes.at(C1), &leidas);
    EXPECT_EQ(lectores.size(), 2U);
    EXPECT_EQ(leidas, (Claves{A2, A1}));
}

TEST(Grafo, GuardaClavesDeCualquierForma) {
    Libro libro;
    const Claves raras = {
        ~0ULL, 0, 5, 1ULL << 45, claveCelda(65535, 16777215, 65535), claveCelda(0, 70000, 3)};
    for (const std::uint64_t lectora : raras)
        libro.establecerPrecedentes(lectora, raras);
    EXPECT_EQ(libro.dependientes.size(), raras.size());
    for (const std::uint64_t clave : raras) {
        EXPECT_EQ(libro.precedentes.at(clave), raras) << clave;
        EXPECT_EQ(libro.dependientes.at(clave).size(), raras.size()) << clave;
    }
}

TEST(Grafo, UnRectanguloSeVeCeldaACelda) {
    Libro libro;
    const std::vector<BloqueDeHoja> bloques = {{0, {0, 0, 1, 1}}, {0, {1, 1, 1, 1}}};
    libro.grafo().establecerBloques(C1, bloques);
    EXPECT_EQ(libro.precedentes.at(C1), (Claves{A1, B1, A2, claveCelda(0, 1, 1)}))
        << "en orden de clave y sin repetir";
    EXPECT_EQ(libro.dependientes.size(), 4U);
    EXPECT_EQ(libro.dependientes.at(claveCelda(0, 1, 1)).size(), 1U);
    EXPECT_EQ(libro.dependientes.count(claveCelda(0, 2, 0)), 0U);
    EXPECT_EQ(libro.dependientes.count(claveCelda(1, 0, 0)), 0U);
}

TEST(Grafo, LasColumnasEnterasYElGrandeEntranEnElArbol) {
    GrafoDependencias grafo;
    const BloqueDeHoja columna{0, {0, 5, nucleo::kUltimaFila, 5}};
    const BloqueDeHoja fila{0, {9, 0, 9, nucleo::kUltimaColumna}};
    const BloqueDeHoja ancho{0, {1, 1, 141, 700}};
    grafo.establecerBloques(A1, std::vector{columna});
    grafo.establecerBloques(A2, std::vector{fila});
    grafo.establecerBloques(B1, std::vector{ancho});
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 0, 5)), Claves{A1});
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 65535, 5)), Claves{A1});
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 9, 5)), (Claves{A1, B1, A2}));
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 9, 701)), Claves{A2});
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 141, 700)), Claves{B1});
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, 142, 700)), Claves{});
}

/// Todo lo que las vistas dicen, comparado con los mapas llanos.
void comparar(const GrafoDependencias& grafo, const pruebas::GrafoLlano& llano,
              const Claves& preguntas) {
    const VistaDependientes dependientes(grafo);
    const VistaPrecedentes precedentes(grafo);
    ASSERT_EQ(precedentes.size(), llano.precedentes.size());
    ASSERT_EQ(dependientes.size(), llano.dependientes.size());
    for (const auto& [formula, lista] : llano.precedentes)
        ASSERT_EQ(precedentes.at(formula), lista) << formula;
    for (const std::uint64_t celda : preguntas) {
        const auto conjunto = llano.dependientes.find(celda);
        ASSERT_EQ(dependientes.count(celda), conjunto == llano.dependientes.end() ? 0U : 1U);
        if (conjunto == llano.dependientes.end())
            continue;
        const nucleo::ConjuntoLectores lectores = dependientes.at(celda);
        ASSERT_EQ(Claves(lectores.begin(), lectores.end()),
                  Claves(conjunto->second.begin(), conjunto->second.end()))
            << celda;
    }
}

/// Lo que un recorrido alcanza desde unas celdas es la unión de sus lectores, cada uno una vez.
void compararAlcance(GrafoDependencias& grafo, const pruebas::GrafoLlano& llano,
                     const Claves& celdas) {
    std::set<std::uint64_t> esperadas;
    std::vector<GrafoDependencias::IdFormula> alcanzadas;
    grafo.empezarRecorrido();
    for (const std::uint64_t celda : celdas) {
        grafo.alcanzarLectores(celda, alcanzadas);
        const auto conjunto = llano.dependientes.find(celda);
        if (conjunto != llano.dependientes.end())
            esperadas.insert(conjunto->second.begin(), conjunto->second.end());
    }
    Claves obtenidas;
    for (const GrafoDependencias::IdFormula formula : alcanzadas)
        obtenidas.push_back(grafo.claveDe(formula));
    std::sort(obtenidas.begin(), obtenidas.end());
    ASSERT_EQ(obtenidas, Claves(esperadas.begin(), esperadas.end()));
}

struct Zona {
    const char* nombre;
    int hojas;
    int filas;    ///< cuántas, desde `desdeFila`
    int columnas; ///< cuántas, desde `desdeCol`
    int alto;     ///< máximo de un rectángulo
    int ancho;
    int desdeFila = 0;
    int desdeCol = 0;
};

TEST(Grafo, HaceLoMismoQueLosMapasLlanos) {
    const Zona zonas[] = {
        {"pequeña y tupida", 2, 8, 5, 8, 5},
        {"una columna", 1, 300, 1, 300, 1},
        {"filas anchas", 1, 4, 700, 3, 600},
        {"las esquinas del final", 3, 40, 30, 40, 30, nucleo::kFilas - 40, nucleo::kColumnas - 30},
        {"alta y ancha", 1, 500, 60, 200, 40, 65000, 100},
    };
    std::mt19937 azar(20261121);
    const auto entre = [&azar](int a, int b) {
        return std::uniform_int_distribution<int>(a, b)(azar);
    };
    for (const Zona& zona : zonas) {
        SCOPED_TRACE(zona.nombre);
        GrafoDependencias grafo;
        pruebas::GrafoLlano llano;
        const auto celda = [&] {
            return claveCelda(entre(0, zona.hojas - 1), zona.desdeFila + entre(0, zona.filas - 1),
                              zona.desdeCol + entre(0, zona.columnas - 1));
        };
        const auto bloque = [&] {
            const int fila = entre(0, zona.filas - 1);
            const int col = entre(0, zona.columnas - 1);
            const int hastaFila = std::min(zona.filas - 1, fila + entre(0, zona.alto - 1));
            const int hastaCol = std::min(zona.columnas - 1, col + entre(0, zona.ancho - 1));
            return BloqueDeHoja{entre(0, zona.hojas - 1),
                                {zona.desdeFila + fila, zona.desdeCol + col,
                                 zona.desdeFila + hastaFila, zona.desdeCol + hastaCol}};
        };
        const std::int64_t area = std::int64_t{zona.alto} * zona.ancho;
        const int pasos = area > 1000 ? 120 : 600;
        for (int paso = 0; paso < pasos; ++paso) {
            SCOPED_TRACE(paso);
            const std::uint64_t formula = celda();
            switch (entre(0, 9)) {
            case 0:
            case 1: {
                Claves lista(static_cast<std::size_t>(entre(0, 40)));
                std::generate(lista.begin(), lista.end(), celda);
                grafo.establecerPrecedentes(formula, lista);
                llano.establecerPrecedentes(formula, lista);
                break;
            }
            case 2:
                grafo.quitarDependencias(formula);
                llano.quitarDependencias(formula);
                break;
            case 3:
                if (entre(0, 99) == 0) {
                    grafo.limpiar();
                    llano = {};
                } else {
                    grafo.apuntarFormula(formula);
                }
                break;
            default: {
                std::vector<BloqueDeHoja> bloques(static_cast<std::size_t>(entre(0, 4)));
                std::generate(bloques.begin(), bloques.end(), bloque);
                grafo.establecerBloques(formula, bloques);
                llano.establecerBloques(formula, bloques);
            }
            }
            Claves celdas(20);
            std::generate(celdas.begin(), celdas.end(), celda);
            compararAlcance(grafo, llano, celdas);
            if (HasFatalFailure())
                return;
            if (paso % 20 == 19) {
                Claves preguntas(200);
                std::generate(preguntas.begin(), preguntas.end(), celda);
                comparar(grafo, llano, preguntas);
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

TEST(Grafo, LosRectangulosAnchosSeAlcanzanDesdeCualquierColumna) {
    // Tan anchos y altos que se apuntan por filas y se comprueban al visitarlos.
    std::mt19937 azar(5);
    const auto entre = [&azar](int a, int b) {
        return std::uniform_int_distribution<int>(a, b)(azar);
    };
    GrafoDependencias grafo;
    std::vector<nucleo::RangoCeldas> rangos;
    for (int i = 0; i < 150; ++i) {
        // Bordes que obligan a partirlos en cuantos trozos se puede.
        const int col = entre(0, 99) * 2 + 1;
        const int fila = entre(0, 2) * 128 + 1;
        rangos.push_back({fila, col, fila + 125, col + 241 + entre(0, 1) * 256});
        grafo.establecerBloques(claveCelda(0, i, 701), std::vector{BloqueDeHoja{0, rangos.back()}});
    }
    for (int vuelta = 0; vuelta < 200; ++vuelta) {
        std::set<std::uint64_t> esperadas;
        std::vector<GrafoDependencias::IdFormula> alcanzadas;
        grafo.empezarRecorrido();
        for (int i = 0; i < 4; ++i) {
            const int fila = entre(0, 400);
            const int col = entre(0, 700);
            grafo.alcanzarLectores(claveCelda(0, fila, col), alcanzadas);
            for (std::size_t r = 0; r < rangos.size(); ++r) {
                if (rangos[r].contiene(fila, col))
                    esperadas.insert(claveCelda(0, static_cast<int>(r), 701));
            }
        }
        std::set<std::uint64_t> obtenidas;
        for (const GrafoDependencias::IdFormula formula : alcanzadas)
            obtenidas.insert(grafo.claveDe(formula));
        ASSERT_EQ(obtenidas, esperadas) << vuelta;
        ASSERT_EQ(obtenidas.size(), alcanzadas.size());
    }
}

TEST(Grafo, LosTotalesAcumuladosSeAlcanzanUnaVezCadaUno) {
    GrafoDependencias grafo;
    constexpr int kFilas = 2000;
    for (int fila = 0; fila < kFilas; ++fila)
        grafo.establecerBloques(claveCelda(0, fila, 1),
                                std::vector{BloqueDeHoja{0, {0, 0, fila, 0}}});
    std::vector<GrafoDependencias::IdFormula> alcanzadas;
    grafo.empezarRecorrido();
    for (int fila = 0; fila < kFilas; ++fila)
        grafo.alcanzarLectores(claveCelda(0, fila, 0), alcanzadas);
    EXPECT_EQ(alcanzadas.size(), static_cast<std::size_t>(kFilas));
    EXPECT_EQ(grafo.lectoresDe(claveCelda(0, kFilas - 1, 0)), Claves{claveCelda(0, kFilas - 1, 1)});
    for (int fila = 0; fila < kFilas; fila += 2)
        grafo.quitarDependencias(claveCelda(0, fila, 1));
    EXPECT_EQ(grafo.lectoresDe(A1).size(), static_cast<std::size_t>(kFilas / 2));
}

TEST(TablaIndices, GuardaYQuitaComoUnMapa) {
    nucleo::TablaIndices tabla;
    std::vector<std::uint32_t> mezclas{0};
    std::vector<bool> dentro{false};
    std::mt19937 azar(7);
    for (int paso = 0; paso < 3000; ++paso) {
        if (azar() % 3 != 0) {
            // Pocas mezclas distintas, también junto al final de la tabla: así chocan.
            const std::uint32_t mezcla = azar() % 2 == 0 ? azar() % 8 : ~(azar() % 8);
            const auto indice = static_cast<std::uint32_t>(mezclas.size());
            mezclas.push_back(mezcla);
            dentro.push_back(true);
            tabla.insertar(mezcla, indice);
        } else {
            const std::size_t indice = azar() % mezclas.size();
            if (indice == 0)
                continue;
            tabla.quitar(mezclas[indice], static_cast<std::uint32_t>(indice));
            dentro[indice] = false;
        }
        const std::size_t indice = azar() % mezclas.size();
        if (indice == 0)
            continue;
        const std::uint32_t hallado = tabla.buscar(
            mezclas[indice], [&](std::uint32_t candidato) { return candidato == indice; });
        ASSERT_EQ(hallado != 0, dentro[indice]) << paso;
    }
}

} // namespace
