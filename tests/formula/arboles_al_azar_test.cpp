#include "tests/formula/evaluador_ingenuo.h"
#include "tests/formula/libro_de_prueba.h"
#include "tests/formula/parser_ingenuo.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace motor_formulas {
namespace {

bool iguales(const NodoExpr& a, const NodoExpr& b) {
    if (a.tipo != b.tipo ||
        std::bit_cast<std::uint64_t>(a.numero) != std::bit_cast<std::uint64_t>(b.numero) ||
        a.texto != b.texto || a.logico != b.logico || a.ref != b.ref || a.ref2 != b.ref2 ||
        a.op != b.op || a.error != b.error || a.hijos.size() != b.hijos.size())
        return false;
    for (std::size_t i = 0; i < a.hijos.size(); ++i) {
        if (!iguales(*a.hijos[i], *b.hijos[i]))
            return false;
    }
    return true;
}

bool iguales(const nucleo::Valor& a, const nucleo::Valor& b) {
    if (a.tipo != b.tipo)
        return false;
    switch (a.tipo) {
    case nucleo::TipoValor::Numero:
        return std::bit_cast<std::uint64_t>(a.numero) == std::bit_cast<std::uint64_t>(b.numero);
    case nucleo::TipoValor::Texto:
        return a.texto == b.texto;
    case nucleo::TipoValor::Logico:
        return a.logico == b.logico;
    case nucleo::TipoValor::Error:
        return a.error == b.error;
    default:
        return true;
    }
}

/// Fórmulas al azar. `valida` sigue la gramática; `sopa` junta unidades sin orden.
class Generador {
  public:
    explicit Generador(std::uint32_t semilla) : azar_(semilla) {}

    std::string valida(int profundidad) {
        if (profundidad == 0)
            return hoja();
        switch (azar_() % 12) {
        case 0:
            return "(" + valida(profundidad - 1) + ")";
        case 1:
            return (azar_() % 2 == 0 ? "-" : "+") + valida(profundidad - 1);
        case 2:
            return valida(profundidad - 1) + "%";
        case 3:
        case 4:
        case 5:
            return llamada(profundidad);
        default:
            return valida(profundidad - 1) + blanco() + elegir(kOperadores) + blanco() +
                   valida(profundidad - 1);
        }
    }

    std::string sopa(int largo) {
        std::string texto;
        for (int i = 0; i < largo; ++i)
            texto += elegir(kUnidades) + blanco();
        return texto;
    }

  private:
    template <std::size_t N> std::string elegir(const char* const (&opciones)[N]) {
        return opciones[azar_() % N];
    }
    std::string blanco() { return azar_() % 4 == 0 ? " " : ""; }

    std::string hoja() { return elegir(kHojas); }

    std::string llamada(int profundidad) {
        std::string texto = elegir(kFunciones) + "(";
        const std::uint32_t argumentos = azar_() % 4;
        for (std::uint32_t i = 0; i < argumentos; ++i) {
            texto += i > 0 ? ";" : "";
            texto += azar_() % 3 == 0 ? elegir(kRangos) : valida(profundidad - 1);
        }
        return texto + ")";
    }

