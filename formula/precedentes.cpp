#include "formula/precedentes.h"

#include "model/celda.h"
#include "model/limites.h"

#include <algorithm>
#include <cstdint>

namespace motor_formulas {

void Precedentes::recoger(const Codigo& codigo) {
    registrados.clear();
    demasiadoGrandes.clear();
    std::int64_t celdas = 0;
    for (const ReferenciaCodigo& referencia : codigo.referencias()) {
        if (referencia.hoja < 0)
            continue;
        const nucleo::BloqueDeHoja bloque{referencia.hoja, referencia.rango};
        if (!referencia.esRango) {
            ++celdas;
            registrados.push_back(bloque);
        } else if (celdas + referencia.rango.celdas() > nucleo::kMaximoPrecedentes) {
            demasiadoGrandes.push_back(bloque);
        } else {
            celdas += referencia.rango.celdas();
            registrados.push_back(bloque);
        }
    }
}

std::vector<unsigned long long> clavesDe(std::span<const nucleo::BloqueDeHoja> bloques) {
    std::vector<unsigned long long> claves;
    for (const nucleo::BloqueDeHoja& bloque : bloques) {
        for (int fila = bloque.rango.fila1; fila <= bloque.rango.fila2; ++fila) {
            for (int col = bloque.rango.col1; col <= bloque.rango.col2; ++col)
                claves.push_back(nucleo::claveCelda(bloque.hoja, fila, col));
        }
    }
    if (bloques.size() > 1) { // las de uno solo ya salen en orden
        std::sort(claves.begin(), claves.end());
        claves.erase(std::unique(claves.begin(), claves.end()), claves.end());
    }
    return claves;
}

} // namespace motor_formulas
