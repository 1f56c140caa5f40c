#include "formula/lexico.h"
#include "formula/tokenizador.h"
#include "model/direcciones.h"
#include "model/limites.h"
#include "model/valor.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <locale.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {
namespace {

/// Un token en pocas letras: N(1.5) T(a"b) R(Hoja!$A$1) P(SUMA) O(+) ( ) ; : E(3) ?(x) y "." al
/// fin.
std::string resumen(const Token& token) {
    switch (token.tipo) {
    case Token::Numero:
        return "N(" + token.texto + ")";
    case Token::Texto:
        return "T(" + token.texto + ")";
    case Token::Referencia:
        return "R(" + textoReferencia(token.ref) + ")";
    case Token::Nombre:
        return "P(" + token.texto + ")";
    case Token::Operador:
        return "O(" + token.texto + ")";
    case Token::Error:
        return "E(" + std::to_string(token.error) + ")";
    case Token::Fin:
        return ".";
    case Token::Invalido:
        return "?(" + token.texto + ")";
    default:
        return token.texto;
    }
}

std::string resumen(const std::vector<Token>& tokens) {
    std::string texto;
    for (const Token& token : tokens)
        texto += (texto.empty() ? "" : " ") + resumen(token);
    return texto;
}

struct Caso {
    const char* formula;
    const char* esperado;
    bool valida = true;
};

TEST(Tokenizador, DivideCadaFormula) {
    const Caso casos[] = {
        {"", "."},
        {" \t ", "."},
        {"1,5+2.5", "N(1.5) O(+) N(2.5) ."},
        {"1,2,3", "N(1.2) ?(,) N(3) .", false},
        {"1.2.3", "N(1.2) ?(.) N(3) .", false},
        {"1,2 ,3", "N(1.2) N(.3) ."},
        {",5", "N(.5) ."},
        {".5", "N(.5) ."},
        {"5,", "N(5) ?(,) .", false},
        {"5.", "N(5) ?(.) .", false},
        {"1,A1", "N(1) ?(,) R(A1) .", false},
        {"1E3", "N(1) R(E3) ."},
        {"1e3", "N(1) R(E3) ."},
        {"-5", "O(-) N(5) ."},
        {"007", "N(007) ."},
        {R"("a""b")", R"(T(a"b) .)"},
        {R"("")", "T() ."},
        {R"("""")", "T(\") ."},
        {R"("a)", R"(?("a) .)", false},
        {R"("a"")", R"(?("a"") .)", false},
        {R"("A1+B2")", "T(A1+B2) ."},
        {"\"línea\n\tdos\"", "T(línea\n\tdos) ."},
        {"'Hoja 1'!$A$1", "R('Hoja 1'!$A$1) ."},
        {"Hoja1!A1:B2", "R(Hoja1!A1) : R(B2) ."},
        {"Hoja1!a1", "R(Hoja1!A1) ."},
        {"'Hoja1'!a1", "R(Hoja1!A1) ."},
        {"''!A1", "R(A1) ."},
        {"A1!B2", "R(A1!B2) ."},
        {"Año.2!B2", "R('Año.2'!B2) ."},
        {"'a!b'!c3", "R('a!b'!C3) ."},
        {"'a\"b\n\t'!c3", "R('a\"b\n\t'!C3) ."},
        {"'Hoja 1!A1", "?('Hoja 1!A1) .", false},
        {"'Hoja 1'A1", "?('Hoja 1') R(A1) .", false},
        {"'Hoja 1'", "?('Hoja 1') .", false},
        {"'Hoja 1'!", "?('Hoja 1'!) .", false},
        {"'Hoja 1'!A0+B1", "?('Hoja 1'!A0) O(+) R(B1) .", false},
        {"'Hoja 1'!A1B+B1", "?('Hoja 1'!A1B) O(+) R(B1) .", false},
        {"Hoja1!A1.5", "R(Hoja1!A1) N(.5) ."},
        {"Hoja1!", "?(Hoja1!) .", false},
        {"Hoja1! A1", "?(Hoja1!) R(A1) .", false},
        {"Hoja1!Ñ1", "?(Hoja1!Ñ1) .", false},
        {"2024!A1", "N(2024) ?(!) R(A1) .", false},
        {"A65536", "R(A65536) ."},
        {"A65537", "P(A65537) ."},
        {"A0", "P(A0) ."},
        {"A00012", "R(A12) ."},
        {"ZZ1", "R(ZZ1) ."},
        {"AAA1", "P(AAA1) ."},
        {"a1", "R(A1) ."},
        {"AB$10", "R(AB$10) ."},
        {"$B$2", "R($B$2) ."},
        {"$c3", "R($C3) ."},
        {"$$A1", "P($$A1) ."},
        {"A$$1", "P(A$$1) ."},
        {"A1$", "P(A1$) ."},
        {"$", "P($) ."},
        {"$1", "P($1) ."},
        {"A", "P(A) ."},
        {"A1.5", "P(A1.5) ."},
        {"A1_", "P(A1_) ."},
        {"A1ñ", "P(A1ñ) ."},
        {"_x.y$1", "P(_x.y$1) ."},
        {"SUMAR.SI(A1;\">2\")", "P(SUMAR.SI) ( R(A1) ; T(>2) ) ."},
        {"verdadero", "P(verdadero) ."},
        {"#¡CIRCULAR!", "E(1) ."},
        {"#¡DIV/0!", "E(2) ."},
        {"#¡REF!", "E(3) ."},
        {"#¡VALOR!", "E(4) ."},
        {"#¡NOMBRE?", "E(5) ."},
        {"#REF", "E(3) ."},
        {"#REF+A1", "E(3) ."},
        {"#REF!+A1", "E(3) O(+) R(A1) ."},
        {"#xx DIV y CIRCULAR?A1", "E(1) R(A1) ."},
        {"#N/A", "?(#N/A) .", false},
        {"#N/A!+1", "?(#N/A!) O(+) N(1) .", false},
        {"#", "?(#) .", false},
        {"#ref!", "?(#ref!) .", false},
        {"<><=>=<>", "O(<>) O(<=) O(>=) O(<>) ."},
        {"=<", "O(=) O(<) ."},
        {"< >", "O(<) O(>) ."},
        {"%&*+-/=^", "O(%) O(&) O(*) O(+) O(-) O(/) O(=) O(^) ."},
        {"( \t1\t;  2 ) : 3", "( N(1) ; N(2) ) : N(3) ."},
        {"1\n+2", "N(1) ?(\n) O(+) N(2) .", false},
        {"1\r", "N(1) ?(\r) .", false},
        {"{1}", "?({) N(1) ?(}) .", false},
        {"!A1", "?(!) R(A1) .", false},
        {"a'b", "P(a) ?('b) .", false},
        {"@[]\\~", "?(@) ?([) ?(]) ?(\\) ?(~) .", false},
    };
    std::vector<Token> tokens;
    for (const Caso& caso : casos) {
        EXPECT_EQ(tokenizar(caso.formula, tokens), caso.valida) << caso.formula;
        EXPECT_EQ(resumen(tokens), caso.esperado) << caso.formula;
    }
}

TEST(Tokenizador, DaPosicionYLargoDeCadaUnidad) {
    const std::string formula = " 'Hoja 1'!$A$1 <> \"a\"\"b\" ;SUMA( 1,5%";
    std::vector<Token> tokens;
    ASSERT_TRUE(tokenizar(formula, tokens));
    std::vector<std::string> trozos;
    for (const Token& token : tokens)
        trozos.push_back(formula.substr(token.pos, token.largo));
    EXPECT_EQ(trozos, (std::vector<std::string>{"'Hoja 1'!$A$1", "<>", "\"a\"\"b\"", ";", "SUMA",
                                                "(", "1,5", "%", ""}));
    EXPECT_EQ(tokens.back().pos, formula.size());
}

TEST(Tokenizador, LosCamposAjenosQuedanACero) {
    std::vector<Token> tokens;
    ASSERT_FALSE(tokenizar("B2;7;#REF!;'x", tokens));
    for (const Token& token : tokens) {
        SCOPED_TRACE(resumen(token));
        EXPECT_EQ(token.numero, token.tipo == Token::Numero ? 7 : 0);
        EXPECT_EQ(token.error, token.tipo == Token::Error ? 3 : 0);
        EXPECT_EQ(token.ref == RefCelda{}, token.tipo != Token::Referencia);
    }
}

TEST(Tokenizador, UnByteNuloEsInvalidoYNoTermina) {
    std::vector<Token> tokens;
    EXPECT_FALSE(tokenizar(std::string("1\0+2", 4), tokens));
    EXPECT_EQ(tokens.size(), 5U);
}

TEST(Tokenizador, LosNumerosValenLoQueSusCifras) {
    const locale_t clasico = newlocale(LC_ALL_MASK, "C", nullptr);
    std::mt19937 azar(20240501);
    const auto cifras = [&azar](std::size_t maximo) {
        std::string texto(azar() % (maximo + 1), '0');
        for (char& c : texto)
            c = static_cast<char>('0' + azar() % 10);
        return texto;
    };
    std::vector<Token> tokens;
    for (int i = 0; i < 20000; ++i) {
        const std::size_t maximo = i % 100 == 0 ? 400 : (i % 3 == 0 ? 30 : 9);
        const std::string entera = cifras(maximo);
        std::string decimal = cifras(maximo);
        if (i % 7 == 0)
            decimal.insert(0, azar() % 330, '0');
        if (entera.empty() && decimal.empty())
            continue;
        const std::string con = entera + (decimal.empty() ? "" : "." + decimal);
        std::string escrito = con;
        if (i % 2 == 0 && !decimal.empty())
            escrito[entera.size()] = ',';
        ASSERT_TRUE(tokenizar(escrito, tokens)) << escrito;
        ASSERT_EQ(tokens.size(), 2U) << escrito;
        EXPECT_EQ(tokens[0].texto, con);
        const double esperado = strtod_l(con.c_str(), nullptr, clasico);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(tokens[0].numero),
                  std::bit_cast<std::uint64_t>(esperado))
            << escrito;
    }
    freelocale(clasico);
}

TEST(Tokenizador, LosNumerosNoDependenDeLaConfiguracionRegional) {
    const std::string anterior = std::setlocale(LC_ALL, nullptr);
    for (const char* regional : {"C", "es_ES.UTF-8"}) {
        if (std::setlocale(LC_ALL, regional) == nullptr)
            continue;
        std::vector<Token> tokens;
        EXPECT_TRUE(tokenizar("1,5+1.5+1234567890123456789.5", tokens)) << regional;
        EXPECT_EQ(tokens[0].numero, 1.5) << regional;
        EXPECT_EQ(tokens[2].numero, 1.5) << regional;
        EXPECT_EQ(tokens[4].numero, 1234567890123456789.5) << regional;
    }
    std::setlocale(LC_ALL, anterior.c_str());
}

TEST(Lexico, NoLeeMasAllaDelTextoQueSeLeDa) {
    const struct {
        std::string_view entero; ///< lo que hay en memoria
        std::size_t largo;       ///< lo que se da a leer
        Token::Tipo primera;
    } casos[] = {
        {"\"a\"\"", 3, Token::Texto},   {"\"a\"", 2, Token::Invalido},
        {",5", 1, Token::Invalido},     {"1,5", 2, Token::Numero},
        {"1E5", 2, Token::Numero},      {"<=", 1, Token::Operador},
        {"A12", 1, Token::Nombre},      {"$A$1", 3, Token::Nombre},
        {"'a'!A1", 3, Token::Invalido}, {"A1!B2", 2, Token::Referencia},
    };
    for (const auto& caso : casos) {
        Lexico lexico(caso.entero.substr(0, caso.largo));
        Lexema lexema;
        lexico.siguiente(lexema);
        EXPECT_EQ(lexema.tipo, caso.primera) << caso.entero;
        EXPECT_LE(lexema.pos + lexema.largo, caso.largo) << caso.entero;
        while (lexema.tipo != Token::Fin) {
            lexico.siguiente(lexema);
            ASSERT_LE(lexema.pos + lexema.largo, caso.largo) << caso.entero;
        }
    }
}

TEST(PalabraComoRef, ConoceTodasLasColumnas) {
    for (int col = 0; col < 20000; ++col) {
        std::string letras = nucleo::nombreColumna(col);
        if (col % 2 == 1)
            letras[0] = static_cast<char>(letras[0] + ('a' - 'A'));
        RefCelda ref;
        EXPECT_EQ(palabraComoRef(letras + "7", ref), col < nucleo::kColumnas) << letras;
        if (col < nucleo::kColumnas) {
            EXPECT_EQ(ref, (RefCelda{"", 6, col, false, false})) << letras;
        }
    }
}

TEST(PalabraComoRef, RechazaLoQueNoEsUnaDireccion) {
    const std::string noventa(90, '9');
    const std::string casos[] = {"",
                                 "$",
                                 "1",
                                 "A",
                                 "$A",
                                 "A$",
                                 "A0",
                                 "A00",
                                 "A65537",
                                 "A1 ",
                                 " A1",
                                 "A1$",
                                 "A-1",
                                 "A1B",
                                 "$$A1",
                                 "A$$1",
                                 "AAA1",
                                 "Á1",
                                 "A1é",
                                 "A1.0",
                                 "_A1",
                                 "H!A1",
                                 "A" + noventa,
                                 std::string(90, 'A') + "1",
                                 "A4294967297",
                                 "A18446744073709551617"};
    for (const std::string& caso : casos) {
        RefCelda ref{"otra", 5, 5, true, true};
        EXPECT_FALSE(palabraComoRef(caso, ref)) << caso;
    }
}

TEST(PalabraComoRef, LimpiaLaReferenciaAntesDeLeer) {
    RefCelda ref{"otra", 5, 5, true, true};
    ASSERT_TRUE(palabraComoRef("c$3", ref));
    EXPECT_EQ(ref, (RefCelda{"", 2, 2, true, false}));
    EXPECT_FALSE(palabraComoRef("nada", ref));
    EXPECT_EQ(ref, RefCelda{});
}

TEST(NormalizarIdentificador, DaLaFormaCanonica) {
    const struct {
        std::string texto;
        std::string esperado;
    } casos[] = {
        {"sumar.si", "SUMAR.SI"},
        {"Sumár.Si", "SUMAR.SI"},
        {"SUMAR.SI", "SUMAR.SI"},
        {"año", "AÑO"},
        {"AÑO", "AÑO"},
        {"áéíóúÁÉÍÓÚ", "AEIOUAEIOU"},
        {"pingüino", "PINGüINO"},
        {"PINGÜINO", "PINGÜINO"},
        {"çà", "çà"},
        {"€uro", "€URO"},
        {"x\xC3", "X\xC3"},
        {"\xC3\xC3\xB1", "\xC3\xC3\xB1"},
        {"\xB1"
         "a",
         "\xB1"
         "A"},
        {"_a$1.b", "_A$1.B"},
        {"", ""},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(normalizarIdentificador(caso.texto), caso.esperado) << caso.texto;
}

TEST(TextoReferencia, EscribeYSeVuelveALeer) {
    const struct {
        RefCelda ref;
        const char* esperado;
    } casos[] = {
        {{"", 0, 0, false, false}, "A1"},
        {{"", 65535, 701, false, false}, "ZZ65536"},
        {{"Hoja 2", 0, 2, true, true}, "'Hoja 2'!$C$1"},
        {{"Hoja2", 0, 2, true, true}, "Hoja2!$C$1"},
        {{"Año", 0, 2, true, false}, "'Año'!C$1"},
        {{"a.b", 0, 2, false, true}, "'a.b'!$C1"},
        {{"a_b", 0, 0, false, false}, "'a_b'!A1"},
        {{"A1", 0, 0, false, false}, "A1!A1"},
        {{"2024", 0, 0, false, false}, "'2024'!A1"},
        {{"2x", 0, 0, false, false}, "'2x'!A1"},
        {{"0", 0, 0, false, false}, "'0'!A1"},
        {{"9x", 0, 0, false, false}, "'9x'!A1"},
        {{"x2", 0, 0, false, false}, "x2!A1"},
        {{"SUMA", 0, 0, false, false}, "SUMA!A1"},
        {{"a!b", 0, 0, false, false}, "'a!b'!A1"},
        {{"a\tb\n", 0, 0, false, false}, "'a\tb\n'!A1"},
        {{"\"", 0, 0, false, false}, "'\"'!A1"},
        {{"$A$1", 0, 0, false, false}, "'$A$1'!A1"},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(textoReferencia(caso.ref), caso.esperado);
        std::vector<Token> tokens;
        EXPECT_TRUE(tokenizar(caso.esperado, tokens)) << caso.esperado;
        ASSERT_EQ(tokens.size(), 2U) << caso.esperado;
        EXPECT_EQ(tokens[0].ref, caso.ref) << caso.esperado;
    }
}

TEST(TextoReferencia, LaComillaSimpleNoSeEscapa) {
    EXPECT_EQ(textoReferencia({"O'Brien", 0, 0, false, false}), "'O'Brien'!A1");
}

} // namespace
} // namespace motor_formulas
