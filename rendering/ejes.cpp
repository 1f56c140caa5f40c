#include "rendering/ejes.h"

#include "model/hoja.h"
#include "model/limites.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

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

Eje::Eje(const MedidasEje& medidas)
    : elementos_(medidas.elementos),
      predeterminado_(escalar(medidas.predeterminado, medidas.zoom)) {
    constexpr std::size_t kParteDensa = 16;
    if (medidas.tamanos.size() >= static_cast<std::size_t>(elementos_) / kParteDensa) {
        sumarTodos(medidas);
    } else {
        ordenarPropios(medidas);
    }
}

void Eje::ordenarPropios(const MedidasEje& medidas) {
    propios_.reserve(medidas.tamanos.size());
    for (const auto& [elemento, tamano] : medidas.tamanos) {
        if (elemento >= 0 && elemento < elementos_) {
            propios_.push_back({elemento, escalar(tamano, medidas.zoom), 0});
        }
    }
    std::sort(propios_.begin(), propios_.end(),
              [](const Propio& a, const Propio& b) { return a.elemento < b.elemento; });
    std::int64_t diferencia = 0;
    for (Propio& propio : propios_) {
        propio.inicio = std::int64_t{propio.elemento} * predeterminado_ + diferencia;
        diferencia += propio.tamano - std::int64_t{predeterminado_};
    }
}

void Eje::sumarTodos(const MedidasEje& medidas) {
    finales_.assign(static_cast<std::size_t>(elementos_), predeterminado_);
    for (const auto& [elemento, tamano] : medidas.tamanos) {
        if (elemento >= 0 && elemento < elementos_) {
            finales_[static_cast<std::size_t>(elemento)] = escalar(tamano, medidas.zoom);
        }
    }
    std::partial_sum(finales_.begin(), finales_.end(), finales_.begin());
}

std::vector<Eje::Propio>::const_iterator Eje::primeroDesde(int elemento) const {
    return std::lower_bound(
        propios_.begin(), propios_.end(), elemento,
        [](const Propio& propio, int buscado) { return propio.elemento < buscado; });
}

int Eje::tamano(int elemento) const {
    if (!finales_.empty()) {
        return static_cast<int>(posicion(elemento + 1) - posicion(elemento));
    }
    const auto propio = primeroDesde(elemento);
    return propio != propios_.end() && propio->elemento == elemento ? propio->tamano
                                                                    : predeterminado_;
}

std::int64_t Eje::posicion(int elemento) const {
    elemento = std::clamp(elemento, 0, elementos_);
    if (!finales_.empty()) {
        return elemento == 0 ? 0 : finales_[static_cast<std::size_t>(elemento) - 1];
    }
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
    if (!finales_.empty()) {
        return static_cast<int>(std::upper_bound(finales_.begin(), finales_.end(), posicion) -
                                finales_.begin());
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

const Eje& EjeRecordado::de(const MedidasEje& medidas) {
    // NaN es igual a sí mismo: también con él vale el eje recordado.
    const bool mismoZoom = zoom_ == medidas.zoom || (std::isnan(zoom_) && std::isnan(medidas.zoom));
    if (!mismoZoom || eje_.elementos() != medidas.elementos ||
        !tamanos_.comparteCon(medidas.tamanos)) {
        eje_ = Eje(medidas);
        tamanos_ = medidas.tamanos;
        zoom_ = medidas.zoom;
    }
    return eje_;
}

} // namespace renderizador
