#include "console/codificacion.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace consola {

namespace {

// Bytes 0x80..0x9F de Windows-1252; los cinco que no están asignados quedan como están.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned byteEn(std::string_view texto, std::size_t posicion) {
    return static_cast<unsigned char>(texto[posicion]);
}

} // namespace

char32_t siguientePunto(std::string_view texto, std::size_t& posicion) {
    const unsigned primero = byteEn(texto, posicion++);
    if (primero < 0x80) {
        return primero;
    }
    std::size_t siguen = 0;
    char32_t punto = 0;
    char32_t minimo = 0;
    if (primero >= 0xC2 && primero < 0xE0) {
        siguen = 1;
        punto = primero & 0x1FU;
        minimo = 0x80;
    } else if (primero >= 0xE0 && primero < 0xF0) {
        siguen = 2;
        punto = primero & 0x0FU;
        minimo = 0x800;
    } else if (primero >= 0xF0 && primero < 0xF5) {
        siguen = 3;
        punto = primero & 0x07U;
        minimo = 0x10000;
    } else {
        return kPuntoInvalido;
    }
    if (texto.size() - posicion < siguen) {
        return kPuntoInvalido;
    }
    for (std::size_t i = 0; i < siguen; ++i) {
        const unsigned continuacion = byteEn(texto, posicion + i);
        if ((continuacion & 0xC0U) != 0x80) {
            return kPuntoInvalido;
        }
        punto = (punto << 6) | (continuacion & 0x3FU);
    }
    if (punto < minimo || punto > 0x10FFFF || (punto >= 0xD800 && punto < 0xE000)) {
        return kPuntoInvalido;
    }
    posicion += siguen;
    return punto;
}

void anadirPunto(std::string& texto, char32_t punto) {
    const auto anadir = [&texto](char32_t byte) { texto += static_cast<char>(byte); };
    if (punto < 0x80) {
        anadir(punto);
    } else if (punto < 0x800) {
        anadir(0xC0 | (punto >> 6));
        anadir(0x80 | (punto & 0x3F));
    } else if (punto < 0x10000) {
        anadir(0xE0 | (punto >> 12));
        anadir(0x80 | ((punto >> 6) & 0x3F));
        anadir(0x80 | (punto & 0x3F));
    } else {
        anadir(0xF0 | (punto >> 18));
        anadir(0x80 | ((punto >> 12) & 0x3F));
        anadir(0x80 | ((punto >> 6) & 0x3F));
        anadir(0x80 | (punto & 0x3F));
    }
}

bool esUtf8(std::string_view texto) {
    std::size_t posicion = 0;
    while (posicion < texto.size()) {
        // Casi todo es ASCII: se salta de ocho en ocho.
        std::uint64_t ocho = 0;
        if (texto.size() - posicion >= sizeof ocho) {
            std::memcpy(&ocho, texto.data() + posicion, sizeof ocho);
            if ((ocho & 0x8080808080808080ULL) == 0) {
                posicion += sizeof ocho;
                continue;
            }
        }
        if (siguientePunto(texto, posicion) == kPuntoInvalido) {
            return false;
        }
    }
    return true;
}

std::string desdeWindows1252(std::string_view bytes) {
    std::string texto;
    texto.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const unsigned byte = static_cast<unsigned char>(c);
        anadirPunto(texto, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
    }
    return texto;
}

} // namespace consola
