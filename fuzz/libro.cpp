/// Un archivo de libro: se carga, se recalcula, se pinta, se guarda, se vuelve a cargar y se vuelve
/// a guardar con los mismos bytes.

#include "model/libro.h"

#include "formula/motor.h"
#include "model/serializador.h"
#include "rendering/renderizador.h"
#include "rendering/tema.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/bytes.h"

namespace {

/// Archivo que solo existe en memoria, con una ruta por la que abrirlo.
class ArchivoEnMemoria {
  public:
    ArchivoEnMemoria() : descriptor_(::memfd_create("libro", 0)) {
        fuzz::exigir(descriptor_ >= 0, "no hay archivos en memoria");
    }
    ~ArchivoEnMemoria() { ::close(descriptor_); }
    ArchivoEnMemoria(const ArchivoEnMemoria&) = delete;
    ArchivoEnMemoria& operator=(const ArchivoEnMemoria&) = delete;

    std::string ruta() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

    void escribir(const std::uint8_t* datos, std::size_t cuantos) const {
        fuzz::exigir(::ftruncate(descriptor_, 0) == 0, "no se vacía el archivo");
        fuzz::exigir(::pwrite(descriptor_, datos, cuantos, 0) == static_cast<ssize_t>(cuantos),
                     "no se escribe el archivo");
    }

    std::string leer() const {
        std::string todo;
        char trozo[4096];
        for (off_t pos = 0;;) {
            const ssize_t leidos = ::pread(descriptor_, trozo, sizeof trozo, pos);
            if (leidos <= 0)
                return todo;
            todo.append(trozo, static_cast<std::size_t>(leidos));
            pos += leidos;
        }
    }

  private:
    int descriptor_;
};

void pintar(const nucleo::Libro& libro) {
    static QImage lienzo(320, 200, QImage::Format_ARGB32_Premultiplied);
    const renderizador::Tema tema = renderizador::temaClaro();
    renderizador::Renderizador rejilla;
    rejilla.hoja = libro.hojas[static_cast<std::size_t>(libro.hojaActiva)].get();
    rejilla.tema = &tema;
    QPainter pintor(&lienzo);
    rejilla.dibujar(pintor, lienzo.size(), {0, 0, 3, 3, 1, 1});
    const QSize contenido = rejilla.tamanoContenido();
    rejilla.desplazamientoX = contenido.width();
    rejilla.desplazamientoY = contenido.height();
    rejilla.zoom = 0.5;
    rejilla.dibujar(pintor, lienzo.size(), {0, 0, 65535, 701, 65535, 701});
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* cuantos, char*** argumentos) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication aplicacion(*cuantos, *argumentos);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    static const ArchivoEnMemoria archivo;
    archivo.escribir(datos, cuantos);
    nucleo::Libro libro;
    if (nucleo::Serializador::cargar(archivo.ruta(), libro) != nucleo::kArchivoBien) {
        fuzz::exigir(libro.hojas.size() == 1 && libro.hojas[0]->celdas.empty(),
                     "una carga fallida no deja el libro reiniciado");
        return 0;
    }
    motor_formulas::Motor motor(libro);
    motor.recalcularTodo();
    pintar(libro);
    fuzz::exigir(nucleo::Serializador::guardar(libro, archivo.ruta()) == nucleo::kArchivoBien,
                 "no se guarda lo que se cargó");
    const std::string primero = archivo.leer();
    nucleo::Libro otro;
    fuzz::exigir(nucleo::Serializador::cargar(archivo.ruta(), otro) == nucleo::kArchivoBien,
                 "no se carga lo que se guardó");
    nucleo::Serializador::guardar(otro, archivo.ruta());
    fuzz::exigir(archivo.leer() == primero, "guardar dos veces da bytes distintos");
    return 0;
}
