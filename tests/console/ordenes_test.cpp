#include "formula/functions/catalogo.h"
#include "tests/console/prueba_ordenes.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

TEST_F(Ordenes, Evaluar) {
    const struct {
        const char* formula;
        const char* valor;
    } casos[] = {
        {"=SUMA(1;2;3)", "6"},
        {"SUMA(1;2;3)", "6"},
        {"=1/4", "0,25"},
        {"=1/0", "#¡DIV/0!"},
        {"=1+", "#¡VALOR!"},
        {"=NADA(1)", "#¡NOMBRE?"},
        {"=VERDADERO", "VERDADERO"},
        {"=\"a\"&\"ñ\"", "añ"},
        {"=A1", ""},
        {"=\"\033[31m\"", "\uFFFD[31m"},
        {"=-(-5)", "5"},
        {"", "#¡VALOR!"},
    };
    for (const auto& caso : casos) {
        const Hecho hecho = hacer({"evaluar", caso.formula});
        EXPECT_EQ(hecho.estado, 0) << caso.formula;
        EXPECT_EQ(hecho.salida, std::string(caso.valor) + "\n") << caso.formula;
        EXPECT_EQ(hecho.errores, "") << caso.formula;
    }
}

TEST_F(Ordenes, EvaluarSobreUnLibro) {
    const std::string ruta = libro({{"A1", "2"}, {"A2", "=A1*10"}});
    EXPECT_EQ(hacer({"evaluar", "=SUMA(A1:A2)", "--libro", ruta}).salida, "22\n");
    EXPECT_EQ(hacer({"evaluar", "=A2", "--libro", ruta, "--hoja", "Hoja 1"}).salida, "20\n");
    esperarFallo(hacer({"evaluar", "=A2", "--libro", ruta, "--hoja", "Nada"}), 1,
                 "no hay ninguna hoja «Nada»; hay: Hoja 1");
}

TEST_F(Ordenes, MostrarUnaTabla) {
    const std::string ruta = libro({{"A1", "Gastos del mes de enero"},
                                    {"A2", "Pan"},
                                    {"B2", "$ 1.200,50"},
                                    {"A3", "Año nuevo"},
                                    {"B3", "=B2*2"},
                                    {"C3", "1/1/2026"},
                                    {"B5", "=1/0"}});
    EXPECT_EQ(hacer({"mostrar", ruta}).salida, "       A          B           C\n"
                                               "1  Gastos del mes de enero\n"
                                               "2  Pan        $ 1.200,50\n"
                                               "3  Año nuevo        2401  01/01/2026\n"
                                               "4\n"
                                               "5              #¡DIV/0!\n");
    EXPECT_EQ(hacer({"mostrar", ruta, "--formulas", "--rango", "b3:b5"}).salida, "   B\n"
                                                                                 "3  =B2*2\n"
                                                                                 "4\n"
                                                                                 "5  =1/0\n");
    EXPECT_EQ(hacer({"mostrar", ruta, "--rango", "D9:E10"}).salida, "    D  E\n 9\n10\n");
}

TEST_F(Ordenes, MostrarJson) {
    const std::string ruta =
        libro({{"A1", "di \"hola\""}, {"B1", "1,5"}, {"A2", "=1/0"}, {"B2", "=1=1"}, {"C2", "5%"}});
    EXPECT_EQ(
        hacer({"mostrar", ruta, "--json"}).salida,
        "{\"hoja\": \"Hoja 1\", \"rango\": \"A1:C2\", \"celdas\": [\n"
        "{\"celda\": \"A1\", \"valor\": \"di \\\"hola\\\"\", \"texto\": \"di \\\"hola\\\"\"},\n"
        "{\"celda\": \"B1\", \"valor\": 1.5, \"texto\": \"1,5\"},\n"
        "{\"celda\": \"A2\", \"valor\": null, \"texto\": \"#¡DIV/0!\", \"formula\": \"=1/0\", "
        "\"error\": true},\n"
        "{\"celda\": \"B2\", \"valor\": true, \"texto\": \"VERDADERO\", \"formula\": "
        "\"=1=1\"},\n"
        "{\"celda\": \"C2\", \"valor\": 0.05, \"texto\": \"5,00%\"}\n"
        "]}\n");
}

TEST_F(Ordenes, MostrarUnaHojaVacia) {
    EXPECT_EQ(hacer({"mostrar", libro({})}).salida, "   A\n1\n");
    EXPECT_EQ(hacer({"mostrar", libro({}), "--json"}).salida,
              "{\"hoja\": \"Hoja 1\", \"rango\": \"A1\", \"celdas\": [\n]}\n");
}

TEST_F(Ordenes, Recalcular) {
    const std::string ruta = libro({{"A1", "1"}, {"A2", "=A1+1"}, {"A3", "=1/0"}, {"B1", "x"}});
    const Hecho hecho = hacer({"recalcular", ruta});
    EXPECT_EQ(hecho.estado, 0);
    EXPECT_TRUE(hecho.salida.starts_with("Hojas:    1\nCeldas:   4\nFórmulas: 2\nErrores:  1\n"
                                         "Segundos: 0,"))
        << hecho.salida;
    EXPECT_TRUE(hacer({"recalcular", ruta, "--json"})
                    .salida.starts_with("{\"hojas\": 1, \"celdas\": 4, \"formulas\": 2, "
                                        "\"errores\": 1, \"segundos\": "));
}

