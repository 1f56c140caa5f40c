#pragma once

#include "formula/columna_recordada.h"
#include "formula/filas_por_clave.h"
#include "formula/functions/criterio.h"
#include "formula/tramo_filas.h"

#include <bit>
#include <cstdint>
#include <string>

namespace motor_formulas {

/// Si el criterio es ser igual a un número, o a un texto sin comodines: lo que un índice responde.
bool esIgualdad(const Criterio& criterio);

/// Dónde está cada valor en un tramo de una columna: las filas de cada uno, juntas y de arriba
/// abajo, y una tabla de dispersión que lleva a ellas. De los textos, como los compara un criterio,
/// se guarda su dispersión y se comprueban al encontrarlos.
class IndiceExacto {
  public:
    /// Responde por esas filas tal como están en ese momento.
    void construir(ColumnaRecordada& columna, TramoFilas filas, std::uint64_t momento);

    /// Al revés si no se ha construido.
    TramoFilas filas() const { return filas_; }
    /// Si sigue diciendo la verdad sobre esas filas.
    bool sirve(const ColumnaRecordada& columna, TramoFilas filas) const;

    /// Llama a `visitar(fila)` con las filas del tramo que cumplen una igualdad, de arriba abajo,
    /// hasta que devuelva falso.
    template <typename Visitante>
    void recorrer(const ColumnaRecordada& columna, TramoFilas filas, const Criterio& criterio,
                  Visitante&& visitar) const;

  private:
    TramoFilas filas_{0, -1};
    std::uint64_t momento_ = 0;
    FilasPorClave numeros_;
    FilasPorClave textos_;
};

/// Los bits de un número, los mismos para el cero y el menos cero.
inline std::uint64_t claveDeNumero(double numero) {
    return std::bit_cast<std::uint64_t>(numero + 0.0);
}

/// Cómo se dispersa el texto de un criterio.
std::uint64_t claveDeTexto(const std::string& minusculas);

template <typename Visitante>
void IndiceExacto::recorrer(const ColumnaRecordada& columna, TramoFilas filas,
                            const Criterio& criterio, Visitante&& visitar) const {
    if (criterio.esNumero) {
        // Un NaN no es igual a nada, tampoco a otro con sus mismos bits.
        if (!(criterio.numero == criterio.numero))
            return;
        for (const int fila : numeros_.filas(claveDeNumero(criterio.numero), filas)) {
            if (!visitar(fila))
                return;
        }
        return;
    }
    for (const int fila : textos_.filas(claveDeTexto(criterio.texto), filas)) {
        if (criterio.cumple(columna.valor(fila)) && !visitar(fila))
            return;
    }
}

} // namespace motor_formulas
