#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace nucleo {

/// Bytes que crecen por el final, con los enteros en orden little-endian. Lanza std::bad_alloc si
/// no hay memoria.
class EscritorBytes {
  public:
    const unsigned char* datos() const { return bytes_.get(); }
    std::size_t tamano() const { return tamano_; }

    void entero8(std::uint8_t valor) { *hueco(1) = valor; }
    void entero32(std::uint32_t valor) { poner(hueco(4), valor); }
    void entero32(std::int32_t valor) { entero32(static_cast<std::uint32_t>(valor)); }
    void entero64(std::uint64_t valor) { poner(hueco(8), valor); }
    void bytes(std::string_view texto) {
        if (!texto.empty())
            std::memcpy(hueco(texto.size()), texto.data(), texto.size());
    }

    /// Añade `n` bytes sin valor y devuelve dónde empiezan; vale hasta la siguiente escritura.
    unsigned char* hueco(std::size_t n) {
        if (capacidad_ - tamano_ < n)
            crecer(n);
        unsigned char* inicio = bytes_.get() + tamano_;
        tamano_ += n;
        return inicio;
    }

    /// Escribe un entero sin signo en una posición ya reservada.
    template <typename Entero> static void poner(unsigned char* donde, Entero valor) {
        for (std::size_t i = 0; i < sizeof(Entero); ++i)
            donde[i] = static_cast<unsigned char>(valor >> (8 * i));
    }

  private:
    struct Liberar {
        void operator()(unsigned char* bytes) const;
    };

    void crecer(std::size_t n);

    std::unique_ptr<unsigned char, Liberar> bytes_;
    std::size_t tamano_ = 0;
    std::size_t capacidad_ = 0;
};

} // namespace nucleo
