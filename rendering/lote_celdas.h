#pragma once

#include "model/celda.h"
#include "rendering/lote_texto.h"
#include "rendering/tema.h"

#include <QRect>
#include <QRectF>

#include <vector>

class QPainter;

namespace renderizador {

/// Reúne celdas cuyos rectángulos no se pisan y las pinta por capas: rellenos, líneas, contornos y
/// textos. El resultado es el de pintarlas una a una.
class LoteCeldas {
  public:
    /// `base`: letra de la cuadrícula, ya con zoom. `grosor`: de las líneas, en píxeles de la
    /// vista.
    LoteCeldas(const Tema& tema, double zoom, const QFont& base, double grosor);

    /// Relleno, contorno y texto de una celda; nada si es nula.
    void anadir(const nucleo::Celda* celda, const QRect& rect);
    /// Borde derecho de lo que haya en `rect`, sean una o varias celdas.
    void anadirLineaDerecha(const QRect& rect);
    void anadirLineaInferior(const QRect& rect);
    void volcar(QPainter& pintor);

  private:
    struct Relleno {
        QRect rect;
        QRgb color;
    };

    void anadirTexto(const nucleo::Celda& celda, const QRect& rect);

    const Tema& tema_;
    double grosor_;
    int margen_;
    std::vector<Relleno> rellenos_;
    std::vector<QRectF> lineas_;
    std::vector<QRect> contornos_;
    LoteTexto textos_;
};

} // namespace renderizador
