// Lo que llega por el ratón: pulsaciones, arrastres, rueda y menú contextual.

#include "tests/ui/eventos/persona.h"
#include "ui/widget_hoja.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

namespace pruebas {

namespace {

void enviarRaton(QWidget* control, QEvent::Type tipo, const QPointF& punto, Qt::MouseButton boton,
                 Qt::MouseButtons pulsados, Qt::KeyboardModifiers con) {
    QMouseEvent evento(tipo, punto, control->mapToGlobal(punto), boton, pulsados, con);
    QCoreApplication::sendEvent(control, &evento);
}

std::string lugar(const QWidget* control, const QPoint& punto) {
    const QString nombre = control->objectName().isEmpty()
                               ? QString::fromLatin1(control->metaObject()->className())
                               : control->objectName();
    return nombre.toStdString() + " (" + std::to_string(punto.x()) + ", " +
           std::to_string(punto.y()) + ")";
}

} // namespace

void PersonaAlAzar::pulsacion() {
    static constexpr Qt::MouseButton kBotones[] = {Qt::LeftButton, Qt::LeftButton, Qt::LeftButton,
                                                   Qt::RightButton, Qt::MiddleButton};
    QWidget* control = azar_.deCada(3) ? cualquierControl() : ventana_->widgetHoja()->viewport();
    const QPoint punto = puntoDe(control);
    const Qt::MouseButton boton = azar_.uno(kBotones);
    const Qt::KeyboardModifiers con = azar_.deCada(4) ? Qt::ShiftModifier : Qt::NoModifier;
    const bool doble = azar_.deCada(5);
    anotar((doble ? "doble pulsación en " : "pulsación en ") + lugar(control, punto));
    if (doble) {
        QTest::mouseDClick(control, boton, con, punto);
    } else {
        QTest::mouseClick(control, boton, con, punto);
    }
}

void PersonaAlAzar::arrastre() {
    QWidget* vista = ventana_->widgetHoja()->viewport();
    // Los bordes de los encabezados, por donde se redimensiona, se buscan más que el resto.
    QPoint desde = puntoDe(vista);
    const int donde = azar_.hasta(4);
    if (donde == 0) {
        desde.setY(azar_.hasta(renderizador::kAltoEncabezado));
    } else if (donde == 1) {
        desde.setX(azar_.hasta(renderizador::kAnchoEncabezado));
    }
    const Qt::KeyboardModifiers con = azar_.deCada(4) ? Qt::ShiftModifier : Qt::NoModifier;
    const int pasos = azar_.entre(1, 5);
    const bool soltar = !azar_.deCada(8);
    anotar("arrastre desde " + lugar(vista, desde) + " en " + std::to_string(pasos) + " pasos");
    enviarRaton(vista, QEvent::MouseButtonPress, desde, Qt::LeftButton, Qt::LeftButton, con);
    QPointF hasta = desde;
    for (int i = 0; i < pasos; ++i) {
        static constexpr double kLejos[] = {-1e9, -500, 1e5, 1e12};
        hasta = azar_.deCada(10) ? QPointF(azar_.uno(kLejos), azar_.uno(kLejos))
                                 : QPointF(puntoDe(vista));
        enviarRaton(vista, QEvent::MouseMove, hasta, Qt::NoButton, Qt::LeftButton, con);
        if (azar_.deCada(6)) {
            QTest::keyClick(foco(), azar_.deCada(2) ? Qt::Key_Z : Qt::Key_Down,
                            azar_.deCada(2) ? Qt::ControlModifier : Qt::NoModifier);
        }
    }
    if (soltar) {
        enviarRaton(vista, QEvent::MouseButtonRelease, hasta, Qt::LeftButton, Qt::NoButton, con);
    }
}

void PersonaAlAzar::moverSinPulsar() {
    QWidget* control = azar_.deCada(2) ? cualquierControl() : ventana_->widgetHoja()->viewport();
    const QPoint punto = puntoDe(control);
    anotar("puntero en " + lugar(control, punto));
    enviarRaton(control, QEvent::MouseMove, punto, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    if (azar_.deCada(3)) {
        QHelpEvent ayuda(QEvent::ToolTip, punto, control->mapToGlobal(punto));
        QCoreApplication::sendEvent(control, &ayuda);
    }
}

void PersonaAlAzar::rueda() {
    static constexpr int kGiros[] = {120,           -120,          15, -15, 1200, -12000,
                                     1'000'000'000, -2'000'000'000};
    static constexpr Qt::KeyboardModifiers kCon[] = {Qt::NoModifier, Qt::NoModifier,
                                                     Qt::ControlModifier, Qt::ShiftModifier};
    QWidget* control = azar_.deCada(4) ? cualquierControl() : ventana_->widgetHoja()->viewport();
    const QPoint punto = puntoDe(control);
    const int giro = azar_.uno(kGiros);
    const Qt::KeyboardModifiers con = azar_.uno(kCon);
    anotar("rueda " + std::to_string(giro) + " en " + lugar(control, punto));
    QWheelEvent evento(punto, control->mapToGlobal(QPointF(punto)), QPoint(), QPoint(0, giro),
                       Qt::NoButton, con, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(control, &evento);
}

void PersonaAlAzar::menuContextual() {
    QWidget* control = azar_.deCada(4) ? cualquierControl() : ventana_->widgetHoja()->viewport();
    const QPoint punto = puntoDe(control);
    const auto motivo = azar_.deCada(3) ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse;
    anotar("menú contextual en " + lugar(control, punto));
    QContextMenuEvent evento(motivo, punto, control->mapToGlobal(punto));
    QCoreApplication::sendEvent(control, &evento);
}

} // namespace pruebas
