#pragma once

#include "formula/columna_recordada.h"
#include "formula/functions/criterio.h"
#include "formula/tramo_filas.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace motor_formulas {

/// Si el criterio es ser igual a un número, o a un texto sin comodines: lo que un índice responde.
bool esIgualdad(const Criterio& criterio);

/// Dónde está cada valor en un tramo de una columna: parejas de valor y fila, ordenadas. De los
/// textos, como los compara un criterio, se guarda su dispersión y se comprueban al encontrarlos.
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
    template <typename Clave> struct Pareja {
        Clave clave;
        int fila;

        bool operator<(const Pareja& otra) const {
            return clave < otra.clave || (!(otra.clave < clave) && fila < otra.fila);
        }
    };

    /// Las parejas de una clave, de arriba abajo; un NaN no es igual a nada.
    template <typename Clave>
    static std::span<const Pareja<Clave>> conClave(const std::vector<Pareja<Clave>>& parejas,
                                                   Clave clave, TramoFilas filas) {
        if (!(clave == clave))
            return {};
        const auto primera =
            std::lower_bound(parejas.begin(), parejas.end(), Pareja<Clave>{clave, filas.desde});
        return {primera,
                std::upper_bound(primera, parejas.end(), Pareja<Clave>{clave, filas.hasta})};
    }
    static std::uint64_t dispersion(const VistaValor& valor);
    static std::uint64_t dispersion(const Criterio& criterio);

    TramoFilas filas_{0, -1};
    std::uint64_t momento_ = 0;
    std::vector<Pareja<double>> numeros_;
    std::vector<Pareja<std::uint64_t>> textos_;
};

template <typename Visitante>
void IndiceExacto::recorrer(const ColumnaRecordada& columna, TramoFilas filas,
                            const Criterio& criterio, Visitante&& visitar) const {
    if (criterio.esNumero) {
        for (const Pareja<double>& pareja : conClave(numeros_, criterio.numero, filas)) {
            if (!visitar(pareja.fila))
                return;
        }
        return;
    }
    for (const Pareja<std::uint64_t>& pareja : conClave(textos_, dispersion(criterio), filas)) {
        if (criterio.cumple(columna.valor(pareja.fila)) && !visitar(pareja.fila))
            return;
    }
}

} // namespace motor_formulas
