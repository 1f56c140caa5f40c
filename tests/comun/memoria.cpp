#include "tests/comun/memoria.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

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

} // namespace

namespace prueba {

bool faltaMemoria() {
    if (!memoria.activa)
        return false;
    ++memoria.cuenta;
    const bool toca =
        memoria.todas ? memoria.cuenta >= memoria.falla : memoria.cuenta == memoria.falla;
    memoria.ocurrio = memoria.ocurrio || toca;
    return toca;
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

namespace {

void anotar(void* bloque, int signo) {
    if (!medida.activa || bloque == nullptr)
        return;
    medida.ahora += signo * static_cast<std::ptrdiff_t>(malloc_usable_size(bloque));
    medida.pico = std::max(medida.pico, medida.ahora);
}

void* pedirSinLanzar(std::size_t bytes, std::size_t alineacion) noexcept {
    void* bloque = nullptr;
    if (!prueba::faltaMemoria())
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
