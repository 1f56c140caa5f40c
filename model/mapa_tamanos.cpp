#include "model/mapa_tamanos.h"

#include <cstdint>
#include <random>

namespace nucleo {

namespace {

std::uint64_t sortearSemilla() {
    std::random_device azar;
    return (std::uint64_t{azar()} << 32) | azar();
}

/// Biyección de 64 bits en la que cada bit de entrada cambia la mitad de los de salida.
constexpr std::uint64_t mezclar(std::uint64_t x) {
    x ^= x >> 32;
    x *= 0xd6e8feb86659fd93ULL;
    x ^= x >> 32;
    x *= 0xd6e8feb86659fd93ULL;
    return x ^ (x >> 32);
}

} // namespace

std::size_t DispersionSembrada::operator()(int clave) const noexcept {
    static const std::uint64_t semilla = sortearSemilla();
    return static_cast<std::size_t>(mezclar(semilla ^ static_cast<std::uint32_t>(clave)));
}

const MapaTamanos::Tabla& MapaTamanos::tabla() const {
    static const Tabla vacia;
    return tabla_ ? *tabla_ : vacia;
}

MapaTamanos::Tabla& MapaTamanos::propia() {
    if (!tabla_)
        tabla_ = std::make_shared<Tabla>();
    else if (tabla_.use_count() > 1)
        tabla_ = std::make_shared<Tabla>(*tabla_);
    return *tabla_;
}

} // namespace nucleo
