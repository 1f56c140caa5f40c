#include "formula/lexico.h"

#include "model/limites.h"

#include <array>
#include <cfloat>
#include <charconv>
#include <limits>
#include <system_error>

namespace motor_formulas {

namespace {

// Cada byte tiene una clase, que decide qué regla empieza con él, y marcas que dicen en qué puede
// continuar. Las clases son enteros pequeños y seguidos para que el `switch` sea una tabla.
enum Clase : std::uint8_t {
    kOtro,
    kEspacio,
    kDigito,
    kSeparador,
    kComillas,
    kAlmohadilla,
    kApostrofo,
    kPalabra,
    kSimbolo,
};
constexpr std::uint8_t kMascaraClase = 0x0f;
constexpr std::uint8_t kEsLetra = 0x10;
constexpr std::uint8_t kEsDigito = 0x20;
constexpr std::uint8_t kSigueDireccion = 0x40; ///< letras, bytes altos, cifras, "$" y "_"
constexpr std::uint8_t kSiguePalabra = 0x80;   ///< los mismos y "."

constexpr std::array<std::uint8_t, 256> construirTabla() {
    std::array<std::uint8_t, 256> tabla{};
    const auto poner = [&tabla](int byte, int valor) {
        tabla[static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(valor);
    };
    constexpr int sigue = kSigueDireccion | kSiguePalabra;
    poner(' ', kEspacio);
    poner('\t', kEspacio);
    for (int c = '0'; c <= '9'; ++c)
        poner(c, kDigito | kEsDigito | sigue);
    for (int c = 'A'; c <= 'Z'; ++c) {
        poner(c, kPalabra | kEsLetra | sigue);
        poner(c + ('a' - 'A'), kPalabra | kEsLetra | sigue);
    }
    for (int c = 128; c < 256; ++c)
        poner(c, kPalabra | sigue);
    poner('_', kPalabra | sigue);
    poner('$', kPalabra | sigue);
    poner(',', kSeparador);
    poner('.', kSeparador | kSiguePalabra);
    poner('"', kComillas);
    poner('#', kAlmohadilla);
    poner('\'', kApostrofo);
    for (const char c : {'(', ')', ';', ':', '<', '>', '%', '&', '*', '+', '-', '/', '=', '^'})
        poner(c, kSimbolo);
    return tabla;
}
constexpr std::array<std::uint8_t, 256> kTabla = construirTabla();

inline std::uint8_t marcas(const char* p) {
    return kTabla[static_cast<unsigned char>(*p)];
}

struct PrefijoDireccion {
    const char* fin; ///< hasta donde llega "$"? letras "$"? cifras
    bool valida;     ///< hay letras y cifras, y la celda está en la cuadrícula
};

// Se usa en cada palabra, así que la columna se calcula aquí en vez de pedirla por su nombre; una
// prueba compara ambas cuentas. Los topes evitan el desborde con cifras o letras de más.
inline PrefijoDireccion leerPrefijo(const char* p, const char* fin, Direccion& direccion) {
    direccion.colAbs = false;
    direccion.filaAbs = false;
    if (p != fin && *p == '$') {
        direccion.colAbs = true;
        ++p;
    }
    std::int32_t col = 0;
    while (p != fin && (marcas(p) & kEsLetra) != 0) {
        if (col <= nucleo::kColumnas)
            col = col * 26 + ((*p & 0x1f)); // 'A' y 'a' son 1 en sus cinco bits bajos
        ++p;
    }
    if (col == 0)
        return {p, false};
    if (p != fin && *p == '$') {
        direccion.filaAbs = true;
        ++p;
    }
    std::int32_t fila = 0;
    while (p != fin && (marcas(p) & kEsDigito) != 0) {
        if (fila <= nucleo::kFilas)
            fila = fila * 10 + (*p - '0');
        ++p;
    }
    direccion.fila = fila - 1;
    direccion.col = col - 1;
    return {p, fila >= 1 && fila <= nucleo::kFilas && col <= nucleo::kColumnas};
}

constexpr std::array<double, 16> kPotenciasDeDiez = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

double numeroLargo(std::string_view escrito) {
    std::string cifras(escrito);
    for (char& c : cifras) {
        if (c == ',')
            c = '.';
    }
    double numero = 0;
    const auto [fin, ec] = std::from_chars(cifras.data(), cifras.data() + cifras.size(), numero,
                                           std::chars_format::fixed);
    if (ec != std::errc::result_out_of_range)
        return numero;
    // Fuera del alcance de un double: infinito si la parte entera no es cero y cero si lo es.
    const std::size_t primera = cifras.find_first_not_of('0');
    return cifras[primera] == '.' ? 0 : std::numeric_limits<double>::infinity();
}

nucleo::ErrorCelda codigoDeError(std::string_view literal) {
    struct Palabra {
        std::string_view texto;
        nucleo::ErrorCelda error;
    };
    static constexpr std::array<Palabra, 5> palabras = {{
        {"CIRCULAR", nucleo::ErrorCelda::Circular},
        {"DIV", nucleo::ErrorCelda::DivCero},
        {"REF", nucleo::ErrorCelda::Ref},
        {"VALOR", nucleo::ErrorCelda::ValorInvalido},
        {"NOMBRE", nucleo::ErrorCelda::Nombre},
    }};
    for (const Palabra& palabra : palabras) {
        if (literal.find(palabra.texto) != std::string_view::npos)
            return palabra.error;
    }
    return nucleo::ErrorCelda::Ninguno;
}

} // namespace

inline void Lexico::terminar(Token::Tipo tipo, const char* fin, Lexema& lexema) {
    lexema.tipo = tipo;
    lexema.largo = static_cast<std::size_t>(fin - (inicio_ + lexema.pos));
    cursor_ = fin;
}

void Lexico::siguiente(Lexema& lexema) {
    const char* p = cursor_;
    while (p != fin_ && (marcas(p) & kMascaraClase) == kEspacio)
        ++p;
    lexema.pos = static_cast<std::size_t>(p - inicio_);
    if (p == fin_)
        return terminar(Token::Fin, p, lexema);

    switch (marcas(p) & kMascaraClase) {
    case kDigito:
        return leerNumero(p, lexema);
    case kPalabra:
        return leerPalabra(p, lexema);
    case kComillas:
        return leerTexto(p, lexema);
    case kAlmohadilla:
        return leerError(p, lexema);
    case kApostrofo:
        return leerHojaEntreComillas(p, lexema);
    case kSeparador:
        if (p != separadorSobrante_ && p + 1 != fin_ && (marcas(p + 1) & kEsDigito) != 0)
            return leerNumero(p, lexema);
        return terminar(Token::Invalido, p + 1, lexema);
    case kSimbolo:
        return leerSimbolo(p, lexema);
    default:
        return terminar(Token::Invalido, p + 1, lexema);
    }
}

inline void Lexico::leerSimbolo(const char* p, Lexema& lexema) {
    const char sigue = p + 1 != fin_ ? p[1] : '\0';
    const auto operador = [&](Operacion operacion, int largo) {
        lexema.operacion = operacion;
        terminar(Token::Operador, p + largo, lexema);
    };
    switch (*p) {
    case '(':
        return terminar(Token::ParenAbre, p + 1, lexema);
    case ')':
        return terminar(Token::ParenCierra, p + 1, lexema);
    case ';':
        return terminar(Token::PuntoComa, p + 1, lexema);
    case ':':
        return terminar(Token::DosPuntos, p + 1, lexema);
    case '<':
        if (sigue == '>')
            return operador(Operacion::Distinto, 2);
        return sigue == '=' ? operador(Operacion::MenorIgual, 2) : operador(Operacion::Menor, 1);
    case '>':
        return sigue == '=' ? operador(Operacion::MayorIgual, 2) : operador(Operacion::Mayor, 1);
    case '%':
        return operador(Operacion::Porcentaje, 1);
    case '&':
        return operador(Operacion::Concatenar, 1);
    case '*':
        return operador(Operacion::Producto, 1);
    case '+':
        return operador(Operacion::Suma, 1);
    case '-':
        return operador(Operacion::Resta, 1);
    case '/':
        return operador(Operacion::Cociente, 1);
    case '^':
        return operador(Operacion::Potencia, 1);
    default:
        return operador(Operacion::Igual, 1);
    }
}

void Lexico::leerNumero(const char* p, Lexema& lexema) {
    const char* q = p;
    std::uint64_t mantisa = 0;
    std::size_t cifras = 0;
    std::size_t decimales = 0;
    bool separador = false;
    for (; q != fin_; ++q) {
        if ((marcas(q) & kEsDigito) != 0) {
            mantisa = mantisa * 10 + static_cast<std::uint64_t>(*q - '0');
            ++cifras;
            decimales += separador ? 1U : 0U;
        } else if ((*q == ',' || *q == '.') && q + 1 != fin_ && (marcas(q + 1) & kEsDigito) != 0) {
            if (separador) {
                separadorSobrante_ = q;
                break;
            }
            separador = true;
        } else {
            break;
        }
    }
    // Con 15 cifras o menos la mantisa y la potencia de diez son exactas, y su cociente es el
    // double más cercano siempre que las cuentas se hagan en double.
    if (FLT_EVAL_METHOD == 0 && cifras <= 15) {
        lexema.numero = static_cast<double>(mantisa);
        if (decimales != 0)
            lexema.numero /= kPotenciasDeDiez[decimales];
    } else {
        lexema.numero = numeroLargo({p, static_cast<std::size_t>(q - p)});
    }
    terminar(Token::Numero, q, lexema);
}

void Lexico::leerTexto(const char* p, Lexema& lexema) {
    lexema.comillasDobles = false;
    for (const char* q = p + 1; q != fin_; ++q) {
        if (*q != '"')
            continue;
        if (q + 1 == fin_ || q[1] != '"')
            return terminar(Token::Texto, q + 1, lexema);
        lexema.comillasDobles = true;
        ++q;
    }
    terminar(Token::Invalido, fin_, lexema);
}

void Lexico::leerError(const char* p, Lexema& lexema) {
    const char* q = p + 1;
    while (q != fin_ && *q != '!' && *q != '?')
        ++q;
    if (q != fin_)
        ++q;
    lexema.error = codigoDeError({p, static_cast<std::size_t>(q - p)});
    terminar(lexema.error == nucleo::ErrorCelda::Ninguno ? Token::Invalido : Token::Error, q,
             lexema);
}

void Lexico::leerHojaEntreComillas(const char* p, Lexema& lexema) {
    const char* q = p + 1;
    while (q != fin_ && *q != '\'')
        ++q;
    if (q == fin_)
        return terminar(Token::Invalido, fin_, lexema);
    if (q + 1 == fin_ || q[1] != '!')
        return terminar(Token::Invalido, q + 1, lexema);
    leerDireccionDeHoja(q + 2, {p + 1, static_cast<std::size_t>(q - p - 1)}, lexema);
}

void Lexico::leerPalabra(const char* p, Lexema& lexema) {
    const PrefijoDireccion prefijo = leerPrefijo(p, fin_, lexema.direccion);
    const char* q = prefijo.fin;
    bool direccion = prefijo.valida;
    while (q != fin_ && (marcas(q) & kSiguePalabra) != 0) {
        direccion = false;
        ++q;
    }
    if (q != fin_ && *q == '!')
        return leerDireccionDeHoja(q + 1, {p, static_cast<std::size_t>(q - p)}, lexema);
    lexema.hoja = {};
    terminar(direccion ? Token::Referencia : Token::Nombre, q, lexema);
}

void Lexico::leerDireccionDeHoja(const char* p, std::string_view hoja, Lexema& lexema) {
    const PrefijoDireccion prefijo = leerPrefijo(p, fin_, lexema.direccion);
    const char* q = prefijo.fin;
    bool direccion = prefijo.valida;
    while (q != fin_ && (marcas(q) & kSigueDireccion) != 0) {
        direccion = false;
        ++q;
    }
    lexema.hoja = hoja;
    terminar(direccion ? Token::Referencia : Token::Invalido, q, lexema);
}

bool leerDireccion(std::string_view texto, Direccion& direccion) {
    const char* fin = texto.data() + texto.size();
    Direccion leida;
    const PrefijoDireccion prefijo = leerPrefijo(texto.data(), fin, leida);
    if (!prefijo.valida || prefijo.fin != fin)
        return false;
    direccion = leida;
    return true;
}

void agregarTextoLiteral(std::string& salida, std::string_view contenido) {
    for (std::size_t i = 0; i < contenido.size(); ++i) {
        salida += contenido[i];
        if (contenido[i] == '"')
            ++i;
    }
}

std::size_t normalizarEn(std::string_view texto, char* destino) {
    char* salida = destino;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const char c = texto[i];
        if (c >= 'a' && c <= 'z') {
            *salida++ = static_cast<char>(c - ('a' - 'A'));
            continue;
        }
        if (c != '\xC3' || i + 1 == texto.size()) {
            *salida++ = c;
            continue;
        }
        const char segundo = texto[++i];
        switch (static_cast<unsigned char>(segundo)) {
        case 0xA1:
        case 0x81:
            *salida++ = 'A';
            break;
        case 0xA9:
        case 0x89:
            *salida++ = 'E';
            break;
        case 0xAD:
        case 0x8D:
            *salida++ = 'I';
            break;
        case 0xB3:
        case 0x93:
            *salida++ = 'O';
            break;
        case 0xBA:
        case 0x9A:
            *salida++ = 'U';
            break;
        case 0xB1:
            *salida++ = c;
            *salida++ = '\x91';
            break;
        default:
            *salida++ = c;
            *salida++ = segundo;
        }
    }
    return static_cast<std::size_t>(salida - destino);
}

} // namespace motor_formulas
