#include "model/almacen_celdas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace nucleo;

Celda texto(const std::string& entrada) {
    Celda celda;
    celda.tipo = TipoCelda::Texto;
    celda.entrada = entrada;
    return celda;
}

Celda numero(double n) {
    Celda celda;
    celda.tipo = TipoCelda::Numero;
    celda.numero = n;
    return celda;
}

TEST(Almacen, SeUsaComoUnMapa) {
    AlmacenCeldas celdas;
    celdas.reserve(1000);
    EXPECT_TRUE(celdas.empty());
    EXPECT_EQ(celdas.find(7), celdas.end());
    EXPECT_EQ(celdas.count(7), 0U);
    EXPECT_THROW(static_cast<void>(celdas.at(7)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(std::as_const(celdas).at(7)), std::out_of_range);
    EXPECT_TRUE(celdas.empty()) << "preguntar no crea";

    celdas[7].entrada = "siete";
    EXPECT_EQ(celdas.size(), 1U);
    EXPECT_TRUE(celdas.contains(7));
    EXPECT_EQ(celdas.at(7).entrada, "siete");
    EXPECT_EQ(celdas.find(7)->first, 7U);
    EXPECT_EQ(celdas.find(7)->second.entrada, "siete");
    celdas.find(7)->second.entrada = "7";
    EXPECT_EQ(std::as_const(celdas).find(7)->second.entrada, "7");

    EXPECT_FALSE(celdas.emplace(7, texto("otra")).second);
    EXPECT_EQ(celdas.at(7).entrada, "7");
    EXPECT_TRUE(celdas.emplace(8, texto("ocho")).second);
    EXPECT_FALSE(celdas.insert_or_assign(8, texto("8")).second);
    EXPECT_EQ(celdas.insert({9, texto("nueve")}).first->second.entrada, "nueve");
    EXPECT_EQ(celdas.try_emplace(10).first->second, Celda());
    EXPECT_EQ(celdas.size(), 4U);

    EXPECT_EQ(celdas.erase(7), 1U);
    EXPECT_EQ(celdas.erase(7), 0U);
    EXPECT_EQ(celdas.erase(celdas.find(9))->first, 10U);
    EXPECT_EQ(celdas.size(), 2U);
    celdas.clear();
    EXPECT_TRUE(celdas.empty());
    EXPECT_EQ(celdas.begin(), celdas.end());
}

TEST(Almacen, SeRecorreConParesDeClaveYCelda) {
    AlmacenCeldas celdas;
    for (int i = 0; i < 200; ++i)
        celdas[claveLocal(i * 700, i)].numero = i; // desde la fila 65536, fuera de la cuadrícula
    for (auto& [clave, celda] : celdas)
        celda.entrada = std::to_string(clave);
    std::map<std::uint64_t, Celda> vistas;
    for (const auto& [clave, celda] : celdas)
        vistas.emplace(clave, celda);
    EXPECT_EQ(vistas.size(), 200U);
    for (const auto& [clave, celda] : std::as_const(celdas)) {
        EXPECT_EQ(celda.entrada, std::to_string(clave));
        EXPECT_EQ(vistas.at(clave), celda);
    }
    const std::map<std::uint64_t, Celda> copia(celdas.cbegin(), celdas.cend());
    EXPECT_EQ(copia, vistas);
    EXPECT_EQ(std::count_if(celdas.begin(), celdas.end(),
                            [](const auto& par) { return par.second.numero >= 100; }),
              100);
    AlmacenCeldas::const_iterator it = celdas.begin();
    EXPECT_EQ((it++)->first, 0U);
    EXPECT_EQ(it->first, claveLocal(700, 1));
}

TEST(Almacen, IntercambiarYMover) {
    AlmacenCeldas a;
    AlmacenCeldas b;
    a[1].entrada = "a";
    b[~std::uint64_t{0}].entrada = "b";
    swap(a, b);
    EXPECT_EQ(a.at(~std::uint64_t{0}).entrada, "b");
    EXPECT_EQ(b.at(1).entrada, "a");
    const AlmacenCeldas c = std::move(b);
    EXPECT_EQ(c.size(), 1U);
    EXPECT_TRUE(b.empty()); // NOLINT(bugprone-use-after-move): queda vacío
    b[5].entrada = "c";
    EXPECT_EQ(c.count(5), 0U);
}

TEST(Almacen, CualquierClaveSeConserva) {
    const std::uint64_t claves[] = {
        0,
        claveLocal(kUltimaFila, kUltimaColumna),
        claveLocal(kFilas, 0),
        claveLocal(0, kColumnas),
        claveLocal(-1, 0),
        claveLocal(0, -1),
        claveLocal(std::numeric_limits<int>::min(), 5),
        claveLocal(std::numeric_limits<int>::max(), std::numeric_limits<int>::max()),
        ~std::uint64_t{0}};
    AlmacenCeldas celdas;
    for (const std::uint64_t clave : claves)
        celdas[clave] = texto(std::to_string(clave));
    EXPECT_EQ(celdas.size(), std::size(claves));
    EXPECT_TRUE(celdas.comprobar());
    for (const std::uint64_t clave : claves) {
        const Celda* celda = celdas.buscar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave));
        ASSERT_NE(celda, nullptr) << clave;
        EXPECT_EQ(celda->entrada, std::to_string(clave));
    }
    EXPECT_EQ(celdas.contarEn({0, 0, kUltimaFila, kUltimaColumna}), 2U);
    EXPECT_EQ(celdas.contarEn({std::numeric_limits<int>::min(), std::numeric_limits<int>::min(),
                               std::numeric_limits<int>::max(), std::numeric_limits<int>::max()}),
              2U);
    for (const std::uint64_t clave : claves)
        EXPECT_EQ(celdas.erase(clave), 1U) << clave;
    EXPECT_TRUE(celdas.empty());
}

