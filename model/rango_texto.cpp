#include "model/rango_texto.h"

#include "model/direcciones.h"
#include "model/limites.h"

#include <algorithm>
#include <charconv>

namespace nucleo {

namespace {

struct Esquina {
    int fila = 0;
    int columna = 0;
};

std::optional<Esquina> leerEsquina(std::string_view texto) {
    const std::size_t letras = std::min(texto.find_first_of("0123456789"), texto.size());
    const int columna = columnaDesdeNombre(texto.substr(0, letras));
    const std::string_view cifras = texto.substr(letras);
    int fila = 0;
    const auto leido = std::from_chars(cifras.data(), cifras.data() + cifras.size(), fila);
    if (columna < 0 || leido.ec != std::errc{} || leido.ptr != cifras.data() + cifras.size() ||
        fila < 1 || fila > kFilas) {
        return std::nullopt;
    }
    return Esquina{fila - 1, columna};
}

} // namespace

std::optional<RangoCeldas> leerRango(std::string_view texto) {
    const std::size_t dosPuntos = texto.find(':');
    const auto una = leerEsquina(texto.substr(0, dosPuntos));
    const auto otra =
        dosPuntos == std::string_view::npos ? una : leerEsquina(texto.substr(dosPuntos + 1));
    if (!una || !otra) {
        return std::nullopt;
    }
    return RangoCeldas{std::min(una->fila, otra->fila), std::min(una->columna, otra->columna),
                       std::max(una->fila, otra->fila), std::max(una->columna, otra->columna)};
}

std::string textoRango(const RangoCeldas& rango) {
    const std::string primera = nombreRef(rango.fila1, rango.col1);
    return rango.celdas() == 1 ? primera : primera + ":" + nombreRef(rango.fila2, rango.col2);
}

} // namespace nucleo
