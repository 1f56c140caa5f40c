#include "formula/functions/catalogo.h"
#include "tests/formula/prueba_evaluador.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace motor_formulas {
namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

TEST_F(PruebaEvaluador, UnaReferenciaSinHojaEsDeLaHojaDeLaFormula) {
    EXPECT_EQ(prueba.ver("=A1", 1), "100");
    EXPECT_EQ(prueba.ver("=SUMA(A1:A2)", 1), "100");
    EXPECT_EQ(prueba.ver("='Hoja 1'!B1", 1), "4");
    Evaluador fuera(prueba.libro, 7);
    Codigo codigo;
    ASSERT_TRUE(compilar("SI.ERROR(A1;1)+SUMA(SI.ERROR(SUMA(A1:B2);2))", &prueba.libro, 7, codigo));
    EXPECT_EQ(ejecutar(codigo, fuera), Valor::deNumero(3));
}

TEST_F(PruebaEvaluador, ReuneElArgumentoQueEsUnRango) {
    const auto nodo = Parser().parsear("B4:A1");
    const Arg arg = evaluador.evaluarArg(*nodo);
    ASSERT_TRUE(arg.esRango);
    EXPECT_FALSE(arg.prestado());
    EXPECT_EQ(arg.filas, 4);
    EXPECT_EQ(arg.columnas, 2);
    ASSERT_EQ(arg.valores.size(), 8U);
    EXPECT_EQ(arg.valores[0], Valor());
    EXPECT_EQ(arg.valores[1], Valor::deNumero(4));
    EXPECT_EQ(arg.valores[3].texto, "Texto");
    EXPECT_EQ(arg.valores[5], Valor::deLogico(true));
    EXPECT_EQ(arg.valores[7], Valor::deError(ErrorCelda::DivCero));

    const Arg celda = evaluador.evaluarArg(*Parser().parsear("B1"));
    EXPECT_FALSE(celda.esRango);
    EXPECT_EQ(celda.valor, Valor::deNumero(4));
    const Arg desconocida = evaluador.evaluarArg(*Parser().parsear("Hoja9!A1:B2"));
    EXPECT_FALSE(desconocida.esRango);
    EXPECT_EQ(desconocida.valor, Valor::deError(ErrorCelda::Ref));
    EXPECT_EQ(evaluador.evaluarArg(*Parser().parsear("A1:Hoja9!B1")).celdas(), 2);
}

