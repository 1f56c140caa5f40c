#pragma once

#include "rendering/eje_vista.h"

#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

namespace renderizador {

/// Una fila o columna que ocupa algún píxel de su región.
struct TramoVisible {
    int indice;
    int inicio; ///< puede quedar antes de la región si asoma a medias
    int tamano;

    int fin() const { return inicio + tamano; }
};

/// Los tramos que ocupan píxeles en [desde, hasta): los inmovilizados o los que se desplazan.
struct BandaVisible {
    int desde = 0;
    int hasta = 0; ///< sin incluir
    std::vector<TramoVisible> tramos;
    int primero = 0; ///< primer elemento que es de la banda, se vea o no
    int ultimo = -1; ///< último, se vea o no

    bool vacia() const { return hasta <= desde; }
    bool contiene(int elemento) const { return primero <= elemento && elemento <= ultimo; }
};

/// Las dos bandas de un eje, primero la fija.
struct Bandas {
    BandaVisible fija;
    BandaVisible desplazada;
};

/// `limite`: ancho o alto de la vista.
Bandas bandasVisibles(const EjeVista& eje, int origen, int limite);

/// Un cruce de dos bandas: uno de los cuatro paneles, con lo que le toca pintar y nada más.
struct Region {
    const BandaVisible& filas;
    const BandaVisible& cols;

    bool vacia() const { return filas.vacia() || cols.vacia(); }
    QRect rect() const {
        return {cols.desde, filas.desde, cols.hasta - cols.desde, filas.hasta - filas.desde};
    }
};

} // namespace renderizador
