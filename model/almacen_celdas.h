#pragma once

#include "model/celda.h"
#include "model/limites.h"
#include "model/rango.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace nucleo {

/// Las celdas de una hoja por `claveLocal`, con la interfaz de un mapa.
class AlmacenCeldas {
    using Mapa = std::map<std::uint64_t, Celda>;

  public:
    using key_type = std::uint64_t;
    using mapped_type = Celda;
    using size_type = std::size_t;
    using iterator = Mapa::iterator;
    using const_iterator = Mapa::const_iterator;

    iterator begin() { return celdas_.begin(); }
    iterator end() { return celdas_.end(); }
    const_iterator begin() const { return celdas_.begin(); }
    const_iterator end() const { return celdas_.end(); }
    const_iterator cbegin() const { return celdas_.begin(); }
    const_iterator cend() const { return celdas_.end(); }

    std::size_t size() const { return celdas_.size(); }
    bool empty() const { return celdas_.empty(); }
    void clear() { celdas_.clear(); }
    void reserve(std::size_t) {}
    void swap(AlmacenCeldas& otro) noexcept { celdas_.swap(otro.celdas_); }
    friend void swap(AlmacenCeldas& a, AlmacenCeldas& b) noexcept { a.swap(b); }

    iterator find(std::uint64_t clave) { return celdas_.find(clave); }
    const_iterator find(std::uint64_t clave) const { return celdas_.find(clave); }
    std::size_t count(std::uint64_t clave) const { return celdas_.count(clave); }
    bool contains(std::uint64_t clave) const { return celdas_.contains(clave); }
    /// Lanza std::out_of_range si no existe.
    Celda& at(std::uint64_t clave) { return celdas_.at(clave); }
    const Celda& at(std::uint64_t clave) const { return celdas_.at(clave); }
    Celda& operator[](std::uint64_t clave) { return celdas_[clave]; }

    std::size_t erase(std::uint64_t clave) { return celdas_.erase(clave); }
    iterator erase(const_iterator posicion) { return celdas_.erase(posicion); }
    std::pair<iterator, bool> emplace(std::uint64_t clave, Celda celda) {
        return celdas_.try_emplace(clave, std::move(celda));
    }
    template <typename... Argumentos>
    std::pair<iterator, bool> try_emplace(std::uint64_t clave, Argumentos&&... argumentos) {
        return celdas_.try_emplace(clave, std::forward<Argumentos>(argumentos)...);
    }
    std::pair<iterator, bool> insert_or_assign(std::uint64_t clave, Celda celda) {
        return celdas_.insert_or_assign(clave, std::move(celda));
    }

    bool operator==(const AlmacenCeldas&) const = default;

    /// La celda, o nulo. Es el camino rápido de quien solo lee.
    const Celda* buscar(int fila, int col) const {
        const auto it = celdas_.find(claveLocal(fila, col));
        return it == celdas_.end() ? nullptr : &it->second;
    }
    /// Escribe el valor calculado de una celda que existe, sin tocar nada más de ella. Nada si
    /// no existe.
    void ponerValor(int fila, int col, Valor valor);

    /// Llama a `visitar(fila, col, const Celda&)` por filas con las celdas del rectángulo que
    /// existen; se detiene, con falso, en cuanto `visitar` devuelve falso. `visitar` no escribe en
    /// este almacén.
    template <typename Visitante>
    bool recorrerPorFilas(const RangoCeldas& rango, Visitante&& visitar) const {
        for (const auto& [clave, celda] : celdas_) {
            const int fila = filaDeClaveLocal(clave);
            const int col = columnaDeClaveLocal(clave);
            if (rango.contiene(fila, col) && !visitar(fila, col, celda))
                return false;
        }
        return true;
    }
    /// Llama a `visitar(fila, col, const Celda&)` con cada fórmula de la cuadrícula, en orden
    /// estable.
    template <typename Visitante> void recorrerFormulas(Visitante&& visitar) const {
        for (const auto& [clave, celda] : celdas_) {
            if (celda.tipo == TipoCelda::Formula)
                visitar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave), celda);
        }
    }
    /// Llama a `visitar(clave, const Celda&)` con todas, también las de fuera de la cuadrícula.
    template <typename Visitante> void recorrer(Visitante&& visitar) const {
        for (const auto& [clave, celda] : celdas_)
            visitar(clave, celda);
    }

    /// Celdas que existen dentro del rectángulo.
    std::size_t contarEn(const RangoCeldas& rango) const;
    void quitarRango(const RangoCeldas& rango);

    /// Abre (delta > 0) o quita (delta < 0) filas desde `desde`; lo que sale de la cuadrícula se
    /// pierde.
    void desplazarFilas(int desde, int delta);
    void desplazarColumnas(int desde, int delta);

    /// Pone en `valor` el literal de las celdas que aún no lo tienen, como tras abrir un archivo.
    void completarLiterales();

    /// Última fila o columna con contenido; -1 si no hay. Las celdas con solo formato no cuentan.
    int ultimaFilaConContenido() const;
    int ultimaColConContenido() const;

  private:
    void desplazar(bool filas, int desde, int delta);

    Mapa celdas_;
};

} // namespace nucleo
