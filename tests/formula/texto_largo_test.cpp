// El texto que hacen las fórmulas está acotado: uno solo y todos los de un recálculo juntos.

#include "model/limites.h"
#include "tests/formula/libro_de_prueba.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace motor_formulas {
namespace {

using nucleo::ErrorCelda;
using nucleo::kMaximoTexto;
using nucleo::TipoValor;
using nucleo::Valor;

class TextoLargo : public ::testing::Test {
  protected:
    /// Pone en A1 un literal de ese largo; no pasa por el lector de números.
    void literal(std::size_t largo) {
        nucleo::Celda& celda = libro_.hojas[0]->celdaMut(0, 0);
        celda.tipo = nucleo::TipoCelda::Texto;
        celda.entrada.assign(largo, 'x');
        celda.valor = Valor::deTexto(celda.entrada);
    }
    const Valor& valor(int fila, int col) const {
        return static_cast<const nucleo::Hoja&>(*libro_.hojas[0]).celda(fila, col)->valor;
    }
    /// Bytes de texto que muestran las filas de una columna, y cuántas dan "#¡VALOR!".
    std::size_t bytes(int col, int filas, int* errores = nullptr) const {
        std::size_t suma = 0;
        for (int fila = 0; fila < filas; ++fila) {
            suma += valor(fila, col).tipo == TipoValor::Texto ? valor(fila, col).texto.size() : 0;
            if (errores != nullptr && valor(fila, col) == Valor::deError(ErrorCelda::ValorInvalido))
                ++*errores;
        }
        return suma;
    }

