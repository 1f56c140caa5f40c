#include "tests/formula/prueba_motor.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using motor_formulas::Motor;
using motor_formulas::PruebaMotor;
using nucleo::FormatoNumero;
using nucleo::TipoCelda;
using nucleo::Valor;

TEST_F(PruebaMotor, ClasificaLoQueSeEscribe) {
    struct Caso {
        const char* texto;
        TipoCelda tipo;
        double numero;
        FormatoNumero formato;
    };
    const Caso casos[] = {
        {"=", TipoCelda::Texto, 0, FormatoNumero::General},
        {"=1", TipoCelda::Formula, 0, FormatoNumero::General},
        {"5", TipoCelda::Numero, 5, FormatoNumero::General},
        {"50%", TipoCelda::Numero, 0.5, FormatoNumero::Porcentaje},
        {"$ 3,5", TipoCelda::Numero, 3.5, FormatoNumero::Moneda},
        {"1/1/1900", TipoCelda::Numero, 2, FormatoNumero::Fecha},
        {"hola", TipoCelda::Texto, 0, FormatoNumero::General},
        {"VERDADERO", TipoCelda::Texto, 0, FormatoNumero::General},
        {" =1", TipoCelda::Texto, 0, FormatoNumero::General},
    };
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.texto);
        libro.reiniciar();
        escribir("B2", caso.texto);
        const nucleo::Celda* const c = celda("B2");
        ASSERT_NE(c, nullptr);
        EXPECT_EQ(c->tipo, caso.tipo);
        EXPECT_EQ(c->entrada, caso.texto);
        EXPECT_EQ(c->numero, caso.numero);
        EXPECT_EQ(c->formato.numero, caso.formato);
        EXPECT_TRUE(libro.modificado);
    }
}

TEST_F(PruebaMotor, ElLiteralSeReflejaEnElValor) {
    escribir("A1", "5");
    EXPECT_EQ(celda("A1")->valor, Valor::deNumero(5));
    escribir("A1", "hola");
    EXPECT_EQ(celda("A1")->valor, Valor::deTexto("hola"));
    EXPECT_EQ(celda("A1")->numero, 0);
}

TEST_F(PruebaMotor, UnFormatoElegidoNoLoCambiaLoQueSeEscribe) {
    libro.hojas[0]->celdaMut(0, 0).formato.numero = FormatoNumero::Porcentaje;
    escribir("A1", "$5");
    EXPECT_EQ(celda("A1")->formato.numero, FormatoNumero::Porcentaje);
    escribir("A1", "3/4/2024");
    EXPECT_EQ(celda("A1")->formato.numero, FormatoNumero::Porcentaje);
}

TEST_F(PruebaMotor, EscribirVacioQuitaLaCeldaOConservaSuFormato) {
    escribir("A1", "5");
    escribir("A1", "");
    EXPECT_EQ(celda("A1"), nullptr);
    escribir("A2", "7");
    libro.hojas[0]->celdaMut(1, 0).formato.decimales = 3;
    escribir("A2", "");
    ASSERT_NE(celda("A2"), nullptr);
    EXPECT_EQ(celda("A2")->tipo, TipoCelda::Vacia);
    EXPECT_EQ(celda("A2")->entrada, "");
    EXPECT_EQ(celda("A2")->numero, 0);
    EXPECT_EQ(celda("A2")->valor, Valor{});
    EXPECT_EQ(celda("A2")->formato.decimales, 3);
}

TEST_F(PruebaMotor, UnaHojaQueNoExisteNoHaceNada) {
    for (const int hoja : {-1, 1, 70000}) {
        motor.establecerCelda(hoja, 0, 0, "5");
        motor.limpiarCelda(hoja, 0, 0);
        motor.actualizarDependencias(hoja, 0, 0);
        motor.renombrarHoja(hoja, "Otra");
    }
    motor.limpiarCelda(0, 5, 5);
    EXPECT_FALSE(libro.modificado);
    EXPECT_TRUE(libro.hojas[0]->celdas.empty());
}

