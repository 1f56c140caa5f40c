#pragma once

#include "formula/motor.h"
#include "model/libro.h"

namespace fuzz {

/// Un libro pequeño con de todo: números, textos, fechas, lógicos, errores, fórmulas que se leen
/// unas a otras, un ciclo y una segunda hoja con espacio en el nombre.
void poblar(nucleo::Libro& libro, motor_formulas::Motor& motor);

} // namespace fuzz
