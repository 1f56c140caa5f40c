#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

TEST(Busqueda, BuscarVOrdenadaDaLaUltimaFilaQueNoRebasa) {
    HojaDePrueba hoja{"1 | uno", "3 | tres", "5 | cinco"};
    comprobar(hoja,
              {
                  {"=BUSCARV(4;A1:B3;2)", "tres"},
                  {"=BUSCARV(3;A1:B3;2)", "tres"},
                  {"=BUSCARV(4;A1:B3;2;VERDADERO)", "tres"},
                  {"=BUSCARV(4;A1:B3;1)", "3"},
                  {"=BUSCARV(9;A1:B3;2)", "cinco"},
                  {"=BUSCARV(0;A1:B3;2)", "#¡VALOR!"},
                  {"=BUSCARV(4;A1:B3;2,9)", "tres"}, // la columna se trunca
                  {"=BUSCARV(4;A1:B65536;2)", "tres"},
                  {"=BUSCARV(\"4\";A1:B3;2)", "#¡VALOR!"}, // un texto no se busca entre números
                  {"=BUSCARV(VERDADERO;A1:B3;2)", "#¡VALOR!"},
                  {"=BUSCARV(C1;A1:B3;2)", "#¡VALOR!"},
              });
}

TEST(Busqueda, BuscarVOrdenadaPasaPorAltoLasOtrasClases) {
    HojaDePrueba hoja{"A | 1", "7 | 2", "  | 3", "B | 4", "=1/0 | 5", "9 | 6", "C | 7", "8 | 8"};
    comprobar(hoja, {
                        {"=BUSCARV(\"b\";A1:B8;2)", "4"}, // sin distinguir mayúsculas
                        {"=BUSCARV(\"bz\";A1:B8;2)", "4"},
                        {"=BUSCARV(\"zeta\";A1:B8;2)", "7"},
                        {"=BUSCARV(\"\";A1:B8;2)", "#¡VALOR!"},
                        {"=BUSCARV(8;A1:B8;2)", "2"}, // el 9 acaba la búsqueda
                        {"=BUSCARV(9;A1:B8;2)", "8"},
                        {"=BUSCARV(6;A1:B8;2)", "#¡VALOR!"},
                    });
}

TEST(Busqueda, BuscarVExactaFormaUnCriterio) {
    HojaDePrueba hoja{"a   | 1",        "Bote | 2", "barco | 3", "7 | 4",
                      "=VERDADERO | 5", "1 | 6",    "    | 7",   "=1/0 | 8"};
    comprobar(hoja, {
                        {"=BUSCARV(\"b*\";A1:B8;2;FALSO)", "2"},
                        {"=BUSCARV(\"BARCO\";A1:B8;2;FALSO)", "3"},
                        {"=BUSCARV(\">5\";A1:B8;2;FALSO)", "4"},
                        {"=BUSCARV(\"<>a\";A1:B8;2;FALSO)", "2"},
                        {"=BUSCARV(7;A1:B8;2;FALSO)", "4"},
                        {"=BUSCARV(\"7\";A1:B8;2;FALSO)", "4"}, // el texto se lee como número
                        {"=BUSCARV(VERDADERO;A1:B8;2;0)", "6"},
                        {"=BUSCARV(\"verdadero\";A1:B8;2;0)", "5"},
                        {"=BUSCARV(\"#*\";A1:B8;2;0)", "8"},
                        {"=BUSCARV(C1;A1:B8;2;FALSO)", "7"}, // lo vacío encuentra lo vacío
                        {"=BUSCARV(\"\";A1:B8;2;FALSO)", "7"},
                        {"=BUSCARV(\"\";A8:B20;1;FALSO)", ""},
                        {"=COINCIDIR(\"\";A8:A20;0)", "2"},
                        {"=BUSCARV(\"nada\";A1:B8;2;FALSO)", "#¡VALOR!"},
                        {"=BUSCARV(8;A1:B8;2;FALSO)", "#¡VALOR!"},
                        {"=BUSCARV(\"#*\";A1:A8;1;FALSO)", "#¡DIV/0!"}, // copia el error hallado
                    });
}

