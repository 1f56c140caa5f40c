#pragma once

#include <cstdint>

namespace motor_formulas {

/// En qué orden están los valores entre los que se busca.
enum class Orden { Ascendente, Descendente };

/// Filas seguidas, con las dos de los extremos.
struct TramoFilas {
    int desde = 0;
    int hasta = 0;
};

/// Las columnas se recuerdan por páginas de estas filas: un bit de una palabra para cada una.
inline constexpr int kFilasPagina = 64;

/// Los bits de las filas de una página que están en un tramo que la toca.
constexpr std::uint64_t bitsDePagina(TramoFilas filas, int pagina) {
    const int primera = pagina * kFilasPagina;
    const int desde = filas.desde > primera ? filas.desde - primera : 0;
    const int hasta =
        filas.hasta < primera + kFilasPagina - 1 ? filas.hasta - primera : kFilasPagina - 1;
    return (~std::uint64_t{0} >> (kFilasPagina - 1 - hasta)) & (~std::uint64_t{0} << desde);
}

} // namespace motor_formulas
