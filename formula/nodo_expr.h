#pragma once

#include "formula/tokenizador.h"
#include "model/valor.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace motor_formulas {

/// Nodo del árbol de una fórmula. Destruirlo destruye su subárbol sin gastar pila, por profundo que
/// sea.
struct NodoExpr {
    enum class Tipo : std::int32_t {
        Numero,
        Texto,
        Logico,
        Referencia,
        Rango,
        Unario,
        Binario,
        Funcion,
        Error,
    };
    using enum Tipo;

    Tipo tipo = Tipo::Numero;
    double numero = 0;
    std::string texto; ///< contenido de un texto o nombre normalizado de una función
    bool logico = false;
    RefCelda ref;   ///< la celda, o la primera esquina de un rango
    RefCelda ref2;  ///< la segunda esquina de un rango
    std::string op; ///< "u-", "u+", "%" o el operador binario
    nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
    std::vector<std::unique_ptr<NodoExpr>> hijos;

    NodoExpr() = default;
    explicit NodoExpr(Tipo tipoNodo) : tipo(tipoNodo) {}
    NodoExpr(NodoExpr&&) noexcept = default;
    NodoExpr& operator=(NodoExpr&&) noexcept = default;
    ~NodoExpr();
};

} // namespace motor_formulas
