#include "model/limites.h"
#include "model/rango_texto.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace nucleo {
namespace {

TEST(RangoTexto, LeeUnaCeldaOUnRangoYLoNormaliza) {
    const struct {
        const char* texto;
        RangoCeldas rango;
    } casos[] = {
        {"B3", {2, 1, 2, 1}},
        {"b3", {2, 1, 2, 1}},
        {"A1:D20", {0, 0, 19, 3}},
        {"d20:A1", {0, 0, 19, 3}},
        {"A20:D1", {0, 0, 19, 3}},
        {"D1:A20", {0, 0, 19, 3}},
        {"A1:ZZ65536", {0, 0, kUltimaFila, kUltimaColumna}},
        {"ZZ65536", {kUltimaFila, kUltimaColumna, kUltimaFila, kUltimaColumna}},
        {"A01", {0, 0, 0, 0}},
    };
    for (const auto& caso : casos) {
        const std::optional<RangoCeldas> leido = leerRango(caso.texto);
        ASSERT_TRUE(leido.has_value()) << caso.texto;
        EXPECT_EQ(*leido, caso.rango) << caso.texto;
    }
}

TEST(RangoTexto, RechazaLoQueNoEstaEnLaCuadricula) {
    for (const char* texto : {"",          ":",   "A",      "1",     "A0",
                              "A-1",       "A+1", "A65537", "AAA1",  "A99999999999",
                              "A1:",       ":A1", "A1:B",   "A1:B0", "A1:B2:C3",
                              "A1 ",       " A1", "$A$1",   "A1x",   "Ñ1",
                              "A1:ZZ65537"}) {
        EXPECT_FALSE(leerRango(texto).has_value()) << texto;
    }
}

TEST(RangoTexto, SeEscribeComoSeLee) {
    for (const char* texto : {"A1", "B3", "A1:D20", "C1:C2", "A7:B7", "A1:ZZ65536", "ZZ65536"}) {
        const std::optional<RangoCeldas> leido = leerRango(texto);
        ASSERT_TRUE(leido.has_value()) << texto;
        EXPECT_EQ(textoRango(*leido), texto);
    }
}

} // namespace
} // namespace nucleo
