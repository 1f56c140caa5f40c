#pragma once

#include "formula/nodo_expr.h"
#include "formula/tokenizador.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace motor_formulas {

/// La gramática escrita como se lee, una función por nivel y con recursión: sirve de testigo.
class ParserIngenuo {
  public:
    using Nodo = std::unique_ptr<NodoExpr>;

    Nodo parsear(const std::string& formula) {
        if (!tokenizar(formula, tokens_))
            return nullptr;
        Nodo nodo = comparacion();
        return nodo != nullptr && actual().tipo == Token::Fin ? std::move(nodo) : nullptr;
    }

  private:
    const Token& actual() const { return tokens_[indice_]; }
    void avanzar() {
        if (indice_ + 1 < tokens_.size())
            ++indice_;
    }
    bool esOperador(const std::string& texto) const {
        return actual().tipo == Token::Operador && actual().texto == texto;
    }

    using Nivel = Nodo (ParserIngenuo::*)();

    Nodo binario(const std::vector<std::string>& operadores, Nivel siguiente) {
        Nodo izquierdo = (this->*siguiente)();
        for (bool hay = true; izquierdo != nullptr && hay;) {
            hay = false;
            for (const std::string& op : operadores) {
                if (!esOperador(op))
                    continue;
                avanzar();
                izquierdo = unir(op, std::move(izquierdo), (this->*siguiente)());
                hay = true;
                break;
            }
        }
        return izquierdo;
    }

    Nodo unir(const std::string& op, Nodo izquierdo, Nodo derecho) {
        if (derecho == nullptr)
            return nullptr;
        auto nodo = std::make_unique<NodoExpr>(NodoExpr::Binario);
        nodo->op = op;
        nodo->hijos.push_back(std::move(izquierdo));
        nodo->hijos.push_back(std::move(derecho));
        return nodo;
    }

    Nodo envolver(const std::string& op, Nodo operando) {
        if (operando == nullptr)
            return nullptr;
        auto nodo = std::make_unique<NodoExpr>(NodoExpr::Unario);
        nodo->op = op;
        nodo->hijos.push_back(std::move(operando));
        return nodo;
    }

    Nodo comparacion() {
        return binario({"=", "<>", "<", ">", "<=", ">="}, &ParserIngenuo::concatenacion);
    }
    Nodo concatenacion() { return binario({"&"}, &ParserIngenuo::suma); }
    Nodo suma() { return binario({"+", "-"}, &ParserIngenuo::producto); }
    Nodo producto() { return binario({"*", "/"}, &ParserIngenuo::potencia); }

    Nodo potencia() {
        Nodo base = unario();
        if (base == nullptr || !esOperador("^"))
            return base;
        avanzar();
        return unir("^", std::move(base), potencia());
    }

    Nodo unario() {
        if (!esOperador("-") && !esOperador("+"))
            return posfijo(primario());
        const std::string op = "u" + actual().texto;
        avanzar();
        const bool otroSigno = esOperador("-") || esOperador("+");
        return posfijo(envolver(op, otroSigno ? unario() : primario()));
    }

    Nodo posfijo(Nodo nodo) {
        while (nodo != nullptr && esOperador("%")) {
            avanzar();
            nodo = envolver("%", std::move(nodo));
        }
        return nodo;
    }

    Nodo primario() {
        const Token token = actual();
        auto nodo = std::make_unique<NodoExpr>();
        switch (token.tipo) {
        case Token::Numero:
            nodo->numero = token.numero;
            break;
        case Token::Texto:
            nodo->tipo = NodoExpr::Texto;
            nodo->texto = token.texto;
            break;
        case Token::Error:
            nodo->tipo = NodoExpr::Error;
            nodo->error = static_cast<nucleo::ErrorCelda>(token.error);
            break;
        case Token::Referencia:
            return referencia(token.ref);
        case Token::Nombre:
            return nombre(normalizarIdentificador(token.texto));
        case Token::ParenAbre:
            avanzar();
            nodo = comparacion();
            if (actual().tipo != Token::ParenCierra)
                return nullptr;
            break;
        default:
            return nullptr;
        }
        avanzar();
        return nodo;
    }

    Nodo referencia(const RefCelda& primera) {
        avanzar();
        auto nodo = std::make_unique<NodoExpr>(NodoExpr::Referencia);
        nodo->ref = primera;
        if (actual().tipo != Token::DosPuntos)
            return nodo;
        avanzar();
        if (actual().tipo != Token::Referencia)
            return nullptr;
        nodo->tipo = NodoExpr::Rango;
        nodo->ref2 = actual().ref;
        if (nodo->ref2.hoja.empty())
            nodo->ref2.hoja = primera.hoja;
        avanzar();
        return nodo;
    }

    Nodo nombre(const std::string& normalizado) {
        avanzar();
        auto nodo = std::make_unique<NodoExpr>(NodoExpr::Logico);
        nodo->logico = normalizado == "VERDADERO";
        if (nodo->logico || normalizado == "FALSO")
            return nodo;
        if (actual().tipo != Token::ParenAbre) {
            nodo->tipo = NodoExpr::Error;
            nodo->error = nucleo::ErrorCelda::Nombre;
            return nodo;
        }
        avanzar();
        nodo->tipo = NodoExpr::Funcion;
        nodo->texto = normalizado;
        for (bool otro = actual().tipo != Token::ParenCierra; otro;) {
            nodo->hijos.push_back(comparacion());
            if (nodo->hijos.back() == nullptr)
                return nullptr;
            otro = actual().tipo == Token::PuntoComa;
            if (otro)
                avanzar();
        }
        if (actual().tipo != Token::ParenCierra)
            return nullptr;
        avanzar();
        return nodo;
    }

    std::vector<Token> tokens_;
    std::size_t indice_ = 0;
};

} // namespace motor_formulas