TEST_F(PruebaMotor, RecalculaEnOrdenDeDependencias) {
    escribir("A1", "1");
    escribir("C1", "=B1+A1");
    escribir("B1", "=A1*2");
    EXPECT_EQ(visible("C1"), "3");
    escribir("A1", "5");
    EXPECT_EQ(visible("B1"), "10");
    EXPECT_EQ(visible("C1"), "15");
    escribir("A1", "");
    EXPECT_EQ(visible("C1"), "0");
}

TEST_F(PruebaMotor, UnaFormulaQueNoSeEntiendeDaErrorYNoLeeNada) {
    escribir("A1", "=B1+");
    EXPECT_EQ(visible("A1"), "#¡VALOR!");
    EXPECT_EQ(libro.precedentes.count(clave("A1")), 0U);
    EXPECT_EQ(motor.evaluarFormula(0, "=1+"), Valor::deError(nucleo::ErrorCelda::ValorInvalido));
    EXPECT_EQ(motor.evaluarFormula(0, ""), Valor::deError(nucleo::ErrorCelda::ValorInvalido));
    EXPECT_EQ(motor.evaluarFormula(0, "=1+1"), Valor::deNumero(2));
    EXPECT_TRUE(motor.extraerPrecedentes(0, "=B1+").empty());
    EXPECT_TRUE(motor.extraerPrecedentes(0, "").empty());
}

TEST_F(PruebaMotor, LosPrecedentesVanOrdenadosYSinRepetir) {
    libro.agregarHoja();
    using Claves = std::vector<unsigned long long>;
    EXPECT_EQ(motor.extraerPrecedentes(0, "=B2+A1+SUMA(B2:A1)+'Hoja 2'!C1+Nada!A1"),
              (Claves{clave("A1"), clave("B1"), clave("A2"), clave("B2"), clave("C1", 1)}));
    EXPECT_EQ(motor.extraerPrecedentes(1, "=A1"), Claves{clave("A1", 1)});
    escribir("D4", "=B2+A1+SUMA(B2:A1)");
    EXPECT_EQ(libro.precedentes.at(clave("D4")),
              (std::vector<std::uint64_t>{clave("A1"), clave("B1"), clave("A2"), clave("B2")}));
    escribir("D4", "9");
    EXPECT_TRUE(libro.precedentes.empty());
    EXPECT_TRUE(libro.dependientes.empty());
}

TEST_F(PruebaMotor, ElLimiteDePrecedentesCuentaLoYaRecogido) {
    struct Caso {
        const char* formula;
        std::size_t precedentes;
    };
    const Caso casos[] = {
        {"=SUMA(A1:A50000;B1:B50000)", 100000},   {"=C1+SUMA(A1:A50000;B1:B50000)", 50001},
        {"=SUMA(A1:A50000;A1:A50000;C1)", 50001}, {"=SUMA(A1:A50000;A1:A50000;C1:C1)", 50000},
        {"=SUMA(A1:B50001;C1:C10)", 10},          {"=SUMA(A1:ZZ65536)", 0},
    };
    for (const Caso& caso : casos) {
        EXPECT_EQ(motor.extraerPrecedentes(0, caso.formula).size(), caso.precedentes)
            << caso.formula;
    }
}

TEST_F(PruebaMotor, UnLoteRecalculaUnaVezYDaLoMismo) {
    escribir("B1", "=SUMA(A1:A100)");
    escribir("C1", "=B1*2");
    {
        const Motor::Lote lote(motor);
        for (int fila = 0; fila < 100; ++fila)
            motor.establecerCelda(0, fila, 0, std::to_string(fila));
        {
            const Motor::Lote dentro(motor);
            motor.limpiarCelda(0, 99, 0);
        }
        escribir("D1", "=C1+1");
        EXPECT_EQ(visible("B1"), "0") << "nada se recalcula mientras viva un lote";
    }
    EXPECT_EQ(visible("B1"), "4851");
    EXPECT_EQ(visible("C1"), "9702");
    EXPECT_EQ(visible("D1"), "9703");
}

