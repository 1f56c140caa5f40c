#include "editing/editor.h"

namespace editor {

using nucleo::Hoja;

namespace {

std::string contada(const char* verbo, int cantidad, const char* singular, const char* plural) {
    if (cantidad < 2)
        return std::string(verbo) + " " + singular;
    return std::string(verbo) + " " + std::to_string(cantidad) + " " + plural;
}

} // namespace

std::vector<AccionMenu> Editor::menuContextualCeldas() const {
    const Hoja* hoja = hojaActiva();
    const bool varias = !seleccion_.esUnaCelda();
    const bool fusionada = hoja && hoja->fusionEn(seleccion_.activaFila, seleccion_.activaCol);
    const int filas = seleccion_.filaMax() - seleccion_.filaMin() + 1;
    const int columnas = seleccion_.colMax() - seleccion_.colMin() + 1;
    return {
        {"cortar", "Cortar", true, false},
        {"copiar", "Copiar", true, false},
        {"pegar", "Pegar", true, false},
        {"borrar", "Borrar contenido", true, true},
        {"fusionar", "Fusionar celdas", varias && !fusionada, true},
        {"separar", "Separar celdas", fusionada, false},
        {"insertar_fila_arriba", contada("Insertar", filas, "fila arriba", "filas arriba"), true,
         true},
        {"insertar_fila_abajo", contada("Insertar", filas, "fila abajo", "filas abajo"), true,
         false},
        {"insertar_col_izq",
         contada("Insertar", columnas, "columna a la izquierda", "columnas a la izquierda"), true,
         false},
        {"insertar_col_der",
         contada("Insertar", columnas, "columna a la derecha", "columnas a la derecha"), true,
         false},
        {"eliminar_filas", contada("Eliminar", filas, "fila", "filas"), true, true},
        {"eliminar_cols", contada("Eliminar", columnas, "columna", "columnas"), true, false},
        {"ordenar_asc", "Ordenar ascendente", varias, true},
        {"ordenar_desc", "Ordenar descendente", varias, false},
    };
}

bool Editor::ejecutarAccionMenu(const std::string& id) {
    const nucleo::RangoCeldas rango = seleccion_.rango();
    const int filas = rango.fila2 - rango.fila1 + 1;
    const int columnas = rango.col2 - rango.col1 + 1;
    if (id == "borrar")
        borrarSeleccion();
    else if (id == "fusionar")
        fusionarSeleccion();
    else if (id == "separar")
        separarFusion();
    else if (id == "insertar_fila_arriba")
        desplazar(true, rango.fila1, filas);
    else if (id == "insertar_fila_abajo")
        desplazar(true, rango.fila2 + 1, filas);
    else if (id == "insertar_col_izq")
        desplazar(false, rango.col1, columnas);
    else if (id == "insertar_col_der")
        desplazar(false, rango.col2 + 1, columnas);
    else if (id == "eliminar_filas")
        eliminarFilas(rango.fila1, filas);
    else if (id == "eliminar_cols")
        eliminarColumnas(rango.col1, columnas);
    else if (id == "ordenar_asc")
        ordenarSeleccion(true);
    else if (id == "ordenar_desc")
        ordenarSeleccion(false);
    else
        return false;
    return true;
}

} // namespace editor
