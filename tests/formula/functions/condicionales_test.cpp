#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Condicionales, UnCriterioNumericoSoloCasaConNumeros) {
    HojaDePrueba hoja{"4 | 5 | =\"6\" | 7", //
                      "5 |   | x      | ",  //
                      "1 | =VERDADERO | =1/0 | 0"};
    comprobar(hoja, {
                        {"=CONTAR.SI(A1:D1;\">=5\")", "2"}, // el texto "6" no es un número
                        {"=CONTAR.SI(A1:D1;\">4\")", "2"},
                        {"=CONTAR.SI(A1:D1;\"<5\")", "1"},
                        {"=CONTAR.SI(A1:D1;\"<=5\")", "2"},
                        {"=CONTAR.SI(A1:D1;\"=6\")", "0"},
                        {"=CONTAR.SI(A1:D1;6)", "0"},
                        {"=CONTAR.SI(A1:D1;\"5\")", "1"},
                        {"=CONTAR.SI(A2:C2;\"<>5\")", "1"}, // la vacía no cumple
                        {"=CONTAR.SI(A2:D2;\"<>9\")", "2"},
                        {"=CONTAR.SI(A3:D3;VERDADERO)", "1"}, // casa con el 1, no con el lógico
                        {"=CONTAR.SI(A3:D3;FALSO)", "1"},
                        {"=CONTAR.SI(A3:D3;\"<>0\")", "3"}, // un error es distinto de 0
                        {"=CONTAR.SI(A1:D1;\">3,5\")", "3"},
                        {"=CONTAR.SI(A1:D1;\">400%\")", "2"},
                        {"=CONTAR.SI(A1:D1;\"> 4\")", "2"}, // los espacios no estorban al número
                    });
}

TEST(Condicionales, LosPrefijosSeMiranEnOrden) {
    HojaDePrueba hoja{"=\"=5\" | =\">5\" | <> | 5 | =\"a\" | =\"=a\""};
    comprobar(hoja, {
                        {"=CONTAR.SI(A1:F1;\"==5\")", "1"}, // el segundo "=" es del texto
                        {"=CONTAR.SI(A1:F1;\"=>5\")", "1"},
                        {"=CONTAR.SI(A1:F1;\"=<>\")", "1"},
                        {"=CONTAR.SI(A1:F1;\"=a\")", "1"},
                        {"=CONTAR.SI(A1:F1;\"==a\")", "1"},
                        {"=CONTAR.SI(A1:F1;\"= a\")", "0"}, // el operando no se recorta
                        {"=CONTAR.SI(A1:F1;\"<>=a\")", "5"},
                        {"=CONTAR.SI(A1:F1;\">=5\")", "1"},
                    });
}

TEST(Condicionales, ComodinesSinDistinguirMayusculas) {
    HojaDePrueba hoja{"ABC  | ab    | Ab-x  | xab",      //
                      "abc  | ac    | aéc   | axc",      //
                      "árbol | ÁRBOL | arbol | Árboles", //
                      "a*b  | a?b   | a~b   | axb",      //
                      "     | =\"\"  | 12    | =VERDADERO"};
    comprobar(hoja, {
                        {"=CONTAR.SI(A1:D1;\"ab*\")", "3"},
                        {"=CONTAR.SI(A1:D1;\"*ab\")", "2"},
                        {"=CONTAR.SI(A1:D1;\"*b*\")", "4"},
                        {"=CONTAR.SI(A1:D1;\"<>ab*\")", "1"},
                        {"=CONTAR.SI(A2:D2;\"a?c\")", "2"}, // é son dos bytes
                        {"=CONTAR.SI(A2:D2;\"a??c\")", "1"},
                        {"=CONTAR.SI(A3:D3;\"ÁRBOL\")", "2"},
                        {"=CONTAR.SI(A3:D3;\"Árbol*\")", "3"},
                        {"=CONTAR.SI(A3:D3;\"?rbol\")", "1"},
                        {"=CONTAR.SI(A4:D4;\"a*b\")", "4"}, // no hay forma de buscar un "*"
                        {"=CONTAR.SI(A4:D4;\"a~*b\")", "1"},
                        {"=CONTAR.SI(A4:D4;\"a?b\")", "4"},
                        {"=CONTAR.SI(A5:D5;\"*\")", "4"}, // también el vacío
                        {"=CONTAR.SI(A5:D5;\"?*\")", "2"},
                        {"=CONTAR.SI(A5:D5;\"1*\")", "1"}, // un número por su texto
                        {"=CONTAR.SI(A5:D5;\"verd*\")", "1"},
                        {"=CONTAR.SI(A5:D5;\"verdadero\")", "1"},
                    });
}

