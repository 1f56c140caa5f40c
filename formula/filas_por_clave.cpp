#include "formula/filas_por_clave.h"

#include "model/tabla_indices.h"

#include <algorithm>
#include <bit>

namespace motor_formulas {

void FilasPorClave::empezar() {
    anadidas_.clear();
}

void FilasPorClave::anadir(std::uint64_t clave, int fila) {
    anadidas_.push_back({clave, fila, 0});
}

void FilasPorClave::terminar() {
    sitios_.assign(std::bit_ceil(anadidas_.size() * 2 + 1), {});
    std::size_t repetidas = 0;
    for (Anadida& anadida : anadidas_) {
        anadida.sitio = static_cast<std::uint32_t>(sitioDe(anadida.clave));
        Sitio& sitio = sitios_[anadida.sitio];
        sitio.clave = anadida.clave;
        ++sitio.cuenta;
        repetidas += sitio.cuenta == 2 ? 2U : sitio.cuenta > 2 ? 1U : 0U;
    }
    filas_.resize(repetidas);
    // De abajo arriba cada clave llena su parte desde el final, y acaba apuntando al principio.
    int libres = 0;
    for (auto anadida = anadidas_.rbegin(); anadida != anadidas_.rend(); ++anadida) {
        Sitio& sitio = sitios_[anadida->sitio];
        if (sitio.cuenta == 1) {
            sitio.primera = anadida->fila;
            continue;
        }
        if (sitio.primera == kSinFilas) {
            libres += static_cast<int>(sitio.cuenta);
            sitio.primera = libres;
        }
        filas_[static_cast<std::size_t>(--sitio.primera)] = anadida->fila;
    }
}

std::size_t FilasPorClave::sitioDe(std::uint64_t clave) const {
    const std::size_t mascara = sitios_.size() - 1;
    std::size_t sitio = nucleo::mezclarClave(clave) & mascara;
    while (sitios_[sitio].cuenta != 0 && sitios_[sitio].clave != clave)
        sitio = (sitio + 1) & mascara;
    return sitio;
}

std::span<const int> FilasPorClave::filas(std::uint64_t clave, TramoFilas tramo) const {
    const Sitio& sitio = sitios_[sitioDe(clave)];
    if (sitio.cuenta == 0)
        return {};
    if (sitio.cuenta == 1) {
        const bool dentro = tramo.desde <= sitio.primera && sitio.primera <= tramo.hasta;
        return dentro ? std::span(&sitio.primera, 1) : std::span<const int>();
    }
    const auto suyas =
        std::span(filas_).subspan(static_cast<std::size_t>(sitio.primera), sitio.cuenta);
    const auto desde = std::lower_bound(suyas.begin(), suyas.end(), tramo.desde);
    return {desde, std::upper_bound(desde, suyas.end(), tramo.hasta)};
}

} // namespace motor_formulas
