#pragma once

#include "formula/vista_valor.h"
#include "model/valor.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace motor_formulas {

/// Condición de CONTAR.SI y las demás: una comparación con un número o con un texto.
struct Criterio {
    std::int32_t op = 0; ///< 0 "=", 1 "<>", 2 "<", 3 "<=", 4 ">", 5 ">="
    bool esNumero = false;
    double numero = 0;
    std::string texto; ///< en minúsculas, si no es número

    static Criterio desdeValor(const nucleo::Valor& valor);
    bool cumple(const nucleo::Valor& valor) const;
    bool cumple(const VistaValor& valor) const;
};

/// Si el resto del patrón casa con el resto del texto: "*" es cualquier tramo, "?" un byte. Cuesta
/// como mucho el producto de los largos y ninguna memoria.
bool coincideComodin(std::string_view patron, std::string_view texto, std::size_t posPatron,
                     std::size_t posTexto);

/// Cambia a mayúsculas o minúsculas las letras ASCII y las acentuadas de Latin-1.
std::string cambiarCaso(std::string_view texto, bool mayusculas);

/// Compara por bytes un texto, pasado a minúsculas sin copiarlo, con otro que ya lo está.
std::strong_ordering compararEnMinusculas(std::string_view texto, std::string_view minusculas);

} // namespace motor_formulas
