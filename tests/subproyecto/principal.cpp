#include "editing/editor.h"
#include "formula/motor.h"

int main() {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    editor::Editor editor(libro, motor);
    editor.establecerContenido(0, 0, "=SUMA(1;2;3)");
    return libro.hojas.front()->celda(0, 0)->valor.numero == 6 ? 0 : 1;
}
