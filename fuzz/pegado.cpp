/// Un texto pegado desde otro programa en un libro con fórmulas, y de vuelta: al deshacer, el libro
/// es byte a byte el de antes.

#include "editing/editor.h"
#include "model/archivo_libro.h"

#include "fuzz/bytes.h"
#include "fuzz/exigencias.h"
#include "fuzz/libro_poblado.h"

namespace {

std::string bytesDe(const nucleo::Libro& libro) {
    nucleo::EscritorBytes salida;
    fuzz::exigir(nucleo::componerLibro(libro, salida), "falta memoria");
    return {reinterpret_cast<const char*>(salida.datos()), salida.tamano()};
}

/// Sirve a todas las ejecuciones, porque cada una lo deja como estaba.
struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor ed{libro, motor};
    std::string bytes;

    Mesa() {
        fuzz::poblar(libro, motor);
        bytes = bytesDe(libro);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    static Mesa mesa;
    fuzz::Bytes bytes(datos, cuantos);
    // Cerca de las orillas también: lo que no cabe se recorta.
    const int fila = bytes.byte() % 2 == 0 ? bytes.hasta(5) : 65530 + bytes.hasta(6);
    const int col = bytes.byte() % 2 == 0 ? bytes.hasta(5) : 698 + bytes.hasta(4);
    mesa.ed.seleccionar(fila, col);
    mesa.ed.pegarTSV(std::string(bytes.resto()));
    const std::string malo = pruebas::defectoDelLibro(mesa.libro, fuzz::exigencias(mesa.libro));
    fuzz::exigir(malo.empty(), malo);
    mesa.ed.copiarTSV();
    if (mesa.ed.pasosDeshacer() == 0)
        return 0; // nada que pegar
    const std::string pegado = bytesDe(mesa.libro);
    mesa.ed.deshacer();
    fuzz::exigir(bytesDe(mesa.libro) == mesa.bytes, "deshacer no devuelve el libro de antes");
    mesa.ed.rehacer();
    fuzz::exigir(bytesDe(mesa.libro) == pegado, "rehacer no devuelve lo pegado");
    mesa.ed.deshacer();
    return 0;
}
