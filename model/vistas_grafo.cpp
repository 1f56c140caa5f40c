#include "model/vistas_grafo.h"

#include "model/grafo_dependencias.h"

#include <algorithm>
#include <stdexcept>

namespace nucleo {

namespace {

std::shared_ptr<const std::vector<std::uint64_t>> compartir(std::vector<std::uint64_t> claves) {
    return std::make_shared<const std::vector<std::uint64_t>>(std::move(claves));
}

} // namespace

std::vector<std::uint64_t>::const_iterator ConjuntoLectores::find(std::uint64_t clave) const {
    const auto sitio = std::lower_bound(claves_.begin(), claves_.end(), clave);
    return sitio != claves_.end() && *sitio == clave ? sitio : claves_.end();
}

std::size_t ConjuntoLectores::count(std::uint64_t clave) const {
    return find(clave) != claves_.end() ? 1 : 0;
}

std::size_t VistaDependientes::size() const {
    return grafo_->celdasLeidas().size();
}

bool VistaDependientes::empty() const {
    return grafo_->cuentaFormulas() == 0;
}

std::size_t VistaDependientes::count(std::uint64_t clave) const {
    return grafo_->tieneLectores(clave) ? 1 : 0;
}

ConjuntoLectores VistaDependientes::at(std::uint64_t clave) const {
    ConjuntoLectores lectores(grafo_->lectoresDe(clave));
    if (lectores.empty())
        throw std::out_of_range("ninguna fórmula lee esa celda");
    return lectores;
}

VistaDependientes::const_iterator VistaDependientes::find(std::uint64_t clave) const {
    if (count(clave) == 0)
        return end();
    return {this, compartir({clave}), 0};
}

VistaDependientes::const_iterator VistaDependientes::begin() const {
    return {this, compartir(grafo_->celdasLeidas()), 0};
}

std::size_t VistaPrecedentes::size() const {
    return grafo_->cuentaFormulas();
}

std::size_t VistaPrecedentes::count(std::uint64_t clave) const {
    return grafo_->tienePrecedentes(clave) ? 1 : 0;
}

std::vector<std::uint64_t> VistaPrecedentes::at(std::uint64_t clave) const {
    if (count(clave) == 0)
        throw std::out_of_range("esa celda no tiene precedentes");
    return grafo_->precedentesDe(clave);
}

VistaPrecedentes::const_iterator VistaPrecedentes::find(std::uint64_t clave) const {
    if (count(clave) == 0)
        return end();
    return {this, compartir({clave}), 0};
}

VistaPrecedentes::const_iterator VistaPrecedentes::begin() const {
    return {this, compartir(grafo_->formulas()), 0};
}

} // namespace nucleo