TEST(Busqueda, BuscarVComprobacionesEnOrden) {
    HojaDePrueba hoja{"1 | uno | =1/0", "2 | dos | nan"};
    comprobar(hoja, {
                        {"=BUSCARV(1;A1:B2;0)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;0,9)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;3)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;-1)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;10^300)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;C2)", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;\"x\")", "#¡VALOR!"},
                        {"=BUSCARV(1;A1:B2;2;\"x\")", "#¡VALOR!"},
                        {"=BUSCARV(1;A1:B2;9;\"x\")", "#¡REF!"},
                        {"=BUSCARV(1;A1:B2;2;C1)", "#¡DIV/0!"},
                        {"=BUSCARV(1;A1:B2;2;A1:A2)", "#¡VALOR!"},
                        {"=BUSCARV(1;A1:B2;A1:A2)", "#¡VALOR!"},
                        {"=BUSCARV(A1:A2;A1:B2;2)", "#¡VALOR!"},
                        {"=BUSCARV(C1;A1:B2;9)", "#¡DIV/0!"},
                        {"=BUSCARV(1;A1;1)", "1"}, // una celda suelta es una tabla de 1 × 1
                        {"=BUSCARV(1;A1;2)", "#¡REF!"},
                        {"=BUSCARV(1;A1:C2;3)", "#¡DIV/0!"},
                        {"=BUSCARV(1;Hoja9!A1:B2;1)", "#¡VALOR!"},
                        {"=BUSCARV(1;A1:B2)", "#¡VALOR!"},
                        {"=BUSCARV(1;A1:B2;1;0;0)", "#¡VALOR!"},
                    });
}

TEST(Busqueda, BuscarHBuscaEnLaPrimeraFila) {
    HojaDePrueba hoja{"1 | 3 | 5", "uno | tres | cinco", "a | | c"};
    comprobar(hoja, {
                        {"=BUSCARH(4;A1:C2;2)", "tres"},
                        {"=BUSCARH(0;A1:C2;2)", "#¡VALOR!"},
                        {"=BUSCARH(5;A1:C2;2;FALSO)", "cinco"},
                        {"=BUSCARH(4;A1:C2;2;FALSO)", "#¡VALOR!"},
                        {"=BUSCARH(4;A1:ZZ65536;2)", "tres"},
                        {"=BUSCARH(\"T*\";A2:C3;1;FALSO)", "tres"},
                        {"=BUSCARH(\"T*\";A2:C3;2;FALSO)", ""},
                        {"=BUSCARH(\"\";A1:ZZ2;1;FALSO)", ""},
                        {"=BUSCARH(1;A1:C3;4)", "#¡REF!"},
                        {"=BUSCARH(1;A1:C3;0)", "#¡REF!"},
                        {"=BUSCARH(1;A1:C3)", "#¡VALOR!"},
                    });
}

TEST(Busqueda, CoincidirEnLosTresSentidos) {
    HojaDePrueba hoja{"1 | 5 | 5 | x | 8", //
                      "9 | 7 | x | 7 | 2", //
                      "a | B | 3 | c"};
    comprobar(hoja, {
                        {"=COINCIDIR(5;A1:E1;0)", "2"},
                        {"=COINCIDIR(5;A1:E1)", "3"},
                        {"=COINCIDIR(5;A1:E1;1)", "3"},
                        {"=COINCIDIR(7;A1:E1;0,5)", "3"}, // basta que sea mayor que 0
                        {"=COINCIDIR(100;A1:E1)", "5"},
                        {"=COINCIDIR(0;A1:E1)", "#¡VALOR!"},
                        {"=COINCIDIR(7;A2:E2;-1)", "4"},
                        {"=COINCIDIR(8;A2:E2;-1)", "1"},
                        {"=COINCIDIR(10;A2:E2;-1)", "#¡VALOR!"},
                        {"=COINCIDIR(1;A2:E2;-1)", "5"},
                        {"=COINCIDIR(\"X\";A2:E2;0)", "3"},
                        {"=COINCIDIR(\"bb\";A3:D3)", "2"},
                        {"=COINCIDIR(\"B\";A3:D3;-1)", "#¡VALOR!"}, // "a" ya es menor
                        {"=COINCIDIR(VERDADERO;A3:D3)", "#¡VALOR!"},
                        {"=COINCIDIR(\"\";A1:H1;0)", "6"},
                        {"=COINCIDIR(\"c\";A3:A3;0)", "#¡VALOR!"},
                        {"=COINCIDIR(5;A1:B2;0)", "#¡VALOR!"},
                        {"=COINCIDIR(5;A1:A65536;1)", "1"},
                        {"=COINCIDIR(\"a\";A1:A3;0)", "3"},
                        {"=COINCIDIR(5;5;0)", "1"},
                    });
}

