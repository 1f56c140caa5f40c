#include "formula/evaluador.h"

#include "formula/codigo.h"
#include "formula/coercion.h"
#include "formula/compilador.h"
#include "formula/maquina.h"
#include "formula/operaciones.h"
#include "model/limites.h"

#include <algorithm>
#include <cstdint>

namespace motor_formulas {

using nucleo::ErrorCelda;
using nucleo::Valor;

namespace {

Valor unirTextos(const std::string& primero, const std::string& segundo, std::size_t maximo) {
    return primero.size() + segundo.size() <= maximo ? Valor::deTexto(primero + segundo)
                                                     : Valor::deError(ErrorCelda::ValorInvalido);
}

} // namespace

Valor Evaluador::evaluar(const NodoExpr& nodo) {
    Codigo codigo;
    aplanar(nodo, &libro, hoja, codigo);
    return ejecutar(codigo, *this);
}

Arg Evaluador::evaluarArg(const NodoExpr& nodo) {
    Arg arg;
    if (nodo.tipo != NodoExpr::Rango) {
        arg.valor = evaluar(nodo);
        return arg;
    }
    int indice = 0;
    if (!resolverHoja(nodo.ref, indice)) {
        arg.valor = Valor::deError(ErrorCelda::Ref);
        return arg;
    }
    const auto fila = [](int valor) { return std::clamp(valor, 0, nucleo::kUltimaFila); };
    const auto col = [](int valor) { return std::clamp(valor, 0, nucleo::kUltimaColumna); };
    const nucleo::RangoCeldas rango = {
        fila(std::min(nodo.ref.fila, nodo.ref2.fila)), col(std::min(nodo.ref.col, nodo.ref2.col)),
        fila(std::max(nodo.ref.fila, nodo.ref2.fila)), col(std::max(nodo.ref.col, nodo.ref2.col))};
    arg.esRango = true;
    arg.filas = rango.fila2 - rango.fila1 + 1;
    arg.columnas = rango.col2 - rango.col1 + 1;
    const auto celdas = static_cast<std::size_t>(rango.celdas());
    if (indice < 0 || static_cast<std::size_t>(indice) >= libro.hojas.size()) {
        arg.valores.assign(celdas, Valor::deError(ErrorCelda::Ref));
        return arg;
    }
    arg.valores.resize(celdas);
    libro.hojas[static_cast<std::size_t>(indice)]->celdas.recorrerPorFilas(
        rango, [&](int f, int c, const nucleo::Celda& celda) {
            const std::int64_t posicion =
                std::int64_t{f - rango.fila1} * arg.columnas + (c - rango.col1);
            arg.valores[static_cast<std::size_t>(posicion)] = aValor(vistaDe(celda));
            return true;
        });
    return arg;
}

bool Evaluador::aNumero(const Valor& valor, double& numero, ErrorCelda& error) const {
    return convertirEnNumero(vistaDe(valor), numero, error);
}

std::string Evaluador::aTexto(const Valor& valor) const {
    return convertirEnTexto(vistaDe(valor));
}

bool Evaluador::aLogico(const Valor& valor, bool& logico, ErrorCelda& error) const {
    return convertirEnLogico(vistaDe(valor), logico, error);
}

bool Evaluador::resolverHoja(const RefCelda& ref, int& indice) const {
    indice = ref.hoja.empty() ? hoja : libro.indiceHoja(ref.hoja);
    return ref.hoja.empty() || indice >= 0;
}

Valor Evaluador::valorReferencia(const RefCelda& ref) const {
    int indice = 0;
    if (!resolverHoja(ref, indice) || indice < 0 ||
        static_cast<std::size_t>(indice) >= libro.hojas.size())
        return Valor::deError(ErrorCelda::Ref);
    const nucleo::Celda* celda =
        libro.hojas[static_cast<std::size_t>(indice)]->celdas.buscar(ref.fila, ref.col);
    return celda == nullptr ? Valor{} : aValor(vistaDe(*celda));
}

Valor Evaluador::operarBinario(const std::string& op, const Valor& izquierdo,
                               const Valor& derecho) const {
    const Operacion operacion = binariaDe(op);
    const bool hayError =
        izquierdo.tipo == nucleo::TipoValor::Error || derecho.tipo == nucleo::TipoValor::Error;
    if (operacion == Operacion::Concatenar && !hayError)
        return unirTextos(aTexto(izquierdo), aTexto(derecho), textoMaximo);
    // Se parte de un valor limpio: los operandos pueden traer restos en los campos que no usan.
    const VistaValor valor = operarSinTexto(operacion, vistaDe(izquierdo), vistaDe(derecho));
    switch (valor.tipo) {
    case nucleo::TipoValor::Numero:
        return Valor::deNumero(valor.numero);
    case nucleo::TipoValor::Logico:
        return Valor::deLogico(valor.logico);
    default:
        return Valor::deError(valor.error);
    }
}

} // namespace motor_formulas
