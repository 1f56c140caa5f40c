#pragma once

#include <QTabBar>

namespace interfaz {

/// La barra de pestañas de las hojas: ocupa lo que ocupan sus pestañas y, cuando no caben, se
/// desplaza con flechas.
class PestanasHojas : public QTabBar {
    Q_OBJECT
  public:
    explicit PestanasHojas(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
};

} // namespace interfaz
