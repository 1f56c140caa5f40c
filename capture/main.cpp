#include "capture/peticion.h"
#include "capture/retrato.h"
#include "model/serializador.h"
#include "ui/preparar_aplicacion.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace {

enum Estado : int { kBien = 0, kMalUso = 1, kNoSeLee = 2, kNoSeEscribe = 3 };

/// Sin pantalla, Qt avisa de lo que la plataforma no sabe hacer; aquí no importa.
void callarAvisos(QtMsgType clase, const QMessageLogContext&, const QString& mensaje) {
    if (clase == QtCriticalMsg || clase == QtFatalMsg) {
        std::fprintf(stderr, "marnel-captura: %s\n", qUtf8Printable(mensaje));
    }
}

int fallar(Estado estado, const std::string& mensaje) {
    std::fprintf(stderr, "marnel-captura: %s\n", mensaje.c_str());
    return estado;
}

/// Comprueba antes lo que la ventana avisaría con un cuadro que aquí nadie cierra.
int comprobar(const captura::Peticion& peticion) {
    nucleo::Libro libro;
    if (nucleo::Serializador::cargar(peticion.libro, libro) != nucleo::kArchivoBien) {
        return fallar(kNoSeLee, "no se puede leer «" + peticion.libro + "»");
    }
    if (!peticion.hoja.empty() && libro.indiceHoja(peticion.hoja) < 0) {
        return fallar(kMalUso, "no hay ninguna hoja «" + peticion.hoja + "»");
    }
    return kBien;
}

} // namespace

int main(int argc, char* argv[]) {
    captura::Peticion peticion;
    const std::vector<std::string> argumentos(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const std::string error = captura::leerPeticion(argumentos, peticion); !error.empty()) {
        return fallar(kMalUso, error + "; uso: marnel-captura LIBRO IMAGEN [--tamano 1280x720] "
                                       "[--tema claro|oscuro] [--escala 1-4] [--zoom 50-200] "
                                       "[--celda B3 | --seleccion A1:C5] [--hoja NOMBRE] "
                                       "[--escribir TEXTO]");
    }
    if (const int estado = comprobar(peticion); estado != kBien) {
        return estado;
    }
    // Con su propia carpeta temporal no hay trabajo por recuperar, ni por tanto preguntas.
    const QTemporaryDir temporal;
    qputenv("TMPDIR", temporal.path().toLocal8Bit());
    qputenv("QT_SCALE_FACTOR", QByteArray::number(peticion.escala));
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", temporal.path().toLocal8Bit());
    }
    qInstallMessageHandler(callarAvisos);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);
    const QPixmap retrato = captura::retratar(peticion);
    if (retrato.isNull()) {
        return fallar(kNoSeLee, "no se puede leer «" + peticion.libro + "»");
    }
    if (!retrato.save(QString::fromStdString(peticion.salida))) {
        return fallar(kNoSeEscribe, "no se puede escribir «" + peticion.salida + "»");
    }
    return kBien;
}
