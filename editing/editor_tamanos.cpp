#include "editing/cotas.h"
#include "editing/editor.h"

#include <algorithm>
#include <optional>

// Cambiar un tamaño no es un paso del historial, y un tamaño sobrevive a los pasos: al dar alto a
// una fila se lo da también en los estados guardados, a la fila que allí es la misma. Deshacer y
// rehacer devuelven entonces los estados tal como están, y los tamaños van y vuelven con sus filas.

namespace editor {

using nucleo::Hoja;

namespace {

void darTamano(Hoja& hoja, bool filas, int coordenada, int tamano) {
    (filas ? hoja.altos : hoja.anchos)[coordenada] = tamano;
}

} // namespace

void Editor::redimensionarColumna(int col, int ancho) {
    redimensionar(false, acotarColumna(col),
                  std::clamp(ancho, nucleo::kAnchoMinimo, nucleo::kAnchoMaximo));
}

void Editor::redimensionarFila(int fila, int alto) {
    redimensionar(true, acotarFila(fila),
                  std::clamp(alto, nucleo::kAltoMinimo, nucleo::kAltoMaximo));
}

void Editor::redimensionar(bool filas, int coordenada, int tamano) {
    Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    darTamano(*hoja, filas, coordenada, tamano);
    libro_.modificado = true;
    redimensionarEn(historialDeshacer_, hoja->identidad, filas, coordenada, tamano);
    redimensionarEn(historialRehacer_, hoja->identidad, filas, coordenada, tamano);
}

void Editor::redimensionarEn(std::deque<Paso>& pasos, std::uint64_t identidad, bool filas,
                             int coordenada, int tamano) {
    for (auto paso = pasos.rbegin(); paso != pasos.rend(); ++paso) {
        if (paso->hoja == identidad && paso->desdeElVecino.filas == filas) {
            const std::optional<int> alli = paso->desdeElVecino.destino(coordenada);
            if (!alli)
                return;
            coordenada = *alli;
        }
        for (Hoja& hoja : paso->estado.hojas) {
            if (hoja.identidad == identidad)
                darTamano(hoja, filas, coordenada, tamano);
        }
    }
}

} // namespace editor
