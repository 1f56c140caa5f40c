/// Una sucesión de operaciones del editor, con los invariantes del libro comprobados tras cada una.

#include "editing/editor.h"

#include "fuzz/bytes.h"
#include "fuzz/exigencias.h"
#include "fuzz/libro_poblado.h"

namespace {

void operar(editor::Editor& ed, nucleo::Libro& libro, motor_formulas::Motor& motor,
            fuzz::Bytes& bytes) {
    switch (bytes.byte() % 24) {
    case 0:
        return ed.seleccionar(bytes.hasta(10), bytes.hasta(8));
    case 1:
        return ed.extender(bytes.hasta(12), bytes.hasta(10));
    case 2:
        return ed.moverActiva(bytes.hasta(7) - 3, bytes.hasta(7) - 3, bytes.byte() % 2 == 0);
    case 3:
        return ed.establecerContenido(bytes.hasta(10), bytes.hasta(8), bytes.texto());
    case 4:
        return ed.copiar();
    case 5:
        return ed.cortar();
    case 6:
        return ed.pegar();
    case 7:
        return ed.pegarTSV(bytes.texto());
    case 8:
        return ed.borrarSeleccion();
    case 9:
        return ed.insertarFilas(bytes.hasta(12), bytes.hasta(4) - 1);
    case 10:
        return ed.eliminarFilas(bytes.hasta(12), bytes.hasta(4) - 1);
    case 11:
        return ed.insertarColumnas(bytes.hasta(10), bytes.hasta(4) - 1);
    case 12:
        return ed.eliminarColumnas(bytes.hasta(10), bytes.hasta(4) - 1);
    case 13:
        return ed.ordenarSeleccion(bytes.byte() % 2 == 0);
    case 14:
        return ed.alternarNegrita();
    case 15:
        return ed.aplicarFormato(static_cast<nucleo::FormatoNumero>(bytes.byte() % 5));
    case 16:
        return ed.cambiarDecimales(bytes.hasta(30) - 15);
    case 17:
        ed.fusionarSeleccion();
        return;
    case 18:
        ed.separarFusion();
        return;
    case 19:
        return ed.deshacer();
    case 20:
        return ed.rehacer();
    case 21:
        ed.redimensionarColumna(bytes.hasta(8), bytes.hasta(800));
        return ed.redimensionarFila(bytes.hasta(8), bytes.hasta(500));
    case 22: {
        const auto menu = ed.menuContextualCeldas();
        const auto cual = static_cast<std::size_t>(bytes.hasta(static_cast<int>(menu.size())));
        if (menu[cual].habilitada)
            ed.ejecutarAccionMenu(menu[cual].id);
        return;
    }
    default:
        libro.hojaActiva = bytes.byte() % static_cast<int>(libro.hojas.size());
        if (bytes.byte() % 8 == 0)
            motor.renombrarHoja(libro.hojaActiva, bytes.texto());
        return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    fuzz::poblar(libro, motor);
    editor::Editor ed(libro, motor);
    fuzz::Bytes bytes(datos, cuantos);
    for (int pasos = 0; bytes.quedan() && pasos < 64; ++pasos) {
        operar(ed, libro, motor, bytes);
        const std::string malo = pruebas::defectoDelLibro(libro, fuzz::exigencias(libro));
        fuzz::exigir(malo.empty(), malo);
    }
    return 0;
}