TEST_F(PruebaEvaluador, ConvierteComoDiceCadaClase) {
    const Valor vacio;
    const struct {
        Valor valor;
        bool esNumero;
        double numero;
        bool esLogico;
        bool logico;
        ErrorCelda error;
        const char* texto;
    } casos[] = {
        {vacio, true, 0, true, false, {}, ""},
        {Valor::deNumero(2.5), true, 2.5, true, true, {}, "2,5"},
        {Valor::deNumero(0), true, 0, true, false, {}, "0"},
        {Valor::deTexto("1,5"), true, 1.5, false, false, ErrorCelda::ValorInvalido, "1,5"},
        {Valor::deTexto("50%"), true, 0.5, false, false, ErrorCelda::ValorInvalido, "50%"},
        {Valor::deTexto("1/1/1900"), true, 2, false, false, ErrorCelda::ValorInvalido, "1/1/1900"},
        {Valor::deTexto("VERDADERO"), false, 0, false, false, ErrorCelda::ValorInvalido,
         "VERDADERO"},
        {Valor::deTexto(""), false, 0, false, false, ErrorCelda::ValorInvalido, ""},
        {Valor::deLogico(true), true, 1, true, true, {}, "VERDADERO"},
        {Valor::deLogico(false), true, 0, true, false, {}, "FALSO"},
        {Valor::deError(ErrorCelda::Ref), false, 0, false, false, ErrorCelda::Ref, "#¡REF!"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.texto);
        double numero = 0;
        bool logico = false;
        ErrorCelda error = ErrorCelda::Ninguno;
        ASSERT_EQ(evaluador.aNumero(caso.valor, numero, error), caso.esNumero);
        if (caso.esNumero) {
            EXPECT_EQ(numero, caso.numero);
        } else {
            EXPECT_EQ(error, caso.error);
        }
        ASSERT_EQ(evaluador.aLogico(caso.valor, logico, error), caso.esLogico);
        if (caso.esLogico) {
            EXPECT_EQ(logico, caso.logico);
        } else {
            EXPECT_EQ(error, caso.error);
        }
        EXPECT_EQ(evaluador.aTexto(caso.valor), caso.texto);
    }
    bool logico = false;
    ErrorCelda error = ErrorCelda::Ninguno;
    const Valor noNumero = Valor::deNumero(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(evaluador.aLogico(noNumero, logico, error));
    EXPECT_TRUE(logico);
}

TEST_F(PruebaEvaluador, OperaDosValores) {
    const Valor sucio = [] {
        Valor valor = Valor::deNumero(2);
        valor.texto = "resto";
        valor.error = ErrorCelda::Ref;
        return valor;
    }();
    EXPECT_EQ(evaluador.operarBinario("+", sucio, Valor::deTexto("3")), Valor::deNumero(5));
    EXPECT_EQ(evaluador.operarBinario("&", sucio, Valor::deTexto("3")), Valor::deTexto("23"));
    EXPECT_EQ(evaluador.operarBinario("<>", sucio, Valor()), Valor::deLogico(true));
    EXPECT_EQ(evaluador.operarBinario("^", sucio, Valor::deNumero(10)), Valor::deNumero(1024));
    const Valor invalido = Valor::deError(ErrorCelda::ValorInvalido);
    for (const char* op : {"", "u-", "%", "==", "!", "mod"})
        EXPECT_EQ(evaluador.operarBinario(op, sucio, sucio), invalido) << op;
    EXPECT_EQ(evaluador.operarBinario("mod", sucio, Valor::deError(ErrorCelda::Ref)),
              Valor::deError(ErrorCelda::Ref));
    EXPECT_EQ(evaluador.operarBinario("&", Valor::deError(ErrorCelda::Nombre), sucio),
              Valor::deError(ErrorCelda::Nombre));
}

TEST_F(PruebaEvaluador, UnaHojaQueNoExisteEsUnaReferenciaRota) {
    const Valor rota = Valor::deError(ErrorCelda::Ref);
    for (const int hoja : {-1, -100, 2, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(hoja);
        Evaluador lejos(prueba.libro, hoja);
        RefCelda celda;
        EXPECT_EQ(lejos.valorReferencia(celda), rota);
        celda.hoja = "Hoja2";
        EXPECT_EQ(lejos.valorReferencia(celda), Valor::deNumero(100));
        celda.hoja = "Hoja3";
        EXPECT_EQ(lejos.valorReferencia(celda), rota);
        for (const char* formula : {"A1", "SUMA(A1:B2)", "MAX(A1)", "-A1", "1+A1", "A1&1"})
            EXPECT_EQ(lejos.evaluar(*Parser().parsear(formula)), rota) << formula;
        EXPECT_EQ(lejos.evaluar(*Parser().parsear("SUMA(Hoja2!A1:B2)")), Valor::deNumero(100));
        const Arg bloque = lejos.evaluarArg(*Parser().parsear("A1:B3"));
        EXPECT_TRUE(bloque.esRango);
        EXPECT_EQ(bloque.filas, 3);
        EXPECT_EQ(bloque.columnas, 2);
        EXPECT_EQ(bloque.valores, std::vector<Valor>(6, rota));
    }
}

TEST_F(PruebaEvaluador, UnValorDeClaseDesconocidaNoSeConvierte) {
    Valor raro = Valor::deNumero(1);
    raro.tipo = static_cast<TipoValor>(77);
    double numero = 0;
    bool logico = false;
    ErrorCelda error = ErrorCelda::Ninguno;
    EXPECT_FALSE(evaluador.aNumero(raro, numero, error));
    EXPECT_EQ(error, ErrorCelda::ValorInvalido);
    error = ErrorCelda::Ninguno;
    EXPECT_FALSE(evaluador.aLogico(raro, logico, error));
    EXPECT_EQ(error, ErrorCelda::ValorInvalido);
}

TEST_F(PruebaEvaluador, UnBloqueReunidoYUnoPrestadoDanLasMismasCeldas) {
    const Arg reunido = evaluador.evaluarArg(*Parser().parsear("B5:A2"));
    ASSERT_FALSE(reunido.prestado());
    Arg prestado;
    prestado.esRango = true;
    prestado.filas = 4;
    prestado.columnas = 2;
    prestado.hoja = prueba.libro.hojas[0].get();
    prestado.rango = {1, 0, 4, 1};
    ASSERT_EQ(reunido.celdas(), prestado.celdas());
    for (std::int64_t i = 0; i < reunido.celdas(); ++i)
        EXPECT_EQ(aValor(celdaDeArg(reunido, i)), aValor(celdaDeArg(prestado, i))) << i;
    EXPECT_EQ(aValor(celdaDeArg(prestado, 3)), Valor::deLogico(true)) << "B3";
}

TEST_F(PruebaEvaluador, LlamaALasFuncionesPorSuNombreExacto) {
    const auto nodo = Parser().parsear("cualquiera(0;1/0;7)");
    EXPECT_EQ(llamarFuncion("SI", *nodo, evaluador), Valor::deNumero(7));
    EXPECT_EQ(llamarFuncion("SI.ERROR", *nodo, evaluador),
              Valor::deError(ErrorCelda::ValorInvalido));
    EXPECT_EQ(llamarFuncion("SUMA", *nodo, evaluador), Valor::deError(ErrorCelda::DivCero));
    EXPECT_EQ(llamarFuncion("CONTAR", *nodo, evaluador), Valor::deNumero(2));
    for (const char* nombre : {"", "si", "suma", "SUMA ", "Suma"})
        EXPECT_EQ(llamarFuncion(nombre, *nodo, evaluador), Valor::deError(ErrorCelda::Nombre))
            << nombre;
}

TEST_F(PruebaEvaluador, UnArbolMalHechoEsUnErrorYNoUnFallo) {
    const Valor invalido = Valor::deError(ErrorCelda::ValorInvalido);
    NodoExpr unario(NodoExpr::Unario);
    unario.op = "u-";
    EXPECT_EQ(evaluador.evaluar(unario), invalido);
    unario.hijos.push_back(std::make_unique<NodoExpr>());
    unario.op = "!";
    EXPECT_EQ(evaluador.evaluar(unario), invalido);

    NodoExpr binario(NodoExpr::Binario);
    binario.op = "+";
    binario.hijos.push_back(std::make_unique<NodoExpr>());
    EXPECT_EQ(evaluador.evaluar(binario), invalido);
    binario.hijos.push_back(nullptr);
    EXPECT_EQ(evaluador.evaluar(binario), invalido);
    binario.hijos[1] = std::make_unique<NodoExpr>(NodoExpr::Error);
    binario.hijos[1]->error = ErrorCelda::Nombre;
    EXPECT_EQ(evaluador.evaluar(binario), Valor::deError(ErrorCelda::Nombre));
    binario.op = "mod";
    EXPECT_EQ(evaluador.evaluar(binario), Valor::deError(ErrorCelda::Nombre));
    binario.hijos[1]->error = ErrorCelda::Ninguno;
    binario.hijos[1]->tipo = NodoExpr::Texto;
    EXPECT_EQ(evaluador.evaluar(binario), invalido);

    EXPECT_EQ(evaluador.evaluar(NodoExpr(static_cast<NodoExpr::Tipo>(99))), invalido);

    NodoExpr rango(NodoExpr::Rango);
    rango.ref.fila = std::numeric_limits<int>::min();
    rango.ref2.fila = 2;
    rango.ref2.col = 1;
    EXPECT_EQ(evaluador.evaluar(rango), invalido);
    EXPECT_EQ(evaluador.evaluarArg(rango).celdas(), 6);
    NodoExpr suma(NodoExpr::Funcion);
    suma.texto = "SUMA";
    suma.hijos.push_back(std::make_unique<NodoExpr>(NodoExpr::Rango));
    suma.hijos[0]->ref = {"", -7, -7, false, false};
    suma.hijos[0]->ref2 = {"", std::numeric_limits<int>::max(), std::numeric_limits<int>::max(),
                           false, false};
    EXPECT_EQ(evaluador.evaluar(suma), Valor::deError(ErrorCelda::DivCero));
    NodoExpr celda(NodoExpr::Referencia);
    celda.ref.fila = -1;
    EXPECT_EQ(evaluador.evaluar(celda), Valor());
    EXPECT_EQ(evaluador.valorReferencia(celda.ref), Valor());
}

TEST_F(PruebaEvaluador, ResuelveHojasYCeldas) {
    int indice = -5;
    EXPECT_TRUE(evaluador.resolverHoja({"", 0, 0, false, false}, indice));
    EXPECT_EQ(indice, 0);
    EXPECT_TRUE(evaluador.resolverHoja({"Hoja2", 0, 0, false, false}, indice));
    EXPECT_EQ(indice, 1);
    EXPECT_TRUE(Evaluador(prueba.libro, 1).resolverHoja({"Hoja 1", 0, 0, false, false}, indice));
    EXPECT_EQ(indice, 0);
    EXPECT_FALSE(evaluador.resolverHoja({"hoja2", 0, 0, false, false}, indice));
    EXPECT_EQ(evaluador.valorReferencia({"Hoja2", 0, 0, true, true}), Valor::deNumero(100));
    EXPECT_EQ(evaluador.valorReferencia({"nada", 0, 0, false, false}),
              Valor::deError(ErrorCelda::Ref));
    EXPECT_EQ(Evaluador(prueba.libro, -1).valorReferencia({}), Valor::deError(ErrorCelda::Ref));
}

} // namespace
} // namespace motor_formulas
