#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace nucleo {

/// Lee de un archivo bytes, textos y enteros little-endian sin pedir nunca más memoria que lo que
/// el archivo demuestra tener.
class LectorBytes {
  public:
    /// `Justo` no consume del archivo más de lo que se pide; `Adelantado` lee por bloques grandes.
    enum class Modo { Justo, Adelantado };

    explicit LectorBytes(std::FILE* archivo, Modo modo);

    /// Los `n` bytes siguientes (n <= kContiguo), o nulo si el archivo se acaba antes. Valen hasta
    /// la siguiente lectura.
    const unsigned char* tomar(std::size_t n) {
        if (quedan_ < n && !rellenar(n))
            return nullptr;
        const unsigned char* inicio = siguiente_;
        siguiente_ += n;
        quedan_ -= n;
        return inicio;
    }
    bool leer(std::uint32_t& valor);
    bool leer(std::int32_t& valor);
    /// Sustituye `texto` por los `largo` bytes siguientes; falso si el archivo se acaba antes.
    bool leerTexto(std::string& texto, std::size_t largo) {
        if (quedan_ < largo)
            return leerTextoPorPartes(texto, largo);
        texto.assign(reinterpret_cast<const char*>(siguiente_), largo);
        siguiente_ += largo;
        quedan_ -= largo;
        return true;
    }

    template <typename Entero> static Entero desempaquetar(const unsigned char* bytes) {
        Entero valor = 0;
        for (std::size_t i = 0; i < sizeof(Entero); ++i)
            valor = static_cast<Entero>(valor | (static_cast<Entero>(bytes[i]) << (8 * i)));
        return valor;
    }

    static constexpr std::size_t kContiguo = 64;

  private:
    bool rellenar(std::size_t n);
    bool leerTextoPorPartes(std::string& texto, std::size_t largo);

    std::FILE* archivo_;
    std::size_t capacidad_; ///< lo que se lee del archivo de una vez
    std::unique_ptr<unsigned char[]> memoria_;
    const unsigned char* siguiente_;
    std::size_t quedan_ = 0;
    bool agotado_ = false; ///< el archivo se acabó o falló
};

} // namespace nucleo
