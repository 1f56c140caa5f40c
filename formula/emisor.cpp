#include "formula/emisor.h"

#include "formula/functions/catalogo.h"
#include "model/libro.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace motor_formulas {

Emisor::Emisor(std::string_view fuente, const nucleo::Libro* libro, int hoja, Codigo& codigo)
    : libro_(libro), hoja_(hoja), codigo_(codigo) {
    codigo.fuente_ = fuente;
    codigo.propios_.clear();
    codigo.instrucciones_.clear();
    codigo.referencias_.clear();
    codigo.nombres_.clear();
    codigo.llamadas_.clear();
    codigo.profundidad_ = 0;
    codigo.profundidadMaxima_ = 0;
}

inline Instruccion& Emisor::emitir(Operacion operacion) {
    Instruccion& instruccion = codigo_.instrucciones_.emplace_back();
    instruccion.operacion = operacion;
    return instruccion;
}

inline Instruccion& Emisor::emitirValor(Operacion operacion) {
    ++codigo_.profundidad_;
    codigo_.profundidadMaxima_ = std::max(codigo_.profundidadMaxima_, codigo_.profundidad_);
    return emitir(operacion);
}

std::uint32_t Emisor::siguienteInstruccion() const {
    return static_cast<std::uint32_t>(codigo_.instrucciones_.size());
}

void Emisor::numero(double valor) {
    emitirValor(Operacion::Numero).numero = valor;
}

void Emisor::logico(bool valor) {
    emitirValor(Operacion::Logico).marca = valor;
}

void Emisor::error(nucleo::ErrorCelda error) {
    emitirValor(Operacion::Error).error = error;
}

void Emisor::texto(std::string_view contenido) {
    const Tramo trozo = tramo(contenido);
    emitirValor(Operacion::Texto).tramo = trozo;
}

void Emisor::textoConComillas(std::string_view contenido) {
    const std::size_t inicio = codigo_.propios_.size();
    agregarTextoLiteral(codigo_.propios_, contenido);
    emitirValor(Operacion::Texto).tramo = {
        static_cast<std::uint32_t>(codigo_.fuente_.size() + inicio),
        static_cast<std::uint32_t>(codigo_.propios_.size() - inicio)};
}

void Emisor::celda(const Esquina& esquina) {
    ReferenciaCodigo& referencia = codigo_.referencias_.emplace_back();
    const Direccion& direccion = esquina.direccion;
    referencia.rango = {direccion.fila, direccion.col, direccion.fila, direccion.col};
    referencia.absolutas =
        static_cast<std::uint8_t>((direccion.filaAbs ? 1 : 0) | (direccion.colAbs ? 2 : 0));
    referencia.hoja = hoja_;
    if (!esquina.hoja.empty()) {
        referencia.hoja = indiceDeHoja(esquina.hoja);
        referencia.nombres = static_cast<std::int32_t>(codigo_.nombres_.size());
        codigo_.nombres_.push_back({tramo(esquina.hoja), {0, 0}});
    }
    emitirValor(Operacion::Celda).indice =
        static_cast<std::uint32_t>(codigo_.referencias_.size() - 1);
}

void Emisor::rango(const Esquina& primera, const Esquina& segunda) {
    const Direccion& a = primera.direccion;
    const Direccion& b = segunda.direccion;
    ReferenciaCodigo& referencia = codigo_.referencias_.emplace_back();
    referencia.esRango = true;
    referencia.filasInvertidas = a.fila > b.fila;
    referencia.columnasInvertidas = a.col > b.col;
    referencia.rango = {std::min(a.fila, b.fila), std::min(a.col, b.col), std::max(a.fila, b.fila),
                        std::max(a.col, b.col)};
    referencia.absolutas = static_cast<std::uint8_t>((a.filaAbs ? 1 : 0) | (a.colAbs ? 2 : 0) |
                                                     (b.filaAbs ? 4 : 0) | (b.colAbs ? 8 : 0));
    referencia.hoja = indiceDeHoja(primera.hoja);
    if (!primera.hoja.empty() || !segunda.hoja.empty()) {
        referencia.nombres = static_cast<std::int32_t>(codigo_.nombres_.size());
        codigo_.nombres_.push_back({tramo(primera.hoja), tramo(segunda.hoja)});
    }
    emitirValor(Operacion::Rango).indice =
        static_cast<std::uint32_t>(codigo_.referencias_.size() - 1);
}

void Emisor::unaria(Operacion operacion) {
    emitir(operacion);
}

void Emisor::binaria(Operacion operacion) {
    --codigo_.profundidad_;
    emitir(operacion);
}

void Emisor::invalido() {
    emitirValor(Operacion::NodoInvalido);
}

