#include "formula/functions/argumentos.h"
#include "formula/functions/familias.h"

#include <array>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

/// Lo que dicen los valores que cuentan: los números y lógicos de los rangos, y todo lo escrito
/// directamente.
struct Recuento {
    bool algunoVerdadero = false;
    bool algunoFalso = false;

    void anotar(bool logico) { (logico ? algunoVerdadero : algunoFalso) = true; }
};

/// Examina todos los argumentos aunque el resultado ya se sepa, para que un error posterior gane.
bool recontar(const std::vector<Arg>& args, Recuento& recuento, ErrorCelda& error) {
    const auto anotarConvertido = [&](const VistaValor& valor) {
        bool logico = false;
        if (!convertirEnLogico(valor, logico, error))
            return false;
        recuento.anotar(logico);
        return true;
    };
    const auto anotarCelda = [&](std::int64_t, const VistaValor& celda) {
        const bool cuenta = celda.tipo != TipoValor::Texto && celda.tipo != TipoValor::Vacio;
        return !cuenta || anotarConvertido(celda);
    };
    for (const Arg& arg : args) {
        if (!(arg.esRango ? recorrerCeldas(arg, anotarCelda)
                          : anotarConvertido(vistaDe(arg.valor))))
            return false;
    }
    return true;
}

Valor y(std::vector<Arg>& args, Evaluador&) {
    Recuento recuento;
    ErrorCelda error{};
    return recontar(args, recuento, error) ? Valor::deLogico(!recuento.algunoFalso)
                                           : Valor::deError(error);
}

Valor o(std::vector<Arg>& args, Evaluador&) {
    Recuento recuento;
    ErrorCelda error{};
    return recontar(args, recuento, error) ? Valor::deLogico(recuento.algunoVerdadero)
                                           : Valor::deError(error);
}

Valor no(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const bool logico = lector.logico(0);
    return lector.fallo() ? lector.error() : Valor::deLogico(!logico);
}

constexpr std::string_view kFamilia = "lógicas";

constexpr std::array kFunciones = {
    Funcion{"Y",
            kFamilia,
            "condición o rango; …",
            "Verdadero si todas las condiciones lo son.",
            "=Y(B2>10;C2<2)",
            "VERDADERO",
            {1},
            y},
    Funcion{"O",
            kFamilia,
            "condición o rango; …",
            "Verdadero si alguna condición lo es.",
            "=O(B2>100;C2<2)",
            "VERDADERO",
            {1},
            o},
    Funcion{"NO",
            kFamilia,
            "condición",
            "Lo contrario de una condición.",
            "=NO(B2>100)",
            "VERDADERO",
            {1, 1},
            no},
    Funcion{"SI",
            kFamilia,
            "condición; si es verdadera; [si es falsa]",
            "Elige un valor según una condición; el otro no se calcula.",
            "=SI(B2>10;\"mucho\";\"poco\")",
            "mucho",
            {2, 3},
            nullptr},
    Funcion{"SI.ERROR",
            kFamilia,
            "valor; valor si es un error",
            "Un valor, u otro en su lugar si el primero es un error.",
            "=SI.ERROR(B2/0;\"sin dato\")",
            "sin dato",
            {2, 2},
            nullptr},
};

} // namespace

std::span<const Funcion> funcionesLogicas() {
    return kFunciones;
}

} // namespace motor_formulas
