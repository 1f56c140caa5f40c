#include "editing/editor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
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

/// Las celdas de un rango, columna a columna, y hasta dónde llegan.
class CeldasDelRango {
  public:
    struct Sitio {
        int fila; ///< desde la primera del rango
        const Celda* celda;
    };

    CeldasDelRango(const Hoja& hoja, const RangoCeldas& rango) {
        for (int col = rango.col1; col <= rango.col2; ++col) {
            const RangoCeldas columna{rango.fila1, col, rango.fila2, col};
            comienzos_.push_back(sitios_.size());
            if (hoja.celdas.contarEn(columna) == 0)
                continue;
            hoja.celdas.recorrerPorFilas(columna, [&](int fila, int, const Celda& celda) {
                sitios_.push_back({fila - rango.fila1, &celda});
                return true;
            });
            filas_ = std::max(filas_, sitios_.back().fila + 1);
        }
        comienzos_.push_back(sitios_.size());
    }

    /// Filas hasta la última que tiene alguna celda; las de después no cambian de sitio.
    int filas() const { return filas_; }
    /// Las de una columna, contando desde la primera del rango, de arriba abajo.
    std::span<const Sitio> columna(int indice) const {
        const auto i = static_cast<std::size_t>(indice);
        return std::span(sitios_).subspan(comienzos_[i], comienzos_[i + 1] - comienzos_[i]);
    }

  private:
    std::vector<Sitio> sitios_;
    std::vector<std::size_t> comienzos_; ///< dónde empieza cada columna, y el final de la última
    int filas_ = 0;
};

/// A qué fila va cada una.
std::vector<int> destinos(const CeldasDelRango& celdas, bool ascendente) {
    std::vector<ClaveFila> claves(static_cast<std::size_t>(celdas.filas()));
    for (std::size_t i = 0; i < claves.size(); ++i)
        claves[i].fila = static_cast<int>(i);
    for (const CeldasDelRango::Sitio& sitio : celdas.columna(0))
        claves[static_cast<std::size_t>(sitio.fila)] = claveDe(sitio.fila, *sitio.celda);
    std::stable_sort(claves.begin(), claves.end(), [=](const ClaveFila& a, const ClaveFila& b) {
        return filaAntes(a, b, ascendente);
    });
    std::vector<int> destino(claves.size());
    for (std::size_t i = 0; i < claves.size(); ++i)
        destino[static_cast<std::size_t>(claves[i].fila)] = static_cast<int>(i);
    return destino;
}

/// Escribe las celdas de un rango vacío, cada fila en su destino.
void reponer(Hoja& hoja, const RangoCeldas& rango, const CeldasDelRango& celdas,
             const std::vector<int>& destino) {
    nucleo::AlmacenCeldas::Anexador anexador(hoja.celdas);
    std::vector<const Celda*> porDestino(destino.size());
    for (int col = rango.col1; col <= rango.col2; ++col) {
        const auto columna = celdas.columna(col - rango.col1);
        if (columna.empty())
            continue;
        for (const CeldasDelRango::Sitio& sitio : columna) {
            const int fila = destino[static_cast<std::size_t>(sitio.fila)];
            porDestino[static_cast<std::size_t>(fila)] = sitio.celda;
        }
        for (std::size_t i = 0; i < porDestino.size(); ++i) {
            if (porDestino[i] == nullptr)
                continue;
            const int fila = rango.fila1 + static_cast<int>(i);
            anexador.anexar(nucleo::claveLocal(fila, col)) = *porDestino[i];
            porDestino[i] = nullptr;
        }
    }
    anexador.terminar();
}

} // namespace

void Editor::ordenarSeleccion(bool ascendente) {
    Hoja* hoja = hojaActiva();
    if (!hoja || seleccion_.esUnaCelda() || hoja->fusionQueToca(seleccion_.rango()))
        return;
    registrarHistorial();
    const RangoCeldas rango = seleccion_.rango();
    const Hoja origen = *hoja; // comparte los bloques: de ella se lee y en la otra se escribe
    const CeldasDelRango celdas(origen, rango);
    const std::vector<int> destino = destinos(celdas, ascendente);
    hoja->celdas.quitarRango(rango);
    reponer(*hoja, rango, celdas, destino);
    libro_.modificado = true;
    motor_->recalcularTodo();
}

} // namespace editor
