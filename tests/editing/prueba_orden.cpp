#include "tests/editing/prueba_editor.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pruebas {

class Orden : public PruebaEditor {
  protected:
    using Textos = std::vector<std::string>;
    Textos ordenada(const Textos& columna, bool ascendente) {
        hoja() = nucleo::Hoja();
        motor.recalcularTodo();
        ponerColumna("A1", columna);
        editor.seleccionar(0, 0);
        editor.extender(static_cast<int>(columna.size()) - 1, 0);
        editor.ordenarSeleccion(ascendente);
        return entradas("A1:A" + std::to_string(columna.size()));
    }
};

TEST_F(Orden, NumerosTextosYVaciasEnLasDosDirecciones) {
    struct Caso {
        Textos columna, ascendente, descendente;
    };
    const Caso casos[] = {
        {{"3", "b", "", "1", "a"}, {"1", "3", "a", "b", ""}, {"3", "1", "b", "a", ""}},
        {{"a", "B", "abc", "ab"}, {"B", "a", "ab", "abc"}, {"abc", "ab", "a", "B"}},
        {{"=10", "9", "z", "1/1/1900"},
         {"1/1/1900", "9", "=10", "z"},
         {"9", "1/1/1900", "z", "=10"}},
        {{"ñ", "z", "Á", "a"}, {"a", "z", "Á", "ñ"}, {"ñ", "Á", "z", "a"}},
        {{"-2", "-10", "0"}, {"-10", "-2", "0"}, {"0", "-2", "-10"}},
        {{"", "", "x"}, {"x", "", ""}, {"x", "", ""}},
        {{"", ""}, {"", ""}, {"", ""}},
        {{"10", "9", "1%"}, {"1%", "9", "10"}, {"10", "9", "1%"}},
    };
    for (const Caso& caso : casos) {
        EXPECT_EQ(ordenada(caso.columna, true), caso.ascendente)
            << testing::PrintToString(caso.columna);
        EXPECT_EQ(ordenada(caso.columna, false), caso.descendente)
            << testing::PrintToString(caso.columna);
    }
}

TEST_F(Orden, LasFilasIgualesConservanSuOrdenEnLasDosDirecciones) {
    for (const bool ascendente : {true, false}) {
        hoja() = nucleo::Hoja();
        motor.recalcularTodo();
        ponerColumna("A1", {"2", "1", "2", "1", "", "x", "", "x"});
        ponerColumna("B1", {"a", "b", "c", "d", "e", "f", "g", "h"});
        seleccionar("A1:B8");
        editor.ordenarSeleccion(ascendente);
        const Textos esperada = ascendente ? Textos{"b", "d", "a", "c", "f", "h", "e", "g"}
                                           : Textos{"a", "c", "b", "d", "f", "h", "e", "g"};
        EXPECT_EQ(entradas("B1:B8"), esperada);
    }
}

TEST_F(Orden, LaColumnaClaveEsLaDeLaIzquierdaVengaDeDondeVengaElAncla) {
    ponerColumna("B2", {"1", "2", "3"});
    ponerColumna("C2", {"z", "y", "x"});
    seleccionar("C4:B2");
    editor.ordenarSeleccion(false);
    EXPECT_EQ(entradas("B2:C4"), (Textos{"3", "x", "2", "y", "1", "z"}));
    EXPECT_EQ(seleccion(), "C4:B2");
}

TEST_F(Orden, SoloSeMuevenLasColumnasSeleccionadas) {
    ponerColumna("A1", {"fija1", "fija2"});
    ponerColumna("B1", {"2", "1"});
    ponerColumna("C1", {"fija3", "fija4"});
    seleccionar("B1:B2");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:C2"), (Textos{"fija1", "1", "fija3", "fija2", "2", "fija4"}));
}

TEST_F(Orden, LosFormatosYLosHuecosViajanConSuFila) {
    poner("A1", "2");
    poner("A2", "1");
    poner("B2", "acompaña");
    hoja().celdaMut(0, 0).formato.negrita = true;
    hoja().celdaMut(2, 0).formato.cursiva = true; // vacía: no es clave
    seleccionar("A1:B3");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:B3"), (Textos{"1", "acompaña", "2", "", "", ""}));
    EXPECT_TRUE(celda("A2")->formato.negrita);
    EXPECT_FALSE(celda("A1")->formato.negrita);
    EXPECT_TRUE(celda("A3")->formato.cursiva);
    EXPECT_EQ(celda("B2"), nullptr);
}

