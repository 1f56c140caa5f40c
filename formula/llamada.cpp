#include "formula/codigo.h"
#include "formula/compilador.h"
#include "formula/functions/catalogo.h"
#include "formula/maquina.h"

#include <string>

namespace motor_formulas {

nucleo::Valor llamarFuncion(const std::string& nombre, const NodoExpr& nodo, Evaluador& evaluador) {
    Codigo codigo;
    aplanarLlamada(nombre, nodo, &evaluador.libro, evaluador.hoja, codigo);
    return ejecutar(codigo, evaluador);
}

} // namespace motor_formulas
