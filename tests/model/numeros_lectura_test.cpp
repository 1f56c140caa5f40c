#include "model/numeros.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace nucleo;

constexpr double kInfinito = std::numeric_limits<double>::infinity();

TEST(LeerNumero, LoQueEscribeUnaPersona) {
    struct {
        const char* texto;
        double numero;
    } const casos[] = {{"1,5", 1.5},
                       {"1.234", 1.234},
                       {"1.234.567", 1234567},
                       {"1.234,5", 1234.5},
                       {"1.2.3,5", 123.5},
                       {"1,234.5", 1.2345},
                       {"-3", -3},
                       {"+3", 3},
                       {" 1 2 3 ", 123},
                       {"-1,", -1},
                       {",5", 0.5},
                       {".5", 0.5},
                       {"5.", 5},
                       {"1e3", 1000},
                       {"1E+3", 1000},
                       {"1,5e-3", 0.0015},
                       {"1 e 3", 1000},
                       {"15%", 0.15},
                       {"%15", 0.15},
                       {"1%5", 0.15},
                       {"15%%", 0.15},
                       {"$5", 5},
                       {"5$", 5},
                       {"$ 1.234,50", 1234.5},
                       {"-$ 1.234,50", -1234.5},
                       {"1..", 1},
                       {"1.2.", 12},
                       {"\t5", 5},
                       {"\n5", 5},
                       {"\v\f\r5", 5},
                       {" \t 5", 5},
                       {"0x1p3", 8},
                       {"0X1.8P1", 3},
                       {"0xff", 255},
                       {"-0x10", -16},
                       {"0x1,8p1", 3},
                       {"1e999", kInfinito},
                       {"-1e999", -kInfinito},
                       {"1e-999", 0},
                       {"4,9e-324", 4.9e-324},
                       {"1e-320", 1e-320},
                       {"inf", kInfinito},
                       {"-INF", -kInfinito},
                       {"Infinity", kInfinito},
                       {"+infinity", kInfinito},
                       {"0,1", 0.1},
                       {"9007199254740993", 9007199254740992},
                       {"00012", 12}};
    for (const auto& caso : casos) {
        double numero = -99;
        EXPECT_TRUE(parsearNumeroUsuario(caso.texto, numero)) << '"' << caso.texto << '"';
        EXPECT_EQ(numero, caso.numero) << '"' << caso.texto << '"';
    }
}

TEST(LeerNumero, LoQueNoEsUnNumero) {
    for (const char* texto :
         {"",          " ",        "%",   "$",    "$%",    " $ % ",      "abc",
          "1,2,3",     "1,2,",     "1a",  "a1",   "1-",    "--1",        "+-1",
          "e3",        "1e",       "1e+", ".",    ",",     "..",         "-",
          "+",         "0x",       "0xg", "0x1p", "infi",  "infinit",    "nan(",
          "nan()x",    "nan(a-b)", "5\t", "5\n",  "1\t2",  "€5",         "1\u00a0000",
          "VERDADERO", "1/2",      "=1",  "'1",   "1_000", "inf inito x"}) {
        double numero = -99;
        Formato formato;
        EXPECT_FALSE(parsearNumeroUsuario(texto, numero, &formato)) << '"' << texto << '"';
        EXPECT_EQ(numero, -99) << "el número no cambia: \"" << texto << '"';
        EXPECT_TRUE(formato.esPredeterminado()) << '"' << texto << '"';
    }
}

TEST(LeerNumero, AceptaNoNumeros) {
    for (const char* texto : {"nan", "NaN", "-nan", "+nan", "nan()", "nan(123)", "nan(0x7f)",
                              "NAN(abc_9)", "n a n", "\tnan"}) {
        double numero = 0;
        EXPECT_TRUE(parsearNumeroUsuario(texto, numero)) << '"' << texto << '"';
        EXPECT_TRUE(std::isnan(numero)) << '"' << texto << '"';
    }
}