TEST_F(PruebaMotor, SumarSiEmparejaUnaColumnaConDosAunqueLasRecuerde) {
    constexpr int kAlto = 128;
    for (int fila = 0; fila < kAlto; ++fila) {
        motor.establecerCelda(0, fila, 0, std::to_string(fila % 3));
        motor.establecerCelda(0, fila / 2, 2 + fila % 2, std::to_string(fila));
    }
    double esperado = 0;
    for (int fila = 1; fila < kAlto; fila += 3)
        esperado += fila;
    const Motor::Lote lote(motor);
    for (int copia = 0; copia < 4; ++copia)
        motor.establecerCelda(0, copia, 5, "=SUMAR.SI(A1:A128;1;C1:D64)");
    motor.recalcularTodo();
    for (int copia = 0; copia < 4; ++copia)
        EXPECT_EQ(celda("F" + std::to_string(copia + 1))->valor, Valor::deNumero(esperado));
}

TEST_F(PruebaMotor, LasCadenasLargasNoGastanPila) {
    constexpr int kLargo = 60000;
    {
        const Motor::Lote lote(motor);
        for (int fila = 0; fila < kLargo; ++fila) {
            motor.establecerCelda(0, fila, 0, "=A" + std::to_string(fila + 2) + "+1");
            motor.establecerCelda(0, fila + 1, 1, "=B" + std::to_string(fila + 1) + "+1");
        }
    }
    EXPECT_EQ(visible("A1"), "60000");
    EXPECT_EQ(visible("B60001"), "60000");
    motor.establecerCelda(0, kLargo, 0, "1");
    motor.establecerCelda(0, 0, 1, "1");
    EXPECT_EQ(visible("A1"), "60001");
    EXPECT_EQ(visible("B60001"), "60001");
    motor.recalcularTodo();
    EXPECT_EQ(visible("A1"), "60001");
    motor.establecerCelda(0, kLargo, 0, "=A1");
    EXPECT_EQ(visible("A30000"), "#¡CIRCULAR!");
}

TEST_F(PruebaMotor, RenombrarUnaHojaReescribeSoloLoQueLaNombra) {
    libro.agregarHoja();
    escribir("A1", "7", 1);
    escribir("A1", "='Hoja 2'!A1&\"'Hoja 2'!A1\"");
    escribir("A2", "='hoja 2'!A1");
    motor.renombrarHoja(1, "Mis datos");
    EXPECT_EQ(celda("A1")->entrada, "='Mis datos'!A1&\"'Hoja 2'!A1\"");
    EXPECT_EQ(celda("A2")->entrada, "='hoja 2'!A1");
    EXPECT_EQ(visible("A1"), "7'Hoja 2'!A1");
    motor.renombrarHoja(1, "Hoja 1");
    EXPECT_EQ(libro.hojas[1]->nombre, "Mis datos") << "el nombre es de otra hoja";
    EXPECT_EQ(celda("A1")->entrada, "='Mis datos'!A1&\"'Hoja 2'!A1\"");
}

TEST_F(PruebaMotor, TrasUnCambioDeEstructuraSeReescribenTodasLasHojas) {
    libro.agregarHoja();
    escribir("A1", "=A5+'Hoja 1'!A3+'Hoja 2'!A5");
    escribir("A1", "='Hoja 1'!A5", 1);
    libro.modificado = false;
    motor.reescribirTrasEstructura("Hoja 1", true, 3, 2);
    EXPECT_EQ(celda("A1")->entrada, "=A7+'Hoja 1'!A3+'Hoja 2'!A5");
    EXPECT_EQ(celda("A1", 1)->entrada, "='Hoja 1'!A7");
    EXPECT_TRUE(libro.modificado);
    EXPECT_EQ(libro.precedentes.at(clave("A1", 1)), std::vector<std::uint64_t>{clave("A7")});
    motor.reescribirTrasEstructura("Hoja 1", true, 2, -2);
    EXPECT_EQ(celda("A1")->entrada, "=A5+#¡REF!+'Hoja 2'!A5");
}

