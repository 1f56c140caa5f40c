#include "formula/maquina.h"

#include "formula/coercion.h"
#include "formula/functions/catalogo.h"
#include "formula/operaciones.h"
#include "model/limites.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace motor_formulas {

using nucleo::ErrorCelda;
using nucleo::TipoValor;

inline void Maquina::Elemento::ponerNumero(double valor) {
    clase = Clase::Numero;
    numero = valor;
}

inline void Maquina::Elemento::ponerFinito(double valor) {
    if (std::isfinite(valor))
        ponerNumero(valor);
    else
        ponerError(ErrorCelda::ValorInvalido);
}

inline void Maquina::Elemento::ponerLogico(bool valor) {
    clase = Clase::Logico;
    logico = valor;
}

inline void Maquina::Elemento::ponerError(ErrorCelda codigo) {
    clase = Clase::Error;
    error = codigo;
}

inline void Maquina::Elemento::ponerTexto(std::string_view valor, bool esPropio) {
    clase = Clase::Texto;
    propio = esPropio;
    inicio = valor.data();
    largo = valor.size();
}

inline void Maquina::Elemento::ponerVista(const VistaValor& valor) {
    switch (valor.tipo) {
    case TipoValor::Numero:
        return ponerNumero(valor.numero);
    case TipoValor::Texto:
        return ponerTexto(valor.texto, false);
    case TipoValor::Logico:
        return ponerLogico(valor.logico);
    case TipoValor::Error:
        return ponerError(valor.error);
    case TipoValor::Vacio:
        break;
    }
    clase = Clase::Vacio;
}

inline void Maquina::Elemento::ponerCelda(const nucleo::Celda* celda) {
    if (celda == nullptr)
        clase = Clase::Vacio;
    else if (celda->tipo == nucleo::TipoCelda::Numero)
        ponerNumero(celda->numero);
    else if (celda->tipo == nucleo::TipoCelda::Formula && celda->valor.tipo == TipoValor::Numero)
        ponerNumero(celda->valor.numero);
    else
        ponerVista(vistaDe(*celda));
}

inline VistaValor Maquina::Elemento::vista() const {
    switch (clase) {
    case Clase::Numero:
        return vistaNumero(numero);
    case Clase::Texto:
        return {TipoValor::Texto, {}, false, 0, {inicio, largo}};
    case Clase::Logico:
        return vistaLogico(logico);
    case Clase::Error:
        return vistaError(error);
    default:
        return {};
    }
}

namespace {

const nucleo::Hoja* hojaDe(const nucleo::Libro& libro, std::int32_t indice) {
    if (indice < 0 || static_cast<std::size_t>(indice) >= libro.hojas.size())
        return nullptr;
    return libro.hojas[static_cast<std::size_t>(indice)].get();
}

/// La parte de un rango que está en la cuadrícula; solo un árbol hecho a mano puede salirse.
nucleo::RangoCeldas recortado(const nucleo::RangoCeldas& rango) {
    return {std::clamp(rango.fila1, 0, nucleo::kUltimaFila),
            std::clamp(rango.col1, 0, nucleo::kUltimaColumna),
            std::clamp(rango.fila2, 0, nucleo::kUltimaFila),
            std::clamp(rango.col2, 0, nucleo::kUltimaColumna)};
}

void prestarRango(Arg& arg, const ReferenciaCodigo& referencia, const nucleo::Libro& libro) {
    const nucleo::Hoja* hoja = hojaDe(libro, referencia.hoja);
    if (hoja == nullptr) {
        arg.valor.tipo = TipoValor::Error;
        arg.valor.error = ErrorCelda::Ref;
        return;
    }
    arg.esRango = true;
    arg.hoja = hoja;
    arg.rango = recortado(referencia.rango);
    arg.filas = arg.rango.fila2 - arg.rango.fila1 + 1;
    arg.columnas = arg.rango.col2 - arg.rango.col1 + 1;
}

void ponerValor(nucleo::Valor& valor, const VistaValor& vista) {
    valor.tipo = vista.tipo;
    valor.numero = vista.numero;
    valor.logico = vista.logico;
    valor.error = vista.error;
    if (vista.tipo == TipoValor::Texto)
        valor.texto = vista.texto;
}

void vaciar(Arg& arg) {
    arg.esRango = false;
    arg.filas = 0;
    arg.columnas = 0;
    arg.valores.clear();
    arg.hoja = nullptr;
    arg.rango = {};
}

} // namespace

