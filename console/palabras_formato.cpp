#include "console/palabras_formato.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace consola {

namespace {

using nucleo::AlineacionH;
using nucleo::Formato;
using nucleo::FormatoNumero;

constexpr std::array<std::string_view, 5> kNumeros{"general", "numero", "moneda", "porcentaje",
                                                   "fecha"};
constexpr std::array<std::string_view, 4> kAlineaciones{"automatica", "izquierda", "centro",
                                                        "derecha"};

struct Marca {
    std::string_view si;
    std::string_view no;
    bool Formato::*campo;
};
constexpr std::array<Marca, 5> kMarcas{{
    {"negrita", "sin-negrita", &Formato::negrita},
    {"cursiva", "sin-cursiva", &Formato::cursiva},
    {"subrayado", "sin-subrayado", &Formato::subrayado},
    {"contorno", "sin-contorno", &Formato::estiloExtra},
    {"miles", "sin-miles", &Formato::separadorMiles},
}};

std::optional<std::uint32_t> leerColor(std::string_view texto) {
    if (texto == "ninguno") {
        return 0;
    }
    if ((texto.size() != 7 && texto.size() != 9) || texto.front() != '#') {
        return std::nullopt;
    }
    std::uint32_t color = 0;
    const char* fin = texto.data() + texto.size();
    if (std::from_chars(texto.data() + 1, fin, color, 16).ptr != fin) {
        return std::nullopt;
    }
    return texto.size() == 7 ? color | 0xFF000000U : color;
}

std::string textoColor(std::uint32_t color) {
    if (color == 0) {
        return "ninguno";
    }
    constexpr std::string_view kCifras = "0123456789ABCDEF";
    std::string texto = "#";
    for (int desde = color >> 24 == 0xFF ? 20 : 28; desde >= 0; desde -= 4) {
        texto += kCifras[(color >> desde) & 0xFU];
    }
    return texto;
}

/// Una palabra que lleva otra detrás, o ninguna de ellas.
bool aplicarConValor(std::string_view palabra, std::string_view& resto, Formato& formato) {
    if (palabra == "decimales") {
        const auto decimales = leerEntero(sacarPalabra(resto), 0, 255);
        formato.decimales = static_cast<std::uint8_t>(decimales.value_or(0));
        return decimales.has_value();
    }
    if (palabra != "texto" && palabra != "fondo") {
        return false;
    }
    const auto color = leerColor(sacarPalabra(resto));
    (palabra == "texto" ? formato.colorTexto : formato.colorFondo) = color.value_or(0);
    return color.has_value();
}

bool aplicarPalabra(std::string_view palabra, Formato& formato) {
    for (std::size_t i = 0; i < kNumeros.size(); ++i) {
        if (palabra == kNumeros[i]) {
            formato.numero = static_cast<FormatoNumero>(i);
            return true;
        }
    }
    for (std::size_t i = 0; i < kAlineaciones.size(); ++i) {
        if (palabra == kAlineaciones[i]) {
            formato.alineacion = static_cast<AlineacionH>(i);
            return true;
        }
    }
    for (const Marca& marca : kMarcas) {
        if (palabra == marca.si || palabra == marca.no) {
            formato.*marca.campo = palabra == marca.si;
            return true;
        }
    }
    return false;
}

} // namespace

std::string_view sacarPalabra(std::string_view& texto) {
    const std::size_t inicio = std::min(texto.find_first_not_of(" \t"), texto.size());
    texto.remove_prefix(inicio);
    const std::size_t fin = std::min(texto.find_first_of(" \t"), texto.size());
    const std::string_view palabra = texto.substr(0, fin);
    texto.remove_prefix(fin);
    return palabra;
}

std::optional<int> leerEntero(std::string_view texto, int minimo, int maximo) {
    int numero = 0;
    const char* fin = texto.data() + texto.size();
    const auto leido = std::from_chars(texto.data(), fin, numero);
    if (texto.empty() || leido.ec != std::errc{} || leido.ptr != fin || numero < minimo ||
        numero > maximo) {
        return std::nullopt;
    }
    return numero;
}

std::string aplicarPalabras(std::string_view palabras, Formato& formato) {
    while (true) {
        const std::string_view palabra = sacarPalabra(palabras);
        if (palabra.empty()) {
            return {};
        }
        if (!aplicarPalabra(palabra, formato) && !aplicarConValor(palabra, palabras, formato)) {
            return std::string(palabra);
        }
    }
}

std::string palabrasEntre(const Formato& desde, const Formato& hasta) {
    std::string palabras;
    const auto anadir = [&palabras](std::string_view palabra) {
        palabras.append(palabras.empty() ? "" : " ").append(palabra);
    };
    const auto numero = static_cast<std::size_t>(hasta.numero);
    if (desde.numero != hasta.numero && numero < kNumeros.size()) {
        anadir(kNumeros[numero]);
    }
    if (desde.decimales != hasta.decimales) {
        anadir("decimales " + std::to_string(hasta.decimales));
    }
    for (const Marca& marca : kMarcas) {
        if (desde.*marca.campo != hasta.*marca.campo) {
            anadir(hasta.*marca.campo ? marca.si : marca.no);
        }
    }
    const auto alineacion = static_cast<std::size_t>(hasta.alineacion);
    if (desde.alineacion != hasta.alineacion && alineacion < kAlineaciones.size()) {
        anadir(kAlineaciones[alineacion]);
    }
    if (desde.colorTexto != hasta.colorTexto) {
        anadir("texto " + textoColor(hasta.colorTexto));
    }
    if (desde.colorFondo != hasta.colorFondo) {
        anadir("fondo " + textoColor(hasta.colorFondo));
    }
    return palabras;
}

} // namespace consola