    static constexpr const char* const kOperadores[] = {"+", "-", "*", "/",  "^",  "&", "&",
                                                        "=", "<", ">", "<>", "<=", ">="};
    static constexpr const char* const kHojas[] = {"1",
                                                   "2",
                                                   "0",
                                                   "0,5",
                                                   "3.25",
                                                   "100",
                                                   "\"\"",
                                                   "\"a\"",
                                                   "\"B\"",
                                                   "\"5\"",
                                                   "\"1/2/24\"",
                                                   "\"ñ\"\"x\"",
                                                   "VERDADERO",
                                                   "falso",
                                                   "A1",
                                                   "B2",
                                                   "$C$3",
                                                   "D4",
                                                   "C1",
                                                   "'Otra hoja'!A1",
                                                   "Nada!A1",
                                                   "xyz",
                                                   "#¡REF!",
                                                   "A1:B2",
                                                   "(B3:A1)",
                                                   "a2",
                                                   "1234567890123456789"};
    static constexpr const char* const kRangos[] = {"A1:D4",      "B3:A1",   "'Otra hoja'!A1:B2",
                                                    "Nada!A1:B2", "(A1:A3)", "$A2:C$3"};
    static constexpr const char* const kFunciones[] = {
        "SUMA",       "suma",        "SI",       "si",        "SI.ERROR", "sí.error", "ABS",
        "CONCATENAR", "NO",          "Y",        "CONTAR",    "MAX",      "MAYUSC",   "LARGO",
        "IZQUIERDA",  "desconocida", "PROMEDIO", "REDONDEAR", "RESIDUO",  "CONTARA"};
    static constexpr const char* const kUnidades[] = {
        "1", "2,5", "\"a\"",  "A1",    "B2",  ":",         "A1:B2", "'H 1'!A1",  "(",  "(",
        ")", ")",   ";",      "SUMA(", "SI(", "SI.ERROR(", "nada",  "VERDADERO", "+",  "-",
        "*", "/",   "^",      "&",     "=",   "<>",        "<",     ">",         "<=", ">=",
        "%", "%",   "#¡REF!", "-",     "+",   "1",         "A1"};

    std::mt19937 azar_;
};

class ArbolesAlAzar : public ::testing::Test {
  protected:
    LibroDePrueba prueba;

