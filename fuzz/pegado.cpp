/// Un texto pegado desde otro programa en un libro con fórmulas, y de vuelta.

#include "editing/editor.h"
#include "tests/comun/comprobar_libro.h"

#include "fuzz/bytes.h"
#include "fuzz/libro_poblado.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    fuzz::poblar(libro, motor);
    editor::Editor ed(libro, motor);
    fuzz::Bytes bytes(datos, cuantos);
    // Cerca de las orillas también: lo que no cabe se recorta.
    ed.seleccionar(bytes.byte() % 2 == 0 ? bytes.hasta(5) : 65530 + bytes.hasta(6),
                   bytes.byte() % 2 == 0 ? bytes.hasta(5) : 698 + bytes.hasta(4));
    ed.pegarTSV(std::string(bytes.resto()));
    const std::string malo = pruebas::defectoDelLibro(libro, {true, false, true});
    fuzz::exigir(malo.empty(), malo);
    ed.copiarTSV();
    ed.deshacer();
    ed.rehacer();
    return 0;
}
