#include "formula/contexto_recalculo.h"
#include "formula/evaluador.h"
#include "formula/functions/catalogo.h"
#include "model/libro.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using motor_formulas::Arg;
using motor_formulas::ContextoRecalculo;
using motor_formulas::Evaluador;
using nucleo::Valor;

constexpr int kFilas = 6000;
constexpr int kColumnas = 5;

enum Columna { Crece, Decrece, CreceConHuecos, CasiCrece, TextosQueCrecen };

std::string conCeros(int numero) {
    const std::string cifras = std::to_string(numero);
    return "Artículo " + std::string(6 - cifras.size(), '0') + cifras;
}

/// Columnas en orden, y otras que lo están salvo en algún sitio, con valores que se repiten.
Valor valorDe(int col, int fila, std::mt19937& azar) {
    const double numero = fila / 3;
    switch (col) {
    case Crece:
        return Valor::deNumero(numero);
    case Decrece:
        return Valor::deNumero(-numero);
    case CreceConHuecos:
        return azar() % 50 == 0 ? Valor{} : Valor::deNumero(numero);
    case CasiCrece:
        switch (azar() % 700) {
        case 0:
            return Valor::deNumero(numero + 900);
        case 1:
            return Valor::deNumero(std::numeric_limits<double>::quiet_NaN());
        case 2:
            return Valor::deTexto("entre medias");
        default:
            return Valor::deNumero(numero);
        }
    default:
        return Valor::deTexto(conCeros(fila / 3));
    }
}

Arg suelto(Valor valor) {
    Arg arg;
    arg.valor = std::move(valor);
    return arg;
}

Arg columna(const nucleo::Hoja& hoja, int col, int desde, int hasta) {
    Arg arg;
    arg.esRango = true;
    arg.filas = hasta - desde + 1;
    arg.columnas = 1;
    arg.hoja = &hoja;
    arg.rango = {desde, col, hasta, col};
    return arg;
}

TEST(BusquedaOrdenada, EnColumnasLargasDaLoMismoQueRecorrerlas) {
    std::mt19937 azar(77);
    nucleo::Libro libro;
    nucleo::Hoja& hoja = *libro.hojas[0];
    for (int col = 0; col < kColumnas; ++col) {
        for (int fila = 0; fila < kFilas; ++fila) {
            nucleo::Celda& celda = hoja.celdaMut(fila, col);
            celda.tipo = nucleo::TipoCelda::Formula;
            celda.valor = valorDe(col, fila, azar);
        }
    }
    ContextoRecalculo contexto;
    Evaluador con(libro, 0);
    con.contexto = &contexto;
    Evaluador sin(libro, 0);
    const motor_formulas::Funcion& coincidir = *motor_formulas::buscarFuncion("COINCIDIR");
    const auto entre = [&azar](int a, int b) {
        return std::uniform_int_distribution<int>(a, b)(azar);
    };
    for (int paso = 0; paso < 3000; ++paso) {
        const int col = entre(0, kColumnas - 1);
        // A veces desde arriba y entera, que es cuando se salta más.
        const int desde = entre(0, 2) == 0 ? 0 : entre(0, kFilas - 100);
        const int hasta = entre(0, 2) == 0 ? kFilas - 1 : entre(desde + 64, kFilas + 30);
        const int numero = entre(-2, kFilas / 3 + 2);
        const Valor buscado = col == TextosQueCrecen
                                  ? Valor::deTexto(conCeros(std::max(numero, 0)))
                                  : Valor::deNumero(col == Decrece ? -numero : numero);
        const int tipo = entre(-1, 1);
        std::vector<Arg> args{suelto(buscado), columna(hoja, col, desde, hasta),
                              suelto(Valor::deNumero(tipo))};
        std::vector<Arg> copia = args;
        const Valor esperado = motor_formulas::ejecutarFuncion(coincidir, copia, sin);
        const Valor obtenido = motor_formulas::ejecutarFuncion(coincidir, args, con);
        ASSERT_TRUE(nucleo::indistinguibles(esperado, obtenido))
            << "paso " << paso << ": columna " << col << ", de " << desde << " a " << hasta
            << ", tipo " << tipo << ", número " << numero << ": da " << obtenido.numero
            << " y debería dar " << esperado.numero;
        if (entre(0, 30) == 0) {
            const int fila = entre(0, kFilas - 1);
            const Valor nuevo =
                entre(0, 3) == 0 ? Valor::deNumero(entre(-5, 5) * 1000) : valorDe(col, fila, azar);
            if (hoja.celdas.ponerValor(fila, col, nuevo))
                contexto.cambiar(hoja, fila, col, nuevo);
        }
    }
}

} // namespace
