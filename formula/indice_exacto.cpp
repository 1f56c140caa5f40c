#include "formula/indice_exacto.h"

#include "formula/coercion.h"

#include <bit>
#include <functional>
#include <string>
#include <string_view>

namespace motor_formulas {

bool esIgualdad(const Criterio& criterio) {
    if (criterio.op != 0)
        return false;
    return criterio.esNumero ||
           (!criterio.texto.empty() && criterio.texto.find_first_of("*?") == std::string::npos);
}

std::uint64_t claveDeTexto(const std::string& minusculas) {
    return std::hash<std::string>{}(minusculas);
}

void IndiceExacto::construir(ColumnaRecordada& columna, TramoFilas filas, std::uint64_t momento) {
    filas_ = filas;
    momento_ = momento;
    numeros_.empezar();
    textos_.empezar();
    for (int indice = filas.desde / kFilasPagina; indice <= filas.hasta / kFilasPagina; ++indice) {
        const PaginaColumna& pagina = columna.pagina(indice);
        const int primera = indice * kFilasPagina;
        const std::uint64_t dentro = bitsDePagina(filas, indice);
        for (std::uint64_t quedan = pagina.conNumero & dentro; quedan != 0; quedan &= quedan - 1) {
            const int fila = std::countr_zero(quedan);
            const double numero = pagina.numeros[static_cast<std::size_t>(fila)];
            if (numero == numero)
                numeros_.anadir(claveDeNumero(numero), primera + fila);
        }
        // Un criterio de texto nunca es igual a un número: el texto de un número se lee como
        // número.
        for (std::uint64_t quedan = pagina.ocupadas() & ~pagina.conNumero & dentro; quedan != 0;
             quedan &= quedan - 1) {
            const int fila = primera + std::countr_zero(quedan);
            textos_.anadir(claveDeTexto(cambiarCaso(convertirEnTexto(columna.valor(fila)), false)),
                           fila);
        }
    }
    numeros_.terminar();
    textos_.terminar();
}

bool IndiceExacto::sirve(const ColumnaRecordada& columna, TramoFilas filas) const {
    if (filas.desde < filas_.desde || filas_.hasta < filas.hasta)
        return false;
    const TramoFilas cambiadas = columna.cambios().despuesDe(momento_);
    return cambiadas.hasta < filas_.desde || filas_.hasta < cambiadas.desde;
}

} // namespace motor_formulas
