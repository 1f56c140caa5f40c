#pragma once

#include "model/formato.h"

#include <QToolButton>

namespace interfaz {

/// Botón de la cinta que dibuja un párrafo alineado en lugar de un texto.
class BotonAlineacion : public QToolButton {
    Q_OBJECT
  public:
    explicit BotonAlineacion(nucleo::AlineacionH alineacion, QWidget* parent = nullptr);

    nucleo::AlineacionH alineacion() const { return alineacion_; }

  protected:
    void paintEvent(QPaintEvent* evento) override;

  private:
    nucleo::AlineacionH alineacion_;
};

} // namespace interfaz
