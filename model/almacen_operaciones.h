#pragma once

#include "model/almacen_celdas.h"
#include "model/arbol_cambios.h"
#include "model/arbol_consultas.h"
#include "model/arbol_operaciones.h"

#include <algorithm>
#include <stdexcept>

/// Lo que AlmacenEnBloques hace fuera de los caminos rápidos. Solo lo incluye quien lo instancia.
namespace nucleo {

template <typename G> const Celda* AlmacenEnBloques<G>::buscarFuera(std::uint64_t clave) const {
    const auto it = fuera_.celdas().find(clave);
    return it == fuera_.celdas().end() ? nullptr : &it->second;
}

template <typename G> const Celda& AlmacenEnBloques<G>::at(std::uint64_t clave) const {
    const Celda* celda = buscar(clave);
    if (celda == nullptr)
        throw std::out_of_range("no hay celda con esa clave");
    return *celda;
}

template <typename G> Celda& AlmacenEnBloques<G>::at(std::uint64_t clave) {
    static_cast<void>(std::as_const(*this).at(clave));
    return (*this)[clave];
}

template <typename G> Celda& AlmacenEnBloques<G>::operator[](std::uint64_t clave) {
    return dentro(clave) ? arbol_.abrir(filaDeClaveLocal(clave), columnaDeClaveLocal(clave))
                         : fuera_.propias()[clave];
}

template <typename G> std::size_t AlmacenEnBloques<G>::erase(std::uint64_t clave) {
    if (dentro(clave))
        return arbol_.quitar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave)) ? 1 : 0;
    return buscarFuera(clave) != nullptr ? fuera_.propias().erase(clave) : 0;
}

template <typename G> auto AlmacenEnBloques<G>::erase(const_iterator posicion) -> iterator {
    const std::uint64_t clave = *posicion.clave();
    const std::optional<std::uint64_t> siguiente = claveSiguiente(clave);
    erase(clave);
    return {*this, siguiente};
}

template <typename G> bool AlmacenEnBloques<G>::ponerValor(int fila, int col, const Valor& valor) {
    const Celda* celda = buscar(fila, col);
    // Volver a escribir lo mismo separaría los bloques que el historial comparte.
    if (celda == nullptr || indistinguibles(celda->valor, valor))
        return false;
    if (Arbol::dentro(fila, col))
        arbol_.ponerValor(fila, col, valor);
    else
        fuera_.propias()[claveLocal(fila, col)].valor = valor;
    return true;
}

template <typename G> void AlmacenEnBloques<G>::quitarRango(const RangoCeldas& rango) {
    arbol_.quitarRango(rango);
    fuera_.quitarRango(rango);
}

template <typename G> void AlmacenEnBloques<G>::desplazarFilas(int desde, int delta) {
    if (delta == 0)
        return;
    arbol_.desplazarFilas(desde, delta);
    desplazarFuera(true, desde, delta);
}

template <typename G> void AlmacenEnBloques<G>::desplazarColumnas(int desde, int delta) {
    if (delta == 0)
        return;
    arbol_.desplazarColumnas(desde, delta);
    desplazarFuera(false, desde, delta);
}

template <typename G>
void AlmacenEnBloques<G>::desplazarFuera(bool filas, std::int64_t desde, std::int64_t delta) {
    if (fuera_.celdas().empty())
        return;
    const CeldasFuera anteriores = std::move(fuera_);
    fuera_ = {};
    const std::int64_t ultima = (filas ? G::kFilas : G::kColumnas) - 1;
    for (const auto& [clave, celda] : anteriores.celdas()) {
        std::int64_t fila = filaDeClaveLocal(clave);
        std::int64_t col = columnaDeClaveLocal(clave);
        std::int64_t& coordenada = filas ? fila : col;
        if (coordenada >= desde) {
            coordenada += delta;
            const bool seQuita = delta < 0 ? coordenada < desde : coordenada > ultima;
            if (seQuita)
                continue;
        }
        // Al quitar filas, una celda de más abajo de la cuadrícula puede entrar en ella.
        (*this)[claveLocal(static_cast<int>(fila), static_cast<int>(col))] = celda;
    }
}

template <typename G> void AlmacenEnBloques<G>::completarLiterales() {
    arbol_.completarLiterales();
    fuera_.completarLiterales();
}

template <typename G> int AlmacenEnBloques<G>::ultimaFilaConContenido() const {
    return std::max(arbol_.ultimaFilaConContenido(), fuera_.ultimaFilaConContenido());
}

template <typename G> int AlmacenEnBloques<G>::ultimaColConContenido() const {
    return std::max(arbol_.ultimaColConContenido(), fuera_.ultimaColConContenido());
}

template <typename G> Celda& AlmacenEnBloques<G>::Anexador::anexar(std::uint64_t clave) {
    if (dentro(clave))
        return anexador_.anexar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave));
    Celda& celda = almacen_.fuera_.propias()[clave];
    celda = Celda();
    return celda;
}

template <typename G>
std::optional<std::uint64_t> AlmacenEnBloques<G>::claveDesde(Posicion posicion) const {
    if (const std::optional<Posicion> hallada = arbol_.primeraDesde(posicion.fila, posicion.col))
        return claveLocal(hallada->fila, hallada->col);
    const auto primera = fuera_.celdas().begin();
    return primera == fuera_.celdas().end() ? std::nullopt : std::optional(primera->first);
}

template <typename G>
std::optional<std::uint64_t> AlmacenEnBloques<G>::claveSiguiente(std::uint64_t clave) const {
    if (dentro(clave)) {
        const int fila = filaDeClaveLocal(clave);
        const int col = columnaDeClaveLocal(clave);
        return claveDesde(fila + 1 < G::kFilas ? Posicion{fila + 1, col} : Posicion{0, col + 1});
    }
    const auto siguiente = fuera_.celdas().upper_bound(clave);
    return siguiente == fuera_.celdas().end() ? std::nullopt : std::optional(siguiente->first);
}

template <typename G> bool AlmacenEnBloques<G>::comprobar() const {
    return arbol_.comprobar() && std::none_of(fuera_.celdas().begin(), fuera_.celdas().end(),
                                              [](const auto& par) { return dentro(par.first); });
}

} // namespace nucleo
