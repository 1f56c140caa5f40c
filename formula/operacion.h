#pragma once

#include <cstdint>
#include <string_view>

namespace motor_formulas {

/// Código de una instrucción. Los doce operadores binarios van primero y en un solo tramo, para
/// reconocerlos con una comparación.
enum class Operacion : std::uint8_t {
    Suma,
    Resta,
    Producto,
    Cociente,
    Potencia,
    Concatenar,
    Igual,
    Distinto,
    Menor,
    Mayor,
    MenorIgual,
    MayorIgual,

    Negar,
    Positivo,
    Porcentaje,

    Numero,
    Texto,
    Logico,
    Error,
    Celda,    ///< el valor de una celda
    Rango,    ///< un rango donde hace falta un valor: "#¡VALOR!"
    RangoArg, ///< un rango como argumento de una función

    Llamada,
    LlamadaDesconocida,

    // SI y SI.ERROR: saltan la rama que no se elige.
    AbrirPerezosa,  ///< con un número de argumentos equivocado deja "#¡VALOR!" y salta al final
    SaltoSi,        ///< tras la condición de SI
    Salto,          ///< tras la segunda expresión de SI, si hay tercera
    SaltoSinError,  ///< tras la primera expresión de SI.ERROR
    CerrarPerezosa, ///< no hace nada al ejecutar; reúne los argumentos al construir el árbol

    OperadorDesconocido, ///< operador que no existe, en un árbol hecho a mano
    NodoInvalido,        ///< nodo sin sentido, en un árbol hecho a mano: "#¡VALOR!"
};

constexpr bool esBinaria(Operacion operacion) {
    return operacion <= Operacion::MayorIgual;
}

/// Escritura de un operador binario o, para los unarios, "u-", "u+" y "%". Vacía para lo demás.
constexpr const char* textoOperacion(Operacion operacion) {
    switch (operacion) {
    case Operacion::Suma:
        return "+";
    case Operacion::Resta:
        return "-";
    case Operacion::Producto:
        return "*";
    case Operacion::Cociente:
        return "/";
    case Operacion::Potencia:
        return "^";
    case Operacion::Concatenar:
        return "&";
    case Operacion::Igual:
        return "=";
    case Operacion::Distinto:
        return "<>";
    case Operacion::Menor:
        return "<";
    case Operacion::Mayor:
        return ">";
    case Operacion::MenorIgual:
        return "<=";
    case Operacion::MayorIgual:
        return ">=";
    case Operacion::Negar:
        return "u-";
    case Operacion::Positivo:
        return "u+";
    case Operacion::Porcentaje:
        return "%";
    default:
        return "";
    }
}

/// La operación de ese tramo que se escribe así; `OperadorDesconocido` si ninguna.
constexpr Operacion operacionEntre(std::string_view texto, Operacion primera, Operacion ultima) {
    for (auto i = static_cast<int>(primera); i <= static_cast<int>(ultima); ++i) {
        if (texto == textoOperacion(static_cast<Operacion>(i)))
            return static_cast<Operacion>(i);
    }
    return Operacion::OperadorDesconocido;
}

constexpr Operacion binariaDe(std::string_view texto) {
    return operacionEntre(texto, Operacion::Suma, Operacion::MayorIgual);
}

} // namespace motor_formulas
