#pragma once

#include "model/bloque_celdas.h"
#include "model/celda.h"
#include "model/limites.h"
#include "model/nodo_celdas.h"
#include "model/rango.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace nucleo {

/// Forma del árbol de una hoja. Las pruebas usan otras más pequeñas para pasar a menudo por los
/// bordes.
struct GeometriaHoja {
    static constexpr int kFilas = nucleo::kFilas;
    static constexpr int kColumnas = nucleo::kColumnas;
    static constexpr int kBitsBloque = 6; ///< un bloque son 2^6 filas
    static constexpr int kBitsNodo = 5;   ///< cada nodo tiene 2^5 hijos
};

/// Una celda de la cuadrícula por su sitio.
struct Posicion {
    int fila = 0;
    int col = 0;
};

/// Lo que se ve en un rectángulo: cuántas celdas tienen contenido y qué números hay.
struct ResumenRango {
    std::size_t conContenido = 0;
    std::size_t numeros = 0;
    double suma = 0;
};

/// Las celdas de dentro de la cuadrícula, en un árbol de forma fija cuyas partes se comparten
/// entre copias:
///
///     raíz -> franja (columnas seguidas) -> columna -> tramo -> bloque (filas de una columna)
///
/// Copiarlo cuesta un contador; escribir en una celda copia, de su camino, lo que esté compartido.
/// No quedan nodos ni bloques vacíos. Las filas y columnas que recibe están en la cuadrícula.
template <typename G> class ArbolCeldas {
  public:
    using Bloque = BloqueCeldas<G::kBitsBloque>;

    std::size_t cuenta() const { return raiz_ ? raiz_->celdas : 0; }

    static bool dentro(int fila, int col) {
        return static_cast<unsigned>(fila) < static_cast<unsigned>(G::kFilas) &&
               static_cast<unsigned>(col) < static_cast<unsigned>(G::kColumnas);
    }

    const Celda* buscar(int fila, int col) const {
        const Columna* columna = buscarColumna(col);
        const Tramo* tramo = columna != nullptr ? columna->hijo(tramoDe(fila)) : nullptr;
        const Bloque* bloque = tramo != nullptr ? tramo->hijo(bloqueDe(fila)) : nullptr;
        return bloque != nullptr ? bloque->buscar(enBloque(fila)) : nullptr;
    }

    /// La celda para escribir en ella, creada si falta. Vale hasta la siguiente operación.
    Celda& abrir(int fila, int col);
    /// Cambia el valor de una celda que existe.
    void ponerValor(int fila, int col, const Valor& valor);
    /// Falso si no existía.
    bool quitar(int fila, int col);
    void quitarRango(const RangoCeldas& rango);

    /// Abre o quita filas o columnas desde `desde`; lo que sale de la cuadrícula se pierde.
    void desplazarFilas(std::int64_t desde, std::int64_t delta);
    void desplazarColumnas(std::int64_t desde, std::int64_t delta);

    /// Aplica `cambio` a las celdas del rectángulo, creadas las que faltan. Con celdas iguales hace
    /// siempre lo mismo: no se llama una vez por cada una.
    void cambiarRango(const RangoCeldas& rango, const std::function<void(Celda&)>& cambio);

    void completarLiterales();

    /// Última fila o columna con contenido; -1 si no hay.
    int ultimaFilaConContenido() const;
    int ultimaColConContenido() const;
    std::size_t contarEn(const RangoCeldas& rango) const;
    ResumenRango resumir(const RangoCeldas& rango) const;

    /// La primera celda en esa posición o después, columna a columna; nada si no hay.
    std::optional<Posicion> primeraDesde(int fila, int col) const;

    /// Llama a `visitar(fila, col, const Celda&)` con todas, columna a columna.
    template <typename Visitante> void recorrer(Visitante&& visitar) const;
    template <typename Visitante> void recorrerFormulas(Visitante&& visitar) const;
    /// Por filas, con las del rectángulo, hasta que `visitar` devuelve falso.
    template <typename Visitante>
    bool recorrerPorFilas(const RangoCeldas& rango, Visitante&& visitar) const;

    bool operator==(const ArbolCeldas& otro) const;

    /// Comprueba las cuentas, las máscaras y que no haya partes vacías.
    bool comprobar() const;

  private:
    template <typename> friend class AnexadorCeldas;
    template <typename> friend class CambiadorDeRango;

    static constexpr int kFilasBloque = Bloque::kFilas;
    static constexpr int kHijos = 1 << G::kBitsNodo;
    static constexpr int kBloquesColumna = kHijos * kHijos;
    static_assert(kFilasBloque * kBloquesColumna == G::kFilas);
    static_assert(kHijos * kHijos >= G::kColumnas);

    using Tramo = NodoCeldas<Bloque, G::kBitsNodo>;
    using Columna = NodoCeldas<Tramo, G::kBitsNodo>;
    using Franja = NodoCeldas<Columna, G::kBitsNodo>;
    using Raiz = NodoCeldas<Franja, G::kBitsNodo>;

    static constexpr int tramoDe(int fila) { return fila >> (G::kBitsBloque + G::kBitsNodo); }
    static constexpr int bloqueDe(int fila) { return (fila >> G::kBitsBloque) & (kHijos - 1); }
    static constexpr int enBloque(int fila) { return fila & (kFilasBloque - 1); }
    static constexpr int franjaDe(int col) { return col >> G::kBitsNodo; }
    static constexpr int enFranja(int col) { return col & (kHijos - 1); }

    /// Los nodos que llevan a un bloque, todos propios.
    struct Camino {
        Raiz* raiz;
        Franja* franja;
        Columna* columna;
        Tramo* tramo;

        void sumarCeldas(int cuantas) {
            raiz->celdas += static_cast<std::uint32_t>(cuantas);
            franja->celdas += static_cast<std::uint32_t>(cuantas);
            columna->celdas += static_cast<std::uint32_t>(cuantas);
            tramo->celdas += static_cast<std::uint32_t>(cuantas);
        }
    };

    /// Un bloque visto desde una banda de filas: las que interesan y la siguiente celda.
    struct BloqueEnBanda {
        Mascara filas;
        const Celda* siguiente;
        int col;
    };

    const Columna* buscarColumna(int col) const {
        const Franja* franja = raiz_ ? raiz_->hijo(franjaDe(col)) : nullptr;
        return franja != nullptr ? franja->hijo(enFranja(col)) : nullptr;
    }
    const Bloque* buscarBloque(int fila, int col) const;
    /// El bloque de esa posición con sitio para una celda más en esa fila.
    Bloque& bloqueConSitio(Camino& camino, int fila);
    /// Los nodos de esa posición, creados si faltan.
    Camino caminoPropio(int fila, int col);
    void quitarDeBloque(int fila, int col, Mascara filas);
    /// Cambia una columna entera, con nulo para quitarla.
    void ponerColumna(int col, Compartido<Columna> columna);
    /// Llama a `recibir(fila, celda)` con las de una fila en adelante; las que no comparte nadie
    /// se entregan para moverlas.
    template <typename Recibir>
    static void vaciarColumna(Compartido<Columna>& columna, int primera, Recibir&& recibir);

    /// Recorta a la cuadrícula; vacío si no queda nada.
    static std::optional<RangoCeldas> recortar(const RangoCeldas& rango);
    /// Las filas de un bloque que están entre dos filas de la hoja.
    static Mascara filasDelBloque(int primeraDelBloque, int fila1, int fila2) {
        return bitsEntre(std::max(fila1 - primeraDelBloque, 0),
                         std::min(fila2 - primeraDelBloque, kFilasBloque - 1));
    }
    template <typename Visitante> static bool porCada(Mascara hijos, Visitante&& visitar) {
        for (; hijos != 0; hijos &= hijos - 1) {
            if (!visitar(primerBit(hijos)))
                return false;
        }
        return true;
    }
    /// Llama a `visitar(col, const Columna&)` hasta que devuelve falso.
    template <typename Visitante>
    bool recorrerColumnas(int col1, int col2, Visitante&& visitar) const;
    /// Llama a `visitar(primeraFila, const Bloque&)` con los bloques que tocan esas filas.
    template <typename Visitante>
    static bool recorrerBloques(const Columna& columna, int fila1, int fila2, Visitante&& visitar);
    template <typename Visitante>
    static bool recorrerColumna(const Columna& columna, int col, int fila1, int fila2,
                                Visitante& visitar);
    template <typename Visitante>
    static bool recorrerBanda(BloqueEnBanda* bloques, int cuantos, int primeraFila,
                              Visitante& visitar);

    Compartido<Raiz> raiz_;
};

template <typename G>
std::optional<RangoCeldas> ArbolCeldas<G>::recortar(const RangoCeldas& rango) {
    const RangoCeldas dentroDeLaHoja{std::max(rango.fila1, 0), std::max(rango.col1, 0),
                                     std::min(rango.fila2, G::kFilas - 1),
                                     std::min(rango.col2, G::kColumnas - 1)};
    if (dentroDeLaHoja.fila1 > dentroDeLaHoja.fila2 || dentroDeLaHoja.col1 > dentroDeLaHoja.col2)
        return std::nullopt;
    return dentroDeLaHoja;
}

} // namespace nucleo

#include "model/arbol_recorridos.h"
