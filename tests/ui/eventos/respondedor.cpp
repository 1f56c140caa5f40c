#include "tests/ui/eventos/respondedor.h"

#include "tests/ui/eventos/textos.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace pruebas {

namespace {

/// A partir de aquí un cuadro se cierra sin más tanteos.
constexpr int kIntentosMaximos = 6;

} // namespace

Respondedor::Respondedor(Azar& azar, QStringList archivos)
    : azar_(azar), archivos_(std::move(archivos)) {
    reloj_.setInterval(0);
    connect(&reloj_, &QTimer::timeout, this, &Respondedor::mirar);
    reloj_.start();
}

void Respondedor::mirar() {
    QWidget* abierto = QApplication::activePopupWidget();
    if (abierto == nullptr) {
        abierto = QApplication::activeModalWidget();
    }
    if (abierto == nullptr || !abierto->isVisible()) {
        return;
    }
    if (abierto != atendido_) {
        atendido_ = abierto;
        intentos_ = 0;
        ++atendidos_;
    }
    ++intentos_;
    // Fuera de esta función: lo que se haga puede abrir otro cuadro, y el reloj no vuelve a dar la
    // hora hasta que ella termine.
    QMetaObject::invokeMethod(
        abierto, [this, abierto] { atender(abierto); }, Qt::QueuedConnection);
}

void Respondedor::atender(QWidget* abierto) {
    if (!abierto->isVisible()) {
        return;
    }
    if (intentos_ > kIntentosMaximos) {
        abierto->close();
        return;
    }
    if (auto* menu = qobject_cast<QMenu*>(abierto)) {
        atenderMenu(menu);
    } else if (azar_.deCada(4)) {
        tantear(abierto);
    } else if (auto* archivos = qobject_cast<QFileDialog*>(abierto)) {
        atenderArchivos(archivos);
    } else if (auto* cuadro = qobject_cast<QDialog*>(abierto)) {
        atenderCuadro(cuadro);
    } else {
        abierto->close();
    }
}

void Respondedor::atenderMenu(QMenu* menu) {
    switch (azar_.hasta(8)) {
    case 0:
        menu->close();
        return;
    case 1:
        QTest::keyClick(menu, Qt::Key_Escape);
        return;
    case 2:
    case 3:
        tantear(menu);
        return;
    default:
        break;
    }
    const QList<QAction*> acciones = menu->actions();
    if (!acciones.isEmpty()) {
        menu->setActiveAction(azar_.uno(acciones));
    }
    QTest::keyClick(menu, Qt::Key_Return);
}

void Respondedor::atenderArchivos(QFileDialog* cuadro) {
    if (azar_.deCada(3)) {
        cuadro->reject();
        return;
    }
    if (auto* nombre = cuadro->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        nombre->setText(azar_.uno(archivos_));
    }
    QMetaObject::invokeMethod(cuadro, "accept");
}

void Respondedor::atenderCuadro(QDialog* cuadro) {
    const QList<QAbstractButton*> botones = cuadro->findChildren<QAbstractButton*>();
    if (azar_.deCada(5) || botones.isEmpty()) {
        cuadro->reject();
        return;
    }
    if (auto* linea = cuadro->findChild<QLineEdit*>(); linea != nullptr && azar_.deCada(2)) {
        linea->setText(textoDeCelda(azar_));
    }
    azar_.uno(botones)->click();
}

void Respondedor::tantear(QWidget* abierto) {
    static constexpr Qt::Key kTeclas[] = {Qt::Key_Tab, Qt::Key_Down,   Qt::Key_Up,
                                          Qt::Key_S,   Qt::Key_Return, Qt::Key_Space,
                                          Qt::Key_N,   Qt::Key_Right,  Qt::Key_Delete};
    if (azar_.deCada(2)) {
        QWidget* foco = abierto->focusWidget();
        QTest::keyClick(foco != nullptr ? foco : abierto, azar_.uno(kTeclas));
        return;
    }
    // El menú de lo que no cabe en la ventana puede estar vacío.
    const QPoint punto(azar_.hasta(qMax(1, abierto->width())),
                       azar_.hasta(qMax(1, abierto->height())));
    QWidget* debajo = abierto->childAt(punto);
    QTest::mouseClick(debajo != nullptr ? debajo : abierto, Qt::LeftButton);
}

} // namespace pruebas
