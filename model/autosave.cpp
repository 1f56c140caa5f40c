#include "model/autosave.h"

#include "model/archivo_libro.h"

#include <cstdlib>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace nucleo::Autosave {

namespace {

/// La carpeta temporal de la persona, acabada en separador.
std::string carpetaTemporal() {
    const char* elegida = std::getenv("TMPDIR");
    std::string carpeta = elegida != nullptr && *elegida != '\0' ? elegida : "/tmp";
    if (carpeta.back() != '/')
        carpeta.push_back('/');
    return carpeta;
}

/// Último componente de la ruta sin su extensión.
std::string_view nombreBase(std::string_view ruta) {
    const std::size_t separador = ruta.find_last_of("\\/");
    if (separador != std::string_view::npos)
        ruta.remove_prefix(separador + 1);
    return ruta.substr(0, ruta.rfind('.'));
}

/// Verdadero si en la ruta hay algo que no es un archivo corriente ni un enlace: un dispositivo,
/// una carpeta… que no debe sustituirse por otro archivo.
bool hayAlgoEspecial(const std::string& ruta) {
    struct stat datos = {};
    return lstat(ruta.c_str(), &datos) == 0 && !S_ISREG(datos.st_mode) && !S_ISLNK(datos.st_mode);
}

} // namespace

std::string generarRuta(const std::string& rutaDocumento) {
    const std::string_view base =
        rutaDocumento.empty() ? std::string_view("sin_titulo") : nombreBase(rutaDocumento);
    return carpetaTemporal() + "marnel_" + std::string(base) + ".mrt";
}

ResultadoArchivo guardar(const Libro& libro, const std::string& ruta) {
    if (ruta.empty() || hayAlgoEspecial(ruta))
        return Serializador::guardar(libro, ruta);
    EscritorBytes salida;
    if (!componerLibro(libro, salida))
        return kArchivoNoSeEscribe;
    // Se escribe al lado y se renombra: si el proceso muere a mitad, queda la copia anterior.
    ArchivoProvisional provisional(ruta + "~");
    if (!provisional.abierto())
        return kArchivoNoAbre;
    return provisional.escribirYRenombrar(salida.datos(), salida.tamano(), ruta)
               ? kArchivoBien
               : kArchivoNoSeEscribe;
}

ResultadoArchivo cargar(const std::string& ruta, Libro& libro) {
    return cargarLibro(abrirParaLeer(ruta, Enlaces::Rechazar), ruta, libro);
}

bool hayPendiente(const std::string& ruta) {
    if (ruta.empty())
        return false;
    const Archivo archivo = abrirParaLeer(ruta, Enlaces::Rechazar);
    return archivo && esPropio(archivo.get());
}

void descartar(const std::string& ruta) {
    if (!ruta.empty())
        static_cast<void>(unlink(ruta.c_str()));
}

} // namespace nucleo::Autosave
