#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/lote_celdas.h"
#include "rendering/mapa_fusiones.h"
#include "rendering/regiones.h"
#include "rendering/renderizador.h"
#include "rendering/trazos.h"

#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace renderizador {

namespace {

constexpr double kPuntosLetra = 10.0;
constexpr double kPuntosMinimos = 0.5;
constexpr double kPuntosMaximos = 1000.0;

/// Lo que un borde de la selección puede salirse de su región: más lejos no se ve.
constexpr int kHolgura = 8;

/// Fusiones que se pisan, que solo trae un archivo hostil, se pintarían una sobre otra sin fin: a
/// partir de tantas veces el área de la región ya no se pintan más.
constexpr std::int64_t kVecesArea = 8;

QFont letraCuadricula(double zoom) {
    QFont letra(QStringLiteral("Segoe UI"));
    const double puntos = kPuntosLetra * zoom;
    letra.setPointSizeF(std::isnan(puntos) ? kPuntosLetra
                                           : std::clamp(puntos, kPuntosMinimos, kPuntosMaximos));
    return letra;
}

QRect cruce(const TramoVisible& fila, const TramoVisible& col) {
    return {col.inicio, fila.inicio, col.tamano, fila.tamano};
}

/// Las líneas de las celdas sin fusionar, de un trazo por cada tira seguida.
void anadirLineas(const Region& region, const MapaFusiones& fusiones, LoteCeldas& lote) {
    const auto& filas = region.filas.tramos;
    const auto& cols = region.cols.tramos;
    for (std::size_t f = 0; f < filas.size(); ++f) {
        for (std::size_t c = 0; c < cols.size(); ++c) {
            const std::size_t primera = c;
            while (c < cols.size() && fusiones.en(f, c) == nullptr) {
                ++c;
            }
            if (c > primera) {
                lote.anadirLineaInferior(cruce(filas[f], cols[primera]) |
                                         cruce(filas[f], cols[c - 1]));
            }
        }
    }
    for (std::size_t c = 0; c < cols.size(); ++c) {
        for (std::size_t f = 0; f < filas.size(); ++f) {
            const std::size_t primera = f;
            while (f < filas.size() && fusiones.en(f, c) == nullptr) {
                ++f;
            }
            if (f > primera) {
                lote.anadirLineaDerecha(cruce(filas[primera], cols[c]) |
                                        cruce(filas[f - 1], cols[c]));
            }
        }
    }
}

/// Tramo que ocupan en una banda los elementos entre dos extremos incluidos; vacío si ninguno es de
/// ella. Un extremo que queda en otra banda se lleva fuera de esta, donde no se ve.
std::optional<std::array<int, 2>> tramoEnBanda(const EjeVista& eje, const BandaVisible& banda,
                                               int primero, int ultimo) {
    if (banda.vacia() || ultimo < banda.primero || primero > banda.ultimo) {
        return std::nullopt;
    }
    const std::int64_t minimo = banda.desde - kHolgura;
    const std::int64_t maximo = banda.hasta + kHolgura;
    const std::int64_t inicio = primero >= banda.primero ? eje.inicio(primero) : minimo;
    const std::int64_t fin = ultimo <= banda.ultimo ? eje.fin(ultimo) : maximo;
    return std::array{static_cast<int>(std::clamp(inicio, minimo, maximo)),
                      static_cast<int>(std::clamp(fin, minimo, maximo))};
}

} // namespace

double grosorLinea(const QPainter& pintor) {
    // Con escala fraccionaria, un número entero de píxeles del dispositivo: así todas son iguales.
    const double escala = pintor.device()->devicePixelRatioF();
    return std::max(1.0, std::floor(escala)) / std::max(1.0, escala);
}

void Renderizador::dibujar(QPainter& pintor, const QSize& vista,
                           const SeleccionVista& seleccion) const {
    if (hoja == nullptr || tema == nullptr) {
        return;
    }
    pintor.fillRect(QRect(QPoint(0, 0), vista), tema->fondo);
    pintor.setFont(letraCuadricula(zoom));
    dibujarCeldas(pintor, vista, seleccion);
    dibujarEncabezados(pintor, vista, seleccion);

    constexpr int kGrosorPanel = 2;
    const EjeVista columnas = ejeColumnas();
    const EjeVista filas = ejeFilas();
    if (columnas.fijos() > 0 && columnas.finPanel() <= vista.width()) {
        const auto x = static_cast<int>(columnas.finPanel());
        pintor.fillRect(QRect(x - 1, 0, kGrosorPanel, vista.height()), tema->lineaPanelFijo);
    }
    if (filas.fijos() > 0 && filas.finPanel() <= vista.height()) {
        const auto y = static_cast<int>(filas.finPanel());
        pintor.fillRect(QRect(0, y - 1, vista.width(), kGrosorPanel), tema->lineaPanelFijo);
    }
}

void Renderizador::dibujarCeldas(QPainter& pintor, const QSize& vista,
                                 const SeleccionVista& seleccion) const {
    if (hoja == nullptr || tema == nullptr) {
        return;
    }
    const Bandas filas = bandasVisibles(ejeFilas(), kAltoEncabezado, vista.height());
    const Bandas cols = bandasVisibles(ejeColumnas(), kAnchoEncabezado, vista.width());
    LoteCeldas lote(*tema, zoom, pintor.font(), grosorLinea(pintor));
    for (const BandaVisible* banda : {&filas.fija, &filas.desplazada}) {
        for (const BandaVisible* otra : {&cols.fija, &cols.desplazada}) {
            const Region region{*banda, *otra};
            if (region.vacia()) {
                continue;
            }
            pintor.save();
            pintor.setClipRect(region.rect(), Qt::IntersectClip);
            dibujarRegion(pintor, region, lote);
            seleccionEnRegion(pintor, region, seleccion);
            pintor.restore();
        }
    }
}

