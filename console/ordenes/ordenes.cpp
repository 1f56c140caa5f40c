#include "console/ordenes/ordenes.h"

namespace consola {

namespace {

constexpr Opcion kLibro{"--libro", "LIBRO", "leer las celdas de este libro"};
constexpr Opcion kHoja{"--hoja", "NOMBRE", "la hoja; sin ella, la activa"};
constexpr Opcion kJson{"--json", "", "escribir JSON"};

constexpr Opcion kDeEvaluar[] = {kLibro, kHoja};
constexpr Opcion kDeMostrar[] = {
    kHoja,
    {"--rango", "A1:D20", "solo estas celdas; sin él, las usadas"},
    {"--formulas", "", "las fórmulas en lugar de sus resultados"},
    kJson,
};
constexpr Opcion kDeConvertir[] = {
    kHoja,
    {"--valores", "", "al escribir texto, lo que se ve y no lo que se escribió"},
    {"--sin-formulas", "", "al leer texto, tomar cada campo como un literal"},
    {"--separador", "X", "separador del .csv; el de SALIDA si lo es, si no el de ENTRADA"},
    {"--separador-entrada", "X", "separador de ENTRADA; sin él se reconocen \";\" y \",\""},
    {"--formato", "ARCHIVO", "formatos, anchos y fusiones que el texto no puede llevar"},
};
constexpr Opcion kDeImprimir[] = {
    kHoja,
    {"--todas", "", "todas las hojas, una detrás de otra"},
    {"--rango", "A1:D20", "solo estas celdas; sin él, las usadas"},
    {"--papel", "TAMAÑO", "A4, A3, A5 o carta; sin él, A4"},
    {"--horizontal", "", "el papel apaisado"},
    {"--ajustar", "", "encoger hasta que las columnas quepan en una página"},
    {"--encabezados", "", "las letras de las columnas y los números de las filas"},
};
constexpr Opcion kDeRecalcular[] = {kJson};
constexpr Opcion kDeFunciones[] = {kJson};

constexpr Orden kOrdenes[] = {
    {"evaluar", "FÓRMULA", "Escribe el valor de una fórmula.", kDeEvaluar, 1, 1, evaluar},
    {"mostrar", "LIBRO", "Escribe una hoja como una tabla alineada.", kDeMostrar, 1, 1, mostrar},
    {"convertir", "ENTRADA... SALIDA",
     "Convierte entre .mrn, .tsv y .csv; \"-\" es la entrada o la salida estándar, en CSV. Cada "
     "ENTRADA de texto es una hoja.",
     kDeConvertir, 2, 1024, convertir},
    {"imprimir", "LIBRO SALIDA", "Dibuja una hoja en páginas de un .pdf, o entera en un .png.",
     kDeImprimir, 2, 2, imprimir},
    {"recalcular", "LIBRO", "Recalcula un libro y cuenta celdas, fórmulas, errores y segundos.",
     kDeRecalcular, 1, 1, recalcular},
    {"funciones", "[NOMBRE]", "Escribe las funciones de las fórmulas, o explica una.", kDeFunciones,
     0, 1, listarFunciones},
};

} // namespace

std::span<const Orden> ordenes() {
    return kOrdenes;
}

} // namespace consola
