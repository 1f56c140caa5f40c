#include "tests/confianza/libro_usado.h"

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/archivo_libro.h"
#include "rendering/renderizador.h"

#include <QImage>
#include <QPainter>

#include <cstdio>

namespace prueba {

using nucleo::Libro;

namespace {

void pintarEsquinas(const Libro& libro) {
    static const renderizador::Tema tema = renderizador::temaClaro();
    QImage lienzo(200, 120, QImage::Format_RGB32);
    QPainter pintor(&lienzo);
    renderizador::Renderizador rejilla;
    rejilla.tema = &tema;
    for (const auto& hoja : libro.hojas) {
        rejilla.hoja = hoja.get();
        for (const double zoom : {0.5, 2.0}) {
            rejilla.zoom = zoom;
            const QSize contenido = rejilla.tamanoContenido();
            for (const int x : {0, contenido.width()}) {
                for (const int y : {0, contenido.height()}) {
                    rejilla.desplazamientoX = x;
                    rejilla.desplazamientoY = y;
                    rejilla.dibujar(pintor, lienzo.size(), {0, 0, 65535, 3, 2, 2});
                }
            }
        }
    }
}

void editar(editor::Editor& ed) {
    ed.seleccionar(1, 1);
    ed.establecerContenido(1, 1, "=SUMA(A1:C3)");
    ed.establecerContenido(65535, 701, "esquina");
    ed.extender(3, 2);
    ed.alternarNegrita();
    ed.copiar();
    ed.seleccionar(0, 0);
    ed.pegar();
    ed.insertarFilas(0, 2);
    ed.eliminarColumnas(1, 1);
    ed.seleccionar(5, 0);
    ed.extender(8, 3);
    ed.fusionarSeleccion();
    ed.ordenarSeleccion(true);
}

} // namespace

nucleo::ResultadoArchivo cargarBytes(std::string_view bytes, Libro& libro) {
    if (bytes.empty())
        return nucleo::cargarLibro(nucleo::Archivo(std::fopen("/dev/null", "rb")), "nada", libro);
    // fmemopen no escribe en lo que se abre para leer.
    const nucleo::Archivo archivo(::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"));
    return nucleo::cargarLibro(archivo, "bytes", libro);
}

std::string guardarEnBytes(const Libro& libro) {
    nucleo::EscritorBytes salida;
    if (!nucleo::componerLibro(libro, salida))
        return {};
    return {reinterpret_cast<const char*>(salida.datos()), salida.tamano()};
}

std::string usarLibro(Libro& libro) {
    const std::string antes = guardarEnBytes(libro);
    pintarEsquinas(libro);
    motor_formulas::Motor motor(libro);
    editor::Editor ed(libro, motor);
    editar(ed);
    pintarEsquinas(libro);
    const std::string editado = guardarEnBytes(libro);
    Libro vuelto;
    if (cargarBytes(editado, vuelto) != nucleo::kArchivoBien)
        return "editado y guardado, no se carga";
    if (guardarEnBytes(vuelto) != editado)
        return "editado, guardado y cargado, es otro";
    while (ed.pasosDeshacer() > 0)
        ed.deshacer();
    if (guardarEnBytes(libro) != antes)
        return "deshacerlo todo no devuelve el libro de antes";
    return {};
}

} // namespace prueba