    nucleo::Libro libro_;
    Motor motor_{libro_};
};

TEST_F(TextoLargo, ElMasLargoQueSeAdmite) {
    struct {
        std::size_t literal;
        const char* formula;
        std::size_t resultado; ///< 0: "#¡VALOR!"
    } const casos[] = {
        {kMaximoTexto, "=A1", kMaximoTexto},
        {kMaximoTexto + 1, "=A1", 0},
        {kMaximoTexto - 1, "=A1&\"y\"", kMaximoTexto},
        {kMaximoTexto - 1, "=\"y\"&A1", kMaximoTexto},
        {kMaximoTexto - 1, "=A1&7", kMaximoTexto},
        {kMaximoTexto - 1, "=A1&77", 0},
        {kMaximoTexto, "=A1&\"y\"", 0},
        {kMaximoTexto, "=7&A1", 0},
        {kMaximoTexto, "=A1&\"\"", kMaximoTexto},
        {kMaximoTexto / 2, "=A1&A1", kMaximoTexto},
        {kMaximoTexto / 2, "=A1&(A1&\"\")", kMaximoTexto},
        {kMaximoTexto / 2, "=A1&(A1&\"y\")", 0},
        {kMaximoTexto / 2, "=CONCATENAR(A1;A1)", kMaximoTexto},
        {kMaximoTexto / 2, "=CONCATENAR(A1;A1;1)", 0},
        {kMaximoTexto / 2, "=CONCATENAR(A1:A1;A1:A1)", kMaximoTexto},
        {kMaximoTexto / 2 + 1, "=CONCATENAR(A1:A1;A1:A1)", 0},
        {kMaximoTexto, "=MAYUSC(A1)", kMaximoTexto},
        {kMaximoTexto, "=IZQUIERDA(A1&\"y\";3)", 0},
    };
    for (const auto& caso : casos) {
        literal(caso.literal);
        const Valor obtenido = motor_.evaluarFormula(0, caso.formula);
        const std::string que = std::to_string(caso.literal) + " " + caso.formula;
        EXPECT_EQ(obtenido.tipo, caso.resultado == 0 ? TipoValor::Error : TipoValor::Texto) << que;
        EXPECT_EQ(obtenido.texto.size(), caso.resultado) << que;
        if (caso.resultado == 0) {
            EXPECT_EQ(obtenido.error, ErrorCelda::ValorInvalido) << que;
        }
    }
}

TEST_F(TextoLargo, ElOperadorSueltoTieneLaMismaCota) {
    const Evaluador evaluador(libro_, 0);
    const Valor mitad = Valor::deTexto(std::string(kMaximoTexto / 2, 'x'));
    const Valor entero = evaluador.operarBinario("&", mitad, mitad);
    EXPECT_EQ(entero.texto.size(), kMaximoTexto);
    EXPECT_EQ(evaluador.operarBinario("&", entero, Valor::deNumero(1)),
              Valor::deError(ErrorCelda::ValorInvalido));
}

TEST_F(TextoLargo, DoblarloDeCeldaEnCeldaAcabaEnError) {
    {
        const Motor::Lote lote(motor_);
        motor_.establecerCelda(0, 0, 0, "x");
        for (int fila = 1; fila < 2000; ++fila) {
            const std::string anterior = "A" + std::to_string(fila);
            motor_.establecerCelda(0, fila, 0,
                                   fila % 2 == 0
                                       ? "=" + anterior + "&" + anterior
                                       : "=CONCATENAR(" + anterior + ";" + anterior + ")");
        }
    }
    EXPECT_EQ(valor(24, 0).texto.size(), kMaximoTexto);
    int errores = 0;
    EXPECT_EQ(bytes(0, 2000, &errores), 2 * kMaximoTexto - 1);
    EXPECT_EQ(errores, 2000 - 25);
}

TEST_F(TextoLargo, CopiarUnoEnormeMuchasVecesAcabaEnError) {
    constexpr int kCopias = 80;
    literal(kMaximoTexto / 4);
    for (const char* copia : {"=A$1", "=A$1&1", "=CONCATENAR(A$1)"}) {
        {
            const Motor::Lote lote(motor_);
            for (int fila = 0; fila < kCopias; ++fila)
                motor_.establecerCelda(0, fila, 1, copia);
        }
        int errores = 0;
        const std::size_t total = bytes(1, kCopias, &errores);
        EXPECT_GT(total, std::size_t{128} << 20) << copia << ": lo que cabe se ve";
        EXPECT_LE(total, std::size_t{256} << 20) << copia;
        EXPECT_GT(errores, 0) << copia;
        // La cota es de cada recálculo: lo que se escribe después se ve entero.
        motor_.establecerCelda(0, 0, 2, "=A1&1");
        EXPECT_EQ(valor(0, 2).texto.size(), kMaximoTexto / 4 + 1) << copia;
    }
}

TEST_F(TextoLargo, LosCortosNoCuentan) {
    {
        const Motor::Lote lote(motor_);
        literal(kMaximoTexto);
        for (int fila = 0; fila < 60; ++fila)
            motor_.establecerCelda(0, fila, 1, "=A$1");
        for (int fila = 0; fila < 60; ++fila)
            motor_.establecerCelda(0, fila, 2, "=\"corto \"&" + std::to_string(fila));
    }
    int errores = 0;
    bytes(1, 60, &errores);
    EXPECT_EQ(errores, 60 - 16);
    for (int fila = 0; fila < 60; ++fila)
        EXPECT_EQ(valor(fila, 2).texto, "corto " + std::to_string(fila));
}

/// Mil textos enormes a la vez en la pila de una sola fórmula.
TEST_F(TextoLargo, UnaSolaFormulaTampocoAgotaLaMemoria) {
    literal(kMaximoTexto);
    std::string argumentos = "A1";
    std::string anidada = "A1";
    for (int i = 0; i < 1000; ++i) {
        argumentos += ";A1";
        anidada = "(A1&\"\")=(" + anidada + ")";
    }
    for (const std::string& formula : {"=CONTARA(" + argumentos + ")", "=SUMA(" + argumentos + ")",
                                       "=CONCATENAR(" + argumentos + ")", "=" + anidada})
        EXPECT_EQ(motor_.evaluarFormula(0, formula), Valor::deError(ErrorCelda::ValorInvalido))
            << formula.substr(0, 40);
}

} // namespace
} // namespace motor_formulas
