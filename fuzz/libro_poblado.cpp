#include "fuzz/libro_poblado.h"

#include <memory>
#include <vector>

namespace fuzz {

namespace {

std::vector<nucleo::Hoja> hojasPobladas() {
    const char* const filas[][5] = {
        {"1", "2,5", "Árbol", "1/2/2024", "=A1*B1"},
        {"-7", "$ 30", "arbusto", "15%", "=SUMA(A1:B2)"},
        {"inf", "nan", "", "=1/0", "=SI(A1>0;\"sí\";\"no\")"},
        {"=E5", "=A4", "x*y?", "=VERDADERO", "=D4"},
    };
    constexpr int kFilas[] = {4, 1};
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    libro.agregarHoja();
    std::vector<nucleo::Hoja> hojas;
    for (int hoja = 0; hoja < 2; ++hoja) {
        for (int fila = 0; fila < kFilas[hoja]; ++fila) {
            for (int col = 0; col < 5; ++col)
                motor.establecerCelda(hoja, fila, col, filas[fila][col]);
        }
        motor.establecerCelda(hoja, 0, 5, "='Hoja 2'!B1+'Hoja 1'!A2");
        hojas.push_back(*libro.hojas[static_cast<std::size_t>(hoja)]);
    }
    return hojas;
}

} // namespace

void poblar(nucleo::Libro& libro, motor_formulas::Motor& motor) {
    // Las celdas se comparten con las de la primera vez: cada ejecución empieza enseguida.
    static const std::vector<nucleo::Hoja> hojas = hojasPobladas();
    libro.hojas.clear();
    for (const nucleo::Hoja& hoja : hojas)
        libro.hojas.push_back(std::make_unique<nucleo::Hoja>(hoja));
    motor.recalcularTodo();
}

} // namespace fuzz
