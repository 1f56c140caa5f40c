#include "formula/cambios_columna.h"

#include "model/limites.h"

#include <algorithm>

namespace motor_formulas {

void CambiosColumna::apuntar(std::uint64_t momento, int fila) {
    while (!menores_.empty() && menores_.back().fila >= fila)
        menores_.pop_back();
    menores_.push_back({momento, fila});
    while (!mayores_.empty() && mayores_.back().fila <= fila)
        mayores_.pop_back();
    mayores_.push_back({momento, fila});
}

TramoFilas CambiosColumna::despuesDe(std::uint64_t momento) const {
    const auto primero = [momento](const std::vector<Cambio>& cambios) {
        return std::partition_point(
            cambios.begin(), cambios.end(),
            [momento](const Cambio& cambio) { return cambio.momento <= momento; });
    };
    const auto menor = primero(menores_);
    const auto mayor = primero(mayores_);
    return menor == menores_.end() ? TramoFilas{nucleo::kFilas, -1}
                                   : TramoFilas{menor->fila, mayor->fila};
}

} // namespace motor_formulas
