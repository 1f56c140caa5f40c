#include "formula/functions/argumentos.h"
#include "formula/functions/bloque.h"
#include "formula/functions/criterio.h"
#include "formula/functions/familias.h"

#include <algorithm>
#include <array>
#include <vector>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

/// Un bloque y el criterio que deben cumplir sus celdas.
struct Condicion {
    Bloque bloque;
    Criterio criterio;

    bool cumpleEn(std::int64_t posicion) const { return criterio.cumple(bloque.en(posicion)); }
    bool cumplenVacias() const { return criterio.cumple(VistaValor{}); }
};

/// La condición que forman un argumento y el siguiente, que es su criterio.
Condicion leerCondicion(const std::vector<Arg>& args, std::size_t indice, LectorArgs& lector) {
    return {Bloque(args[indice]), Criterio::desdeValor(aValor(lector.valor(indice + 1)))};
}

struct Acumulado {
    double suma = 0;
    std::int64_t cuenta = 0;

    void anadir(const VistaValor& valor) {
        if (valor.tipo != TipoValor::Numero)
            return;
        suma += valor.numero;
        ++cuenta;
    }
};

/// Los números que están en las posiciones que cumplen la condición; los dos bloques tienen las
/// mismas celdas. Recorre las celdas que existen de la condición, o las de los números si también
/// una vacía cumpliría.
Acumulado acumular(const Condicion& condicion, const Bloque& numeros) {
    Acumulado total;
    if (condicion.cumplenVacias()) {
        numeros.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
            if (valor.tipo == TipoValor::Numero && condicion.cumpleEn(posicion))
                total.anadir(valor);
            return true;
        });
    } else {
        condicion.bloque.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
            if (condicion.criterio.cumple(valor))
                total.anadir(numeros.en(posicion));
            return true;
        });
    }
    return total;
}

/// Los números del propio bloque de la condición que la cumplen.
Acumulado acumular(const Condicion& condicion) {
    Acumulado total;
    condicion.bloque.recorrer([&](std::int64_t, const VistaValor& valor) {
        if (valor.tipo == TipoValor::Numero && condicion.criterio.cumple(valor))
            total.anadir(valor);
        return true;
    });
    return total;
}

/// Lo común de SUMAR.SI y PROMEDIO.SI. Falso, con el error, si el criterio no sirve o los bloques
/// no tienen las mismas celdas.
bool acumularArgs(const std::vector<Arg>& args, Acumulado& total, ErrorCelda& error) {
    LectorArgs lector(args);
    const Condicion condicion = leerCondicion(args, 0, lector);
    if (lector.fallo()) {
        error = lector.error().error;
        return false;
    }
    if (args.size() == 2) {
        total = acumular(condicion);
        return true;
    }
    const Bloque numeros(args[2]);
    if (numeros.celdas() != condicion.bloque.celdas()) {
        error = ErrorCelda::ValorInvalido;
        return false;
    }
    total = acumular(condicion, numeros);
    return true;
}

Valor sumarSi(std::vector<Arg>& args, Evaluador&) {
    Acumulado total;
    ErrorCelda error{};
    return acumularArgs(args, total, error) ? Valor::deNumero(total.suma) : Valor::deError(error);
}

Valor promedioSi(std::vector<Arg>& args, Evaluador&) {
    Acumulado total;
    ErrorCelda error{};
    if (!acumularArgs(args, total, error))
        return Valor::deError(error);
    if (total.cuenta == 0)
        return Valor::deError(ErrorCelda::DivCero);
    return Valor::deNumero(total.suma / static_cast<double>(total.cuenta));
}

Valor contarSi(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const Condicion condicion = leerCondicion(args, 0, lector);
    if (lector.fallo())
        return lector.error();
    std::int64_t huecos = condicion.bloque.celdas();
    std::int64_t cumplen = 0;
    condicion.bloque.recorrer([&](std::int64_t, const VistaValor& valor) {
        --huecos;
        cumplen += condicion.criterio.cumple(valor) ? 1 : 0;
        return true;
    });
    if (condicion.cumplenVacias())
        cumplen += huecos;
    return Valor::deNumero(static_cast<double>(cumplen));
}

Valor sumarSiConjunto(std::vector<Arg>& args, Evaluador&) {
    const Bloque numeros(args[0]);
    std::vector<Condicion> condiciones;
    LectorArgs lector(args);
    for (std::size_t i = 1; i < args.size(); i += 2) {
        condiciones.push_back(leerCondicion(args, i, lector));
        if (lector.fallo())
            return lector.error();
        if (condiciones.back().bloque.celdas() != numeros.celdas())
            return Valor::deError(ErrorCelda::ValorInvalido);
    }
    Acumulado total;
    numeros.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
        const bool suma = valor.tipo == TipoValor::Numero &&
                          std::all_of(condiciones.begin(), condiciones.end(),
                                      [&](const Condicion& c) { return c.cumpleEn(posicion); });
        if (suma)
            total.anadir(valor);
        return true;
    });
    return Valor::deNumero(total.suma);
}

constexpr std::string_view kFamilia = "condicionales";

constexpr std::array kFunciones = {
    Funcion{"SUMAR.SI",
            kFamilia,
            "rango; criterio; [rango de suma]",
            "Suma los números cuya celda emparejada cumple un criterio.",
            "=SUMAR.SI(A2:A6;\"Pera\";B2:B6)",
            "20",
            {2, 3},
            sumarSi},
    Funcion{"CONTAR.SI",
            kFamilia,
            "rango; criterio",
            "Cuántas celdas cumplen un criterio.",
            "=CONTAR.SI(B2:B6;\">20\")",
            "3",
            {2, 2},
            contarSi},
    Funcion{"PROMEDIO.SI",
            kFamilia,
            "rango; criterio; [rango de promedio]",
            "Media de los números cuya celda emparejada cumple un criterio.",
            "=PROMEDIO.SI(A2:A6;\"Pera\";C2:C6)",
            "1,625",
            {2, 3},
            promedioSi},
    Funcion{"SUMAR.SI.CONJUNTO",
            kFamilia,
            "rango de suma; rango; criterio; [rango; criterio]; …",
            "Suma los números cuyas celdas emparejadas cumplen todos los criterios.",
            "=SUMAR.SI.CONJUNTO(B2:B6;A2:A6;\"Pera\";C2:C6;\">1,6\")",
            "8",
            {3, CuentaArgumentos::kSinLimite, true},
            sumarSiConjunto},
};

} // namespace

std::span<const Funcion> funcionesCondicionales() {
    return kFunciones;
}

} // namespace motor_formulas