TEST_F(Orden, LasFormulasNoSiguenASusFilasYSeRecalculan) {
    ponerColumna("A1", {"3", "1", "2"});
    ponerColumna("B1", {"=A1*10", "=A2*10", "=A3*10"});
    poner("D1", "=A1");
    seleccionar("A1:B3");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("B1:B3"), (Textos{"=A2*10", "=A3*10", "=A1*10"}));
    EXPECT_EQ(visto("B1"), "20");
    EXPECT_EQ(visto("D1"), "1");
}

TEST_F(Orden, UnaSolaCeldaOUnaFusionTocadaNoHacenNada) {
    ponerColumna("A1", {"2", "1"});
    seleccionar("A1");
    editor.ordenarSeleccion(true);
    ASSERT_TRUE(hoja().fusionar(1, 1, 4, 4));
    libro.modificado = false;
    seleccionar("A1:B2");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_FALSE(libro.modificado);
    EXPECT_EQ(entradas("A1:A2"), (Textos{"2", "1"}));
    seleccionar("A1:A2");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:A2"), (Textos{"1", "2"}));
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
}

TEST_F(Orden, UnNaNVaDetrasDeLosDemasNumeros) {
    const Textos columna{"nan", "3", "inf", "-inf", "nan", "1", "-3", "nan"};
    const auto comoTexto = [&](const char* texto) {
        motor.establecerCelda(0, 0, 0, texto);
        return hoja().celda(0, 0)->tipo == nucleo::TipoCelda::Numero;
    };
    ASSERT_TRUE(comoTexto("nan") && comoTexto("inf"));
    EXPECT_EQ(ordenada(columna, true),
              (Textos{"-inf", "-3", "1", "3", "inf", "nan", "nan", "nan"}));
    EXPECT_EQ(ordenada(columna, false),
              (Textos{"inf", "3", "1", "-3", "-inf", "nan", "nan", "nan"}));
}

TEST_F(Orden, MuchasFilasConMuchosNaN) {
    constexpr int kFilas = 3000;
    for (int fila = 0; fila < kFilas; ++fila) {
        const int resto = fila * 7919 % 1000;
        motor.establecerCelda(0, fila, 0, resto % 3 == 0 ? "nan" : std::to_string(resto));
    }
    editor.seleccionar(0, 0);
    editor.extender(kFilas - 1, 0);
    editor.ordenarSeleccion(true);
    for (int fila = 1; fila < kFilas; ++fila) {
        const double anterior = hoja().celda(fila - 1, 0)->numero;
        const double numero = hoja().celda(fila, 0)->numero;
        ASSERT_TRUE(std::isnan(numero) || anterior <= numero) << fila;
    }
}

TEST_F(Orden, UnaSeleccionDeColumnasEnterasCasiVacias) {
    ponerColumna("A1", {"3", "", "1"});
    poner("C65536", "última");
    editor.seleccionar(0, 0);
    editor.extender(65535, 701);
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:A3"), (Textos{"1", "3", ""}));
    EXPECT_EQ(entrada("C65536"), "última");
    EXPECT_EQ(hoja().celdas.size(), 3U);
}

TEST_F(Orden, LasFilasSinClaveConservanSuSitioEntreLasVacias) {
    poner("A1", "1");
    poner("B3", "tercera");
    poner("A5", "0");
    seleccionar("A1:B6");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:A2"), (Textos{"0", "1"}));
    EXPECT_EQ(entrada("B4"), "tercera");
}

TEST_F(Orden, UnTipoDesconocidoDeUnArchivoVaConLosTextos) {
    exigencias.valoresAlDia = false;
    ponerColumna("A1", {"b", "", "1"});
    nucleo::Celda& rara = hoja().celdaMut(1, 0);
    rara.tipo = static_cast<nucleo::TipoCelda>(200);
    rara.entrada = "a";
    seleccionar("A1:A3");
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entradas("A1:A3"), (Textos{"1", "a", "b"}));
}

} // namespace pruebas
