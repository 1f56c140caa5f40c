#include "formula/parser.h"

#include "formula/codigo.h"
#include "formula/compilador.h"
#include "formula/functions/catalogo.h"

#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace motor_formulas {

namespace {

/// Levanta el árbol desde el código postfijo: cada instrucción toma sus hijos de la pila.
class Constructor {
  public:
    explicit Constructor(const Codigo& codigo) : codigo_(codigo) {}

    std::unique_ptr<NodoExpr> construir() {
        for (const Instruccion& instruccion : codigo_.instrucciones())
            agregar(instruccion);
        return std::move(pila_.back());
    }

  private:
    void agregar(const Instruccion& instruccion);
    void agregarReferencia(const ReferenciaCodigo& referencia);
    void agregarOperacion(Operacion operacion, std::size_t operandos);
    void agregarFuncion(std::string_view nombre, std::size_t argumentos);
    NodoExpr& apilar(NodoExpr::Tipo tipo) {
        return *pila_.emplace_back(std::make_unique<NodoExpr>(tipo));
    }
    /// Pasa los últimos nodos de la pila a ser hijos de `nodo`.
    void tomarHijos(NodoExpr& nodo, std::size_t cuantos) {
        const auto desde = pila_.end() - static_cast<std::ptrdiff_t>(cuantos);
        nodo.hijos.assign(std::make_move_iterator(desde), std::make_move_iterator(pila_.end()));
        pila_.erase(desde, pila_.end());
    }

    const Codigo& codigo_;
    std::vector<std::unique_ptr<NodoExpr>> pila_;
};

void Constructor::agregar(const Instruccion& instruccion) {
    switch (instruccion.operacion) {
    case Operacion::Numero:
        apilar(NodoExpr::Numero).numero = instruccion.numero;
        return;
    case Operacion::Texto:
        apilar(NodoExpr::Texto).texto = codigo_.texto(instruccion.tramo);
        return;
    case Operacion::Logico:
        apilar(NodoExpr::Logico).logico = instruccion.marca;
        return;
    case Operacion::Error:
        apilar(NodoExpr::Error).error = instruccion.error;
        return;
    case Operacion::Celda:
    case Operacion::Rango:
    case Operacion::RangoArg:
        return agregarReferencia(codigo_.referencias()[instruccion.indice]);
    case Operacion::Llamada:
        return agregarFuncion(instruccion.funcion->nombre, instruccion.indice);
    case Operacion::LlamadaDesconocida:
        return agregarFuncion(codigo_.texto(instruccion.tramo), instruccion.indice);
    case Operacion::CerrarPerezosa:
        return agregarFuncion(instruccion.marca ? "SI.ERROR" : "SI", instruccion.indice);
    case Operacion::Negar:
    case Operacion::Positivo:
    case Operacion::Porcentaje:
        return agregarOperacion(instruccion.operacion, 1);
    default:
        if (esBinaria(instruccion.operacion))
            agregarOperacion(instruccion.operacion, 2);
    }
}

void Constructor::agregarReferencia(const ReferenciaCodigo& referencia) {
    NodoExpr& nodo = apilar(referencia.esRango ? NodoExpr::Rango : NodoExpr::Referencia);
    nodo.ref = codigo_.primeraEsquina(referencia);
    if (referencia.esRango)
        nodo.ref2 = codigo_.segundaEsquina(referencia);
}

void Constructor::agregarOperacion(Operacion operacion, std::size_t operandos) {
    auto nodo = std::make_unique<NodoExpr>(operandos == 1 ? NodoExpr::Unario : NodoExpr::Binario);
    nodo->op = textoOperacion(operacion);
    tomarHijos(*nodo, operandos);
    pila_.push_back(std::move(nodo));
}

void Constructor::agregarFuncion(std::string_view nombre, std::size_t argumentos) {
    auto nodo = std::make_unique<NodoExpr>(NodoExpr::Funcion);
    nodo->texto = nombre;
    tomarHijos(*nodo, argumentos);
    pila_.push_back(std::move(nodo));
}

} // namespace

std::unique_ptr<NodoExpr> Parser::parsear(const std::string& formula) {
    Codigo codigo;
    if (!compilar(formula, nullptr, 0, codigo))
        return nullptr;
    return Constructor(codigo).construir();
}

} // namespace motor_formulas
