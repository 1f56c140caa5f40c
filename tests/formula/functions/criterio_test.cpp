#include "formula/functions/criterio.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

using motor_formulas::cambiarCaso;
using motor_formulas::coincideComodin;
using motor_formulas::compararEnMinusculas;
using motor_formulas::Criterio;
using nucleo::ErrorCelda;
using nucleo::Valor;

TEST(CriterioDesdeValor, LeeElOperadorYElOperando) {
    struct Fila {
        std::string_view escrito;
        int op;
        bool esNumero;
        double numero;
        std::string_view texto;
    };
    const Fila filas[] = {
        {">=5", 5, true, 5, ""},
        {"<=5", 3, true, 5, ""},
        {"<>5", 1, true, 5, ""},
        {">5", 4, true, 5, ""},
        {"<5", 2, true, 5, ""},
        {"=5", 0, true, 5, ""},
        {"5", 0, true, 5, ""},
        {"1.234,5", 0, true, 1234.5, ""},
        {">15%", 4, true, 0.15, ""},
        {"<$ 3", 2, true, 3, ""},
        {"", 0, false, 0, ""},
        {"=", 0, false, 0, ""},
        {"<>", 1, false, 0, ""},
        {">", 4, false, 0, ""},
        {">=", 5, false, 0, ""},
        {"ÁRBOL", 0, false, 0, "árbol"},
        {"<>A*", 1, false, 0, "a*"},
        {"==5", 0, false, 0, "=5"},
        {"=>5", 0, false, 0, ">5"},
        {"<<5", 2, false, 0, "<5"},
        {">==5", 5, false, 0, "=5"},
        {" >5", 0, false, 0, " >5"},
        {"= Sí ", 0, false, 0, " sí "},
        {"1/1/2024", 0, false, 0, "1/1/2024"},
        {"VERDADERO", 0, false, 0, "verdadero"},
    };
    for (const Fila& fila : filas) {
        const Criterio criterio = Criterio::desdeValor(Valor::deTexto(std::string(fila.escrito)));
        EXPECT_EQ(criterio.op, fila.op) << fila.escrito;
        EXPECT_EQ(criterio.esNumero, fila.esNumero) << fila.escrito;
        EXPECT_EQ(criterio.numero, fila.numero) << fila.escrito;
        EXPECT_EQ(criterio.texto, fila.texto) << fila.escrito;
    }
}

TEST(CriterioDesdeValor, LoQueNoEsTexto) {
    const Criterio numero = Criterio::desdeValor(Valor::deNumero(-2.5));
    EXPECT_TRUE(numero.op == 0 && numero.esNumero && numero.numero == -2.5);
    const Criterio verdadero = Criterio::desdeValor(Valor::deLogico(true));
    EXPECT_TRUE(verdadero.op == 0 && verdadero.esNumero && verdadero.numero == 1);
    const Criterio falso = Criterio::desdeValor(Valor::deLogico(false));
    EXPECT_TRUE(falso.op == 0 && falso.esNumero && falso.numero == 0);
    for (const Valor& valor : {Valor{}, Valor::deError(ErrorCelda::DivCero)}) {
        const Criterio criterio = Criterio::desdeValor(valor);
        EXPECT_TRUE(criterio.op == 0 && !criterio.esNumero && criterio.texto.empty());
    }
}

TEST(CriterioCumple, UnNumeroComparaSoloConNumeros) {
    const Valor nan = Valor::deNumero(std::numeric_limits<double>::quiet_NaN());
    for (int op = 0; op < 6; ++op) {
        const Criterio criterio{op, true, 5, {}};
        EXPECT_EQ(criterio.cumple(Valor::deNumero(5)), op == 0 || op == 3 || op == 5) << op;
        EXPECT_EQ(criterio.cumple(Valor::deNumero(4)), op == 1 || op == 2 || op == 3) << op;
        EXPECT_EQ(criterio.cumple(Valor::deNumero(6)), op == 1 || op == 4 || op == 5) << op;
        EXPECT_EQ(criterio.cumple(nan), op == 1) << op;
        EXPECT_FALSE(criterio.cumple(Valor{})) << op;
        EXPECT_EQ(criterio.cumple(Valor::deTexto("5")), op == 1) << op;
        EXPECT_EQ(criterio.cumple(Valor::deLogico(true)), op == 1) << op;
        EXPECT_EQ(criterio.cumple(Valor::deError(ErrorCelda::Ref)), op == 1) << op;
    }
}

TEST(CriterioCumple, UnOperadorDesconocidoNoLoCumpleNadie) {
    EXPECT_FALSE((Criterio{6, true, 5, {}}.cumple(Valor::deNumero(5))));
    EXPECT_FALSE((Criterio{-1, false, 0, "a"}.cumple(Valor::deTexto("a"))));
    EXPECT_FALSE((Criterio{9, false, 0, "a"}.cumple(Valor::deTexto("a"))));
}

