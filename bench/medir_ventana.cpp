// Lo que cuesta una orden en la ventana de verdad, sin contar la pintura, que mide medir_teclado,
// con una hoja de 1.000.000 de celdas y, si se dice, 100.000 fusiones: moverse, ampliar una
// selección que ya las abarca todas, teclear un número, borrarlo y escribir el archivo de
// recuperación.

#include "model/autosave.h"
#include "ui/preparar_aplicacion.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int kFilas = 50000;
constexpr int kColumnas = 20;
constexpr int kFusiones = 100000;

/// Una ventana con la hoja llena y, si se pide, con fusiones a su derecha.
class VentanaLlena {
  public:
    explicit VentanaLlena(bool fusiones) {
        nucleo::Hoja& hoja = *ventana.libro().hojas[0];
        for (int fila = 0; fila < kFilas; ++fila) {
            for (int col = 0; col < kColumnas; ++col) {
                nucleo::Celda& celda = hoja.celdaMut(fila, col);
                celda.tipo = nucleo::TipoCelda::Numero;
                celda.numero = fila + col;
                celda.entrada = std::to_string(fila + col);
                celda.valor = nucleo::Valor::deNumero(celda.numero);
            }
        }
        for (int i = 0; fusiones && i < kFusiones; ++i) {
            const int col = kColumnas + 2 * (i / kFilas);
            hoja.fusiones.push_back({i % kFilas, col, i % kFilas, col + 1});
        }
        ventana.show();
        ventana.refrescarTodo();
    }
    void pulsar(QWidget* destino, int tecla, Qt::KeyboardModifiers con = {},
                const QString& texto = {}) {
        QKeyEvent evento(QEvent::KeyPress, tecla, con, texto);
        QApplication::sendEvent(destino, &evento);
    }
    void pulsar(int tecla, Qt::KeyboardModifiers con = {}, const QString& texto = {}) {
        pulsar(ventana.widgetHoja(), tecla, con, texto);
    }

    interfaz::VentanaPrincipal ventana;
};

void moverse(benchmark::State& estado) {
    VentanaLlena llena(estado.range(0) != 0);
    bool bajar = true;
    for (auto _ : estado) {
        llena.pulsar(bajar ? Qt::Key_Down : Qt::Key_Up);
        bajar = !bajar;
    }
}

void ampliarTodo(benchmark::State& estado) {
    VentanaLlena llena(estado.range(0) != 0);
    llena.ventana.editor().seleccionar(0, 0);
    llena.ventana.editor().extender(kFilas - 2, kColumnas - 1);
    bool bajar = true;
    for (auto _ : estado) {
        llena.pulsar(bajar ? Qt::Key_Down : Qt::Key_Up, Qt::ShiftModifier);
        bajar = !bajar;
    }
}

void teclearYAceptar(benchmark::State& estado) {
    VentanaLlena llena(estado.range(0) != 0);
    int numero = 0;
    for (auto _ : estado) {
        llena.ventana.editor().seleccionar(kFilas / 2, 3);
        llena.pulsar(Qt::Key_5, {}, QString::number(numero++ % 10));
        llena.pulsar(llena.ventana.widgetHoja()->editorCelda(), Qt::Key_Return);
    }
}

void borrar(benchmark::State& estado) {
    VentanaLlena llena(estado.range(0) != 0);
    int fila = 0;
    for (auto _ : estado) {
        llena.ventana.editor().seleccionar(fila++ % kFilas, 3);
        llena.pulsar(Qt::Key_Delete);
    }
}

void guardarRecuperacion(benchmark::State& estado) {
    VentanaLlena llena(estado.range(0) != 0);
    llena.ventana.libro().modificado = true;
    for (auto _ : estado) {
        llena.ventana.guardarRecuperacion();
    }
    nucleo::Autosave::descartar(llena.ventana.rutaAutosave());
}

BENCHMARK(moverse)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(ampliarTodo)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(teclearYAceptar)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(borrar)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(guardarRecuperacion)->Arg(0)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir temporal;
    qputenv("TMPDIR", temporal.path().toLocal8Bit());
    QApplication aplicacion(argc, argv);
    interfaz::prepararAplicacion(aplicacion);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
