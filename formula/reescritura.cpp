#include "formula/reescritura.h"

#include "formula/lexico.h"
#include "model/limites.h"
#include "model/valor.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace motor_formulas {

namespace {

/// Recorre las referencias y compone el texto en `salida`, de izquierda a derecha. Falso, con
/// `salida` sin usar, si ninguna cambia. `cambiar(lexema, nuevo)` llena `nuevo`, que llega vacío;
/// si lo deja vacío la referencia queda como está.
template <typename Cambiar>
bool reescribir(std::string_view texto, std::string& salida, Cambiar&& cambiar) {
    std::string nuevo;
    std::size_t copiado = 0;
    Lexico lexico(texto);
    Lexema lexema;
    // GCC 12 falla aquí con los nombres cortos de Token::Tipo.
    for (lexico.siguiente(lexema); lexema.tipo != Token::Tipo::Fin; lexico.siguiente(lexema)) {
        if (lexema.tipo != Token::Tipo::Referencia)
            continue;
        nuevo.clear();
        cambiar(lexema, nuevo);
        if (nuevo.empty() || nuevo == lexico.texto(lexema))
            continue;
        if (copiado == 0) {
            salida.clear();
            salida.reserve(texto.size() + 16); // casi siempre crece poco o nada
        }
        salida.append(texto, copiado, lexema.pos - copiado);
        salida += nuevo;
        copiado = lexema.pos + lexema.largo;
    }
    if (copiado == 0)
        return false;
    salida.append(texto, copiado);
    return true;
}

template <typename Cambiar> std::string reescrito(std::string_view texto, Cambiar&& cambiar) {
    std::string salida;
    if (!reescribir(texto, salida, cambiar))
        salida = texto;
    return salida;
}

void agregarErrorRef(std::string& salida) {
    salida += nucleo::textoError(nucleo::ErrorCelda::Ref);
}

} // namespace

std::string reescribirRefs(const std::string& texto,
                           const std::function<std::string(const RefCelda&)>& f) {
    return reescrito(texto, [&f](const Lexema& lexema, std::string& nuevo) {
        const Direccion& direccion = lexema.direccion;
        nuevo = f({std::string(lexema.hoja), direccion.fila, direccion.col, direccion.filaAbs,
                   direccion.colAbs});
    });
}

std::string ajustarReferencias(std::string_view texto, int dFilas, int dColumnas) {
    return reescrito(texto, [=](const Lexema& lexema, std::string& nuevo) {
        Direccion direccion = lexema.direccion;
        const std::int64_t fila = std::int64_t{direccion.fila} + (direccion.filaAbs ? 0 : dFilas);
        const std::int64_t col = std::int64_t{direccion.col} + (direccion.colAbs ? 0 : dColumnas);
        if (fila < 0 || fila > nucleo::kUltimaFila || col < 0 || col > nucleo::kUltimaColumna)
            return agregarErrorRef(nuevo);
        direccion.fila = static_cast<std::int32_t>(fila);
        direccion.col = static_cast<std::int32_t>(col);
        agregarReferencia(nuevo, lexema.hoja, direccion);
    });
}

bool ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                          std::string_view hojaEstructura, bool filas, int inicio, int cantidad,
                          std::string& salida) {
    // Al insertar no hay tope; el de 32 bits solo lo alcanza una cantidad imposible.
    constexpr std::int64_t maximo = std::numeric_limits<std::int32_t>::max() - 1;
    const std::int64_t quitadas = cantidad > 0 ? 0 : -std::int64_t{cantidad};
    const std::int64_t finQuitadas = inicio + quitadas;
    const bool esLaSuya = hojaFormula == hojaEstructura;
    return reescribir(texto, salida, [=](const Lexema& lexema, std::string& nuevo) {
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
}

bool renombrarEnFormula(std::string_view texto, std::string_view viejo, std::string_view nuevo,
                        std::string& salida) {
    // Dentro de las comillas simples no hay escape: una referencia a una hoja cuyo nombre las
    // contiene se leería cortada y se llevaría por delante las que siguen. Se deja la que había,
    // que da "#¡REF!" y vuelve a valer si la hoja recupera su nombre.
    if (viejo.empty() || nuevo.empty() || nuevo.find('\'') != std::string_view::npos)
        return false;
    return reescribir(texto, salida, [=](const Lexema& lexema, std::string& referencia) {
        if (lexema.hoja == viejo)
            agregarReferencia(referencia, nuevo, lexema.direccion);
    });
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
