#include "formula/reescritura.h"
#include "formula/tokenizador.h"
#include "model/direcciones.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace motor_formulas {
namespace {

constexpr int kMaximo = std::numeric_limits<int>::max();
constexpr int kMinimo = std::numeric_limits<int>::min();

TEST(ReescribirRefs, SoloTocaLasReferencias) {
    const struct {
        const char* formula;
        const char* esperada;
    } casos[] = {
        {"", ""},
        {"1+\"A1\"", "1+\"A1\""},
        {"=A1", "=[A1]"},
        {" a1 \t:  'x y'!$b$2 ", " [A1] \t:  ['x y'!$B$2] "},
        {"SUMA(A1;A1B;A1.5)", "SUMA([A1];A1B;A1.5)"},
        {"A1+#N/A+B1", "[A1]+#N/A+B1"},
        {"A1+#N/A!+B1", "[A1]+#N/A!+[B1]"},
        {"A1\n{B2}", "[A1]\n{[B2]}"},
        {"A1+\"sin cerrar A1", "[A1]+\"sin cerrar A1"},
        {"A1+'sin cerrar!A1", "[A1]+'sin cerrar!A1"},
        {"1E3", "1[E3]"},
        {"2024!A1", "2024![A1]"},
    };
    for (const auto& caso : casos) {
        const auto marcar = [](const RefCelda& ref) { return "[" + textoReferencia(ref) + "]"; };
        EXPECT_EQ(reescribirRefs(caso.formula, marcar), caso.esperada) << caso.formula;
        EXPECT_EQ(reescribirRefs(caso.formula, [](const RefCelda&) { return ""; }), caso.formula);
    }
}

TEST(ReescribirRefs, UnResultadoVacioDejaEsaReferencia) {
    const auto soloFilaUno = [](const RefCelda& ref) { return ref.fila == 0 ? "x" : ""; };
    EXPECT_EQ(reescribirRefs("a1+a2+'h'!a1+a3", soloFilaUno), "x+a2+x+a3");
}

TEST(AjustarReferencias, DesplazaLoRelativo) {
    const struct {
        const char* formula;
        int filas;
        int columnas;
        const char* esperada;
    } casos[] = {
        {"=A1+$B$1+C$2", 1, 1, "=B2+$B$1+D$2"},
        {"=A1+$B$1+C$2", 0, 0, "=A1+$B$1+C$2"},
        {"=A1", -1, 0, "=#¡REF!"},
        {"=ZZ1", 0, 1, "=#¡REF!"},
        {"=A65536", 1, 0, "=#¡REF!"},
        {"=A1", 0, -1, "=#¡REF!"},
        {"=$A1", 0, -1, "=$A1"},
        {"=A$1", -1, 0, "=A$1"},
        {"=A1:B2", -1, 0, "=#¡REF!:B1"},
        {"=A1:B2", 65534, 700, "=ZY65535:ZZ65536"},
        {"='Hoja 1'!A1*Hoja2!$B2", 1, 1, "='Hoja 1'!B2*Hoja2!$B3"},
        {"='Hoja2'!a1", 1, 0, "=Hoja2!A2"},
        {"='2024'!A1+'O x'!A1", 1, 0, "='2024'!A2+'O x'!A2"},
        {"=\"A1\"&a1&xyz&VERDADERO", 1, 1, "=\"A1\"&B2&xyz&VERDADERO"},
        {"= SUMA( A1 ;1,5 ) ", 1, 1, "= SUMA( B2 ;1,5 ) "},
        {"=A1", kMaximo, 0, "=#¡REF!"},
        {"=A1", kMinimo, kMinimo, "=#¡REF!"},
        {"=B2", kMaximo, kMaximo, "=#¡REF!"},
        {"=$B$2", kMaximo, kMinimo, "=$B$2"},
        {"no es fórmula A1 'A1", 1, 0, "no es fórmula A2 'A1"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(ajustarReferencias(caso.formula, caso.filas, caso.columnas), caso.esperada)
            << caso.formula << " " << caso.filas << " " << caso.columnas;
}

TEST(AjustarPorEstructura, SigueALasCeldas) {
    const struct {
        const char* formula;
        const char* hojaFormula;
        bool filas;
        int inicio;
        int cantidad;
        const char* esperada;
    } casos[] = {
        {"Hoja1!A5+Hoja1!A3+Hoja2!A5", "Hoja9", true, 3, 2, "Hoja1!A7+Hoja1!A3+Hoja2!A5"},
        {"=A5", "Hoja1", true, 3, 2, "=A7"},
        {"=A5", "Hoja2", true, 3, 2, "=A5"},
        {"=a5+$a$5", "Hoja2", true, 3, 2, "=a5+$a$5"},
        {"=A4", "Hoja1", true, 3, 2, "=A6"},
        {"=A3", "Hoja1", true, 3, 2, "=A3"},
        {"=$A$5", "Hoja1", true, 3, 2, "=$A$7"},
        {"=a2", "Hoja1", true, 3, 2, "=A2"},
        {"=A3", "Hoja1", true, 2, -2, "=#¡REF!"},
        {"=A4", "Hoja1", true, 2, -2, "=#¡REF!"},
        {"=A5", "Hoja1", true, 2, -2, "=A3"},
        {"=A2", "Hoja1", true, 2, -2, "=A2"},
        {"=A3:A9", "Hoja1", true, 2, -2, "=#¡REF!:A7"},
        {"=E1", "Hoja1", false, 3, 2, "=G1"},
        {"=E1+$C$1", "Hoja1", false, 1, -2, "=C1+#¡REF!"},
        {"=E5", "Hoja1", false, 4, -1, "=#¡REF!"},
        {"=A5", "Hoja1", true, 0, 0, "=A5"},
        {"=hoja1!A5+'Hoja1'!A5", "x", true, 0, 1, "=hoja1!A5+Hoja1!A6"},
        {"=A65536", "Hoja1", true, 0, 10, "=A65546"},
        {"=ZZ1", "Hoja1", false, 0, 1, "=AAA1"},
        {"=A1", "Hoja1", true, 0, kMaximo, "=A2147483647"},
        {"=A5", "Hoja1", true, 0, kMinimo, "=#¡REF!"},
        {"=A5", "Hoja1", true, kMaximo, kMinimo, "=A5"},
        {"=A5", "Hoja1", true, kMinimo, kMinimo, "=#¡REF!"},
        {"=A5", "Hoja1", true, kMinimo, -1, "=A4"},
        {"=A1", "Hoja1", true, kMinimo, -1, "=#¡REF!"},
        {"=A5", "Hoja1", true, kMinimo, kMaximo, "=A2147483647"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(ajustarPorEstructura(caso.formula, caso.hojaFormula, "Hoja1", caso.filas,
                                       caso.inicio, caso.cantidad),
                  caso.esperada)
            << caso.formula << " " << caso.inicio << " " << caso.cantidad;
}

TEST(AjustarPorEstructura, DiceSiElTextoCambia) {
    const struct {
        const char* formula;
        bool cambia;
    } casos[] = {
        {"", false},          {"1+\"A9\"", false}, {"Otra!A9", false}, {"Otra!a9", false},
        {"A1+$B$2", false},   {"A1+a2", true},     {"A1+A3", true},    {"Otra!A9+A9", true},
        {"'Hoja1'!A1", true}, {"Hoja1!A1", false}, {"A1 A9 'x", true},
    };
    std::string salida = "resto de otra fórmula";
    for (const auto& caso : casos)
        EXPECT_EQ(ajustarPorEstructura(caso.formula, "Hoja1", "Hoja1", true, 2, 1, salida),
                  caso.cambia)
            << caso.formula;
    EXPECT_EQ(salida, "A1 A10 'x");
    EXPECT_FALSE(renombrarEnFormula("Otra!A1+Hoja1", "Hoja1", "X", salida));
    EXPECT_FALSE(renombrarEnFormula("Hoja1!A1", "Hoja1", "Hoja1", salida));
    EXPECT_FALSE(renombrarEnFormula("Hoja1!A1", "Hoja1", "a'b", salida));
    EXPECT_TRUE(renombrarEnFormula("Hoja1!A1", "Hoja1", "X", salida));
    EXPECT_EQ(salida, "X!A1");
}

TEST(AjustarPorEstructura, LaUltimaColumnaPosibleSeEscribeSinDesbordar) {
    EXPECT_EQ(ajustarPorEstructura("$ZZ$1", "H", "H", false, 0, kMaximo),
              "$" + nucleo::nombreColumna(kMaximo - 1) + "$1");
}

TEST(RenombrarEnFormula, CambiaSoloElNombreExacto) {
    const struct {
        const char* formula;
        const char* viejo;
        const char* nuevo;
        const char* esperada;
    } casos[] = {
        {"=Hoja1!A1", "Hoja1", "Mis datos", "='Mis datos'!A1"},
        {"='Mis datos'!$a1", "Mis datos", "Hoja1", "=Hoja1!$A1"},
        {"=hoja1!a1+Hoja11!A1+A1", "Hoja1", "X", "=hoja1!a1+Hoja11!A1+A1"},
        {"=SUMA(Hoja1!A1:B2)", "Hoja1", "X", "=SUMA(X!A1:B2)"},
        {"=SUMA(Hoja1!A1:Hoja1!B2)", "Hoja1", "Año", "=SUMA('Año'!A1:'Año'!B2)"},
        {"=\"Hoja1!A1\"&Hoja1!A1", "Hoja1", "X", "=\"Hoja1!A1\"&X!A1"},
        {"=Hoja1(1)+Hoja1", "Hoja1", "X", "=Hoja1(1)+Hoja1"},
        {"=Hoja1!A1", "Hoja1", "2024", "='2024'!A1"},
        {"='2024'!A1", "2024", "A1", "=A1!A1"},
        {"=A1!A1+A1", "A1", "B2", "=B2!A1+A1"},
        {"=Hoja1!A1", "Hoja1", "a!b", "='a!b'!A1"},
        {"=Hoja1!A1+H!B2", "Hoja1", "a\tb\nc", "='a\tb\nc'!A1+H!B2"},
        {"=Hoja1!A1&\"x\"", "Hoja1", "\"", "='\"'!A1&\"x\""},
        {"=''!A1", "", "X", "=''!A1"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(renombrarEnFormula(caso.formula, caso.viejo, caso.nuevo), caso.esperada)
            << caso.formula << " a " << caso.nuevo;
}

/// Un nombre con comilla simple no puede escribirse: la referencia se queda y las demás no se
/// estropean; al volver al nombre de antes todo vale otra vez.
TEST(RenombrarEnFormula, UnNombreConComillaNoEstropeaLaFormula) {
    const std::string formula = "=Hoja1!A1+'Hoja 2'!B2&\"Hoja1!A1\"";
    for (const char* nuevo : {"O'Brien", "'", "''", "a'", "'a'", "x'!A1+'y"}) {
        const std::string renombrada = renombrarEnFormula(formula, "Hoja1", nuevo);
        EXPECT_EQ(renombrada, formula) << nuevo;
        EXPECT_EQ(renombrarEnFormula(renombrada, nuevo, "Hoja1"), formula) << nuevo;
    }
}

/// Fórmulas al azar escritas en su forma canónica, para que ir y volver deje el mismo texto.
class FormulasAlAzar {
  public:
    explicit FormulasAlAzar(std::uint32_t semilla) : azar_(semilla) {}

    std::uint32_t azar(std::uint32_t tope) { return static_cast<std::uint32_t>(azar_() % tope); }

    std::string formula(const std::vector<std::string>& hojas) {
        std::string texto = "=";
        const std::uint32_t trozos = 1 + azar(12);
        for (std::uint32_t i = 0; i < trozos; ++i)
            texto += azar(2) == 0 ? relleno() : referencia(hojas);
        return texto;
    }

  private:
    std::string relleno() {
        static const char* const opciones[] = {
            "+",          " ",      "SUMA(", ")",    ";",          "1,5", "\"A1 'x'!B2\"",
            "\t&",        "#¡REF!", "xyz",   "'a' ", "\"\"\"A1\"", "<>",  "{",
            "VERDADERO ", "(",      "AAA1+", "A0*"};
        return std::string(opciones[azar(std::size(opciones))]) + (azar(3) == 0 ? "" : " ");
    }

    std::string referencia(const std::vector<std::string>& hojas) {
        RefCelda ref;
        ref.hoja = hojas[azar(static_cast<std::uint32_t>(hojas.size()))];
        ref.fila = static_cast<int>(100 + azar(1000));
        ref.col = static_cast<int>(100 + azar(400));
        ref.filaAbs = azar(3) == 0;
        ref.colAbs = azar(3) == 0;
        return " " + textoReferencia(ref) + " ";
    }

    std::mt19937 azar_;
};

TEST(Propiedades, DesplazarYVolverDejaElMismoTexto) {
    FormulasAlAzar formulas(3);
    for (int i = 0; i < 20000; ++i) {
        const std::string formula = formulas.formula({"", "Hoja1", "Hoja 2", "2024", "Año"});
        const int filas = static_cast<int>(formulas.azar(201)) - 100;
        const int columnas = static_cast<int>(formulas.azar(201)) - 100;
        const std::string movida = ajustarReferencias(formula, filas, columnas);
        ASSERT_EQ(ajustarReferencias(movida, -filas, -columnas), formula) << movida;
        const std::string corrida = ajustarPorEstructura(formula, "Hoja1", "Hoja1", i % 2 == 0,
                                                         filas + 100, columnas + 101);
        ASSERT_EQ(ajustarPorEstructura(corrida, "Hoja1", "Hoja1", i % 2 == 0, filas + 100,
                                       -(columnas + 101)),
                  formula)
            << corrida;
    }
}

TEST(Propiedades, RenombrarYVolverDejaElMismoTexto) {
    const std::vector<std::string> nombres = {"X",   "Mis datos", "2024",    "a!b", "\t",   "A1",
                                              "Año", "\"",        "O'Brien", "a.b", "SUMA", "x\ny"};
    FormulasAlAzar formulas(5);
    for (int i = 0; i < 20000; ++i) {
        const std::string formula = formulas.formula({"", "Hoja1", "Hoja 2", "Hoja 3"});
        const std::string viejo = i % 2 == 0 ? "Hoja1" : "Hoja 2";
        const std::string& nuevo = nombres[static_cast<std::size_t>(i) % nombres.size()];
        const std::string renombrada = renombrarEnFormula(formula, viejo, nuevo);
        ASSERT_EQ(renombrarEnFormula(renombrada, nuevo, viejo), formula) << renombrada;
    }
}

/// El camino lento y evidente: sustituir de la última a la primera sobre la lista de unidades.
std::string reescribirDesdeElFinal(const std::string& texto,
                                   const std::function<std::string(const RefCelda&)>& f) {
    std::vector<Token> tokens;
    tokenizar(texto, tokens);
    std::string salida = texto;
    std::reverse(tokens.begin(), tokens.end());
    for (const Token& token : tokens) {
        const std::string nuevo = token.tipo == Token::Referencia ? f(token.ref) : "";
        if (!nuevo.empty())
            salida.replace(token.pos, token.largo, nuevo);
    }
    return salida;
}

TEST(Propiedades, ReescribirEsSustituirDesdeElFinal) {
    FormulasAlAzar formulas(9);
    for (int i = 0; i < 20000; ++i) {
        const std::string formula = formulas.formula({"", "Hoja1", "a b", "Ñ"});
        const auto f = [](const RefCelda& ref) {
            return ref.fila % 3 == 0 ? ""
                                     : std::string(static_cast<std::size_t>(ref.fila % 7), 'z');
        };
        ASSERT_EQ(reescribirRefs(formula, f), reescribirDesdeElFinal(formula, f)) << formula;
    }
}

} // namespace
} // namespace motor_formulas
