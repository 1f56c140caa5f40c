#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace motor_formulas {

/// Dirección de una celda tal como está escrita en una fórmula.
struct RefCelda {
    std::string hoja; ///< sin comillas; vacía = la hoja de la fórmula
    std::int32_t fila = 0;
    std::int32_t col = 0;
    bool filaAbs = false; ///< había "$" ante la fila
    bool colAbs = false;  ///< había "$" ante la columna

    bool operator==(const RefCelda&) const = default;
};

/// Unidad léxica de una fórmula.
struct Token {
    enum class Tipo : std::int32_t {
        Numero,
        Texto,
        Referencia,
        Nombre,
        Operador,
        ParenAbre,
        ParenCierra,
        PuntoComa,
        DosPuntos,
        Error,
        Fin,
        Invalido,
    };
    using enum Tipo;

    Tipo tipo = Tipo::Fin;
    std::uint64_t pos = 0;   ///< byte en que empieza
    std::uint64_t largo = 0; ///< bytes que abarca, con comillas, "$" y hoja
    std::string texto;
    double numero = 0;
    RefCelda ref;
    std::uint8_t error = 0; ///< código de `ErrorCelda`
};

/// Divide una fórmula (sin su "=") en unidades, siempre terminadas en `Fin`. Falso si alguna es
/// `Invalido`; la lista está completa en los dos casos.
bool tokenizar(const std::string& formula, std::vector<Token>& salida);

/// Lee una dirección sin hoja: "A1", "$B$2", "c3". Falso si la palabra no es una dirección.
bool palabraComoRef(const std::string& palabra, RefCelda& ref);

/// Escritura canónica de un nombre de función: mayúsculas sin tildes, con "Ñ".
std::string normalizarIdentificador(const std::string& texto);

/// Escribe una dirección en la sintaxis de las fórmulas.
std::string textoReferencia(const RefCelda& ref);

} // namespace motor_formulas
