#include "formula/contexto_recalculo.h"
#include "formula/evaluador.h"
#include "formula/functions/catalogo.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/limites.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using motor_formulas::Arg;
using motor_formulas::ContextoRecalculo;
using motor_formulas::Evaluador;
using nucleo::ErrorCelda;
using nucleo::Valor;

constexpr int kFilas = 400;
constexpr int kColumnas = 4;

/// Una hoja de fórmulas cuyos resultados cambian, y las mismas funciones calculadas con lo
/// recordado y leyendo la hoja.
class ContextoAlAzar {
  public:
    ContextoAlAzar(unsigned semilla, int errores) : azar_(semilla), errores_(errores) {
        evaluador_.contexto = &contexto_;
        for (int col = 0; col < kColumnas; ++col) {
            for (int fila = 0; fila < kFilas; ++fila) {
                if (entre(0, 4) == 0)
                    continue;
                nucleo::Celda& celda = hoja().celdaMut(fila, col);
                celda.tipo = nucleo::TipoCelda::Formula;
                celda.valor = valor(col);
            }
        }
    }

    int entre(int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar_); }

    void cambiarUna() {
        const int fila = entre(0, kFilas - 1);
        const int col = entre(0, kColumnas - 1);
        const Valor nuevo = valor(col);
        if (hoja().celdas.ponerValor(fila, col, nuevo))
            contexto_.cambiar(hoja(), fila, col, nuevo);
    }

    void olvidar() { contexto_.olvidar(); }

    void preguntar() {
        struct Pregunta {
            const char* funcion;
            std::vector<Arg> args;
        };
        static const char* const kReducciones[] = {"SUMA", "PRODUCTO", "PROMEDIO", "MAX",
                                                   "MIN",  "CONTAR",   "CONTARA",  "MEDIANA",
                                                   "MODA", "DESVEST"};
        Pregunta pregunta;
        switch (entre(0, 9)) {
        case 0:
        case 1:
        case 2:
            pregunta = {kReducciones[entre(0, 9)], {bloque(entre(1, 3))}};
            if (entre(0, 3) == 0)
                pregunta.args.push_back(bloque(1));
            break;
        case 3:
            pregunta = {"CONTAR.SI", {bloque(1), suelto(criterio())}};
            break;
        case 4:
        case 5: {
            const Arg condicion = bloque(1);
            pregunta = {entre(0, 1) == 0 ? "SUMAR.SI" : "PROMEDIO.SI",
                        {condicion, suelto(criterio()), parejo(condicion)}};
            break;
        }
        case 6: {
            const Arg numeros = bloque(1);
            pregunta = {"SUMAR.SI.CONJUNTO",
                        {numeros, parejo(numeros), suelto(criterio()), parejo(numeros),
                         suelto(criterio())}};
            break;
        }
        case 7:
            pregunta = {"BUSCARV",
                        {suelto(buscado()), bloque(2), suelto(Valor::deNumero(2)),
                         suelto(Valor::deLogico(entre(0, 1) == 0))}};
            break;
        default:
            pregunta = {"COINCIDIR",
                        {suelto(buscado()), bloque(1), suelto(Valor::deNumero(entre(-1, 1)))}};
        }
        const motor_formulas::Funcion& funcion = *motor_formulas::buscarFuncion(pregunta.funcion);
        Evaluador sinContexto(libro_, 0);
        std::vector<Arg> copia = pregunta.args;
        const Valor esperado = motor_formulas::ejecutarFuncion(funcion, copia, sinContexto);
        copia = pregunta.args;
        const Valor obtenido = motor_formulas::ejecutarFuncion(funcion, copia, evaluador_);
        // El signo de lo que no es un número depende de cómo se compile la cuenta, y no se ve.
        const bool ningunoEsNumero = std::isnan(esperado.numero) && std::isnan(obtenido.numero);
        EXPECT_TRUE(nucleo::indistinguibles(esperado, obtenido) || ningunoEsNumero)
            << describir(pregunta.funcion, pregunta.args) << " da " << obtenido.numero
            << obtenido.texto << nucleo::textoError(obtenido.error) << " y debería dar "
            << esperado.numero << esperado.texto << nucleo::textoError(esperado.error);
    }

  private:
    nucleo::Hoja& hoja() { return *libro_.hojas[0]; }

    double numero(int col) {
        static const double kRaros[] = {0.0, -0.0, 1e300, std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN()};
        if (col == 1 && entre(0, 30) == 0)
            return kRaros[entre(0, 4)];
        return entre(0, 3) == 0 ? entre(-5, 5) : entre(-40, 40) * 0.1;
    }
    std::string palabra() {
        static const char* const kPalabras[] = {"pera", "Pera", "ÁRBOL",    "árbol",
                                                "uva",  "zumo", "",         "5",
                                                "b",    "B",    "#¡valor!", "verdadero"};
        return kPalabras[entre(0, 11)];
    }
    Valor valor(int col) {
        if (entre(0, 199) < errores_)
            return Valor::deError(ErrorCelda(entre(1, 5)));
        switch (entre(0, 9)) {
        case 0:
            return Valor::deLogico(entre(0, 1) == 0);
        case 1:
        case 2:
            return Valor::deTexto(palabra());
        case 3:
            return {};
        default:
            return col == 3 ? Valor::deTexto(palabra()) : Valor::deNumero(numero(col));
        }
    }
    Valor criterio() {
        static const char* const kOps[] = {"", "=", "<>", ">", ">=", "<", "<="};
        switch (entre(0, 5)) {
        case 0:
            return Valor::deNumero(numero(1));
        case 1:
            return Valor::deLogico(true);
        case 2:
            return Valor::deTexto(entre(0, 1) == 0 ? "*r*" : "?");
        case 3: {
            std::string texto = kOps[entre(0, 6)];
            return Valor::deTexto(texto.append(std::to_string(entre(-5, 5))));
        }
        default: {
            std::string texto = kOps[entre(0, 6)];
            return Valor::deTexto(texto.append(palabra()));
        }
        }
    }
    Valor buscado() {
        if (entre(0, 9) == 0)
            return Valor::deLogico(true);
        return entre(0, 1) == 0 ? Valor::deNumero(numero(1)) : Valor::deTexto(palabra());
    }

    static Arg suelto(Valor valor) {
        Arg arg;
        arg.valor = std::move(valor);
        return arg;
    }
    Arg prestado(int fila, int col, int filas, int columnas) {
        Arg arg;
        arg.esRango = true;
        arg.filas = filas;
        arg.columnas = columnas;
        arg.hoja = &hoja();
        arg.rango = {fila, col, fila + filas - 1, col + columnas - 1};
        return arg;
    }
    Arg bloque(int columnas) {
        static const int kInicios[] = {0, 0, 0, 1, 63, 64, 65, 100};
        const int desde = kInicios[entre(0, 7)];
        return prestado(desde, entre(0, kColumnas - columnas), entre(64, kFilas - desde + 30),
                        columnas);
    }
    /// Otro bloque de una columna con las mismas celdas, que puede empezar en otra fila.
    Arg parejo(const Arg& bloque) {
        return prestado(entre(0, 90), entre(0, kColumnas - 1), bloque.filas, 1);
    }
    static std::string describir(const std::string& funcion, const std::vector<Arg>& args) {
        std::string texto = funcion;
        for (const Arg& arg : args) {
            texto += ' ';
            texto += arg.esRango ? nucleo::nombreRef(arg.rango.fila1, arg.rango.col1) + ":" +
                                       nucleo::nombreRef(arg.rango.fila2, arg.rango.col2)
                                 : "[" + arg.valor.texto + "] " + std::to_string(arg.valor.numero);
        }
        return texto;
    }

    std::mt19937 azar_;
    int errores_; ///< de cada doscientos valores
    nucleo::Libro libro_;
    ContextoRecalculo contexto_;
    Evaluador evaluador_{libro_, 0};
};

