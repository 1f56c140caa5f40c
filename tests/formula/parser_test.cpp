#include "formula/codigo.h"
#include "formula/compilador.h"
#include "formula/parser.h"
#include "model/libro.h"
#include "model/valor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace motor_formulas {
namespace {

/// Un árbol como texto: los operadores entre paréntesis delante de sus operandos.
std::string comoTexto(const NodoExpr* nodo) {
    if (nodo == nullptr)
        return "nulo";
    switch (nodo->tipo) {
    case NodoExpr::Numero:
        return std::to_string(static_cast<int>(nodo->numero));
    case NodoExpr::Texto:
        return '"' + nodo->texto + '"';
    case NodoExpr::Logico:
        return nodo->logico ? "sí" : "no";
    case NodoExpr::Referencia:
        return textoReferencia(nodo->ref);
    case NodoExpr::Rango:
        return textoReferencia(nodo->ref) + ":" + textoReferencia(nodo->ref2);
    case NodoExpr::Error:
        return nucleo::textoError(nodo->error);
    default:
        break;
    }
    std::string texto = "(" + (nodo->tipo == NodoExpr::Funcion ? nodo->texto : nodo->op);
    for (const auto& hijo : nodo->hijos)
        texto += " " + comoTexto(hijo.get());
    return texto + ")";
}

struct Caso {
    const char* formula;
    const char* esperado;
};

TEST(Parser, DaElArbolDeCadaFormula) {
    const Caso casos[] = {
        {"1", "1"},
        {"((1))", "1"},
        {"-2^2", "(^ (u- 2) 2)"},
        {"2^3^2", "(^ 2 (^ 3 2))"},
        {"2^-3^2", "(^ 2 (^ (u- 3) 2))"},
        {"(2^3)^2", "(^ (^ 2 3) 2)"},
        {"2*3^2", "(* 2 (^ 3 2))"},
        {"2^3*2", "(* (^ 2 3) 2)"},
        {"1+2&3", "(& (+ 1 2) 3)"},
        {"1&2=12", "(= (& 1 2) 12)"},
        {"1<2=VERDADERO", "(= (< 1 2) sí)"},
        {"1-2-3", "(- (- 1 2) 3)"},
        {"1/2*3", "(* (/ 1 2) 3)"},
        {"1+2*3-4", "(- (+ 1 (* 2 3)) 4)"},
        {"1&2&3", "(& (& 1 2) 3)"},
        {"1=2<>3<4>5<=6>=7", "(>= (<= (> (< (<> (= 1 2) 3) 4) 5) 6) 7)"},
        {"5%%", "(% (% 5))"},
        {"-5%", "(% (u- 5))"},
        {"-5%%", "(% (% (u- 5)))"},
        {"--5%", "(u- (% (u- 5)))"},
        {"-(5%)", "(u- (% 5))"},
        {"-(5)%", "(% (u- 5))"},
        {"+-+5", "(u+ (u- (u+ 5)))"},
        {"2^3%", "(^ 2 (% 3))"},
        {"2%^3", "(^ (% 2) 3)"},
        {"-2%^3", "(^ (% (u- 2)) 3)"},
        {"(1+2)%", "(% (+ 1 2))"},
        {"1+-2", "(+ 1 (u- 2))"},
        {"SUMA()", "(SUMA)"},
        {"SUMA( )%", "(% (SUMA))"},
        {"suma(1;(2);SUMA(3))", "(SUMA 1 2 (SUMA 3))"},
        {"Sumár.Si (A1:B2;\"x\")", "(SUMAR.SI A1:B2 \"x\")"},
        {"año(1)", "(AÑO 1)"},
        {"SUMA((A1:B2))", "(SUMA A1:B2)"},
        {"-SUMA(1)^2", "(^ (u- (SUMA 1)) 2)"},
        {"SI(1;2;3)", "(SI 1 2 3)"},
        {"SI()", "(SI)"},
        {"SI(1)", "(SI 1)"},
        {"SI(1;2)", "(SI 1 2)"},
        {"si(1;2;3;4;5)", "(SI 1 2 3 4 5)"},
        {"SI.ERROR()", "(SI.ERROR)"},
        {"SI.ERROR(1)", "(SI.ERROR 1)"},
        {"sí.error(1;2)", "(SI.ERROR 1 2)"},
        {"SI.ERROR(1;2;3)", "(SI.ERROR 1 2 3)"},
        {"SI(SI(1;2;3);SI(4;5);SI.ERROR(6;SI(7;8;9)))",
         "(SI (SI 1 2 3) (SI 4 5) (SI.ERROR 6 (SI 7 8 9)))"},
        {"xyz(1;2)", "(XYZ 1 2)"},
        {"un.nombre.larguísimo.que.no.cabe.en.ningún.sitio(1)",
         "(UN.NOMBRE.LARGUISIMO.QUE.NO.CABE.EN.NINGUN.SITIO 1)"},
        {"verdadero", "sí"},
        {"Falso", "no"},
        {"VERDADERO&falso", "(& sí no)"},
        {"xyz", "#¡NOMBRE?"},
        {"SUMA", "#¡NOMBRE?"},
        {"#REF", "#¡REF!"},
        {"#¡DIV/0!+1", "(+ #¡DIV/0! 1)"},
        {R"("a""b"&"c")", R"((& "a"b" "c"))"},
        {"A1", "A1"},
        {"hoja2!a1:b3", "hoja2!A1:hoja2!B3"},
        {"Hoja2!A1:Hoja3!B3", "Hoja2!A1:Hoja3!B3"},
        {"A1:Hoja3!B3", "A1:Hoja3!B3"},
        {"'Hoja 2'!$B$3:A1", "'Hoja 2'!$B$3:'Hoja 2'!A1"},
        {"$B3:A$1", "$B3:A$1"},
        {"A$3:$B1", "A$3:$B1"},
        {"B1:$A$3", "B1:$A$3"},
        {"A1 : B2", "A1:B2"},
        {"A1:B2%", "(% A1:B2)"},
        {"-A1:B2", "(u- A1:B2)"},
        {"A1:B2+C3:D4", "(+ A1:B2 C3:D4)"},
    };
    for (const Caso& caso : casos)
        EXPECT_EQ(comoTexto(Parser().parsear(caso.formula).get()), caso.esperado) << caso.formula;
}