void Maquina::ponerTextoPropio(Elemento& elemento, std::string texto) {
    propios_.push_back(std::move(texto));
    elemento.ponerTexto(propios_.back(), true);
}

inline void Maquina::soltar(const Elemento& elemento) {
    if (elemento.clase == Elemento::Clase::Texto && elemento.propio)
        propios_.pop_back();
}

void Maquina::operarUnaria(Operacion operacion, Elemento& operando) {
    const VistaValor valor = motor_formulas::operarUnaria(operacion, operando.vista());
    soltar(operando);
    operando.ponerVista(valor);
}

void Maquina::operarBinaria(Operacion operacion, Elemento& izquierdo, Elemento& derecho) {
    // El resultado nunca es un texto, así que los de los operandos ya no hacen falta.
    const VistaValor valor = operarSinTexto(operacion, izquierdo.vista(), derecho.vista());
    soltar(derecho);
    soltar(izquierdo);
    izquierdo.ponerVista(valor);
}

void Maquina::concatenar(Elemento& izquierdo, Elemento& derecho) {
    using Clase = Elemento::Clase;
    if (izquierdo.clase == Clase::Error || derecho.clase == Clase::Error)
        return operarBinaria(Operacion::Concatenar, izquierdo, derecho);
    const bool derechoPropio = derecho.clase == Clase::Texto && derecho.propio;
    const bool izquierdoPropio = izquierdo.clase == Clase::Texto && izquierdo.propio;
    std::string cabeza;
    std::string cola;
    if (derechoPropio) {
        cola = std::move(propios_.back());
        propios_.pop_back();
        derecho.ponerTexto(cola, false);
    } else if (derecho.clase != Clase::Texto) {
        cola = convertirEnTexto(derecho.vista());
        derecho.ponerTexto(cola, false);
    }
    if (izquierdo.clase != Clase::Texto) {
        cabeza = convertirEnTexto(izquierdo.vista());
        izquierdo.ponerTexto(cabeza, false);
    }
    const std::size_t largo = izquierdo.largo + derecho.largo;
    if (!cupo_.gastar(largo, izquierdoPropio ? derecho.largo : largo)) {
        soltar(izquierdo);
        return izquierdo.ponerError(ErrorCelda::ValorInvalido);
    }
    // Un texto calculado crece en su sitio: una cadena de "&" cuesta lo que mide su resultado.
    if (!izquierdoPropio)
        propios_.emplace_back(izquierdo.inicio, izquierdo.largo);
    izquierdo.ponerTexto(propios_.back().append(derecho.inicio, derecho.largo), true);
}

std::size_t Maquina::contarPropios(const Elemento* primero, const Elemento* fin) const {
    if (propios_.empty())
        return 0;
    return static_cast<std::size_t>(std::count_if(primero, fin, [](const Elemento& elemento) {
        return elemento.clase == Elemento::Clase::Texto && elemento.propio;
    }));
}

std::size_t Maquina::bytesDeTexto(const Elemento* primero, const Elemento* fin) {
    std::size_t bytes = 0;
    for (; primero != fin; ++primero)
        bytes += primero->clase == Elemento::Clase::Texto ? primero->largo : 0;
    return bytes;
}

