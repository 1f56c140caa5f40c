#include "model/lector_bytes.h"

#include <algorithm>
#include <cstring>

namespace nucleo {

namespace {

/// Cabe en la memoria caché de segundo nivel.
constexpr std::size_t kBloque = std::size_t{128} * 1024;

} // namespace

LectorBytes::LectorBytes(std::FILE* archivo, Modo modo)
    : archivo_(archivo), capacidad_(modo == Modo::Adelantado ? kBloque : 0),
      memoria_(std::make_unique_for_overwrite<unsigned char[]>(std::max(capacidad_, kContiguo))),
      siguiente_(memoria_.get()) {}

bool LectorBytes::rellenar(std::size_t n) {
    if (agotado_)
        return false;
    if (quedan_ > 0)
        std::memmove(memoria_.get(), siguiente_, quedan_);
    siguiente_ = memoria_.get();
    const std::size_t pedidos = std::max(capacidad_, n) - quedan_;
    const std::size_t leidos = std::fread(memoria_.get() + quedan_, 1, pedidos, archivo_);
    agotado_ = leidos < pedidos; // tras una lectura corta lo que siga no es de fiar
    quedan_ += leidos;
    return quedan_ >= n;
}

bool LectorBytes::leerTextoPorPartes(std::string& texto, std::size_t largo) {
    // El largo es una promesa del archivo: la memoria crece con lo que de verdad se lee.
    texto.clear();
    while (texto.size() < largo) {
        const std::size_t parte = std::min(largo - texto.size(), quedan_ > 0 ? quedan_ : kContiguo);
        const unsigned char* bytes = tomar(parte);
        if (bytes == nullptr)
            return false;
        texto.append(reinterpret_cast<const char*>(bytes), parte);
    }
    // Al crecer reserva hasta el doble, y un archivo puede traer muchos textos largos.
    if (texto.capacity() - texto.size() > texto.size() / 8)
        texto.shrink_to_fit();
    return true;
}

bool LectorBytes::leer(std::uint32_t& valor) {
    const unsigned char* bytes = tomar(4);
    if (bytes == nullptr)
        return false;
    valor = desempaquetar<std::uint32_t>(bytes);
    return true;
}

bool LectorBytes::leer(std::int32_t& valor) {
    std::uint32_t sinSigno = 0;
    if (!leer(sinSigno))
        return false;
    valor = static_cast<std::int32_t>(sinSigno);
    return true;
}

} // namespace nucleo
