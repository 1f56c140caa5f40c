#include "console/json.h"

#include "console/codificacion.h"

#include <array>
#include <charconv>
#include <cmath>

namespace consola {

std::string cadenaJson(std::string_view texto) {
    constexpr std::string_view kHex = "0123456789abcdef";
    std::string json = "\"";
    for (std::size_t i = 0; i < texto.size();) {
        const char32_t punto = siguientePunto(texto, i);
        if (punto == '"' || punto == '\\') {
            json += '\\';
            json += static_cast<char>(punto);
        } else if (punto == '\n') {
            json += "\\n";
        } else if (punto == '\t') {
            json += "\\t";
        } else if (punto < 0x20 || punto == 0x7F) {
            json += "\\u00";
            json += kHex[punto >> 4];
            json += kHex[punto & 0xF];
        } else {
            anadirPunto(json, punto == kPuntoInvalido ? 0xFFFD : punto);
        }
    }
    json += '"';
    return json;
}

std::string numeroJson(double numero) {
    if (!std::isfinite(numero)) {
        return "null";
    }
    std::array<char, 32> cifras{};
    const auto fin = std::to_chars(cifras.data(), cifras.data() + cifras.size(), numero).ptr;
    return {cifras.data(), fin};
}

} // namespace consola
