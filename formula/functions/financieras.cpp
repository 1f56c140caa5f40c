#include "formula/functions/argumentos.h"
#include "formula/functions/familias.h"

#include <array>
#include <cmath>

namespace motor_formulas {

namespace {

// Las cuatro funciones despejan una incógnita de la misma ecuación:
//
//     va·(1 + r)^n + pago·(1 + r·t)·((1 + r)^n − 1)/r + vf = 0
//
// que con r = 0 es va + pago·n + vf = 0. t es 1 si se paga al principio de cada periodo.

using nucleo::ErrorCelda;
using nucleo::Valor;

struct Crecimiento {
    double factor;   ///< (1 + r)^n
    double menosUno; ///< (1 + r)^n − 1, exacto también cuando r es diminuto
};

Crecimiento crecimiento(double tasa, double periodos) {
    if (tasa > -1) {
        const double exponente = periodos * std::log1p(tasa);
        return {std::exp(exponente), std::expm1(exponente)};
    }
    const double factor = std::pow(1 + tasa, periodos);
    return {factor, factor - 1};
}

/// ((1 + r)^n − 1)/r: lo que vale al final un pago de 1 en cada periodo.
double anualidad(double tasa, double periodos) {
    return tasa == 0 ? periodos : crecimiento(tasa, periodos).menosUno / tasa;
}

double tipoDePago(double tipo) {
    return tipo != 0 ? 1 : 0;
}

/// (1 + r)^n no existe: es una potencia negativa de cero.
bool divideEntreCero(double tasa, double periodos) {
    return tasa == -1 && periodos < 0;
}

/// Un resultado que no es finito es un error, como en las operaciones; −0 se da como 0.
Valor resultadoFinito(double numero) {
    return std::isfinite(numero) ? Valor::deNumero(numero + 0.0)
                                 : Valor::deError(ErrorCelda::ValorInvalido);
}

Valor valorFuturo(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double tasa = lector.numero(0);
    const double periodos = lector.numero(1);
    const double pago = lector.numero(2);
    const double va = lector.numero(3, 0);
    const double tipo = tipoDePago(lector.numero(4, 0));
    if (lector.fallo())
        return lector.error();
    if (divideEntreCero(tasa, periodos))
        return Valor::deError(ErrorCelda::DivCero);
    return resultadoFinito(-(va * crecimiento(tasa, periodos).factor +
                             pago * (1 + tasa * tipo) * anualidad(tasa, periodos)));
}

/// Divide la ecuación entre (1 + r)^n multiplicándola por (1 + r)^−n, que no desborda cuando aquel
/// sí.
Valor valorActual(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double tasa = lector.numero(0);
    const double periodos = lector.numero(1);
    const double pago = lector.numero(2);
    const double vf = lector.numero(3, 0);
    const double tipo = tipoDePago(lector.numero(4, 0));
    if (lector.fallo())
        return lector.error();
    const double descuento = crecimiento(tasa, -periodos).factor;
    if (std::isinf(descuento) || divideEntreCero(tasa, periodos))
        return Valor::deError(ErrorCelda::DivCero);
    return resultadoFinito(
        -(vf * descuento - pago * (1 + tasa * tipo) * anualidad(tasa, -periodos)));
}

/// Como en `valorActual`, si (1 + r)^n pasa de 1 la ecuación se divide entre él.
Valor pagoPorPeriodo(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double tasa = lector.numero(0);
    const double periodos = lector.numero(1);
    const double va = lector.numero(2);
    const double vf = lector.numero(3, 0);
    const double tipo = tipoDePago(lector.numero(4, 0));
    if (lector.fallo())
        return lector.error();
    if (periodos == 0 || divideEntreCero(tasa, periodos))
        return Valor::deError(ErrorCelda::DivCero);
    const double factor = crecimiento(tasa, periodos).factor;
    const bool dividida = factor > 1;
    const double capital =
        dividida ? va + vf * crecimiento(tasa, -periodos).factor : va * factor + vf;
    const double porUnidad =
        (1 + tasa * tipo) * (dividida ? -anualidad(tasa, -periodos) : anualidad(tasa, periodos));
    if (porUnidad == 0)
        return Valor::deError(ErrorCelda::DivCero);
    return resultadoFinito(-capital / porUnidad);
}

/// Los datos conocidos de la ecuación cuando la incógnita es la tasa.
struct Prestamo {
    double periodos;
    double pago;
    double va;
    double vf;
    double tipo;

    /// Lado izquierdo de la ecuación.
    double saldo(double tasa) const {
        return va * crecimiento(tasa, periodos).factor +
               pago * (1 + tasa * tipo) * anualidad(tasa, periodos) + vf;
    }
};

constexpr double kEstimacion = 0.1;
constexpr int kPasosMaximos = 100;
constexpr double kSaldoNulo = 1e-9;
constexpr double kIncremento = 1e-6;
constexpr double kPasoNulo = 1e-12;

/// Método de Newton con derivada numérica; las tasas no bajan de −1.
Valor tasaPorPeriodo(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double periodos = lector.numero(0);
    const double pago = lector.numero(1);
    const double va = lector.numero(2);
    const double vf = lector.numero(3, 0);
    const double tipo = tipoDePago(lector.numero(4, 0));
    double tasa = lector.numero(5, kEstimacion);
    if (lector.fallo())
        return lector.error();
    const Prestamo prestamo{periodos, pago, va, vf, tipo};
    if (!(tasa > -1))
        tasa = kEstimacion;
    for (int paso = 0; paso < kPasosMaximos; ++paso) {
        const double saldo = prestamo.saldo(tasa);
        if (std::abs(saldo) < kSaldoNulo)
            return Valor::deNumero(tasa);
        const double pendiente = (prestamo.saldo(tasa + kIncremento) - saldo) / kIncremento;
        if (pendiente == 0 || std::isnan(pendiente))
            break;
        double siguiente = tasa - saldo / pendiente;
        if (!(siguiente > -1))
            siguiente = (tasa - 1) * 0.5;
        if (std::abs(siguiente - tasa) < kPasoNulo)
            return Valor::deNumero(siguiente);
        tasa = siguiente;
    }
    return Valor::deError(ErrorCelda::ValorInvalido);
}

constexpr std::string_view kFamilia = "financieras";

constexpr std::array kFunciones = {
    Funcion{"VF",
            kFamilia,
            "tasa; periodos; pago; [valor actual]; [al principio]",
            "Valor futuro de una serie de pagos iguales.",
            "=VF(1%;12;-100)",
            "1268,250301",
            {3, 5},
            valorFuturo},
    Funcion{"VA",
            kFamilia,
            "tasa; periodos; pago; [valor futuro]; [al principio]",
            "Valor actual de una serie de pagos iguales.",
            "=VA(1%;12;-100)",
            "1125,507747",
            {3, 5},
            valorActual},
    Funcion{"PAGO",
            kFamilia,
            "tasa; periodos; valor actual; [valor futuro]; [al principio]",
            "Pago por periodo que devuelve un préstamo.",
            "=PAGO(1%;12;1000)",
            "-88,84878868",
            {3, 5},
            pagoPorPeriodo},
    Funcion{"TASA",
            kFamilia,
            "periodos; pago; valor actual; [valor futuro]; [al principio]; [estimación]",
            "Tasa de interés por periodo de una serie de pagos iguales.",
            "=TASA(12;-100;1000)",
            "0,02922854077",
            {3, 6},
            tasaPorPeriodo},
};

} // namespace

std::span<const Funcion> funcionesFinancieras() {
    return kFunciones;
}

} // namespace motor_formulas
