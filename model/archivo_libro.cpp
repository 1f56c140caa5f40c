#include "model/archivo_libro.h"

#include "model/formato_archivo.h"

#include <new>
#include <utility>

namespace nucleo {

namespace {

void sustituirContenido(Libro& libro, std::vector<std::unique_ptr<Hoja>>& hojas,
                        std::int32_t activa, std::string ruta) noexcept {
    libro.limpiarGrafo();
    libro.hojas.swap(hojas);
    const bool existe = activa >= 0 && static_cast<std::size_t>(activa) < libro.hojas.size();
    libro.hojaActiva = existe ? activa : 0;
    libro.ruta = std::move(ruta);
    libro.modificado = false;
}

} // namespace

bool componerLibro(const Libro& libro, EscritorBytes& salida) {
    try {
        escribirLibro(salida, libro);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

ResultadoArchivo cargarLibro(const Archivo& archivo, const std::string& ruta, Libro& libro) {
    if (!archivo)
        return kArchivoNoAbre;
    try {
        LectorBytes entrada(archivo.get(), LectorBytes::Modo::Adelantado);
        std::vector<std::unique_ptr<Hoja>> hojas;
        std::int32_t activa = 0;
        if (leerLibro(entrada, hojas, activa)) {
            sustituirContenido(libro, hojas, activa, ruta);
            return kArchivoBien;
        }
    } catch (const std::bad_alloc&) {
        // Las hojas a medio leer ya se han soltado; el libro se reinicia como con cualquier fallo.
    }
    libro.reiniciar();
    return kArchivoInvalido;
}

} // namespace nucleo
