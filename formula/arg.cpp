#include "formula/arg.h"

namespace motor_formulas {

VistaValor celdaDeArg(const Arg& arg, std::int64_t posicion) {
    if (!arg.prestado())
        return vistaDe(arg.valores[static_cast<std::size_t>(posicion)]);
    const nucleo::Celda* celda =
        arg.hoja->celdas.buscar(arg.rango.fila1 + static_cast<int>(posicion / arg.columnas),
                                arg.rango.col1 + static_cast<int>(posicion % arg.columnas));
    return celda == nullptr ? VistaValor{} : vistaDe(*celda);
}

} // namespace motor_formulas
