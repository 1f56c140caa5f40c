#include "tests/model/fallos.h"

#include "tests/comun/memoria.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct {
    bool activo = false;
    int cuenta = 0;
    int falla = 0;
    const char* funcion = "";
} archivos;

bool esperarAlDisco = true;

/// Verdadero si a esta llamada le toca fallar.
bool tocaFallar(const char* funcion, int error) {
    if (!archivos.activo || ++archivos.cuenta != archivos.falla)
        return false;
    archivos.funcion = funcion;
    errno = error;
    return true;
}

} // namespace

// El enlazador manda aquí, con --wrap, las llamadas a las funciones del sistema.
// NOLINTBEGIN(bugprone-reserved-identifier): los nombres los pone --wrap.
extern "C" {

int __real_open(const char* ruta, int modo, ...);
int __real_fstat(int descriptor, struct stat* datos);
std::FILE* __real_fdopen(int descriptor, const char* modo);
std::size_t __real_fread(void* datos, std::size_t tamano, std::size_t n, std::FILE* archivo);
std::size_t __real_fwrite(const void* datos, std::size_t tamano, std::size_t n, std::FILE* archivo);
int __real_fflush(std::FILE* archivo);
int __real_fsync(int descriptor);
int __real_fclose(std::FILE* archivo);
int __real_rename(const char* desde, const char* hasta);
int __real_ftruncate(int descriptor, off_t largo);
int __real_fchmod(int descriptor, mode_t permisos);
int __real_flock(int descriptor, int operacion);
void* __real_realloc(void* bloque, std::size_t bytes);
void* __real_mmap(void* sitio, std::size_t bytes, int proteccion, int modo, int descriptor,
                  off_t desde);

int __wrap_open(const char* ruta, int modo, ...) {
    va_list resto;
    va_start(resto, modo);
    const mode_t permisos = (modo & O_CREAT) != 0 ? va_arg(resto, mode_t) : 0;
    va_end(resto);
    return tocaFallar("open", EMFILE) ? -1 : __real_open(ruta, modo, permisos);
}
int __wrap_fstat(int descriptor, struct stat* datos) {
    return tocaFallar("fstat", EIO) ? -1 : __real_fstat(descriptor, datos);
}
std::FILE* __wrap_fdopen(int descriptor, const char* modo) {
    return tocaFallar("fdopen", ENOMEM) ? nullptr : __real_fdopen(descriptor, modo);
}
std::size_t __wrap_fread(void* datos, std::size_t tamano, std::size_t n, std::FILE* archivo) {
    // Un disco con un sector malo entrega lo de antes y se para.
    const bool falla = tocaFallar("fread", EIO);
    const std::size_t leidos = __real_fread(datos, tamano, n, archivo);
    return falla ? leidos / 2 : leidos;
}
std::size_t __wrap_fwrite(const void* datos, std::size_t tamano, std::size_t n,
                          std::FILE* archivo) {
    return tocaFallar("fwrite", ENOSPC) ? __real_fwrite(datos, tamano, n / 2, archivo)
                                        : __real_fwrite(datos, tamano, n, archivo);
}
int __wrap_fflush(std::FILE* archivo) {
    return tocaFallar("fflush", ENOSPC) ? EOF : __real_fflush(archivo);
}
int __wrap_fsync(int descriptor) {
    if (tocaFallar("fsync", EIO))
        return -1;
    return esperarAlDisco ? __real_fsync(descriptor) : 0;
}
int __wrap_fclose(std::FILE* archivo) {
    const bool falla = tocaFallar("fclose", ENOSPC);
    const int resultado = __real_fclose(archivo);
    return falla ? EOF : resultado;
}
int __wrap_rename(const char* desde, const char* hasta) {
    return tocaFallar("rename", EACCES) ? -1 : __real_rename(desde, hasta);
}
int __wrap_ftruncate(int descriptor, off_t largo) {
    return tocaFallar("ftruncate", EIO) ? -1 : __real_ftruncate(descriptor, largo);
}
int __wrap_fchmod(int descriptor, mode_t permisos) {
    return tocaFallar("fchmod", EPERM) ? -1 : __real_fchmod(descriptor, permisos);
}
int __wrap_flock(int descriptor, int operacion) {
    return tocaFallar("flock", EWOULDBLOCK) ? -1 : __real_flock(descriptor, operacion);
}
void* __wrap_realloc(void* bloque, std::size_t bytes) {
    return prueba::faltaMemoria() ? nullptr : __real_realloc(bloque, bytes);
}

void* __wrap_mmap(void* sitio, std::size_t bytes, int proteccion, int modo, int descriptor,
                  off_t desde) {
    return prueba::faltaMemoria() ? MAP_FAILED
                                  : __real_mmap(sitio, bytes, proteccion, modo, descriptor, desde);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace prueba {

FalloDeArchivo::FalloDeArchivo(int n) {
    archivos = {true, 0, n, ""};
}
FalloDeArchivo::~FalloDeArchivo() {
    archivos.activo = false;
}
bool FalloDeArchivo::ocurrio() const {
    return *archivos.funcion != '\0';
}
const char* FalloDeArchivo::funcion() const {
    return archivos.funcion;
}

SinEsperarAlDisco::SinEsperarAlDisco() {
    esperarAlDisco = false;
}
SinEsperarAlDisco::~SinEsperarAlDisco() {
    esperarAlDisco = true;
}

} // namespace prueba
