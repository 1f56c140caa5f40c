#pragma once

#include "model/rango.h"
#include "model/tabla_indices.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace nucleo {

/// Rectángulo normalizado y dentro de la cuadrícula de una hoja.
struct BloqueDeHoja {
    int hoja = 0;
    RangoCeldas rango;

    bool operator==(const BloqueDeHoja&) const = default;
};

/// Los rectángulos distintos que alguna fórmula lee, y cuáles contienen una celda.
///
/// Cada hoja tiene un árbol binario de forma fija sobre las columnas, y cada nodo suyo que se usa,
/// otro sobre las filas. Un rectángulo se apunta en los nodos que lo cubren justo: unas pocas
/// columnas por dos nodos de cada altura como mucho. Los que contienen una celda son los apuntados
/// en el camino de la raíz a la celda. Los árboles de filas se guardan en páginas de cuatro alturas
/// para que el camino entero toque cuatro.
class IndiceRangos {
  public:
    using Id = std::uint32_t; ///< 0 = ninguno

    /// El rectángulo, apuntado si aún no estaba.
    Id obtener(const BloqueDeHoja& bloque);
    void quitar(Id id);
    void vaciar();

    BloqueDeHoja bloque(Id id) const;
    std::size_t cuenta() const { return cuenta_; }
    /// Mayor identificador dado hasta ahora.
    Id ultimo() const { return static_cast<Id>(rectangulos_.size()) - 1; }
    /// Falso si el identificador está libre.
    bool existe(Id id) const { return rectangulos_[id].entradas != 0; }

    /// Llama a `visitar(id)` con cada rectángulo que contiene la celda, una vez.
    template <typename Visitante>
    void visitarQueContienen(int hoja, int fila, int col, Visitante&& visitar) const;

    /// Empieza un recorrido: ningún rectángulo está visto.
    void empezarRecorrido() { ++epoca_; }
    /// Como `visitarQueContienen`, pero solo los que este recorrido no ha visto. Visitar muchas
    /// celdas cuesta los rectángulos distintos y no las parejas de celda y rectángulo.
    template <typename Visitante>
    void visitarNuevos(int hoja, int fila, int col, Visitante&& visitar);

  private:
    static constexpr int kAlturaColumnas = 10; ///< 1024 columnas
    static constexpr int kAlturaPagina = 4;
    static constexpr int kPaginasPorCamino = 4; ///< 65536 filas
    static constexpr std::uint32_t kNodosPagina = 32;
    /// Un rectángulo que se partiera en más columnas se apunta solo por filas y se comprueba al
    /// visitarlo.
    static constexpr int kMaximoColumnas = 8;

    struct Rectangulo {
        std::uint16_t fila1 = 0;
        std::uint16_t fila2 = 0;
        std::uint16_t col1 = 0;
        std::uint16_t col2 = 0;
        std::int32_t hoja = 0;
        std::uint32_t entradas = 0; ///< primera de sus entradas; 0 = libre
        std::uint32_t epoca = 0;    ///< recorrido que lo vio por última vez
    };
    /// Apunte de un rectángulo en un nodo.
    struct Entrada {
        Id rectangulo = 0;
        std::uint32_t siguiente = 0; ///< en el nodo
        std::uint32_t anterior = 0;  ///< en el nodo; 0 = es la primera
        std::uint32_t hermana = 0;   ///< del mismo rectángulo
        std::uint32_t lugar = 0;     ///< página × kNodosPagina + nodo
    };
    /// Cuatro alturas de un árbol de filas: nodos 2..31 numerados como un montículo, y debajo de
    /// los 16 últimos otras tantas páginas.
    struct Pagina {
        std::uint32_t presentes = 0; ///< nodos con apuntes
        std::uint32_t vistos = 0;    ///< nodos ya recorridos en `epoca`
        std::uint32_t epoca = 0;
        std::array<std::uint32_t, kNodosPagina> primeras{};
        std::array<std::uint32_t, 16> hijas{};
    };
    struct Plano {
        std::uint32_t alturasUsadas = 0; ///< bit por altura del árbol de columnas
        std::array<std::uint32_t, std::size_t{2} << kAlturaColumnas> raices{};
    };

    /// Nodos de una página en el camino hacia cada uno de sus 16 tramos.
    static constexpr std::array<std::uint32_t, 16> kCaminos = [] {
        std::array<std::uint32_t, 16> caminos{};
        for (std::uint32_t tramo = 0; tramo < 16; ++tramo) {
            for (std::uint32_t nodo = 16 + tramo; nodo > 1; nodo /= 2)
                caminos[tramo] |= 1U << nodo;
        }
        return caminos;
    }();

