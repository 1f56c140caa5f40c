#pragma once

#include "formula/vista_valor.h"
#include "model/valor.h"

#include <string>

namespace motor_formulas {

/// Lee un valor como número: vacío es 0, un lógico 1 o 0, un texto su número o la serie de su
/// fecha. Falso, con "#¡VALOR!" o el error que el valor ya era, si no puede.
bool convertirEnNumero(const VistaValor& valor, double& numero, nucleo::ErrorCelda& error);

/// Lee un valor como lógico: vacío es falso, un número verdadero salvo el 0. Falso, con su error,
/// con cualquier texto y con un error.
bool convertirEnLogico(const VistaValor& valor, bool& logico, nucleo::ErrorCelda& error);

/// Texto con que se ve un valor sin formato.
std::string convertirEnTexto(const VistaValor& valor);

} // namespace motor_formulas
