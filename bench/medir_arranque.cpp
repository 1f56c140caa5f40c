// El programa de verdad, desde que empieza su proceso hasta que la ventana está pintada con su
// libro: escribe "pintado RELOJ PROCESADOR" y termina. RELOJ es el instante, en milisegundos del
// reloj monótono, y PROCESADOR lo que ha gastado el proceso. Lo reparte `bench/arranque`.

#include "ui/programa.h"
#include "ui/widget_hoja.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <ctime>

namespace {

double milisegundos(clockid_t reloj) {
    timespec instante = {};
    clock_gettime(reloj, &instante);
    return static_cast<double>(instante.tv_sec) * 1e3 + static_cast<double>(instante.tv_nsec) / 1e6;
}

/// Espera a que la hoja se pinte ya con el libro abierto y no quede nada por atender.
class Vigia : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* objeto, QEvent* evento) override {
        // Lo que se pinta antes del bucle de eventos es la ventana sin su libro.
        const bool esLaHoja = evento->type() == QEvent::Paint && !visto_ &&
                              QThread::currentThread()->loopLevel() > 0 &&
                              qobject_cast<interfaz::WidgetHoja*>(objeto->parent()) != nullptr;
        if (esLaHoja) {
            visto_ = true;
            QTimer::singleShot(0, this, [] {
                std::printf("pintado %.3f %.3f\n", milisegundos(CLOCK_MONOTONIC),
                            milisegundos(CLOCK_PROCESS_CPUTIME_ID));
                std::fflush(stdout);
                std::_Exit(0);
            });
        }
        return QObject::eventFilter(objeto, evento);
    }

  private:
    bool visto_ = false;
};

void vigilar() {
    auto* const vigia = new Vigia(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(vigia);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(vigilar)

int main(int argc, char* argv[]) {
    return qMain(argc, argv);
}
