#include "console/dialecto.h"

#include <cstddef>

namespace consola {

namespace {

/// Lo que se sabe de un separador candidato tras recorrer unos registros.
struct Recuento {
    std::size_t enPrimero = 0; ///< apariciones en el primer registro
    bool regular = true;       ///< las mismas en todos los registros completos

    bool parte() const { return enPrimero > 0; }
};

Recuento contar(std::string_view texto, char separador) {
    Recuento recuento;
    std::size_t enEste = 0;
    bool entreComillas = false;
    bool primero = true;
    bool vacio = true;
    const auto cerrarRegistro = [&] {
        if (vacio) {
            return;
        }
        if (primero) {
            recuento.enPrimero = enEste;
            primero = false;
        } else if (enEste != recuento.enPrimero) {
            recuento.regular = false;
        }
        enEste = 0;
        vacio = true;
    };
    for (const char c : texto) {
        if (c == '"') {
            entreComillas = !entreComillas;
        }
        if (!entreComillas && (c == '\n' || c == '\r')) {
            cerrarRegistro();
            continue;
        }
        vacio = false;
        enEste += !entreComillas && c == separador ? 1 : 0;
    }
    // El último puede estar cortado: solo cuenta si no hay otro.
    if (primero) {
        cerrarRegistro();
    }
    return recuento;
}

} // namespace

std::optional<char> separadorPedido(std::string_view texto) {
    if (texto == "tab" || texto == "\\t" || texto == "\t") {
        return '\t';
    }
    constexpr std::string_view kValen = ";,|:!#&*/<>?@^_`{}~ ";
    if (texto.size() == 1 && kValen.find(texto.front()) != std::string_view::npos) {
        return texto.front();
    }
    return std::nullopt;
}

char detectarSeparador(std::string_view comienzo) {
    const Recuento puntoYComa = contar(comienzo, ';');
    const Recuento coma = contar(comienzo, ',');
    const bool valePuntoYComa = puntoYComa.parte() && puntoYComa.regular;
    const bool valeComa = coma.parte() && coma.regular;
    if (valePuntoYComa != valeComa) {
        return valePuntoYComa ? ';' : ',';
    }
    return coma.parte() && !puntoYComa.parte() ? ',' : ';';
}

} // namespace consola
