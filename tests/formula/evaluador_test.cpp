#include "formula/evaluador.h"
#include "formula/functions/catalogo.h"
#include "tests/formula/libro_de_prueba.h"

#include <gtest/gtest.h>

#include <clocale>
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

/// A1 vacía; en la columna B un número, un texto, un lógico, un error, una fecha y un texto vacío.
class PruebaEvaluador : public ::testing::Test {
  protected:
    LibroDePrueba prueba;

    PruebaEvaluador() {
        prueba.libro.agregarHoja();
        prueba.libro.renombrarHoja(1, "Hoja2");
        const std::pair<const char*, const char*> celdas[] = {
            {"B1", "4"},
            {"B2", "Texto"},
            {"B3", "=1=1"},
            {"B4", "=1/0"},
            {"B5", "1/1/1900"},
            {"B6", "=\"\""},
            {"B7", "nan"},
            {"B8", "inf"},
            {"B9", "=MAYUSC(\"un texto largo que no cabe en su sitio\")"}};
        for (const auto& [direccion, texto] : celdas)
            prueba.escribir(direccion, texto);
        prueba.escribir("A1", "100", 1);
    }

    Evaluador evaluador{prueba.libro, 0};
};

struct Caso {
    const char* formula;
    const char* esperado;
};

TEST_F(PruebaEvaluador, MuestraElValorDeCadaFormula) {
    const Caso casos[] = {
        // Precedencia y signos.
        {"=-2^2", "4"},
        {"=2^3^2", "512"},
        {"=2*3^2", "18"},
        {"=1+2&3", "33"},
        {"=1&2=12", "FALSO"},
        {"=1&2=\"12\"", "VERDADERO"},
        {"=1<2=VERDADERO", "VERDADERO"},
        {"=-\"2\"", "-2"},
        {"=+\"5\"", "5"},
        {"=+\"5\"=5", "VERDADERO"},
        {"=50%", "0,5"},
        {"=5%%", "0,0005"},
        {"=-5%", "-0,05"},
        {"=\"50%\"%", "0,005"},
        {"=-\"x\"", "#¡VALOR!"},
        {"=-#¡REF!", "#¡REF!"},
        {"=-VERDADERO", "-1"},
        {"=+A1", "0"},
        {"=-\"1/1/1900\"", "-2"},
        // Concatenación.
        {"=1&2", "12"},
        {"=1,5&\"x\"", "1,5x"},
        {"=A1&\"x\"", "x"},
        {"=\"x\"&A1&A1", "x"},
        {"=VERDADERO&FALSO", "VERDADEROFALSO"},
        {"=\"a\"&#¡REF!", "#¡REF!"},
        {"=1/0&#¡REF!", "#¡DIV/0!"},
        {"=B9&B9", "UN TEXTO LARGO QUE NO CABE EN SU SITIOUN TEXTO LARGO QUE NO CABE EN SU SITIO"},
        {"=\"a\"&(\"b\"&(\"c\"&\"d\"))&\"e\"", "abcde"},
        {"=(\"a\"&\"b\")&(\"c\"&\"d\")", "abcd"},
        {"=B7&\"\"", "#¡VALOR!"},
        {"=10^15&\"\"", "1e+15"},
        // Un texto calculado espera mientras otros se calculan y se gastan.
        {"=(\"a\"&\"b\")&(\"c\"&\"d\"=1)", "abFALSO"},
        {"=(\"a\"&\"b\")&(1=\"c\"&\"d\")", "abFALSO"},
        {"=(\"a\"&\"b\")&(\"c\"&\"d\"=\"C\"&\"D\")", "abVERDADERO"},
        {"=(\"a\"&\"b\")&-(\"1\"&\"2\")", "ab-12"},
        {"=(\"a\"&\"b\")&SI.ERROR(-(\"c\"&\"d\");\"x\")", "abx"},
        {"=(\"a\"&\"b\")&SI.ERROR(SI(\"c\"&\"d\";1;2);\"x\")", "abx"},
        {"=(\"a\"&\"b\")&SI.ERROR(NADIE(1;\"c\"&\"d\");\"x\")", "abx"},
        {"=(\"a\"&\"b\")&SI.ERROR((\"c\"&\"d\")&1/0;\"x\")", "abx"},
        {"=(\"a\"&\"b\")&SI.ERROR(1/0&(\"c\"&\"d\");\"x\")", "abx"},
        {"=(\"a\"&\"b\")&LARGO(\"c\"&\"d\")", "ab2"},
        // Comparaciones.
        {"=\"abc\"=\"ABC\"", "VERDADERO"},
        {"=\"a\"<\"b\"", "VERDADERO"},
        {"=\"A\"<\"b\"", "VERDADERO"},
        {"=\"ab\">\"a\"", "VERDADERO"},
        {"=\"\"<\"a\"", "VERDADERO"},
        {"=\"á\"=\"Á\"", "FALSO"},
        {"=\"z\"<\"á\"", "VERDADERO"},
        {"=\"_\"<\"A\"", "VERDADERO"},
        {"=\"10\"=10", "FALSO"},
        {"=\"10\">10", "VERDADERO"},
        {"=VERDADERO>1", "VERDADERO"},
        {"=VERDADERO>\"zzz\"", "VERDADERO"},
        {"=VERDADERO>FALSO", "VERDADERO"},
        {"=VERDADERO=1", "FALSO"},
        {"=FALSO=0", "FALSO"},
        {"=FALSO=A1", "FALSO"},
        {"=\"z\"<1", "FALSO"},
        {"=A1=0", "VERDADERO"},
        {"=A1=\"\"", "FALSO"},
        {"=A1<\"\"", "VERDADERO"},
        {"=A1=A2", "VERDADERO"},
        {"=A1>-1", "VERDADERO"},
        {"=A1<FALSO", "VERDADERO"},
        {"=1<>1", "FALSO"},
        {"=1<=1", "VERDADERO"},
        {"=1>=2", "FALSO"},
        {"=0=-0", "VERDADERO"},
        {"=#¡REF!=#¡REF!", "#¡REF!"},
        {"=1=1/0", "#¡DIV/0!"},
        // Un NaN no es menor ni mayor que ningún número.
        {"=B7=B7", "VERDADERO"},
        {"=B7=5", "VERDADERO"},
        {"=B7<>5", "FALSO"},
        {"=B7<5", "FALSO"},
        {"=B7>5", "FALSO"},
        {"=B7<=5", "VERDADERO"},
        {"=B7>=5", "VERDADERO"},
        {"=B7<\"a\"", "VERDADERO"},
        // Aritmética.
        {"=A1+1", "1"},
        {"=\"3\"+1", "4"},
        {"=\"1.234,5\"+0", "1234,5"},
        {"=\"abc\"+1", "#¡VALOR!"},
        {"=\"\"+1", "#¡VALOR!"},
        {"=\"1/1/1900\"+1", "3"},
        {"=B5+1", "3"},
        {"=VERDADERO+VERDADERO", "2"},
        {"=1/0", "#¡DIV/0!"},
        {"=0/0", "#¡DIV/0!"},
        {"=1/-0", "#¡DIV/0!"},
        {"=1/A1", "#¡DIV/0!"},
        {"=1/FALSO", "#¡DIV/0!"},
        {"=1/\"0\"", "#¡DIV/0!"},
        {"=\"x\"/0", "#¡VALOR!"},
        {"=1/\"x\"", "#¡VALOR!"},
        {"=#¡REF!+1/0", "#¡REF!"},
        {"=1/0+#¡REF!", "#¡DIV/0!"},
        {"=\"x\"+1/0", "#¡DIV/0!"},
        {"=(-8)^(1/3)", "#¡VALOR!"},
        {"=10^400", "#¡VALOR!"},
        {"=10^308*10", "#¡VALOR!"},
        {"=-10^308*10", "#¡VALOR!"},
        {"=0^0", "1"},
        {"=0^-1", "#¡VALOR!"},
        {"=B7+1", "#¡VALOR!"},
        {"=B8-B8", "#¡VALOR!"},
        {"=B8*0", "#¡VALOR!"},
        {"=1/B8", "0"},
        {"=B8/0", "#¡DIV/0!"},
        {"=-B8<0", "VERDADERO"},
        {"=0,1+0,2", "0,3"},
        // Referencias.
        {"=B1", "4"},
        {"=$B$1*2", "8"},
        {"=B2", "Texto"},
        {"=B3", "VERDADERO"},
        {"=B4", "#¡DIV/0!"},
        {"=A1", ""},
        {"=Hoja2!A1+1", "101"},
        {"='Hoja 1'!B1", "4"},
        {"=hoja2!A1", "#¡REF!"},
        {"=Hoja9!A1", "#¡REF!"},
        {"=A1:B2", "#¡VALOR!"},
        {"=A1:B2+1", "#¡VALOR!"},
        {"=-A1:A1", "#¡VALOR!"},
        {"=1/0+A1:B2", "#¡DIV/0!"},
        {"=Hoja9!A1:B2", "#¡VALOR!"},
        {"=Hoja9!A1:B2&\"x\"", "#¡VALOR!"},
        {"=xyz", "#¡NOMBRE?"},
        {"=xyz+1/0", "#¡NOMBRE?"},
        {"=verdadero", "VERDADERO"},
        {"=#NOMBRE", "#¡NOMBRE?"},
        {"=#¡CIRCULAR!", "#¡CIRCULAR!"},
        // Rangos como argumentos.
        {"=SUMA(B3:A1)", "4"},
        {"=SUMA(A1:B3)", "4"},
        {"=SUMA(B1:B1)", "4"},
        {"=SUMA(A1:B4)", "#¡DIV/0!"},
        {"=SUMA(Hoja2!A1:B2)", "100"},
        {"=SUMA(A1:Hoja2!B2)", "4"},
        {"=SUMA(Hoja9!A1:B2)", "#¡REF!"},
        {"=CONTARA(Hoja9!A1:B2)", "1"},
        {"=CONTARA(B1:B3;Hoja9!A1:B2;B2)", "5"},
        {"=SUMA(((B1:B2)))", "4"},
        {"=SUMA(+B1:B2)", "#¡VALOR!"},
        {"=SUMA(A1:B2&\"\")", "#¡VALOR!"},
        {"=SUMA(A1:ZZ3)", "4"},
        {"=CONTAR(A1:ZZ65536)", "4"},
        {"=ABS(A1:B2)", "#¡VALOR!"},
        {"=ABS(B1)", "4"},
        {"=NADIE(A1:B2)", "#¡NOMBRE?"},
        // Llamadas.
        {"=NADIE(1/0)", "#¡NOMBRE?"},
        {"=NADIE()", "#¡NOMBRE?"},
        {"=suma(1;2)", "3"},
        {"=SUMA(SUMA(1;2);SUMA(3;SUMA(4;5)))", "15"},
        {"=SUMA()", "0"},
        {"=SUMA(1;2;3;4;5;6;7;8;9;10)+SUMA(1;2;3;4;5;6;7;8;9)+SUMA(1;2;3;4;5;6;7)", "128"},
        {"=CONCATENAR(MAYUSC(\"a\"&\"b\");MINUSC(\"C\");\"d\"&1;MAYUSC(MINUSC(\"E\")))", "ABcd1E"},
        {"=MAYUSC(\"un texto de más de quince bytes\")&MAYUSC(\"otro\")",
         "UN TEXTO DE MÁS DE QUINCE BYTESOTRO"},
        {"=LARGO(NADIE(\"a\"&\"b\"))", "#¡NOMBRE?"},
        {"=LARGO(\"a\"&\"b\")&NADIE(\"a\"&\"b\";\"c\"&\"d\")", "#¡NOMBRE?"},
        // SI y SI.ERROR.
        {"=SI(1;\"sí\";\"no\")", "sí"},
        {"=SI(0;\"sí\";\"no\")", "no"},
        {"=SI(FALSO;1)", "FALSO"},
        {"=SI(VERDADERO;1)", "1"},
        {"=SI(A1;1;2)", "2"},
        {"=SI(B7;1;2)", "1"},
        {"=SI(\"VERDADERO\";1;2)", "#¡VALOR!"},
        {"=SI(\"a\"&\"b\";1;2)", "#¡VALOR!"},
        {"=SI(1/0;1;2)", "#¡DIV/0!"},
        {"=SI(1;2;1/0)", "2"},
        {"=SI(0;1/0;2)", "2"},
        {"=SI(1;A1;2)", ""},
        {"=SI(1;A1;2)=0", "VERDADERO"},
        {"=SI()", "#¡VALOR!"},
        {"=SI(1)", "#¡VALOR!"},
        {"=SI(1/0)", "#¡VALOR!"},
        {"=SI(1;2;3;4)", "#¡VALOR!"},
        {"=SI(1/0;2;3;4)", "#¡VALOR!"},
        {"=SI(\"a\"&\"b\";2;3;4)&\"x\"", "#¡VALOR!"},
        {"=SI(A1:B2;1;2)", "#¡VALOR!"},
        {"=SI(1;B1:B2;2)", "#¡VALOR!"},
        {"=SUMA(SI(1;B1:B2;2))", "#¡VALOR!"},
        {"=SUMA(SI(1;B1;2);SI(0;1;B1:B2))", "#¡VALOR!"},
        {"=SI(SI(0;1;0);SI(1;2;3);SI(0;4;SI(1;5;6)))", "5"},
        {"=1+SI(1;2;3)*2", "5"},
        {"=\"<\"&SI(0;\"a\"&1;\"b\"&2)&\">\"", "<b2>"},
        {"=SI.ERROR(1/0;\"mal\")", "mal"},
        {"=SI.ERROR(\"a\"&\"b\";1/0)", "ab"},
        {"=SI.ERROR(1;1/0)", "1"},
        {"=SI.ERROR(1/0;#¡REF!)", "#¡REF!"},
        {"=SI.ERROR(A1;1)", ""},
        {"=SI.ERROR(B1:B2;7)", "7"},
        {"=SI.ERROR(1/0;B1:B2)", "#¡VALOR!"},
        {"=SI.ERROR(NADIE();7)", "7"},
        {"=SI.ERROR()", "#¡VALOR!"},
        {"=SI.ERROR(1)", "#¡VALOR!"},
        {"=SI.ERROR(1;2;3)", "#¡VALOR!"},
        {"=SI.ERROR(SI.ERROR(1/0;1/0);SI.ERROR(1/0;3))", "3"},
        {"=SUMA(1;SI.ERROR(1/0;2);SI(0;1;3))", "6"},
    };
    for (const Caso& caso : casos)
        EXPECT_EQ(prueba.ver(caso.formula), caso.esperado) << caso.formula;
}

