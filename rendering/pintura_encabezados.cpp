#include "model/direcciones.h"
#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/lote_texto.h"
#include "rendering/regiones.h"
#include "rendering/renderizador.h"
#include "rendering/trazos.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <string>

namespace renderizador {

namespace {

constexpr int kMargenRotulo = 5;
constexpr int kAire = 3; ///< lo menos que queda entre un rótulo y el final de su franja

/// Las franjas no crecen con el zoom: la letra mengua hasta que quepa en ellas el mayor rótulo, y
/// así no cambia de tamaño al desplazarse.
QFont letraRotulos(const QFont& base) {
    const QFontMetricsF metrica(base);
    const double anchoMayor = metrica.horizontalAdvance(QString::number(nucleo::kFilas));
    const double proporcion = std::min({1.0, (kAltoEncabezado - kAire) / metrica.height(),
                                        (kAnchoEncabezado - kMargenRotulo - kAire) / anchoMayor});
    QFont letra = base;
    if (proporcion < 1.0 && base.pointSizeF() > 0) {
        letra.setPointSizeF(base.pointSizeF() * proporcion);
    }
    return letra;
}

} // namespace

void Renderizador::dibujarEncabezados(QPainter& pintor, const QSize& vista,
                                      const SeleccionVista& seleccion) const {
    if (hoja == nullptr || tema == nullptr) {
        return;
    }
    const double grosor = grosorLinea(pintor);
    LoteTexto rotulos(letraRotulos(pintor.font()));
    const auto rotular = [&](const std::string& rotulo, const QRect& rect, bool elegido,
                             LoteTexto::Lado lado) {
        LoteTexto::Estilo estilo;
        estilo.color = (elegido ? tema->textoEncabezadoSel : tema->textoEncabezado).rgba();
        estilo.lado = lado;
        rotulos.anadir(rotulo, rect, lado == LoteTexto::Lado::Centro ? 0 : kMargenRotulo, estilo);
        if (elegido) {
            pintor.fillRect(rect, tema->fondoEncabezadoSel);
        }
    };
    const auto entre = [](int valor, int uno, int otro) {
        return std::min(uno, otro) <= valor && valor <= std::max(uno, otro);
    };

    pintor.fillRect(QRect(0, 0, vista.width(), kAltoEncabezado), tema->fondoEncabezado);
    pintor.fillRect(QRect(0, 0, kAnchoEncabezado, vista.height()), tema->fondoEncabezado);

    const Bandas cols = bandasVisibles(ejeColumnas(), kAnchoEncabezado, vista.width());
    for (const BandaVisible* banda : {&cols.fija, &cols.desplazada}) {
        if (banda->vacia()) {
            continue;
        }
        pintor.save();
        pintor.setClipRect(QRect(banda->desde, 0, banda->hasta - banda->desde, kAltoEncabezado),
                           Qt::IntersectClip);
        for (const TramoVisible& col : banda->tramos) {
            const QRect rect(col.inicio, 0, col.tamano, kAltoEncabezado);
            rotular(nucleo::nombreColumna(col.indice), rect,
                    entre(col.indice, seleccion.col1, seleccion.col2), LoteTexto::Lado::Centro);
            pintor.fillRect(QRectF(col.fin() - grosor, 0, grosor, kAltoEncabezado), tema->lineas);
        }
        rotulos.volcar(pintor);
        pintor.restore();
    }

    const Bandas filas = bandasVisibles(ejeFilas(), kAltoEncabezado, vista.height());
    for (const BandaVisible* banda : {&filas.fija, &filas.desplazada}) {
        if (banda->vacia()) {
            continue;
        }
        pintor.save();
        pintor.setClipRect(QRect(0, banda->desde, kAnchoEncabezado, banda->hasta - banda->desde),
                           Qt::IntersectClip);
        for (const TramoVisible& fila : banda->tramos) {
            const QRect rect(0, fila.inicio, kAnchoEncabezado, fila.tamano);
            rotular(std::to_string(fila.indice + 1), rect,
                    entre(fila.indice, seleccion.fila1, seleccion.fila2), LoteTexto::Lado::Derecha);
            pintor.fillRect(QRectF(0, fila.fin() - grosor, kAnchoEncabezado, grosor), tema->lineas);
        }
        rotulos.volcar(pintor);
        pintor.restore();
    }

    pintor.fillRect(QRectF(0, kAltoEncabezado - grosor, vista.width(), grosor), tema->lineas);
    pintor.fillRect(QRectF(kAnchoEncabezado - grosor, 0, grosor, vista.height()), tema->lineas);
}

} // namespace renderizador
