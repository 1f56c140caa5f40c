#include "formula/functions/argumentos.h"
#include "formula/functions/familias.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

Valor promedio(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!plegarNumeros<Pliegue::Suma>(args, evaluador, total, error))
        return Valor::deError(error);
    if (total.cuenta == 0)
        return Valor::deError(ErrorCelda::DivCero);
    return Valor::deNumero(total.valor / static_cast<double>(total.cuenta));
}

/// El mayor o el menor de los números; 0 si no hay.
template <Pliegue kPliegue> Valor extremo(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!plegarNumeros<kPliegue>(args, evaluador, total, error))
        return Valor::deError(error);
    return Valor::deNumero(total.valor);
}

Valor mediana(std::vector<Arg>& args, Evaluador& evaluador) {
    std::vector<double> numeros;
    ErrorCelda error{};
    if (!recolectarNumeros(args, evaluador, numeros, error))
        return Valor::deError(error);
    if (numeros.empty())
        return Valor::deError(ErrorCelda::ValorInvalido);
    // El de en medio queda en su sitio con los menores delante, sin ordenar el resto.
    const auto medio = numeros.begin() + static_cast<std::ptrdiff_t>(numeros.size() / 2);
    std::nth_element(numeros.begin(), medio, numeros.end(), numeroMenor);
    if (numeros.size() % 2 == 1)
        return Valor::deNumero(*medio);
    const double anterior = *std::max_element(numeros.begin(), medio, numeroMenor);
    return Valor::deNumero((anterior + *medio) * 0.5);
}

/// Ordenados, los números iguales quedan juntos y en el orden en que estaban; de los que más se
/// repiten gana el menor, que es el primero.
Valor moda(std::vector<Arg>& args, Evaluador& evaluador) {
    std::vector<double> numeros;
    ErrorCelda error{};
    if (!recolectarNumeros(args, evaluador, numeros, error))
        return Valor::deError(error);
    std::stable_sort(numeros.begin(), numeros.end(), numeroMenor);
    double mejor = 0;
    std::size_t mejorCuenta = 1;
    for (std::size_t i = 0; i < numeros.size();) {
        std::size_t fin = i + 1;
        while (fin < numeros.size() && numeros[fin] == numeros[i])
            ++fin;
        if (fin - i > mejorCuenta) {
            mejor = numeros[i];
            mejorCuenta = fin - i;
        }
        i = fin;
    }
    if (mejorCuenta == 1)
        return Valor::deError(ErrorCelda::ValorInvalido);
    return Valor::deNumero(mejor);
}

Valor desviacion(std::vector<Arg>& args, Evaluador& evaluador) {
    std::vector<double> numeros;
    ErrorCelda error{};
    if (!recolectarNumeros(args, evaluador, numeros, error))
        return Valor::deError(error);
    if (numeros.size() < 2)
        return Valor::deError(ErrorCelda::DivCero);
    const auto cuenta = static_cast<double>(numeros.size());
    double total = 0;
    for (const double numero : numeros)
        total += numero;
    const double media = total / cuenta;
    double cuadrados = 0;
    for (const double numero : numeros)
        cuadrados += (numero - media) * (numero - media);
    return Valor::deNumero(std::sqrt(cuadrados / (cuenta - 1)));
}

/// Cuántas celdas de un bloque cuentan; `cuenta` dice lo mismo de cada valor.
template <typename Condicion>
std::int64_t contarEnBloque(const Arg& bloque, const Evaluador& evaluador,
                            ContextoRecalculo::Contadas contadas, Condicion cuenta) {
    if (evaluador.contexto != nullptr && evaluador.contexto->conviene(bloque))
        return evaluador.contexto->contar(bloque, contadas);
    std::int64_t total = 0;
    recorrerCeldas(bloque, [&](std::int64_t, const VistaValor& celda) {
        total += cuenta(celda.tipo) ? 1 : 0;
        return true;
    });
    return total;
}

Valor contar(std::vector<Arg>& args, Evaluador& evaluador) {
    std::int64_t cuenta = 0;
    for (const Arg& arg : args) {
        if (arg.esRango)
            cuenta += contarEnBloque(arg, evaluador, ContextoRecalculo::Contadas::Numeros,
                                     [](TipoValor tipo) { return tipo == TipoValor::Numero; });
        else if (arg.valor.tipo == TipoValor::Numero || arg.valor.tipo == TipoValor::Logico)
            ++cuenta;
    }
    return Valor::deNumero(static_cast<double>(cuenta));
}

Valor contarOcupadas(std::vector<Arg>& args, Evaluador& evaluador) {
    std::int64_t cuenta = 0;
    for (const Arg& arg : args) {
        if (arg.esRango)
            cuenta += contarEnBloque(arg, evaluador, ContextoRecalculo::Contadas::Ocupadas,
                                     [](TipoValor tipo) { return tipo != TipoValor::Vacio; });
        else if (arg.valor.tipo != TipoValor::Vacio)
            ++cuenta;
    }
    return Valor::deNumero(static_cast<double>(cuenta));
}

constexpr std::string_view kFamilia = "estadísticas";

constexpr std::array kFunciones = {
    Funcion{"PROMEDIO",
            kFamilia,
            "valor o rango; …",
            "Media aritmética de los números.",
            "=PROMEDIO(B2:B6)",
            "23,2",
            {},
            promedio},
    Funcion{"MEDIANA",
            kFamilia,
            "valor o rango; …",
            "Número que queda en medio al ordenarlos, o la media de los dos centrales.",
            "=MEDIANA(4;1;3;2)",
            "2,5",
            {},
            mediana},
    Funcion{"MODA",
            kFamilia,
            "valor o rango; …",
            "Número que más se repite; si empatan varios, el menor.",
            "=MODA(3;1;3;1;2)",
            "1",
            {},
            moda},
    Funcion{"CONTAR",
            kFamilia,
            "valor o rango; …",
            "Cuántos números hay.",
            "=CONTAR(A1:C6)",
            "10",
            {},
            contar},
    Funcion{"CONTARA",
            kFamilia,
            "valor o rango; …",
            "Cuántos valores hay que no estén vacíos, sean de la clase que sean.",
            "=CONTARA(A1:C6)",
            "18",
            {},
            contarOcupadas},
    Funcion{"MAX",
            kFamilia,
            "valor o rango; …",
            "El mayor de los números; sin ninguno, 0.",
            "=MAX(B2:B6)",
            "42",
            {},
            extremo<Pliegue::Maximo>},
    Funcion{"MIN",
            kFamilia,
            "valor o rango; …",
            "El menor de los números; sin ninguno, 0.",
            "=MIN(B2:B6)",
            "8",
            {},
            extremo<Pliegue::Minimo>},
    Funcion{"DESVEST",
            kFamilia,
            "valor o rango; …",
            "Desviación estándar de una muestra de dos números o más.",
            "=DESVEST(2;4;4;4;5;5;7;9)",
            "2,138089935",
            {},
            desviacion},
};

} // namespace

std::span<const Funcion> funcionesEstadisticas() {
    return kFunciones;
}

} // namespace motor_formulas
