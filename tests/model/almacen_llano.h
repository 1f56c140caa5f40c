#pragma once

#include "model/celda.h"
#include "model/rango.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace prueba {

using nucleo::Celda;
using nucleo::columnaDeClaveLocal;
using nucleo::filaDeClaveLocal;
using nucleo::RangoCeldas;
using nucleo::TipoCelda;

/// El almacén escrito de la manera más llana: lo que hace AlmacenEnBloques, celda a celda.
template <typename G> class AlmacenLlano {
  public:
    std::map<std::uint64_t, Celda> celdas;

    static bool dentro(std::uint64_t clave) {
        const int fila = filaDeClaveLocal(clave);
        const int col = columnaDeClaveLocal(clave);
        return fila >= 0 && fila < G::kFilas && col >= 0 && col < G::kColumnas;
    }

    /// Las claves en el orden del almacén.
    std::vector<std::uint64_t> claves() const {
        std::vector<std::uint64_t> todas;
        for (const auto& [clave, celda] : celdas)
            todas.push_back(clave);
        std::stable_sort(todas.begin(), todas.end(), [](std::uint64_t a, std::uint64_t b) {
            if (dentro(a) != dentro(b))
                return dentro(a);
            return dentro(a) && columnaDeClaveLocal(a) < columnaDeClaveLocal(b);
        });
        return todas;
    }

    /// Las claves de la cuadrícula que caen en el rango, por filas.
    std::vector<std::uint64_t> porFilas(const RangoCeldas& rango) const {
        std::vector<std::uint64_t> todas;
        for (const auto& [clave, celda] : celdas) {
            if (dentro(clave) &&
                rango.contiene(filaDeClaveLocal(clave), columnaDeClaveLocal(clave)))
                todas.push_back(clave);
        }
        return todas;
    }

    void quitarRango(const RangoCeldas& rango) {
        std::erase_if(celdas, [&](const auto& par) {
            return rango.contiene(filaDeClaveLocal(par.first), columnaDeClaveLocal(par.first));
        });
    }

    void desplazar(bool filas, int desde, int delta) {
        std::map<std::uint64_t, Celda> movidas;
        const int ultima = (filas ? G::kFilas : G::kColumnas) - 1;
        for (const auto& [clave, celda] : celdas) {
            std::int64_t fila = filaDeClaveLocal(clave);
            std::int64_t col = columnaDeClaveLocal(clave);
            std::int64_t& coordenada = filas ? fila : col;
            if (coordenada >= desde) {
                if (delta < 0 && coordenada < desde - delta)
                    continue;
                coordenada += delta;
                if (delta > 0 && coordenada > ultima)
                    continue;
            }
            movidas[nucleo::claveLocal(static_cast<int>(fila), static_cast<int>(col))] = celda;
        }
        celdas = movidas;
    }

    void completarLiterales() {
        for (auto& [clave, celda] : celdas) {
            if (celda.tipo == TipoCelda::Numero &&
                celda.valor != nucleo::Valor::deNumero(celda.numero))
                celda.valor = nucleo::Valor::deNumero(celda.numero);
            if (celda.tipo == TipoCelda::Texto &&
                celda.valor != nucleo::Valor::deTexto(celda.entrada))
                celda.valor = nucleo::Valor::deTexto(celda.entrada);
        }
    }

    int ultima(bool filas) const {
        int hasta = -1;
        for (const auto& [clave, celda] : celdas) {
            if (celda.tipo != TipoCelda::Vacia)
                hasta =
                    std::max(hasta, filas ? filaDeClaveLocal(clave) : columnaDeClaveLocal(clave));
        }
        return hasta;
    }
};

} // namespace prueba
