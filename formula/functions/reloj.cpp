#include "formula/functions/reloj.h"

#include <ctime>

namespace motor_formulas {

namespace {

HoraLocal relojDelSistema() {
    const std::time_t ahora = std::time(nullptr);
    std::tm local{};
    localtime_r(&ahora, &local);
    return {local.tm_mday, local.tm_mon + 1, local.tm_year + 1900,
            local.tm_hour, local.tm_min,     local.tm_sec};
}

Reloj relojEnUso = relojDelSistema;

} // namespace

Reloj cambiarReloj(Reloj nuevo) {
    const Reloj anterior = relojEnUso;
    relojEnUso = nuevo != nullptr ? nuevo : relojDelSistema;
    return anterior;
}

HoraLocal leerReloj() {
    return relojEnUso();
}

} // namespace motor_formulas
