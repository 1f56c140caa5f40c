/// Un archivo de libro: se carga, se recalcula, se pinta, se guarda, se vuelve a cargar y se vuelve
/// a guardar con los mismos bytes.

#include "formula/motor.h"
#include "model/archivo_libro.h"
#include "rendering/renderizador.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <string_view>

#include "fuzz/bytes.h"

namespace {

/// Los lee como si estuvieran en el disco, por un flujo de verdad y sin llamar al sistema.
nucleo::ResultadoArchivo cargar(std::string_view bytes, nucleo::Libro& libro) {
    nucleo::Archivo archivo(
        ::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb")); // solo se lee
    fuzz::exigir(archivo != nullptr, "no hay archivos en memoria");
    return nucleo::cargarLibro(archivo, "libro.mrn", libro);
}

std::string_view componer(const nucleo::Libro& libro, nucleo::EscritorBytes& salida) {
    fuzz::exigir(nucleo::componerLibro(libro, salida), "no se guarda lo que se cargó");
    return {reinterpret_cast<const char*>(salida.datos()), salida.tamano()};
}

/// Pinta la hoja activa en una esquina: la primera, la última y las otras dos, según el archivo.
void pintar(const nucleo::Libro& libro, std::size_t esquina) {
    static QImage lienzo(144, 80, QImage::Format_ARGB32_Premultiplied);
    static const renderizador::Tema tema = renderizador::temaClaro();
    renderizador::Renderizador rejilla;
    rejilla.hoja = libro.hojas[static_cast<std::size_t>(libro.hojaActiva)].get();
    rejilla.tema = &tema;
    const QSize contenido = rejilla.tamanoContenido();
    rejilla.desplazamientoX = (esquina & 1U) != 0 ? contenido.width() : 0;
    rejilla.desplazamientoY = (esquina & 2U) != 0 ? contenido.height() : 0;
    rejilla.zoom = (esquina & 4U) != 0 ? 0.5 : 1;
    QPainter pintor(&lienzo);
    rejilla.dibujar(pintor, lienzo.size(), {0, 0, 65535, 2, 1, 1});
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* cuantos, char*** argumentos) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication aplicacion(*cuantos, *argumentos);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    if (cuantos == 0)
        return 0;
    nucleo::Libro libro;
    if (cargar({reinterpret_cast<const char*>(datos), cuantos}, libro) != nucleo::kArchivoBien) {
        fuzz::exigir(libro.hojas.size() == 1 && libro.hojas[0]->celdas.empty(),
                     "una carga fallida no deja el libro reiniciado");
        return 0;
    }
    motor_formulas::Motor(libro).recalcularTodo();
    pintar(libro, cuantos);
    nucleo::EscritorBytes primero;
    nucleo::EscritorBytes segundo;
    const std::string_view guardado = componer(libro, primero);
    nucleo::Libro otro;
    fuzz::exigir(cargar(guardado, otro) == nucleo::kArchivoBien, "no se carga lo que se guardó");
    fuzz::exigir(componer(otro, segundo) == guardado, "guardar dos veces da bytes distintos");
    return 0;
}
