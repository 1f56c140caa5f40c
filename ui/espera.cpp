#include "ui/espera.h"

#include <QGuiApplication>
#include <QStatusBar>

namespace interfaz {

Espera::Espera(QStatusBar* barra, const QString& mensaje) : barra_(barra) {
    barra_->showMessage(mensaje);
    // El bucle de eventos no corre durante la espera: el mensaje se pinta ahora, y cambiar el
    // puntero después lo envía a la pantalla.
    barra_->repaint();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Espera::~Espera() {
    barra_->clearMessage();
    QGuiApplication::restoreOverrideCursor();
}

} // namespace interfaz
