// Lo demás que le pasa a la ventana: órdenes, portapapeles, archivos soltados, relojes y cierre.

#include "tests/ui/eventos/persona.h"
#include "tests/ui/eventos/textos.h"
#include "ui/widget_hoja.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QSlider>
#include <QTimer>

namespace pruebas {

void PersonaAlAzar::accionDeMenu() {
    QList<QAction*> acciones;
    for (QAction* accion : ventana_->findChildren<QAction*>()) {
        if (accion->menu() == nullptr && accion->isEnabled() && !accion->isSeparator()) {
            acciones << accion;
        }
    }
    QAction* accion = azar_.uno(acciones);
    anotar("orden " + accion->text().toStdString());
    accion->trigger();
}

void PersonaAlAzar::botonDeLaVentana() {
    QList<QAbstractButton*> botones;
    for (QAbstractButton* boton : ventana_->findChildren<QAbstractButton*>()) {
        if (boton->isVisible() && boton->isEnabled()) {
            botones << boton;
        }
    }
    if (botones.isEmpty()) {
        anotar("ningún botón a la vista");
        return;
    }
    QAbstractButton* boton = azar_.uno(botones);
    anotar("botón " + boton->text().toStdString() + " " + boton->toolTip().toStdString());
    boton->click();
}

void PersonaAlAzar::portapapeles() {
    QClipboard* portapapeles = QGuiApplication::clipboard();
    switch (azar_.hasta(6)) {
    case 0:
        anotar("portapapeles vacío");
        portapapeles->clear();
        break;
    case 1: {
        anotar("portapapeles sin texto");
        auto* datos = new QMimeData;
        datos->setData(QStringLiteral("image/png"), QByteArray(100, '\1'));
        portapapeles->setMimeData(datos);
        break;
    }
    default:
        anotar("portapapeles con una tabla");
        portapapeles->setText(textoDePortapapeles(azar_));
    }
    if (azar_.deCada(2)) {
        ventana_->widgetHoja()->pegar();
    }
}

void PersonaAlAzar::soltarAlgo() {
    QMimeData datos;
    const int clase = azar_.hasta(4);
    if (clase == 0) {
        datos.setText(textoDePortapapeles(azar_));
    } else if (clase == 1) {
        datos.setUrls({QUrl(QStringLiteral("https://ejemplo.example/libro.mrn"))});
    } else {
        datos.setUrls({QUrl::fromLocalFile(azar_.uno(archivos_))});
    }
    QWidget* control = azar_.deCada(3) ? cualquierControl() : ventana_.get();
    const QPoint punto = puntoDe(control);
    anotar("soltar " + datos.formats().join(u' ').toStdString() + " en " +
           control->metaObject()->className());
    QDragEnterEvent entra(punto, Qt::CopyAction | Qt::MoveAction, &datos, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(control, &entra);
    if (entra.isAccepted()) {
        QDropEvent suelta(punto, Qt::CopyAction | Qt::MoveAction, &datos, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(control, &suelta);
    }
}

void PersonaAlAzar::relojes() {
    const QList<QTimer*> todos = ventana_->findChildren<QTimer*>();
    anotar("reloj");
    QMetaObject::invokeMethod(azar_.uno(todos), "timeout");
}

void PersonaAlAzar::cambiarVentana() {
    switch (azar_.hasta(6)) {
    case 0:
        anotar("ventana minúscula");
        ventana_->resize(azar_.hasta(80), azar_.hasta(80));
        break;
    case 1:
        anotar("ventana de otro tamaño");
        ventana_->resize(azar_.entre(200, 1400), azar_.entre(150, 900));
        break;
    case 2:
        anotar("ventana minimizada y de vuelta");
        ventana_->showMinimized();
        QCoreApplication::processEvents();
        ventana_->showNormal();
        break;
    case 3:
        anotar("ventana maximizada");
        ventana_->showMaximized();
        break;
    case 4: {
        anotar("deslizador de zoom");
        auto* deslizador = ventana_->findChild<QSlider*>(QStringLiteral("deslizadorZoom"));
        deslizador->setValue(azar_.entre(0, 250));
        break;
    }
    default:
        anotar("ponerse a salvo");
        ventana_->ponerASalvo();
    }
    ventana_->activateWindow();
}

void PersonaAlAzar::cerrarVentana() {
    anotar("cerrar la ventana");
    ventana_->close();
    ventana_->show();
    ventana_->activateWindow();
}

void PersonaAlAzar::reabrirPrograma() {
    anotar("otra ventana, como tras morir el programa");
    ventana_.reset();
    abrirVentana();
}

void PersonaAlAzar::volverALoPequeno() {
    anotar("libro nuevo, que el que había es grande");
    ventana_->libro().modificado = false;
    ventana_->nuevoLibro();
    grandes_ = 0;
}

} // namespace pruebas
