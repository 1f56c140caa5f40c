#include "formula/codigo.h"

namespace motor_formulas {

std::string_view Codigo::texto(Tramo tramo) const {
    if (tramo.largo == 0)
        return {};
    if (tramo.pos < fuente_.size())
        return fuente_.substr(tramo.pos, tramo.largo);
    return std::string_view(propios_).substr(tramo.pos - fuente_.size(), tramo.largo);
}

RefCelda Codigo::primeraEsquina(const ReferenciaCodigo& referencia) const {
    RefCelda ref;
    if (referencia.nombres >= 0)
        ref.hoja = texto(nombres_[static_cast<std::size_t>(referencia.nombres)].primera);
    ref.fila = referencia.filasInvertidas ? referencia.rango.fila2 : referencia.rango.fila1;
    ref.col = referencia.columnasInvertidas ? referencia.rango.col2 : referencia.rango.col1;
    ref.filaAbs = (referencia.absolutas & 1) != 0;
    ref.colAbs = (referencia.absolutas & 2) != 0;
    return ref;
}

RefCelda Codigo::segundaEsquina(const ReferenciaCodigo& referencia) const {
    RefCelda ref;
    if (referencia.nombres >= 0)
        ref.hoja = texto(nombres_[static_cast<std::size_t>(referencia.nombres)].segunda);
    ref.fila = referencia.filasInvertidas ? referencia.rango.fila1 : referencia.rango.fila2;
    ref.col = referencia.columnasInvertidas ? referencia.rango.col1 : referencia.rango.col2;
    ref.filaAbs = (referencia.absolutas & 4) != 0;
    ref.colAbs = (referencia.absolutas & 8) != 0;
    return ref;
}

} // namespace motor_formulas