std::vector<Arg>& Maquina::prepararArgumentos(Elemento* primero, std::size_t cuantos,
                                              const Codigo& codigo, const nucleo::Libro& libro) {
    using Clase = Elemento::Clase;
    std::vector<Arg>& args = argumentos_[std::min(cuantos, argumentos_.size() - 1)];
    args.resize(cuantos);
    const std::size_t propios = contarPropios(primero, primero + cuantos);
    auto propio = propios_.end() - static_cast<std::ptrdiff_t>(propios);
    for (std::size_t i = 0; i < cuantos; ++i) {
        const Elemento& elemento = primero[i];
        Arg& arg = args[i];
        vaciar(arg);
        if (elemento.clase == Clase::Rango) {
            prestarRango(arg, codigo.referencias()[elemento.referencia], libro);
        } else if (elemento.clase == Clase::Texto && elemento.propio) {
            arg.valor.tipo = TipoValor::Texto;
            arg.valor.texto = std::move(*propio++);
        } else {
            ponerValor(arg.valor, elemento.vista());
        }
    }
    for (std::size_t i = 0; i < propios; ++i)
        propios_.pop_back();
    return args;
}

void Maquina::llamar(const Instruccion& llamada, Elemento* primero, const Codigo& codigo,
                     Evaluador& evaluador) {
    if (bytesDeTexto(primero, primero + llamada.indice) > nucleo::kMaximoTexto) {
        // Nombrar mil veces una celda no debe copiar mil veces su texto.
        for (std::uint32_t i = llamada.indice; i > 0; --i)
            soltar(primero[i - 1]);
        return primero->ponerError(ErrorCelda::ValorInvalido);
    }
    std::vector<Arg>& args = prepararArgumentos(primero, llamada.indice, codigo, evaluador.libro);
    evaluador.textoMaximo = cupo_.maximo();
    nucleo::Valor valor = ejecutarFuncion(*llamada.funcion, args, evaluador);
    if (valor.tipo != TipoValor::Texto)
        primero->ponerVista(vistaDe(valor));
    else if (cupo_.gastar(valor.texto.size(), valor.texto.size()))
        ponerTextoPropio(*primero, std::move(valor.texto));
    else
        primero->ponerError(ErrorCelda::ValorInvalido);
}

nucleo::Valor Maquina::resultado(const Elemento& elemento) {
    if (elemento.clase == Elemento::Clase::Texto && elemento.propio)
        return nucleo::Valor::deTexto(std::move(propios_.back()));
    if (elemento.clase == Elemento::Clase::Numero)
        return nucleo::Valor::deNumero(elemento.numero);
    if (elemento.clase == Elemento::Clase::Texto && !cupo_.gastar(elemento.largo, elemento.largo))
        return nucleo::Valor::deError(ErrorCelda::ValorInvalido);
    return aValor(elemento.vista());
}

