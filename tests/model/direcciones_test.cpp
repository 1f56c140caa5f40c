#include "model/direcciones.h"

#include <climits>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace nucleo;

TEST(Direcciones, NombresDeColumna) {
    struct {
        int columna;
        const char* nombre;
    } const casos[] = {{0, "A"},        {25, "Z"},   {26, "AA"},    {51, "AZ"},
                       {52, "BA"},      {701, "ZZ"}, {702, "AAA"},  {18277, "ZZZ"},
                       {18278, "AAAA"}, {-1, ""},    {INT_MIN, ""}, {INT_MAX, "FXSHRXX"}};
    for (const auto& caso : casos)
        EXPECT_EQ(nombreColumna(caso.columna), caso.nombre) << "columna " << caso.columna;
}

TEST(Direcciones, ColumnasDesdeSuNombre) {
    struct {
        const char* letras;
        int columna;
    } const casos[] = {{"A", 0},    {"a", 0},    {"Z", 25},   {"aa", 26}, {"aB", 27},
                       {"ZZ", 701}, {"zz", 701}, {"AAA", -1}, {"", -1},   {"A1", -1},
                       {"1", -1},   {" A", -1},  {"A ", -1},  {"@", -1},  {"[", -1},
                       {"`", -1},   {"{", -1},   {"Ñ", -1},   {"$A", -1}, {"ZZZZZZZZZZZZZZZ", -1}};
    for (const auto& caso : casos)
        EXPECT_EQ(columnaDesdeNombre(caso.letras), caso.columna) << '"' << caso.letras << '"';
}

TEST(Direcciones, LasColumnasDeLaCuadriculaVuelvenASiMismas) {
    for (int columna = 0; columna < 702; ++columna)
        EXPECT_EQ(columnaDesdeNombre(nombreColumna(columna)), columna);
    EXPECT_EQ(columnaDesdeNombre(nombreColumna(702)), -1);
}

TEST(Direcciones, ReferenciasVisibles) {
    EXPECT_EQ(nombreRef(0, 0), "A1");
    EXPECT_EQ(nombreRef(9, 27), "AB10");
    EXPECT_EQ(nombreRef(65535, 701), "ZZ65536");
    EXPECT_EQ(nombreRef(INT_MAX, 0), "A2147483648");
}

} // namespace
