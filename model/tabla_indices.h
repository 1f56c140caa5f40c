#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace nucleo {

/// Mezcla una clave con una semilla propia de cada proceso: nadie puede preparar un archivo cuyas
/// claves caigan en el mismo sitio de una tabla.
std::uint32_t mezclarClave(std::uint64_t clave);
std::uint32_t mezclarClave(std::uint64_t alta, std::uint64_t baja);

/// Tabla de dispersión que guarda índices (nunca 0) de elementos que viven en otra parte. Ocupa
/// ocho bytes por sitio, busca en sitios contiguos y no llena más de la mitad.
class TablaIndices {
  public:
    /// Índice con esa mezcla que cumple `igual(indice)`; 0 si no hay.
    template <typename Igual> std::uint32_t buscar(std::uint32_t mezcla, Igual&& igual) const {
        if (sitios_.empty())
            return 0;
        for (std::size_t i = mezcla & mascara_;; i = (i + 1) & mascara_) {
            const Sitio& sitio = sitios_[i];
            if (sitio.indice == 0)
                return 0;
            if (sitio.mezcla == mezcla && igual(sitio.indice))
                return sitio.indice;
        }
    }

    /// El índice no puede estar ya.
    void insertar(std::uint32_t mezcla, std::uint32_t indice);
    /// No hace nada si no está.
    void quitar(std::uint32_t mezcla, std::uint32_t indice);
    /// Olvida los índices y conserva la memoria.
    void vaciar();
    std::size_t cuenta() const { return cuenta_; }

  private:
    struct Sitio {
        std::uint32_t mezcla = 0;
        std::uint32_t indice = 0;
    };

    void crecer();

    std::vector<Sitio> sitios_; ///< potencia de dos
    std::size_t mascara_ = 0;
    std::size_t cuenta_ = 0;
};

} // namespace nucleo
