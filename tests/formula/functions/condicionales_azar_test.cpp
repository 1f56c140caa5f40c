#include "formula/functions/criterio.h"
#include "tests/formula/functions/celdas_al_azar.h"

#include <gtest/gtest.h>

#include <string_view>

using motor_formulas::Criterio;
using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;
using pruebas::TablaAlAzar;
using pruebas::Zona;

namespace {

// Las funciones recorren solo las celdas que existen; aquí se hace la cuenta posición a posición.

struct Cuenta {
    double suma = 0;
    int sumados = 0;
    int cumplen = 0;
};

using Pares = std::vector<std::pair<Zona, Criterio>>;

Cuenta contarUnaAUna(const TablaAlAzar& tabla, const Zona& numeros, const Pares& pares) {
    Cuenta cuenta;
    for (int i = 0; i < numeros.celdas(); ++i) {
        bool cumple = true;
        for (const auto& [zona, criterio] : pares)
            cumple = cumple && criterio.cumple(zona.en(tabla, i));
        if (!cumple)
            continue;
        ++cuenta.cumplen;
        if (numeros.en(tabla, i).tipo == TipoValor::Numero) {
            cuenta.suma += numeros.en(tabla, i).numero;
            ++cuenta.sumados;
        }
    }
    return cuenta;
}

/// Un criterio al azar y cómo se escribe en la fórmula.
struct CriterioEscrito {
    std::string escrito;
    Criterio criterio;
};

CriterioEscrito criterioAlAzar(std::mt19937& azar) {
    constexpr std::string_view kOperadores[] = {"", "=", "<>", "<", "<=", ">", ">="};
    constexpr std::string_view kOperandos[] = {"",   "0",  "1",  "2,5", "-3,5", "5",   "a",
                                               "AB", "*",  "a*", "?",   "ñ*",   "ñu*", "??",
                                               "*b", "f*", "#*", "b",   "nan",  "inf"};
    switch (azar() % 8) {
    case 0:
        return {"VERDADERO", Criterio::desdeValor(Valor::deLogico(true))};
    case 1:
        return {"5", Criterio::desdeValor(Valor::deNumero(5))};
    default:
        const std::string texto = std::string(kOperadores[azar() % std::size(kOperadores)]) +
                                  std::string(kOperandos[azar() % std::size(kOperandos)]);
        return {pruebas::entreComillas(texto), Criterio::desdeValor(Valor::deTexto(texto))};
    }
}

void esperar(TablaAlAzar& tabla, const std::string& formula, const Valor& esperado) {
    const Valor valor = tabla.hoja().valor(formula);
    ASSERT_TRUE(pruebas::iguales(valor, esperado))
        << formula << " da " << tabla.hoja().texto(formula) << " y no "
        << (esperado.tipo == TipoValor::Numero ? std::to_string(esperado.numero) : "un error");
}

} // namespace

TEST(CondicionalesAlAzar, ComoLaCuentaPosicionAPosicion) {
    std::mt19937 azar(4242);
    for (int ronda = 0; ronda < 60; ++ronda) {
        TablaAlAzar tabla(9, 6, azar);
        for (int i = 0; i < 60; ++i) {
            const Zona zona = pruebas::zonaAlAzar(tabla, azar);
            const Zona numeros = pruebas::zonaIgualDeGrande(tabla, zona, azar);
            const Zona otra = pruebas::zonaIgualDeGrande(tabla, zona, azar);
            const CriterioEscrito uno = criterioAlAzar(azar);
            const CriterioEscrito dos = criterioAlAzar(azar);

            const std::string par = zona.texto() + ";" + uno.escrito;
            const Cuenta propia = contarUnaAUna(tabla, zona, {{zona, uno.criterio}});
            esperar(tabla, "=CONTAR.SI(" + par + ")", Valor::deNumero(propia.cumplen));
            esperar(tabla, "=SUMAR.SI(" + par + ")", Valor::deNumero(propia.suma));

            const Cuenta ajena = contarUnaAUna(tabla, numeros, {{zona, uno.criterio}});
            const std::string conNumeros = par + ";" + numeros.texto() + ")";
            esperar(tabla, "=SUMAR.SI(" + conNumeros, Valor::deNumero(ajena.suma));
            esperar(tabla, "=PROMEDIO.SI(" + conNumeros,
                    ajena.sumados == 0 ? Valor::deError(ErrorCelda::DivCero)
                                       : Valor::deNumero(ajena.suma / ajena.sumados));

            const Cuenta doble =
                contarUnaAUna(tabla, numeros, {{zona, uno.criterio}, {otra, dos.criterio}});
            esperar(tabla,
                    "=SUMAR.SI.CONJUNTO(" + numeros.texto() + ";" + par + ";" + otra.texto() + ";" +
                        dos.escrito + ")",
                    Valor::deNumero(doble.suma));
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(CondicionalesAlAzar, LosAgregadosComoLaCuentaPosicionAPosicion) {
    std::mt19937 azar(99);
    for (int ronda = 0; ronda < 200; ++ronda) {
        TablaAlAzar tabla(4, 4, azar);
        for (int i = 0; i < 20; ++i) {
            const Zona zona = pruebas::zonaAlAzar(tabla, azar);
            int numeros = 0;
            int ocupadas = 0;
            double suma = 0;
            ErrorCelda error = ErrorCelda::Ninguno;
            for (int p = 0; p < zona.celdas(); ++p) {
                const Valor& valor = zona.en(tabla, p);
                ocupadas += valor.tipo != TipoValor::Vacio ? 1 : 0;
                if (valor.tipo == TipoValor::Numero) {
                    ++numeros;
                    suma += valor.numero;
                }
                if (valor.tipo == TipoValor::Error && error == ErrorCelda::Ninguno)
                    error = valor.error;
            }
            const auto oError = [&](const Valor& valor) {
                return error == ErrorCelda::Ninguno ? valor : Valor::deError(error);
            };
            esperar(tabla, "=CONTAR(" + zona.texto() + ")", Valor::deNumero(numeros));
            esperar(tabla, "=CONTARA(" + zona.texto() + ")", Valor::deNumero(ocupadas));
            esperar(tabla, "=SUMA(" + zona.texto() + ")", oError(Valor::deNumero(suma)));
            esperar(tabla, "=PROMEDIO(" + zona.texto() + ")",
                    oError(numeros == 0 ? Valor::deError(ErrorCelda::DivCero)
                                        : Valor::deNumero(suma / numeros)));
            if (HasFatalFailure())
                return;
        }
    }
}
