#pragma once

#include "model/compartido.h"
#include "model/mascara.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace nucleo {

/// Reparte 2^Bits tramos seguidos de filas o de columnas entre sus hijos, que pueden faltar, y
/// lleva la cuenta de las celdas que hay debajo.
template <typename Hijo, int Bits> class NodoCeldas {
    static_assert(Bits >= 1 && Bits <= 6);

  public:
    static constexpr int kHijos = 1 << Bits;

    std::uint32_t referencias = 1;
    std::uint32_t celdas = 0;

    static NodoCeldas* copiar(const NodoCeldas& otro) {
        auto* copia = new NodoCeldas(otro);
        copia->referencias = 1;
        return copia;
    }
    static void destruir(NodoCeldas* nodo) { delete nodo; }

    /// Los hijos que existen.
    Mascara presentes() const { return presentes_; }
    /// Un hijo, o nulo si falta.
    const Hijo* hijo(int i) const { return hijos_[static_cast<std::size_t>(i)].get(); }
    const Compartido<Hijo>& compartido(int i) const { return hijos_[static_cast<std::size_t>(i)]; }

    // Quien llama a las que siguen es el único dueño del nodo.

    /// El hijo para escribir en él; existe.
    Hijo& propio(int i) { return hijos_[static_cast<std::size_t>(i)].propio(); }
    /// El hijo para escribir en él, creado vacío si falta.
    Hijo& propioOCreado(int i) {
        if (hijo(i) == nullptr)
            poner(i, Compartido<Hijo>(new Hijo));
        return propio(i);
    }
    /// Pone un hijo, o lo quita si es nulo. La cuenta de celdas es asunto de quien llama.
    void poner(int i, Compartido<Hijo> nuevo) {
        presentes_ = nuevo ? presentes_ | bitDe(i) : presentes_ & ~bitDe(i);
        hijos_[static_cast<std::size_t>(i)] = std::move(nuevo);
    }

  private:
    Mascara presentes_ = 0;
    std::array<Compartido<Hijo>, kHijos> hijos_;
};

} // namespace nucleo
