#pragma once

#include "model/hoja.h"
#include "model/rango.h"
#include "rendering/renderizador.h"
#include "rendering/tema.h"

#include <QSize>

class QPainter;

namespace impresion {

/// Una hoja preparada para el papel: sin selección y sin líneas de paneles. Todo en píxeles de
/// 1/96 de pulgada.
class Lamina {
  public:
    /// Las `filasTitulo` primeras filas se repiten en cada zona que se dibuje. `escala` es 1 al
    /// tamaño de la pantalla.
    Lamina(const nucleo::Hoja& hoja, int filasTitulo, bool encabezados, double escala);
    Lamina(const Lamina&) = delete;
    Lamina& operator=(const Lamina&) = delete;

    int ancho(int col) const { return renderizador_.anchoCol(col); }
    int alto(int fila) const { return renderizador_.altoFila(fila); }
    /// Lo que ocupan, además de la zona, los encabezados y las filas que se repiten.
    QSize orla() const;
    /// Píxeles de las columnas y de las filas de una zona; se satura si no caben.
    QSize medir(const nucleo::RangoCeldas& zona) const;
    /// Dibuja en el origen la zona con su orla, recortada a `tope`.
    void dibujar(QPainter& pintor, const nucleo::RangoCeldas& zona, const QSize& tope);

  private:
    nucleo::Hoja hoja_;
    renderizador::Tema tema_;
    renderizador::Renderizador renderizador_;
    bool encabezados_;
};

} // namespace impresion
