#include "model/tabla_indices.h"

#include <random>

namespace nucleo {

namespace {

struct Semilla {
    std::uint64_t suma;
    std::uint64_t factor; ///< impar
};

const Semilla& semilla() {
    static const Semilla unica = [] {
        std::random_device azar;
        const auto palabra = [&azar] {
            return (static_cast<std::uint64_t>(azar()) << 32) | static_cast<std::uint64_t>(azar());
        };
        return Semilla{palabra(), palabra() | 1};
    }();
    return unica;
}

constexpr std::uint64_t kAvalancha = 0x9fb21c651e98df25ULL;
constexpr std::size_t kSitiosIniciales = 64;

} // namespace

std::uint32_t mezclarClave(std::uint64_t clave) {
    const Semilla& s = semilla();
    std::uint64_t x = (clave ^ s.suma) * s.factor;
    x = (x ^ (x >> 32)) * kAvalancha;
    return static_cast<std::uint32_t>(x >> 32);
}

std::uint32_t mezclarClave(std::uint64_t alta, std::uint64_t baja) {
    const std::uint64_t x = (alta ^ semilla().suma) * semilla().factor;
    return mezclarClave(baja ^ x ^ (x >> 29));
}

void TablaIndices::insertar(std::uint32_t mezcla, std::uint32_t indice) {
    if ((cuenta_ + 1) * 2 > sitios_.size())
        crecer();
    std::size_t i = mezcla & mascara_;
    while (sitios_[i].indice != 0)
        i = (i + 1) & mascara_;
    sitios_[i] = {mezcla, indice};
    ++cuenta_;
}

void TablaIndices::quitar(std::uint32_t mezcla, std::uint32_t indice) {
    if (sitios_.empty())
        return;
    std::size_t hueco = mezcla & mascara_;
    while (sitios_[hueco].indice != indice) {
        if (sitios_[hueco].indice == 0)
            return;
        hueco = (hueco + 1) & mascara_;
    }
    // Los que siguen retroceden al hueco si su búsqueda pasa por él: así no quedan marcas de
    // borrado.
    for (std::size_t i = (hueco + 1) & mascara_; sitios_[i].indice != 0; i = (i + 1) & mascara_) {
        const std::size_t desdeSuSitio = (i - (sitios_[i].mezcla & mascara_)) & mascara_;
        if (desdeSuSitio >= ((i - hueco) & mascara_)) {
            sitios_[hueco] = sitios_[i];
            hueco = i;
        }
    }
    sitios_[hueco] = {};
    --cuenta_;
}

void TablaIndices::vaciar() {
    sitios_.assign(sitios_.size(), Sitio{});
    cuenta_ = 0;
}

void TablaIndices::crecer() {
    const std::size_t tamano = sitios_.empty() ? kSitiosIniciales : sitios_.size() * 2;
    std::vector<Sitio> viejos = std::exchange(sitios_, std::vector<Sitio>(tamano));
    mascara_ = tamano - 1;
    for (const Sitio& sitio : viejos) {
        if (sitio.indice == 0)
            continue;
        std::size_t i = sitio.mezcla & mascara_;
        while (sitios_[i].indice != 0)
            i = (i + 1) & mascara_;
        sitios_[i] = sitio;
    }
}

} // namespace nucleo