TEST(Condicionales, LasVaciasCuentanConCriteriosDeTexto) {
    HojaDePrueba hoja{"x | =\"\" |  | 3", //
                      "  |        |  | =1/0"};
    comprobar(hoja, {
                        {"=CONTAR.SI(A1:D2;\"=\")", "5"},
                        {"=CONTAR.SI(A1:D2;\"\")", "5"},
                        {"=CONTAR.SI(A1:D2;E1)", "5"}, // el criterio es una celda vacía
                        {"=CONTAR.SI(A1:D2;\"<>\")", "3"},
                        {"=CONTAR.SI(A1:D2;\"<\")", "0"},
                        {"=CONTAR.SI(A1:D2;\"<=\")", "5"},
                        {"=CONTAR.SI(A1:D2;\">\")", "3"},
                        {"=CONTAR.SI(A1:D2;\">=\")", "8"},
                        {"=CONTAR.SI(A1:D2;\"<>x\")", "7"},
                        {"=CONTAR.SI(A1:D2;\"<y\")", "8"},
                        {"=CONTAR.SI(A1:ZZ65536;\"=\")=65536*702-3", "VERDADERO"},
                        {"=CONTAR.SI(A1:ZZ65536;\"<>\")", "3"},
                        {"=CONTAR.SI(A1:ZZ65536;\"<>3\")", "3"},
                        {"=CONTAR.SI(D2;\"#¡div*\")", "1"},
                        {"=CONTAR.SI(D2;\"#¡DIV/0!\")", "1"},
                    });
}

TEST(Condicionales, OrdenDeTextosPorBytes) {
    HojaDePrueba hoja{"abc | Abd | b | ábaco | ab | zeta"};
    comprobar(hoja, {
                        {"=CONTAR.SI(A1:F1;\"<abd\")", "2"},
                        {"=CONTAR.SI(A1:F1;\"<=ABD\")", "3"},
                        {"=CONTAR.SI(A1:F1;\">zz\")", "1"}, // á va detrás de la z
                        {"=CONTAR.SI(A1:F1;\">=Á\")", "1"},
                        {"=CONTAR.SI(A1:F1;\">a*\")", "6"}, // aquí "*" es un byte más
                    });
}

TEST(Condicionales, SumarSiEmparejaPorPosicion) {
    HojaDePrueba hoja{"Pera    | 12 | 1 | 10 | 20 | 30", //
                      "manzana | 30 | 2",                //
                      "PERA    | x  | 3",                //
                      "        | 8  | 4"};
    comprobar(hoja, {
                        {"=SUMAR.SI(A1:A4;\"pera\";B1:B4)", "12"},
                        {"=SUMAR.SI(A1:A4;\"pera\";C1:C4)", "4"},
                        {"=SUMAR.SI(A1:A4;\"\";B1:B4)", "8"}, // la vacía cumple
                        {"=SUMAR.SI(A1:A4;\"<>pera\";B1:B4)", "38"},
                        {"=SUMAR.SI(A1:A4;\"nada\";B1:B4)", "0"},
                        {"=SUMAR.SI(B1:B4;\">10\")", "42"},
                        {"=SUMAR.SI(B1:B4;\"*\")", "50"},
                        {"=SUMAR.SI(C1:C3;\">1\";D1:F1)", "50"}, // columna con fila
                        {"=SUMAR.SI(D1:F1;\">10\";C1:C3)", "5"},
                        {"=SUMAR.SI(C1:C3;\">1\";B1:B4)", "#¡VALOR!"},
                        {"=SUMAR.SI(B1;\">10\")", "12"}, // un valor suelto es un bloque de 1 × 1
                        {"=SUMAR.SI(5;\">3\";7)", "7"},
                        {"=SUMAR.SI(B1;\">10\";B1:B2)", "#¡VALOR!"},
                        {"=SUMAR.SI(A1:A65536;\"\";B1:B65536)", "8"},
                        {"=SUMAR.SI(A1:ZZ65536;\">25\")", "60"},
                    });
}

