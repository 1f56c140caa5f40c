#pragma once

#include "formula/functions/catalogo.h"

#include <span>

namespace motor_formulas {

// Las tablas de cada familia. Una función nueva es una fila en la tabla de la suya.
std::span<const Funcion> funcionesMatematicas();
std::span<const Funcion> funcionesEstadisticas();
std::span<const Funcion> funcionesCondicionales();
std::span<const Funcion> funcionesLogicas();
std::span<const Funcion> funcionesBusqueda();
std::span<const Funcion> funcionesTexto();
std::span<const Funcion> funcionesFechas();
std::span<const Funcion> funcionesFinancieras();

} // namespace motor_formulas
