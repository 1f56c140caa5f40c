#pragma once

#include "formula/codigo.h"
#include "formula/nodo_expr.h"

#include <string_view>

namespace nucleo {
class Libro;
}

namespace motor_formulas {

/// Lee una fórmula (sin su "=") de una pasada y deja en `salida` su código. Falso si el texto no es
/// una fórmula; `salida` queda entonces a medias y solo sirve para la siguiente lectura.
///
/// Los nombres de hoja se buscan en `libro`; los que faltan, y todos si `libro` es nulo, quedan
/// como hoja desconocida. `hoja` es la de la fórmula. El anidamiento no gasta pila, y en el caso
/// común no se pide memoria. Un texto de 2 GiB o más no se lee.
bool compilar(std::string_view formula, const nucleo::Libro* libro, int hoja, Codigo& salida);

/// Convierte un árbol en el código que `compilar` daría para su fórmula. Los nombres de función se
/// comparan tal cual están. Un nodo mal formado vale "#¡VALOR!".
void aplanar(const NodoExpr& nodo, const nucleo::Libro* libro, int hoja, Codigo& salida);

/// Como `aplanar`, para una llamada a `nombre` con los hijos del nodo como argumentos.
void aplanarLlamada(std::string_view nombre, const NodoExpr& nodo, const nucleo::Libro* libro,
                    int hoja, Codigo& salida);

} // namespace motor_formulas
