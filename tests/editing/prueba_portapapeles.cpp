#include "tests/editing/prueba_editor.h"

#include <string>

namespace pruebas {

class Portapapeles : public PruebaEditor {};

TEST_F(Portapapeles, ElTextoCopiadoSonLosResultados) {
    poner("A1", "1");
    poner("A2", "x");
    poner("B2", "=A1*2");
    seleccionar("A1:B2");
    EXPECT_EQ(editor.copiarTSV(), "1\t\nx\t2");
}

TEST_F(Portapapeles, CadaClaseDeCeldaDejaSuTexto) {
    poner("A1", "1234,5");
    hoja().celdaMut(0, 0).formato = {};
    hoja().celdaMut(0, 0).formato.numero = nucleo::FormatoNumero::Moneda;
    poner("B1", "31/12/2020");
    poner("C1", "12%");
    poner("D1", "con \"comillas\" y ; signos");
    poner("E1", "=1/0");
    poner("F1", "=\"a\"&\"b\"");
    poner("G1", "=1=1");
    hoja().celdaMut(0, 7).formato.negrita = true; // existe, vacía
    seleccionar("A1:I1");
    EXPECT_EQ(editor.copiarTSV(), "$ 1.234,50\t31/12/2020\t12,00%\tcon \"comillas\" y ; signos\t"
                                  "#¡DIV/0!\tab\tVERDADERO\t\t");
}

TEST_F(Portapapeles, ElTextoDeUnaCeldaODeNingunaNoTieneSeparadores) {
    poner("C3", "x");
    seleccionar("C3");
    EXPECT_EQ(editor.copiarTSV(), "x");
    seleccionar("D4");
    EXPECT_EQ(editor.copiarTSV(), "");
}

TEST_F(Portapapeles, ElTextoNoDependeDeQueEsquinaEsElAncla) {
    poner("B2", "a");
    poner("C3", "b");
    seleccionar("D4:A1");
    EXPECT_EQ(editor.copiarTSV(), "\t\t\t\n\ta\t\t\n\t\tb\t\n\t\t\t");
}

TEST_F(Portapapeles, ElTextoDeColumnasEnterasTieneUnaLineaPorFila) {
    poner("B1", "arriba");
    poner("A65536", "abajo");
    editor.seleccionar(0, 0);
    editor.extender(65535, 2);
    const std::string texto = editor.copiarTSV();
    EXPECT_EQ(texto.size(), 65536U * 2 + 65535U + 6 + 5);
    EXPECT_TRUE(texto.starts_with("\tarriba\t\n\t\t\n"));
    EXPECT_TRUE(texto.ends_with("\n\t\t\nabajo\t\t"));
}

TEST_F(Portapapeles, PegarDesplazaLasReferenciasRelativas) {
    poner("B2", "=A1+$A$1+B$1+$C1");
    seleccionar("B2");
    editor.copiar();
    seleccionar("D5");
    editor.pegar();
    EXPECT_EQ(entrada("D5"), "=C4+$A$1+D$1+$C4");
    seleccionar("A1");
    editor.pegar();
    EXPECT_EQ(entrada("A1"), "=#¡REF!+$A$1+A$1+#¡REF!");
    EXPECT_EQ(seleccion(), "A1:A1");
}

TEST_F(Portapapeles, PegarLlevaElFormatoYNoBorraBajoLosHuecos) {
    poner("A1", "1");
    hoja().celdaMut(0, 0).formato.negrita = true;
    poner("B2", "2");
    hoja().celdaMut(2, 0).formato.colorFondo = 7; // vacía con formato
    seleccionar("A1:B3");
    editor.copiar();
    for (const char* ref : {"D5", "E5", "D6", "E6", "D7"})
        poner(ref, "previa");
    hoja().celdaMut(4, 3).formato.cursiva = true;
    seleccionar("F9:D5");
    editor.pegar();
    EXPECT_EQ(entradas("D5:E7"), (std::vector<std::string>{"1", "previa", "previa", "2", "", ""}));
    EXPECT_TRUE(celda("D5")->formato.negrita);
    EXPECT_FALSE(celda("D5")->formato.cursiva);
    ASSERT_NE(celda("D7"), nullptr);
    EXPECT_EQ(celda("D7")->formato.colorFondo, 7U);
    EXPECT_EQ(seleccion(), "F9:D5");
}

TEST_F(Portapapeles, UnaCeldaCopiadaVaciaYSinFormatoQuitaLaDelDestino) {
    hoja().celdaMut(0, 0);
    poner("B1", "x");
    poner("C1", "=B1");
    seleccionar("A1");
    editor.copiar();
    seleccionar("B1");
    editor.pegar();
    EXPECT_EQ(celda("B1"), nullptr);
    EXPECT_EQ(visto("C1"), "");
}

TEST_F(Portapapeles, PegarSeRecortaEnElBordeYNoSeDesplaza) {
    poner("A1", "a");
    poner("B1", "b");
    poner("C1", "c");
    poner("A2", "d");
    ASSERT_TRUE(hoja().fusionar(3, 0, 3, 2));
    seleccionar("A1:C4");
    editor.copiar();
    seleccionar("ZY10");
    editor.pegar();
    EXPECT_EQ(entradas("ZX10:ZZ10"), (std::vector<std::string>{"", "a", "b"}));
    EXPECT_EQ(entrada("ZY11"), "d");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"A4:C4"});
    seleccionar("E65536");
    editor.pegar();
    EXPECT_EQ(entradas("E65536:G65536"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(hoja().ultimaFilaUsada(), 65535);
    EXPECT_EQ(hoja().ultimaColUsada(), 701);
}

TEST_F(Portapapeles, SoloSeCopianLasFusionesEnterasDentro) {
    poner("A1", "x");
    ASSERT_TRUE(hoja().fusionar(0, 0, 1, 1));
    ASSERT_TRUE(hoja().fusionar(3, 0, 3, 5));
    ASSERT_TRUE(hoja().fusionar(2, 2, 2, 3));
    seleccionar("A1:D4"); // deja fuera parte de A4:F4
    editor.copiar();
    seleccionar("H10");
    editor.pegar();
    EXPECT_EQ(fusiones(),
              (std::vector<std::string>{"A1:B2", "A4:F4", "C3:D3", "H10:I11", "J12:K12"}));
}

TEST_F(Portapapeles, PegarUnaFusionSobreContenidoRecalculaASusLectores) {
    poner("A1", "x");
    ASSERT_TRUE(hoja().fusionar(0, 0, 1, 1));
    seleccionar("A1");
    editor.copiar();
    poner("E6", "5");
    poner("F6", "=E6*2");
    poner("H1", "=SUMA(E5:F6)");
    EXPECT_EQ(visto("H1"), "15");
    seleccionar("E5");
    editor.pegar();
    EXPECT_EQ(fusiones(), (std::vector<std::string>{"A1:B2", "E5:F6"}));
    EXPECT_EQ(celda("E6"), nullptr);
    EXPECT_EQ(celda("F6"), nullptr);
    EXPECT_EQ(visto("H1"), "0");
    editor.deshacer();
    EXPECT_EQ(visto("H1"), "15");
}

TEST_F(Portapapeles, UnaFusionQueNoCabeEnElDestinoNoBorraNada) {
    poner("A1", "x");
    ASSERT_TRUE(hoja().fusionar(0, 0, 1, 1));
    seleccionar("A1");
    editor.copiar();
    ASSERT_TRUE(hoja().fusionar(5, 5, 6, 6));
    poner("F5", "sigue");
    seleccionar("E5");
    editor.pegar();
    EXPECT_EQ(entrada("E5"), "x");
    EXPECT_EQ(entrada("F5"), "sigue");
    EXPECT_EQ(fusiones(), (std::vector<std::string>{"A1:B2", "F6:G7"}));
}

TEST_F(Portapapeles, CortarVaciaYaYLoCopiadoSePuedePegarVariasVeces) {
    poner("A1", "=B1");
    poner("B1", "4");
    hoja().celdaMut(0, 0).formato.negrita = true;
    seleccionar("A1");
    editor.cortar();
    EXPECT_EQ(entrada("A1"), "");
    EXPECT_TRUE(celda("A1")->formato.negrita);
    EXPECT_TRUE(editor.hayCeldasCopiadas());
    seleccionar("A3");
    editor.pegar();
    seleccionar("A4");
    editor.pegar();
    EXPECT_EQ(entradas("A3:A4"), (std::vector<std::string>{"=B3", "=B4"}));
    editor.deshacer();
    editor.deshacer();
    editor.deshacer();
    EXPECT_EQ(visto("A1"), "4");
    EXPECT_TRUE(editor.hayCeldasCopiadas());
}

TEST_F(Portapapeles, CopiarDondeNoHayNadaVaciaLoCopiado) {
    poner("A1", "x");
    seleccionar("A1");
    editor.copiar();
    seleccionar("B1");
    editor.copiar();
    EXPECT_FALSE(editor.hayCeldasCopiadas());
    editor.pegar();
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
}

TEST_F(Portapapeles, SinHojaActivaLoCopiadoSigueCopiado) {
    poner("A1", "x");
    seleccionar("A1");
    editor.copiar();
    libro.hojaActiva = 5;
    editor.copiar();
    editor.cortar();
    libro.hojaActiva = 0;
    seleccionar("B1");
    editor.pegar();
    EXPECT_EQ(entradas("A1:B1"), (std::vector<std::string>{"x", "x"}));
}

TEST_F(Portapapeles, UnIgualSoloSePegaComoTexto) {
    poner("A1", "=");
    seleccionar("A1");
    editor.copiar();
    seleccionar("B2");
    editor.pegar();
    EXPECT_EQ(entrada("B2"), "=");
    EXPECT_EQ(celda("B2")->tipo, nucleo::TipoCelda::Texto);
}

TEST_F(Portapapeles, PegarEncimaDeLoCopiadoUsaLoCopiado) {
    ponerColumna("A1", {"1", "=A1+1", "=A2+1"});
    seleccionar("A1:A3");
    editor.copiar();
    seleccionar("A2");
    editor.pegar();
    EXPECT_EQ(entradas("A1:A4"), (std::vector<std::string>{"1", "1", "=A2+1", "=A3+1"}));
    EXPECT_EQ(visto("A4"), "3");
}

TEST_F(Portapapeles, PegarEnOtraHojaConservaLasReferenciasConNombre) {
    libro.agregarHoja();
    poner("A1", "='Hoja 1'!B1+B1");
    seleccionar("A1");
    editor.copiar();
    libro.hojaActiva = 1;
    seleccionar("A2");
    editor.pegar();
    EXPECT_EQ(entrada("A2", 1), "='Hoja 1'!B2+B2");
}

class Borrar : public PruebaEditor {};

TEST_F(Borrar, VaciaElContenidoYConservaFormatosYFusiones) {
    poner("A1", "1");
    poner("A2", "2");
    hoja().celdaMut(1, 0).formato.negrita = true;
    poner("C1", "=A1+A2");
    ASSERT_TRUE(hoja().fusionar(0, 0, 0, 1));
    libro.modificado = false;
    seleccionar("A2:B1");
    editor.borrarSeleccion();
    EXPECT_EQ(celda("A1"), nullptr);
    ASSERT_NE(celda("A2"), nullptr);
    EXPECT_EQ(entrada("A2"), "");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"A1:B1"});
    EXPECT_EQ(visto("C1"), "0");
    EXPECT_TRUE(libro.modificado);
}

