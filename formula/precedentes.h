#pragma once

#include "formula/codigo.h"
#include "model/indice_rangos.h"

#include <span>
#include <string_view>
#include <vector>

namespace motor_formulas {

/// El texto de una fórmula sin su "=".
inline std::string_view textoDeFormula(std::string_view entrada) {
    return entrada.empty() ? entrada : entrada.substr(1);
}

/// Lo que una fórmula lee, como rectángulos.
struct Precedentes {
    std::vector<nucleo::BloqueDeHoja> registrados;
    /// Rangos que pasarían del máximo de celdas por fórmula: se leen, pero no son dependencias.
    std::vector<nucleo::BloqueDeHoja> demasiadoGrandes;

    /// Los recoge de una fórmula leída, en el orden en que están escritos.
    void recoger(const Codigo& codigo);
};

/// Las claves de las celdas de unos rectángulos, ordenadas y sin repetir.
std::vector<unsigned long long> clavesDe(std::span<const nucleo::BloqueDeHoja> bloques);

} // namespace motor_formulas
