#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace nucleo {

class GrafoDependencias;

/// Fórmulas que leen una celda: un conjunto de claves, en orden y sin repetir.
class ConjuntoLectores {
  public:
    ConjuntoLectores() = default;
    explicit ConjuntoLectores(std::vector<std::uint64_t> claves) : claves_(std::move(claves)) {}

    std::size_t size() const { return claves_.size(); }
    bool empty() const { return claves_.empty(); }
    auto begin() const { return claves_.begin(); }
    auto end() const { return claves_.end(); }
    std::size_t count(std::uint64_t clave) const;
    bool contains(std::uint64_t clave) const { return count(clave) != 0; }
    std::vector<std::uint64_t>::const_iterator find(std::uint64_t clave) const;

  private:
    std::vector<std::uint64_t> claves_;
};

/// El grafo visto como un mapa, sin que nada se guarde celda a celda: lo que se pregunta se enumera
/// entonces y queda aquí para que las referencias que se dan sigan valiendo, al día, mientras viva
/// la vista. Es para mirar el grafo, no para calcular con él.
template <typename Contenido> class VistaGrafo {
  public:
    using key_type = std::uint64_t;
    using mapped_type = Contenido;
    using value_type = std::pair<const std::uint64_t, Contenido>;

    /// Recorre las claves que había al empezar.
    class const_iterator {
      public:
        using value_type = VistaGrafo::value_type;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::forward_iterator_tag;
        using reference = const value_type&;
        using pointer = const value_type*;

        const_iterator() = default;
        const_iterator(const VistaGrafo* vista, std::vector<std::uint64_t> claves)
            : vista_(vista),
              claves_(std::make_shared<const std::vector<std::uint64_t>>(std::move(claves))) {}

        reference operator*() const { return vista_->pareja((*claves_)[indice_]); }
        pointer operator->() const { return &**this; }
        const_iterator& operator++() {
            ++indice_;
            return *this;
        }
        const_iterator operator++(int) {
            const_iterator anterior = *this;
            ++indice_;
            return anterior;
        }
        /// Los finales de todos los recorridos son iguales.
        bool operator==(const const_iterator& otro) const {
            if (alFinal() || otro.alFinal())
                return alFinal() == otro.alFinal();
            return (*claves_)[indice_] == (*otro.claves_)[otro.indice_];
        }

      private:
        bool alFinal() const { return claves_ == nullptr || indice_ >= claves_->size(); }

        const VistaGrafo* vista_ = nullptr;
        std::shared_ptr<const std::vector<std::uint64_t>> claves_;
        std::size_t indice_ = 0;
    };

    explicit VistaGrafo(const GrafoDependencias& grafo) : grafo_(&grafo) {}

    std::size_t size() const;
    bool empty() const;
    std::size_t count(std::uint64_t clave) const;
    bool contains(std::uint64_t clave) const { return count(clave) != 0; }
    /// Lanza `std::out_of_range` si la clave no está.
    const Contenido& at(std::uint64_t clave) const;
    const_iterator find(std::uint64_t clave) const {
        return count(clave) == 0 ? end() : const_iterator(this, {clave});
    }
    const_iterator begin() const { return {this, claves()}; }
    const_iterator end() const { return {}; }

  private:
    static constexpr bool kDependientes = std::is_same_v<Contenido, ConjuntoLectores>;

    std::vector<std::uint64_t> claves() const;
    Contenido enumerar(std::uint64_t clave) const;
    const value_type& pareja(std::uint64_t clave) const;

    const GrafoDependencias* grafo_;
    mutable std::unordered_map<std::uint64_t, Contenido> enumerados_;
    mutable std::uint64_t version_ = 0; ///< la del grafo cuando se enumeraron
};

/// De cada celda, las fórmulas que la leen.
using VistaDependientes = VistaGrafo<ConjuntoLectores>;
/// De cada fórmula, las celdas que lee.
using VistaPrecedentes = VistaGrafo<std::vector<std::uint64_t>>;

extern template class VistaGrafo<ConjuntoLectores>;
extern template class VistaGrafo<std::vector<std::uint64_t>>;

} // namespace nucleo
