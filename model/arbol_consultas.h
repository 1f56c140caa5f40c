#pragma once

#include "model/arbol_celdas.h"

#include <vector>

/// Preguntas a ArbolCeldas que se responden con los resúmenes de los bloques. Solo lo incluye quien
/// lo instancia.
namespace nucleo {

template <typename G> void ArbolCeldas<G>::completarLiterales() {
    std::vector<Posicion> incompletos; // se apuntan antes: escribir cambia lo que se recorre
    recorrerColumnas(0, G::kColumnas - 1, [&](int col, const Columna& columna) {
        return recorrerBloques(columna, 0, G::kFilas - 1, [&](int fila, const Bloque& bloque) {
            if (bloque.literalesIncompletos() != 0)
                incompletos.push_back({fila, col});
            return true;
        });
    });
    for (const auto [fila, col] : incompletos)
        caminoPropio(fila, col).tramo->propio(bloqueDe(fila)).completarLiterales();
}

template <typename G> int ArbolCeldas<G>::ultimaFilaConContenido() const {
    int ultima = -1;
    const auto deColumna = [&](int, const Columna& columna) {
        for (Mascara tramos = columna.presentes(); tramos != 0;) {
            const int t = ultimoBit(tramos);
            tramos &= ~bitDe(t);
            const Tramo& tramo = *columna.hijo(t);
            for (Mascara bloques = tramo.presentes(); bloques != 0;) {
                const int b = ultimoBit(bloques);
                bloques &= ~bitDe(b);
                const int primeraFila = ((t << G::kBitsNodo) + b) << G::kBitsBloque;
                if (primeraFila + kFilasBloque - 1 <= ultima)
                    return true;
                if (const Mascara filas = tramo.hijo(b)->conContenido()) {
                    ultima = std::max(ultima, primeraFila + ultimoBit(filas));
                    return true;
                }
            }
        }
        return true;
    };
    recorrerColumnas(0, G::kColumnas - 1, deColumna);
    return ultima;
}

template <typename G> int ArbolCeldas<G>::ultimaColConContenido() const {
    const auto sinContenido = [](int, const Bloque& bloque) { return bloque.conContenido() == 0; };
    for (int col = G::kColumnas - 1; col >= 0; --col) {
        const Columna* columna = buscarColumna(col);
        if (columna != nullptr && !recorrerBloques(*columna, 0, G::kFilas - 1, sinContenido))
            return col;
    }
    return -1;
}

template <typename G> std::size_t ArbolCeldas<G>::contarEn(const RangoCeldas& rango) const {
    const std::optional<RangoCeldas> recortado = recortar(rango);
    if (!recortado)
        return 0;
    const int fila1 = recortado->fila1;
    const int fila2 = recortado->fila2;
    std::size_t total = 0;
    recorrerColumnas(recortado->col1, recortado->col2, [&](int, const Columna& columna) {
        if (fila1 == 0 && fila2 == G::kFilas - 1) {
            total += columna.celdas;
            return true;
        }
        return recorrerBloques(columna, fila1, fila2, [&](int fila, const Bloque& bloque) {
            const Mascara filas = bloque.presentes() & filasDelBloque(fila, fila1, fila2);
            total += static_cast<std::size_t>(contarBits(filas));
            return true;
        });
    });
    return total;
}

template <typename G> ResumenRango ArbolCeldas<G>::resumir(const RangoCeldas& rango) const {
    ResumenRango total;
    const std::optional<RangoCeldas> recortado = recortar(rango);
    if (!recortado)
        return total;
    const int fila1 = recortado->fila1;
    const int fila2 = recortado->fila2;
    const auto sumarBloque = [&](int primeraFila, const Bloque& bloque) {
        const Mascara pedidas = filasDelBloque(primeraFila, fila1, fila2);
        total.conContenido += static_cast<std::size_t>(contarBits(bloque.conContenido() & pedidas));
        NumerosVistos numeros;
        if ((bloque.presentes() & ~pedidas) == 0)
            numeros = bloque.numeros();
        else
            porCada(bloque.presentes() & pedidas, [&](int fila) {
                numeros.sumar(*bloque.buscar(fila));
                return true;
            });
        total.numeros += static_cast<std::size_t>(numeros.cuenta);
        total.suma += numeros.suma;
        return true;
    };
    recorrerColumnas(recortado->col1, recortado->col2, [&](int, const Columna& columna) {
        return recorrerBloques(columna, fila1, fila2, sumarBloque);
    });
    return total;
}

template <typename G>
std::optional<Posicion> ArbolCeldas<G>::primeraDesde(int fila, int col) const {
    std::optional<Posicion> encontrada;
    const auto mirarColumna = [&](int c, const Columna& columna, int desde) {
        return recorrerBloques(
            columna, desde, G::kFilas - 1, [&](int primeraFila, const Bloque& bloque) {
                const Mascara filas =
                    bloque.presentes() & filasDelBloque(primeraFila, desde, G::kFilas - 1);
                if (filas != 0)
                    encontrada = {primeraFila + primerBit(filas), c};
                return filas == 0;
            });
    };
    if (!dentro(fila, col))
        return encontrada;
    recorrerColumnas(col, G::kColumnas - 1, [&](int c, const Columna& columna) {
        return mirarColumna(c, columna, c == col ? fila : 0);
    });
    return encontrada;
}

/// Lo que es el mismo objeto es igual sin mirarlo.
template <int Bits> bool igualContenido(const BloqueCeldas<Bits>& a, const BloqueCeldas<Bits>& b) {
    return &a == &b || (a.presentes() == b.presentes() &&
                        std::equal(a.celdas(), a.celdas() + a.cuenta(), b.celdas()));
}

template <typename Hijo, int Bits>
bool igualContenido(const NodoCeldas<Hijo, Bits>& a, const NodoCeldas<Hijo, Bits>& b) {
    if (&a == &b)
        return true;
    if (a.presentes() != b.presentes() || a.celdas != b.celdas)
        return false;
    for (Mascara quedan = a.presentes(); quedan != 0; quedan &= quedan - 1) {
        const int i = primerBit(quedan);
        if (!igualContenido(*a.hijo(i), *b.hijo(i)))
            return false;
    }
    return true;
}

template <typename G> bool ArbolCeldas<G>::operator==(const ArbolCeldas& otro) const {
    if (cuenta() != otro.cuenta())
        return false;
    return cuenta() == 0 || igualContenido(*raiz_, *otro.raiz_);
}

template <int Bits> bool comprobarParte(const BloqueCeldas<Bits>& bloque, std::size_t& celdas) {
    celdas += static_cast<std::size_t>(bloque.cuenta());
    return bloque.referencias > 0 && bloque.cuenta() > 0 && bloque.resumenCierto();
}

template <typename Hijo, int Bits>
bool comprobarParte(const NodoCeldas<Hijo, Bits>& nodo, std::size_t& celdas) {
    std::size_t debajo = 0;
    for (int i = 0; i < NodoCeldas<Hijo, Bits>::kHijos; ++i) {
        const Hijo* hijo = nodo.hijo(i);
        if ((hijo != nullptr) != ((nodo.presentes() >> i & 1) != 0))
            return false;
        if (hijo != nullptr && !comprobarParte(*hijo, debajo))
            return false;
    }
    celdas += debajo;
    return nodo.referencias > 0 && debajo > 0 && debajo == nodo.celdas;
}

template <typename G> bool ArbolCeldas<G>::comprobar() const {
    std::size_t celdas = 0;
    return cuenta() == 0 || comprobarParte(*raiz_, celdas);
}

} // namespace nucleo
