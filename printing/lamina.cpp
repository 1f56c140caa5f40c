#include "printing/lamina.h"

#include "model/limites.h"

#include <QPainter>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace impresion {

namespace {

int saturado(std::int64_t valor) {
    constexpr std::int64_t kMaximo = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(valor, kMaximo));
}

/// En el papel nada está seleccionado, pero el renderizador siempre pinta una selección.
renderizador::Tema temaDePapel() {
    renderizador::Tema tema = renderizador::temaClaro();
    tema.bordeSeleccion = Qt::transparent;
    tema.rellenoSeleccion = Qt::transparent;
    tema.lineaPanelFijo = Qt::transparent;
    tema.fondoEncabezadoSel = tema.fondoEncabezado;
    tema.textoEncabezadoSel = tema.textoEncabezado;
    return tema;
}

} // namespace

Lamina::Lamina(const nucleo::Hoja& hoja, int filasTitulo, bool encabezados, double escala)
    : hoja_(hoja), tema_(temaDePapel()), encabezados_(encabezados) {
    hoja_.filasInmovilizadas = filasTitulo;
    hoja_.columnasInmovilizadas = 0;
    renderizador_.hoja = &hoja_;
    renderizador_.tema = &tema_;
    renderizador_.zoom = escala;
}

QSize Lamina::orla() const {
    const int alto = renderizador_.altoPanelFijo();
    return encabezados_ ? QSize(renderizador::kAnchoEncabezado,
                                saturado(std::int64_t{renderizador::kAltoEncabezado} + alto))
                        : QSize(0, alto);
}

QSize Lamina::medir(const nucleo::RangoCeldas& zona) const {
    std::int64_t anchura = 0;
    for (int col = zona.col1; col <= zona.col2; ++col) {
        anchura += ancho(col);
    }
    std::int64_t altura = 0;
    for (int fila = zona.fila1; fila <= zona.fila2; ++fila) {
        altura += alto(fila);
    }
    return {saturado(anchura), saturado(altura)};
}

void Lamina::dibujar(QPainter& pintor, const nucleo::RangoCeldas& zona, const QSize& tope) {
    renderizador_.desplazamientoX = 0;
    renderizador_.desplazamientoY = 0;
    const int panel = renderizador_.altoPanelFijo();
    renderizador_.desplazamientoX =
        std::max(0, renderizador_.xDeCol(zona.col1) - renderizador::kAnchoEncabezado);
    renderizador_.desplazamientoY =
        std::max(0, renderizador_.yDeFila(zona.fila1) - renderizador::kAltoEncabezado - panel);

    const QSize contenido = medir(zona);
    const QSize visible(
        std::min(tope.width(), saturado(std::int64_t{contenido.width()} + orla().width())),
        std::min(tope.height(), saturado(std::int64_t{contenido.height()} + orla().height())));
    QSize vista = visible;
    pintor.save();
    pintor.setClipRect(QRect(QPoint(0, 0), visible), Qt::IntersectClip);
    if (!encabezados_) {
        pintor.translate(-renderizador::kAnchoEncabezado, -renderizador::kAltoEncabezado);
        vista += QSize(renderizador::kAnchoEncabezado, renderizador::kAltoEncabezado);
    }
    renderizador_.dibujar(pintor, vista, {});
    pintor.restore();
}

} // namespace impresion
