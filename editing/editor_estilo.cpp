#include "editing/editor.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace editor {

using nucleo::Celda;
using nucleo::Formato;
using nucleo::FormatoNumero;
using nucleo::Hoja;

void Editor::aplicarEstiloSeleccion(const std::function<void(Celda&)>& cambio) {
    Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    registrarHistorial();
    const nucleo::RangoCeldas rango = seleccion_.rango();
    for (int fila = rango.fila1; fila <= rango.fila2; ++fila) {
        for (int col = rango.col1; col <= rango.col2; ++col)
            cambio(hoja->celdaMut(fila, col));
    }
    libro_.modificado = true;
}

void Editor::aplicarFormatoSeleccion(const std::function<void(Formato&)>& cambio) {
    Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    registrarHistorial();
    hoja->celdas.cambiarRango(seleccion_.rango(), [&](Celda& celda) { cambio(celda.formato); });
    libro_.modificado = true;
}

void Editor::alternarEstilo(bool Formato::*estilo) {
    const Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    const Celda* activa = hoja->celda(seleccion_.activaFila, seleccion_.activaCol);
    const bool nuevo = !activa || !(activa->formato.*estilo);
    aplicarFormatoSeleccion([=](Formato& formato) { formato.*estilo = nuevo; });
}

void Editor::alternarNegrita() {
    alternarEstilo(&Formato::negrita);
}

void Editor::alternarCursiva() {
    alternarEstilo(&Formato::cursiva);
}

void Editor::alternarSubrayado() {
    alternarEstilo(&Formato::subrayado);
}

void Editor::aplicarAlineacion(nucleo::AlineacionH alineacion) {
    aplicarFormatoSeleccion([=](Formato& formato) { formato.alineacion = alineacion; });
}

void Editor::aplicarFormato(FormatoNumero numero) {
    aplicarFormatoSeleccion([=](Formato& formato) {
        formato.numero = numero;
        if (numero == FormatoNumero::Moneda)
            formato.separadorMiles = true;
    });
}

void Editor::cambiarDecimales(int delta) {
    aplicarFormatoSeleccion([=](Formato& formato) {
        if (formato.numero == FormatoNumero::General)
            formato.numero = FormatoNumero::Numero;
        const std::int64_t decimales = std::int64_t{formato.decimales} + delta;
        formato.decimales = static_cast<std::uint8_t>(
            std::clamp<std::int64_t>(decimales, 0, nucleo::kDecimalesMaximos));
    });
}

void Editor::aplicarColorTexto(unsigned int color) {
    aplicarFormatoSeleccion([=](Formato& formato) { formato.colorTexto = color; });
}

void Editor::aplicarColorFondo(unsigned int color) {
    aplicarFormatoSeleccion([=](Formato& formato) { formato.colorFondo = color; });
}

} // namespace editor
