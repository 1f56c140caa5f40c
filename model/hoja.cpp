#include "model/hoja.h"

#include <algorithm>

namespace nucleo {

namespace {

bool contiene(const RangoFusion& fusion, int fila, int col) {
    return fusion.fila1 <= fila && fila <= fusion.fila2 && fusion.col1 <= col && col <= fusion.col2;
}

} // namespace

bool Hoja::operator==(const Hoja& otra) const {
    return nombre == otra.nombre && celdas == otra.celdas && fusiones == otra.fusiones &&
           anchos == otra.anchos && altos == otra.altos &&
           filasInmovilizadas == otra.filasInmovilizadas &&
           columnasInmovilizadas == otra.columnasInmovilizadas;
}

std::uint64_t Hoja::nuevaIdentidad() {
    static std::uint64_t ultima = 0;
    return ++ultima;
}

const Celda* Hoja::celda(int fila, int col) const {
    return celdas.buscar(fila, col);
}

Celda& Hoja::celdaMut(int fila, int col) {
    return celdas[claveLocal(fila, col)];
}

void Hoja::quitarCelda(int fila, int col) {
    celdas.erase(claveLocal(fila, col));
}

const RangoFusion* Hoja::fusionEn(int fila, int col) const {
    for (const RangoFusion& fusion : fusiones) {
        if (contiene(fusion, fila, col))
            return &fusion;
    }
    return nullptr;
}

const RangoFusion* Hoja::fusionQueToca(const RangoCeldas& rango) const {
    const auto it = std::find_if(fusiones.begin(), fusiones.end(), [&](const RangoFusion& fusion) {
        return rango.interseca({fusion.fila1, fusion.col1, fusion.fila2, fusion.col2});
    });
    return it == fusiones.end() ? nullptr : &*it;
}

bool Hoja::fusionar(int fila1, int col1, int fila2, int col2) {
    const RangoCeldas rango{std::min(fila1, fila2), std::min(col1, col2), std::max(fila1, fila2),
                            std::max(col1, col2)};
    if (rango.fila1 == rango.fila2 && rango.col1 == rango.col2)
        return false;
    if (fusionQueToca(rango))
        return false;

    // La esquina se aparta para que lo que queda por quitar sean rectángulos completos.
    RangoCeldas resto = rango;
    resto.fila2 = rango.fila1;
    if (rango.col1 < rango.col2) {
        resto.col1 = rango.col1 + 1;
        celdas.quitarRango(resto);
    }
    if (rango.fila1 < rango.fila2) {
        resto = rango;
        resto.fila1 = rango.fila1 + 1;
        celdas.quitarRango(resto);
    }
    fusiones.push_back({rango.fila1, rango.col1, rango.fila2, rango.col2});
    return true;
}

bool Hoja::separar(int fila, int col) {
    const auto it = std::find_if(fusiones.begin(), fusiones.end(), [&](const RangoFusion& fusion) {
        return contiene(fusion, fila, col);
    });
    if (it == fusiones.end())
        return false;
    fusiones.erase(it);
    return true;
}

int Hoja::anchoColumna(int col) const {
    const auto it = anchos.find(col);
    return it == anchos.end() ? kAnchoPredeterminado : it->second;
}

int Hoja::altoFila(int fila) const {
    const auto it = altos.find(fila);
    return it == altos.end() ? kAltoPredeterminado : it->second;
}

int Hoja::ultimaFilaUsada() const {
    int ultima = celdas.ultimaFilaConContenido();
    for (const RangoFusion& fusion : fusiones)
        ultima = std::max(ultima, fusion.fila2);
    return ultima;
}

int Hoja::ultimaColUsada() const {
    int ultima = celdas.ultimaColConContenido();
    for (const RangoFusion& fusion : fusiones)
        ultima = std::max(ultima, fusion.col2);
    return ultima;
}

} // namespace nucleo
