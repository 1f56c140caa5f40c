#pragma once

#include "model/arbol_celdas.h"

namespace nucleo {

/// Añade muchas celdas a un árbol. Las que llegan en el orden en que el árbol se recorre van al
/// final de un bloque holgado que solo entra en el árbol cuando se completa; las demás, y las que
/// repiten sitio, también valen, más despacio. Hasta `terminar`, nadie más usa el árbol.
template <typename G> class AnexadorCeldas {
    using Arbol = ArbolCeldas<G>;
    using Bloque = typename Arbol::Bloque;

  public:
    explicit AnexadorCeldas(Arbol& arbol) : arbol_(arbol) {}

    /// La celda de esa posición, recién construida con lo que se dé; vale hasta la siguiente
    /// llamada.
    template <typename... Datos> Celda& anexar(int fila, int col, Datos&&... datos);
    /// Lleva al árbol el bloque en curso. Sin ella se pierde: puede faltar memoria, y un destructor
    /// no lo podría decir.
    void terminar();

  private:
    /// Asienta el bloque en curso y empieza el de esa posición; falso si el árbol ya lo tiene.
    bool empezarBloque(int fila, int col);

    Arbol& arbol_;
    Compartido<Bloque> bloque_; ///< en curso, o vacío y listo para el siguiente
    int primeraFila_ = -1;      ///< del bloque en curso; -1 si no hay
    int col_ = 0;
};

template <typename G>
template <typename... Datos>
Celda& AnexadorCeldas<G>::anexar(int fila, int col, Datos&&... datos) {
    const bool sigue = fila - Arbol::enBloque(fila) == primeraFila_ && col == col_ &&
                       ultimoBit(bloque_->presentes()) < Arbol::enBloque(fila);
    if (!sigue && !empezarBloque(fila, col)) {
        Celda& celda = arbol_.abrir(fila, col);
        celda = Celda(std::forward<Datos>(datos)...);
        return celda;
    }
    return bloque_.propio().anexar(Arbol::enBloque(fila), std::forward<Datos>(datos)...);
}

template <typename G> bool AnexadorCeldas<G>::empezarBloque(int fila, int col) {
    terminar();
    if (arbol_.buscarBloque(fila, col) != nullptr)
        return false;
    if (!bloque_)
        bloque_ = Compartido<Bloque>(Bloque::crear(Bloque::kFilas));
    primeraFila_ = fila - Arbol::enBloque(fila);
    col_ = col;
    return true;
}

template <typename G> void AnexadorCeldas<G>::terminar() {
    if (primeraFila_ < 0)
        return;
    auto camino = arbol_.caminoPropio(primeraFila_, col_);
    Bloque& bloque = bloque_.propio();
    const int cuantas = bloque.cuenta();
    camino.sumarCeldas(cuantas);
    bloque.actualizarResumen(); // ahora que las celdas están en la memoria caché
    const int indice = Arbol::bloqueDe(primeraFila_);
    primeraFila_ = -1;
    if (cuantas * 4 >= Bloque::kFilas * 3) {
        camino.tramo->poner(indice, std::move(bloque_));
    } else {
        camino.tramo->poner(indice, Compartido<Bloque>(bloque.mudar(cuantas)));
        bloque.quitar(bloque.presentes());
    }
}

} // namespace nucleo
