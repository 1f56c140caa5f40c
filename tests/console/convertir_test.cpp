#include "tests/console/prueba_ordenes.h"

namespace {

TEST_F(Ordenes, ConvertirDeIdaYVuelta) {
    const std::string csv = "Nombre;Precio;Fecha\n\"Pan; leche\";\"1.200,50\";1/2/2026\n"
                            ";=B2*2;\n\"di \"\"hola\"\"\";15%;\"dos\nlíneas\"\n";
    // Los campos que no lo necesitan pierden sus comillas; lo demás vuelve igual.
    const std::string normal = "Nombre;Precio;Fecha\n\"Pan; leche\";1.200,50;1/2/2026\n"
                               ";=B2*2;\n\"di \"\"hola\"\"\";15%;\"dos\nlíneas\"\n";
    carpeta.escribir("a.csv", csv);
    convertirBien({carpeta.ruta("a.csv"), carpeta.ruta("a.mrn")});
    convertirBien({carpeta.ruta("a.mrn"), carpeta.ruta("b.csv")});
    EXPECT_EQ(carpeta.leer("b.csv"), normal);
    convertirBien({carpeta.ruta("a.csv"), carpeta.ruta("c.csv")});
    EXPECT_EQ(carpeta.leer("c.csv"), normal);
    convertirBien({carpeta.ruta("b.csv"), carpeta.ruta("b.mrn")});
    convertirBien({carpeta.ruta("a.mrn"), carpeta.ruta("c.mrn")});
    EXPECT_EQ(carpeta.leer("b.mrn"), carpeta.leer("a.mrn"));
    EXPECT_EQ(carpeta.leer("c.mrn"), carpeta.leer("a.mrn"));
}

TEST_F(Ordenes, ConvertirLoQueSeVe) {
    const std::string ruta =
        libro({{"A1", "$ 1234,5"}, {"B1", "=A1*2"}, {"A2", "=1/0"}, {"B2", "1/2/2026"}});
    convertirBien({ruta, carpeta.ruta("v.csv"), "--valores"});
    EXPECT_EQ(carpeta.leer("v.csv"), "$ 1.234,50;2469\n#¡DIV/0!;01/02/2026\n");
    convertirBien({ruta, carpeta.ruta("e.csv"), "--separador", ","});
    EXPECT_EQ(carpeta.leer("e.csv"), "\"$ 1234,5\",=A1*2\n=1/0,1/2/2026\n");
    convertirBien({ruta, carpeta.ruta("e.tsv")});
    EXPECT_EQ(carpeta.leer("e.tsv"), "$ 1234,5\t=A1*2\n=1/0\t1/2/2026\n");
}

TEST_F(Ordenes, ConvertirConTodosLosCamposSoloEnCsv) {
    const std::string ruta = libro({{"A1", "a"}, {"C2", "c"}});
    convertirBien({ruta, carpeta.ruta("a.csv")});
    EXPECT_EQ(carpeta.leer("a.csv"), "a;;\n;;c\n");
    convertirBien({ruta, carpeta.ruta("a.tsv")});
    EXPECT_EQ(carpeta.leer("a.tsv"), "a\n\t\tc\n");
}

TEST_F(Ordenes, ConvertirSinFormulas) {
    carpeta.escribir("a.tsv", "=1+1\t5\t=\t+3\t1/1/2026\n");
    convertirBien({carpeta.ruta("a.tsv"), carpeta.ruta("a.mrn"), "--sin-formulas"});
    nucleo::Libro libro;
    ASSERT_EQ(nucleo::Serializador::cargar(carpeta.ruta("a.mrn"), libro), 0);
    const nucleo::Hoja& hoja = *libro.hojas.front();
    EXPECT_EQ(hoja.celda(0, 0)->tipo, nucleo::TipoCelda::Texto);
    EXPECT_EQ(hoja.celda(0, 0)->entrada, "=1+1");
    EXPECT_EQ(hoja.celda(0, 1)->tipo, nucleo::TipoCelda::Numero);
    EXPECT_EQ(hoja.celda(0, 2)->tipo, nucleo::TipoCelda::Texto);
    EXPECT_EQ(hoja.celda(0, 3)->tipo, nucleo::TipoCelda::Numero);
    EXPECT_EQ(hoja.celda(0, 4)->formato.numero, nucleo::FormatoNumero::Fecha);
    EXPECT_EQ(hacer({"mostrar", carpeta.ruta("a.mrn"), "--rango", "A1"}).salida, "   A\n1  =1+1\n");
    convertirBien({carpeta.ruta("a.mrn"), carpeta.ruta("b.tsv")});
    EXPECT_EQ(carpeta.leer("b.tsv"), carpeta.leer("a.tsv"));
}

TEST_F(Ordenes, ConvertirEligiendoSeparadores) {
    carpeta.escribir("a.csv", "a|b,c\n");
    convertirBien({carpeta.ruta("a.csv"), carpeta.ruta("a.tsv"), "--separador", "|"});
    EXPECT_EQ(carpeta.leer("a.tsv"), "a\tb,c\n");
    convertirBien({carpeta.ruta("a.csv"), carpeta.ruta("b.csv"), "--separador-entrada", "|",
                   "--separador", "tab"});
    EXPECT_EQ(carpeta.leer("b.csv"), "a\tb,c\n");
    carpeta.escribir("c.csv", "a,b\nc,d\n");
    convertirBien({carpeta.ruta("c.csv"), carpeta.ruta("d.csv")});
    EXPECT_EQ(carpeta.leer("d.csv"), "a;b\nc;d\n");
}

TEST_F(Ordenes, ConvertirPorLaEntradaYLaSalidaEstandar) {
    const Hecho hecho = hacer({"convertir", "-", "-", "--separador", ","}, "a;b\n1,5;\n");
    EXPECT_EQ(hecho.estado, 0) << hecho.errores;
    EXPECT_EQ(hecho.salida, "a,b\n\"1,5\",\n");
    EXPECT_EQ(hacer({"convertir", libro({{"A1", "7"}}), "-"}).salida, "7\n");
    EXPECT_EQ(hacer({"convertir", "-", carpeta.ruta("e.mrn")}, "a;b").estado, 0);
    EXPECT_EQ(hacer({"convertir", carpeta.ruta("e.mrn"), "-"}).salida, "a;b\n");
}

TEST_F(Ordenes, ConvertirVariasEntradasEnUnLibro) {
    const std::string uno = carpeta.escribir("uno.tsv", "1\n");
    const std::string dos = carpeta.escribir("dos.csv", "=Uno!A1+1;x\n");
    const std::string formato = carpeta.escribir("f.formato", "hoja Uno\nhoja Dos\nancho A 200\n");
    const std::string salida = carpeta.ruta("x.mrn");
    convertirBien({uno, dos, salida, "--formato", formato});
    EXPECT_EQ(hacer({"mostrar", salida, "--hoja", "Dos"}).salida, "   A  B\n1  2  x\n");
    const Hecho hecho = hacer({"convertir", salida, carpeta.ruta("y.csv")});
    EXPECT_EQ(hecho.estado, 0);
    EXPECT_EQ(hecho.errores,
              "marnel-consola: aviso: el libro tiene 2 hojas y solo se escribe «Uno»\n");
    convertirBien({salida, carpeta.ruta("z.csv"), "--hoja", "Dos"});
    EXPECT_EQ(carpeta.leer("z.csv"), "=Uno!A1+1;x\n");
}

TEST_F(Ordenes, ConvertirConFormatoDeIdaYVuelta) {
    carpeta.escribir("a.tsv", "Título\n\n1\t2\n");
    carpeta.escribir("a.formato", "hoja Cuentas\ninmovilizar 1 0\nfusion A1:B1\n"
                                  "formato A1 negrita centro\nformato A3:B4 moneda decimales 0\n");
    convertirBien(
        {carpeta.ruta("a.tsv"), carpeta.ruta("a.mrn"), "--formato", carpeta.ruta("a.formato")});
    convertirBien(
        {carpeta.ruta("a.mrn"), carpeta.ruta("b.tsv"), "--formato", carpeta.ruta("b.formato")});
    EXPECT_EQ(carpeta.leer("b.tsv"), carpeta.leer("a.tsv"));
    EXPECT_EQ(carpeta.leer("b.formato"), carpeta.leer("a.formato"));
    convertirBien(
        {carpeta.ruta("b.tsv"), carpeta.ruta("b.mrn"), "--formato", carpeta.ruta("b.formato")});
    EXPECT_EQ(carpeta.leer("b.mrn"), carpeta.leer("a.mrn"));
}

TEST_F(Ordenes, AvisarDeLoQueUnTsvNoPuedeLlevar) {
    carpeta.escribir("a.csv", "\"a\nb\";c\n");
    const Hecho hecho = hacer({"convertir", carpeta.ruta("a.csv"), carpeta.ruta("a.tsv")});
    EXPECT_EQ(hecho.estado, 0);
    EXPECT_EQ(hecho.errores, "marnel-consola: aviso: en 1 celdas, los saltos de línea y las "
                             "tabulaciones se han escrito como espacios\n");
    EXPECT_EQ(carpeta.leer("a.tsv"), "a b\tc\n");
}

TEST_F(Ordenes, AvisarDeLaCodificacion) {
    carpeta.escribir("a.csv", "Espa\xF1"
                              "a\n");
    const Hecho hecho = hacer({"convertir", carpeta.ruta("a.csv"), carpeta.ruta("b.csv")});
    EXPECT_EQ(hecho.estado, 0);
    EXPECT_NE(hecho.errores.find("no está en UTF-8"), std::string::npos);
    EXPECT_EQ(carpeta.leer("b.csv"), "España\n");
}

TEST_F(Ordenes, LoQueNoCabeEnUnaHoja) {
    const std::string salida = carpeta.ruta("salida.mrn");
    const std::string mensaje = "no cabe en una hoja de 65536 filas y 702 columnas";
    carpeta.escribir("alto.csv", std::string(65536, '\n') + "x\n");
    carpeta.escribir("ancho.csv", std::string(702, ';') + "x\n");
    for (const char* nombre : {"alto.csv", "ancho.csv"}) {
        const std::string ruta = carpeta.ruta(nombre);
        esperarFallo(hacer({"convertir", ruta, salida}), 2,
                     "no se puede leer «" + ruta + "»: " + mensaje);
    }
    // Lo vacío no ocupa.
    carpeta.escribir("justo.csv", std::string(800, ';') + std::string(70000, '\n'));
    convertirBien({carpeta.ruta("justo.csv"), salida});
    // De texto a texto no hay cuadrícula.
    convertirBien({carpeta.ruta("alto.csv"), carpeta.ruta("alto.tsv")});
    EXPECT_EQ(carpeta.leer("alto.tsv").size(), 65538U);
}

} // namespace
