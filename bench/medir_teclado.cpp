// Cuánto tarda un fotograma al recorrer con el teclado un libro de 1.000.000 de celdas en la
// ventana de verdad, sin pantalla: de la tecla a la ventana pintada, con todo lo que la tecla pone
// al día. Escribe, por cada modo de moverse, la mediana y el peor fotograma en milisegundos de
// procesador y de reloj.

#include "formula/motor.h"
#include "model/limites.h"
#include "ui/preparar_aplicacion.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr int kFilasLlenas = 62500;
constexpr int kColumnasLlenas = 16;
constexpr double kMaximoMs = 16;

double milisegundos(clockid_t reloj) {
    timespec instante = {};
    clock_gettime(reloj, &instante);
    return static_cast<double>(instante.tv_sec) * 1e3 + static_cast<double>(instante.tv_nsec) / 1e6;
}

void llenar(interfaz::VentanaPrincipal& ventana) {
    const motor_formulas::Motor::Lote lote(ventana.motor());
    for (int i = 0; i < kFilasLlenas * kColumnasLlenas; ++i) {
        const int fila = i % kFilasLlenas;
        const std::string texto =
            i % 3 == 0 ? "Concepto " + std::to_string(i) : std::to_string(i * 7919LL % 1000003);
        ventana.motor().establecerCelda(0, fila, i / kFilasLlenas, texto);
    }
}

struct Movimiento {
    const char* nombre;
    int tecla;
    Qt::KeyboardModifiers con;
    int veces;
};

constexpr std::array kMovimientos = {
    Movimiento{"flecha abajo", Qt::Key_Down, Qt::NoModifier, 600},
    Movimiento{"página abajo", Qt::Key_PageDown, Qt::NoModifier, 600},
    Movimiento{"página arriba", Qt::Key_PageUp, Qt::NoModifier, 600},
    Movimiento{"flecha derecha", Qt::Key_Right, Qt::NoModifier, 300},
    Movimiento{"Ctrl+Inicio", Qt::Key_Home, Qt::ControlModifier, 20},
    Movimiento{"Mayús+página abajo", Qt::Key_PageDown, Qt::ShiftModifier, 600},
};

bool medir(interfaz::VentanaPrincipal& ventana, const Movimiento& movimiento) {
    std::vector<double> procesador;
    std::vector<double> reloj;
    for (int i = 0; i < movimiento.veces; ++i) {
        const double reloj0 = milisegundos(CLOCK_MONOTONIC);
        const double procesador0 = milisegundos(CLOCK_PROCESS_CPUTIME_ID);
        QKeyEvent baja(QEvent::KeyPress, movimiento.tecla, movimiento.con);
        QCoreApplication::sendEvent(ventana.widgetHoja(), &baja);
        QCoreApplication::processEvents();
        procesador.push_back(milisegundos(CLOCK_PROCESS_CPUTIME_ID) - procesador0);
        reloj.push_back(milisegundos(CLOCK_MONOTONIC) - reloj0);
    }
    std::sort(procesador.begin(), procesador.end());
    std::sort(reloj.begin(), reloj.end());
    std::printf("| %s | %.2f | %.2f | %.2f | %.2f |\n", movimiento.nombre,
                procesador[procesador.size() / 2], procesador.back(), reloj[reloj.size() / 2],
                reloj.back());
    return procesador.back() <= kMaximoMs;
}

} // namespace

int main(int argc, char* argv[]) {
    // En su propia carpeta temporal no hay trabajo por recuperar, ni por tanto preguntas.
    const QTemporaryDir temporal;
    qputenv("TMPDIR", temporal.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);
    interfaz::VentanaPrincipal ventana;
    ventana.resize(1920, 1080);
    llenar(ventana);
    ventana.show();
    ventana.widgetHoja()->refrescar();
    ventana.widgetHoja()->setFocus();
    QCoreApplication::processEvents();
    std::printf("| tecla | procesador, mediana (ms) | peor | reloj, mediana (ms) | peor |\n"
                "|---|---|---|---|---|\n");
    bool bien = true;
    for (const Movimiento& movimiento : kMovimientos)
        bien = medir(ventana, movimiento) && bien;
    ventana.libro().modificado = false;
    return bien ? 0 : 1;
}
