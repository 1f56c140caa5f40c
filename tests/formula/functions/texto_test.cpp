#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Texto, ConcatenarUneLoQueSeVe) {
    HojaDePrueba hoja{"Pera | 12   | =VERDADERO", //
                      "     | 1,50 | x",          //
                      "ok   | =1/0 | =#¡REF!"};
    comprobar(hoja, {
                        {"=CONCATENAR()", ""},
                        {"=CONCATENAR(1,5;\"x\")", "1,5x"},
                        {"=CONCATENAR(A1;\": \";B1)", "Pera: 12"},
                        {"=CONCATENAR(A1:C2)", "Pera12VERDADERO1,5x"},
                        {"=CONCATENAR(A2;A2)", ""},
                        {"=CONCATENAR(VERDADERO;FALSO)", "VERDADEROFALSO"},
                        {"=CONCATENAR(A3:C3;A1)", "#¡DIV/0!"},
                        {"=CONCATENAR(C3;B3)", "#¡REF!"},
                        {"=CONCATENAR(A1:C2;C3)", "#¡REF!"},
                        {"=CONCATENAR(A1:ZZ2)", "Pera12VERDADERO1,5x"},
                        {"=LARGO(CONCATENAR(\"\";\"\"))", "0"},
                    });
}

TEST(Texto, IzquierdaYDerechaCuentanCaracteres) {
    comprobar({
        {"=IZQUIERDA(\"ñandú\";2)", "ña"},
        {"=DERECHA(\"ñandú\";1)", "ú"},
        {"=IZQUIERDA(\"ñandú\")", "ñ"},
        {"=DERECHA(\"ñandú\")", "ú"},
        {"=IZQUIERDA(\"ñandú\";10)", "ñandú"},
        {"=DERECHA(\"ñandú\";10)", "ñandú"},
        {"=IZQUIERDA(\"ñandú\";5)", "ñandú"},
        {"=DERECHA(\"ñandú\";4)", "andú"},
        {"=IZQUIERDA(\"ñandú\";0)", ""},
        {"=DERECHA(\"ñandú\";0)", ""},
        {"=IZQUIERDA(\"ñandú\";2,9)", "ña"},
        {"=IZQUIERDA(\"ñandú\";0,9)", ""},
        {"=IZQUIERDA(\"ñandú\";-1)", "#¡VALOR!"},
        {"=DERECHA(\"ñandú\";-1)", "#¡VALOR!"},
        {"=DERECHA(\"ñandú\";-0,5)", "#¡VALOR!"},
        {"=IZQUIERDA(\"ñandú\";10^300)", "ñandú"},
        {"=IZQUIERDA(\"ñandú\";\"tres\")", "#¡VALOR!"},
        {"=IZQUIERDA(\"ñandú\";VERDADERO)", "ñ"},
        {"=IZQUIERDA(12345;3)", "123"},
        {"=DERECHA(1/4;2)", "25"},
        {"=DERECHA(VERDADERO;4)", "DERO"},
        {"=DERECHA(\"€uro\";4)", "€uro"},
        {"=IZQUIERDA(\"😀x\";1)", "😀"},
    });
}

TEST(Texto, LasCuentasImposiblesNoSonUnDesborde) {
    HojaDePrueba hoja{"nan | inf | -inf | hola"};
    comprobar(hoja, {
                        {"=IZQUIERDA(D1;A1)", "#¡VALOR!"},
                        {"=DERECHA(D1;B1)", "hola"},
                        {"=DERECHA(D1;C1)", "#¡VALOR!"},
                        {"=IZQUIERDA(D1;E1)", ""}, // una celda vacía es 0
                    });
}

TEST(Texto, LargoCuentaCaracteresDelTextoQueSeVe) {
    HojaDePrueba hoja{"  | 1234,50 | 1/1/2024"};
    comprobar(hoja, {
                        {"=LARGO(\"año\")", "3"},
                        {"=LARGO(\"\")", "0"},
                        {"=LARGO(A1)", "0"},
                        {"=LARGO(12345)", "5"},
                        {"=LARGO(1/4)", "4"},
                        {"=LARGO(B1)", "6"},
                        {"=LARGO(C1)", "5"}, // la serie, no la fecha con su formato
                        {"=LARGO(FALSO)", "5"},
                        {"=LARGO(\"€😀\")", "2"},
                    });
}

TEST(Texto, MayusculasYMinusculasConTildes) {
    comprobar({
        {"=MAYUSC(\"acción\")", "ACCIÓN"},
        {"=MINUSC(\"ÑANDÚ\")", "ñandú"},
        {"=MAYUSC(\"pingüino ß ÿ ÷\")", "PINGÜINO ß ÿ ÷"},
        {"=MINUSC(\"ÇA × Þ\")", "ça × þ"},
        {"=MAYUSC(\"ωя č\")", "ωя č"}, // otros alfabetos quedan como están
        {"=MINUSC(\"ΩЯ Č\")", "ΩЯ Č"},
        {"=MAYUSC(\"abc123-z{\")", "ABC123-Z{"},
        {"=MINUSC(\"@AZ[\")", "@az["},
        {"=MAYUSC(FALSO)", "FALSO"},
        {"=MINUSC(VERDADERO)", "verdadero"},
        {"=MAYUSC(\"\")", ""},
    });
}

TEST(Texto, EspaciosSoloQuitaEspacios) {
    comprobar({
        {"=ESPACIOS(\"  a   b \")", "a b"},
        {"=ESPACIOS(\"   \")", ""},
        {"=ESPACIOS(\"\")", ""},
        {"=ESPACIOS(\"a\")", "a"},
        {"=ESPACIOS(\"\t a \t\")", "\t a \t"},
        {"=ESPACIOS(\" \u00a0 a\")", "\u00a0 a"},
        {"=ESPACIOS(12)", "12"},
    });
}

TEST(Texto, RangosYErroresEnLosArgumentos) {
    HojaDePrueba hoja{"a | =1/0"};
    comprobar(hoja, {
                        {"=IZQUIERDA(A1:A2)", "#¡VALOR!"},
                        {"=IZQUIERDA(\"a\";A1:A2)", "#¡VALOR!"},
                        {"=DERECHA(B1;-1)", "#¡DIV/0!"},
                        {"=LARGO(A1:A1)", "#¡VALOR!"},
                        {"=LARGO(B1)", "#¡DIV/0!"},
                        {"=MAYUSC(A1:B1)", "#¡VALOR!"},
                        {"=MINUSC(B1)", "#¡DIV/0!"},
                        {"=ESPACIOS(A1:B1)", "#¡VALOR!"},
                        {"=ESPACIOS(B1)", "#¡DIV/0!"},
                    });
}