TEST_F(PruebaEvaluador, UnNumeroInmensoEscritoSeVeComoError) {
    EXPECT_EQ(prueba.ver("=" + std::string(400, '9')), "#¡VALOR!");
    EXPECT_EQ(prueba.ver("=1<" + std::string(400, '9')), "VERDADERO");
    EXPECT_EQ(prueba.ver("=0," + std::string(400, '0') + "1"), "0");
}

TEST_F(PruebaEvaluador, LosNumerosNoDependenDeLaConfiguracionRegional) {
    const std::string anterior = std::setlocale(LC_ALL, nullptr);
    for (const char* regional : {"C", "es_ES.UTF-8"}) {
        if (std::setlocale(LC_ALL, regional) == nullptr)
            continue;
        EXPECT_EQ(prueba.ver("=1,5+\"1,5\"&\"|\"&\"2.5\"*2"), "3|5") << regional;
        EXPECT_EQ(prueba.ver("=\"Ñ\"=\"ñ\""), "FALSO") << regional;
    }
    std::setlocale(LC_ALL, anterior.c_str());
}

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
    EXPECT_FALSE(evaluador.resolverHoja({"hoja2", 0, 0, false, false}, indice));
    EXPECT_EQ(evaluador.valorReferencia({"Hoja2", 0, 0, true, true}), Valor::deNumero(100));
    EXPECT_EQ(evaluador.valorReferencia({"nada", 0, 0, false, false}),
              Valor::deError(ErrorCelda::Ref));
    EXPECT_EQ(Evaluador(prueba.libro, -1).valorReferencia({}), Valor::deError(ErrorCelda::Ref));
}

} // namespace
} // namespace motor_formulas