TEST(Parser, RechazaLoQueNoEsUnaFormula) {
    const char* casos[] = {
        "",           " ",          "1+",          "2*)",         "*2",          "1 2",
        "A1 B1",      "(1))",       "(1",          "()",          ")",           "(",
        "1;2",        "(1;2)",      ";",           "SUMA(",       "SUMA(1",      "SUMA(1;",
        "SUMA(1;;2)", "SUMA(1;)",   "SUMA(;1)",    "SUMA(;)",     "SUMA((1;2))", "VERDADERO()",
        "FALSO(1)",   "A1:",        "A1:5",        "A1:SUMA(1)",  "A1:(B2)",     "(A1):B2",
        ":A1",        "A1:B2:C3",   "1:2",         "%",           "%5",          "5%5",
        "1=",         "=1",         "1==2",        "-",           "+",           "2^",
        "2^*3",       "1&",         "\"a\"\"b",    "\"a\" \"b\"", "#N/A",        "1,2,3",
        "A1!",        "'a'A1",      "1\n+1",       "xyz 1",       "A1(1)",       "1(2)",
        "\"a\"(1)",   "SUMA(1)(2)", "SUMA(1)2",    "1E3",         "<1",          "1<>",
        "SI(;1)",     "SI(1;)",     "SI.ERROR(1;", "((1)",        "A1 : ",       "#¡REF!:B2",
    };
    for (const char* caso : casos)
        EXPECT_EQ(comoTexto(Parser().parsear(caso).get()), "nulo") << caso;
}