void Emisor::abrirLlamada(std::string_view nombre) {
    using Clase = Codigo::LlamadaAbierta::Clase;
    Codigo::LlamadaAbierta& llamada = codigo_.llamadas_.emplace_back();
    llamada.profundidad = codigo_.profundidad_;
    if (nombre == "SI" || nombre == "SI.ERROR") {
        llamada.clase = nombre.size() == 2 ? Clase::Si : Clase::SiError;
        llamada.apertura = siguienteInstruccion();
        emitir(Operacion::AbrirPerezosa);
        return;
    }
    llamada.funcion = buscarFuncion(nombre);
    if (llamada.funcion == nullptr) {
        llamada.clase = Clase::Desconocida;
        llamada.nombre = tramo(nombre);
    }
}

void Emisor::terminarArgumento(Codigo::LlamadaAbierta& llamada) {
    using Clase = Codigo::LlamadaAbierta::Clase;
    ++llamada.argumentos;
    // La última instrucción de una expresión es su raíz: si es un rango, el argumento es el rango.
    Instruccion& raiz = codigo_.instrucciones_.back();
    const bool perezosa = llamada.clase == Clase::Si || llamada.clase == Clase::SiError;
    if (!perezosa && raiz.operacion == Operacion::Rango)
        raiz.operacion = Operacion::RangoArg;
}

void Emisor::separarArgumento() {
    using Clase = Codigo::LlamadaAbierta::Clase;
    Codigo::LlamadaAbierta& llamada = codigo_.llamadas_.back();
    terminarArgumento(llamada);
    if (llamada.clase == Clase::Si && llamada.argumentos == 2) {
        llamada.segundoSalto = siguienteInstruccion();
        emitir(Operacion::Salto);
        codigo_.instrucciones_[llamada.primerSalto].indice = siguienteInstruccion();
        --codigo_.profundidad_;
    } else if (llamada.clase == Clase::Si && llamada.argumentos == 1) {
        llamada.primerSalto = siguienteInstruccion();
        emitir(Operacion::SaltoSi);
        --codigo_.profundidad_;
    } else if (llamada.clase == Clase::SiError && llamada.argumentos == 1) {
        llamada.primerSalto = siguienteInstruccion();
        emitir(Operacion::SaltoSinError);
        --codigo_.profundidad_;
    }
}

void Emisor::cerrarPerezosa(const Codigo::LlamadaAbierta& llamada) {
    const bool esSi = llamada.clase == Codigo::LlamadaAbierta::Clase::Si;
    Instruccion& cierre = emitir(Operacion::CerrarPerezosa);
    cierre.indice = llamada.argumentos;
    cierre.marca = !esSi;
    const std::uint32_t final = siguienteInstruccion();
    std::vector<Instruccion>& codigo = codigo_.instrucciones_;
    const bool valida = llamada.argumentos == 2 || (esSi && llamada.argumentos == 3);
    if (!valida) {
        codigo[llamada.apertura].indice = final;
        return;
    }
    Instruccion& salto = codigo[llamada.primerSalto];
    if (!esSi) {
        salto.indice = final;
        return;
    }
    salto.final = final;
    salto.marca = llamada.argumentos == 2;
    if (llamada.argumentos == 3)
        codigo[llamada.segundoSalto].indice = final;
}

void Emisor::cerrarLlamada(bool conArgumento) {
    using Clase = Codigo::LlamadaAbierta::Clase;
    Codigo::LlamadaAbierta llamada = codigo_.llamadas_.back();
    codigo_.llamadas_.pop_back();
    if (conArgumento)
        terminarArgumento(llamada);
    codigo_.profundidad_ = llamada.profundidad + 1;
    codigo_.profundidadMaxima_ = std::max(codigo_.profundidadMaxima_, codigo_.profundidad_);
    switch (llamada.clase) {
    case Clase::Normal: {
        Instruccion& instruccion = emitir(Operacion::Llamada);
        instruccion.indice = llamada.argumentos;
        instruccion.funcion = llamada.funcion;
        break;
    }
    case Clase::Desconocida: {
        Instruccion& instruccion = emitir(Operacion::LlamadaDesconocida);
        instruccion.indice = llamada.argumentos;
        instruccion.tramo = llamada.nombre;
        break;
    }
    default:
        cerrarPerezosa(llamada);
    }
}

std::int32_t Emisor::indiceDeHoja(std::string_view nombre) const {
    if (nombre.empty())
        return hoja_;
    return libro_ == nullptr ? -1 : libro_->indiceHoja(nombre);
}

Tramo Emisor::tramo(std::string_view texto) {
    const std::string_view fuente = codigo_.fuente_;
    // Lo que ya está en la fórmula no se copia.
    if (std::less_equal<>()(fuente.data(), texto.data()) &&
        std::less_equal<>()(texto.data() + texto.size(), fuente.data() + fuente.size())) {
        return {static_cast<std::uint32_t>(texto.data() - fuente.data()),
                static_cast<std::uint32_t>(texto.size())};
    }
    const std::size_t inicio = codigo_.propios_.size();
    codigo_.propios_ += texto;
    return {static_cast<std::uint32_t>(fuente.size() + inicio),
            static_cast<std::uint32_t>(texto.size())};
}

} // namespace motor_formulas
