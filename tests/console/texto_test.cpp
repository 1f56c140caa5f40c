#include "console/codificacion.h"
#include "console/json.h"
#include "console/tabla.h"
#include "console/texto_terminal.h"
#include "model/rango_texto.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

TEST(Codificacion, ReconocerUtf8) {
    for (const char* texto : {"", "abc", "ñandú", "€", "😀", "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBF"}) {
        EXPECT_TRUE(consola::esUtf8(texto)) << texto;
    }
    for (const char* texto :
         {"\x80", "\xC3", "abcdefgh\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE2\x82",
          "ñ\xF1"}) {
        EXPECT_FALSE(consola::esUtf8(texto)) << texto;
    }
}

TEST(Codificacion, LosPuntosDeCodigoVanYVuelven) {
    for (char32_t punto = 0; punto < 0x110000; punto += punto < 0x900 ? 1 : 97) {
        if (punto >= 0xD800 && punto < 0xE000) {
            continue;
        }
        std::string texto;
        consola::anadirPunto(texto, punto);
        std::size_t posicion = 0;
        ASSERT_EQ(consola::siguientePunto(texto, posicion), punto);
        ASSERT_EQ(posicion, texto.size());
    }
}

TEST(Codificacion, LeerWindows1252) {
    EXPECT_EQ(consola::desdeWindows1252("a\xF1o \x80\x93\x94\xFF"), "año €“”ÿ");
    EXPECT_TRUE(consola::esUtf8(consola::desdeWindows1252("\x81\x8D\x8F\x90\x9D")));
}

TEST(TextoTerminal, MedirLoQueSeVe) {
    const struct {
        const char* texto;
        int ancho;
    } casos[] = {
        {"", 0},     {"abc", 3}, {"ñandú", 5},        {"#¡DIV/0!", 8}, {"e\u0301", 1},
        {"日本", 4}, {"😀", 2},   {"\uFF21\u200B", 2}, {"€", 1},        {"\xF1", 1},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(consola::anchoVisible(caso.texto), caso.ancho) << caso.texto;
    }
}

TEST(TextoTerminal, NoDejarPasarOrdenes) {
    const struct {
        std::string texto;
        const char* limpio;
    } casos[] = {
        {"hola", "hola"},
        {"a\nb\tc", "a↵b c"},
        {"\033[31mrojo\007", "\uFFFD[31mrojo\uFFFD"},
        {"\u009B31m", "\uFFFD31m"},
        {"\u202Egpj.exe", "\uFFFDgpj.exe"},
        {"a\xF1z", "a\uFFFDz"},
        {std::string("a\0b", 3), "a\uFFFDb"},
        {"\x7F", "\uFFFD"},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(consola::paraTerminal(caso.texto), caso.limpio);
    }
}

TEST(TextoTerminal, CualquierTextoQuedaLimpio) {
    std::mt19937 azar(3);
    for (int vuelta = 0; vuelta < 5000; ++vuelta) {
        std::string texto(azar() % 20, '\0');
        for (char& c : texto) {
            c = static_cast<char>(azar() % 256);
        }
        const std::string limpio = consola::paraTerminal(texto);
        ASSERT_TRUE(consola::esUtf8(limpio)) << vuelta;
        for (const char c : limpio) {
            ASSERT_GE(static_cast<unsigned char>(c), 0x20) << vuelta;
        }
        ASSERT_EQ(consola::paraTerminal(limpio), limpio) << vuelta;
    }
}

TEST(Json, EscribirCadenas) {
    EXPECT_EQ(consola::cadenaJson(""), "\"\"");
    EXPECT_EQ(consola::cadenaJson("año \"5\" \\ \n\t\x01\x1F\x7F"),
              "\"año \\\"5\\\" \\\\ \\n\\t\\u0001\\u001f\\u007f\"");
    EXPECT_EQ(consola::cadenaJson("a\xFFz"), "\"a\uFFFDz\"");
}

TEST(Json, EscribirNumeros) {
    EXPECT_EQ(consola::numeroJson(0.1), "0.1");
    EXPECT_EQ(consola::numeroJson(-1234.5), "-1234.5");
    EXPECT_EQ(consola::numeroJson(1e300), "1e+300");
    EXPECT_EQ(consola::numeroJson(std::nan("")), "null");
    EXPECT_EQ(consola::numeroJson(-std::numeric_limits<double>::infinity()), "null");
}

TEST(RangoTexto, LeerRangos) {
    const struct {
        const char* texto;
        const char* normal; ///< nulo si no es un rango
    } casos[] = {
        {"A1", "A1"},           {"b3", "B3"},
        {"A1:D20", "A1:D20"},   {"D20:A1", "A1:D20"},
        {"A20:d1", "A1:D20"},   {"A1:A1", "A1"},
        {"ZZ65536", "ZZ65536"}, {"A1:ZZ65536", "A1:ZZ65536"},
        {"", nullptr},          {":", nullptr},
        {"A", nullptr},         {"1", nullptr},
        {"A0", nullptr},        {"A65537", nullptr},
        {"AAA1", nullptr},      {"A1:", nullptr},
        {":A1", nullptr},       {"A1:B2:C3", nullptr},
        {"A1 ", nullptr},       {"A-1", nullptr},
        {"A+1", nullptr},       {"A99999999999", nullptr},
        {"$A$1", nullptr},      {"Ñ1", nullptr},
    };
    for (const auto& caso : casos) {
        const auto rango = nucleo::leerRango(caso.texto);
        ASSERT_EQ(rango.has_value(), caso.normal != nullptr) << caso.texto;
        if (rango) {
            EXPECT_EQ(nucleo::textoRango(*rango), caso.normal) << caso.texto;
        }
    }
}

std::string tabla(const std::vector<std::vector<consola::Hueco>>& filas) {
    consola::Tabla tabla;
    for (const auto& fila : filas) {
        tabla.medir(fila);
    }
    std::ostringstream salida;
    for (const auto& fila : filas) {
        tabla.escribir(salida, fila);
    }
    return salida.str();
}

using consola::Hueco;
using consola::Lado;

TEST(Tabla, AlinearPorLoQueSeVe) {
    EXPECT_EQ(tabla({{{"año", Lado::Izquierda}, {"1,5", Lado::Derecha}},
                     {{"ñandúes", Lado::Izquierda}, {"1.234,50", Lado::Derecha}},
                     {{"日本", Lado::Izquierda}, {"sí", Lado::Centro}}}),
              "año           1,5\n"
              "ñandúes  1.234,50\n"
              "日本        sí\n");
}

TEST(Tabla, UnTituloNoEnsanchaSuColumna) {
    EXPECT_EQ(tabla({{{"Un título muy largo"}, {}, {}},
                     {{"a"}, {"b"}, {"1", Lado::Derecha}},
                     {{}, {}, {"10", Lado::Derecha}}}),
              "Un título muy largo\n"
              "a  b   1\n"
              "      10\n");
    // Un número largo sí: ha de quedar sobre los suyos.
    EXPECT_EQ(tabla({{{"123456", Lado::Derecha}}, {{"1", Lado::Derecha}, {"x"}}}),
              "123456\n     1  x\n");
}

TEST(Tabla, FilasVaciasYDesiguales) {
    EXPECT_EQ(tabla({{}, {{}, {}}, {{"a"}, {"b"}, {"c"}}, {{"d"}}}), "\n\na  b  c\nd\n");
}

} // namespace
