#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "formula/arg.h"
#include "formula/evaluador.h"
#include "formula/nodo_expr.h"
#include "model/valor.h"

namespace motor_formulas {

using Manejador = nucleo::Valor (*)(std::vector<Arg>&, Evaluador&);

/// Todo lo que se sabe de una función: lo usan el cálculo, la ayuda y la consola.
struct Funcion {
    std::string_view nombre;      ///< normalizado: "SUMAR.SI"
    std::string_view familia;     ///< "matemáticas", "texto"…
    std::string_view argumentos;  ///< como se escriben: "número; decimales"
    std::string_view descripcion; ///< una línea
    Manejador manejador;          ///< nulo en SI y SI.ERROR, que el evaluador resuelve sin evaluar de más
};

/// Las 46 funciones, en el orden en que se registran; SI y SI.ERROR al final.
std::span<const Funcion> funciones();

/// La función con exactamente ese nombre normalizado, con una sola consulta; nulo si no existe.
const Funcion* buscarFuncion(std::string_view nombre);

/// Evalúa una llamada. SI y SI.ERROR solo evalúan la rama elegida; una función desconocida da
/// "#¡NOMBRE?".
nucleo::Valor llamarFuncion(const std::string& nombre, const NodoExpr& nodo, Evaluador& evaluador);

Matriz comoMatriz(const Arg& arg);

/// Reúne los números de todos los argumentos. En un bloque solo cuentan los números; un valor
/// escrito directamente se convierte. Falso, con el error, en cuanto encuentra uno.
bool recolectarNumeros(const std::vector<Arg>& args, std::vector<double>& numeros,
                       nucleo::ErrorCelda& error);
bool recolectarNumeros(const std::vector<Arg>& args, Evaluador& evaluador,
                       std::vector<double>& numeros, nucleo::ErrorCelda& error);

} // namespace motor_formulas
