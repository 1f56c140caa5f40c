#include "printing/paginas.h"

#include "model/celda.h"
#include "model/limites.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace impresion {

namespace {

constexpr double kEscalaMinima = 0.1;

struct Tramo {
    int primero;
    int ultimo;
};

/// Tramos seguidos que no pasan de `util`; lo que por sí solo no cabe va solo, y se recorta.
template <typename Medida>
std::vector<Tramo> enTramos(int desde, int hasta, int util, Medida&& medida) {
    std::vector<Tramo> tramos;
    std::int64_t ocupado = 0;
    for (int i = desde; i <= hasta; ++i) {
        const std::int64_t propio = medida(i);
        if (tramos.empty() || ocupado + propio > util) {
            tramos.push_back({i, i});
            ocupado = 0;
        }
        tramos.back().ultimo = i;
        ocupado += propio;
    }
    return tramos;
}

std::size_t tramoDe(const std::vector<Tramo>& tramos, int elemento) {
    const auto it = std::ranges::lower_bound(tramos, elemento, {}, &Tramo::ultimo);
    return static_cast<std::size_t>(it - tramos.begin());
}

} // namespace

nucleo::RangoCeldas zonaConContenido(const nucleo::Hoja& hoja) {
    return {0, 0, std::min(hoja.celdas.ultimaFilaConContenido(), nucleo::kUltimaFila),
            std::min(hoja.celdas.ultimaColConContenido(), nucleo::kUltimaColumna)};
}

int filasQueSeRepiten(const nucleo::Hoja& hoja, const nucleo::RangoCeldas& zona, double escala,
                      int alto) {
    const int filas = std::clamp(hoja.filasInmovilizadas, 0, nucleo::kFilas);
    if (zona.fila1 > 0 || zona.fila2 < filas) {
        return 0;
    }
    const Lamina lamina(hoja, filas, false, escala);
    return lamina.orla().height() <= alto / 2 ? filas : 0;
}

double escalaParaElAncho(const nucleo::Hoja& hoja, const nucleo::RangoCeldas& zona,
                         bool encabezados, int ancho) {
    const auto ocupa = [&](double escala) {
        const Lamina lamina(hoja, 0, encabezados, escala);
        return std::int64_t{lamina.medir(zona).width()} + lamina.orla().width();
    };
    if (ocupa(1.0) <= ancho) {
        return 1.0;
    }
    const Lamina lamina(hoja, 0, encabezados, 1.0);
    const double columnas = lamina.medir(zona).width();
    double escala = std::floor(1000.0 * (ancho - lamina.orla().width()) / columnas) / 1000.0;
    // Cada columna se redondea a un píxel: lo que sobre se quita poco a poco.
    while (escala > kEscalaMinima && ocupa(escala) > ancho) {
        escala -= 0.005;
    }
    return std::max(escala, kEscalaMinima);
}

std::vector<nucleo::RangoCeldas> repartir(const Lamina& lamina, const nucleo::Hoja& hoja,
                                          const nucleo::RangoCeldas& zona, const QSize& util) {
    const QSize cabe = util - lamina.orla();
    const auto filas = enTramos(zona.fila1, zona.fila2, cabe.height(),
                                [&](int fila) { return lamina.alto(fila); });
    const auto columnas =
        enTramos(zona.col1, zona.col2, cabe.width(), [&](int col) { return lamina.ancho(col); });
    std::vector<bool> conContenido(filas.size() * columnas.size());
    hoja.celdas.recorrerPorFilas(zona, [&](int fila, int col, const nucleo::Celda& celda) {
        if (celda.tipo != nucleo::TipoCelda::Vacia || celda.formato.colorFondo != 0) {
            conContenido[tramoDe(columnas, col) * filas.size() + tramoDe(filas, fila)] = true;
        }
        return true;
    });
    std::vector<nucleo::RangoCeldas> paginas;
    for (std::size_t i = 0; i < conContenido.size() && paginas.size() <= kMaximoPaginas; ++i) {
        if (conContenido[i]) {
            const Tramo& fila = filas[i % filas.size()];
            const Tramo& col = columnas[i / filas.size()];
            paginas.push_back({fila.primero, col.primero, fila.ultimo, col.ultimo});
        }
    }
    return paginas;
}

} // namespace impresion
