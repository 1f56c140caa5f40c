#include "rendering/ejes.h"

#include "model/hoja.h"
#include "model/limites.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace renderizador {

int escalar(int tamano, double zoom) {
    const double pixeles = tamano * zoom + 0.5;
    if (!(pixeles >= 1.0)) { // también NaN
        return 0;
    }
    if (pixeles >= static_cast<double>(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(pixeles);
}

MedidasEje medidasColumnas(const nucleo::Hoja& hoja, double zoom) {
    return {hoja.anchos, nucleo::kColumnas, nucleo::kAnchoPredeterminado, zoom};
}

MedidasEje medidasFilas(const nucleo::Hoja& hoja, double zoom) {
    return {hoja.altos, nucleo::kFilas, nucleo::kAltoPredeterminado, zoom};
}

int MedidasEje::tamano(int elemento) const {
    const auto propio = tamanos.find(elemento);
    return escalar(propio == tamanos.end() ? predeterminado : propio->second, zoom);
}

std::int64_t MedidasEje::suma(int desde, int hasta) const {
    desde = std::clamp(desde, 0, elementos);
    hasta = std::clamp(hasta, desde, elementos);
    const std::int64_t porDefecto = escalar(predeterminado, zoom);
    const int cuantos = hasta - desde;
    std::int64_t total = 0;
    if (tamanos.size() < static_cast<std::size_t>(cuantos)) {
        total = porDefecto * cuantos;
        for (const auto& [elemento, propio] : tamanos) {
            if (elemento >= desde && elemento < hasta) {
                total += escalar(propio, zoom) - porDefecto;
            }
        }
    } else {
        for (int elemento = desde; elemento < hasta; ++elemento) {
            total += tamano(elemento);
        }
    }
    return total;
}

namespace {

struct TamanoPropio {
    int elemento;
    int tamano;
};

/// Los tamaños propios de la cuadrícula, en orden. Cuando son muchos se reparten en una tabla, que
/// cuesta menos que ordenarlos.
std::vector<TamanoPropio> tamanosEnOrden(const MedidasEje& medidas) {
    std::vector<TamanoPropio> orden;
    const auto dentro = [&](int elemento) { return elemento >= 0 && elemento < medidas.elementos; };
    const auto cuantos =
        std::min(medidas.tamanos.size(), static_cast<std::size_t>(medidas.elementos));
    orden.reserve(cuantos);
    if (cuantos < static_cast<std::size_t>(medidas.elementos) / 16) {
        for (const auto& [elemento, tamano] : medidas.tamanos) {
            if (dentro(elemento)) {
                orden.push_back({elemento, escalar(tamano, medidas.zoom)});
            }
        }
        std::sort(orden.begin(), orden.end(), [](const TamanoPropio& a, const TamanoPropio& b) {
            return a.elemento < b.elemento;
        });
        return orden;
    }
    constexpr int kNinguno = -1;
    std::vector<int> tabla(static_cast<std::size_t>(medidas.elementos), kNinguno);
    for (const auto& [elemento, tamano] : medidas.tamanos) {
        if (dentro(elemento)) {
            tabla[static_cast<std::size_t>(elemento)] = escalar(tamano, medidas.zoom);
        }
    }
    for (int elemento = 0; elemento < medidas.elementos; ++elemento) {
        if (const int tamano = tabla[static_cast<std::size_t>(elemento)]; tamano != kNinguno) {
            orden.push_back({elemento, tamano});
        }
    }
    return orden;
}

} // namespace

Eje::Eje(const MedidasEje& medidas)
    : elementos_(medidas.elementos),
      predeterminado_(escalar(medidas.predeterminado, medidas.zoom)) {
    const std::vector<TamanoPropio> orden = tamanosEnOrden(medidas);
    propios_.reserve(orden.size());
    std::int64_t diferencia = 0;
    for (const auto& [elemento, tamano] : orden) {
        propios_.push_back(
            {elemento, tamano, std::int64_t{elemento} * predeterminado_ + diferencia});
        diferencia += tamano - std::int64_t{predeterminado_};
    }
}

std::vector<Eje::Propio>::const_iterator Eje::primeroDesde(int elemento) const {
    return std::lower_bound(
        propios_.begin(), propios_.end(), elemento,
        [](const Propio& propio, int buscado) { return propio.elemento < buscado; });
}

int Eje::tamano(int elemento) const {
    const auto propio = primeroDesde(elemento);
    return propio != propios_.end() && propio->elemento == elemento ? propio->tamano
                                                                    : predeterminado_;
}

std::int64_t Eje::posicion(int elemento) const {
    elemento = std::clamp(elemento, 0, elementos_);
    auto anterior = primeroDesde(elemento);
    if (anterior == propios_.begin()) {
        return std::int64_t{elemento} * predeterminado_;
    }
    --anterior;
    return anterior->inicio + anterior->tamano +
           std::int64_t{elemento - anterior->elemento - 1} * predeterminado_;
}

int Eje::elementoEn(std::int64_t posicion) const {
    if (posicion < 0) {
        return 0;
    }
    const auto propio =
        std::partition_point(propios_.begin(), propios_.end(), [posicion](const Propio& candidato) {
            return candidato.inicio + candidato.tamano <= posicion;
        });
    if (propio != propios_.end() && propio->inicio <= posicion) {
        return propio->elemento;
    }
    // Cae en el tramo de tamaño predeterminado que hay antes de `propio`.
    std::int64_t inicioTramo = 0;
    int elemento = 0;
    if (propio != propios_.begin()) {
        const Propio& anterior = *std::prev(propio);
        inicioTramo = anterior.inicio + anterior.tamano;
        elemento = anterior.elemento + 1;
    }
    if (predeterminado_ == 0) {
        return elementos_;
    }
    return static_cast<int>(
        std::min<std::int64_t>(elemento + (posicion - inicioTramo) / predeterminado_, elementos_));
}

} // namespace renderizador
