#include "model/almacen_celdas.h"

#include <algorithm>

namespace nucleo {

void AlmacenCeldas::ponerValor(int fila, int col, Valor valor) {
    const auto it = celdas_.find(claveLocal(fila, col));
    if (it != celdas_.end())
        it->second.valor = std::move(valor);
}

std::size_t AlmacenCeldas::contarEn(const RangoCeldas& rango) const {
    std::size_t total = 0;
    recorrerPorFilas(rango, [&](int, int, const Celda&) {
        ++total;
        return true;
    });
    return total;
}

void AlmacenCeldas::quitarRango(const RangoCeldas& rango) {
    std::erase_if(celdas_, [&](const auto& par) {
        return rango.contiene(filaDeClaveLocal(par.first), columnaDeClaveLocal(par.first));
    });
}

void AlmacenCeldas::desplazar(bool filas, int desde, int delta) {
    Mapa nuevas;
    const int ultima = filas ? kUltimaFila : kUltimaColumna;
    for (auto& [clave, celda] : celdas_) {
        std::int64_t fila = filaDeClaveLocal(clave);
        std::int64_t col = columnaDeClaveLocal(clave);
        std::int64_t& coordenada = filas ? fila : col;
        if (coordenada >= desde) {
            if (delta < 0 && coordenada < std::int64_t{desde} - delta)
                continue;
            coordenada += delta;
            if (delta > 0 && coordenada > ultima)
                continue;
        }
        nuevas.emplace(claveLocal(static_cast<int>(fila), static_cast<int>(col)), std::move(celda));
    }
    celdas_ = std::move(nuevas);
}

void AlmacenCeldas::desplazarFilas(int desde, int delta) {
    desplazar(true, desde, delta);
}

void AlmacenCeldas::desplazarColumnas(int desde, int delta) {
    desplazar(false, desde, delta);
}

void AlmacenCeldas::completarLiterales() {
    for (auto& [clave, celda] : celdas_) {
        if (celda.tipo == TipoCelda::Numero)
            celda.valor = Valor::deNumero(celda.numero);
        else if (celda.tipo == TipoCelda::Texto)
            celda.valor = Valor::deTexto(celda.entrada);
    }
}

int AlmacenCeldas::ultimaFilaConContenido() const {
    int ultima = -1;
    for (const auto& [clave, celda] : celdas_) {
        if (celda.tipo != TipoCelda::Vacia)
            ultima = std::max(ultima, filaDeClaveLocal(clave));
    }
    return ultima;
}

int AlmacenCeldas::ultimaColConContenido() const {
    int ultima = -1;
    for (const auto& [clave, celda] : celdas_) {
        if (celda.tipo != TipoCelda::Vacia)
            ultima = std::max(ultima, columnaDeClaveLocal(clave));
    }
    return ultima;
}

} // namespace nucleo
