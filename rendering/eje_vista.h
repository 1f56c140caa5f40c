#pragma once

#include "rendering/ejes.h"

#include <cstdint>
#include <vector>

namespace renderizador {

/// Un eje tal como está en la vista: tras su franja de encabezado van los elementos inmovilizados,
/// que no se desplazan, y después los demás. Todo en 64 bits y en píxeles de la vista.
class EjeVista {
  public:
    EjeVista(const Eje& eje, int inmovilizados, int origen, int desplazamiento);

    int elementos() const { return eje_.elementos(); }
    /// Cuántos se quedan fijos, acotados a la cuadrícula.
    int fijos() const { return fijos_; }
    int tamano(int elemento) const { return eje_.tamano(elemento); }
    /// Píxeles de los elementos [desde, hasta).
    std::int64_t suma(int desde, int hasta) const;
    std::int64_t panelFijo() const { return panelFijo_; }
    /// Donde acaba lo fijo y empieza lo que se desplaza.
    std::int64_t finPanel() const { return origen_ + panelFijo_; }
    /// Borde inicial de un elemento.
    std::int64_t inicio(int elemento) const;
    std::int64_t fin(int elemento) const { return inicio(elemento) + tamano(elemento); }
    /// El elemento que hay en ese píxel, que no está en la franja de encabezado; -1 si ninguno.
    int en(std::int64_t pixel) const;
    /// El primero de los que se desplazan que asoma fuera del panel; `elementos()` si ninguno.
    int primeroDesplazado() const;
    /// Todos los fijos y después los que se desplazan y asoman antes de `limite`.
    void visibles(int limite, std::vector<int>& salida) const;

  private:
    const Eje& eje_;
    int fijos_;
    int origen_;
    int desplazamiento_;
    std::int64_t panelFijo_;
};

} // namespace renderizador
