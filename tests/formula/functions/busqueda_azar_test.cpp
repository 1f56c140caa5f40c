#include "formula/functions/criterio.h"
#include "tests/formula/functions/celdas_al_azar.h"

#include <gtest/gtest.h>

#include <string_view>

using motor_formulas::cambiarCaso;
using motor_formulas::Criterio;
using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;
using pruebas::iguales;
using pruebas::TablaAlAzar;
using pruebas::Zona;

namespace {

using Lista = std::vector<Valor>;

/// Posición desde 0, o -1. `sentido` es 1 (ascendente), -1 (descendente) o 0 (exacta).
int buscarUnaAUna(const Lista& lista, const Valor& buscado, int sentido) {
    int candidata = -1;
    for (int i = 0; i < static_cast<int>(lista.size()); ++i) {
        const Valor& celda = lista[static_cast<std::size_t>(i)];
        if (sentido == 0) {
            if (Criterio::desdeValor(buscado).cumple(celda))
                return i;
            continue;
        }
        const bool comparables = celda.tipo == buscado.tipo && (celda.tipo == TipoValor::Numero ||
                                                                celda.tipo == TipoValor::Texto);
        if (!comparables)
            continue;
        bool mayor = celda.numero > buscado.numero;
        bool menor = celda.numero < buscado.numero;
        if (celda.tipo == TipoValor::Texto) {
            const int orden =
                cambiarCaso(celda.texto, false).compare(cambiarCaso(buscado.texto, false));
            mayor = orden > 0;
            menor = orden < 0;
        }
        if (sentido > 0 ? mayor : menor)
            break;
        candidata = i;
    }
    return candidata;
}

/// Lo buscado, tal como se escribe en la fórmula.
struct Buscado {
    std::string escrito;
    Valor valor;
};

Buscado buscadoAlAzar(std::mt19937& azar) {
    constexpr std::string_view kTextos[] = {"a",  "AB", "aba", "b",  "ñu",  "a*", "?b", ">1",
                                            "<>", "",   "5",   "<a", "ñu*", "=",  "*",  "<>a"};
    switch (azar() % 4) {
    case 0:
        return {"2", Valor::deNumero(2)};
    case 1:
        return {"-1", Valor::deNumero(-1)};
    case 2:
        return azar() % 2 == 0 ? Buscado{"VERDADERO", Valor::deLogico(true)}
                               : Buscado{"Z99", Valor{}}; // una celda vacía
    default:
        const std::string texto(kTextos[azar() % std::size(kTextos)]);
        return {pruebas::entreComillas(texto), Valor::deTexto(texto)};
    }
}

void esperar(TablaAlAzar& tabla, const std::string& formula, const Valor& esperado) {
    ASSERT_TRUE(iguales(tabla.hoja().valor(formula), esperado))
        << formula << " da " << tabla.hoja().texto(formula);
}

Lista primeraLinea(const TablaAlAzar& tabla, const Zona& zona, bool vertical) {
    Lista lista;
    for (int i = 0; i < (vertical ? zona.filas : zona.columnas); ++i)
        lista.push_back(vertical ? tabla.en(zona.fila + i, zona.col)
                                 : tabla.en(zona.fila, zona.col + i));
    return lista;
}

} // namespace

TEST(BusquedaAlAzar, BuscarVYBuscarHComoUnaAUna) {
    std::mt19937 azar(31337);
    int hallados = 0;
    for (int ronda = 0; ronda < 80; ++ronda) {
        TablaAlAzar tabla(8, 8, azar);
        for (int i = 0; i < 80; ++i) {
            const Zona zona = pruebas::zonaAlAzar(tabla, azar);
            const bool vertical = azar() % 2 == 0;
            const bool ordenada = azar() % 2 == 0;
            const Buscado buscado = buscadoAlAzar(azar);
            const int anchura = vertical ? zona.columnas : zona.filas;
            const int cual = static_cast<int>(azar() % static_cast<unsigned>(anchura));
            const int hallado =
                buscarUnaAUna(primeraLinea(tabla, zona, vertical), buscado.valor, ordenada ? 1 : 0);
            hallados += hallado >= 0 ? 1 : 0;
            Valor esperado = Valor::deError(ErrorCelda::ValorInvalido);
            if (hallado >= 0)
                esperado = vertical ? tabla.en(zona.fila + hallado, zona.col + cual)
                                    : tabla.en(zona.fila + cual, zona.col + hallado);
            esperar(tabla,
                    (vertical ? "=BUSCARV(" : "=BUSCARH(") + buscado.escrito + ";" + zona.texto() +
                        ";" + std::to_string(cual + 1) + (ordenada ? ")" : ";FALSO)"),
                    esperado);
            if (HasFatalFailure())
                return;
        }
    }
    EXPECT_GT(hallados, 1000);
}

TEST(BusquedaAlAzar, CoincidirEIndiceComoUnaAUna) {
    std::mt19937 azar(2718);
    for (int ronda = 0; ronda < 80; ++ronda) {
        TablaAlAzar tabla(8, 8, azar);
        for (int i = 0; i < 80; ++i) {
            Zona zona = pruebas::zonaAlAzar(tabla, azar);
            const bool vertical = azar() % 2 == 0;
            (vertical ? zona.columnas : zona.filas) = 1;
            const int sentido = static_cast<int>(azar() % 3) - 1;
            const Buscado buscado = buscadoAlAzar(azar);
            const int hallado =
                buscarUnaAUna(primeraLinea(tabla, zona, vertical), buscado.valor, sentido);
            esperar(tabla,
                    "=COINCIDIR(" + buscado.escrito + ";" + zona.texto() + ";" +
                        std::to_string(sentido) + ")",
                    hallado < 0 ? Valor::deError(ErrorCelda::ValorInvalido)
                                : Valor::deNumero(hallado + 1));
            const int posicion = static_cast<int>(azar() % static_cast<unsigned>(zona.celdas()));
            esperar(tabla, "=INDICE(" + zona.texto() + ";" + std::to_string(posicion + 1) + ")",
                    zona.en(tabla, posicion));
            if (HasFatalFailure())
                return;
        }
    }
}
