#include "editing/editor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace editor {

using nucleo::Celda;
using nucleo::Hoja;
using nucleo::RangoCeldas;
using nucleo::TipoCelda;

namespace {

/// Por qué se ordena una fila. Las clases van en el orden en que quedan, en las dos direcciones.
struct ClaveFila {
    enum class Clase : std::uint8_t { Numero, Texto, Ninguna };

    Clase clase = Clase::Ninguna;
    int fila = 0; ///< desde la primera de la selección
    double numero = 0;
    std::string_view texto;
};

ClaveFila claveDe(int fila, const Celda& celda) {
    switch (celda.tipo) {
    case TipoCelda::Vacia:
        return {ClaveFila::Clase::Ninguna, fila, 0, {}};
    case TipoCelda::Numero:
        return {ClaveFila::Clase::Numero, fila, celda.numero, {}};
    default:
        return {ClaveFila::Clase::Texto, fila, 0, celda.entrada};
    }
}

/// Un NaN no es menor ni mayor que nada: va detrás de los demás números en las dos direcciones,
/// para que el orden sea un orden.
bool numeroAntes(double a, double b, bool ascendente) {
    if (std::isnan(a) || std::isnan(b))
        return !std::isnan(a) && std::isnan(b);
    return ascendente ? a < b : a > b;
}

bool filaAntes(const ClaveFila& a, const ClaveFila& b, bool ascendente) {
    if (a.clase != b.clase)
        return a.clase < b.clase;
    switch (a.clase) {
    case ClaveFila::Clase::Numero:
        return numeroAntes(a.numero, b.numero, ascendente);
    case ClaveFila::Clase::Texto:
        return ascendente ? a.texto < b.texto : a.texto > b.texto;
    case ClaveFila::Clase::Ninguna:
        break;
    }
    return false;
}

/// A qué fila va cada una, contando desde la primera del rango.
std::vector<int> destinos(const Hoja& hoja, const RangoCeldas& rango, bool ascendente) {
    std::vector<ClaveFila> claves(static_cast<std::size_t>(rango.fila2 - rango.fila1 + 1));
    for (std::size_t i = 0; i < claves.size(); ++i)
        claves[i].fila = static_cast<int>(i);
    const RangoCeldas columnaClave{rango.fila1, rango.col1, rango.fila2, rango.col1};
    hoja.celdas.recorrerPorFilas(columnaClave, [&](int fila, int, const Celda& celda) {
        claves[static_cast<std::size_t>(fila - rango.fila1)] = claveDe(fila - rango.fila1, celda);
        return true;
    });
    std::stable_sort(claves.begin(), claves.end(), [=](const ClaveFila& a, const ClaveFila& b) {
        return filaAntes(a, b, ascendente);
    });
    std::vector<int> destino(claves.size());
    for (std::size_t i = 0; i < claves.size(); ++i)
        destino[static_cast<std::size_t>(claves[i].fila)] = static_cast<int>(i);
    return destino;
}

} // namespace

void Editor::ordenarSeleccion(bool ascendente) {
    Hoja* hoja = hojaActiva();
    if (!hoja || seleccion_.esUnaCelda() || hoja->fusionQueToca(seleccion_.rango()))
        return;
    registrarHistorial();
    const RangoCeldas rango = seleccion_.rango();
    const Hoja origen =
        *hoja; // comparte los bloques: se lee de ella mientras se escribe en la otra
    const std::vector<int> destino = destinos(origen, rango, ascendente);
    hoja->celdas.quitarRango(rango);
    origen.celdas.recorrerPorFilas(rango, [&](int fila, int col, const Celda& celda) {
        const int nueva = rango.fila1 + destino[static_cast<std::size_t>(fila - rango.fila1)];
        hoja->celdaMut(nueva, col) = celda;
        return true;
    });
    libro_.modificado = true;
    motor_->recalcularTodo();
}

} // namespace editor