TEST_F(Ordenes, ListarLasFunciones) {
    const Hecho hecho = hacer({"funciones"});
    EXPECT_EQ(hecho.estado, 0);
    const auto cuantas = static_cast<std::ptrdiff_t>(motor_formulas::funciones().size());
    EXPECT_EQ(std::ranges::count(hecho.salida, '\n'), cuantas);
    for (const auto& funcion : motor_formulas::funciones()) {
        EXPECT_NE(hecho.salida.find(std::string(funcion.nombre) + "("), std::string::npos);
        EXPECT_NE(hecho.salida.find(funcion.descripcion), std::string::npos) << funcion.nombre;
        EXPECT_FALSE(funcion.descripcion.empty()) << funcion.nombre;
    }
    const auto* suma = motor_formulas::buscarFuncion("SUMA");
    EXPECT_EQ(hacer({"funciones", "suma"}).salida,
              "SUMA(" + std::string(suma->argumentos) + ")\n  " + std::string(suma->descripcion) +
                  "\n  Ejemplo: " + std::string(suma->ejemplo) + " da " +
                  std::string(suma->resultado) + "\n");
    EXPECT_EQ(std::ranges::count(hacer({"funciones", "--json"}).salida, '\n'), cuantas + 2);
}

TEST_F(Ordenes, MalUso) {
    const std::string ayuda = "; vea marnel-consola --ayuda";
    const struct {
        std::vector<std::string> argumentos;
        std::string mensaje;
    } casos[] = {
        {{}, "falta la orden" + ayuda},
        {{"bailar"}, "no hay ninguna orden «bailar»" + ayuda},
        {{"--nada"}, "no hay ninguna orden «--nada»" + ayuda},
        {{"evaluar"}, "faltan argumentos: evaluar FÓRMULA" + ayuda},
        {{"evaluar", "1", "2"}, "sobran argumentos: evaluar FÓRMULA" + ayuda},
        {{"funciones", "a", "b"}, "sobran argumentos: funciones [NOMBRE]" + ayuda},
        {{"funciones", "nada"}, "no hay ninguna función «nada»"},
        {{"mostrar", "x.mrn", "--nada"}, "opción desconocida «--nada»" + ayuda},
        {{"mostrar", "x.mrn", "--rango"}, "falta el valor de --rango" + ayuda},
        {{"mostrar", "x.mrn", "--rango", "1A"}, "«1A» no es un rango como A1:D20"},
        {{"convertir", "a.mrn"}, "faltan argumentos: convertir ENTRADA... SALIDA" + ayuda},
        {{"convertir", "a.mrn", "b.txt"}, "«b.txt» no acaba en .mrn, .tsv o .csv"},
        {{"convertir", "a.mrn", ".csv"}, "«.csv» no acaba en .mrn, .tsv o .csv"},
        {{"convertir", "a.mrn", "b.csv", "--separador", "aa"}, "«aa» no sirve de separador"},
        {{"convertir", "a.mrn", "b.csv", "--sin-formulas"},
         "--sin-formulas es para leer .tsv o .csv"},
        {{"convertir", "a.csv", "b.mrn", "--valores"},
         "--valores es para pasar de .mrn a .tsv o .csv"},
        {{"convertir", "a.csv", "b.mrn", "--hoja", "x"},
         "--hoja es para pasar de .mrn a .tsv o .csv"},
        {{"convertir", "a.csv", "b.csv", "--formato", "x"},
         "--formato es para pasar de .mrn a texto o de texto a .mrn"},
        {{"convertir", "a.csv", "b.csv", "c.csv"}, "solo un .mrn puede reunir varias entradas"},
        {{"convertir", "a.mrn", "b.csv", "c.mrn"}, "varias entradas solo pueden ser .tsv o .csv"},
    };
    for (const auto& caso : casos) {
        esperarFallo(hacer(caso.argumentos), 1, caso.mensaje);
    }
}

