#include "console/json.h"
#include "console/ordenes/ordenes.h"
#include "console/tabla.h"
#include "formula/functions/catalogo.h"
#include "formula/tokenizador.h"

#include <array>
#include <ostream>
#include <string>

namespace consola {

namespace {

std::string llamada(const motor_formulas::Funcion& funcion) {
    std::string texto(funcion.nombre);
    return texto.append("(").append(funcion.argumentos).append(")");
}

std::array<Hueco, 2> filaDe(const motor_formulas::Funcion& funcion) {
    return {Hueco{llamada(funcion), Lado::Izquierda},
            Hueco{std::string(funcion.descripcion), Lado::Izquierda}};
}

Resultado explicar(const std::string& nombre, std::ostream& salida) {
    const auto* funcion =
        motor_formulas::buscarFuncion(motor_formulas::normalizarIdentificador(nombre));
    if (funcion == nullptr) {
        return {kMalUso, "no hay ninguna función «" + nombre + "»"};
    }
    salida << llamada(*funcion) << "\n  " << funcion->descripcion
           << "\n  Ejemplo: " << funcion->ejemplo << " da " << funcion->resultado << '\n';
    return {};
}

void escribirJson(std::ostream& salida) {
    salida << '[';
    const char* separador = "\n";
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones()) {
        salida << separador << "{\"nombre\": " << cadenaJson(funcion.nombre)
               << ", \"familia\": " << cadenaJson(funcion.familia)
               << ", \"argumentos\": " << cadenaJson(funcion.argumentos)
               << ", \"descripcion\": " << cadenaJson(funcion.descripcion)
               << ", \"ejemplo\": " << cadenaJson(funcion.ejemplo)
               << ", \"resultado\": " << cadenaJson(funcion.resultado) << '}';
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
    if (!argumentos.sueltos().empty()) {
        return explicar(argumentos.sueltos().front(), terminal.salida);
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
