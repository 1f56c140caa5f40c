#pragma once

#include "formula/operacion.h"
#include "formula/tokenizador.h"
#include "model/valor.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace motor_formulas {

/// Coordenadas de una dirección escrita, sin el nombre de hoja.
struct Direccion {
    std::int32_t fila = 0;
    std::int32_t col = 0;
    bool filaAbs = false;
    bool colAbs = false;
};

/// Unidad léxica que no copia nada: señala el texto de la fórmula. Solo tiene sentido el campo que
/// corresponde a su `tipo`.
struct Lexema {
    Token::Tipo tipo = Token::Fin;
    Operacion operacion = Operacion::Suma; ///< de un `Operador`; "%" es `Porcentaje`
    nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
    bool comillasDobles = false; ///< el texto contiene `""` que hay que reducir a una
    Direccion direccion;
    double numero = 0;
    std::size_t pos = 0;
    std::size_t largo = 0;
    std::string_view hoja; ///< de una `Referencia`, sin comillas
};

/// Recorre una fórmula byte a byte y da sus unidades de una en una. Es el único analizador léxico:
/// de él viven el compilador, `tokenizar` y la reescritura de referencias. El texto debe seguir
/// vivo.
class Lexico {
  public:
    explicit Lexico(std::string_view texto)
        : inicio_(texto.data()), cursor_(texto.data()), fin_(texto.data() + texto.size()) {}

    /// La siguiente unidad; al final, `Fin` cuantas veces se pida. Tras una `Invalido` se puede
    /// seguir.
    void siguiente(Lexema& lexema);

    /// El texto que abarca una unidad.
    std::string_view texto(const Lexema& lexema) const {
        return {inicio_ + lexema.pos, lexema.largo};
    }

  private:
    void leerSimbolo(const char* p, Lexema& lexema);
    void leerNumero(const char* p, Lexema& lexema);
    void leerTexto(const char* p, Lexema& lexema);
    void leerError(const char* p, Lexema& lexema);
    void leerHojaEntreComillas(const char* p, Lexema& lexema);
    void leerPalabra(const char* p, Lexema& lexema);
    void leerDireccionDeHoja(const char* p, std::string_view hoja, Lexema& lexema);
    void terminar(Token::Tipo tipo, const char* fin, Lexema& lexema);

    const char* inicio_;
    const char* cursor_;
    const char* fin_;
    const char* separadorSobrante_ = nullptr; ///< el que cerró un número: no empieza otro
};

/// Lee una dirección completa, sin hoja. Falso si el texto no lo es o cae fuera de la cuadrícula.
bool leerDireccion(std::string_view texto, Direccion& direccion);

/// Escribe una dirección en la sintaxis de las fórmulas, con su hoja si no es vacía.
void agregarReferencia(std::string& salida, std::string_view hoja, const Direccion& direccion);

/// El contenido de un texto literal (sin sus comillas de los extremos) con `""` reducido a `"`,
/// añadido al final de `salida`.
void agregarTextoLiteral(std::string& salida, std::string_view contenido);

/// Escribe en `destino` la forma canónica de un nombre (la de `normalizarIdentificador`), que nunca
/// es más larga que `texto`; devuelve su largo.
std::size_t normalizarEn(std::string_view texto, char* destino);

} // namespace motor_formulas