TEST(Condicionales, PromedioSi) {
    HojaDePrueba hoja{"Pera | 12", "Uva | 30", "Pera | 15", "Kiwi | x"};
    comprobar(hoja, {
                        {"=PROMEDIO.SI(A1:A4;\"pera\";B1:B4)", "13,5"},
                        {"=PROMEDIO.SI(B1:B4;\">12\")", "22,5"},
                        {"=PROMEDIO.SI(A1:A4;\"kiwi\";B1:B4)", "#¡DIV/0!"},
                        {"=PROMEDIO.SI(A1:A4;\"nada\";B1:B4)", "#¡DIV/0!"},
                        {"=PROMEDIO.SI(D1:D4;\">0\")", "#¡DIV/0!"},
                        {"=PROMEDIO.SI(D1:D4;\"\";B1:B4)", "19"},
                        {"=PROMEDIO.SI(A1:A4;\"pera\";B1:B3)", "#¡VALOR!"},
                    });
}

TEST(Condicionales, SumarSiConjuntoExigeTodosLosCriterios) {
    HojaDePrueba hoja{"Pera | 12 | norte | 1", //
                      "Uva  | 30 | norte | 2", //
                      "Pera | 15 | sur   | 3", //
                      "Pera | x  | sur   | 4", //
                      "     | 7  |       | 5"};
    comprobar(hoja, {
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"pera\")", "27"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"pera\";C1:C5;\"sur\")", "15"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"\";C1:C5;\"\")", "7"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;B1:B5;\">10\";D1:D5;\"<3\")", "42"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"kiwi\")", "0"},
                        {"=SUMAR.SI.CONJUNTO(B1:B65536;A1:A65536;\"\")", "7"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A4;\"pera\")", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"pera\";C1:C4;\"sur\")", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5)", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;\"pera\";C1:C5)", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5)", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;A1:A2)", "#¡VALOR!"},
                        {"=SUMAR.SI.CONJUNTO(B1:B5;A1:A5;1/0)", "#¡DIV/0!"},
                    });
}

TEST(Condicionales, CriteriosQueNoSirvenYErroresEnLosRangos) {
    HojaDePrueba hoja{"1 | =1/0 | 3", "=#¡REF! | 5 | 6"};
    comprobar(hoja, {
                        {"=SUMAR.SI(A1:C2;\">0\")", "15"}, // los errores de un rango no se propagan
                        {"=SUMAR.SI(A1:C1;\">0\";A2:C2)", "6"},
                        {"=CONTAR.SI(A1:C2;\"<>1\")", "5"},
                        {"=CONTAR.SI(A1:C2;\"#*\")", "2"},
                        {"=SUMAR.SI(A1:C1;A1:C1)", "#¡VALOR!"},
                        {"=CONTAR.SI(A1:C1;A1:A1)", "#¡VALOR!"},
                        {"=SUMAR.SI(A1:C1;B1)", "#¡DIV/0!"},
                        {"=CONTAR.SI(A1:C1;A2)", "#¡REF!"},
                        {"=PROMEDIO.SI(A1:C1;B1;A1:B1)", "#¡DIV/0!"}, // antes que los tamaños
                        {"=CONTAR.SI(Hoja9!A1:A3;\">0\")", "0"},
                        {"=CONTAR.SI(Hoja9!A1:A3;\"#¡ref!\")", "1"},
                        {"=SUMAR.SI(A1:C1)", "#¡VALOR!"},
                        {"=SUMAR.SI(A1:C1;1;A1:C1;1)", "#¡VALOR!"},
                        {"=CONTAR.SI(A1:C1)", "#¡VALOR!"},
                        {"=CONTAR.SI(A1:C1;1;2)", "#¡VALOR!"},
                        {"=PROMEDIO.SI(A1:C1)", "#¡VALOR!"},
                    });
}
