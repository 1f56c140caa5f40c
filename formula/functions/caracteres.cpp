#include "formula/functions/caracteres.h"

namespace motor_formulas {

std::size_t largoCaracter(std::string_view texto, std::size_t pos) {
    const auto inicial = static_cast<unsigned char>(texto[pos]);
    std::size_t largo = 4;
    if (inicial < 0x80)
        largo = 1;
    else if ((inicial & 0xe0U) == 0xc0)
        largo = 2;
    else if ((inicial & 0xf0U) == 0xe0)
        largo = 3;
    return largo <= texto.size() - pos ? largo : 1;
}

std::size_t finDeCaracteres(std::string_view texto, std::size_t cuantos) {
    std::size_t pos = 0;
    for (; cuantos > 0 && pos < texto.size(); --cuantos)
        pos += largoCaracter(texto, pos);
    return pos;
}

std::size_t contarCaracteres(std::string_view texto) {
    std::size_t cuenta = 0;
    for (std::size_t pos = 0; pos < texto.size(); pos += largoCaracter(texto, pos))
        ++cuenta;
    return cuenta;
}

std::vector<std::string> puntosDeCodigo(std::string_view texto) {
    std::vector<std::string> caracteres;
    for (std::size_t pos = 0; pos < texto.size();) {
        const std::size_t largo = largoCaracter(texto, pos);
        caracteres.emplace_back(texto.substr(pos, largo));
        pos += largo;
    }
    return caracteres;
}

} // namespace motor_formulas
