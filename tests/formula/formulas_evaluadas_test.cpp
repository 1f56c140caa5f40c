#include "tests/formula/prueba_evaluador.h"

#include <clocale>
#include <string>

namespace motor_formulas {
namespace {

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

} // namespace
} // namespace motor_formulas
