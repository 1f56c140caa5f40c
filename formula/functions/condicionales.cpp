#include "formula/functions/argumentos.h"
#include "formula/functions/bloque.h"
#include "formula/functions/criterio.h"
#include "formula/functions/familias.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
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

void anadir(Acumulado& total, const VistaValor& valor) {
    if (valor.tipo == TipoValor::Numero)
        total.anadir<Pliegue::Suma>(valor.numero);
}

std::int64_t contarBits(const std::vector<std::uint64_t>& bits) {
    std::int64_t cuenta = 0;
    for (const std::uint64_t palabra : bits)
        cuenta += std::popcount(palabra);
    return cuenta;
}

/// Los números que están en las posiciones que cumplen la condición; los dos bloques tienen las
/// mismas celdas. Recorre las celdas que existen de la condición, o las de los números si también
/// una vacía cumpliría.
Acumulado acumular(const Condicion& condicion, const Bloque& numeros) {
    Acumulado total;
    if (condicion.cumplenVacias()) {
        numeros.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
            if (valor.tipo == TipoValor::Numero && condicion.cumpleEn(posicion))
                anadir(total, valor);
            return true;
        });
    } else {
        condicion.bloque.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
            if (condicion.criterio.cumple(valor))
                anadir(total, numeros.en(posicion));
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
            anadir(total, valor);
        return true;
    });
    return total;
}

/// Si el recálculo sabe qué celdas de un bloque cumplen un criterio mejor que recorriéndolo.
bool convieneRecordar(const Bloque& bloque, const Evaluador& evaluador) {
    return evaluador.contexto != nullptr && bloque.columnas() == 1 &&
           evaluador.contexto->conviene(bloque.arg());
}

/// Lo común de SUMAR.SI y PROMEDIO.SI. Falso, con el error, si el criterio no sirve o los bloques
/// no tienen las mismas celdas.
bool acumularArgs(const std::vector<Arg>& args, const Evaluador& evaluador, Acumulado& total,
                  ErrorCelda& error) {
    LectorArgs lector(args);
    const Condicion condicion = leerCondicion(args, 0, lector);
    if (lector.fallo()) {
        error = lector.error().error;
        return false;
    }
    const Bloque numeros(args.size() == 2 ? args[0] : args[2]);
    if (numeros.celdas() != condicion.bloque.celdas()) {
        error = ErrorCelda::ValorInvalido;
        return false;
    }
    if (numeros.columnas() == 1 && numeros.arg().prestado() &&
        convieneRecordar(condicion.bloque, evaluador)) {
        std::vector<std::uint64_t> cumplen;
        evaluador.contexto->cumplen(condicion.bloque.arg(), condicion.criterio, cumplen);
        total = evaluador.contexto->sumar(numeros.arg(), cumplen);
    } else {
        total = args.size() == 2 ? acumular(condicion) : acumular(condicion, numeros);
    }
    return true;
}

Valor sumarSi(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!acumularArgs(args, evaluador, total, error))
        return Valor::deError(error);
    return Valor::deNumero(total.valor);
}

Valor promedioSi(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!acumularArgs(args, evaluador, total, error))
        return Valor::deError(error);
    if (total.cuenta == 0)
        return Valor::deError(ErrorCelda::DivCero);
    return Valor::deNumero(total.valor / static_cast<double>(total.cuenta));
}

Valor contarSi(std::vector<Arg>& args, Evaluador& evaluador) {
    LectorArgs lector(args);
    const Condicion condicion = leerCondicion(args, 0, lector);
    if (lector.fallo())
        return lector.error();
    if (convieneRecordar(condicion.bloque, evaluador)) {
        std::vector<std::uint64_t> cumplen;
        evaluador.contexto->cumplen(condicion.bloque.arg(), condicion.criterio, cumplen);
        return Valor::deNumero(static_cast<double>(contarBits(cumplen)));
    }
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

/// Las posiciones que cumplen todas las condiciones, si el recálculo ayuda con todas.
bool cumplenTodas(const std::vector<Condicion>& condiciones, const Evaluador& evaluador,
                  std::vector<std::uint64_t>& todas) {
    std::vector<std::uint64_t> cumplen;
    for (const Condicion& condicion : condiciones) {
        if (!convieneRecordar(condicion.bloque, evaluador))
            return false;
        evaluador.contexto->cumplen(condicion.bloque.arg(), condicion.criterio, cumplen);
        if (todas.empty())
            todas = cumplen;
        for (std::size_t i = 0; i < todas.size(); ++i)
            todas[i] &= cumplen[i];
    }
    return true;
}

Valor sumarSiConjunto(std::vector<Arg>& args, Evaluador& evaluador) {
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
    std::vector<std::uint64_t> cumplen;
    if (numeros.columnas() == 1 && numeros.arg().prestado() &&
        cumplenTodas(condiciones, evaluador, cumplen))
        return Valor::deNumero(evaluador.contexto->sumar(numeros.arg(), cumplen).valor);
    Acumulado total;
    numeros.recorrer([&](std::int64_t posicion, const VistaValor& valor) {
        const bool suma = valor.tipo == TipoValor::Numero &&
                          std::all_of(condiciones.begin(), condiciones.end(),
                                      [&](const Condicion& c) { return c.cumpleEn(posicion); });
        if (suma)
            anadir(total, valor);
        return true;
    });
    return Valor::deNumero(total.valor);
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
