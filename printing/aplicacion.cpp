#include "printing/aplicacion.h"

#include "rendering/sustitutos.h"

#include <cstdio>

namespace impresion {

namespace {

void callarAvisos(QtMsgType clase, const QMessageLogContext&, const QString& mensaje) {
    if (clase == QtCriticalMsg || clase == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(mensaje));
    }
}

int& prepararEntorno(int& argc) {
    qInstallMessageHandler(callarAvisos);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return argc;
}

} // namespace

Aplicacion::Aplicacion(int& argc, char** argv) : aplicacion_(prepararEntorno(argc), argv) {
    QCoreApplication::setApplicationName(QStringLiteral("Marnel"));
    renderizador::sustituirFamilias();
}

} // namespace impresion