void Renderizador::dibujarRegion(QPainter& pintor, const Region& region, LoteCeldas& lote) const {
    const MapaFusiones fusiones(hoja->fusiones, region);
    const auto& filas = region.filas.tramos;
    const auto& cols = region.cols.tramos;
    for (std::size_t c = 0; c < cols.size(); ++c) {
        for (std::size_t f = 0; f < filas.size(); ++f) {
            if (fusiones.en(f, c) == nullptr) {
                lote.anadir(hoja->celda(filas[f].indice, cols[c].indice), cruce(filas[f], cols[c]));
            }
        }
    }
    anadirLineas(region, fusiones, lote);
    lote.volcar(pintor);

    const QRect area = region.rect();
    const std::int64_t tope = kVecesArea * area.width() * area.height();
    std::int64_t pintado = 0;
    for (const nucleo::RangoFusion* fusion : fusiones.visibles()) {
        if (pintado > tope) {
            break;
        }
        const QRect rect = rectFusion(*fusion);
        const QRect asoma = rect & area;
        pintado += std::int64_t{asoma.width()} * asoma.height();
        lote.anadir(hoja->celda(fusion->fila1, fusion->col1), rect);
        lote.anadirLineaDerecha(rect);
        lote.anadirLineaInferior(rect);
    }
    lote.volcar(pintor);
}

void Renderizador::dibujarCelda(QPainter& pintor, int fila, int col, const QRect& rect) const {
    if (hoja == nullptr || tema == nullptr) {
        return;
    }
    LoteCeldas lote(*tema, zoom, pintor.font(), grosorLinea(pintor));
    lote.anadir(hoja->celda(fila, col), rect);
    lote.anadirLineaDerecha(rect);
    lote.anadirLineaInferior(rect);
    lote.volcar(pintor);
}

void Renderizador::dibujarSeleccion(QPainter& pintor, const QSize& vista,
                                    const SeleccionVista& seleccion) const {
    if (hoja == nullptr || tema == nullptr) {
        return;
    }
    const Bandas filas = bandasVisibles(ejeFilas(), kAltoEncabezado, vista.height());
    const Bandas cols = bandasVisibles(ejeColumnas(), kAnchoEncabezado, vista.width());
    for (const BandaVisible* banda : {&filas.fija, &filas.desplazada}) {
        for (const BandaVisible* otra : {&cols.fija, &cols.desplazada}) {
            const Region region{*banda, *otra};
            if (region.vacia()) {
                continue;
            }
            pintor.save();
            pintor.setClipRect(region.rect(), Qt::IntersectClip);
            seleccionEnRegion(pintor, region, seleccion);
            pintor.restore();
        }
    }
}

void Renderizador::seleccionEnRegion(QPainter& pintor, const Region& region,
                                     const SeleccionVista& seleccion) const {
    const auto fila = [](int valor) { return std::clamp(valor, 0, nucleo::kUltimaFila); };
    const auto col = [](int valor) { return std::clamp(valor, 0, nucleo::kUltimaColumna); };
    const int filaActiva = fila(seleccion.filaActiva);
    const int colActiva = col(seleccion.colActiva);
    nucleo::RangoFusion activa{filaActiva, colActiva, filaActiva, colActiva};
    if (const nucleo::RangoFusion* fusion = hoja->fusionEn(filaActiva, colActiva)) {
        activa = {fila(fusion->fila1), col(fusion->col1), fila(fusion->fila2), col(fusion->col2)};
    }
    const auto [fila1, fila2] =
        std::minmax({fila(seleccion.fila1), fila(seleccion.fila2), activa.fila1, activa.fila2});
    const auto [col1, col2] =
        std::minmax({col(seleccion.col1), col(seleccion.col2), activa.col1, activa.col2});

    const auto tramoY = tramoEnBanda(ejeFilas(), region.filas, fila1, fila2);
    const auto tramoX = tramoEnBanda(ejeColumnas(), region.cols, col1, col2);
    if (!tramoY || !tramoX) {
        return;
    }
    QRect total(QPoint((*tramoX)[0], (*tramoY)[0]), QPoint((*tramoX)[1] - 1, (*tramoY)[1] - 1));
    QRect celdaActiva;
    const bool activaAqui = activa.fila1 <= region.filas.ultimo &&
                            activa.fila2 >= region.filas.primero &&
                            activa.col1 <= region.cols.ultimo && activa.col2 >= region.cols.primero;
    if (activaAqui) {
        const QRect alcance = region.rect().adjusted(-kHolgura, -kHolgura, kHolgura, kHolgura);
        celdaActiva = rectFusion(activa) & alcance;
        total |= celdaActiva;
    }
    if (total.isEmpty()) {
        return;
    }
    for (const QRect& trozo : QRegion(total) - QRegion(celdaActiva)) {
        pintor.fillRect(trozo, tema->rellenoSeleccion);
    }
    pintor.setBrush(Qt::NoBrush);
    pintor.setPen(QPen(tema->bordeSeleccion, 2, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    pintor.drawRect(total.adjusted(0, 0, -1, -1));
    if (celdaActiva.isEmpty() || celdaActiva == total) {
        return;
    }
    pintor.setPen(QPen(tema->bordeSeleccion, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    pintor.drawRect(celdaActiva.adjusted(0, 0, -1, -1));
}

} // namespace renderizador
