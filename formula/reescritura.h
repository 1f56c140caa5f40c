#pragma once

#include "formula/tokenizador.h"

#include <functional>
#include <string>
#include <string_view>

namespace motor_formulas {

/// Sustituye cada referencia de una fórmula por lo que `f` devuelva y deja intacto cada otro byte;
/// si `f` devuelve vacío la referencia queda como estaba.
std::string reescribirRefs(const std::string& texto,
                           const std::function<std::string(const RefCelda&)>& f);

/// Desplaza las coordenadas relativas; la que sale de la cuadrícula se vuelve "#¡REF!".
std::string ajustarReferencias(std::string_view texto, int dFilas, int dColumnas);

/// Sigue a las celdas de `hojaEstructura` cuando se insertan (`cantidad` > 0) o se eliminan filas o
/// columnas desde `inicio`. Las referencias sin hoja son de `hojaFormula`.
std::string ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                                 std::string_view hojaEstructura, bool filas, int inicio,
                                 int cantidad);

/// Cambia el nombre de hoja de las referencias que nombran exactamente `viejo`. Con un nombre nuevo
/// que no se puede escribir en una fórmula (el que contiene una comilla simple) las deja como
/// están.
std::string renombrarEnFormula(std::string_view texto, std::string_view viejo,
                               std::string_view nuevo);

// Las mismas para quien reescribe muchas fórmulas: dejan el resultado en `salida`, cuya memoria se
// aprovecha, y devuelven falso cuando el texto no cambia.
bool ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                          std::string_view hojaEstructura, bool filas, int inicio, int cantidad,
                          std::string& salida);
bool renombrarEnFormula(std::string_view texto, std::string_view viejo, std::string_view nuevo,
                        std::string& salida);

} // namespace motor_formulas
