#include "formula/coercion.h"

#include "model/fechas.h"
#include "model/formato.h"
#include "model/numeros.h"

namespace motor_formulas {

using nucleo::ErrorCelda;
using nucleo::TipoValor;

bool convertirEnNumero(const VistaValor& valor, double& numero, ErrorCelda& error) {
    switch (valor.tipo) {
    case TipoValor::Vacio:
        numero = 0;
        return true;
    case TipoValor::Numero:
        numero = valor.numero;
        return true;
    case TipoValor::Logico:
        numero = valor.logico ? 1 : 0;
        return true;
    case TipoValor::Texto: {
        const std::string texto(valor.texto);
        if (nucleo::parsearNumeroUsuario(texto, numero) || nucleo::parsearFecha(texto, numero))
            return true;
        error = ErrorCelda::ValorInvalido;
        return false;
    }
    case TipoValor::Error:
        error = valor.error;
        return false;
    }
    error = ErrorCelda::ValorInvalido;
    return false;
}

bool convertirEnLogico(const VistaValor& valor, bool& logico, ErrorCelda& error) {
    switch (valor.tipo) {
    case TipoValor::Vacio:
        logico = false;
        return true;
    case TipoValor::Numero:
        logico = valor.numero != 0; // un NaN cuenta como verdadero
        return true;
    case TipoValor::Logico:
        logico = valor.logico;
        return true;
    case TipoValor::Texto:
        error = ErrorCelda::ValorInvalido;
        return false;
    case TipoValor::Error:
        error = valor.error;
        return false;
    }
    error = ErrorCelda::ValorInvalido;
    return false;
}

std::string convertirEnTexto(const VistaValor& valor) {
    if (valor.tipo == TipoValor::Texto)
        return std::string(valor.texto);
    return nucleo::textoVisible(aValor(valor), nucleo::Formato{});
}

} // namespace motor_formulas
