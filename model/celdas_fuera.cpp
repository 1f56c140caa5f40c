#include "model/celdas_fuera.h"

#include "model/bloque_celdas.h"

#include <algorithm>

namespace nucleo {

CeldasFuera::Contenido* CeldasFuera::Contenido::copiar(const Contenido& otro) {
    auto* copia = new Contenido(otro);
    copia->referencias = 1;
    return copia;
}

const CeldasFuera::Mapa& CeldasFuera::vacio() {
    static const Mapa mapa;
    return mapa;
}

CeldasFuera::Mapa& CeldasFuera::propias() {
    if (!contenido_)
        contenido_ = Compartido<Contenido>(new Contenido);
    Contenido& contenido = contenido_.propio();
    contenido.literalesCompletos = false;
    contenido.medidas = false;
    return contenido.celdas;
}

void CeldasFuera::quitarRango(const RangoCeldas& rango) {
    const auto cae = [&](const auto& par) {
        return rango.contiene(filaDeClaveLocal(par.first), columnaDeClaveLocal(par.first));
    };
    if (std::any_of(celdas().begin(), celdas().end(), cae))
        std::erase_if(propias(), cae);
}

void CeldasFuera::completarLiterales() {
    if (!contenido_ || contenido_->literalesCompletos)
        return;
    for (auto& [clave, celda] : propias()) {
        if (literalIncompleto(celda))
            completarLiteral(celda);
    }
    contenido_.propio().literalesCompletos = true;
}

CeldasFuera::Extension CeldasFuera::extension() const {
    if (!contenido_)
        return {};
    if (!contenido_->medidas) {
        Extension hasta;
        for (const auto& [clave, celda] : contenido_->celdas) {
            if (celda.tipo == TipoCelda::Vacia)
                continue;
            hasta.fila = std::max(hasta.fila, filaDeClaveLocal(clave));
            hasta.col = std::max(hasta.col, columnaDeClaveLocal(clave));
        }
        contenido_->extension = hasta;
        contenido_->medidas = true;
    }
    return contenido_->extension;
}

} // namespace nucleo
