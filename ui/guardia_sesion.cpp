#include "ui/guardia_sesion.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace interfaz {

namespace {

constexpr std::array<int, 3> kSenales = {SIGTERM, SIGHUP, SIGINT};

volatile std::sig_atomic_t extremoDeEscritura = -1;
std::array<struct sigaction, kSenales.size()> anteriores;

/// En un manejador solo se puede escribir: el resto lo hace el bucle de eventos.
extern "C" void avisarTermino(int /*senal*/) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t escritos = write(extremoDeEscritura, &byte, 1);
}

} // namespace

GuardiaSesion::GuardiaSesion(QObject* parent) : QObject(parent) {
    if (pipe2(tubo_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    aviso_ = new QSocketNotifier(tubo_[0], QSocketNotifier::Read, this);
    connect(aviso_, &QSocketNotifier::activated, this, &GuardiaSesion::leerAviso);
    extremoDeEscritura = tubo_[1];
    struct sigaction accion = {};
    accion.sa_handler = avisarTermino;
    accion.sa_flags = SA_RESTART;
    sigemptyset(&accion.sa_mask);
    for (std::size_t i = 0; i < kSenales.size(); ++i) {
        sigaction(kSenales[i], &accion, &anteriores[i]);
        // Quien lanzó el programa con nohup quiere que siga vivo.
        if (anteriores[i].sa_handler == SIG_IGN) {
            sigaction(kSenales[i], &anteriores[i], nullptr);
        }
    }
}

GuardiaSesion::~GuardiaSesion() {
    if (aviso_ == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < kSenales.size(); ++i) {
        sigaction(kSenales[i], &anteriores[i], nullptr);
    }
    extremoDeEscritura = -1;
    delete aviso_;
    close(tubo_[0]);
    close(tubo_[1]);
}

void GuardiaSesion::leerAviso() {
    std::array<char, 16> bytes{};
    while (read(tubo_[0], bytes.data(), bytes.size()) > 0) {
    }
    terminoPedido_ = true;
    emit terminar();
}

} // namespace interfaz
