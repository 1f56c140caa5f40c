#pragma once

#include "model/anexador_celdas.h"
#include "model/arbol_celdas.h"
#include "model/celda.h"
#include "model/celdas_fuera.h"
#include "model/iterador_celdas.h"
#include "model/rango.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace nucleo {

/// Las celdas de una hoja por `claveLocal`, con la interfaz de un mapa. Copiarlo cuesta dos
/// contadores y las copias comparten los bloques que ninguna ha cambiado; `docs/almacen_celdas.md`
/// cuenta cómo.
///
/// Una referencia o un iterador para escribir se pide, se usa y se suelta: deja de valer con la
/// siguiente operación que añada o quite celdas o que copie el almacén. Recorrerlo sin `const`
/// aparta cada bloque de las copias: quien solo lee usa `recorrer`, `buscar` o `std::as_const`.
///
/// El orden es fijo: columna a columna, de arriba abajo, y al final las claves que no caen en la
/// cuadrícula.
template <typename G> class AlmacenEnBloques {
  public:
    using key_type = std::uint64_t;
    using mapped_type = Celda;
    using value_type = std::pair<const std::uint64_t, Celda>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using iterator = IteradorCeldas<AlmacenEnBloques>;
    using const_iterator = IteradorCeldas<const AlmacenEnBloques>;

    iterator begin() { return {*this, primeraClave()}; }
    iterator end() { return {*this, std::nullopt}; }
    const_iterator begin() const { return {*this, primeraClave()}; }
    const_iterator end() const { return {*this, std::nullopt}; }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }

    std::size_t size() const { return arbol_.cuenta() + fuera_.celdas().size(); }
    bool empty() const { return size() == 0; }
    void clear() { *this = AlmacenEnBloques(); }
    /// No hace falta reservar; está por quien lo usa como un mapa.
    void reserve(std::size_t /*celdas*/) {}
    void swap(AlmacenEnBloques& otro) noexcept { std::swap(*this, otro); }

    iterator find(std::uint64_t clave) { return {*this, claveSiExiste(clave)}; }
    const_iterator find(std::uint64_t clave) const { return {*this, claveSiExiste(clave)}; }
    std::size_t count(std::uint64_t clave) const { return contains(clave) ? 1 : 0; }
    bool contains(std::uint64_t clave) const { return buscar(clave) != nullptr; }
    /// Lanza std::out_of_range si no existe.
    const Celda& at(std::uint64_t clave) const;
    Celda& at(std::uint64_t clave);
    /// La celda para escribir en ella, creada si falta.
    Celda& operator[](std::uint64_t clave);

    std::size_t erase(std::uint64_t clave);
    /// Quita la celda y devuelve la posición siguiente.
    iterator erase(const_iterator posicion);
    template <typename Dato = Celda>
    std::pair<iterator, bool> try_emplace(std::uint64_t clave, Dato&& celda = Dato()) {
        const bool nueva = !contains(clave);
        if (nueva)
            (*this)[clave] = std::forward<Dato>(celda);
        return {iterator(*this, clave), nueva};
    }
    std::pair<iterator, bool> emplace(std::uint64_t clave, Celda celda) {
        return try_emplace(clave, std::move(celda));
    }
    std::pair<iterator, bool> insert(value_type par) {
        return try_emplace(par.first, std::move(par.second));
    }
    template <typename Dato = Celda>
    std::pair<iterator, bool> insert_or_assign(std::uint64_t clave, Dato&& celda) {
        const bool nueva = !contains(clave);
        (*this)[clave] = std::forward<Dato>(celda);
        return {iterator(*this, clave), nueva};
    }

    bool operator==(const AlmacenEnBloques&) const = default;

    /// La celda, o nulo. Es el camino rápido de quien solo lee.
    const Celda* buscar(int fila, int col) const {
        return Arbol::dentro(fila, col) ? arbol_.buscar(fila, col)
                                        : buscarFuera(claveLocal(fila, col));
    }
    const Celda* buscar(std::uint64_t clave) const {
        return buscar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave));
    }
    /// Escribe el valor calculado de una celda, sin tocar nada más de ella. Falso, sin apartar
    /// ningún bloque, si ya era ese o la celda no existe.
    bool ponerValor(int fila, int col, const Valor& valor);

    /// Llama a `visitar(fila, col, const Celda&)` por filas con las celdas del rectángulo que
    /// existen; se detiene, con falso, en cuanto `visitar` devuelve falso. `visitar` no escribe en
    /// este almacén.
    template <typename Visitante>
    bool recorrerPorFilas(const RangoCeldas& rango, Visitante&& visitar) const {
        return arbol_.recorrerPorFilas(rango, visitar);
    }
    /// Llama a `visitar(fila, col, const Celda&)` con cada fórmula, columna a columna; las de fuera
    /// de la cuadrícula, al final. `visitar` no escribe en este almacén.
    template <typename Visitante> void recorrerFormulas(Visitante&& visitar) const {
        arbol_.recorrerFormulas(visitar);
        for (const auto& [clave, celda] : fuera_.celdas()) {
            if (celda.tipo == TipoCelda::Formula)
                visitar(filaDeClaveLocal(clave), columnaDeClaveLocal(clave), celda);
        }
    }
    /// Llama a `visitar(clave, const Celda&)` con todas, también las de fuera de la cuadrícula.
    /// `visitar` no escribe en este almacén.
    template <typename Visitante> void recorrer(Visitante&& visitar) const {
        arbol_.recorrer(
            [&](int fila, int col, const Celda& celda) { visitar(claveLocal(fila, col), celda); });
        for (const auto& [clave, celda] : fuera_.celdas())
            visitar(clave, celda);
    }

    /// Celdas que existen dentro del rectángulo y de la cuadrícula.
    std::size_t contarEn(const RangoCeldas& rango) const { return arbol_.contarEn(rango); }
    /// Cuántas celdas del rectángulo tienen contenido y qué números muestran; mira los bloques que
    /// el rectángulo toca y solo las celdas de los que corta.
    ResumenRango resumir(const RangoCeldas& rango) const { return arbol_.resumir(rango); }
    void quitarRango(const RangoCeldas& rango);
    /// Aplica `cambio` a cada celda del rectángulo y de la cuadrícula, creadas las que faltan.
    /// `cambio` hace siempre lo mismo con celdas iguales, que comparten bloque, y por eso no se
    /// llama una vez por cada una.
    void cambiarRango(const RangoCeldas& rango, const std::function<void(Celda&)>& cambio) {
        arbol_.cambiarRango(rango, cambio);
    }

    /// Abre (delta > 0) o quita (delta < 0) filas desde `desde`; lo que sale de la cuadrícula se
    /// pierde.
    void desplazarFilas(int desde, int delta);
    void desplazarColumnas(int desde, int delta);

    /// Pone en `valor` el literal de las celdas que aún no lo tienen, como tras abrir un archivo.
    /// Cuando no falta ninguno no aparta ningún bloque.
    void completarLiterales();

    /// Última fila o columna con contenido; -1 si no hay. Las celdas con solo formato no cuentan.
    /// Puede pasar de la cuadrícula si un archivo trajo celdas de más allá.
    int ultimaFilaConContenido() const;
    int ultimaColConContenido() const;

    /// Añade celdas en bloque a un almacén; las que llegan en su orden cuestan lo mínimo.
    class Anexador {
      public:
        explicit Anexador(AlmacenEnBloques& almacen)
            : almacen_(almacen), anexador_(almacen.arbol_) {}
        /// La celda de esa clave, recién creada; vale hasta la siguiente llamada.
        Celda& anexar(std::uint64_t clave);
        /// Hasta que se llama, nadie más usa el almacén.
        void terminar() { anexador_.terminar(); }

      private:
        AlmacenEnBloques& almacen_;
        AnexadorCeldas<G> anexador_;
    };

    /// La clave que sigue a una en el orden del almacén; nada si es la última.
    std::optional<std::uint64_t> claveSiguiente(std::uint64_t clave) const;
    /// Comprueba los invariantes del almacén; para pruebas.
    bool comprobar() const;

  private:
    using Arbol = ArbolCeldas<G>;

    static bool dentro(std::uint64_t clave) {
        return Arbol::dentro(filaDeClaveLocal(clave), columnaDeClaveLocal(clave));
    }
    std::optional<std::uint64_t> claveSiExiste(std::uint64_t clave) const {
        return contains(clave) ? std::optional(clave) : std::nullopt;
    }
    std::optional<std::uint64_t> primeraClave() const { return claveDesde({0, 0}); }
    std::optional<std::uint64_t> claveDesde(Posicion posicion) const;
    const Celda* buscarFuera(std::uint64_t clave) const;
    void desplazarFuera(bool filas, std::int64_t desde, std::int64_t delta);

    Arbol arbol_;
    CeldasFuera fuera_;
};

template <typename G> void swap(AlmacenEnBloques<G>& a, AlmacenEnBloques<G>& b) noexcept {
    a.swap(b);
}

/// El almacén de las hojas.
using AlmacenCeldas = AlmacenEnBloques<GeometriaHoja>;

extern template class ArbolCeldas<GeometriaHoja>;
extern template class AnexadorCeldas<GeometriaHoja>;
extern template class AlmacenEnBloques<GeometriaHoja>;

} // namespace nucleo
