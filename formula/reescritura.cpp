#include "formula/reescritura.h"

#include "formula/lexico.h"
#include "model/limites.h"
#include "model/valor.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace motor_formulas {

namespace {

/// Recorre las referencias y añade a `salida` el texto, compuesto de izquierda a derecha.
/// `cambiar(lexema, salida)` añade lo que sustituye a una; si no añade nada queda como está.
template <typename Cambiar>
void reescribir(std::string_view texto, std::string& salida, Cambiar&& cambiar) {
    std::size_t copiado = 0;
    Lexico lexico(texto);
    Lexema lexema;
    for (lexico.siguiente(lexema); lexema.tipo != Token::Tipo::Fin; lexico.siguiente(lexema)) {
        if (lexema.tipo != Token::Tipo::Referencia)
            continue;
        const std::size_t antes = salida.size();
        salida.append(texto, copiado, lexema.pos - copiado);
        const std::size_t sinCambio = salida.size();
        cambiar(lexema, salida);
        if (salida.size() == sinCambio)
            salida.resize(antes);
        else
            copiado = lexema.pos + lexema.largo;
    }
    salida.append(texto, copiado);
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

std::string ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                                 std::string_view hojaEstructura, bool filas, int inicio,
                                 int cantidad) {
    std::string salida;
    ajustarPorEstructura(texto, hojaFormula, hojaEstructura, filas, inicio, cantidad, salida);
    return salida;
}

void ajustarPorEstructura(std::string_view texto, std::string_view hojaFormula,
                          std::string_view hojaEstructura, bool filas, int inicio, int cantidad,
                          std::string& salida) {
    // Al insertar no hay tope; el de 32 bits solo lo alcanza una cantidad imposible.
    constexpr std::int64_t maximo = std::numeric_limits<std::int32_t>::max() - 1;
    const std::int64_t quitadas = cantidad > 0 ? 0 : -std::int64_t{cantidad};
    const std::int64_t finQuitadas = inicio + quitadas;
    reescribir(texto, salida, [=](const Lexema& lexema, std::string& nuevo) {
        if ((lexema.hoja.empty() ? hojaFormula : lexema.hoja) != hojaEstructura)
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

std::string renombrarEnFormula(std::string_view texto, std::string_view viejo,
                               std::string_view nuevo) {
    std::string salida;
    renombrarEnFormula(texto, viejo, nuevo, salida);
    return salida;
}

void renombrarEnFormula(std::string_view texto, std::string_view viejo, std::string_view nuevo,
                        std::string& salida) {
    // Dentro de las comillas simples no hay escape: una referencia a una hoja cuyo nombre las
    // contiene se leería cortada y se llevaría por delante las que siguen. Se deja la que había,
    // que da "#¡REF!" y vuelve a valer si la hoja recupera su nombre.
    if (viejo.empty() || nuevo.empty() || nuevo.find('\'') != std::string_view::npos) {
        salida += texto;
        return;
    }
    reescribir(texto, salida, [=](const Lexema& lexema, std::string& cambiada) {
        if (lexema.hoja == viejo)
            agregarReferencia(cambiada, nuevo, lexema.direccion);
    });
}

} // namespace motor_formulas
