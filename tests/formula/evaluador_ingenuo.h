#pragma once

#include "formula/evaluador.h"
#include "formula/functions/catalogo.h"
#include "formula/nodo_expr.h"
#include "model/direcciones.h"
#include "model/fechas.h"
#include "model/libro.h"
#include "model/numeros.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace motor_formulas {

/// Evalúa un árbol por recursión, regla a regla y reuniendo los rangos: sirve de testigo. Solo las
/// funciones del catálogo, ya con sus argumentos, son las del programa.
class EvaluadorIngenuo {
  public:
    EvaluadorIngenuo(const nucleo::Libro& libro, int hoja)
        : libro_(libro), hoja_(hoja), real_(libro, hoja) {}

    nucleo::Valor evaluar(const NodoExpr& nodo) {
        switch (nodo.tipo) {
        case NodoExpr::Numero:
            return nucleo::Valor::deNumero(nodo.numero);
        case NodoExpr::Texto:
            return nucleo::Valor::deTexto(nodo.texto);
        case NodoExpr::Logico:
            return nucleo::Valor::deLogico(nodo.logico);
        case NodoExpr::Referencia:
            return celda(nodo.ref);
        case NodoExpr::Error:
            return nucleo::Valor::deError(nodo.error);
        case NodoExpr::Unario:
            return unario(nodo);
        case NodoExpr::Binario: {
            const nucleo::Valor derecho = evaluar(*nodo.hijos[1]);
            return binario(nodo.op, evaluar(*nodo.hijos[0]), derecho);
        }
        case NodoExpr::Funcion:
            return funcion(nodo);
        default:
            return invalido();
        }
    }

  private:
    using Tipo = nucleo::TipoValor;

    static nucleo::Valor invalido() {
        return nucleo::Valor::deError(nucleo::ErrorCelda::ValorInvalido);
    }

    const nucleo::Hoja* hojaDe(const std::string& nombre) const {
        if (nombre.empty())
            return libro_.hojas[static_cast<std::size_t>(hoja_)].get();
        for (const auto& hoja : libro_.hojas) {
            if (hoja->nombre == nombre)
                return hoja.get();
        }
        return nullptr;
    }

    nucleo::Valor celda(const RefCelda& ref) const {
        const nucleo::Hoja* hoja = hojaDe(ref.hoja);
        if (hoja == nullptr)
            return nucleo::Valor::deError(nucleo::ErrorCelda::Ref);
        const nucleo::Celda* leida = hoja->celda(ref.fila, ref.col);
        if (leida == nullptr)
            return {};
        switch (leida->tipo) {
        case nucleo::TipoCelda::Numero:
            return nucleo::Valor::deNumero(leida->numero);
        case nucleo::TipoCelda::Texto:
            return nucleo::Valor::deTexto(leida->entrada);
        case nucleo::TipoCelda::Formula:
            return leida->valor;
        default:
            return {};
        }
    }

    static bool numero(const nucleo::Valor& valor, double& salida, nucleo::Valor& error) {
        salida = 0;
        if (valor.tipo == Tipo::Numero)
            salida = valor.numero;
        if (valor.tipo == Tipo::Logico)
            salida = valor.logico ? 1 : 0;
        if (valor.tipo == Tipo::Texto && !nucleo::parsearNumeroUsuario(valor.texto, salida) &&
            !nucleo::parsearFecha(valor.texto, salida)) {
            error = invalido();
            return false;
        }
        error = valor;
        return valor.tipo != Tipo::Error;
    }

    nucleo::Valor unario(const NodoExpr& nodo) {
        double x = 0;
        nucleo::Valor error;
        if (!numero(evaluar(*nodo.hijos[0]), x, error))
            return error;
        return nucleo::Valor::deNumero(nodo.op == "u-" ? -x : nodo.op == "%" ? x / 100 : x);
    }

