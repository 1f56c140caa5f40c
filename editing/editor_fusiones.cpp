#include "editing/editor.h"

#include <utility>
#include <vector>

namespace editor {

using nucleo::Celda;
using nucleo::Hoja;
using nucleo::RangoCeldas;

bool Editor::fusionar(const RangoCeldas& rango) {
    Hoja* hoja = hojaActiva();
    if (hoja->fusionQueToca(rango))
        return false;
    std::vector<std::pair<int, int>> conContenido;
    hoja->celdas.recorrerPorFilas(rango, [&](int fila, int col, const Celda& celda) {
        const bool esEsquina = fila == rango.fila1 && col == rango.col1;
        if (!esEsquina && celda.tipo != nucleo::TipoCelda::Vacia)
            conContenido.emplace_back(fila, col);
        return true;
    });
    // La hoja quita celdas sin decírselo a nadie: antes se vacían por el motor, que recalcula a
    // quien las leía.
    const motor_formulas::Motor::Lote lote(*motor_);
    for (const auto& [fila, col] : conContenido)
        motor_->limpiarCelda(libro_.hojaActiva, fila, col);
    return hoja->fusionar(rango.fila1, rango.col1, rango.fila2, rango.col2);
}

bool Editor::fusionarSeleccion() {
    const Hoja* hoja = hojaActiva();
    if (!hoja || seleccion_.esUnaCelda())
        return false;
    // Un intento rechazado solo deja huella en lo que se podía rehacer.
    historialRehacer_.clear();
    if (hoja->fusionQueToca(seleccion_.rango()))
        return false;
    registrarHistorial();
    fusionar(seleccion_.rango());
    normalizarActiva();
    libro_.modificado = true;
    return true;
}

bool Editor::separarFusion() {
    Hoja* hoja = hojaActiva();
    if (!hoja || !hoja->fusionEn(seleccion_.activaFila, seleccion_.activaCol))
        return false;
    registrarHistorial();
    hoja->separar(seleccion_.activaFila, seleccion_.activaCol);
    libro_.modificado = true;
    return true;
}

} // namespace editor