TEST(Busqueda, CoincidirComprobacionesEnOrden) {
    HojaDePrueba hoja{"1 | 2 | =1/0 | nan", "3 | 4"};
    comprobar(hoja,
              {
                  {"=COINCIDIR(A1:B1;A1:B1;0)", "#¡VALOR!"},
                  {"=COINCIDIR(C1;A1:B2;0)", "#¡DIV/0!"},
                  {"=COINCIDIR(1;A1:B2;C1)", "#¡VALOR!"}, // el rango se mira antes que el tipo
                  {"=COINCIDIR(1;A1:B1;C1)", "#¡DIV/0!"},
                  {"=COINCIDIR(1;A1:B1;\"x\")", "#¡VALOR!"},
                  {"=COINCIDIR(1;A1:B1;D1)", "#¡VALOR!"},
                  {"=COINCIDIR(1;A1:B1;FALSO)", "1"},
                  {"=COINCIDIR(1)", "#¡VALOR!"},
                  {"=COINCIDIR(1;A1:B1;0;0)", "#¡VALOR!"},
              });
}

TEST(Busqueda, IndiceDaUnaCelda) {
    HojaDePrueba hoja{"10 | 20 | 30 | 40 | 50", "11 |  | =1/0 | x | =VERDADERO"};
    comprobar(hoja, {
                        {"=INDICE(A1:E2;1;3)", "30"},
                        {"=INDICE(A1:E2;2;1)", "11"},
                        {"=INDICE(A1:E2;2)", "11"},
                        {"=INDICE(A1:E1;3)", "30"}, // con una sola fila, el número es la columna
                        {"=INDICE(A1:E1;1;3)", "30"},
                        {"=INDICE(A1:A2;2)", "11"},
                        {"=INDICE(A1:E1;6)", "#¡REF!"},
                        {"=INDICE(A1:E2;0)", "#¡REF!"},
                        {"=INDICE(A1:E2;0;1)", "#¡REF!"},
                        {"=INDICE(A1:E2;1;0)", "#¡REF!"},
                        {"=INDICE(A1:E2;3;1)", "#¡REF!"},
                        {"=INDICE(A1:E2;1;6)", "#¡REF!"},
                        {"=INDICE(A1:E2;1,9;2,9)", "20"},
                        {"=INDICE(A1:E2;10^300;1)", "#¡REF!"},
                        {"=INDICE(A1:E2;2;2)", ""},
                        {"=INDICE(A1:E2;2;2)+1", "1"}, // copia una celda vacía
                        {"=INDICE(A1:E2;2;3)", "#¡DIV/0!"},
                        {"=INDICE(A1:E2;2;5)", "VERDADERO"},
                        {"=INDICE(A1:ZZ65536;2;4)", "x"},
                        {"=INDICE(7;1)", "7"},
                        {"=INDICE(7;1;2)", "#¡REF!"},
                        {"=INDICE(A1:E2;\"x\")", "#¡VALOR!"},
                        {"=INDICE(A1:E2;1;C2)", "#¡DIV/0!"},
                        {"=INDICE(A1:E2;A1:A2)", "#¡VALOR!"},
                        {"=INDICE(A1:E2)", "#¡VALOR!"},
                        {"=INDICE(A1:E2;1;1;1)", "#¡VALOR!"},
                    });
}

// Nada es mayor ni menor que lo que no es un número, así que no acaba ninguna búsqueda.
TEST(Busqueda, LoQueNoEsUnNumeroNoRebasaANadie) {
    HojaDePrueba hoja{"1 | nan | 3 | 9", "nan"};
    comprobar(hoja, {
                        {"=COINCIDIR(5;A1:D1)", "3"},
                        {"=COINCIDIR(2;A1:D1)", "2"},
                        {"=COINCIDIR(A2;A1:D1)", "4"},
                        {"=COINCIDIR(A2;A1:D1;-1)", "4"},
                        {"=COINCIDIR(A2;A1:D1;0)", "#¡VALOR!"},
                        {"=COINCIDIR(\"<>1\";A1:D1;0)", "2"},
                    });
}
