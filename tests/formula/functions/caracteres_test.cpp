#include "formula/functions/caracteres.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using motor_formulas::contarCaracteres;
using motor_formulas::finDeCaracteres;
using motor_formulas::puntosDeCodigo;

TEST(PuntosDeCodigo, DividenPorElByteInicial) {
    struct Fila {
        std::string texto;
        std::vector<std::string> caracteres;
    };
    const Fila filas[] = {
        {"", {}},
        {"año", {"a", "ñ", "o"}},
        {"€1", {"€", "1"}},
        {"😀x", {"😀", "x"}},
        // Un byte de continuación suelto abarca cuatro, o uno si no quedan.
        {"\xa1"
         "bcde",
         {"\xa1"
          "bcd",
          "e"}},
        {"\xa1"
         "bc",
         {"\xa1", "b", "c"}},
        {"\xc3", {"\xc3"}},
        {"\xe2\x82", {"\xe2", "\x82"}},
        {"\xf0\x9f\x98", {"\xf0", "\x9f", "\x98"}},
        {"\xc3"
         "a",
         {"\xc3"
          "a"}}, // la continuación no se comprueba
        {std::string("a\0b", 3), {"a", std::string(1, '\0'), "b"}},
    };
    for (const Fila& fila : filas) {
        EXPECT_EQ(puntosDeCodigo(fila.texto), fila.caracteres) << fila.texto;
        EXPECT_EQ(contarCaracteres(fila.texto), fila.caracteres.size()) << fila.texto;
        std::size_t fin = 0;
        for (std::size_t i = 0; i < fila.caracteres.size(); ++i) {
            EXPECT_EQ(finDeCaracteres(fila.texto, i), fin) << fila.texto;
            fin += fila.caracteres[i].size();
        }
        EXPECT_EQ(finDeCaracteres(fila.texto, 1000), fila.texto.size()) << fila.texto;
    }
}
