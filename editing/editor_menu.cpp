#include "editing/editor.h"

#include <cstdint>
#include <string>
#include <vector>

namespace editor {

using nucleo::Hoja;

namespace {

enum class Cuando : std::uint8_t { Siempre, Varias, VariasSinFusion, Fusionada };
enum class Cuenta : std::uint8_t { Nada, Filas, Columnas };

/// Una entrada del menú, antes de saber qué hay seleccionado.
struct Entrada {
    const char* id;
    const char* verbo; ///< la etiqueta entera si no se cuenta nada
    const char* una = "";
    const char* varias = "";
    Cuenta cuenta = Cuenta::Nada;
    Cuando cuando = Cuando::Siempre;
    bool separadorAntes = false;
};

constexpr Entrada kEntradas[] = {
    {"cortar", "Cortar"},
    {"copiar", "Copiar"},
    {"pegar", "Pegar"},
    {"borrar", "Borrar contenido", "", "", Cuenta::Nada, Cuando::Siempre, true},
    {"fusionar", "Fusionar celdas", "", "", Cuenta::Nada, Cuando::VariasSinFusion, true},
    {"separar", "Separar celdas", "", "", Cuenta::Nada, Cuando::Fusionada, false},
    {"insertar_fila_arriba", "Insertar", "fila arriba", "filas arriba", Cuenta::Filas,
     Cuando::Siempre, true},
    {"insertar_fila_abajo", "Insertar", "fila abajo", "filas abajo", Cuenta::Filas},
    {"insertar_col_izq", "Insertar", "columna a la izquierda", "columnas a la izquierda",
     Cuenta::Columnas},
    {"insertar_col_der", "Insertar", "columna a la derecha", "columnas a la derecha",
     Cuenta::Columnas},
    {"eliminar_filas", "Eliminar", "fila", "filas", Cuenta::Filas, Cuando::Siempre, true},
    {"eliminar_cols", "Eliminar", "columna", "columnas", Cuenta::Columnas},
    {"ordenar_asc", "Ordenar ascendente", "", "", Cuenta::Nada, Cuando::Varias, true},
    {"ordenar_desc", "Ordenar descendente", "", "", Cuenta::Nada, Cuando::Varias, false},
};

std::string etiqueta(const Entrada& entrada, int cantidad) {
    std::string texto = entrada.verbo;
    if (entrada.cuenta == Cuenta::Nada)
        return texto;
    texto += ' ';
    if (cantidad < 2)
        return texto += entrada.una;
    texto += std::to_string(cantidad);
    texto += ' ';
    return texto += entrada.varias;
}

bool habilitada(Cuando cuando, bool varias, bool fusionada) {
    switch (cuando) {
    case Cuando::Varias:
        return varias;
    case Cuando::VariasSinFusion:
        return varias && !fusionada;
    case Cuando::Fusionada:
        return fusionada;
    case Cuando::Siempre:
        break;
    }
    return true;
}

} // namespace

std::vector<AccionMenu> Editor::menuContextualCeldas() const {
    const Hoja* hoja = hojaActiva();
    const bool varias = !seleccion_.esUnaCelda();
    const bool fusionada = hoja && hoja->fusionEn(seleccion_.activaFila, seleccion_.activaCol);
    const int filas = seleccion_.filaMax() - seleccion_.filaMin() + 1;
    const int columnas = seleccion_.colMax() - seleccion_.colMin() + 1;
    std::vector<AccionMenu> acciones;
    for (const Entrada& entrada : kEntradas) {
        acciones.push_back({entrada.id,
                            etiqueta(entrada, entrada.cuenta == Cuenta::Filas ? filas : columnas),
                            habilitada(entrada.cuando, varias, fusionada), entrada.separadorAntes});
    }
    return acciones;
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
