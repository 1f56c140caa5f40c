#include "ui/programa.h"

#include "ui/guardia_sesion.h"
#include "ui/preparar_aplicacion.h"
#include "ui/ventana_principal.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QWindow>

namespace {

constexpr int kEsperaVentana = 500; ///< milisegundos

/// Abrir un libro grande tarda y ocupa el único hilo: antes se deja que la ventana llegue a verse,
/// para que pueda decir que trabaja. Si el escritorio no la enseña, no se espera más.
void dejarVer(const QWidget& ventana) {
    const QDeadlineTimer plazo(kEsperaVentana);
    do {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, kEsperaVentana);
    } while (!ventana.windowHandle()->isExposed() && !plazo.hasExpired());
}

} // namespace

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
    const QString ruta = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (QFileInfo::exists(ruta)) {
        dejarVer(ventana);
        if (!guardia.terminoPedido()) {
            ventana.abrirArchivo(ruta);
        }
    }
    // Un aviso que llegó durante una pregunta ya cerró el bucle de esta, pero no el que empieza.
    return guardia.terminoPedido() ? 0 : QApplication::exec();
}