    ArbolesAlAzar() {
        prueba.libro.agregarHoja();
        prueba.libro.renombrarHoja(1, "Otra hoja");
        const std::pair<const char*, const char*> celdas[] = {
            {"A1", "3"},        {"B1", "-2,5"},
            {"C1", "texto"},    {"A2", "=1/0"},
            {"B2", "=2>1"},     {"C2", "15%"},
            {"A3", "0"},        {"B3", "=\"7\""},
            {"C3", "1/1/2024"}, {"D1", "=SI(1;\"Abc\")"},
            {"D3", "nan"}};
        for (const auto& [direccion, texto] : celdas)
            prueba.escribir(direccion, texto);
        prueba.escribir("A1", "10", 1);
        prueba.escribir("B2", "dos", 1);
    }
};

TEST_F(ArbolesAlAzar, SeLeenComoDiceLaGramatica) {
    Generador generador(7);
    int buenas = 0;
    for (int i = 0; i < 60000; ++i) {
        const std::string formula =
            i % 3 == 0 ? generador.valida(1 + i % 5) : generador.sopa(1 + i % 12);
        const std::unique_ptr<NodoExpr> arbol = Parser().parsear(formula);
        const std::unique_ptr<NodoExpr> testigo = ParserIngenuo().parsear(formula);
        ASSERT_EQ(arbol != nullptr, testigo != nullptr) << formula;
        if (arbol == nullptr)
            continue;
        ++buenas;
        ASSERT_TRUE(iguales(*arbol, *testigo)) << formula;
    }
    EXPECT_GT(buenas, 20000);
}

TEST_F(ArbolesAlAzar, ValenLoMismoQueEvaluadosPorRecursion) {
    Generador generador(11);
    for (int i = 0; i < 30000; ++i) {
        const std::string formula = generador.valida(1 + i % 6);
        const std::unique_ptr<NodoExpr> testigo = ParserIngenuo().parsear(formula);
        ASSERT_NE(testigo, nullptr) << formula;
        const int hoja = i % 2;
        const nucleo::Valor esperado = EvaluadorIngenuo(prueba.libro, hoja).evaluar(*testigo);
        const nucleo::Valor valor = prueba.calcular(formula, hoja);
        ASSERT_TRUE(iguales(valor, esperado))
            << formula << "\n da " << nucleo::textoVisible(valor, {}) << " y no "
            << nucleo::textoVisible(esperado, {});
    }
}

TEST_F(ArbolesAlAzar, LasReferenciasDelCodigoSonLasDelArbol) {
    Generador generador(13);
    Codigo codigo;
    for (int i = 0; i < 10000; ++i) {
        const std::string formula = generador.valida(1 + i % 5);
        ASSERT_TRUE(compilar(formula, &prueba.libro, 0, codigo)) << formula;
        std::vector<const NodoExpr*> esperadas;
        const std::unique_ptr<NodoExpr> arbol = ParserIngenuo().parsear(formula);
        std::vector<const NodoExpr*> pendientes = {arbol.get()};
        while (!pendientes.empty()) {
            const NodoExpr* nodo = pendientes.back();
            pendientes.pop_back();
            if (nodo->tipo == NodoExpr::Referencia || nodo->tipo == NodoExpr::Rango)
                esperadas.push_back(nodo);
            for (auto hijo = nodo->hijos.rbegin(); hijo != nodo->hijos.rend(); ++hijo)
                pendientes.push_back(hijo->get());
        }
        ASSERT_EQ(codigo.referencias().size(), esperadas.size()) << formula;
        for (std::size_t j = 0; j < esperadas.size(); ++j) {
            const ReferenciaCodigo& referencia = codigo.referencias()[j];
            EXPECT_EQ(referencia.esRango, esperadas[j]->tipo == NodoExpr::Rango) << formula;
            EXPECT_EQ(codigo.primeraEsquina(referencia), esperadas[j]->ref) << formula;
            if (referencia.esRango) {
                EXPECT_EQ(codigo.segundaEsquina(referencia), esperadas[j]->ref2) << formula;
            }
        }
    }
}

TEST_F(ArbolesAlAzar, UnosBytesCualesquieraNoRompenNada) {
    std::mt19937 azar(17);
    const std::string frecuentes = "A1B2$!':;()\"#,.%&<>=+-*/^ \tSI\xC3\xB1?_0";
    std::vector<Token> tokens;
    Codigo codigo;
    for (int i = 0; i < 40000; ++i) {
        std::string texto(azar() % 24, '\0');
        for (char& c : texto)
            c = azar() % 8 == 0 ? static_cast<char>(azar())
                                : frecuentes[azar() % frecuentes.size()];
        const bool valida = tokenizar(texto, tokens);
        std::size_t cubierto = 0;
        bool hayInvalido = false;
        for (const Token& token : tokens) {
            for (; cubierto < token.pos; ++cubierto)
                ASSERT_TRUE(texto[cubierto] == ' ' || texto[cubierto] == '\t') << texto;
            ASSERT_EQ(cubierto, token.pos) << texto;
            ASSERT_EQ(token.largo == 0, token.tipo == Token::Fin) << texto;
            cubierto += token.largo;
            hayInvalido = hayInvalido || token.tipo == Token::Invalido;
        }
        ASSERT_EQ(cubierto, texto.size()) << texto;
        ASSERT_EQ(valida, !hayInvalido) << texto;
        ASSERT_EQ(tokens.back().tipo, Token::Fin) << texto;
        const std::unique_ptr<NodoExpr> arbol = Parser().parsear(texto);
        const std::unique_ptr<NodoExpr> testigo = ParserIngenuo().parsear(texto);
        ASSERT_EQ(arbol != nullptr, testigo != nullptr) << texto;
        // Sin el byte nulo con que acaba un std::string, leer de más se notaría.
        const std::vector<char> justo(texto.begin(), texto.end());
        ASSERT_EQ(compilar({justo.data(), justo.size()}, nullptr, 0, codigo), arbol != nullptr)
            << texto;
        if (arbol != nullptr) {
            ASSERT_TRUE(iguales(*arbol, *testigo)) << texto;
        }
    }
}

} // namespace
} // namespace motor_formulas