    /// Llama a `visitar(altura, pagina, nodos)` con cada página del camino a la celda y los nodos
    /// de la página que están en él y tienen apuntes.
    template <typename Visitante>
    void recorrerCamino(int hoja, int fila, int col, Visitante&& visitar) const;

    static std::uint32_t mezcla(const BloqueDeHoja& bloque);
    void apuntar(Id id);
    void apuntarEnColumna(Id id, Plano& plano, std::uint32_t nodoColumna);
    void apuntarEnNodo(Id id, std::uint32_t raiz, std::uint32_t nodoFila);
    std::uint32_t nuevaPagina();

    std::vector<Rectangulo> rectangulos_{1};
    std::vector<Id> libres_;
    std::vector<Entrada> entradas_{1};
    std::uint32_t entradaLibre_ = 0; ///< encadenadas por `siguiente`
    std::vector<Pagina> paginas_{1};
    std::vector<std::unique_ptr<Plano>> planos_; ///< por hoja
    TablaIndices tabla_;
    std::size_t cuenta_ = 0;
    std::uint32_t epoca_ = 0;
};

template <typename Visitante>
void IndiceRangos::recorrerCamino(int hoja, int fila, int col, Visitante&& visitar) const {
    if (static_cast<std::size_t>(hoja) >= planos_.size() ||
        !planos_[static_cast<std::size_t>(hoja)])
        return;
    const Plano& plano = *planos_[static_cast<std::size_t>(hoja)];
    for (std::uint32_t alturas = plano.alturasUsadas; alturas != 0; alturas &= alturas - 1) {
        const int altura = std::countr_zero(alturas);
        const std::uint32_t nodoColumna =
            (1U << altura) | (static_cast<std::uint32_t>(col) >> (kAlturaColumnas - altura));
        std::uint32_t pagina = plano.raices[nodoColumna];
        for (int bajada = kAlturaPagina * (kPaginasPorCamino - 1); pagina != 0;
             bajada -= kAlturaPagina) {
            const std::size_t tramo = (static_cast<std::uint32_t>(fila) >> bajada) & 15U;
            const std::uint32_t siguiente = paginas_[pagina].hijas[tramo];
            visitar(altura, pagina, paginas_[pagina].presentes & kCaminos[tramo]);
            pagina = siguiente;
        }
    }
}

template <typename Visitante>
void IndiceRangos::visitarQueContienen(int hoja, int fila, int col, Visitante&& visitar) const {
    recorrerCamino(hoja, fila, col, [&](int, std::uint32_t pagina, std::uint32_t nodos) {
        for (; nodos != 0; nodos &= nodos - 1) {
            const auto nodo = static_cast<std::size_t>(std::countr_zero(nodos));
            for (std::uint32_t e = paginas_[pagina].primeras[nodo]; e != 0;
                 e = entradas_[e].siguiente) {
                const Rectangulo& r = rectangulos_[entradas_[e].rectangulo];
                if (r.col1 <= col && col <= r.col2)
                    visitar(entradas_[e].rectangulo);
            }
        }
    });
}

template <typename Visitante>
void IndiceRangos::visitarNuevos(int hoja, int fila, int col, Visitante&& visitar) {
    recorrerCamino(hoja, fila, col, [&](int altura, std::uint32_t indice, std::uint32_t nodos) {
        if (nodos == 0)
            return;
        Pagina& pagina = paginas_[indice];
        if (pagina.epoca != epoca_) {
            pagina.epoca = epoca_;
            pagina.vistos = 0;
        }
        nodos &= ~pagina.vistos;
        // En la raíz de las columnas hay rectángulos que no contienen esta columna y que otra celda
        // aún puede necesitar: sus nodos nunca se dan por recorridos.
        if (altura != 0)
            pagina.vistos |= nodos;
        for (; nodos != 0; nodos &= nodos - 1) {
            const auto nodo = static_cast<std::size_t>(std::countr_zero(nodos));
            for (std::uint32_t e = pagina.primeras[nodo]; e != 0; e = entradas_[e].siguiente) {
                Rectangulo& r = rectangulos_[entradas_[e].rectangulo];
                if (r.epoca == epoca_ || col < r.col1 || r.col2 < col)
                    continue;
                r.epoca = epoca_;
                visitar(entradas_[e].rectangulo);
            }
        }
    });
}

} // namespace nucleo
