#include "rendering/mapa_fusiones.h"

#include <algorithm>
#include <cstdint>

namespace renderizador {

namespace {

/// Posiciones [primera, final) de los tramos cuyo elemento cae entre dos extremos incluidos.
struct Posiciones {
    std::size_t primera;
    std::size_t final;
};

Posiciones posiciones(const std::vector<TramoVisible>& tramos, int desde, int hasta) {
    const auto primera = std::partition_point(
        tramos.begin(), tramos.end(), [desde](const TramoVisible& t) { return t.indice < desde; });
    const auto final = std::partition_point(
        primera, tramos.end(), [hasta](const TramoVisible& t) { return t.indice <= hasta; });
    return {static_cast<std::size_t>(primera - tramos.begin()),
            static_cast<std::size_t>(final - tramos.begin())};
}

/// Por cada celda, la siguiente de su fila que no tiene dueña: las ya repartidas se saltan.
class Libres {
  public:
    Libres(std::size_t filas, std::size_t columnas)
        : ancho_(columnas + 1), siguiente_(filas * ancho_) {
        for (std::size_t i = 0; i < siguiente_.size(); ++i) {
            siguiente_[i] = static_cast<std::uint32_t>(i % ancho_);
        }
    }

    std::size_t desde(std::size_t fila, std::size_t col) {
        std::uint32_t* const base = siguiente_.data() + fila * ancho_;
        auto actual = static_cast<std::uint32_t>(col);
        while (base[actual] != actual) {
            base[actual] = base[base[actual]];
            actual = base[actual];
        }
        return actual;
    }
    void ocupar(std::size_t fila, std::size_t col) {
        siguiente_[fila * ancho_ + col] = static_cast<std::uint32_t>(col + 1);
    }

  private:
    std::size_t ancho_;
    std::vector<std::uint32_t> siguiente_;
};

} // namespace

MapaFusiones::MapaFusiones(const std::vector<nucleo::RangoFusion>& fusiones, const Region& region)
    : columnas_(region.cols.tramos.size()) {
    const auto& filas = region.filas.tramos;
    const auto& cols = region.cols.tramos;
    if (filas.empty() || cols.empty()) {
        return;
    }
    const auto asoma = [&](const nucleo::RangoFusion& fusion) {
        return fusion.fila1 <= filas.back().indice && fusion.fila2 >= filas.front().indice &&
               fusion.col1 <= cols.back().indice && fusion.col2 >= cols.front().indice;
    };
    auto fusion = std::find_if(fusiones.begin(), fusiones.end(), asoma);
    if (fusion == fusiones.end()) {
        return;
    }
    duenas_.assign(filas.size() * columnas_, nullptr);
    Libres libres(filas.size(), columnas_);
    std::size_t sinDuena = duenas_.size();
    for (; fusion != fusiones.end() && sinDuena > 0; ++fusion) {
        if (!asoma(*fusion)) {
            continue;
        }
        const auto [fila1, filaFin] = posiciones(filas, fusion->fila1, fusion->fila2);
        const auto [col1, colFin] = posiciones(cols, fusion->col1, fusion->col2);
        const std::size_t antes = sinDuena;
        for (std::size_t fila = fila1; fila < filaFin; ++fila) {
            for (std::size_t col = libres.desde(fila, col1); col < colFin;
                 col = libres.desde(fila, col + 1)) {
                duenas_[fila * columnas_ + col] = &*fusion;
                libres.ocupar(fila, col);
                --sinDuena;
            }
        }
        if (sinDuena < antes) {
            visibles_.push_back(&*fusion);
        }
    }
}

} // namespace renderizador
