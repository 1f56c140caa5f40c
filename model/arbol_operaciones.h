#pragma once

#include "model/anexador_celdas.h"
#include "model/arbol_celdas.h"

#include <vector>

/// Escritura, desplazamiento y comparación de ArbolCeldas. Solo lo incluye quien lo instancia.
namespace nucleo {

template <typename G> auto ArbolCeldas<G>::buscarBloque(int fila, int col) const -> const Bloque* {
    const Columna* columna = buscarColumna(col);
    const Tramo* tramo = columna != nullptr ? columna->hijo(tramoDe(fila)) : nullptr;
    return tramo != nullptr ? tramo->hijo(bloqueDe(fila)) : nullptr;
}

template <typename G> auto ArbolCeldas<G>::caminoPropio(int fila, int col) -> Camino {
    if (!raiz_)
        raiz_ = Compartido<Raiz>(new Raiz);
    Raiz& raiz = raiz_.propio();
    Franja& franja = raiz.propioOCreado(franjaDe(col));
    Columna& columna = franja.propioOCreado(enFranja(col));
    Tramo& tramo = columna.propioOCreado(tramoDe(fila));
    return {&raiz, &franja, &columna, &tramo};
}

template <typename G> auto ArbolCeldas<G>::bloqueConSitio(Camino& camino, int fila) -> Bloque& {
    const int indice = bloqueDe(fila);
    const Compartido<Bloque>& actual = camino.tramo->compartido(indice);
    if (!actual)
        camino.tramo->poner(indice, Compartido<Bloque>(Bloque::crear(1)));
    else if (!actual.unico())
        camino.tramo->poner(indice,
                            Compartido<Bloque>(Bloque::copiar(*actual, actual->cuenta() + 1)));
    else if (actual->cuenta() == actual->capacidad())
        camino.tramo->poner(
            indice, Compartido<Bloque>(camino.tramo->propio(indice).mudar(actual->cuenta() + 1)));
    return camino.tramo->propio(indice);
}

template <typename G> Celda& ArbolCeldas<G>::abrir(int fila, int col) {
    Camino camino = caminoPropio(fila, col);
    const Bloque* bloque = camino.tramo->hijo(bloqueDe(fila));
    if (bloque != nullptr && bloque->tiene(enBloque(fila)))
        return camino.tramo->propio(bloqueDe(fila)).abrir(enBloque(fila));
    Celda& celda = bloqueConSitio(camino, fila).insertar(enBloque(fila));
    camino.sumarCeldas(1);
    return celda;
}

template <typename G> void ArbolCeldas<G>::ponerValor(int fila, int col, const Valor& valor) {
    caminoPropio(fila, col).tramo->propio(bloqueDe(fila)).ponerValor(enBloque(fila), valor);
}

template <typename G> bool ArbolCeldas<G>::quitar(int fila, int col) {
    if (buscar(fila, col) == nullptr)
        return false;
    quitarDeBloque(fila, col, bitDe(enBloque(fila)));
    return true;
}

template <typename G> void ArbolCeldas<G>::quitarDeBloque(int fila, int col, Mascara filas) {
    Camino camino = caminoPropio(fila, col);
    const int indice = bloqueDe(fila);
    const Mascara quitadas = camino.tramo->hijo(indice)->presentes() & filas;
    camino.sumarCeldas(-contarBits(quitadas));
    if (quitadas == camino.tramo->hijo(indice)->presentes()) {
        camino.tramo->poner(indice, {});
    } else {
        Bloque& bloque = camino.tramo->propio(indice);
        bloque.quitar(quitadas);
        if (bloque.cuenta() * 4 <= bloque.capacidad())
            camino.tramo->poner(indice, Compartido<Bloque>(bloque.mudar(bloque.cuenta())));
    }
    if (camino.tramo->celdas == 0)
        camino.columna->poner(tramoDe(fila), {});
    if (camino.columna->celdas == 0)
        camino.franja->poner(enFranja(col), {});
    if (camino.franja->celdas == 0)
        camino.raiz->poner(franjaDe(col), {});
}

template <typename G> void ArbolCeldas<G>::quitarRango(const RangoCeldas& rango) {
    const std::optional<RangoCeldas> recortado = recortar(rango);
    if (!recortado)
        return;
    const int fila1 = recortado->fila1;
    const int fila2 = recortado->fila2;
    std::vector<Posicion> tocados; // se apuntan antes: quitar cambia lo que se recorre
    std::vector<int> enteras;
    recorrerColumnas(recortado->col1, recortado->col2, [&](int col, const Columna& columna) {
        if (fila1 == 0 && fila2 == G::kFilas - 1) {
            enteras.push_back(col);
            return true;
        }
        return recorrerBloques(columna, fila1, fila2, [&](int primeraFila, const Bloque& bloque) {
            if ((bloque.presentes() & filasDelBloque(primeraFila, fila1, fila2)) != 0)
                tocados.push_back({primeraFila, col});
            return true;
        });
    });
    for (const int col : enteras)
        ponerColumna(col, {});
    for (const Posicion& bloque : tocados)
        quitarDeBloque(bloque.fila, bloque.col, filasDelBloque(bloque.fila, fila1, fila2));
}

template <typename G> void ArbolCeldas<G>::ponerColumna(int col, Compartido<Columna> columna) {
    if (!raiz_)
        raiz_ = Compartido<Raiz>(new Raiz);
    Raiz& raiz = raiz_.propio();
    Franja& franja = raiz.propioOCreado(franjaDe(col));
    const Columna* anterior = franja.hijo(enFranja(col));
    const std::uint32_t quitadas = anterior != nullptr ? anterior->celdas : 0;
    const std::uint32_t puestas = columna ? columna->celdas : 0;
    raiz.celdas += puestas - quitadas;
    franja.celdas += puestas - quitadas;
    franja.poner(enFranja(col), std::move(columna));
    if (franja.celdas == 0)
        raiz.poner(franjaDe(col), {});
}

template <typename G>
void ArbolCeldas<G>::desplazarColumnas(std::int64_t desde, std::int64_t delta) {
    if (!raiz_)
        return;
    struct Movida {
        std::int64_t destino;
        Compartido<Columna> columna;
    };
    std::vector<Movida> movidas;
    std::vector<int> origenes;
    recorrerColumnas(0, G::kColumnas - 1, [&](int col, const Columna&) {
        if (col < desde)
            return true;
        origenes.push_back(col);
        const std::int64_t destino = col + delta;
        if (destino >= desde && destino >= 0 && destino < G::kColumnas)
            movidas.push_back({destino, raiz_->hijo(franjaDe(col))->compartido(enFranja(col))});
        return true;
    });
    for (const int col : origenes)
        ponerColumna(col, {});
    for (Movida& movida : movidas)
        ponerColumna(static_cast<int>(movida.destino), std::move(movida.columna));
}

template <typename G> void ArbolCeldas<G>::desplazarFilas(std::int64_t desde, std::int64_t delta) {
    if (desde >= G::kFilas)
        return;
    const int primera = static_cast<int>(std::max<std::int64_t>(desde, 0));
    std::vector<int> afectadas; // se apuntan antes: mover cambia lo que se recorre
    recorrerColumnas(0, G::kColumnas - 1, [&](int col, const Columna& columna) {
        const auto libre = [&](int fila, const Bloque& bloque) {
            return (bloque.presentes() & filasDelBloque(fila, primera, G::kFilas - 1)) == 0;
        };
        if (!recorrerBloques(columna, primera, G::kFilas - 1, libre))
            afectadas.push_back(col);
        return true;
    });
    for (const int col : afectadas) {
        Compartido<Columna> anterior = raiz_->hijo(franjaDe(col))->compartido(enFranja(col));
        quitarRango({primera, col, G::kFilas - 1, col});
        AnexadorCeldas<G> anexador(*this);
        vaciarColumna(anterior, primera, [&](int fila, auto&& celda) {
            const std::int64_t destino = fila + delta;
            if (destino >= desde && destino >= 0 && destino < G::kFilas)
                anexador.anexar(static_cast<int>(destino), col,
                                std::forward<decltype(celda)>(celda));
        });
        anexador.terminar();
    }
}

template <typename G>
template <typename Recibir>
void ArbolCeldas<G>::vaciarColumna(Compartido<Columna>& columna, int primera, Recibir&& recibir) {
    recorrerBloques(*columna, primera, G::kFilas - 1, [&](int primeraFila, const Bloque& bloque) {
        const int t = tramoDe(primeraFila);
        const int b = bloqueDe(primeraFila);
        const Mascara filas =
            bloque.presentes() & filasDelBloque(primeraFila, primera, G::kFilas - 1);
        const int saltadas = bloque.cuenta() - contarBits(filas);
        if (columna.unico() && columna->compartido(t).unico() &&
            columna->hijo(t)->compartido(b).unico()) {
            Celda* celda = columna.propio().propio(t).propio(b).celdasParaMover() + saltadas;
            porCada(filas, [&](int fila) {
                recibir(primeraFila + fila, std::move(*celda++));
                return true;
            });
        } else {
            const Celda* celda = bloque.celdas() + saltadas;
            porCada(filas, [&](int fila) {
                recibir(primeraFila + fila, *celda++);
                return true;
            });
        }
        return true;
    });
}

} // namespace nucleo
