#include "console/texto_terminal.h"

#include "console/codificacion.h"

#include <algorithm>
#include <iterator>

namespace consola {

namespace {

struct Tramo {
    char32_t desde;
    char32_t hasta;
};

// Ordenados, para buscar por bisección.
constexpr Tramo kSinAncho[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489},   {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},   {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x200B, 0x200F}, {0x2060, 0x2064},   {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};
constexpr Tramo kAnchos[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x4DBF},   {0x4E00, 0xA4CF},
    {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <std::size_t N> bool esta(const Tramo (&tramos)[N], char32_t punto) {
    const auto* it = std::ranges::upper_bound(tramos, punto, {}, &Tramo::desde);
    return it != std::begin(tramos) && punto <= std::prev(it)->hasta;
}

// Los que cambian el sentido de la escritura hacen que se lea otra cosa que lo que hay.
bool cambiaSentido(char32_t punto) {
    return (punto >= 0x202A && punto <= 0x202E) || (punto >= 0x2066 && punto <= 0x2069);
}

bool esControl(char32_t punto) {
    return punto < 0x20 || (punto >= 0x7F && punto < 0xA0);
}

} // namespace

int anchoVisible(std::string_view texto) {
    int ancho = 0;
    for (std::size_t i = 0; i < texto.size();) {
        const char32_t punto = siguientePunto(texto, i);
        if (punto < 0x300) {
            ++ancho;
        } else if (!esta(kSinAncho, punto)) {
            ancho += esta(kAnchos, punto) ? 2 : 1;
        }
    }
    return ancho;
}

std::string paraTerminal(std::string_view texto) {
    std::string limpio;
    limpio.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size();) {
        const std::size_t inicio = i;
        const char32_t punto = siguientePunto(texto, i);
        if (punto == '\n') {
            limpio += "↵";
        } else if (punto == '\t') {
            limpio += ' ';
        } else if (punto == kPuntoInvalido || esControl(punto) || cambiaSentido(punto)) {
            limpio += "\uFFFD";
        } else {
            limpio.append(texto.substr(inicio, i - inicio));
        }
    }
    return limpio;
}

} // namespace consola
