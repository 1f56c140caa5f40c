#include "formula/functions/argumentos.h"
#include "formula/functions/familias.h"

#include <array>
#include <cmath>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::Valor;

Valor suma(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!plegarNumeros<Pliegue::Suma>(args, evaluador, total, error))
        return Valor::deError(error);
    return Valor::deNumero(total.valor);
}

Valor producto(std::vector<Arg>& args, Evaluador& evaluador) {
    Acumulado total;
    ErrorCelda error{};
    if (!plegarNumeros<Pliegue::Producto>(args, evaluador, total, error))
        return Valor::deError(error);
    return Valor::deNumero(total.cuenta == 0 ? 0 : total.valor);
}

Valor redondear(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double numero = lector.numero(0);
    const double decimales = std::trunc(lector.numero(1));
    if (lector.fallo())
        return lector.error();
    const double factor = std::pow(10.0, decimales);
    return Valor::deNumero(std::round(numero * factor) / factor);
}

Valor potencia(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double base = lector.numero(0);
    const double exponente = lector.numero(1);
    if (lector.fallo())
        return lector.error();
    const double resultado = std::pow(base, exponente);
    if (!std::isfinite(resultado))
        return Valor::deError(ErrorCelda::ValorInvalido);
    return Valor::deNumero(resultado);
}

Valor raiz(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double numero = lector.numero(0);
    if (lector.fallo())
        return lector.error();
    if (numero < 0)
        return Valor::deError(ErrorCelda::ValorInvalido);
    return Valor::deNumero(std::sqrt(numero));
}

Valor absoluto(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double numero = lector.numero(0);
    return lector.fallo() ? lector.error() : Valor::deNumero(std::abs(numero));
}

Valor entero(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double numero = lector.numero(0);
    return lector.fallo() ? lector.error() : Valor::deNumero(std::floor(numero));
}

Valor residuo(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const double dividendo = lector.numero(0);
    const double divisor = lector.numero(1);
    if (lector.fallo())
        return lector.error();
    if (divisor == 0)
        return Valor::deError(ErrorCelda::DivCero);
    return Valor::deNumero(dividendo - divisor * std::floor(dividendo / divisor));
}

constexpr std::string_view kFamilia = "matemáticas";

constexpr std::array kFunciones = {
    Funcion{
        "SUMA", kFamilia, "valor o rango; …", "Suma números.", "=SUMA(B2:B6;10)", "126", {}, suma},
    Funcion{"PRODUCTO",
            kFamilia,
            "valor o rango; …",
            "Multiplica números; sin ninguno da 0.",
            "=PRODUCTO(2;3;7)",
            "42",
            {},
            producto},
    Funcion{"REDONDEAR",
            kFamilia,
            "número; decimales",
            "Redondea a un número de decimales; si es negativo, a decenas, centenas y más.",
            "=REDONDEAR(1234,5678;2)",
            "1234,57",
            {2, 2},
            redondear},
    Funcion{"POTENCIA",
            kFamilia,
            "base; exponente",
            "Eleva la base al exponente.",
            "=POTENCIA(2;10)",
            "1024",
            {2, 2},
            potencia},
    Funcion{"RAIZ",
            kFamilia,
            "número",
            "Raíz cuadrada de un número que no sea negativo.",
            "=RAIZ(81)",
            "9",
            {1, 1},
            raiz},
    Funcion{"ABS",
            kFamilia,
            "número",
            "Valor absoluto: el número sin su signo.",
            "=ABS(-7,5)",
            "7,5",
            {1, 1},
            absoluto},
    Funcion{"ENTERO",
            kFamilia,
            "número",
            "Mayor entero que no supera el número.",
            "=ENTERO(-2,5)",
            "-3",
            {1, 1},
            entero},
    Funcion{"RESIDUO",
            kFamilia,
            "dividendo; divisor",
            "Resto de la división, con el signo del divisor.",
            "=RESIDUO(-7;2)",
            "1",
            {2, 2},
            residuo},
};

} // namespace

std::span<const Funcion> funcionesMatematicas() {
    return kFunciones;
}

} // namespace motor_formulas
