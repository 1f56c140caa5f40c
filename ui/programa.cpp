#include "ui/programa.h"

#include "ui/guardia_sesion.h"
#include "ui/preparar_aplicacion.h"
#include "ui/ventana_principal.h"

#include <QApplication>
#include <QFileInfo>

int qMain(int argc, char* argv[]) {
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);

    interfaz::GuardiaSesion guardia;
    QObject::connect(&guardia, &interfaz::GuardiaSesion::terminar, &aplicacion,
                     [] { QCoreApplication::exit(0); });
    interfaz::VentanaPrincipal ventana;
    QObject::connect(&guardia, &interfaz::GuardiaSesion::terminar, &ventana,
                     &interfaz::VentanaPrincipal::ponerASalvo);
    ventana.showMaximized();
    if (argc > 1 && !guardia.terminoPedido()) {
        const QString ruta = QString::fromLocal8Bit(argv[1]);
        if (QFileInfo::exists(ruta)) {
            ventana.abrirArchivo(ruta);
        }
    }
    // Un aviso que llegó durante una pregunta ya cerró el bucle de esta, pero no el que empieza.
    return guardia.terminoPedido() ? 0 : QApplication::exec();
}
