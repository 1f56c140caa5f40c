#pragma once

#include "model/hoja.h"
#include "rendering/regiones.h"

#include <vector>

namespace renderizador {

/// Qué fusión es dueña de cada celda visible de una región. Se hace con una pasada por las fusiones
/// de la hoja y manda la primera por orden de creación, como en `Hoja::fusionEn`.
class MapaFusiones {
  public:
    MapaFusiones(const std::vector<nucleo::RangoFusion>& fusiones, const Region& region);

    /// Las que son dueñas de alguna celda, por orden de creación.
    const std::vector<const nucleo::RangoFusion*>& visibles() const { return visibles_; }
    /// Por posición en los tramos de la región, no por fila y columna; nulo si no hay fusión.
    const nucleo::RangoFusion* en(std::size_t fila, std::size_t col) const {
        return duenas_.empty() ? nullptr : duenas_[fila * columnas_ + col];
    }

  private:
    std::size_t columnas_;
    std::vector<const nucleo::RangoFusion*> duenas_; ///< vacío si ninguna toca la región
    std::vector<const nucleo::RangoFusion*> visibles_;
};

} // namespace renderizador