TEST_F(Borrar, DondeNoHayNadaSoloDejaElPaso) {
    libro.modificado = false;
    seleccionar("A1:C3");
    editor.borrarSeleccion();
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    EXPECT_FALSE(libro.modificado);
}

class PegarTexto : public PruebaEditor {};

TEST_F(PegarTexto, LosSaltosYLosRetornosSeLeenComoSeEspera) {
    struct Caso {
        std::string texto;
        std::vector<std::string> esperado; ///< C3:E5 por filas
    };
    const Caso casos[] = {
        {"a\tb\r\nc\r\n", {"a", "b", "·", "c", "·", "·", "·", "·", "·"}},
        {"a", {"a", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"a\n", {"a", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"a\n\n", {"a", "·", "·", "", "·", "·", "·", "·", "·"}},
        {"\n", {"", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"\n\n", {"", "·", "·", "", "·", "·", "·", "·", "·"}},
        {"\r", {"", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"\r\r\n\r", {"", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"a\n\r", {"a", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"a\rb", {"ab", "·", "·", "·", "·", "·", "·", "·", "·"}},
        {"\t\t", {"", "", "", "·", "·", "·", "·", "·", "·"}},
        {"a\t\tc\n\tx", {"a", "", "c", "", "x", "·", "·", "·", "·"}},
        {"a\r\t\rb\n\r\n\rc", {"a", "b", "·", "", "·", "·", "c", "·", "·"}},
        {" a ", {" a ", "·", "·", "·", "·", "·", "·", "·", "·"}},
    };
    for (const Caso& caso : casos) {
        for (const char* ref : {"C3", "D3", "E3", "C4", "D4", "E4", "C5", "D5", "E5", "C6", "F3"})
            poner(ref, "·");
        seleccionar("D6:C3");
        editor.pegarTSV(caso.texto);
        EXPECT_EQ(entradas("C3:E5"), caso.esperado) << testing::PrintToString(caso.texto);
        EXPECT_EQ(entrada("C6"), "·") << testing::PrintToString(caso.texto);
        EXPECT_EQ(entrada("F3"), "·") << testing::PrintToString(caso.texto);
        EXPECT_EQ(seleccion(), "D6:C3");
    }
}

TEST_F(PegarTexto, CadaCampoSeLeeComoSiSeEscribiera) {
    seleccionar("A1");
    hoja().celdaMut(0, 0).formato.negrita = true;
    editor.pegarTSV("12,5\t=A1*2\t31/12/2020\thola\t=");
    EXPECT_EQ(celda("A1")->tipo, nucleo::TipoCelda::Numero);
    EXPECT_TRUE(celda("A1")->formato.negrita);
    EXPECT_EQ(visto("B1"), "25");
    EXPECT_EQ(visto("C1"), "31/12/2020");
    EXPECT_EQ(celda("D1")->tipo, nucleo::TipoCelda::Texto);
    EXPECT_EQ(celda("E1")->tipo, nucleo::TipoCelda::Texto);
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
}

TEST_F(PegarTexto, LoQueNoCabePorAbajoOPorLaDerechaSePierde) {
    seleccionar("ZZ65535");
    editor.pegarTSV("a\tb\nc\td\ne\tf");
    EXPECT_EQ(entradas("ZZ65535:ZZ65536"), (std::vector<std::string>{"a", "c"}));
    EXPECT_EQ(hoja().celdas.size(), 2U);
}

TEST_F(PegarTexto, SesentaYCincoMilLineasYUnaMas) {
    std::string texto;
    for (int i = 0; i < 65537; ++i)
        texto += "1\n";
    seleccionar("A1");
    editor.pegarTSV(texto);
    EXPECT_EQ(hoja().celdas.size(), 65536U);
    EXPECT_EQ(hoja().ultimaFilaUsada(), 65535);
}

TEST_F(PegarTexto, UnaLineaDeCienMilCampos) {
    std::string texto = "primero";
    for (int i = 0; i < 100000; ++i)
        texto += "\t7";
    texto += "\nsegunda";
    seleccionar("B1");
    editor.pegarTSV(texto);
    EXPECT_EQ(hoja().celdas.size(), 702U);
    EXPECT_EQ(entrada("ZZ1"), "7");
    EXPECT_EQ(entrada("B2"), "segunda");
}

TEST_F(PegarTexto, EnUnaFusionEscribeEnLaCeldaPropia) {
    ASSERT_TRUE(hoja().fusionar(0, 0, 1, 1));
    seleccionar("A1");
    editor.pegarTSV("a\tb");
    EXPECT_EQ(entradas("A1:B1"), (std::vector<std::string>{"a", "b"}));
}

} // namespace pruebas
