#include "formula/functions/criterio.h"

#include "formula/coercion.h"
#include "model/numeros.h"

#include <algorithm>
#include <array>
#include <utility>

namespace motor_formulas {

namespace {

using nucleo::TipoValor;
using nucleo::Valor;

/// Recorre los bytes de un texto cambiándolos de caso. Recordar una posición es copiar el cursor.
class CursorCaso {
  public:
    CursorCaso(std::string_view texto, bool mayusculas) : texto_(texto), mayusculas_(mayusculas) {}

    bool fin() const { return pos_ == texto_.size(); }

    unsigned char actual() const {
        const auto byte = static_cast<unsigned char>(texto_[pos_]);
        return trasC3_ ? cambiarLatin1(byte) : cambiarAscii(byte);
    }

    void avanzar() {
        trasC3_ = !trasC3_ && static_cast<unsigned char>(texto_[pos_]) == 0xc3;
        ++pos_;
    }

  private:
    unsigned char cambiarAscii(unsigned char byte) const {
        const unsigned char primera = mayusculas_ ? 'a' : 'A';
        const bool letra = primera <= byte && byte < primera + 26;
        return letra ? static_cast<unsigned char>(byte ^ 0x20U) : byte;
    }

    /// Segundo byte de las letras que en UTF-8 empiezan por 0xC3. Los signos × y ÷ ocupan sitio
    /// entre ellas; ß y ÿ no tienen pareja.
    unsigned char cambiarLatin1(unsigned char byte) const {
        const unsigned char primera = mayusculas_ ? 0xa0 : 0x80;
        const bool letra = primera <= byte && byte < primera + 0x1f && byte != primera + 0x17;
        return letra ? static_cast<unsigned char>(byte ^ 0x20U) : byte;
    }

    std::string_view texto_;
    std::size_t pos_ = 0;
    bool mayusculas_;
    bool trasC3_ = false;
};

/// Recorre los bytes de un texto tal como están.
class CursorBytes {
  public:
    explicit CursorBytes(std::string_view texto) : texto_(texto) {}

    bool fin() const { return texto_.empty(); }
    unsigned char actual() const { return static_cast<unsigned char>(texto_.front()); }
    void avanzar() { texto_.remove_prefix(1); }

  private:
    std::string_view texto_;
};

/// Casa el texto del cursor con el patrón. Basta recordar el último "*": lo que casó antes de él no
/// mejora dándole más o menos texto, porque él mismo absorbe cualquier tramo.
template <typename Cursor> bool casa(std::string_view patron, Cursor texto) {
    std::size_t pos = 0;
    bool hayAsterisco = false;
    std::size_t trasAsterisco = 0;
    Cursor reintento = texto;
    while (!texto.fin()) {
        if (pos < patron.size() && patron[pos] == '*') {
            hayAsterisco = true;
            trasAsterisco = ++pos;
            reintento = texto;
        } else if (pos < patron.size() &&
                   (patron[pos] == '?' ||
                    static_cast<unsigned char>(patron[pos]) == texto.actual())) {
            ++pos;
            texto.avanzar();
        } else if (hayAsterisco) {
            pos = trasAsterisco;
            reintento.avanzar();
            texto = reintento;
        } else {
            return false;
        }
    }
    while (pos < patron.size() && patron[pos] == '*')
        ++pos;
    return pos == patron.size();
}

bool cumpleOrden(std::int32_t op, std::partial_ordering orden) {
    switch (op) {
    case 0:
        return std::is_eq(orden);
    case 1:
        return std::is_neq(orden);
    case 2:
        return std::is_lt(orden);
    case 3:
        return std::is_lteq(orden);
    case 4:
        return std::is_gt(orden);
    case 5:
        return std::is_gteq(orden);
    default:
        return false;
    }
}

bool cumpleTexto(const Criterio& criterio, std::string_view texto) {
    if (criterio.op > 1 || criterio.texto.empty())
        return cumpleOrden(criterio.op, compararEnMinusculas(texto, criterio.texto));
    return casa(criterio.texto, CursorCaso(texto, false)) == (criterio.op == 0);
}

} // namespace

Criterio Criterio::desdeValor(const Valor& valor) {
    Criterio criterio;
    if (valor.tipo == TipoValor::Numero || valor.tipo == TipoValor::Logico) {
        criterio.esNumero = true;
        criterio.numero = valor.tipo == TipoValor::Numero ? valor.numero : (valor.logico ? 1 : 0);
        return criterio;
    }
    std::string operando = valor.tipo == TipoValor::Texto ? valor.texto : std::string();
    // Los de dos signos van antes que sus comienzos.
    constexpr std::array<std::pair<std::string_view, std::int32_t>, 6> kPrefijos = {
        {{">=", 5}, {"<=", 3}, {"<>", 1}, {">", 4}, {"<", 2}, {"=", 0}}};
    for (const auto& [prefijo, op] : kPrefijos) {
        if (operando.starts_with(prefijo)) {
            criterio.op = op;
            operando.erase(0, prefijo.size());
            break;
        }
    }
    criterio.esNumero = nucleo::parsearNumeroUsuario(operando, criterio.numero);
    if (!criterio.esNumero) {
        criterio.numero = 0;
        criterio.texto = cambiarCaso(operando, false);
    }
    return criterio;
}

bool Criterio::cumple(const Valor& valor) const {
    return cumple(vistaDe(valor));
}

bool Criterio::cumple(const VistaValor& valor) const {
    if (esNumero) {
        if (valor.tipo == TipoValor::Numero)
            return cumpleOrden(op, valor.numero <=> numero);
        return valor.tipo != TipoValor::Vacio && op == 1;
    }
    if (valor.tipo == TipoValor::Texto)
        return cumpleTexto(*this, valor.texto);
    if (valor.tipo == TipoValor::Vacio)
        return cumpleTexto(*this, {});
    return cumpleTexto(*this, convertirEnTexto(valor));
}

bool coincideComodin(std::string_view patron, std::string_view texto, std::size_t posPatron,
                     std::size_t posTexto) {
    return casa(patron.substr(std::min(posPatron, patron.size())),
                CursorBytes(texto.substr(std::min(posTexto, texto.size()))));
}

std::string cambiarCaso(std::string_view texto, bool mayusculas) {
    std::string cambiado;
    cambiado.reserve(texto.size());
    for (CursorCaso cursor(texto, mayusculas); !cursor.fin(); cursor.avanzar())
        cambiado += static_cast<char>(cursor.actual());
    return cambiado;
}

std::strong_ordering compararEnMinusculas(std::string_view texto, std::string_view minusculas) {
    CursorCaso cursor(texto, false);
    for (const char byte : minusculas) {
        if (cursor.fin())
            return std::strong_ordering::less;
        const auto orden = cursor.actual() <=> static_cast<unsigned char>(byte);
        if (std::is_neq(orden))
            return orden;
        cursor.avanzar();
    }
    return cursor.fin() ? std::strong_ordering::equal : std::strong_ordering::greater;
}

} // namespace motor_formulas