TEST(Contexto, RespondeLoMismoQueLaHojaAunqueCambie) {
    struct Caso {
        unsigned semilla;
        int errores;
        int cambiosPorPregunta; ///< de cada diez
    };
    const Caso casos[] = {{1, 0, 0}, {2, 0, 3}, {3, 1, 3}, {4, 10, 1}, {5, 0, 9}};
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.semilla);
        ContextoAlAzar prueba(caso.semilla, caso.errores);
        for (int paso = 0; paso < 1500 && !::testing::Test::HasFailure(); ++paso) {
            SCOPED_TRACE(paso);
            for (int i = 0; i < caso.cambiosPorPregunta; ++i) {
                if (prueba.entre(0, 9) < caso.cambiosPorPregunta)
                    prueba.cambiarUna();
            }
            if (prueba.entre(0, 499) == 0)
                prueba.olvidar();
            prueba.preguntar();
        }
    }
}

TEST(Contexto, LoQueCambiaFueraDeLaCuadriculaNoImporta) {
    nucleo::Hoja hoja;
    for (int fila = 0; fila < 200; ++fila) {
        for (const int col : {0, nucleo::kUltimaColumna}) {
            nucleo::Celda& celda = hoja.celdaMut(fila, col);
            celda.tipo = nucleo::TipoCelda::Numero;
            celda.numero = 1;
        }
    }
    ContextoRecalculo contexto;
    for (const int col : {0, nucleo::kUltimaColumna}) {
        Arg bloque;
        bloque.esRango = true;
        bloque.filas = nucleo::kFilas;
        bloque.columnas = 1;
        bloque.hoja = &hoja;
        bloque.rango = {0, col, nucleo::kUltimaFila, col};
        const auto contar = [&] {
            return contexto.contar(bloque, ContextoRecalculo::Contadas::Numeros);
        };
        EXPECT_EQ(contar(), 200);
        contexto.cambiar(hoja, nucleo::kFilas, col, Valor::deNumero(1));
        contexto.cambiar(hoja, 0xffffff, col, Valor::deNumero(1));
        contexto.cambiar(hoja, 5, nucleo::kColumnas, Valor::deTexto("x"));
        contexto.cambiar(hoja, 5, 0xffff, Valor::deTexto("x"));
        EXPECT_EQ(contar(), 200);
        contexto.cambiar(hoja, 5, col, Valor::deTexto("x"));
        EXPECT_EQ(contar(), 199);
    }
}