TEST_F(PruebaMotor, AjustaReferencias) {
    EXPECT_EQ(motor.ajustarReferencias("=A1+$B$1+C$2", 1, 1), "=B2+$B$1+D$2");
    EXPECT_EQ(motor.ajustarReferencias("=A1", -1, 0), "=#¡REF!");
    EXPECT_EQ(motor.ajustarReferencias("=ZZ1", 0, 1), "=#¡REF!");
    EXPECT_EQ(motor.ajustarPorEstructura("A3", "H", "H", true, 2, -2), "#¡REF!");
    EXPECT_EQ(motor.ajustarPorEstructura("A5", "H", "H", true, 2, -2), "A3");
    EXPECT_EQ(motor.ajustarPorEstructura("A2", "H", "H", true, 2, -2), "A2");
}

TEST_F(PruebaMotor, LaCascadaPasaPorCeldasQueNoSonFormulas) {
    escribir("A1", "1");
    escribir("C1", "=A1");
    // El grafo puede nombrar como lectora una celda que no es fórmula; la cascada sigue por ella.
    libro.establecerPrecedentes(clave("B1"), {clave("A1")});
    libro.establecerPrecedentes(clave("C1"), {clave("B1")});
    libro.hojas[0]->celdaMut(0, 0).numero = 8;
    motor.recalcularCascada(clave("A1"));
    EXPECT_EQ(visible("C1"), "8");
}

TEST_F(PruebaMotor, NoEscribeLosResultadosQueNoCambian) {
    escribir("A1", "3");
    escribir("B1", "=A1*2");
    escribir("B2", "=A1/0");
    const nucleo::Hoja copia = *libro.hojas[0];
    motor.recalcularTodo();
    EXPECT_EQ(copia.celda(0, 1), celda("B1")) << "las copias siguen compartiendo el bloque";
    escribir("A1", "4");
    EXPECT_NE(copia.celda(0, 1), celda("B1"));
    EXPECT_EQ(copia.celda(0, 1)->valor, Valor::deNumero(6));
}

TEST_F(PruebaMotor, UnCeroNegativoNoEsElMismoResultado) {
    escribir("A1", "=0*B1");
    escribir("B1", "-1");
    EXPECT_TRUE(std::signbit(celda("A1")->valor.numero));
    escribir("B1", "1");
    EXPECT_FALSE(std::signbit(celda("A1")->valor.numero));
}

TEST_F(PruebaMotor, LasFormulasDeFueraDeLaCuadriculaTambienSeCalculan) {
    const auto poner = [&](int fila, int col, const char* texto) {
        nucleo::Celda& c = libro.hojas[0]->celdas[nucleo::claveLocal(fila, col)];
        c.tipo = TipoCelda::Formula;
        c.entrada = texto;
    };
    const auto valor = [&](int fila, int col) {
        return libro.hojas[0]->celdas.at(nucleo::claveLocal(fila, col)).valor;
    };
    escribir("A1", "2");
    poner(70000, 3, "=A1*2");
    poner(5, 900, "=SUMA(A1:A9)");
    poner(1 << 25, 0, "=A1*2"); // su clave en el grafo es la de A1
    poner(-1, 0, "=A1*2");
    motor.recalcularTodo();
    EXPECT_EQ(valor(70000, 3), Valor::deNumero(4));
    EXPECT_EQ(valor(5, 900), Valor::deNumero(2));
    escribir("A1", "5");
    EXPECT_EQ(valor(70000, 3), Valor::deNumero(10));
    EXPECT_EQ(valor(5, 900), Valor::deNumero(5));
    EXPECT_EQ(visible("A1"), "5");
}

TEST_F(PruebaMotor, UnaCeldaFormulaSinTextoNoRompeNada) {
    nucleo::Celda& c = libro.hojas[0]->celdaMut(0, 0);
    c.tipo = TipoCelda::Formula;
    motor.recalcularTodo();
    EXPECT_EQ(visible("A1"), "#¡VALOR!");
    motor.reescribirTrasEstructura("Hoja 1", true, 0, 1);
    EXPECT_EQ(celda("A1")->entrada, "");
}

} // namespace
