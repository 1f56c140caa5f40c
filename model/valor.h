#pragma once

#include <cstdint>
#include <string>

namespace nucleo {

/// Error que una celda puede mostrar en lugar de un valor.
enum class ErrorCelda : std::uint8_t {
    Ninguno = 0,
    Circular = 1,
    DivCero = 2,
    Ref = 3,
    ValorInvalido = 4,
    Nombre = 5,
};

/// Texto que se muestra para un error; vacío para `Ninguno` y para cualquier código desconocido.
std::string textoError(ErrorCelda error);

/// Qué campo de un `Valor` tiene significado.
enum class TipoValor : std::uint8_t { Vacio = 0, Numero = 1, Texto = 2, Logico = 3, Error = 4 };

/// Valor de una celda o de una expresión. Solo se lee el campo que `tipo` señala; los demás
/// conservan lo que tuvieran.
struct Valor {
    TipoValor tipo = TipoValor::Vacio;
    double numero = 0;
    std::string texto; ///< UTF-8
    bool logico = false;
    ErrorCelda error = ErrorCelda::Ninguno;

    static Valor deNumero(double numero);
    static Valor deTexto(std::string texto);
    static Valor deLogico(bool logico);
    static Valor deError(ErrorCelda error);

    bool operator==(const Valor&) const = default;
};

/// Si poner un valor en lugar del otro no se notaría: son de la misma clase y el campo que señala
/// es igual bit a bit. Así -0 no es 0, que se muestra distinto, y un NaN es igual a sí mismo.
bool indistinguibles(const Valor& a, const Valor& b);

} // namespace nucleo
