#pragma once

#include "formula/arg.h"
#include "formula/nodo_expr.h"
#include "model/libro.h"
#include "model/limites.h"
#include "model/valor.h"

#include <cstddef>
#include <string>

namespace motor_formulas {

class ContextoRecalculo;

/// Calcula el valor de una expresión leyendo del libro los valores guardados; no recalcula nada.
/// Todo fallo de una fórmula es un valor de error.
class Evaluador {
  public:
    const nucleo::Libro& libro;
    int hoja; ///< la de la fórmula: la de las referencias sin nombre de hoja
    /// Lo aprendido en el recálculo en curso (índices de búsqueda, totales parciales); nulo fuera
    /// de él.
    ContextoRecalculo* contexto = nullptr;
    /// Bytes del texto más largo que puede hacer una función: uno mayor da "#¡VALOR!".
    std::size_t textoMaximo = nucleo::kMaximoTexto;

    Evaluador(const nucleo::Libro& libroLeido, int hojaFormula)
        : libro(libroLeido), hoja(hojaFormula) {}

    nucleo::Valor evaluar(const NodoExpr& nodo);
    /// Un rango da un bloque con todos sus valores reunidos por filas; cualquier otra expresión, su
    /// valor.
    Arg evaluarArg(const NodoExpr& nodo);

    bool aNumero(const nucleo::Valor& valor, double& numero, nucleo::ErrorCelda& error) const;
    std::string aTexto(const nucleo::Valor& valor) const;
    bool aLogico(const nucleo::Valor& valor, bool& logico, nucleo::ErrorCelda& error) const;

    bool resolverHoja(const RefCelda& ref, int& indice) const;
    nucleo::Valor valorReferencia(const RefCelda& ref) const;
    nucleo::Valor operarBinario(const std::string& op, const nucleo::Valor& izquierdo,
                                const nucleo::Valor& derecho) const;
};

} // namespace motor_formulas
