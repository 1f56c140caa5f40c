#pragma once

namespace motor_formulas {

/// Instante en hora local.
struct HoraLocal {
    int dia = 1;
    int mes = 1;
    int anio = 1900;
    int hora = 0;
    int minuto = 0;
    int segundo = 0;
};

using Reloj = HoraLocal (*)();

/// Cambia el reloj que leen HOY y AHORA y devuelve el anterior; nulo vuelve al del sistema.
Reloj cambiarReloj(Reloj nuevo);

HoraLocal leerReloj();

} // namespace motor_formulas
