#include "tests/model/fallos.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <malloc.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct {
    bool activo = false;
    int cuenta = 0;
    int falla = 0;
    const char* funcion = "";
} archivos;

struct {
    bool activa = false;
    int cuenta = 0;
    int falla = 0;
    bool todas = false;
    bool ocurrio = false;
} memoria;

struct {
    bool activa = false;
    std::ptrdiff_t ahora = 0;
    std::ptrdiff_t pico = 0;
} medida;

bool esperarAlDisco = true;

/// Verdadero si a esta llamada le toca fallar.
bool tocaFallar(const char* funcion, int error) {
    if (!archivos.activo || ++archivos.cuenta != archivos.falla)
        return false;
    archivos.funcion = funcion;
    errno = error;
    return true;
}

bool faltaMemoria() {
    if (!memoria.activa)
        return false;
    ++memoria.cuenta;
    const bool toca =
        memoria.todas ? memoria.cuenta >= memoria.falla : memoria.cuenta == memoria.falla;
    memoria.ocurrio = memoria.ocurrio || toca;
    return toca;
}

void anotar(void* bloque, int signo) {
    if (!medida.activa || bloque == nullptr)
        return;
    medida.ahora += signo * static_cast<std::ptrdiff_t>(malloc_usable_size(bloque));
    medida.pico = std::max(medida.pico, medida.ahora);
}

void* pedirSinLanzar(std::size_t bytes, std::size_t alineacion) noexcept {
    void* bloque = nullptr;
    if (!faltaMemoria())
        bloque = alineacion == 0 ? std::malloc(std::max<std::size_t>(bytes, 1))
                                 : std::aligned_alloc(alineacion, (bytes + alineacion - 1) /
                                                                      alineacion * alineacion);
    anotar(bloque, 1);
    return bloque;
}

void* pedir(std::size_t bytes, std::size_t alineacion) {
    void* bloque = pedirSinLanzar(bytes, alineacion);
    if (bloque == nullptr)
        throw std::bad_alloc();
    return bloque;
}

void soltar(void* bloque) {
    anotar(bloque, -1);
    std::free(bloque);
}

} // namespace

// La memoria de todo el programa de pruebas pasa por aquí.

void* operator new(std::size_t bytes) {
    return pedir(bytes, 0);
}
void* operator new[](std::size_t bytes) {
    return pedir(bytes, 0);
}
void* operator new(std::size_t bytes, std::align_val_t alineacion) {
    return pedir(bytes, static_cast<std::size_t>(alineacion));
}
void* operator new[](std::size_t bytes, std::align_val_t alineacion) {
    return pedir(bytes, static_cast<std::size_t>(alineacion));
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return pedirSinLanzar(bytes, 0);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return pedirSinLanzar(bytes, 0);
}
void operator delete(void* bloque) noexcept {
    soltar(bloque);
}
void operator delete[](void* bloque) noexcept {
    soltar(bloque);
}
void operator delete(void* bloque, std::size_t) noexcept {
    soltar(bloque);
}
void operator delete[](void* bloque, std::size_t) noexcept {
    soltar(bloque);
}
void operator delete(void* bloque, std::align_val_t) noexcept {
    soltar(bloque);
}
void operator delete[](void* bloque, std::align_val_t) noexcept {
    soltar(bloque);
}
void operator delete(void* bloque, std::size_t, std::align_val_t) noexcept {
    soltar(bloque);
}
void operator delete[](void* bloque, std::size_t, std::align_val_t) noexcept {
    soltar(bloque);
}

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
    return tocaFallar("fread", EIO) ? __real_fread(datos, tamano, n / 100, archivo)
                                    : __real_fread(datos, tamano, n, archivo);
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
    return faltaMemoria() ? nullptr : __real_realloc(bloque, bytes);
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

FaltaDeMemoria::FaltaDeMemoria(int n, Cual cual) {
    memoria = {true, 0, n, cual == Cual::DesdeEntonces, false};
}
FaltaDeMemoria::~FaltaDeMemoria() {
    memoria.activa = false;
}
bool FaltaDeMemoria::ocurrio() const {
    return memoria.ocurrio;
}

MemoriaPedida::MemoriaPedida() {
    medida = {true, 0, 0};
}
MemoriaPedida::~MemoriaPedida() {
    medida.activa = false;
}
std::ptrdiff_t MemoriaPedida::pico() const {
    return medida.pico;
}

} // namespace prueba
