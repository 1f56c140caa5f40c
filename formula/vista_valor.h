#pragma once

#include "model/celda.h"
#include "model/valor.h"

#include <string>
#include <string_view>

namespace motor_formulas {

/// Valor prestado: como `nucleo::Valor` pero sin copiar el texto. Vale mientras viva su dueño.
struct VistaValor {
    nucleo::TipoValor tipo = nucleo::TipoValor::Vacio;
    nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
    bool logico = false;
    double numero = 0;
    std::string_view texto;
};

inline VistaValor vistaDe(const nucleo::Valor& valor) {
    return {valor.tipo, valor.error, valor.logico, valor.numero, valor.texto};
}

/// Lo que una fórmula lee de una celda: su literal, o el último resultado de su fórmula.
inline VistaValor vistaDe(const nucleo::Celda& celda) {
    switch (celda.tipo) {
    case nucleo::TipoCelda::Numero:
        return {nucleo::TipoValor::Numero, {}, false, celda.numero, {}};
    case nucleo::TipoCelda::Texto:
        return {nucleo::TipoValor::Texto, {}, false, 0, celda.entrada};
    case nucleo::TipoCelda::Formula:
        return vistaDe(celda.valor);
    case nucleo::TipoCelda::Vacia:
        break;
    }
    return {};
}

inline nucleo::Valor aValor(const VistaValor& vista) {
    nucleo::Valor valor;
    valor.tipo = vista.tipo;
    valor.numero = vista.numero;
    valor.texto = std::string(vista.texto);
    valor.logico = vista.logico;
    valor.error = vista.error;
    return valor;
}

} // namespace motor_formulas
