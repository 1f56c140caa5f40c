#include "formula/operaciones.h"

#include "formula/coercion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace motor_formulas {

using nucleo::ErrorCelda;
using nucleo::TipoValor;

namespace {

char minuscula(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Compara por bytes sin distinguir mayúsculas ASCII.
int compararTextos(std::string_view a, std::string_view b) {
    const std::size_t comun = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < comun; ++i) {
        const auto x = static_cast<unsigned char>(minuscula(a[i]));
        const auto y = static_cast<unsigned char>(minuscula(b[i]));
        if (x != y)
            return x < y ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

int rango(TipoValor tipo) {
    switch (tipo) {
    case TipoValor::Texto:
        return 1;
    case TipoValor::Logico:
        return 2;
    default:
        return 0;
    }
}

VistaValor finito(double numero) {
    return std::isfinite(numero) ? vistaNumero(numero) : vistaError(ErrorCelda::ValorInvalido);
}

VistaValor operarNumeros(Operacion operacion, double a, double b) {
    switch (operacion) {
    case Operacion::Suma:
        return finito(a + b);
    case Operacion::Resta:
        return finito(a - b);
    case Operacion::Producto:
        return finito(a * b);
    case Operacion::Cociente:
        return b == 0 ? vistaError(ErrorCelda::DivCero) : finito(a / b);
    default:
        return finito(std::pow(a, b));
    }
}

} // namespace

VistaValor operarUnaria(Operacion operacion, const VistaValor& valor) {
    double numero = 0;
    ErrorCelda error = ErrorCelda::Ninguno;
    if (!convertirEnNumero(valor, numero, error))
        return vistaError(error);
    switch (operacion) {
    case Operacion::Negar:
        return vistaNumero(-numero);
    case Operacion::Porcentaje:
        return vistaNumero(numero / 100);
    default:
        return vistaNumero(numero);
    }
}

int comparar(const VistaValor& izquierdo, const VistaValor& derecho) {
    const int a = rango(izquierdo.tipo);
    const int b = rango(derecho.tipo);
    if (a != b)
        return a < b ? -1 : 1;
    if (a == 1)
        return compararTextos(izquierdo.texto, derecho.texto);
    if (a == 2)
        return static_cast<int>(izquierdo.logico) - static_cast<int>(derecho.logico);
    return compararNumeros(izquierdo.tipo == TipoValor::Numero ? izquierdo.numero : 0,
                           derecho.tipo == TipoValor::Numero ? derecho.numero : 0);
}

VistaValor operarSinTexto(Operacion operacion, const VistaValor& izquierdo,
                          const VistaValor& derecho) {
    if (izquierdo.tipo == TipoValor::Error)
        return izquierdo;
    if (derecho.tipo == TipoValor::Error)
        return derecho;
    if (operacion >= Operacion::Igual && operacion <= Operacion::MayorIgual)
        return vistaLogico(satisface(operacion, comparar(izquierdo, derecho)));
    if (operacion > Operacion::Potencia)
        return vistaError(ErrorCelda::ValorInvalido);
    double a = 0;
    double b = 0;
    ErrorCelda error = ErrorCelda::Ninguno;
    if (!convertirEnNumero(izquierdo, a, error) || !convertirEnNumero(derecho, b, error))
        return vistaError(error);
    return operarNumeros(operacion, a, b);
}

} // namespace motor_formulas
