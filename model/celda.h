#pragma once

#include "model/formato.h"
#include "model/valor.h"

#include <cstdint>
#include <string>

namespace nucleo {

/// Clase de contenido de una celda. Un archivo puede traer otros números; se conservan.
enum class TipoCelda : std::uint8_t { Vacia = 0, Numero = 1, Texto = 2, Formula = 3 };

/// Una celda: lo que se escribió, lo que vale y cómo se ve.
struct Celda {
    TipoCelda tipo = TipoCelda::Vacia;
    std::string entrada; ///< UTF-8, tal como se escribió; una fórmula lleva su "="
    double numero = 0;   ///< el número literal (o la serie de una fecha); 0 si no es `Numero`
    Valor valor;         ///< resultado de la fórmula, o el literal; lo mantiene el motor
    Formato formato;

    bool operator==(const Celda&) const = default;
};

/// Clave de una celda dentro de su hoja y en el archivo: fila en los 32 bits altos.
constexpr std::uint64_t claveLocal(int fila, int col) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(fila)) << 32) |
           static_cast<std::uint32_t>(col);
}
constexpr int filaDeClaveLocal(std::uint64_t clave) {
    return static_cast<int>(static_cast<std::uint32_t>(clave >> 32));
}
constexpr int columnaDeClaveLocal(std::uint64_t clave) {
    return static_cast<int>(static_cast<std::uint32_t>(clave));
}

/// Clave de una celda en el grafo del libro: hoja en 16 bits, fila en 24, columna en 16. Los bits
/// 40..47 son siempre cero; una fila de 2^24 o más pierde sus bits altos.
constexpr std::uint64_t claveCelda(int hoja, int fila, int col) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(hoja) & 0xffffU) << 48) |
           ((static_cast<std::uint64_t>(static_cast<std::uint32_t>(fila)) << 16) &
            0xffffff0000ULL) |
           (static_cast<std::uint32_t>(col) & 0xffffU);
}
constexpr int hojaDeClave(std::uint64_t clave) {
    return static_cast<int>(clave >> 48);
}
constexpr int filaDeClave(std::uint64_t clave) {
    return static_cast<int>((clave >> 16) & 0xffffffU);
}
constexpr int columnaDeClave(std::uint64_t clave) {
    return static_cast<int>(clave & 0xffffU);
}

} // namespace nucleo
