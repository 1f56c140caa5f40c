#pragma once

#include "formula/columna_recordada.h"
#include "formula/tramo_filas.h"
#include "model/valor.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace motor_formulas {

/// Columnas seguidas de una hoja, de izquierda a derecha.
using Columnas = std::span<ColumnaRecordada* const>;

/// Un error que hay entre unos números.
struct ErrorEnFila {
    int fila = 0;
    nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
};

/// El primer error por filas de las que están en una página y en un tramo; falso si no hay.
inline bool primerError(Columnas columnas, TramoFilas filas, int pagina, ErrorEnFila& error) {
    std::uint64_t con = 0;
    for (ColumnaRecordada* const columna : columnas)
        con |= columna->pagina(pagina).conError;
    con &= bitsDePagina(filas, pagina);
    if (con == 0)
        return false;
    const int fila = std::countr_zero(con);
    for (ColumnaRecordada* const columna : columnas) {
        if ((columna->pagina(pagina).conError >> fila & 1) != 0) {
            error.fila = pagina * kFilasPagina + fila;
            error.error = columna->valor(error.fila).error;
            return true;
        }
    }
    return false;
}

/// Llama a `visitar(double)`, por filas, con los números de las filas de una página que están en un
/// tramo. Falso, sin visitar ninguno, si entre ellas hay un error.
template <typename Visitante>
bool visitarPagina(Columnas columnas, TramoFilas filas, int pagina, ErrorEnFila& error,
                   Visitante&& visitar) {
    if (primerError(columnas, filas, pagina, error))
        return false;
    const std::uint64_t bits = bitsDePagina(filas, pagina);
    if (columnas.size() == 1) {
        const PaginaColumna& leida = columnas[0]->pagina(pagina);
        if ((leida.conNumero & bits) == bits) {
            const auto desde = static_cast<std::size_t>(std::countr_zero(bits));
            const auto hasta = static_cast<std::size_t>(kFilasPagina - std::countl_zero(bits));
            for (std::size_t fila = desde; fila < hasta; ++fila)
                visitar(leida.numeros[fila]);
            return true;
        }
        for (std::uint64_t quedan = leida.conNumero & bits; quedan != 0; quedan &= quedan - 1)
            visitar(leida.numeros[static_cast<std::size_t>(std::countr_zero(quedan))]);
        return true;
    }
    std::uint64_t con = 0;
    for (ColumnaRecordada* const columna : columnas)
        con |= columna->pagina(pagina).conNumero;
    for (std::uint64_t quedan = con & bits; quedan != 0; quedan &= quedan - 1) {
        const int fila = std::countr_zero(quedan);
        for (ColumnaRecordada* const columna : columnas) {
            const PaginaColumna& leida = columna->pagina(pagina);
            if ((leida.conNumero >> fila & 1) != 0)
                visitar(leida.numeros[static_cast<std::size_t>(fila)]);
        }
    }
    return true;
}

/// Lo mismo con todas las páginas de un tramo, hasta la primera que tenga un error.
template <typename Visitante>
bool visitarNumeros(Columnas columnas, TramoFilas filas, ErrorEnFila& error, Visitante&& visitar) {
    for (int pagina = filas.desde / kFilasPagina; pagina <= filas.hasta / kFilasPagina; ++pagina) {
        if (!visitarPagina(columnas, filas, pagina, error, visitar))
            return false;
    }
    return true;
}

} // namespace motor_formulas
