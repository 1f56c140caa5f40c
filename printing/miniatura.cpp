#include "printing/miniatura.h"

#include "model/limites.h"

#include <QPainter>

#include <algorithm>

#include "printing/lamina.h"

namespace impresion {

namespace {

/// Lo que se enseña de la hoja, en píxeles sin escalar: unas cuatro columnas y veinte filas.
constexpr double kLadoEnsenado = 420;

} // namespace

QImage dibujarMiniatura(const nucleo::Hoja& hoja, int lado) {
    QImage imagen(lado, lado, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    Lamina lamina(hoja, 0, false, std::min(1.0, lado / kLadoEnsenado));
    QPainter pintor(&imagen);
    lamina.dibujar(pintor, {0, 0, nucleo::kUltimaFila, nucleo::kUltimaColumna}, imagen.size());
    pintor.setPen(QColor(Qt::gray));
    pintor.drawRect(0, 0, lado - 1, lado - 1);
    return imagen;
}

} // namespace impresion
