#pragma once

#include <utility>

namespace nucleo {

/// Puntero con cuenta de referencias dentro del objeto, sin operaciones atómicas: el programa
/// tiene un solo hilo. `T` ofrece el campo `referencias` (1 al nacer) y las funciones estáticas
/// `copiar(const T&)` y `destruir(T*)`.
template <typename T> class Compartido {
  public:
    Compartido() = default;
    /// Se queda con la referencia con la que nació el objeto.
    explicit Compartido(T* nuevo) : objeto_(nuevo) {}
    Compartido(const Compartido& otro) : objeto_(otro.objeto_) {
        if (objeto_ != nullptr)
            ++objeto_->referencias;
    }
    Compartido(Compartido&& otro) noexcept : objeto_(std::exchange(otro.objeto_, nullptr)) {}
    Compartido& operator=(Compartido otro) noexcept {
        std::swap(objeto_, otro.objeto_);
        return *this;
    }
    ~Compartido() {
        if (objeto_ != nullptr && --objeto_->referencias == 0)
            T::destruir(objeto_);
    }

    const T* get() const { return objeto_; }
    const T* operator->() const { return objeto_; }
    const T& operator*() const { return *objeto_; }
    explicit operator bool() const { return objeto_ != nullptr; }
    bool operator==(const Compartido& otro) const { return objeto_ == otro.objeto_; }

    /// Verdadero si nadie más lo tiene y por tanto puede escribirse.
    bool unico() const { return objeto_->referencias == 1; }
    /// El objeto para escribir en él; antes se aparta una copia si alguien más lo tiene.
    T& propio() {
        if (!unico())
            *this = Compartido(T::copiar(*objeto_));
        return *objeto_;
    }

  private:
    T* objeto_ = nullptr;
};

} // namespace nucleo
