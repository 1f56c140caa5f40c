#include "console/archivos.h"
#include "console/json.h"
#include "console/ordenes/ordenes.h"
#include "console/progreso.h"
#include "formula/motor.h"
#include "model/numeros.h"

#include <chrono>
#include <ostream>

namespace consola {

namespace {

struct Cuenta {
    std::size_t celdas = 0; ///< con contenido
    std::size_t formulas = 0;
    std::size_t errores = 0;
};

Cuenta contar(const nucleo::Libro& libro) {
    Cuenta cuenta;
    for (const auto& hoja : libro.hojas) {
        hoja->celdas.recorrer([&cuenta](std::uint64_t, const nucleo::Celda& celda) {
            cuenta.celdas += celda.tipo != nucleo::TipoCelda::Vacia ? 1 : 0;
            cuenta.formulas += celda.tipo == nucleo::TipoCelda::Formula ? 1 : 0;
            cuenta.errores += celda.valor.tipo == nucleo::TipoValor::Error ? 1 : 0;
        });
    }
    return cuenta;
}

} // namespace

Resultado recalcular(const Argumentos& argumentos, Terminal& terminal) {
    const std::string& ruta = argumentos.sueltos().front();
    nucleo::Libro libro;
    {
        const Progreso progreso(terminal, "Abriendo");
        if (Resultado abierto = abrirLibro(ruta, libro); abierto.estado != kBien) {
            return abierto;
        }
    }
    double segundos = 0;
    {
        const Progreso progreso(terminal, "Calculando");
        const auto inicio = std::chrono::steady_clock::now();
        motor_formulas::Motor(libro).recalcularTodo();
        segundos = std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
    }
    const Cuenta cuenta = contar(libro);
    if (argumentos.tiene("--json")) {
        terminal.salida << "{\"hojas\": " << libro.hojas.size() << ", \"celdas\": " << cuenta.celdas
                        << ", \"formulas\": " << cuenta.formulas
                        << ", \"errores\": " << cuenta.errores
                        << ", \"segundos\": " << numeroJson(segundos) << "}\n";
    } else {
        terminal.salida << "Hojas:    " << libro.hojas.size() << "\nCeldas:   " << cuenta.celdas
                        << "\nFórmulas: " << cuenta.formulas << "\nErrores:  " << cuenta.errores
                        << "\nSegundos: " << nucleo::numeroConDecimales(segundos, 3, false) << '\n';
    }
    return {};
}

} // namespace consola
