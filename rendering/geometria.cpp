#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/eje_vista.h"
#include "rendering/renderizador.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace renderizador {

namespace {

constexpr int kToleranciaBorde = 5;
/// Cuánto se corre el punto antes de buscar el borde: así la zona de agarre queda centrada en él.
constexpr int kCorreccionBorde = 3;
/// Vista tan grande que no acota nada, para los aciertos en los encabezados.
constexpr QSize kVistaSinLimite(16777216, 16777216);
/// Cota de las coordenadas de un rectángulo: su ancho y su alto caben siempre en un `int`.
constexpr std::int64_t kCotaRectangulo = 1'000'000'000;

int saturado(std::int64_t pixeles) {
    return static_cast<int>(std::clamp<std::int64_t>(pixeles, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

QRect rectangulo(std::int64_t x, std::int64_t y, std::int64_t ancho, std::int64_t alto) {
    const auto acotar = [](std::int64_t valor) {
        return static_cast<int>(std::clamp(valor, -kCotaRectangulo, kCotaRectangulo));
    };
    QRect resultado;
    resultado.setCoords(acotar(x), acotar(y), acotar(x + ancho - 1), acotar(y + alto - 1));
    return resultado;
}

bool cercaDelBorde(std::int64_t punto, std::int64_t borde) {
    return std::abs(punto - borde) < kToleranciaBorde;
}

} // namespace

EjeVista Renderizador::ejeColumnas() const {
    return {columnas_.de(medidasColumnas(*hoja, zoom)), hoja->columnasInmovilizadas,
            kAnchoEncabezado, desplazamientoX};
}

EjeVista Renderizador::ejeFilas() const {
    return {filas_.de(medidasFilas(*hoja, zoom)), hoja->filasInmovilizadas, kAltoEncabezado,
            desplazamientoY};
}

int Renderizador::anchoCol(int col) const {
    return escalar(hoja != nullptr ? hoja->anchoColumna(col) : nucleo::kAnchoPredeterminado, zoom);
}

int Renderizador::altoFila(int fila) const {
    return escalar(hoja != nullptr ? hoja->altoFila(fila) : nucleo::kAltoPredeterminado, zoom);
}

int Renderizador::anchoPanelFijo() const {
    return hoja != nullptr ? saturado(ejeColumnas().panelFijo()) : 0;
}

int Renderizador::altoPanelFijo() const {
    return hoja != nullptr ? saturado(ejeFilas().panelFijo()) : 0;
}

int Renderizador::xDeCol(int col) const {
    if (hoja != nullptr) {
        return saturado(ejeColumnas().inicio(col));
    }
    return col < 0 ? kAnchoEncabezado
                   : saturado(std::int64_t{kAnchoEncabezado} - desplazamientoX +
                              std::int64_t{col} * anchoCol(col));
}

int Renderizador::yDeFila(int fila) const {
    if (hoja != nullptr) {
        return saturado(ejeFilas().inicio(fila));
    }
    return fila < 0 ? kAltoEncabezado
                    : saturado(std::int64_t{kAltoEncabezado} - desplazamientoY +
                               std::int64_t{fila} * altoFila(fila));
}

QRect Renderizador::rectCelda(int fila, int col) const {
    return rectangulo(xDeCol(col), yDeFila(fila), anchoCol(col), altoFila(fila));
}

QRect Renderizador::rectCeldaConFusion(int fila, int col) const {
    const nucleo::RangoFusion* fusion = hoja != nullptr ? hoja->fusionEn(fila, col) : nullptr;
    return fusion != nullptr ? rectFusion(*fusion) : rectCelda(fila, col);
}

QRect Renderizador::rectFusion(const nucleo::RangoFusion& fusion) const {
    const EjeVista columnas = ejeColumnas();
    const EjeVista filas = ejeFilas();
    // Un archivo puede traer fusiones que salen de la cuadrícula: lo que sobra no ocupa píxeles.
    const int fila1 = std::clamp(fusion.fila1, 0, nucleo::kUltimaFila);
    const int col1 = std::clamp(fusion.col1, 0, nucleo::kUltimaColumna);
    const int fila2 = std::clamp(fusion.fila2, fila1, nucleo::kUltimaFila);
    const int col2 = std::clamp(fusion.col2, col1, nucleo::kUltimaColumna);
    return rectangulo(columnas.inicio(col1), filas.inicio(fila1), columnas.suma(col1, col2 + 1),
                      filas.suma(fila1, fila2 + 1));
}

bool Renderizador::celdaEnPunto(const QPoint& punto, const QSize& vista, int& fila,
                                int& col) const {
    if (hoja == nullptr || punto.x() < kAnchoEncabezado || punto.y() < kAltoEncabezado ||
        punto.x() >= vista.width() || punto.y() >= vista.height()) {
        return false;
    }
    const int colHallada = ejeColumnas().en(punto.x());
    const int filaHallada = ejeFilas().en(punto.y());
    if (colHallada < 0 || filaHallada < 0) {
        return false;
    }
    fila = filaHallada;
    col = colHallada;
    return true;
}

int Renderizador::colEnEncabezado(const QPoint& punto) const {
    int fila = -1;
    int col = -1;
    if (punto.y() < kAltoEncabezado) {
        celdaEnPunto({punto.x(), kAltoEncabezado}, kVistaSinLimite, fila, col);
    }
    return col;
}

int Renderizador::filaEnEncabezado(const QPoint& punto) const {
    int fila = -1;
    int col = -1;
    if (punto.x() < kAnchoEncabezado) {
        celdaEnPunto({kAnchoEncabezado, punto.y()}, kVistaSinLimite, fila, col);
    }
    return fila;
}

int Renderizador::bordeColEnPunto(const QPoint& punto) const {
    const int corregido = saturado(std::int64_t{punto.x()} - kCorreccionBorde);
    const int col = colEnEncabezado({corregido, punto.y()});
    return col >= 0 && cercaDelBorde(punto.x(), ejeColumnas().fin(col)) ? col : -1;
}

int Renderizador::bordeFilaEnPunto(const QPoint& punto) const {
    const int corregido = saturado(std::int64_t{punto.y()} - kCorreccionBorde);
    const int fila = filaEnEncabezado({punto.x(), corregido});
    return fila >= 0 && cercaDelBorde(punto.y(), ejeFilas().fin(fila)) ? fila : -1;
}

QSize Renderizador::tamanoContenido() const {
    if (hoja == nullptr) {
        return {0, 0};
    }
    constexpr std::int64_t kMargenColumnas = 12;
    constexpr std::int64_t kMargenFilas = 40;
    const auto columnas =
        std::clamp<std::int64_t>(hoja->ultimaColUsada() + kMargenColumnas, 40, nucleo::kColumnas);
    const auto filas =
        std::clamp<std::int64_t>(hoja->ultimaFilaUsada() + kMargenFilas, 120, nucleo::kFilas);
    const EjeVista ejeX = ejeColumnas();
    const EjeVista ejeY = ejeFilas();
    return {saturado(ejeX.suma(ejeX.fijos(), static_cast<int>(columnas))),
            saturado(ejeY.suma(ejeY.fijos(), static_cast<int>(filas)))};
}

void Renderizador::filasVisibles(const QSize& vista, std::vector<int>& filas) const {
    filas.clear();
    if (hoja != nullptr) {
        ejeFilas().visibles(vista.height(), filas);
    }
}

void Renderizador::colsVisibles(const QSize& vista, std::vector<int>& cols) const {
    cols.clear();
    if (hoja != nullptr) {
        ejeColumnas().visibles(vista.width(), cols);
    }
}

} // namespace renderizador
