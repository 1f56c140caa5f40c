#pragma once

#include <cmath>
#include <cstdint>

namespace motor_formulas {

/// Cómo se reduce una serie de números a uno, de uno en uno y en orden.
enum class Pliegue : std::uint8_t { Suma, Producto, Maximo, Minimo };

/// Una serie de números a medio reducir.
struct Acumulado {
    double valor = 0;
    std::int64_t cuenta = 0;

    static Acumulado inicial(Pliegue pliegue) {
        return {pliegue == Pliegue::Producto ? 1.0 : 0.0, 0};
    }

    /// Al comparar, lo que no es un número solo gana si no hay otra cosa, esté donde esté.
    template <Pliegue kPliegue> void anadir(double numero) {
        if constexpr (kPliegue == Pliegue::Suma)
            valor += numero;
        else if constexpr (kPliegue == Pliegue::Producto)
            valor *= numero;
        else if constexpr (kPliegue == Pliegue::Maximo)
            valor = cuenta == 0 || numero > valor || std::isnan(valor) ? numero : valor;
        else
            valor = cuenta == 0 || numero < valor || std::isnan(valor) ? numero : valor;
        ++cuenta;
    }
};

} // namespace motor_formulas
