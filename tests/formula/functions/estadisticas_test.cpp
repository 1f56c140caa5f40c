#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Estadisticas, SinNumerosCadaFuncionTieneSuRespuesta) {
    HojaDePrueba hoja{"uno | dos | =VERDADERO | "};
    comprobar(hoja, {
                        {"=MAX(A1:D1)", "0"},
                        {"=MIN(A1:D1)", "0"},
                        {"=MAX()", "0"},
                        {"=MIN()", "0"},
                        {"=PROMEDIO(A1:D1)", "#¡DIV/0!"},
                        {"=PROMEDIO()", "#¡DIV/0!"},
                        {"=MEDIANA(A1:D1)", "#¡VALOR!"},
                        {"=MEDIANA()", "#¡VALOR!"},
                        {"=MODA(A1:D1)", "#¡VALOR!"},
                        {"=MODA()", "#¡VALOR!"},
                        {"=DESVEST(A1:D1)", "#¡DIV/0!"},
                        {"=DESVEST()", "#¡DIV/0!"},
                        {"=DESVEST(5)", "#¡DIV/0!"},
                    });
}

TEST(Estadisticas, MediasYExtremos) {
    HojaDePrueba hoja{"4  | 1 | 3 | 2", //
                      "-5 |   | x | -1"};
    comprobar(hoja, {
                        {"=PROMEDIO(A1:D1)", "2,5"},
                        {"=PROMEDIO(A1:D2)", "0,6666666667"},
                        {"=PROMEDIO(1;VERDADERO;\"4\")", "2"},
                        {"=MAX(A1:D2)", "4"},
                        {"=MIN(A1:D2)", "-5"},
                        {"=MAX(A2:D2)", "-1"}, // el vacío no cuenta como 0
                        {"=MIN(A1:D1)", "1"},
                        {"=MAX(A2:D2;\"7\")", "7"},
                        {"=MAX(A2:D2;FALSO)", "0"},
                        {"=MIN(B2)", "0"},
                        {"=MEDIANA(A1:D1)", "2,5"},
                        {"=MEDIANA(4;1;3;2)", "2,5"},
                        {"=MEDIANA(9;1;5)", "5"},
                        {"=MEDIANA(7)", "7"},
                        {"=DESVEST(2;4;4;4;5;5;7;9)", "2,138089935"},
                        {"=DESVEST(3;3;3)", "0"},
                    });
}

TEST(Estadisticas, EnLaModaEmpatadaGanaElMenor) {
    comprobar({
        {"=MODA(3;1;3;1;2)", "1"},
        {"=MODA(1;2;3)", "#¡VALOR!"},
        {"=MODA(5)", "#¡VALOR!"},
        {"=MODA(2;2;9;9;9)", "9"},
        {"=MODA(-1;-1;1;1)", "-1"},
        {"=MODA(0;-0;7)", "0"}, // los dos ceros son el mismo número
        {"=MODA(1;VERDADERO;2)", "1"},
    });
}

TEST(Estadisticas, UnErrorEnElRangoEsElResultado) {
    HojaDePrueba hoja{"1 | =1/0 | =#¡REF! | 1"};
    comprobar(hoja, {
                        {"=PROMEDIO(A1:D1)", "#¡DIV/0!"},
                        {"=MEDIANA(C1:D1)", "#¡REF!"},
                        {"=MODA(A1:D1)", "#¡DIV/0!"},
                        {"=MAX(A1;C1;B1)", "#¡REF!"},
                        {"=MIN(A1:D1)", "#¡DIV/0!"},
                        {"=DESVEST(D1;B1:C1)", "#¡DIV/0!"},
                        {"=PROMEDIO(1;\"x\")", "#¡VALOR!"},
                    });
}

TEST(Estadisticas, ContarCuentaNumerosYContaraCuentaLoQueNoEstaVacio) {
    HojaDePrueba hoja{"1 | =\"1\" | =VERDADERO | =1/0", //
                      "  |        | =\"\"      | x"};
    comprobar(hoja, {
                        {"=CONTAR(A1:D1)", "1"},
                        {"=CONTARA(A1:D1)", "4"},
                        {"=CONTAR(A1:D2)", "1"},
                        {"=CONTARA(A1:D2)", "6"}, // una fórmula con texto vacío no está vacía
                        {"=CONTAR(A1;B1;C1;D1;A2)", "2"},
                        {"=CONTARA(A1;B1;C1;D1;A2)", "4"},
                        {"=CONTAR(1;VERDADERO;\"1\";1/0)", "2"},
                        {"=CONTARA(1;VERDADERO;\"\";1/0)", "4"},
                        {"=CONTAR()", "0"},
                        {"=CONTARA()", "0"},
                        {"=CONTARA(A1:ZZ65536)", "6"},
                        {"=CONTAR(A1:ZZ65536;5)", "2"},
                        {"=CONTAR(Hoja9!A1:B2)", "0"},
                        {"=CONTARA(Hoja9!A1:B2)", "1"},
                    });
}

// "nan" e "inf" se pueden teclear y son números; el orden de los demás no cambia por ellos.
TEST(Estadisticas, LoQueNoEsUnNumeroNoDesordenaLosDemas) {
    HojaDePrueba hoja{"nan | 3 | nan | 1 | 2 | nan | 5 | 4", //
                      "3   | 1 | nan | 1 | 3 | nan",         //
                      "nan | 2",                             //
                      "inf | 1 | -inf"};
    comprobar(hoja, {
                        {"=MEDIANA(B1:H1)", "4"}, // 1 2 3 4 5 y dos detrás
                        {"=MEDIANA(A1:H1)", "4,5"},
                        {"=MAX(A1:H1)", "5"},
                        {"=MIN(A1:H1)", "1"},
                        {"=MODA(A2:F2)", "1"},
                        {"=MODA(A1:H1)", "#¡VALOR!"},
                        {"=MAX(A3:B3)", "2"},
                        {"=MAX(A3)", "#¡VALOR!"},
                        {"=MEDIANA(A4:C4)", "1"},
                        {"=MAX(A4:C4)=A4", "VERDADERO"},
                        {"=CONTAR(A1:H1)", "8"},
                        {"=SUMA(A1:H1)", "#¡VALOR!"},
                    });
}
