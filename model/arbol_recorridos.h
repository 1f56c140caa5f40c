#pragma once

#include "model/arbol_celdas.h"

/// Recorridos de ArbolCeldas: van en cabecera para que lo que visitan se compile dentro del bucle.
namespace nucleo {

template <typename G>
template <typename Visitante>
bool ArbolCeldas<G>::recorrerColumnas(int col1, int col2, Visitante&& visitar) const {
    if (!raiz_)
        return true;
    const Mascara franjas = raiz_->presentes() & bitsEntre(franjaDe(col1), franjaDe(col2));
    return porCada(franjas, [&](int f) {
        const Franja& franja = *raiz_->hijo(f);
        const int primera = f << G::kBitsNodo;
        const Mascara columnas =
            franja.presentes() &
            bitsEntre(std::max(col1 - primera, 0), std::min(col2 - primera, kHijos - 1));
        return porCada(columnas, [&](int c) { return visitar(primera + c, *franja.hijo(c)); });
    });
}

template <typename G>
template <typename Visitante>
bool ArbolCeldas<G>::recorrerBloques(const Columna& columna, int fila1, int fila2,
                                     Visitante&& visitar) {
    const Mascara tramos = columna.presentes() & bitsEntre(tramoDe(fila1), tramoDe(fila2));
    return porCada(tramos, [&](int t) {
        const Tramo& tramo = *columna.hijo(t);
        const int primera = t << G::kBitsNodo; // en bloques
        const Mascara bloques =
            tramo.presentes() &
            bitsEntre(std::max((fila1 >> G::kBitsBloque) - primera, 0),
                      std::min((fila2 >> G::kBitsBloque) - primera, kHijos - 1));
        return porCada(bloques, [&](int b) {
            return visitar((primera + b) << G::kBitsBloque, *tramo.hijo(b));
        });
    });
}

template <typename G>
template <typename Visitante>
void ArbolCeldas<G>::recorrer(Visitante&& visitar) const {
    recorrerColumnas(0, G::kColumnas - 1, [&](int col, const Columna& columna) {
        return recorrerBloques(columna, 0, G::kFilas - 1,
                               [&](int primeraFila, const Bloque& bloque) {
                                   const Celda* celda = bloque.celdas();
                                   return porCada(bloque.presentes(), [&](int fila) {
                                       visitar(primeraFila + fila, col, *celda++);
                                       return true;
                                   });
                               });
    });
}

template <typename G>
template <typename Visitante>
void ArbolCeldas<G>::recorrerFormulas(Visitante&& visitar) const {
    recorrerColumnas(0, G::kColumnas - 1, [&](int col, const Columna& columna) {
        return recorrerBloques(columna, 0, G::kFilas - 1,
                               [&](int primeraFila, const Bloque& bloque) {
                                   return porCada(bloque.formulas(), [&](int fila) {
                                       visitar(primeraFila + fila, col, *bloque.buscar(fila));
                                       return true;
                                   });
                               });
    });
}

template <typename G>
template <typename Visitante>
bool ArbolCeldas<G>::recorrerPorFilas(const RangoCeldas& rango, Visitante&& visitar) const {
    const std::optional<RangoCeldas> recortado = recortar(rango);
    if (!recortado || !raiz_)
        return true;
    const int fila1 = recortado->fila1;
    const int fila2 = recortado->fila2;
    const int col1 = recortado->col1;
    const int col2 = recortado->col2;
    if (col1 == col2) {
        const Columna* columna = buscarColumna(col1);
        return columna == nullptr || recorrerColumna(*columna, col1, fila1, fila2, visitar);
    }

    // De cada nivel se apartan las columnas que tienen algo: las vacías no se vuelven a mirar.
    struct ColumnaVista {
        const Columna* columna;
        int col;
    };
    struct TramoVisto {
        const Tramo* tramo;
        int col;
    };
    std::array<ColumnaVista, G::kColumnas> columnas;
    std::array<TramoVisto, G::kColumnas> tramos;
    std::array<BloqueEnBanda, G::kColumnas> bloques;

    std::size_t cuantasColumnas = 0;
    Mascara tramosPresentes = 0;
    recorrerColumnas(col1, col2, [&](int col, const Columna& columna) {
        columnas[cuantasColumnas++] = {&columna, col};
        tramosPresentes |= columna.presentes();
        return true;
    });
    tramosPresentes &= bitsEntre(tramoDe(fila1), tramoDe(fila2));

    return porCada(tramosPresentes, [&](int t) {
        const int primerBloque = t << G::kBitsNodo;
        std::size_t cuantosTramos = 0;
        Mascara bloquesPresentes = 0;
        for (std::size_t i = 0; i < cuantasColumnas; ++i) {
            if (const Tramo* tramo = columnas[i].columna->hijo(t)) {
                tramos[cuantosTramos++] = {tramo, columnas[i].col};
                bloquesPresentes |= tramo->presentes();
            }
        }
        bloquesPresentes &=
            bitsEntre(std::max((fila1 >> G::kBitsBloque) - primerBloque, 0),
                      std::min((fila2 >> G::kBitsBloque) - primerBloque, kHijos - 1));
        return porCada(bloquesPresentes, [&](int b) {
            const int primeraFila = (primerBloque + b) << G::kBitsBloque;
            const Mascara pedidas = filasDelBloque(primeraFila, fila1, fila2);
            int cuantos = 0;
            for (std::size_t i = 0; i < cuantosTramos; ++i) {
                const Bloque* bloque = tramos[i].tramo->hijo(b);
                const Mascara filas = bloque != nullptr ? bloque->presentes() & pedidas : 0;
                if (filas != 0)
                    bloques[static_cast<std::size_t>(cuantos++)] = {
                        filas, bloque->celdas() + bloque->antesDe(primerBit(filas)), tramos[i].col};
            }
            return recorrerBanda(bloques.data(), cuantos, primeraFila, visitar);
        });
    });
}

template <typename G>
template <typename Visitante>
bool ArbolCeldas<G>::recorrerColumna(const Columna& columna, int col, int fila1, int fila2,
                                     Visitante& visitar) {
    return recorrerBloques(columna, fila1, fila2, [&](int primeraFila, const Bloque& bloque) {
        Mascara filas = bloque.presentes() & filasDelBloque(primeraFila, fila1, fila2);
        if (filas == 0)
            return true;
        const Celda* celda = bloque.celdas() + bloque.antesDe(primerBit(filas));
        for (; filas != 0; filas &= filas - 1) {
            if (!visitar(primeraFila + primerBit(filas), col, *celda++))
                return false;
        }
        return true;
    });
}

template <typename G>
template <typename Visitante>
bool ArbolCeldas<G>::recorrerBanda(BloqueEnBanda* bloques, int cuantos, int primeraFila,
                                   Visitante& visitar) {
    Mascara filas = 0;
    for (int i = 0; i < cuantos; ++i)
        filas |= bloques[i].filas;
    return porCada(filas, [&](int fila) {
        for (int i = 0; i < cuantos; ++i) {
            BloqueEnBanda& bloque = bloques[i];
            if ((bloque.filas >> fila & 1) != 0 &&
                !visitar(primeraFila + fila, bloque.col, *bloque.siguiente++))
                return false;
        }
        return true;
    });
}

} // namespace nucleo
