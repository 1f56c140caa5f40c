#include "formula/tokenizador.h"

#include "formula/lexico.h"
#include "model/direcciones.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace motor_formulas {

namespace {

Token tokenDe(const Lexico& lexico, const Lexema& lexema) {
    Token token;
    token.tipo = lexema.tipo;
    token.pos = lexema.pos;
    token.largo = lexema.largo;
    const std::string_view escrito = lexico.texto(lexema);
    switch (lexema.tipo) {
    case Token::Numero:
        token.texto = escrito;
        std::replace(token.texto.begin(), token.texto.end(), ',', '.');
        token.numero = lexema.numero;
        break;
    case Token::Texto:
        agregarTextoLiteral(token.texto, escrito.substr(1, escrito.size() - 2));
        break;
    case Token::Referencia:
        token.texto = escrito;
        token.ref = {std::string(lexema.hoja), lexema.direccion.fila, lexema.direccion.col,
                     lexema.direccion.filaAbs, lexema.direccion.colAbs};
        break;
    case Token::Error:
        token.texto = escrito;
        token.error = static_cast<std::uint8_t>(lexema.error);
        break;
    default:
        token.texto = escrito;
    }
    return token;
}

bool necesitaComillas(std::string_view hoja) {
    const auto sencillo = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    };
    // Un nombre que empieza por cifra se leería como un número.
    return (hoja.front() >= '0' && hoja.front() <= '9') ||
           !std::all_of(hoja.begin(), hoja.end(), sencillo);
}

} // namespace

bool tokenizar(const std::string& formula, std::vector<Token>& salida) {
    salida.clear();
    bool valida = true;
    Lexico lexico(formula);
    Lexema lexema;
    do {
        lexico.siguiente(lexema);
        valida = valida && lexema.tipo != Token::Invalido;
        salida.push_back(tokenDe(lexico, lexema));
    } while (lexema.tipo != Token::Fin);
    return valida;
}

bool palabraComoRef(const std::string& palabra, RefCelda& ref) {
    ref = {};
    Direccion direccion;
    if (!leerDireccion(palabra, direccion))
        return false;
    ref.fila = direccion.fila;
    ref.col = direccion.col;
    ref.filaAbs = direccion.filaAbs;
    ref.colAbs = direccion.colAbs;
    return true;
}

std::string normalizarIdentificador(const std::string& texto) {
    std::string normalizado(texto.size(), '\0');
    normalizado.resize(normalizarEn(texto, normalizado.data()));
    return normalizado;
}

void agregarReferencia(std::string& salida, std::string_view hoja, const Direccion& direccion) {
    if (!hoja.empty()) {
        const bool comillas = necesitaComillas(hoja);
        if (comillas)
            salida += '\'';
        salida += hoja;
        if (comillas)
            salida += '\'';
        salida += '!';
    }
    std::array<char, 32> escrita; // "$", las letras de cualquier int, "$" y sus cifras
    char* fin = escrita.data();
    if (direccion.colAbs)
        *fin++ = '$';
    const std::string letras = nucleo::nombreColumna(direccion.col);
    fin = std::copy(letras.begin(), letras.end(), fin);
    if (direccion.filaAbs)
        *fin++ = '$';
    fin = std::to_chars(fin, escrita.data() + escrita.size(), std::int64_t{direccion.fila} + 1).ptr;
    salida.append(escrita.data(), fin);
}

std::string textoReferencia(const RefCelda& ref) {
    std::string texto;
    agregarReferencia(texto, ref.hoja, {ref.fila, ref.col, ref.filaAbs, ref.colAbs});
    return texto;
}

} // namespace motor_formulas
