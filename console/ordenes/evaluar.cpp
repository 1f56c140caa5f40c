#include "console/archivos.h"
#include "console/ordenes/ordenes.h"
#include "console/texto_terminal.h"
#include "formula/motor.h"
#include "model/numeros.h"

#include <ostream>

namespace consola {

Resultado evaluar(const Argumentos& argumentos, Terminal& terminal) {
    const std::string* ruta = argumentos.valor("--libro");
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    if (ruta != nullptr) {
        if (Resultado abierto = abrirLibro(*ruta, libro); abierto.estado != kBien) {
            return abierto;
        }
        motor.recalcularTodo();
    }
    int hoja = 0;
    if (Resultado elegida = elegirHoja(libro, argumentos.valor("--hoja"), hoja);
        elegida.estado != kBien) {
        return elegida;
    }
    std::string formula = argumentos.sueltos().front();
    if (!formula.starts_with('=')) {
        formula.insert(formula.begin(), '=');
    }
    const nucleo::Valor valor = motor.evaluarFormula(hoja, formula);
    terminal.salida << paraTerminal(nucleo::textoVisible(valor, {})) << '\n';
    return {};
}

} // namespace consola
