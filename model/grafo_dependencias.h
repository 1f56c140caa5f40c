#pragma once

#include "model/rango.h"
#include "model/vistas_grafo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace nucleo {

/// Rectángulo normalizado y dentro de la cuadrícula de una hoja.
struct BloqueDeHoja {
    int hoja = 0;
    RangoCeldas rango;
};

/// Qué fórmula lee qué celdas y, al revés, qué fórmulas leen una celda. Las celdas se nombran por
/// su `claveCelda`.
class GrafoDependencias {
  public:
    /// Sustituye los precedentes de una fórmula y los recuerda en el orden dado, con sus
    /// repeticiones; con la lista vacía la saca del grafo.
    void establecerPrecedentes(std::uint64_t clave, std::vector<std::uint64_t> precedentes);
    /// Igual, con rectángulos: sus precedentes son las celdas de todos, ordenadas y sin repetir.
    void establecerBloques(std::uint64_t clave, std::span<const BloqueDeHoja> bloques);
    void quitarDependencias(std::uint64_t clave);
    void limpiar();

    bool tienePrecedentes(std::uint64_t formula) const;
    /// Vacío si la celda no es una fórmula con precedentes.
    std::vector<std::uint64_t> precedentesDe(std::uint64_t formula) const;
    bool tieneLectores(std::uint64_t celda) const;
    /// Fórmulas que leen la celda, en orden y sin repetir.
    std::vector<std::uint64_t> lectoresDe(std::uint64_t celda) const;

    std::size_t cuentaFormulas() const;
    /// Fórmulas con precedentes, en orden.
    std::vector<std::uint64_t> formulas() const;
    /// Celdas que lee alguna fórmula, en orden. Enumera los rectángulos celda a celda.
    std::vector<std::uint64_t> celdasLeidas() const;

  private:
    std::unordered_map<std::uint64_t, std::unordered_set<std::uint64_t>> lectores_;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> precedentes_;
};

} // namespace nucleo