    static std::string minusculas(std::string texto) {
        for (char& c : texto) {
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c + 32);
        }
        return texto;
    }

    static int orden(const nucleo::Valor& a, const nucleo::Valor& b) {
        const auto clase = [](const nucleo::Valor& valor) {
            return valor.tipo == Tipo::Texto ? 1 : valor.tipo == Tipo::Logico ? 2 : 0;
        };
        if (clase(a) != clase(b))
            return clase(a) - clase(b);
        if (clase(a) == 1)
            return minusculas(a.texto).compare(minusculas(b.texto));
        if (clase(a) == 2)
            return int(a.logico) - int(b.logico);
        const double x = a.tipo == Tipo::Vacio ? 0 : a.numero;
        const double y = b.tipo == Tipo::Vacio ? 0 : b.numero;
        return x < y ? -1 : x > y ? 1 : 0;
    }

    static nucleo::Valor binario(const std::string& op, const nucleo::Valor& a,
                                 const nucleo::Valor& b) {
        if (a.tipo == Tipo::Error)
            return a;
        if (b.tipo == Tipo::Error)
            return b;
        if (op == "&")
            return nucleo::Valor::deTexto(nucleo::textoVisible(a, {}) +
                                          nucleo::textoVisible(b, {}));
        const int c = orden(a, b);
        const std::vector<std::pair<std::string, bool>> comparaciones = {
            {"=", c == 0}, {"<>", c != 0}, {"<", c < 0},
            {">", c > 0},  {"<=", c <= 0}, {">=", c >= 0}};
        for (const auto& [texto, cierta] : comparaciones) {
            if (op == texto)
                return nucleo::Valor::deLogico(cierta);
        }
        double x = 0;
        double y = 0;
        nucleo::Valor error;
        if (!numero(a, x, error) || !numero(b, y, error))
            return error;
        if (op == "/" && y == 0)
            return nucleo::Valor::deError(nucleo::ErrorCelda::DivCero);
        const double r = op == "+"   ? x + y
                         : op == "-" ? x - y
                         : op == "*" ? x * y
                         : op == "/" ? x / y
                                     : std::pow(x, y);
        return std::isfinite(r) ? nucleo::Valor::deNumero(r) : invalido();
    }

    nucleo::Valor funcion(const NodoExpr& nodo) {
        const std::size_t n = nodo.hijos.size();
        if (nodo.texto == "SI") {
            if (n < 2 || n > 3)
                return invalido();
            const nucleo::Valor condicion = evaluar(*nodo.hijos[0]);
            if (condicion.tipo == Tipo::Error)
                return condicion;
            if (condicion.tipo == Tipo::Texto)
                return invalido();
            const bool cierta = condicion.tipo == Tipo::Logico   ? condicion.logico
                                : condicion.tipo == Tipo::Numero ? condicion.numero != 0
                                                                 : false;
            if (cierta)
                return evaluar(*nodo.hijos[1]);
            return n == 3 ? evaluar(*nodo.hijos[2]) : nucleo::Valor::deLogico(false);
        }
        if (nodo.texto == "SI.ERROR") {
            if (n != 2)
                return invalido();
            nucleo::Valor valor = evaluar(*nodo.hijos[0]);
            return valor.tipo == Tipo::Error ? evaluar(*nodo.hijos[1]) : valor;
        }
        std::vector<Arg> args;
        for (const auto& hijo : nodo.hijos)
            args.push_back(argumento(*hijo));
        const Funcion* conocida = buscarFuncion(nodo.texto);
        if (conocida == nullptr)
            return nucleo::Valor::deError(nucleo::ErrorCelda::Nombre);
        return ejecutarFuncion(*conocida, args, real_);
    }

    Arg argumento(const NodoExpr& nodo) {
        Arg arg;
        if (nodo.tipo != NodoExpr::Rango) {
            arg.valor = evaluar(nodo);
            return arg;
        }
        if (hojaDe(nodo.ref.hoja) == nullptr) {
            arg.valor = nucleo::Valor::deError(nucleo::ErrorCelda::Ref);
            return arg;
        }
        const auto [fila1, fila2] = std::minmax(nodo.ref.fila, nodo.ref2.fila);
        const auto [col1, col2] = std::minmax(nodo.ref.col, nodo.ref2.col);
        arg.esRango = true;
        arg.filas = fila2 - fila1 + 1;
        arg.columnas = col2 - col1 + 1;
        for (int fila = fila1; fila <= fila2; ++fila) {
            for (int col = col1; col <= col2; ++col)
                arg.valores.push_back(celda({nodo.ref.hoja, fila, col, false, false}));
        }
        return arg;
    }

    const nucleo::Libro& libro_;
    int hoja_;
    Evaluador real_;
};

} // namespace motor_formulas