TEST(Comodines, Casos) {
    struct Fila {
        std::string_view patron;
        std::string_view texto;
        bool casa;
    };
    const Fila filas[] = {
        {"", "", true},          {"", "a", false},           {"*", "", true},
        {"*", "abc", true},      {"**", "", true},           {"?", "", false},
        {"?", "a", true},        {"?", "é", false},          {"??", "é", true},
        {"a?c", "abc", true},    {"a?c", "ac", false},       {"a?c", "aéc", false},
        {"ab*", "ab", true},     {"ab*", "a", false},        {"*ab", "ab", true},
        {"*ab", "aab", true},    {"*ab", "abc", false},      {"a*b*c", "axxbyyc", true},
        {"a*b*c", "acb", false}, {"*a*", "xax", true},       {"*?", "", false},
        {"?*", "a", true},       {"*?*?*", "a", false},      {"*?*?*", "ab", true},
        {"a**b", "ab", true},    {"abc", "abcd", false},     {"abcd", "abc", false},
        {"~*", "~algo", true},   {"~*", "*", false},         {"\\?", "\\x", true},
        {"*aab", "aaab", true},  {"*abab", "abaabab", true},
    };
    for (const Fila& fila : filas) {
        EXPECT_EQ(coincideComodin(fila.patron, fila.texto, 0, 0), fila.casa)
            << fila.patron << " con " << fila.texto;
    }
}

TEST(Comodines, EmpiezanDondeSeLesDice) {
    EXPECT_TRUE(coincideComodin("xx*c", "yabc", 2, 1));
    EXPECT_FALSE(coincideComodin("xxa", "ya", 0, 1));
    EXPECT_TRUE(coincideComodin("abc", "xyz", 3, 3));
    EXPECT_FALSE(coincideComodin("abc", "xyz", 3, 2));
    EXPECT_TRUE(coincideComodin("abc", "xyz", 99, 99));
}

namespace {

/// La definición, sin más: prueba cada tramo para cada "*".
bool casaPorDefinicion(std::string_view patron, std::string_view texto) {
    if (patron.empty())
        return texto.empty();
    if (patron[0] == '*') {
        for (std::size_t i = 0; i <= texto.size(); ++i) {
            if (casaPorDefinicion(patron.substr(1), texto.substr(i)))
                return true;
        }
        return false;
    }
    return !texto.empty() && (patron[0] == '?' || patron[0] == texto[0]) &&
           casaPorDefinicion(patron.substr(1), texto.substr(1));
}

} // namespace

TEST(Comodines, ComoLaDefinicionConPatronesAlAzar) {
    std::mt19937 azar(20240305);
    const auto alAzar = [&](std::string_view letras, std::size_t maximo) {
        std::string texto(azar() % (maximo + 1), ' ');
        for (char& letra : texto)
            letra = letras[azar() % letras.size()];
        return texto;
    };
    int casan = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string patron = alAzar("ab*?", 7);
        const std::string texto = alAzar("ab", 9);
        const bool esperado = casaPorDefinicion(patron, texto);
        casan += esperado ? 1 : 0;
        ASSERT_EQ(coincideComodin(patron, texto, 0, 0), esperado) << patron << " con " << texto;
        const Criterio criterio = Criterio::desdeValor(Valor::deTexto("=" + patron));
        if (!patron.empty()) {
            ASSERT_EQ(criterio.cumple(Valor::deTexto(cambiarCaso(texto, true))), esperado)
                << patron << " con " << texto;
        }
    }
    EXPECT_GT(casan, 1000);
}

// Con retroceso por cada "*" este patrón no acabaría nunca.
TEST(Comodines, ElPeorPatronCuestaElProductoDeLosLargos) {
    std::string patron;
    for (int i = 0; i < 500; ++i)
        patron += "*a";
    const std::string texto(20000, 'a');
    EXPECT_FALSE(coincideComodin(patron + "*b", texto, 0, 0));
    EXPECT_TRUE(coincideComodin(patron + "*", texto, 0, 0));
}

TEST(CambiarCaso, SoloAsciiYLatin1) {
    EXPECT_EQ(cambiarCaso("acción ñandú", true), "ACCIÓN ÑANDÚ");
    EXPECT_EQ(cambiarCaso("ÀÖØÞ×ß", false), "àöøþ×ß");
    EXPECT_EQ(cambiarCaso("àöøþ÷ÿß", true), "ÀÖØÞ÷ÿß");
    EXPECT_EQ(cambiarCaso("ĀāΩω", true), "ĀāΩω");
    EXPECT_EQ(cambiarCaso("\xc3", true), "\xc3"); // cortado a mitad de letra
    EXPECT_EQ(cambiarCaso("\xc3\xc3\xa1", true), "\xc3\xc3\xa1");
    EXPECT_EQ(cambiarCaso("\xc3"
                          "a",
                          true),
              "\xc3"
              "a");
    EXPECT_EQ(cambiarCaso("\xa1\xe1", true), "\xa1\xe1");
    EXPECT_EQ(cambiarCaso(std::string_view("a\0b", 3), true), std::string("A\0B", 3));
}

TEST(CambiarCaso, CompararEnMinusculasEsCompararLaCopia) {
    std::mt19937 azar(7);
    constexpr std::string_view kPiezas[] = {"a", "B", "Á", "á", "ñ", "\xc3", "\xa1", "z"};
    for (int i = 0; i < 5000; ++i) {
        std::string a;
        std::string b;
        for (unsigned n = azar() % 4; n > 0; --n)
            a += kPiezas[azar() % std::size(kPiezas)];
        for (unsigned n = azar() % 4; n > 0; --n)
            b += kPiezas[azar() % std::size(kPiezas)];
        b = cambiarCaso(b, false);
        ASSERT_EQ(compararEnMinusculas(a, b), cambiarCaso(a, false) <=> b) << a << " con " << b;
    }
}