TEST(Contexto, ElErrorQueSeCorrigeDejaDeContar) {
    constexpr int kAlto = 200;
    for (const int fila : {0, 1, 63, 64, 100, 127, 128, 198, 199}) {
        SCOPED_TRACE(fila);
        nucleo::Hoja hoja;
        ContextoRecalculo contexto;
        Arg bloque;
        bloque.esRango = true;
        bloque.filas = kAlto;
        bloque.columnas = 2;
        bloque.hoja = &hoja;
        bloque.rango = {0, 0, kAlto - 1, 1};
        const auto poner = [&](int f, int col, const Valor& valor) {
            nucleo::Celda& celda = hoja.celdaMut(f, col);
            celda.tipo = nucleo::TipoCelda::Formula;
            celda.valor = valor;
            contexto.cambiar(hoja, f, col, valor);
        };
        const auto sumar = [&](double suma, ErrorCelda esperado) {
            motor_formulas::Acumulado total;
            ErrorCelda error = ErrorCelda::Ninguno;
            const bool bien = contexto.plegar(motor_formulas::Pliegue::Suma, bloque, total, error);
            EXPECT_EQ(bien, esperado == ErrorCelda::Ninguno);
            if (bien) {
                EXPECT_EQ(total.valor, suma);
            } else {
                EXPECT_EQ(error, esperado);
            }
        };
        for (int f = 0; f < kAlto; ++f)
            poner(f, 1, Valor::deNumero(1));
        poner(fila, 0, Valor::deError(ErrorCelda::Ref));
        sumar(0, ErrorCelda::Ref);
        poner(fila, 0, Valor::deError(ErrorCelda::Nombre));
        sumar(0, ErrorCelda::Nombre);
        poner(fila, 0, Valor::deNumero(1000));
        sumar(1000 + kAlto, ErrorCelda::Ninguno);
        poner(fila, 0, Valor::deError(ErrorCelda::DivCero));
        sumar(0, ErrorCelda::DivCero);
        poner(fila, 1, Valor::deError(ErrorCelda::Ref)); // otro a su derecha no cuenta
        sumar(0, ErrorCelda::DivCero);
        poner(fila, 0, {});
        sumar(0, ErrorCelda::Ref);
        poner(fila, 1, Valor::deNumero(0));
        sumar(kAlto - 1, ErrorCelda::Ninguno);
    }
}

TEST(Contexto, LoSumadoDeMediaPaginaNoVuelveComoSiFueraEntera) {
    for (const int primeras : {1, 30, 62, 63, 64, 65, 127, 128, 129}) {
        SCOPED_TRACE(primeras);
        nucleo::Hoja hoja;
        ContextoRecalculo contexto;
        const auto poner = [&](int fila, const Valor& valor) {
            nucleo::Celda& celda = hoja.celdaMut(fila, 0);
            celda.tipo = nucleo::TipoCelda::Formula;
            celda.valor = valor;
            contexto.cambiar(hoja, fila, 0, valor);
        };
        /// La suma de las primeras filas, o -1 si da el error esperado.
        const auto suma = [&](int filas) {
            Arg bloque;
            bloque.esRango = true;
            bloque.filas = filas;
            bloque.columnas = 1;
            bloque.hoja = &hoja;
            bloque.rango = {0, 0, filas - 1, 0};
            motor_formulas::Acumulado total;
            ErrorCelda error = ErrorCelda::Ninguno;
            if (contexto.plegar(motor_formulas::Pliegue::Suma, bloque, total, error))
                return total.valor;
            EXPECT_EQ(error, ErrorCelda::Ref);
            return -1.0;
        };
        for (int fila = 0; fila < 200; ++fila)
            poner(fila, Valor::deNumero(1));
        EXPECT_EQ(suma(primeras), primeras);
        EXPECT_EQ(suma(150), 150);
        poner(140, Valor::deNumero(1001));
        EXPECT_EQ(suma(150), 1150);
        EXPECT_EQ(suma(90), 90);
        EXPECT_EQ(suma(200), 1200);
        poner(180, Valor::deError(ErrorCelda::Ref));
        EXPECT_EQ(suma(200), -1);
        EXPECT_EQ(suma(181), -1);
        EXPECT_EQ(suma(180), 1180);
        EXPECT_EQ(suma(90), 90);
    }
}

TEST(Contexto, ElTextoDeUnNumeroFinitoSeLeeComoNumero) {
    // Por eso el índice de textos no los guarda.
    std::mt19937_64 azar(11);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = azar();
        double numero = 0;
        if (i % 2 == 0)
            numero = std::bit_cast<double>(bits);
        else
            numero = static_cast<double>(static_cast<std::int64_t>(bits)) / 1e7;
        if (!std::isfinite(numero))
            continue;
        const std::string texto = nucleo::textoVisible(Valor::deNumero(numero), {});
        const auto criterio = motor_formulas::Criterio::desdeValor(Valor::deTexto(texto));
        ASSERT_TRUE(criterio.esNumero) << texto;
    }
}

} // namespace
