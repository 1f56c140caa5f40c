#include "model/fechas.h"

#include "formula/functions/argumentos.h"
#include "formula/functions/familias.h"
#include "formula/functions/reloj.h"

#include <array>
#include <cmath>

namespace motor_formulas {

namespace {

using nucleo::Valor;

Valor hoy(std::vector<Arg>&, Evaluador&) {
    const HoraLocal ahora = leerReloj();
    return Valor::deNumero(nucleo::serialDesdeFecha(ahora.dia, ahora.mes, ahora.anio));
}

Valor ahora(std::vector<Arg>&, Evaluador&) {
    const HoraLocal hora = leerReloj();
    const int segundos = hora.hora * 3600 + hora.minuto * 60 + hora.segundo;
    return Valor::deNumero(nucleo::serialDesdeFecha(hora.dia, hora.mes, hora.anio) +
                           segundos / 86400.0);
}

struct Fecha {
    int dia = 0;
    int mes = 0;
    int anio = 0;
};

Valor parteDeFecha(const std::vector<Arg>& args, int Fecha::*parte) {
    LectorArgs lector(args);
    const double serial = lector.numero(0);
    if (lector.fallo())
        return lector.error();
    Fecha fecha;
    nucleo::fechaDesdeSerial(serial, fecha.dia, fecha.mes, fecha.anio);
    return Valor::deNumero(fecha.*parte);
}

Valor dia(std::vector<Arg>& args, Evaluador&) {
    return parteDeFecha(args, &Fecha::dia);
}

Valor mes(std::vector<Arg>& args, Evaluador&) {
    return parteDeFecha(args, &Fecha::mes);
}

Valor anio(std::vector<Arg>& args, Evaluador&) {
    return parteDeFecha(args, &Fecha::anio);
}

Valor dias(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double final = lector.numero(0);
    const double inicial = lector.numero(1);
    if (lector.fallo())
        return lector.error();
    return Valor::deNumero(std::floor(final) - std::floor(inicial));
}

constexpr std::string_view kFamilia = "fechas";

constexpr std::array kFunciones = {
    Funcion{"HOY", kFamilia, "", "Serie de la fecha de hoy.", "=HOY()", "45658", {}, hoy},
    Funcion{"AHORA",
            kFamilia,
            "",
            "Serie de la fecha de hoy más la parte del día transcurrida.",
            "=AHORA()",
            "45658,75",
            {},
            ahora},
    Funcion{"DIA",
            kFamilia,
            "fecha",
            "Día del mes de una fecha.",
            "=DIA(\"15/03/2024\")",
            "15",
            {1, 1},
            dia},
    Funcion{"MES",
            kFamilia,
            "fecha",
            "Mes de una fecha, de 1 a 12.",
            "=MES(\"15/03/2024\")",
            "3",
            {1, 1},
            mes},
    Funcion{"AÑO",
            kFamilia,
            "fecha",
            "Año de una fecha.",
            "=AÑO(\"15/03/2024\")",
            "2024",
            {1, 1},
            anio},
    Funcion{"DIAS",
            kFamilia,
            "fecha final; fecha inicial",
            "Días que van de una fecha a otra.",
            "=DIAS(\"15/03/2024\";\"01/03/2024\")",
            "14",
            {2, 2},
            dias},
};

} // namespace

std::span<const Funcion> funcionesFechas() {
    return kFunciones;
}

} // namespace motor_formulas
