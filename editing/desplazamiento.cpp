#include "editing/desplazamiento.h"

#include "model/limites.h"
#include "model/mapa_tamanos.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace editor {

namespace {

using nucleo::Hoja;
using nucleo::RangoFusion;

int ultimaCoordenada(bool filas) {
    return filas ? nucleo::kUltimaFila : nucleo::kUltimaColumna;
}

void desplazarTamanos(nucleo::MapaTamanos& tamanos, const Desplazamiento& paso) {
    nucleo::MapaTamanos movidos;
    movidos.reserve(tamanos.size());
    for (const auto& [coordenada, tamano] : tamanos) {
        if (const std::optional<int> nueva = paso.destino(coordenada))
            movidos.emplace(*nueva, tamano);
    }
    tamanos = std::move(movidos);
}

/// Mueve los extremos de una fusión en una dirección. Falso si se queda sin filas o sin columnas.
/// Los extremos pueden ser cualesquiera: vienen de un archivo.
bool desplazarExtremos(int& inicio, int& fin, const Desplazamiento& paso) {
    const std::int64_t ultima = ultimaCoordenada(paso.filas);
    const std::int64_t desde = paso.desde;
    const std::int64_t delta = paso.delta;
    const std::int64_t finBanda = delta < 0 ? desde - delta : desde;

    std::int64_t nuevoInicio = inicio;
    if (inicio >= finBanda)
        nuevoInicio = inicio + delta;
    else if (inicio >= desde)
        nuevoInicio = desde;

    std::int64_t nuevoFin = fin;
    if (fin >= finBanda)
        nuevoFin = std::min(fin + delta, ultima);
    else if (fin >= desde)
        nuevoFin = desde - 1;

    if (nuevoInicio > nuevoFin)
        return false;
    inicio = static_cast<int>(nuevoInicio);
    fin = static_cast<int>(nuevoFin);
    return true;
}

void desplazarFusiones(std::vector<RangoFusion>& fusiones, const Desplazamiento& paso) {
    std::erase_if(fusiones, [&](RangoFusion& fusion) {
        const bool queda = paso.filas ? desplazarExtremos(fusion.fila1, fusion.fila2, paso)
                                      : desplazarExtremos(fusion.col1, fusion.col2, paso);
        return !queda || (fusion.fila1 == fusion.fila2 && fusion.col1 == fusion.col2);
    });
}

} // namespace

std::optional<int> Desplazamiento::destino(int coordenada) const {
    if (coordenada < desde || delta == 0)
        return coordenada;
    if (coordenada < std::int64_t{desde} - delta)
        return std::nullopt;
    const std::int64_t nueva = std::int64_t{coordenada} + delta;
    if (nueva > ultimaCoordenada(filas))
        return std::nullopt;
    return static_cast<int>(nueva);
}

void desplazarCeldas(Hoja& hoja, bool filas, int desde, int delta) {
    const Desplazamiento paso{filas, desde, delta};
    if (filas)
        hoja.celdas.desplazarFilas(desde, delta);
    else
        hoja.celdas.desplazarColumnas(desde, delta);
    desplazarTamanos(filas ? hoja.altos : hoja.anchos, paso);
    desplazarFusiones(hoja.fusiones, paso);
}

} // namespace editor
