#include "rendering/regiones.h"

#include <algorithm>

namespace renderizador {

namespace {

/// Un tramo más largo que la vista se acorta por lejos de ella: no cambia lo que se ve y sus bordes
/// caben siempre en un `int`.
constexpr std::int64_t kLejos = 1'000'000'000;

void reunir(const EjeVista& eje, int primero, int final, BandaVisible& banda) {
    std::int64_t inicio = eje.inicio(primero);
    for (int elemento = primero; elemento < final && inicio < banda.hasta; ++elemento) {
        const int tamano = eje.tamano(elemento);
        const std::int64_t fin = inicio + tamano;
        if (tamano > 0 && fin > banda.desde) {
            const auto desde = static_cast<int>(std::max(inicio, -kLejos));
            const auto hasta = static_cast<int>(std::min(fin, kLejos));
            banda.tramos.push_back({elemento, desde, hasta - desde});
        }
        inicio = fin;
    }
}

} // namespace

Bandas bandasVisibles(const EjeVista& eje, int origen, int limite) {
    const auto finPanel =
        static_cast<int>(std::min<std::int64_t>(eje.finPanel(), std::max(origen, limite)));
    Bandas bandas;
    bandas.fija.desde = origen;
    bandas.fija.hasta = finPanel;
    bandas.fija.primero = 0;
    bandas.fija.ultimo = eje.fijos() - 1;
    reunir(eje, 0, eje.fijos(), bandas.fija);

    bandas.desplazada.desde = finPanel;
    bandas.desplazada.hasta = limite;
    bandas.desplazada.primero = eje.fijos();
    bandas.desplazada.ultimo = eje.elementos() - 1;
    if (!bandas.desplazada.vacia()) {
        reunir(eje, eje.primeroDesplazado(), eje.elementos(), bandas.desplazada);
    }
    return bandas;
}

} // namespace renderizador
