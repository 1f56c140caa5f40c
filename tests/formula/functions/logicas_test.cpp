#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Logicas, SiEligeUnaRamaYNoCalculaLaOtra) {
    HojaDePrueba hoja{"5 | texto |  | =1/0"};
    comprobar(hoja, {
                        {"=SI(A1>3;\"sí\";\"no\")", "sí"},
                        {"=SI(A1<3;\"sí\";\"no\")", "no"},
                        {"=SI(A1>3;\"sí\")", "sí"},
                        {"=SI(A1<3;\"sí\")", "FALSO"},
                        {"=SI(VERDADERO;1;1/0)", "1"},
                        {"=SI(FALSO;1/0;2)", "2"},
                        {"=SI(A1;\"no es 0\";\"es 0\")", "no es 0"},
                        {"=SI(C1;1;2)", "2"},
                        {"=SI(B1;1;2)", "#¡VALOR!"},
                        {"=SI(\"VERDADERO\";1;2)", "#¡VALOR!"}, // un texto no es un lógico
                        {"=SI(D1;1;2)", "#¡DIV/0!"},
                        {"=SI(A1:C1;1;2)", "#¡VALOR!"},
                        {"=SI(VERDADERO;A1:C1)", "#¡VALOR!"},
                        {"=SI(VERDADERO)", "#¡VALOR!"},
                        {"=SI()", "#¡VALOR!"},
                        {"=SI(1;2;3;4)", "#¡VALOR!"},
                        {"=SI(1/0)", "#¡VALOR!"}, // la cuenta se mira antes que los valores
                        {"=SI(SI(A1=5;FALSO;VERDADERO);1;SI(A1=5;\"x\";\"y\"))", "x"},
                    });
}

TEST(Logicas, SiErrorSustituyeSoloLosErrores) {
    HojaDePrueba hoja{"=1/0 | 7"};
    comprobar(hoja, {
                        {"=SI.ERROR(1/0;\"sin dato\")", "sin dato"},
                        {"=SI.ERROR(A1;0)", "0"},
                        {"=SI.ERROR(B1;1/0)", "7"},
                        {"=SI.ERROR(1/0;#¡REF!)", "#¡REF!"},
                        {"=SI.ERROR(nada;1)", "1"},
                        {"=SI.ERROR(nada(1);1)", "1"},
                        {"=SI.ERROR(A1:B1;\"un rango no es un valor\")", "un rango no es un valor"},
                        {"=SI.ERROR(C1;1)", ""},
                        {"=SI.ERROR(1)", "#¡VALOR!"},
                        {"=SI.ERROR(1;2;3)", "#¡VALOR!"},
                        {"=SI.ERROR()", "#¡VALOR!"},
                    });
}

TEST(Logicas, YExigeTodasYOAlguna) {
    HojaDePrueba hoja{"1 | 0 | =VERDADERO | =FALSO",  //
                      "a | b |            | ",        //
                      "1 | a | =1/0       | =#¡REF!", //
                      "nan"};
    comprobar(hoja, {
                        {"=Y(VERDADERO;1;3>2)", "VERDADERO"},
                        {"=Y(VERDADERO;0)", "FALSO"},
                        {"=O(FALSO;0;2)", "VERDADERO"},
                        {"=O(FALSO;0)", "FALSO"},
                        {"=Y(A1:D1)", "FALSO"},
                        {"=O(A1:D1)", "VERDADERO"},
                        {"=Y(C1:D1)", "FALSO"},
                        {"=O(C1:D1)", "VERDADERO"},
                        {"=O(D1:D2)", "FALSO"},
                        {"=Y(C1:C2)", "VERDADERO"},
                        {"=Y(A1:A3)", "VERDADERO"}, // los textos de un rango no cuentan
                        {"=Y(A2:D2)", "VERDADERO"},
                        {"=O(A2:D2)", "FALSO"},
                        {"=Y(A1:ZZ2)", "FALSO"},
                        {"=O(A2)", "#¡VALOR!"}, // una celda suelta sí se convierte
                        {"=Y(\"VERDADERO\")", "#¡VALOR!"},
                        {"=O(C2)", "FALSO"},
                        {"=Y(C2)", "FALSO"},
                        {"=O(VERDADERO;1/0)", "#¡DIV/0!"},
                        {"=Y(FALSO;\"x\")", "#¡VALOR!"},
                        {"=O(A3:D3)", "#¡DIV/0!"},
                        {"=O(VERDADERO;D3;C3)", "#¡REF!"},
                        {"=Y(A4:A4)", "VERDADERO"},
                        {"=O(A4)", "VERDADERO"},
                        {"=Y()", "#¡VALOR!"},
                        {"=O()", "#¡VALOR!"},
                    });
}

TEST(Logicas, NoNiegaUnValor) {
    HojaDePrueba hoja{"0 | =1/0 | texto"};
    comprobar(hoja, {
                        {"=NO(VERDADERO)", "FALSO"},
                        {"=NO(A1)", "VERDADERO"},
                        {"=NO(2)", "FALSO"},
                        {"=NO(D1)", "VERDADERO"},
                        {"=NO(C1)", "#¡VALOR!"},
                        {"=NO(B1)", "#¡DIV/0!"},
                        {"=NO(A1:A1)", "#¡VALOR!"},
                        {"=NO()", "#¡VALOR!"},
                        {"=NO(1;2)", "#¡VALOR!"},
                    });
}
