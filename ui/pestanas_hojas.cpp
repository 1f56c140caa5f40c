#include "ui/pestanas_hojas.h"

namespace interfaz {

PestanasHojas::PestanasHojas(QWidget* parent) : QTabBar(parent) {
    setShape(QTabBar::RoundedSouth);
    setExpanding(false);
    setDrawBase(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
    // Con el ratón se elige la hoja y se sigue tecleando en ella.
    setFocusPolicy(Qt::TabFocus);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setAccessibleName(QStringLiteral("Hojas del libro"));
}

QSize PestanasHojas::minimumSizeHint() const {
    // Qt reserva sitio para las flechas aunque no hagan falta.
    return QTabBar::minimumSizeHint().boundedTo(sizeHint());
}

} // namespace interfaz
