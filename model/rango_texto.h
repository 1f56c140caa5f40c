#pragma once

#include "model/rango.h"

#include <optional>
#include <string>
#include <string_view>

namespace nucleo {

/// Lee "B3" o "A1:D20" (también en minúsculas y con las esquinas en cualquier orden) y lo da
/// normalizado. Nada si no es un rango de la cuadrícula.
std::optional<RangoCeldas> leerRango(std::string_view texto);

/// "B3" o "A1:D20", de un rango normalizado.
std::string textoRango(const RangoCeldas& rango);

} // namespace nucleo
