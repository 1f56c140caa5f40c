#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
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

/// Recorrido de una vista como el de un mapa: parejas de clave y contenido, calculado al mirarlo.
template <typename Vista> class IteradorGrafo {
  public:
    using value_type = std::pair<const std::uint64_t, typename Vista::mapped_type>;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;
    using reference = value_type;

    /// Da a `->` una pareja que vive lo que dura la expresión.
    class pointer {
      public:
        explicit pointer(value_type pareja) : pareja_(std::move(pareja)) {}
        const value_type* operator->() const { return &pareja_; }

      private:
        value_type pareja_;
    };

    IteradorGrafo() = default;
    IteradorGrafo(const Vista* vista, std::shared_ptr<const std::vector<std::uint64_t>> claves,
                  std::size_t indice)
        : vista_(vista), claves_(std::move(claves)), indice_(indice) {}

    value_type operator*() const {
        const std::uint64_t clave = (*claves_)[indice_];
        return {clave, vista_->at(clave)};
    }
    pointer operator->() const { return pointer(**this); }
    IteradorGrafo& operator++() {
        ++indice_;
        return *this;
    }
    IteradorGrafo operator++(int) {
        IteradorGrafo anterior = *this;
        ++indice_;
        return anterior;
    }
    /// Dos finales son iguales aunque vengan de recorridos distintos.
    bool operator==(const IteradorGrafo& otro) const {
        if (alFinal() || otro.alFinal())
            return alFinal() == otro.alFinal();
        return (*claves_)[indice_] == (*otro.claves_)[otro.indice_];
    }

  private:
    bool alFinal() const { return claves_ == nullptr || indice_ >= claves_->size(); }

    const Vista* vista_ = nullptr;
    std::shared_ptr<const std::vector<std::uint64_t>> claves_;
    std::size_t indice_ = 0;
};

/// El grafo visto como un mapa de cada celda a las fórmulas que la leen. Nada se guarda celda a
/// celda: `size` y el recorrido enumeran los rectángulos y son para mirar, no para calcular.
class VistaDependientes {
  public:
    using key_type = std::uint64_t;
    using mapped_type = ConjuntoLectores;
    using const_iterator = IteradorGrafo<VistaDependientes>;

    explicit VistaDependientes(const GrafoDependencias& grafo) : grafo_(&grafo) {}

    std::size_t size() const;
    bool empty() const;
    std::size_t count(std::uint64_t clave) const;
    bool contains(std::uint64_t clave) const { return count(clave) != 0; }
    /// Lanza `std::out_of_range` si ninguna fórmula lee la celda.
    ConjuntoLectores at(std::uint64_t clave) const;
    const_iterator find(std::uint64_t clave) const;
    const_iterator begin() const;
    const_iterator end() const { return {}; }

  private:
    const GrafoDependencias* grafo_;
};

/// El grafo visto como un mapa de cada fórmula a las celdas que lee.
class VistaPrecedentes {
  public:
    using key_type = std::uint64_t;
    using mapped_type = std::vector<std::uint64_t>;
    using const_iterator = IteradorGrafo<VistaPrecedentes>;

    explicit VistaPrecedentes(const GrafoDependencias& grafo) : grafo_(&grafo) {}

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    std::size_t count(std::uint64_t clave) const;
    bool contains(std::uint64_t clave) const { return count(clave) != 0; }
    /// Lanza `std::out_of_range` si la celda no tiene precedentes.
    std::vector<std::uint64_t> at(std::uint64_t clave) const;
    const_iterator find(std::uint64_t clave) const;
    const_iterator begin() const;
    const_iterator end() const { return {}; }

  private:
    const GrafoDependencias* grafo_;
};

} // namespace nucleo
