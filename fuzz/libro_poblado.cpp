#include "fuzz/libro_poblado.h"

namespace fuzz {

void poblar(nucleo::Libro& libro, motor_formulas::Motor& motor) {
    libro.agregarHoja();
    const motor_formulas::Motor::Lote lote(motor);
    const char* const filas[][5] = {
        {"1", "2,5", "Árbol", "1/2/2024", "=A1*B1"},
        {"-7", "$ 30", "arbusto", "15%", "=SUMA(A1:B2)"},
        {"inf", "nan", "", "=1/0", "=SI(A1>0;\"sí\";\"no\")"},
        {"=E5", "=A4", "x*y?", "=VERDADERO", "=D4"},
    };
    for (int hoja = 0; hoja < 2; ++hoja) {
        for (int fila = 0; fila < 4; ++fila) {
            for (int col = 0; col < 5; ++col)
                motor.establecerCelda(hoja, fila, col, filas[fila][col]);
        }
    }
}

} // namespace fuzz