TEST_F(Ordenes, ArchivosQueNoSeLeen) {
    const std::string falta = carpeta.ruta("falta.mrn");
    const std::string malo = carpeta.escribir("malo.mrn", "esto no es un libro");
    const std::string comillas = carpeta.escribir("comillas.csv", "a;\"b\n");
    const std::string binario = carpeta.escribir("binario.csv", std::string("a\0b", 3));
    const std::string formato = carpeta.escribir("a.formato", "negrita A1\n");
    const std::string bueno = carpeta.escribir("a.tsv", "1\n");
    std::filesystem::create_directory(carpeta.ruta("carpeta.csv"));
    const std::string salida = carpeta.ruta("salida.mrn");
    const struct {
        std::vector<std::string> argumentos;
        std::string mensaje;
    } casos[] = {
        {{"mostrar", falta}, "«" + falta + "»: no existe"},
        {{"recalcular", falta}, "«" + falta + "»: no existe"},
        {{"evaluar", "=1", "--libro", falta}, "«" + falta + "»: no existe"},
        {{"mostrar", malo}, "«" + malo + "»: está dañado o no es un libro de Marnel"},
        {{"mostrar", carpeta.ruta("carpeta.csv")},
         "«" + carpeta.ruta("carpeta.csv") + "»: es una carpeta"},
        {{"convertir", carpeta.ruta("falta.csv"), salida},
         "«" + carpeta.ruta("falta.csv") + "»: no existe"},
        {{"convertir", comillas, salida},
         "«" + comillas + "»: línea 1: unas comillas no se cierran"},
        {{"convertir", binario, salida}, "«" + binario + "»: no es un archivo de texto"},
        {{"convertir", bueno, salida, "--formato", formato},
         "«" + formato + "»: línea 1: no se entiende «negrita»"},
        {{"convertir", bueno, salida, "--formato", carpeta.ruta("falta.formato")},
         "«" + carpeta.ruta("falta.formato") + "»: no existe"},
    };
    for (const auto& caso : casos) {
        esperarFallo(hacer(caso.argumentos), 2, "no se puede leer " + caso.mensaje);
    }
    EXPECT_FALSE(carpeta.existe("salida.mrn"));
    EXPECT_EQ(hacer({"convertir", carpeta.ruta("carpeta.csv"), carpeta.ruta("b.csv")}).estado, 2);
    EXPECT_EQ(hacer({"convertir", carpeta.ruta("carpeta.csv"), salida}).estado, 2);
}

TEST_F(Ordenes, DestinosQueNoSeEscriben) {
    const std::string entrada = carpeta.escribir("a.csv", "a;b\n");
    const std::string mrn = libro({{"A1", "1"}});
    std::filesystem::create_directory(carpeta.ruta("carpeta.csv"));
    std::filesystem::create_directory(carpeta.ruta("carpeta.mrn"));
    const struct {
        std::string entrada;
        std::string salida;
    } casos[] = {
        {entrada, carpeta.ruta("nada/b.csv")},  {entrada, carpeta.ruta("nada/b.mrn")},
        {mrn, carpeta.ruta("nada/b.tsv")},      {entrada, carpeta.ruta("carpeta.csv")},
        {entrada, carpeta.ruta("carpeta.mrn")}, {mrn, carpeta.ruta("carpeta.mrn")},
    };
    for (const auto& caso : casos) {
        esperarFallo(hacer({"convertir", caso.entrada, caso.salida}), 3,
                     "no se puede escribir «" + caso.salida + "»");
    }
    esperarFallo(hacer({"convertir", entrada, entrada}), 1,
                 "la entrada y la salida son el mismo archivo");
    EXPECT_EQ(carpeta.leer("a.csv"), "a;b\n");
}

TEST_F(Ordenes, UnaSalidaAMediasNoQueda) {
    carpeta.escribir("a.csv", "a\n" + std::string(100000, 'x') + "\n\"b\n");
    EXPECT_EQ(hacer({"convertir", carpeta.ruta("a.csv"), carpeta.ruta("b.csv")}).estado, 2);
    EXPECT_FALSE(carpeta.existe("b.csv"));
}

TEST_F(Ordenes, LaSalidaEstandarRota) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(consola::ejecutar({"evaluar", "=1"}, in, out, err), 3);
    EXPECT_EQ(err.str(), "marnel-consola: no se puede escribir en la salida estándar\n");
}

TEST_F(Ordenes, AyudaYVersion) {
    EXPECT_EQ(hacer({"--version"}).salida, "marnel-consola 1.0\n");
    const std::string ayuda = hacer({"--ayuda"}).salida;
    for (const char* orden : {"evaluar", "mostrar", "convertir", "recalcular", "funciones"}) {
        EXPECT_NE(ayuda.find("marnel-consola " + std::string(orden)), std::string::npos);
        const Hecho suya = hacer({orden, "--ayuda"});
        EXPECT_EQ(suya.estado, 0);
        EXPECT_NE(ayuda.find(suya.salida), std::string::npos) << orden;
    }
}

TEST_F(Ordenes, ElProgresoSoloSeVeEnUnaPantalla) {
    const std::string ruta = libro({{"A1", "1"}});
    EXPECT_EQ(hacer({"recalcular", ruta}, "", false).errores, "");
    const Hecho hecho = hacer({"recalcular", ruta}, "", true);
    EXPECT_TRUE(hecho.errores.starts_with("\rAbriendo…")) << hecho.errores;
    EXPECT_TRUE(hecho.errores.ends_with("\r\033[K")) << hecho.errores;
}

TEST_F(Ordenes, LosMensajesNoObedecenANombresDeArchivo) {
    const Hecho hecho = hacer({"mostrar", "\033[2Jx\n.mrn"});
    EXPECT_EQ(hecho.estado, 2);
    EXPECT_EQ(hecho.errores, "marnel-consola: no se puede leer «\uFFFD[2Jx↵.mrn»: no existe\n");
}

} // namespace