TEST(Parser, NormalizaNombresDeCualquierLargo) {
    for (std::size_t largo = 1; largo < 80; ++largo) {
        const std::string nombre(largo, 'x');
        const std::unique_ptr<NodoExpr> nodo = Parser().parsear(nombre + "(1)");
        ASSERT_NE(nodo, nullptr);
        EXPECT_EQ(nodo->texto, std::string(largo, 'X'));
    }
}

TEST(Parser, SoloTraeLosCamposDeSuClase) {
    const std::unique_ptr<NodoExpr> nodo = Parser().parsear("Hoja2!A1:B3");
    ASSERT_NE(nodo, nullptr);
    EXPECT_EQ(nodo->tipo, NodoExpr::Rango);
    EXPECT_EQ(nodo->ref, (RefCelda{"Hoja2", 0, 0, false, false}));
    EXPECT_EQ(nodo->ref2, (RefCelda{"Hoja2", 2, 1, false, false}));
    EXPECT_TRUE(nodo->texto.empty());
    EXPECT_TRUE(nodo->op.empty());
    EXPECT_TRUE(nodo->hijos.empty());
}

TEST(Codigo, DaLasReferenciasEnElOrdenEnQueEstanEscritas) {
    nucleo::Libro libro;
    libro.hojas[0]->nombre = "Uno";
    libro.agregarHoja()->nombre = "Dos";
    Codigo codigo;
    ASSERT_TRUE(compilar("SI(C3;SUMA(Dos!B9:A2;Nada!A1);SI.ERROR($D$4;Uno!A1:Dos!B2))+C3", &libro,
                         1, codigo));
    struct Esperada {
        int hoja;
        nucleo::RangoCeldas rango;
        bool esRango;
    };
    const Esperada esperadas[] = {
        {1, {2, 2, 2, 2}, false}, {1, {1, 0, 8, 1}, true}, {-1, {0, 0, 0, 0}, false},
        {1, {3, 3, 3, 3}, false}, {0, {0, 0, 1, 1}, true}, {1, {2, 2, 2, 2}, false},
    };
    ASSERT_EQ(codigo.referencias().size(), std::size(esperadas));
    for (std::size_t i = 0; i < std::size(esperadas); ++i) {
        const ReferenciaCodigo& referencia = codigo.referencias()[i];
        EXPECT_EQ(referencia.hoja, esperadas[i].hoja) << i;
        EXPECT_EQ(referencia.rango, esperadas[i].rango) << i;
        EXPECT_EQ(referencia.esRango, esperadas[i].esRango) << i;
    }
    EXPECT_EQ(textoReferencia(codigo.primeraEsquina(codigo.referencias()[1])), "Dos!B9");
    EXPECT_EQ(textoReferencia(codigo.segundaEsquina(codigo.referencias()[1])), "Dos!A2");
    EXPECT_EQ(textoReferencia(codigo.primeraEsquina(codigo.referencias()[3])), "$D$4");
    EXPECT_EQ(textoReferencia(codigo.segundaEsquina(codigo.referencias()[4])), "Dos!B2");
}

TEST(Codigo, SeReutilizaDeUnaFormulaAOtra) {
    Codigo codigo;
    ASSERT_TRUE(compilar(R"(SUMA(Hoja!A1:B2;"a""b";xyz(3)))", nullptr, 0, codigo));
    ASSERT_FALSE(compilar("SUMA((((1", nullptr, 0, codigo));
    ASSERT_TRUE(compilar("1+A1", nullptr, 3, codigo));
    EXPECT_EQ(codigo.instrucciones().size(), 3U);
    ASSERT_EQ(codigo.referencias().size(), 1U);
    EXPECT_EQ(codigo.referencias()[0].hoja, 3);
    EXPECT_EQ(codigo.profundidad(), 2U);
}

} // namespace
} // namespace motor_formulas
