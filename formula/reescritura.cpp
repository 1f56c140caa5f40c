#include "formula/reescritura.h"

#include "formula/lexico.h"
#include "model/limites.h"
#include "model/valor.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace motor_formulas {

namespace {

/// Compone el texto en `salida` de izquierda a derecha. `cambiar(lexema, salida)` añade lo que
/// sustituye a una referencia; si no añade nada queda como está. Falso si no sustituye ninguna.
template <typename Cambiar>
bool reescribir(std::string_view texto, std::string& salida, Cambiar&& cambiar) {
    bool hayCambio = false;
    std::size_t copiado = 0;
    salida.clear();
    salida.reserve(texto.size() + 16); // casi siempre crece poco o nada
    Lexico lexico(texto);
    Lexema lexema;
    // GCC 12 falla aquí con los nombres cortos de Token::Tipo.
    for (lexico.siguiente(lexema); lexema.tipo != Token::Tipo::Fin; lexico.siguiente(lexema)) {
        if (lexema.tipo != Token::Tipo::Referencia)
            continue;
        salida.append(texto, copiado, lexema.pos - copiado);
        copiado = lexema.pos;
        const std::size_t antes = salida.size();
        cambiar(lexema, salida);
        if (salida.size() == antes)
            continue;
        hayCambio = true;
        copiado += lexema.largo;
    }
    salida.append(texto, copiado);
    return hayCambio;
}

void agregarErrorRef(std::string& salida) {
    salida += nucleo::textoError(nucleo::ErrorCelda::Ref);
}

} // namespace

std::string reescribirRefs(const std::string& texto,
                           const std::function<std::string(const RefCelda&)>& f) {
    std::string salida;
    reescribir(texto, salida, [&f](const Lexema& lexema, std::string& nuevo) {
        const Direccion& direccion = lexema.direccion;
        nuevo += f({std::string(lexema.hoja), direccion.fila, direccion.col, direccion.filaAbs,
                    direccion.colAbs});
    });
    return salida;
}

std::string ajustarReferencias(std::string_view texto, int dFilas, int dColumnas) {
    std::string salida;
    reescribir(texto, salida, [=](const Lexema& lexema, std::string& nuevo) {
        Direccion direccion = lexema.direccion;
        const std::int64_t fila = std::int64_t{direccion.fila} + (direccion.filaAbs ? 0 : dFilas);
        const std::int64_t col = std::int64_t{direccion.col} + (direccion.colAbs ? 0 : dColumnas);
        if (fila < 0 || fila > nucleo::kUltimaFila || col < 0 || col > nucleo::kUltimaColumna)
            return agregarErrorRef(nuevo);
        direccion.fila = static_cast<std::int32_t>(fila);
        direccion.col = static_cast<std::int32_t>(col);
        agregarReferencia(nuevo, lexema.hoja, direccion);
    });
    return salida;
}

bool ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                          std::string_view hojaEstructura, bool filas, int inicio, int cantidad,
                          std::string& salida) {
    // Al insertar no hay tope; el de 32 bits solo lo alcanza una cantidad imposible.
    constexpr std::int64_t maximo = std::numeric_limits<std::int32_t>::max() - 1;
    const std::int64_t quitadas = cantidad > 0 ? 0 : -std::int64_t{cantidad};
    const std::int64_t finQuitadas = inicio + quitadas;
    const bool esLaSuya = hojaFormula == hojaEstructura;
    const bool hayCambio = reescribir(texto, salida, [=](const Lexema& lexema, std::string& nuevo) {
        if (lexema.hoja.empty() ? !esLaSuya : lexema.hoja != hojaEstructura)
            return;
        Direccion direccion = lexema.direccion;
        std::int32_t& coordenada = filas ? direccion.fila : direccion.col;
        std::int64_t movida = coordenada;
        if (movida >= inicio) {
            if (cantidad > 0)
                movida = std::min(movida + cantidad, maximo);
            else if (movida >= finQuitadas)
                movida -= quitadas;
            else
                return agregarErrorRef(nuevo);
        }
        if (movida < 0)
            return agregarErrorRef(nuevo);
        coordenada = static_cast<std::int32_t>(movida);
        agregarReferencia(nuevo, lexema.hoja, direccion);
    });
    return hayCambio && salida != texto;
}

bool renombrarEnFormula(std::string_view texto, std::string_view viejo, std::string_view nuevo,
                        std::string& salida) {
    // Dentro de las comillas simples no hay escape: una referencia a una hoja cuyo nombre las
    // contiene se leería cortada y se llevaría por delante las que siguen. Se deja la que había,
    // que da "#¡REF!" y vuelve a valer si la hoja recupera su nombre.
    if (viejo.empty() || nuevo.empty() || nuevo.find('\'') != std::string_view::npos)
        return false;
    const bool hayCambio =
        reescribir(texto, salida, [=](const Lexema& lexema, std::string& referencia) {
            if (lexema.hoja == viejo)
                agregarReferencia(referencia, nuevo, lexema.direccion);
        });
    return hayCambio && salida != texto;
}

std::string ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                                 std::string_view hojaEstructura, bool filas, int inicio,
                                 int cantidad) {
    std::string salida;
    if (!ajustarPorEstructura(texto, hojaFormula, hojaEstructura, filas, inicio, cantidad, salida))
        salida = texto;
    return salida;
}

std::string renombrarEnFormula(std::string_view texto, std::string_view viejo,
                               std::string_view nuevo) {
    std::string salida;
    if (!renombrarEnFormula(texto, viejo, nuevo, salida))
        salida = texto;
    return salida;
}

} // namespace motor_formulas
