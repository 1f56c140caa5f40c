#pragma once

#include "formula/operacion.h"
#include "formula/vista_valor.h"
#include "model/valor.h"

namespace motor_formulas {

// Operadores sobre valores prestados; `Evaluador` y la máquina los comparten.

inline VistaValor vistaNumero(double numero) {
    return {nucleo::TipoValor::Numero, {}, false, numero, {}};
}
inline VistaValor vistaLogico(bool logico) {
    return {nucleo::TipoValor::Logico, {}, logico, 0, {}};
}
inline VistaValor vistaError(nucleo::ErrorCelda error) {
    return {nucleo::TipoValor::Error, error, false, 0, {}};
}

/// "u-", "u+" o "%" sobre un valor cualquiera.
VistaValor operarUnaria(Operacion operacion, const VistaValor& valor);

/// Cualquier operación binaria menos la concatenación, cuyo resultado necesita dueño.
VistaValor operarSinTexto(Operacion operacion, const VistaValor& izquierdo,
                          const VistaValor& derecho);

/// Orden entre dos valores: negativo, cero o positivo. Números y vacíos, después textos, después
/// lógicos.
int comparar(const VistaValor& izquierdo, const VistaValor& derecho);

/// Orden entre dos números. Un NaN no es ni menor ni mayor que nada, así que resulta igual a todo.
constexpr int compararNumeros(double a, double b) {
    return a < b ? -1 : (a > b ? 1 : 0);
}

/// Si un orden satisface una comparación.
constexpr bool satisface(Operacion comparacion, int orden) {
    switch (comparacion) {
    case Operacion::Igual:
        return orden == 0;
    case Operacion::Distinto:
        return orden != 0;
    case Operacion::Menor:
        return orden < 0;
    case Operacion::Mayor:
        return orden > 0;
    case Operacion::MenorIgual:
        return orden <= 0;
    default:
        return orden >= 0;
    }
}

} // namespace motor_formulas
