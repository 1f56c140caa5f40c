#include "console/json.h"
#include "console/ordenes/ordenes.h"
#include "console/tabla.h"
#include "formula/functions/catalogo.h"

#include <array>
#include <ostream>
#include <string>

namespace consola {

namespace {

std::array<Hueco, 2> filaDe(const motor_formulas::Funcion& funcion) {
    std::string llamada(funcion.nombre);
    llamada.append("(").append(funcion.argumentos).append(")");
    return {Hueco{std::move(llamada), Lado::Izquierda},
            Hueco{std::string(funcion.descripcion), Lado::Izquierda}};
}

void escribirJson(std::ostream& salida) {
    salida << '[';
    const char* separador = "\n";
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones()) {
        salida << separador << "{\"nombre\": " << cadenaJson(funcion.nombre)
               << ", \"familia\": " << cadenaJson(funcion.familia)
               << ", \"argumentos\": " << cadenaJson(funcion.argumentos)
               << ", \"descripcion\": " << cadenaJson(funcion.descripcion) << '}';
        separador = ",\n";
    }
    salida << "\n]\n";
}

} // namespace

Resultado listarFunciones(const Argumentos& argumentos, Terminal& terminal) {
    if (argumentos.tiene("--json")) {
        escribirJson(terminal.salida);
        return {};
    }
    Tabla tabla;
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones()) {
        tabla.medir(filaDe(funcion));
    }
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones()) {
        tabla.escribir(terminal.salida, filaDe(funcion));
    }
    return {};
}

} // namespace consola
