// Ejecuta todas las clases de prueba de la ventana y devuelve cuántos fallos hubo. Con un nombre de
// clase como primer argumento ejecuta solo esa; con "--programa" se comporta como el programa.

#include "tests/ui/registro.h"
#include "ui/preparar_aplicacion.h"
#include "ui/programa.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstring>

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (argc > 1 && std::strcmp(argv[1], "--programa") == 0) {
        argv[1] = argv[0];
        return qMain(argc - 1, argv + 1);
    }
    // Ni los archivos de recuperación ni la carpeta de libros de quien prueba se tocan.
    const QTemporaryDir propia;
    for (const char* variable : {"TMPDIR", "HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(variable, propia.path().toLocal8Bit());
    }
    // Si una prueba no acaba, que el programa termine: Qt Test arrancaría un depurador y, tras su
    // propia señal, puede quedarse repitiéndola.
    if (!qEnvironmentVariableIsSet("QTEST_DISABLE_STACK_DUMP")) {
        qputenv("QTEST_DISABLE_STACK_DUMP", "1");
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);

    QStringList argumentos = QCoreApplication::arguments();
    const QString soloClase =
        argumentos.size() > 1 && !argumentos[1].startsWith(u'-') ? argumentos.takeAt(1) : QString();
    argumentos << QStringLiteral("-nocrashhandler");
    int fallos = 0;
    for (const pruebas::Fabrica fabrica : pruebas::fabricas()) {
        const std::unique_ptr<QObject> clase = fabrica();
        if (soloClase.isEmpty() || soloClase == QLatin1String(clase->metaObject()->className())) {
            fallos += QTest::qExec(clase.get(), argumentos);
        }
    }
    std::printf("%d fallos\n", fallos);
    return fallos;
}
