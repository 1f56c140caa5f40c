#pragma once

#include "console/orden.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace consola {

/// Una línea que dice qué se está haciendo, solo cuando hay alguien mirando: en una tubería no
/// escribe nada. Al destruirse borra la línea.
class Progreso {
  public:
    Progreso(Terminal& terminal, std::string accion);
    ~Progreso();
    Progreso(const Progreso&) = delete;
    Progreso& operator=(const Progreso&) = delete;

    /// Enseña la parte hecha, como mucho diez veces por segundo; un total de 0 es desconocido.
    void avance(std::uint64_t hecho, std::uint64_t total);

  private:
    Terminal& terminal_;
    std::string accion_;
    std::chrono::steady_clock::time_point proxima_;
};

} // namespace consola
