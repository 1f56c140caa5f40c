#include "model/grafo_dependencias.h"

#include "model/celda.h"

#include <algorithm>

namespace nucleo {

void GrafoDependencias::establecerPrecedentes(std::uint64_t clave,
                                              std::vector<std::uint64_t> precedentes) {
    quitarDependencias(clave);
    if (precedentes.empty())
        return;
    for (const std::uint64_t precedente : precedentes)
        lectores_[precedente].insert(clave);
    precedentes_[clave] = std::move(precedentes);
}

void GrafoDependencias::establecerBloques(std::uint64_t clave,
                                          std::span<const BloqueDeHoja> bloques) {
    std::vector<std::uint64_t> celdas;
    for (const BloqueDeHoja& bloque : bloques) {
        for (int fila = bloque.rango.fila1; fila <= bloque.rango.fila2; ++fila) {
            for (int col = bloque.rango.col1; col <= bloque.rango.col2; ++col)
                celdas.push_back(claveCelda(bloque.hoja, fila, col));
        }
    }
    std::sort(celdas.begin(), celdas.end());
    celdas.erase(std::unique(celdas.begin(), celdas.end()), celdas.end());
    establecerPrecedentes(clave, std::move(celdas));
}

void GrafoDependencias::quitarDependencias(std::uint64_t clave) {
    const auto entrada = precedentes_.find(clave);
    if (entrada == precedentes_.end())
        return;
    for (const std::uint64_t precedente : entrada->second) {
        const auto conjunto = lectores_.find(precedente);
        if (conjunto == lectores_.end())
            continue;
        conjunto->second.erase(clave);
        if (conjunto->second.empty())
            lectores_.erase(conjunto);
    }
    precedentes_.erase(entrada);
}

void GrafoDependencias::limpiar() {
    lectores_.clear();
    precedentes_.clear();
}

bool GrafoDependencias::tienePrecedentes(std::uint64_t formula) const {
    return precedentes_.count(formula) != 0;
}

std::vector<std::uint64_t> GrafoDependencias::precedentesDe(std::uint64_t formula) const {
    const auto entrada = precedentes_.find(formula);
    return entrada == precedentes_.end() ? std::vector<std::uint64_t>{} : entrada->second;
}

bool GrafoDependencias::tieneLectores(std::uint64_t celda) const {
    return lectores_.count(celda) != 0;
}

std::vector<std::uint64_t> GrafoDependencias::lectoresDe(std::uint64_t celda) const {
    const auto conjunto = lectores_.find(celda);
    if (conjunto == lectores_.end())
        return {};
    std::vector<std::uint64_t> claves(conjunto->second.begin(), conjunto->second.end());
    std::sort(claves.begin(), claves.end());
    return claves;
}

std::size_t GrafoDependencias::cuentaFormulas() const {
    return precedentes_.size();
}

std::vector<std::uint64_t> GrafoDependencias::formulas() const {
    std::vector<std::uint64_t> claves;
    claves.reserve(precedentes_.size());
    for (const auto& entrada : precedentes_)
        claves.push_back(entrada.first);
    std::sort(claves.begin(), claves.end());
    return claves;
}

std::vector<std::uint64_t> GrafoDependencias::celdasLeidas() const {
    std::vector<std::uint64_t> claves;
    claves.reserve(lectores_.size());
    for (const auto& entrada : lectores_)
        claves.push_back(entrada.first);
    std::sort(claves.begin(), claves.end());
    return claves;
}

} // namespace nucleo
