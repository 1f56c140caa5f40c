#include "printing/plazo.h"

#include <csignal>
#include <new>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace impresion {

namespace {

void acabar(int) {
    _exit(kFueraDePlazo);
}

void acabarSinMemoria() {
    _exit(kFueraDePlazo);
}

} // namespace

void ponerPlazo(int milisegundos) {
    std::signal(SIGALRM, acabar);
    itimerval plazo{};
    plazo.it_value.tv_sec = milisegundos / 1000;
    plazo.it_value.tv_usec = (milisegundos % 1000) * 1000;
    setitimer(ITIMER_REAL, &plazo, nullptr);
}

void toparMemoria(unsigned long megabytes) {
    std::set_new_handler(acabarSinMemoria);
    const rlim_t bytes = rlim_t{megabytes} * 1024 * 1024;
    const rlimit tope{bytes, bytes};
    setrlimit(RLIMIT_DATA, &tope);
}

} // namespace impresion
