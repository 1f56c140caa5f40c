#pragma once

#include <cstdint>

namespace nucleo {

/// Cómo se escribe un número. Los archivos pueden traer valores mayores que 4: se muestran como
/// `General` y se guardan tal cual.
enum class FormatoNumero : std::uint8_t {
    General = 0,
    Numero = 1,
    Moneda = 2,
    Porcentaje = 3,
    Fecha = 4,
};

/// Alineación horizontal. `General` alinea según la clase de valor.
enum class AlineacionH : std::uint8_t { General = 0, Izquierda = 1, Centro = 2, Derecha = 3 };

/// Aspecto de una celda.
struct Formato {
    FormatoNumero numero = FormatoNumero::General;
    std::uint8_t decimales = 2; ///< cifras tras la coma; la edición lo mantiene en 0..10
    bool separadorMiles = false;
    bool negrita = false;
    bool cursiva = false;
    bool subrayado = false;
    std::uint32_t colorTexto = 0; ///< 0xAARRGGBB; 0 = el color del tema
    std::uint32_t colorFondo = 0; ///< 0xAARRGGBB; 0 = sin relleno
    AlineacionH alineacion = AlineacionH::General;
    bool estiloExtra = false; ///< contorno; solo llega desde archivos, que lo conservan

    bool operator==(const Formato&) const = default;

    /// Verdadero si ningún campo difiere del predeterminado: una celda vacía así puede quitarse.
    bool esPredeterminado() const { return *this == Formato{}; }
};

} // namespace nucleo
