#pragma once

#include "formula/arg.h"
#include "formula/evaluador.h"
#include "formula/nodo_expr.h"
#include "model/valor.h"

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

using Manejador = nucleo::Valor (*)(std::vector<Arg>&, Evaluador&);

/// Cuántos argumentos admite una función.
struct CuentaArgumentos {
    static constexpr std::size_t kSinLimite = std::numeric_limits<std::size_t>::max();

    std::size_t minimo = 0;
    std::size_t maximo = kSinLimite;
    bool soloImpar = false;

    constexpr bool admite(std::size_t cuenta) const {
        return minimo <= cuenta && cuenta <= maximo && (!soloImpar || cuenta % 2 == 1);
    }
};

/// Todo lo que se sabe de una función: lo usan el cálculo, la ayuda y la consola.
struct Funcion {
    std::string_view nombre;      ///< normalizado: "SUMAR.SI"
    std::string_view familia;     ///< "matemáticas", "texto"…
    std::string_view argumentos;  ///< como se escriben: "número; decimales"
    std::string_view descripcion; ///< una línea
    std::string_view ejemplo;     ///< una fórmula sobre la hoja de ejemplo de la ayuda
    std::string_view resultado;   ///< lo que el ejemplo muestra
    CuentaArgumentos cuenta;
    Manejador manejador; ///< nulo en SI y SI.ERROR, que el evaluador resuelve sin evaluar de más
};

/// Todas las funciones, en el orden en que se registran; SI y SI.ERROR al final.
std::span<const Funcion> funciones();

/// La función con exactamente ese nombre normalizado, con una sola consulta; nulo si no existe.
const Funcion* buscarFuncion(std::string_view nombre);

/// Ejecuta una función sobre sus argumentos ya evaluados; "#¡VALOR!" si su número no es admisible.
/// `funcion` no es SI ni SI.ERROR. Es la única comprobación de la cuenta: los manejadores ya no la
/// hacen.
nucleo::Valor ejecutarFuncion(const Funcion& funcion, std::vector<Arg>& args, Evaluador& evaluador);

/// Evalúa una llamada. SI y SI.ERROR solo evalúan la rama elegida; una función desconocida da
/// "#¡NOMBRE?".
nucleo::Valor llamarFuncion(const std::string& nombre, const NodoExpr& nodo, Evaluador& evaluador);

/// El bloque de un argumento con todos sus valores; uno suelto da un bloque de 1 × 1.
Matriz comoMatriz(const Arg& arg);

/// Reúne los números de todos los argumentos. En un bloque solo cuentan los números; un valor
/// escrito directamente se convierte. Falso, con el error, en cuanto encuentra uno.
bool recolectarNumeros(const std::vector<Arg>& args, std::vector<double>& numeros,
                       nucleo::ErrorCelda& error);
bool recolectarNumeros(const std::vector<Arg>& args, const Evaluador& evaluador,
                       std::vector<double>& numeros, nucleo::ErrorCelda& error);

} // namespace motor_formulas