TEST(Almacen, EscribirEnUnaCopiaNoSeVeEnLaOtra) {
    AlmacenCeldas original;
    for (int fila = 0; fila < 1000; ++fila)
        original[claveLocal(fila, 3)] = numero(fila);
    AlmacenCeldas copia = original;
    original[claveLocal(500, 3)].numero = -1;
    original.erase(claveLocal(10, 3));
    copia[claveLocal(999, 3)].numero = -2;
    EXPECT_EQ(copia.at(claveLocal(500, 3)).numero, 500);
    EXPECT_EQ(copia.count(claveLocal(10, 3)), 1U);
    EXPECT_EQ(original.at(claveLocal(999, 3)).numero, 999);
}

TEST(Almacen, UnaEdicionSoloApartaSuBloque) {
    AlmacenCeldas original;
    for (int fila = 0; fila < 640; ++fila)
        original[claveLocal(fila, 0)] = numero(fila);
    const AlmacenCeldas copia = original;
    original[claveLocal(100, 0)].numero = -1;
    int compartidas = 0;
    for (int fila = 0; fila < 640; ++fila)
        compartidas += original.buscar(fila, 0) == copia.buscar(fila, 0) ? 1 : 0;
    EXPECT_EQ(compartidas, 640 - 64);
}

TEST(Almacen, PonerElMismoValorNoApartaElBloque) {
    AlmacenCeldas original;
    original[claveLocal(0, 0)].tipo = TipoCelda::Formula;
    original.ponerValor(0, 0, Valor::deNumero(3));
    original.ponerValor(1, 0, Valor::deNumero(3));
    EXPECT_EQ(original.size(), 1U) << "no crea celdas";
    const AlmacenCeldas copia = original;
    original.ponerValor(0, 0, Valor::deNumero(3));
    EXPECT_EQ(original.buscar(0, 0), copia.buscar(0, 0));
    original.ponerValor(0, 0, Valor::deNumero(4));
    EXPECT_EQ(copia.buscar(0, 0)->valor, Valor::deNumero(3));
    EXPECT_EQ(original.buscar(0, 0)->valor, Valor::deNumero(4));
}

TEST(Almacen, CompletarLiteralesSoloTocaLosQueFaltan) {
    AlmacenCeldas celdas;
    celdas[claveLocal(0, 0)] = numero(4);
    celdas[claveLocal(1, 0)] = texto("hola");
    celdas[claveLocal(2, 0)] = numero(std::numeric_limits<double>::quiet_NaN());
    celdas[claveLocal(100, 0)].tipo = TipoCelda::Formula;
    celdas[claveLocal(101, 0)].formato.negrita = true;
    celdas[claveLocal(-3, -3)] = numero(5);
    celdas.completarLiterales();
    EXPECT_EQ(celdas.buscar(0, 0)->valor, Valor::deNumero(4));
    EXPECT_EQ(celdas.buscar(1, 0)->valor, Valor::deTexto("hola"));
    EXPECT_EQ(celdas.buscar(2, 0)->valor.tipo, TipoValor::Numero);
    EXPECT_EQ(celdas.buscar(100, 0)->valor, Valor());
    EXPECT_EQ(celdas.buscar(101, 0)->valor, Valor());
    EXPECT_EQ(celdas.buscar(-3, -3)->valor, Valor::deNumero(5));

    const AlmacenCeldas copia = celdas;
    celdas.completarLiterales();
    for (const auto& [clave, celda] : copia)
        EXPECT_EQ(&celda, &std::as_const(celdas).at(clave)) << "no aparta bloques";
    celdas[claveLocal(1, 0)].entrada = "adiós";
    celdas.completarLiterales();
    EXPECT_EQ(celdas.buscar(1, 0)->valor, Valor::deTexto("adiós"));
    EXPECT_EQ(copia.buscar(1, 0)->valor, Valor::deTexto("hola"));
    EXPECT_EQ(celdas.buscar(100, 0), copia.buscar(100, 0));
}

