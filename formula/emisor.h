#pragma once

#include "formula/codigo.h"
#include "formula/lexico.h"
#include "model/valor.h"

#include <cstdint>
#include <string_view>

namespace nucleo {
class Libro;
}

namespace motor_formulas {

/// Esquina de una referencia, con su nombre de hoja si lo lleva.
struct Esquina {
    Direccion direccion;
    std::string_view hoja;
};

/// Escribe código en un `Codigo`. El compilador y quien recorre árboles lo llaman en el mismo orden
/// postfijo, así que hay una sola forma de cada instrucción.
class Emisor {
  public:
    /// Vacía el código y empieza otro sobre el texto `fuente`.
    Emisor(std::string_view fuente, const nucleo::Libro* libro, int hoja, Codigo& codigo);

    void numero(double valor);
    void logico(bool valor);
    void error(nucleo::ErrorCelda error);
    void texto(std::string_view contenido);
    /// Un texto literal cuyas comillas dobladas hay que reducir.
    void textoConComillas(std::string_view contenido);
    void celda(const Esquina& esquina);
    /// La hoja es la de la primera esquina.
    void rango(const Esquina& primera, const Esquina& segunda);
    void unaria(Operacion operacion);
    void binaria(Operacion operacion);
    void invalido();

    /// Empieza una llamada a la función de ese nombre normalizado.
    void abrirLlamada(std::string_view nombre);
    /// Termina un argumento al que sigue otro.
    void separarArgumento();
    /// Termina la llamada; `conArgumento` es falso si no tiene ninguno.
    void cerrarLlamada(bool conArgumento);

  private:
    Instruccion& emitir(Operacion operacion);
    Instruccion& emitirValor(Operacion operacion);
    std::uint32_t siguienteInstruccion() const;
    void terminarArgumento(Codigo::LlamadaAbierta& llamada);
    void cerrarPerezosa(const Codigo::LlamadaAbierta& llamada);
    std::int32_t indiceDeHoja(std::string_view nombre) const;
    Tramo tramo(std::string_view texto);

    const nucleo::Libro* libro_;
    std::int32_t hoja_;
    Codigo& codigo_;
};

} // namespace motor_formulas