nucleo::Valor Maquina::ejecutar(const Codigo& codigo, Evaluador& evaluador) {
    using Clase = Elemento::Clase;
    if (!propios_.empty())
        propios_.clear();
    if (codigo.instrucciones().empty())
        return nucleo::Valor::deError(ErrorCelda::ValorInvalido);
    if (pila_.size() < codigo.profundidad())
        pila_.resize(codigo.profundidad());
    // `tope` señala el primer hueco; a y b son los dos últimos valores. La profundidad que calculó
    // quien emitió el código acota `tope`.
    Elemento* tope = pila_.data();
    const auto dosNumeros = [&tope] {
        return tope[-2].clase == Clase::Numero && tope[-1].clase == Clase::Numero;
    };
    const Instruccion* const base = codigo.instrucciones().data();
    const Instruccion* const fin = base + codigo.instrucciones().size();
    const Instruccion* actual = base;
    while (actual != fin) {
        const Instruccion& instruccion = *actual++;
        switch (instruccion.operacion) {
        case Operacion::Suma:
            if (dosNumeros())
                tope[-2].ponerFinito(tope[-2].numero + tope[-1].numero);
            else
                operarBinaria(Operacion::Suma, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Resta:
            if (dosNumeros())
                tope[-2].ponerFinito(tope[-2].numero - tope[-1].numero);
            else
                operarBinaria(Operacion::Resta, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Producto:
            if (dosNumeros())
                tope[-2].ponerFinito(tope[-2].numero * tope[-1].numero);
            else
                operarBinaria(Operacion::Producto, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Cociente:
            if (dosNumeros() && tope[-1].numero != 0)
                tope[-2].ponerFinito(tope[-2].numero / tope[-1].numero);
            else
                operarBinaria(Operacion::Cociente, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Igual:
        case Operacion::Distinto:
        case Operacion::Menor:
        case Operacion::Mayor:
        case Operacion::MenorIgual:
        case Operacion::MayorIgual:
            if (dosNumeros())
                tope[-2].ponerLogico(satisface(instruccion.operacion,
                                               compararNumeros(tope[-2].numero, tope[-1].numero)));
            else
                operarBinaria(instruccion.operacion, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Potencia:
        case Operacion::OperadorDesconocido:
            operarBinaria(instruccion.operacion, tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Concatenar:
            concatenar(tope[-2], tope[-1]);
            --tope;
            break;
        case Operacion::Negar:
            if (tope[-1].clase == Clase::Numero)
                tope[-1].numero = -tope[-1].numero;
            else
                operarUnaria(Operacion::Negar, tope[-1]);
            break;
        case Operacion::Positivo:
        case Operacion::Porcentaje:
            operarUnaria(instruccion.operacion, tope[-1]);
            break;
        case Operacion::Numero:
            (tope++)->ponerNumero(instruccion.numero);
            break;
        case Operacion::Texto:
            (tope++)->ponerTexto(codigo.texto(instruccion.tramo), false);
            break;
        case Operacion::Logico:
            (tope++)->ponerLogico(instruccion.marca);
            break;
        case Operacion::Error:
            (tope++)->ponerError(instruccion.error);
            break;
        case Operacion::Celda: {
            const ReferenciaCodigo& referencia = codigo.referencias()[instruccion.indice];
            const nucleo::Hoja* hoja = hojaDe(evaluador.libro, referencia.hoja);
            if (hoja == nullptr) {
                (tope++)->ponerError(ErrorCelda::Ref);
                break;
            }
            (tope++)->ponerCelda(
                hoja->celdas.buscar(referencia.rango.fila1, referencia.rango.col1));
            break;
        }
        case Operacion::Rango:
        case Operacion::NodoInvalido:
            (tope++)->ponerError(ErrorCelda::ValorInvalido);
            break;
        case Operacion::RangoArg:
            tope->clase = Clase::Rango;
            tope->referencia = instruccion.indice;
            ++tope;
            break;
        case Operacion::Llamada:
            tope -= instruccion.indice;
            llamar(instruccion, tope, codigo, evaluador);
            ++tope;
            break;
        case Operacion::LlamadaDesconocida:
            for (std::uint32_t i = 0; i < instruccion.indice; ++i)
                soltar(*--tope);
            (tope++)->ponerError(ErrorCelda::Nombre);
            break;
        case Operacion::AbrirPerezosa:
            if (instruccion.indice != 0) {
                (tope++)->ponerError(ErrorCelda::ValorInvalido);
                actual = base + instruccion.indice;
            }
            break;
        case Operacion::SaltoSi: {
            bool condicion = false;
            ErrorCelda error = ErrorCelda::Ninguno;
            if (!convertirEnLogico(tope[-1].vista(), condicion, error)) {
                soltar(tope[-1]);
                tope[-1].ponerError(error);
                actual = base + instruccion.final;
            } else if (condicion) {
                --tope;
            } else if (instruccion.marca) {
                tope[-1].ponerLogico(false);
                actual = base + instruccion.final;
            } else {
                --tope;
                actual = base + instruccion.indice;
            }
            break;
        }
        case Operacion::Salto:
            actual = base + instruccion.indice;
            break;
        case Operacion::SaltoSinError:
            if (tope[-1].clase == Clase::Error)
                --tope;
            else
                actual = base + instruccion.indice;
            break;
        case Operacion::CerrarPerezosa:
            break;
        }
    }
    return resultado(tope[-1]);
}

nucleo::Valor ejecutar(const Codigo& codigo, Evaluador& evaluador) {
    return Maquina().ejecutar(codigo, evaluador);
}

} // namespace motor_formulas
