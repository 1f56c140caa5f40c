#include "model/grafo_dependencias.h"
#include "model/limites.h"

#include <algorithm>
#include <utility>

namespace nucleo {

namespace {

constexpr std::uint64_t kBitsSiempreCero = 0xffULL << 40;

/// Si la clave es de una celda que un rectángulo puede contener.
bool enLaCuadricula(std::uint64_t clave) {
    return (clave & kBitsSiempreCero) == 0 && filaDeClave(clave) <= kUltimaFila &&
           columnaDeClave(clave) <= kUltimaColumna;
}

void ordenarSinRepetir(std::vector<std::uint64_t>& claves) {
    std::sort(claves.begin(), claves.end());
    claves.erase(std::unique(claves.begin(), claves.end()), claves.end());
}

void expandir(const BloqueDeHoja& bloque, std::vector<std::uint64_t>& claves) {
    for (int fila = bloque.rango.fila1; fila <= bloque.rango.fila2; ++fila) {
        for (int col = bloque.rango.col1; col <= bloque.rango.col2; ++col)
            claves.push_back(claveCelda(bloque.hoja, fila, col));
    }
}

} // namespace

template <typename Visitante>
void GrafoDependencias::visitarDestinos(std::uint64_t celda, Visitante&& v) const {
    const Ranura ranura = ranuraDe(celda);
    if (ranura != 0)
        v(celdilla(ranura).lectores);
    if (!enLaCuadricula(celda))
        return;
    rangos_.visitarQueContienen(hojaDeClave(celda), filaDeClave(celda), columnaDeClave(celda),
                                [&](IndiceRangos::Id id) { v(lectoresDeRango_[id]); });
}

bool GrafoDependencias::tienePrecedentes(std::uint64_t formula) const {
    const IdFormula id = formulaEn(formula);
    return id != 0 && formulas_[id].cuenta != 0;
}

std::vector<std::uint64_t> GrafoDependencias::precedentesDe(std::uint64_t formula) const {
    std::vector<std::uint64_t> claves;
    const IdFormula id = formulaEn(formula);
    if (id == 0)
        return claves;
    const Formula& f = formulas_[id];
    for (std::uint32_t i = 0; i < f.cuenta; ++i) {
        const std::uint32_t destino = referencias_[f.primera + i].destino;
        if ((destino & kEsRectangulo) != 0)
            expandir(rangos_.bloque(destino & ~kEsRectangulo), claves);
        else
            claves.push_back(claveDeRanura(destino));
    }
    if (!f.tomadasComoSeDieron)
        ordenarSinRepetir(claves);
    return claves;
}

bool GrafoDependencias::tieneLectores(std::uint64_t celda) const {
    bool hay = false;
    visitarDestinos(celda, [&hay](IdReferencia cabeza) { hay = hay || cabeza != 0; });
    return hay;
}

std::vector<std::uint64_t> GrafoDependencias::lectoresDe(std::uint64_t celda) const {
    std::vector<std::uint64_t> claves;
    visitarDestinos(celda, [&](IdReferencia cabeza) {
        for (IdReferencia r = cabeza; r != 0; r = referencias_[r].siguiente)
            claves.push_back(formulas_[referencias_[r].lectora].clave);
    });
    ordenarSinRepetir(claves);
    return claves;
}

std::vector<std::uint64_t> GrafoDependencias::formulas() const {
    std::vector<std::uint64_t> claves;
    claves.reserve(conPrecedentes_);
    for (const Formula& formula : formulas_) {
        if (formula.cuenta != 0)
            claves.push_back(formula.clave);
    }
    std::sort(claves.begin(), claves.end());
    return claves;
}

std::vector<std::uint64_t> GrafoDependencias::celdasLeidas() const {
    std::vector<std::uint64_t> claves;
    for (Ranura ranura = kFilasBloque; ranura < bloques_.size() * kFilasBloque; ++ranura) {
        if (celdilla(ranura).lectores != 0)
            claves.push_back(claveDeRanura(ranura));
    }
    for (IndiceRangos::Id id = 1; id <= rangos_.ultimo(); ++id) {
        if (rangos_.existe(id))
            expandir(rangos_.bloque(id), claves);
    }
    ordenarSinRepetir(claves);
    return claves;
}

GrafoDependencias::Lectura GrafoDependencias::lectura(IdFormula formula,
                                                      std::uint32_t indice) const {
    const std::uint32_t destino = referencias_[formulas_[formula].primera + indice].destino;
    if ((destino & kEsRectangulo) != 0)
        return {true, 0, rangos_.bloque(destino & ~kEsRectangulo)};
    return {false, celdilla(destino).formula, {}};
}

void GrafoDependencias::empezarRecorrido() {
    ++recorrido_;
    rangos_.empezarRecorrido();
}

bool GrafoDependencias::alcanzar(IdFormula formula) {
    return std::exchange(formulas_[formula].recorrido, recorrido_) != recorrido_;
}

void GrafoDependencias::alcanzarLectores(std::uint64_t celda, std::vector<IdFormula>& alcanzadas) {
    const auto seguir = [&](IdReferencia cabeza) {
        for (IdReferencia r = cabeza; r != 0; r = referencias_[r].siguiente) {
            if (alcanzar(referencias_[r].lectora))
                alcanzadas.push_back(referencias_[r].lectora);
        }
    };
    const Ranura ranura = ranuraDe(celda);
    if (ranura != 0)
        seguir(celdilla(ranura).lectores);
    if (rangos_.cuenta() == 0 || !enLaCuadricula(celda))
        return;
    rangos_.visitarNuevos(hojaDeClave(celda), filaDeClave(celda), columnaDeClave(celda),
                          [&](IndiceRangos::Id id) { seguir(lectoresDeRango_[id]); });
}

} // namespace nucleo
