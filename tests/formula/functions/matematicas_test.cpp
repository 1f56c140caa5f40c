#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Matematicas, SumaYProductoConviertenLoEscritoDirectamente) {
    comprobar({
        {"=SUMA(1;2;3)", "6"},
        {"=SUMA(1;\"2\";VERDADERO)", "4"},
        {"=SUMA(\"1/1/1900\";1)", "3"}, // un texto con una fecha vale su serie
        {"=SUMA(\"1.234,5\";\"15%\")", "1234,65"},
        {"=SUMA(\"dos\";1)", "#¡VALOR!"},
        {"=SUMA(\"\")", "#¡VALOR!"},
        {"=PRODUCTO(2;\"3\";VERDADERO)", "6"},
        {"=PRODUCTO(2;FALSO)", "0"},
    });
}

TEST(Matematicas, SumaYProductoSoloCuentanNumerosEnLosRangos) {
    HojaDePrueba hoja{"1   | =\"2\" | =VERDADERO | ", //
                      "uno | dos   |             | tres"};
    comprobar(hoja, {
                        {"=SUMA(A1:C1)", "1"},
                        {"=SUMA(A1;B1;C1)", "4"}, // celdas sueltas: se convierten
                        {"=SUMA(A1:C1;B1)", "3"},
                        {"=SUMA(D1)", "0"},
                        {"=SUMA(D1:D1)", "0"},
                        {"=SUMA(A2:D2)", "0"},
                        {"=SUMA(A2)", "#¡VALOR!"},
                        {"=PRODUCTO(A1:C1;5)", "5"},
                        {"=PRODUCTO(A2:D2)", "0"},
                        {"=PRODUCTO(D1)", "0"},
                        {"=SUMA()", "0"},
                        {"=PRODUCTO()", "0"},
                    });
}

TEST(Matematicas, GanaElPrimerErrorPorFilas) {
    HojaDePrueba hoja{"1       | =1/0 | =#¡REF!", //
                      "=#¡VALOR! | 2    | 3      "};
    comprobar(hoja, {
                        {"=SUMA(A1:C2)", "#¡DIV/0!"},
                        {"=SUMA(A2:C2)", "#¡VALOR!"},
                        {"=SUMA(C1:C2)", "#¡REF!"},
                        {"=SUMA(A2:A2;B1)", "#¡VALOR!"},
                        {"=SUMA(B1;A2:A2)", "#¡DIV/0!"},
                        {"=SUMA(\"x\";B1)", "#¡VALOR!"},
                        {"=SUMA(B1;\"x\")", "#¡DIV/0!"},
                        {"=PRODUCTO(C1:A1)", "#¡DIV/0!"},
                        {"=SUMA(Hoja9!A1:A3)", "#¡REF!"},
                    });
}

TEST(Matematicas, UnRangoEnteroCuestaLoQueTieneEscrito) {
    HojaDePrueba hoja{"1 | 2", "3 | x"};
    comprobar(hoja, {
                        {"=SUMA(A1:ZZ65536)", "6"},
                        {"=SUMA(ZZ65536:A1)", "6"},
                        {"=PRODUCTO(A1:ZZ65536)", "6"},
                    });
}

TEST(Matematicas, RedondearAlejaLasMitadesDelCero) {
    comprobar({
        {"=REDONDEAR(1234,5;-2)", "1200"},
        {"=REDONDEAR(-2,5;0)", "-3"},
        {"=REDONDEAR(2,5;0)", "3"},
        {"=REDONDEAR(3,14159;2,9)", "3,14"}, // los decimales se truncan
        {"=REDONDEAR(1234,5;-1,5)", "1230"},
        {"=REDONDEAR(2,675;2)", "2,68"},
        {"=REDONDEAR(1,005;2)", "1"}, // 1,005 × 100 no llega a 100,5
        {"=REDONDEAR(7;-3)", "0"},
        {"=REDONDEAR(\"2,5\";VERDADERO)", "2,5"},
        {"=REDONDEAR(5;400)", "#¡VALOR!"}, // no finito
        {"=REDONDEAR(5;-400)", "#¡VALOR!"},
        {"=REDONDEAR(1;\"x\")", "#¡VALOR!"},
    });
}

TEST(Matematicas, RaizPotenciaYAbsoluto) {
    HojaDePrueba hoja{"9 | -4 | x"};
    comprobar(hoja, {
                        {"=RAIZ(A1)", "3"},
                        {"=RAIZ(0)", "0"},
                        {"=RAIZ(B1)", "#¡VALOR!"},
                        {"=RAIZ(-4)", "#¡VALOR!"},
                        {"=RAIZ(A1:B1)", "#¡VALOR!"},
                        {"=RAIZ(C1)", "#¡VALOR!"},
                        {"=RAIZ(D1)", "0"},
                        {"=RAIZ(1/0)", "#¡DIV/0!"},
                        {"=POTENCIA(2;10)", "1024"},
                        {"=POTENCIA(2;-1)", "0,5"},
                        {"=POTENCIA(0;0)", "1"},
                        {"=POTENCIA(-8;1/3)", "#¡VALOR!"},
                        {"=POTENCIA(10;400)", "#¡VALOR!"},
                        {"=POTENCIA(0;-1)", "#¡VALOR!"},
                        {"=SI.ERROR(POTENCIA(10;400);0)", "0"},
                        {"=ABS(-7,5)", "7,5"},
                        {"=ABS(B1)", "4"},
                        {"=ABS(FALSO)", "0"},
                    });
}

TEST(Matematicas, EnteroYResiduoRedondeanHaciaMenosInfinito) {
    comprobar({
        {"=ENTERO(2,9)", "2"},
        {"=ENTERO(-2,5)", "-3"},
        {"=ENTERO(-0,5)", "-1"},
        {"=ENTERO(4503599627370497)-4503599627370497", "0"},
        {"=ENTERO(-(10^20))", "-1e+20"},
        {"=ENTERO(10^300)=10^300", "VERDADERO"},
        {"=RESIDUO(7;2)", "1"},
        {"=RESIDUO(-7;2)", "1"},
        {"=RESIDUO(7;-2)", "-1"},
        {"=RESIDUO(-7;-2)", "-1"},
        {"=RESIDUO(5,5;2)", "1,5"},
        {"=RESIDUO(5;0)", "#¡DIV/0!"},
        {"=RESIDUO(5;FALSO)", "#¡DIV/0!"},
    });
}

TEST(Matematicas, ElPrimerArgumentoQueFallaDaElError) {
    HojaDePrueba hoja{"=1/0 | =#¡REF! | 3"};
    comprobar(hoja, {
                        {"=REDONDEAR(A1;B1)", "#¡DIV/0!"},
                        {"=REDONDEAR(B1;A1)", "#¡REF!"},
                        {"=REDONDEAR(1;A1:B1)", "#¡VALOR!"},
                        {"=RESIDUO(A1:B1;B1)", "#¡VALOR!"},
                        {"=RESIDUO(B1;0)", "#¡REF!"},
                        {"=POTENCIA(\"x\";B1)", "#¡VALOR!"},
                    });
}
