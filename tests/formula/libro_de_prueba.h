#pragma once

#include "formula/compilador.h"
#include "formula/evaluador.h"
#include "formula/maquina.h"
#include "formula/motor.h"
#include "formula/parser.h"
#include "model/libro.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace motor_formulas {

/// Un libro en el que se escriben celdas por su dirección y se calculan fórmulas sueltas.
struct LibroDePrueba {
    nucleo::Libro libro;
    Motor motor{libro};

    void escribir(const std::string& direccion, const std::string& texto, int hoja = 0) {
        RefCelda ref;
        ASSERT_TRUE(palabraComoRef(direccion, ref)) << direccion;
        motor.establecerCelda(hoja, ref.fila, ref.col, texto);
    }

    /// Valor de una fórmula (sin su "=") por los dos caminos: su código y su árbol.
    nucleo::Valor calcular(const std::string& formula, int hoja = 0) {
        Evaluador evaluador(libro, hoja);
        const std::unique_ptr<NodoExpr> arbol = Parser().parsear(formula);
        Codigo codigo;
        const bool leida = compilar(formula, &libro, hoja, codigo);
        EXPECT_EQ(leida, arbol != nullptr) << formula;
        if (!leida || arbol == nullptr)
            return nucleo::Valor::deTexto("no es una fórmula");
        const nucleo::Valor valor = maquina.ejecutar(codigo, evaluador);
        const nucleo::Valor delArbol = evaluador.evaluar(*arbol);
        EXPECT_EQ(valor.tipo, delArbol.tipo) << formula;
        EXPECT_EQ(nucleo::textoVisible(valor, {}), nucleo::textoVisible(delArbol, {})) << formula;
        return valor;
    }

    /// Lo que se ve de una fórmula con su "=".
    std::string ver(std::string_view formula, int hoja = 0) {
        return nucleo::textoVisible(calcular(std::string(formula.substr(1)), hoja), {});
    }

  private:
    Maquina maquina; // la misma para todas: el orden en que se usa no debe notarse
};

} // namespace motor_formulas