TEST(Almacen, LoQueSeEscribeTardeSeVeEnElResumen) {
    AlmacenCeldas celdas;
    Celda& celda = celdas[claveLocal(50, 2)];
    EXPECT_EQ(celdas.ultimaFilaConContenido(), -1);
    EXPECT_EQ(celdas.resumir({0, 0, 99, 9}).numeros, 0U);
    celda = numero(8);
    EXPECT_EQ(celdas.ultimaFilaConContenido(), 50);
    EXPECT_EQ(celdas.ultimaColConContenido(), 2);
    EXPECT_EQ(celdas.resumir({0, 0, 99, 9}).suma, 8);
}

TEST(Almacen, LosDesplazamientosSacanDeLaCuadriculaLoQueNoCabe) {
    AlmacenCeldas celdas;
    celdas[claveLocal(0, 0)] = texto("queda");
    celdas[claveLocal(4, 0)] = texto("se mueve");
    celdas[claveLocal(kUltimaFila, 0)] = texto("se pierde");
    celdas.desplazarFilas(4, 2);
    EXPECT_EQ(celdas.size(), 2U);
    EXPECT_EQ(celdas.at(claveLocal(6, 0)).entrada, "se mueve");
    celdas[claveLocal(0, kUltimaColumna)] = texto("se pierde");
    celdas.desplazarColumnas(0, 1);
    EXPECT_EQ(celdas.size(), 2U);
    EXPECT_EQ(celdas.at(claveLocal(0, 1)).entrada, "queda");
    celdas.desplazarColumnas(0, -2);
    EXPECT_TRUE(celdas.empty());
    EXPECT_TRUE(celdas.comprobar());
}

TEST(Almacen, LasClavesDeFueraSeDesplazanConLaMismaRegla) {
    AlmacenCeldas celdas;
    celdas[claveLocal(kFilas + 4, 2)] = texto("entra");
    celdas[claveLocal(-1, 2)] = texto("antes");
    celdas[claveLocal(3, kColumnas)] = texto("a la derecha");
    celdas.desplazarFilas(10, -5);
    EXPECT_EQ(celdas.at(claveLocal(kFilas - 1, 2)).entrada, "entra");
    EXPECT_EQ(celdas.at(claveLocal(-1, 2)).entrada, "antes");
    EXPECT_TRUE(celdas.comprobar());
    celdas.desplazarFilas(0, 1);
    EXPECT_EQ(celdas.size(), 2U) << "la que entró ha vuelto a salir";
    EXPECT_EQ(celdas.at(claveLocal(4, kColumnas)).entrada, "a la derecha");
    celdas.desplazarColumnas(0, 1);
    EXPECT_EQ(celdas.size(), 1U);
    for (const int extremo : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        celdas.desplazarFilas(extremo, extremo);
        celdas.desplazarColumnas(extremo, extremo);
        celdas.desplazarFilas(0, extremo);
        EXPECT_TRUE(celdas.comprobar());
    }
}

TEST(Almacen, MoverFilasDeUnaHojaSinCopiasNoCopiaLosTextos) {
    AlmacenCeldas celdas;
    const std::string largo(1000, 'x');
    for (int fila = 0; fila < 300; ++fila)
        celdas[claveLocal(fila, 0)] = texto(largo);
    const char* letras = celdas.at(claveLocal(200, 0)).entrada.data();
    celdas.desplazarFilas(100, 7);
    EXPECT_EQ(celdas.at(claveLocal(207, 0)).entrada.data(), letras);
    const AlmacenCeldas copia = celdas;
    celdas.desplazarFilas(100, 1);
    EXPECT_EQ(celdas.at(claveLocal(208, 0)).entrada, largo);
    EXPECT_EQ(copia.at(claveLocal(207, 0)).entrada.data(), letras);
}

TEST(Almacen, PorFilasVaDeIzquierdaADerechaYDeArribaAbajo) {
    AlmacenCeldas celdas;
    const std::vector<std::pair<int, int>> sitios{{0, 0},  {0, 700}, {1, 3},     {63, 1},
                                                  {64, 0}, {64, 40}, {2047, 2},  {2048, 1},
                                                  {5, 5},  {5, 4},   {65535, 0}, {65535, 701}};
    for (const auto& [fila, col] : sitios)
        celdas[claveLocal(fila, col)] = numero(1);
    std::vector<std::pair<int, int>> ordenados = sitios;
    std::sort(ordenados.begin(), ordenados.end());
    std::vector<std::pair<int, int>> vistos;
    EXPECT_TRUE(celdas.recorrerPorFilas({0, 0, kUltimaFila, kUltimaColumna},
                                        [&](int fila, int col, const Celda&) {
                                            vistos.emplace_back(fila, col);
                                            return true;
                                        }));
    EXPECT_EQ(vistos, ordenados);
    EXPECT_TRUE(celdas.recorrerPorFilas({9, 9, 1, 1}, [](int, int, const Celda&) {
        ADD_FAILURE() << "un rango al revés no tiene celdas";
        return true;
    }));
}

} // namespace