TEST(LeerNumero, LosSignosSugierenElFormato) {
    struct {
        const char* texto;
        FormatoNumero formato;
    } const casos[] = {{"$ 1.234,50", FormatoNumero::Moneda},
                       {"15%", FormatoNumero::Porcentaje},
                       {"$15%", FormatoNumero::Moneda},
                       {"%15$", FormatoNumero::Moneda}};
    for (const auto& caso : casos) {
        double numero = 0;
        Formato formato;
        formato.decimales = 7;
        formato.negrita = true;
        ASSERT_TRUE(parsearNumeroUsuario(caso.texto, numero, &formato)) << caso.texto;
        EXPECT_EQ(formato.numero, caso.formato) << caso.texto;
        EXPECT_EQ(formato.decimales, 2) << caso.texto;
        EXPECT_FALSE(formato.separadorMiles) << caso.texto;
        EXPECT_TRUE(formato.negrita) << "el resto queda como estaba";
        EXPECT_TRUE(parsearNumeroUsuario(caso.texto, numero)) << "sin formato también se lee";
    }
    double numero = 0;
    ASSERT_TRUE(parsearNumeroUsuario("$15%", numero));
    EXPECT_EQ(numero, 0.15);
}

TEST(LeerNumero, SinSignosNoHayFormato) {
    double numero = 0;
    Formato formato;
    formato.numero = FormatoNumero::Porcentaje;
    formato.decimales = 5;
    const Formato antes = formato;
    ASSERT_TRUE(parsearNumeroUsuario("1.234,5", numero, &formato));
    EXPECT_EQ(formato, antes);
}

TEST(LeerNumero, UnByteNuloNoCortaElTexto) {
    double numero = 0;
    EXPECT_FALSE(parsearNumeroUsuario(std::string("12\0", 3), numero));
    EXPECT_FALSE(parsearNumeroUsuario(std::string("\0", 1) + "12", numero));
}

TEST(LeerNumero, UnTextoEnormeSeLeeEntero) {
    double numero = 0;
    EXPECT_TRUE(parsearNumeroUsuario(std::string(100000, '9'), numero));
    EXPECT_EQ(numero, kInfinito);
    EXPECT_TRUE(parsearNumeroUsuario("0," + std::string(100000, '0') + "1", numero));
    EXPECT_EQ(numero, 0);
    EXPECT_FALSE(parsearNumeroUsuario(std::string(100000, '9') + "x", numero));
}

/// Lo mismo que strtod en la configuración clásica, que es la del proceso de pruebas.
TEST(LeerNumero, ElLenguajeEsElDeStrtod) {
    std::mt19937 azar(17);
    const std::string letras = "0123456789..eE+-xXpPabcdfinNatyTY()_\t\n \v";
    int aceptados = 0;
    for (int i = 0; i < 300000; ++i) {
        std::string texto;
        for (auto largo = azar() % 9; largo > 0; --largo)
            texto.push_back(letras[azar() % letras.size()]);
        std::string limpio;
        for (const char c : texto) {
            if (c != ' ')
                limpio.push_back(c);
        }
        if (std::count(limpio.begin(), limpio.end(), '.') > 1)
            std::erase(limpio, '.');
        char* fin = nullptr;
        const double esperado = std::strtod(limpio.c_str(), &fin);
        const bool es = !limpio.empty() && *fin == '\0';
        double numero = 0;
        ASSERT_EQ(parsearNumeroUsuario(texto, numero), es) << '"' << texto << '"';
        if (es) {
            ++aceptados;
            ASSERT_TRUE(std::isnan(esperado) ? std::isnan(numero)
                                             : std::bit_cast<std::uint64_t>(numero) ==
                                                   std::bit_cast<std::uint64_t>(esperado))
                << '"' << texto << '"';
        }
    }
    EXPECT_GT(aceptados, 10000);
}

} // namespace
