#pragma once

#include "formula/vista_valor.h"
#include "model/hoja.h"
#include "model/rango.h"
#include "model/valor.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace motor_formulas {

/// Argumento ya evaluado de una función: un valor, o un bloque de celdas.
///
/// Un bloque se da de una de dos maneras. Reunido: `valores` trae sus filas × columnas valores.
/// Prestado: `valores` está vacío y `hoja` y `rango` dicen dónde leerlo; así `=SUMA(A1:ZZ65536)`
/// cuesta las celdas que existen. Quien lee bloques usa `recorrerCeldas`, que sirve a las dos.
struct Arg {
    bool esRango = false;
    nucleo::Valor valor; ///< solo si no es rango
    std::int32_t filas = 0;
    std::int32_t columnas = 0;
    std::vector<nucleo::Valor> valores; ///< por filas

    const nucleo::Hoja* hoja = nullptr; ///< origen de un bloque prestado
    nucleo::RangoCeldas rango;          ///< normalizado y dentro de la cuadrícula

    bool prestado() const { return hoja != nullptr; }
    std::int64_t celdas() const { return std::int64_t{filas} * columnas; }
};

struct Matriz {
    int filas = 0;
    int columnas = 0;
    std::vector<nucleo::Valor> valores; ///< por filas
};

/// Recorre por filas las celdas de un bloque que existen; las que faltan son vacías. Llama a
/// `visitar(posicion, VistaValor)` con la posición por filas contada desde 0 y se detiene, con
/// falso, en cuanto `visitar` devuelve falso.
template <typename Visitante> bool recorrerCeldas(const Arg& arg, Visitante&& visitar) {
    if (!arg.prestado()) {
        std::int64_t posicion = 0;
        for (const nucleo::Valor& valor : arg.valores) {
            if (!visitar(posicion++, vistaDe(valor)))
                return false;
        }
        return true;
    }
    return arg.hoja->celdas.recorrerPorFilas(
        arg.rango, [&](int fila, int col, const nucleo::Celda& celda) {
            const std::int64_t posicion =
                std::int64_t{fila - arg.rango.fila1} * arg.columnas + (col - arg.rango.col1);
            return visitar(posicion, vistaDe(celda));
        });
}

/// Valor de una posición (por filas, desde 0) de un bloque.
VistaValor celdaDeArg(const Arg& arg, std::int64_t posicion);

} // namespace motor_formulas
