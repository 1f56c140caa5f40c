/// Un texto como fórmula: se divide, se lee, se evalúa sobre un libro con de todo y se reescribe.

#include "formula/motor.h"
#include "formula/parser.h"
#include "formula/reescritura.h"
#include "formula/tokenizador.h"
#include "tests/comun/comprobar_libro.h"

#include <algorithm>

#include "fuzz/bytes.h"
#include "fuzz/libro_poblado.h"

namespace {

struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    Mesa() { fuzz::poblar(libro, motor); }
};

/// Lo que el grafo apuntó de J10 es lo que dice su texto. Solo si lee pocas celdas: enumerar cien
/// mil cuesta más que todo lo demás junto.
void comprobarLeidas(Mesa& mesa, const std::string& formula) {
    const std::uint64_t clave = nucleo::claveCelda(0, 9, 9);
    const std::int64_t leidas = pruebas::celdasLeidas(mesa.libro.grafo(), clave);
    if (leidas == 0 || leidas > 256)
        return;
    const auto textuales = mesa.motor.extraerPrecedentes(0, formula);
    const auto& apuntadas = mesa.libro.precedentes.at(clave);
    fuzz::exigir(std::equal(apuntadas.begin(), apuntadas.end(), textuales.begin(), textuales.end()),
                 "el grafo no dice lo que el texto");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    static Mesa mesa;
    const std::string texto(reinterpret_cast<const char*>(datos), cuantos);

    std::vector<motor_formulas::Token> tokens;
    const bool valida = motor_formulas::tokenizar(texto, tokens);
    fuzz::exigir(!tokens.empty() && tokens.back().tipo == motor_formulas::Token::Fin,
                 "la lista no acaba en Fin");
    for (const motor_formulas::Token& token : tokens)
        fuzz::exigir(token.pos + token.largo <= texto.size(), "una unidad se sale del texto");

    const auto arbol = motor_formulas::Parser().parsear(texto);
    fuzz::exigir(valida || !arbol, "un texto mal dividido da un árbol");

    const std::string formula = "=" + texto;
    mesa.motor.evaluarFormula(0, formula);
    const std::string igual = motor_formulas::reescribirRefs(
        formula, [](const motor_formulas::RefCelda&) { return std::string(); });
    fuzz::exigir(igual == formula, "reescribir sin cambios cambia la fórmula");
    mesa.motor.ajustarReferencias(formula, 1, -1);
    mesa.motor.ajustarReferencias(formula, -70000, 2147483647);
    mesa.motor.ajustarPorEstructura(formula, "Hoja 1", "Hoja 2", true, 2, 3);
    mesa.motor.ajustarPorEstructura(formula, "Hoja 1", "Hoja 1", false, 1, -2);
    mesa.motor.establecerCelda(0, 9, 9, formula);
    comprobarLeidas(mesa, formula);
    mesa.motor.limpiarCelda(0, 9, 9);
    return 0;
}
