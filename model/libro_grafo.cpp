#include "model/libro.h"

#include <cstdint>
#include <vector>

namespace nucleo {

void Libro::establecerPrecedentes(std::uint64_t clave,
                                  std::vector<std::uint64_t> precedentesNuevos) {
    grafo_->establecerPrecedentes(clave, precedentesNuevos);
}

void Libro::quitarDependencias(std::uint64_t clave) {
    grafo_->quitarDependencias(clave);
}

void Libro::limpiarGrafo() {
    grafo_->limpiar();
}

} // namespace nucleo
