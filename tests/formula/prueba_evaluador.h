#pragma once

#include "formula/evaluador.h"
#include "tests/formula/libro_de_prueba.h"

#include <gtest/gtest.h>

#include <utility>

namespace motor_formulas {

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

} // namespace motor_formulas
