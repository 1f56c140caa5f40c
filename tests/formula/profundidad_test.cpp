#include "formula/codigo.h"
#include "formula/compilador.h"
#include "formula/evaluador.h"
#include "formula/functions/catalogo.h"
#include "formula/maquina.h"
#include "formula/parser.h"
#include "formula/reescritura.h"
#include "model/libro.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <pthread.h>
#include <string>
#include <vector>

namespace motor_formulas {
namespace {

constexpr std::size_t kNiveles = 200000;

std::string repetir(const std::string& trozo, std::size_t veces = kNiveles) {
    std::string texto;
    texto.reserve(trozo.size() * veces);
    for (std::size_t i = 0; i < veces; ++i)
        texto += trozo;
    return texto;
}

/// Ejecuta `tarea` en un hilo con la pila de 8 MiB de un proceso corriente.
void conPilaDeOchoMegas(void (*tarea)()) {
    pthread_attr_t atributos;
    ASSERT_EQ(pthread_attr_init(&atributos), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&atributos, std::size_t{8} << 20), 0);
    pthread_t hilo{};
    const auto llamar = [](void* dato) -> void* {
        (*static_cast<void (**)()>(dato))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&hilo, &atributos, llamar, &tarea), 0);
    ASSERT_EQ(pthread_join(hilo, nullptr), 0);
    pthread_attr_destroy(&atributos);
}

struct Caso {
    const char* nombre;
    std::string formula;
    const char* esperado;
};

std::vector<Caso> casosHondos() {
    return {
        {"paréntesis", repetir("(") + "A1" + repetir(")"), "5"},
        {"menos", repetir("-") + "A1", "5"},
        {"más", repetir("+") + "A1", "5"},
        {"porcentajes", "0" + repetir("%"), "0"},
        {"potencias", "1" + repetir("^A2"), "1"},
        {"sumas", "A1" + repetir("+1"), "200005"},
        {"sumas por la derecha", repetir("1+(") + "A1" + repetir(")"), "200005"},
        {"comparaciones", "1" + repetir("=A1"), "FALSO"},
        {"SUMA", repetir("SUMA(") + "A1" + repetir(")"), "5"},
        {"SUMA con más argumentos", repetir("SUMA(1;") + "A1" + repetir(";A1:A2)"), "1400005"},
        {"ABS con signos", repetir("ABS(-") + "A1" + repetir(")"), "5"},
        {"SI por la condición", repetir("SI(") + "A1" + repetir(";VERDADERO;2)"), "VERDADERO"},
        {"SI por la rama", repetir("SI(1;") + "A1" + repetir(";2)"), "5"},
        {"SI por la otra rama", repetir("SI(0;1/0;") + "A1" + repetir(")"), "5"},
        {"SI sin otra rama", repetir("SI(0;") + "A1" + repetir(")"), "FALSO"},
        {"SI con argumentos de más", repetir("SI(1;") + "A1" + repetir(";2;3)"), "#¡VALOR!"},
        {"SI.ERROR", repetir("SI.ERROR(") + "1/0" + repetir(";A1)"), "5"},
        {"SI.ERROR por la rama", repetir("SI.ERROR(1/0;") + "A1" + repetir(")"), "5"},
        {"desconocida", repetir("NADIE(") + "A1" + repetir(")"), "#¡NOMBRE?"},
        {"mezcla", repetir("(-SI(1;") + "A1" + repetir("))"), "5"},
        {"textos", "LARGO(\"a\"" + repetir("&\"b\"") + ")", "200001"},
        {"argumentos", "SUMA(1" + repetir(";1") + ")", "200001"},
    };
}

TEST(Profundidad, DoscientosMilNivelesNoGastanPila) {
    conPilaDeOchoMegas([] {
        nucleo::Libro libro;
        for (const int fila : {0, 1}) {
            nucleo::Celda& celda = libro.hojas[0]->celdaMut(fila, 0);
            celda.tipo = nucleo::TipoCelda::Numero;
            celda.numero = fila == 0 ? 5 : 1;
        }
        Evaluador evaluador(libro, 0);
        Codigo codigo;
        for (const Caso& caso : casosHondos()) {
            SCOPED_TRACE(caso.nombre);
            ASSERT_TRUE(compilar(caso.formula, &libro, 0, codigo));
            EXPECT_EQ(nucleo::textoVisible(ejecutar(codigo, evaluador), {}), caso.esperado);
            const std::unique_ptr<NodoExpr> arbol = Parser().parsear(caso.formula);
            ASSERT_NE(arbol, nullptr);
            EXPECT_EQ(nucleo::textoVisible(evaluador.evaluar(*arbol), {}), caso.esperado);
            EXPECT_EQ(ajustarReferencias(ajustarReferencias(caso.formula, 1, 1), -1, -1),
                      caso.formula);
        }
    });
}

TEST(Profundidad, UnaLlamadaSueltaTampocoGastaPila) {
    conPilaDeOchoMegas([] {
        const nucleo::Libro libro;
        Evaluador evaluador(libro, 0);
        const auto arbol = Parser().parsear("SUMA(1;" + repetir("SUMA(-") + "5" + repetir("))"));
        EXPECT_EQ(arbol, nullptr);
        const auto suma =
            Parser().parsear("SUMA(1;" + repetir("SUMA(-") + "5" + repetir(")") + ")");
        ASSERT_NE(suma, nullptr);
        EXPECT_EQ(llamarFuncion("SUMA", *suma, evaluador), nucleo::Valor::deNumero(6));
        EXPECT_EQ(llamarFuncion("SI", *suma, evaluador), nucleo::Valor::deNumero(5));
        EXPECT_EQ(evaluador.evaluarArg(*suma).valor, nucleo::Valor::deNumero(6));
    });
}

TEST(Profundidad, LasFormulasRotasSeRechazanSinGastarPila) {
    conPilaDeOchoMegas([] {
        const std::string casos[] = {
            repetir("("),
            repetir("(") + "1",
            "1" + repetir(")"),
            repetir("-"),
            repetir("SUMA("),
            repetir("SI(1;"),
            "1" + repetir("^"),
            repetir("%"),
            repetir("SUMA(1;") + repetir(")"),
            "1" + repetir("%") + "1",
            repetir("\"", kNiveles + 1),
            repetir("'"),
            repetir("'a'"),
            repetir("#"),
            repetir("A1:"),
            repetir("SI.ERROR(") + "1" + repetir(")") + ")",
        };
        std::vector<Token> tokens;
        for (const std::string& caso : casos) {
            SCOPED_TRACE(caso.substr(0, 20));
            tokenizar(caso, tokens);
            EXPECT_EQ(tokens.back().tipo, Token::Fin);
            EXPECT_EQ(Parser().parsear(caso), nullptr);
        }
    });
}

TEST(Profundidad, UnArbolQueSeSustituyeTampocoGastaPila) {
    conPilaDeOchoMegas([] {
        NodoExpr raiz(NodoExpr::Unario);
        for (std::size_t i = 0; i < kNiveles; ++i) {
            auto encima = std::make_unique<NodoExpr>(NodoExpr::Unario);
            encima->op = "u-";
            encima->hijos.push_back(std::make_unique<NodoExpr>(std::move(raiz)));
            raiz = std::move(*encima);
        }
        EXPECT_EQ(raiz.hijos.size(), 1U);
        raiz = NodoExpr(NodoExpr::Numero);
        EXPECT_TRUE(raiz.hijos.empty());
    });
}

} // namespace
} // namespace motor_formulas
