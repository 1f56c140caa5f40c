#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

/// Los bytes de una entrada leídos como decisiones; cuando se acaban, todas valen cero.
class Bytes {
  public:
    Bytes(const std::uint8_t* datos, std::size_t cuantos)
        : resto_(reinterpret_cast<const char*>(datos), cuantos) {}

    bool quedan() const { return !resto_.empty(); }

    std::uint8_t byte() {
        if (resto_.empty())
            return 0;
        const auto primero = static_cast<std::uint8_t>(resto_.front());
        resto_.remove_prefix(1);
        return primero;
    }

    /// Un entero de 0 a `hasta - 1`.
    int hasta(int cuantos) { return ((byte() << 8) | byte()) % cuantos; }

    /// Un texto precedido de su largo, de 255 bytes como mucho.
    std::string texto() {
        const std::size_t largo = byte();
        const std::string_view dado = resto_.substr(0, largo);
        resto_.remove_prefix(dado.size());
        return std::string(dado);
    }

    std::string_view resto() const { return resto_; }

  private:
    std::string_view resto_;
};

/// Detiene el proceso con un mensaje: así avisa libFuzzer de que algo que debía cumplirse no se
/// cumple.
[[noreturn]] void defecto(std::string_view que);

inline void exigir(bool cumple, std::string_view que) {
    if (!cumple)
        defecto(que);
}

} // namespace fuzz
