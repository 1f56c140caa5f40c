#pragma once

#include <bit>
#include <cstdint>

namespace nucleo {

/// Conjunto de hasta 64 elementos; el bit 0 es el primero.
using Mascara = std::uint64_t;

constexpr Mascara bitDe(int i) {
    return Mascara{1} << i;
}

/// Los elementos anteriores a `i`, con i en 0..63.
constexpr Mascara bitsAntesDe(int i) {
    return bitDe(i) - 1;
}

/// Los elementos de primero..ultimo, los dos en 0..63.
constexpr Mascara bitsEntre(int primero, int ultimo) {
    return (~Mascara{0} >> (63 - ultimo)) & ~bitsAntesDe(primero);
}

/// Cuenta los bits. Sin la instrucción del procesador, std::popcount es una llamada.
constexpr int contarBits(Mascara m) {
    m -= (m >> 1) & 0x5555555555555555ULL;
    m = (m & 0x3333333333333333ULL) + ((m >> 2) & 0x3333333333333333ULL);
    m = (m + (m >> 4)) & 0x0f0f0f0f0f0f0f0fULL;
    return static_cast<int>((m * 0x0101010101010101ULL) >> 56);
}

constexpr int primerBit(Mascara m) {
    return std::countr_zero(m);
}
constexpr int ultimoBit(Mascara m) {
    return 63 - std::countl_zero(m);
}

} // namespace nucleo
