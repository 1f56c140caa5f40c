#include "ui/boton_alineacion.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

#include <array>

namespace interfaz {

namespace {

constexpr int kAnchoRenglon = 18;
constexpr int kGrosor = 2;
constexpr int kPaso = 4;
/// Largo de cada renglón: alternan para que el lado recto diga la alineación.
constexpr std::array<int, 4> kRenglones = {18, 10, 16, 8};

int margenIzquierdo(nucleo::AlineacionH alineacion, int sobrante) {
    switch (alineacion) {
    case nucleo::AlineacionH::Centro:
        return sobrante / 2;
    case nucleo::AlineacionH::Derecha:
        return sobrante;
    default:
        return 0;
    }
}

} // namespace

BotonAlineacion::BotonAlineacion(nucleo::AlineacionH alineacion, QWidget* parent)
    : QToolButton(parent), alineacion_(alineacion) {}

void BotonAlineacion::paintEvent(QPaintEvent* /*evento*/) {
    QStylePainter pintor(this);
    QStyleOptionToolButton opcion;
    initStyleOption(&opcion);
    opcion.text.clear();
    pintor.drawComplexControl(QStyle::CC_ToolButton, opcion);

    constexpr int alto = kPaso * (static_cast<int>(kRenglones.size()) - 1) + kGrosor;
    const int x = (width() - kAnchoRenglon) / 2;
    int y = (height() - alto) / 2;
    const QColor tinta =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
    for (const int largo : kRenglones) {
        pintor.fillRect(x + margenIzquierdo(alineacion_, kAnchoRenglon - largo), y, largo, kGrosor,
                        tinta);
        y += kPaso;
    }
}

} // namespace interfaz
