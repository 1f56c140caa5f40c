#include "editing/cotas.h"
#include "editing/editor.h"

#include <algorithm>

namespace editor {

using nucleo::Hoja;
using nucleo::RangoFusion;

namespace {

// Una fila o una columna seleccionada entera abarca al menos lo que se ve de una hoja vacía.
constexpr int kUltimaColumnaMinima = 25;
constexpr int kUltimaFilaMinima = 99;

/// La selección que abarca una fusión, con el cursor en su última celda. Los archivos pueden traer
/// fusiones que se salen de la cuadrícula.
Seleccion seleccionDe(const RangoFusion& fusion) {
    return {acotarFila(fusion.fila1), acotarColumna(fusion.col1), acotarFila(fusion.fila2),
            acotarColumna(fusion.col2)};
}

/// Coordenada de la que parte un movimiento: el borde de la fusión por el que se sale de ella.
int salida(int paso, int primera, int ultima, int activa) {
    if (paso > 0)
        return ultima;
    return paso < 0 ? primera : activa;
}

} // namespace

Editor::Editor(nucleo::Libro& libro, motor_formulas::Motor& motor)
    : libro_(libro), motor_(&motor) {}

Hoja* Editor::hojaActiva() const {
    const int indice = libro_.hojaActiva;
    if (indice < 0 || static_cast<std::size_t>(indice) >= libro_.hojas.size())
        return nullptr;
    return libro_.hojas[static_cast<std::size_t>(indice)].get();
}

void Editor::colocar(int fila, int col) {
    seleccion_ = {fila, col, fila, col};
}

void Editor::seleccionar(int fila, int col) {
    colocar(acotarFila(fila), acotarColumna(col));
    normalizarActiva();
}

void Editor::extender(int fila, int col) {
    seleccion_.activaFila = acotarFila(fila);
    seleccion_.activaCol = acotarColumna(col);
}

void Editor::seleccionarFila(int fila) {
    const Hoja* hoja = hojaActiva();
    const int ultima = hoja ? acotarColumna(hoja->ultimaColUsada()) : 0;
    fila = acotarFila(fila);
    seleccion_ = {fila, std::max(ultima, kUltimaColumnaMinima), fila, 0};
}

void Editor::seleccionarColumna(int col) {
    const Hoja* hoja = hojaActiva();
    const int ultima = hoja ? acotarFila(hoja->ultimaFilaUsada()) : 0;
    col = acotarColumna(col);
    seleccion_ = {std::max(ultima, kUltimaFilaMinima), col, 0, col};
}

void Editor::seleccionarTodo() {
    const Hoja* hoja = hojaActiva();
    seleccion_ = {};
    if (hoja) {
        seleccion_.anclaFila = acotarFila(hoja->ultimaFilaUsada());
        seleccion_.anclaCol = acotarColumna(hoja->ultimaColUsada());
    }
}

void Editor::normalizarActiva() {
    const Hoja* hoja = hojaActiva();
    if (!hoja || !seleccion_.esUnaCelda())
        return;
    if (const RangoFusion* fusion = hoja->fusionEn(seleccion_.activaFila, seleccion_.activaCol))
        seleccion_ = seleccionDe(*fusion);
}

void Editor::moverActiva(int dFila, int dCol, bool extender) {
    std::int64_t fila = seleccion_.activaFila;
    std::int64_t col = seleccion_.activaCol;
    const Hoja* hoja = hojaActiva();
    const RangoFusion* fusion =
        hoja && !extender ? hoja->fusionEn(seleccion_.activaFila, seleccion_.activaCol) : nullptr;
    if (fusion) {
        fila = salida(dFila, fusion->fila1, fusion->fila2, seleccion_.activaFila);
        col = salida(dCol, fusion->col1, fusion->col2, seleccion_.activaCol);
    }
    const int nuevaFila = acotarFila(fila + dFila);
    const int nuevaCol = acotarColumna(col + dCol);
    if (extender) {
        seleccion_.activaFila = nuevaFila;
        seleccion_.activaCol = nuevaCol;
        return;
    }
    colocar(nuevaFila, nuevaCol);
    normalizarActiva();
}

std::vector<std::uint64_t> Editor::clavesEnSeleccion() const {
    std::vector<std::uint64_t> claves;
    if (const Hoja* hoja = hojaActiva()) {
        hoja->celdas.recorrerPorFilas(seleccion_.rango(),
                                      [&](int fila, int col, const nucleo::Celda&) {
                                          claves.push_back(nucleo::claveLocal(fila, col));
                                          return true;
                                      });
    }
    return claves;
}

void Editor::establecerContenido(int fila, int col, const std::string& texto) {
    const Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    fila = acotarFila(fila);
    col = acotarColumna(col);
    if (const RangoFusion* fusion = hoja->fusionEn(fila, col)) {
        fila = acotarFila(fusion->fila1);
        col = acotarColumna(fusion->col1);
    }
    const nucleo::Celda* celda = hoja->celda(fila, col);
    if (celda ? celda->entrada == texto : texto.empty())
        return;
    registrarHistorial();
    motor_->establecerCelda(libro_.hojaActiva, fila, col, texto);
    libro_.modificado = true;
}

} // namespace editor
