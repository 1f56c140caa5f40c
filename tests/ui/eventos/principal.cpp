// eventos_al_azar SEMILLA CUANTOS [--narrar]: aporrea la ventana de verdad y comprueba, tras cada
// suceso, los invariantes del libro y que la ventana muestra lo que hay en él.

#include "tests/ui/eventos/persona.h"
#include "ui/preparar_aplicacion.h"

#include <QApplication>
#include <QDesktopServices>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Recibe los enlaces, para que no se abra ningún otro programa.
class SinEnlaces : public QObject {
    Q_OBJECT
  public slots:
    void recibir(const QUrl& /*enlace*/) {}
};

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::fprintf(stderr, "uso: %s SEMILLA CUANTOS [--narrar]\n", argv[0]);
        return 2;
    }
    const unsigned long long semilla = std::strtoull(argv[1], nullptr, 10);
    const long cuantos = std::strtol(argv[2], nullptr, 10);
    const bool narrar = argc > 3 && std::strcmp(argv[3], "--narrar") == 0;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    SinEnlaces sinEnlaces;
    QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &sinEnlaces, "recibir");

    pruebas::PersonaAlAzar persona(semilla, narrar);
    for (long i = 1; i <= cuantos; ++i) {
        persona.siguiente();
        if (const std::string malo = persona.defecto(); !malo.empty()) {
            std::printf("semilla %llu, suceso %ld: %s\nLos últimos:\n", semilla, i, malo.c_str());
            for (const std::string& uno : persona.ultimos()) {
                std::printf("  %s\n", uno.c_str());
            }
            return 1;
        }
    }
    std::printf("semilla %llu: %ld sucesos sin defecto, %d cuadros y menús atendidos, "
                "%d comprobaciones sin grafo ni valores\n",
                semilla, cuantos, persona.cuadrosAtendidos(), persona.comprobacionesCortas());
    QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
    return 0;
}

#include "principal.moc"
