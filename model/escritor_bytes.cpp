#include "model/escritor_bytes.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace nucleo {

namespace {

constexpr std::size_t kCapacidadInicial = 4096;

} // namespace

void EscritorBytes::Liberar::operator()(unsigned char* bytes) const {
    std::free(bytes);
}

void EscritorBytes::crecer(std::size_t n) {
    const std::size_t nueva = std::max({kCapacidadInicial, capacidad_ * 2, tamano_ + n});
    // realloc cambia de sitio las páginas de un bloque grande sin copiarlas.
    void* mayor = std::realloc(bytes_.get(), nueva);
    if (mayor == nullptr)
        throw std::bad_alloc();
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<unsigned char*>(mayor));
    capacidad_ = nueva;
}

} // namespace nucleo
