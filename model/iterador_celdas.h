#pragma once

#include "model/celda.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>

namespace nucleo {

/// Recorre un almacén como si fuera un mapa. Guarda la clave y no punteros: sigue valiendo aunque
/// el almacén cambie, mientras su celda exista. Desreferenciarlo sin `const` es escribir: aparta
/// el bloque de la celda de las copias que lo comparten.
template <typename Almacen> class IteradorCeldas {
    using AlmacenSinConst = std::remove_const_t<Almacen>;
    using CeldaVista = std::conditional_t<std::is_const_v<Almacen>, const Celda, Celda>;

  public:
    /// Lo que se ve en cada paso; vale hasta que el iterador se mueve.
    struct Par {
        const std::uint64_t first;
        CeldaVista& second;

        Par(std::uint64_t clave, CeldaVista& celda) : first(clave), second(celda) {}
        /// Se copia a los pares de los mapas.
        operator std::pair<const std::uint64_t, Celda>() const { return {first, second}; }
    };

    using iterator_category = std::input_iterator_tag;
    using value_type = std::pair<const std::uint64_t, Celda>;
    using difference_type = std::ptrdiff_t;
    using reference = Par&;
    using pointer = Par*;

    IteradorCeldas() = default;
    /// La posición de una clave que existe, o el final si no hay clave.
    IteradorCeldas(Almacen& almacen, std::optional<std::uint64_t> clave)
        : almacen_(&almacen), clave_(clave) {}
    IteradorCeldas(const IteradorCeldas& otro) : almacen_(otro.almacen_), clave_(otro.clave_) {}
    IteradorCeldas& operator=(const IteradorCeldas& otro) {
        if (this != &otro) {
            almacen_ = otro.almacen_;
            clave_ = otro.clave_;
            par_.reset();
        }
        return *this;
    }
    ~IteradorCeldas() = default;

    /// Cualquier iterador sirve de iterador de solo lectura.
    operator IteradorCeldas<const AlmacenSinConst>() const requires(!std::is_const_v<Almacen>) {
        return {*almacen_, clave_};
    }

    Par& operator*() const { return par_.emplace(*clave_, almacen_->at(*clave_)); }
    Par* operator->() const { return &**this; }

    IteradorCeldas& operator++() {
        clave_ = almacen_->claveSiguiente(*clave_);
        return *this;
    }
    IteradorCeldas operator++(int) {
        IteradorCeldas antes = *this;
        ++*this;
        return antes;
    }

    std::optional<std::uint64_t> clave() const { return clave_; }

    friend bool operator==(const IteradorCeldas& a, const IteradorCeldas& b) {
        return a.clave_ == b.clave_;
    }

  private:
    Almacen* almacen_ = nullptr;
    std::optional<std::uint64_t> clave_; ///< sin valor, el final
    mutable std::optional<Par> par_;
};

} // namespace nucleo
