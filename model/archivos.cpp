#include "model/archivos.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace nucleo {

namespace {

/// Envuelve un descriptor en un flujo; lo cierra y devuelve nulo si no es de las clases que se
/// leen y escriben como un archivo.
Archivo flujoDe(int descriptor, const char* modo) {
    if (descriptor < 0)
        return nullptr;
    struct stat datos = {};
    const bool sirve =
        fstat(descriptor, &datos) == 0 && (S_ISREG(datos.st_mode) || S_ISCHR(datos.st_mode));
    std::FILE* flujo = sirve ? fdopen(descriptor, modo) : nullptr;
    if (flujo == nullptr)
        close(descriptor);
    return Archivo(flujo);
}

/// Lleva al disco lo escrito. Los dispositivos que no saben hacerlo no cuentan como fallo.
bool sincronizar(std::FILE* archivo) {
    return fsync(fileno(archivo)) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Verdadero si el descriptor es un archivo corriente propio, sin otros nombres, y sigue siendo el
/// que la ruta nombra: otro proceso puede haberlo renombrado mientras se esperaba el cerrojo.
bool esElDeLaRuta(int descriptor, const std::string& ruta) {
    struct stat abierto = {};
    struct stat nombrado = {};
    return fstat(descriptor, &abierto) == 0 && lstat(ruta.c_str(), &nombrado) == 0 &&
           S_ISREG(abierto.st_mode) && abierto.st_uid == geteuid() && abierto.st_nlink == 1 &&
           abierto.st_dev == nombrado.st_dev && abierto.st_ino == nombrado.st_ino;
}

} // namespace

Archivo abrirParaLeer(const std::string& ruta, Enlaces enlaces) {
    // Sin O_NONBLOCK, abrir una tubería sin nadie al otro lado no volvería.
    const int enlace = enlaces == Enlaces::Rechazar ? O_NOFOLLOW : 0;
    return flujoDe(open(ruta.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | enlace), "rb");
}

Archivo abrirParaEscribir(const std::string& ruta) {
    return flujoDe(
        open(ruta.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666),
        "wb");
}

bool esPropio(std::FILE* archivo) {
    struct stat datos = {};
    return fstat(fileno(archivo), &datos) == 0 && datos.st_uid == geteuid();
}

bool volcarYCerrar(Archivo archivo, const unsigned char* datos, std::size_t tamano) {
    // Con el disco lleno fwrite puede dar por bueno lo que fflush no consigue escribir, y fclose
    // responder después que todo fue bien: se pregunta a los tres.
    const bool escrito = std::fwrite(datos, 1, tamano, archivo.get()) == tamano &&
                         std::fflush(archivo.get()) == 0 && std::ferror(archivo.get()) == 0 &&
                         sincronizar(archivo.get());
    return std::fclose(archivo.release()) == 0 && escrito;
}

ArchivoProvisional::ArchivoProvisional(std::string ruta) : ruta_(std::move(ruta)) {
    const int descriptor =
        open(ruta_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, 0600);
    // El cerrojo pertenece al archivo abierto: la copia del descriptor lo sostiene hasta después
    // de renombrar.
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
        esElDeLaRuta(descriptor, ruta_) && fchmod(descriptor, 0600) == 0 &&
        ftruncate(descriptor, 0) == 0)
        cerrojo_ = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (cerrojo_ >= 0)
        archivo_ = flujoDe(descriptor, "wb");
    else if (descriptor >= 0)
        close(descriptor);
}

ArchivoProvisional::~ArchivoProvisional() {
    if (cerrojo_ >= 0)
        close(cerrojo_);
}

bool ArchivoProvisional::escribirYRenombrar(const unsigned char* datos, std::size_t tamano,
                                            const std::string& destino) {
    if (volcarYCerrar(std::move(archivo_), datos, tamano) &&
        std::rename(ruta_.c_str(), destino.c_str()) == 0)
        return true;
    static_cast<void>(unlink(ruta_.c_str()));
    return false;
}

} // namespace nucleo
