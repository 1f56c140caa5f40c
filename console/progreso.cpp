#include "console/progreso.h"

#include <ostream>

namespace consola {

namespace {

constexpr auto kCadencia = std::chrono::milliseconds(100);

} // namespace

Progreso::Progreso(Terminal& terminal, std::string accion)
    : terminal_(terminal), accion_(std::move(accion)) {
    if (terminal_.interactiva) {
        terminal_.errores << '\r' << accion_ << "…" << std::flush;
        proxima_ = std::chrono::steady_clock::now() + kCadencia;
    }
}

Progreso::~Progreso() {
    if (terminal_.interactiva) {
        terminal_.errores << "\r\033[K" << std::flush;
    }
}

void Progreso::avance(std::uint64_t hecho, std::uint64_t total) {
    if (!terminal_.interactiva || total == 0) {
        return;
    }
    const auto ahora = std::chrono::steady_clock::now();
    if (ahora < proxima_) {
        return;
    }
    proxima_ = ahora + kCadencia;
    const double parte = 100.0 * static_cast<double>(hecho) / static_cast<double>(total);
    terminal_.errores << '\r' << accion_ << "… " << static_cast<int>(parte) << " %" << std::flush;
}

} // namespace consola
