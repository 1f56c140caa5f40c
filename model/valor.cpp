#include "model/valor.h"

#include <bit>
#include <cstdint>
#include <utility>

namespace nucleo {

std::string textoError(ErrorCelda error) {
    switch (error) {
    case ErrorCelda::Circular:
        return "#¡CIRCULAR!";
    case ErrorCelda::DivCero:
        return "#¡DIV/0!";
    case ErrorCelda::Ref:
        return "#¡REF!";
    case ErrorCelda::ValorInvalido:
        return "#¡VALOR!";
    case ErrorCelda::Nombre:
        return "#¡NOMBRE?";
    case ErrorCelda::Ninguno:
        break;
    }
    return "";
}

Valor Valor::deNumero(double numero) {
    Valor valor;
    valor.tipo = TipoValor::Numero;
    valor.numero = numero;
    return valor;
}

Valor Valor::deTexto(std::string texto) {
    Valor valor;
    valor.tipo = TipoValor::Texto;
    valor.texto = std::move(texto);
    return valor;
}

Valor Valor::deLogico(bool logico) {
    Valor valor;
    valor.tipo = TipoValor::Logico;
    valor.logico = logico;
    return valor;
}

Valor Valor::deError(ErrorCelda error) {
    Valor valor;
    valor.tipo = TipoValor::Error;
    valor.error = error;
    return valor;
}

bool indistinguibles(const Valor& a, const Valor& b) {
    if (a.tipo != b.tipo)
        return false;
    switch (a.tipo) {
    case TipoValor::Numero:
        return std::bit_cast<std::uint64_t>(a.numero) == std::bit_cast<std::uint64_t>(b.numero);
    case TipoValor::Texto:
        return a.texto == b.texto;
    case TipoValor::Logico:
        return a.logico == b.logico;
    case TipoValor::Error:
        return a.error == b.error;
    case TipoValor::Vacio:
        break;
    }
    return true;
}

} // namespace nucleo
