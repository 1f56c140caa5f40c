#include "model/vistas_grafo.h"

#include "model/grafo_dependencias.h"

#include <algorithm>
#include <stdexcept>

namespace nucleo {

std::vector<std::uint64_t>::const_iterator ConjuntoLectores::find(std::uint64_t clave) const {
    const auto sitio = std::lower_bound(claves_.begin(), claves_.end(), clave);
    return sitio != claves_.end() && *sitio == clave ? sitio : claves_.end();
}

std::size_t ConjuntoLectores::count(std::uint64_t clave) const {
    return find(clave) != claves_.end() ? 1 : 0;
}

template <typename Contenido> std::size_t VistaGrafo<Contenido>::size() const {
    if constexpr (kDependientes)
        return grafo_->celdasLeidas().size();
    else
        return grafo_->cuentaFormulas();
}

template <typename Contenido> std::size_t VistaGrafo<Contenido>::count(std::uint64_t clave) const {
    if constexpr (kDependientes)
        return grafo_->tieneLectores(clave) ? 1 : 0;
    else
        return grafo_->tienePrecedentes(clave) ? 1 : 0;
}

template <typename Contenido> std::vector<std::uint64_t> VistaGrafo<Contenido>::claves() const {
    if constexpr (kDependientes)
        return grafo_->celdasLeidas();
    else
        return grafo_->formulas();
}

template <typename Contenido> Contenido VistaGrafo<Contenido>::enumerar(std::uint64_t clave) const {
    if constexpr (kDependientes)
        return Contenido(grafo_->lectoresDe(clave));
    else
        return grafo_->precedentesDe(clave);
}

template <typename Contenido> bool VistaGrafo<Contenido>::empty() const {
    // Una fórmula con precedentes es a la vez una clave de una vista y un lector de la otra.
    return grafo_->cuentaFormulas() == 0;
}

template <typename Contenido>
auto VistaGrafo<Contenido>::pareja(std::uint64_t clave) const -> const value_type& {
    if (version_ != grafo_->version()) {
        for (auto& [otra, contenido] : enumerados_)
            contenido = enumerar(otra);
        version_ = grafo_->version();
    }
    const auto entrada = enumerados_.find(clave);
    return entrada != enumerados_.end() ? *entrada
                                        : *enumerados_.emplace(clave, enumerar(clave)).first;
}

template <typename Contenido>
const Contenido& VistaGrafo<Contenido>::at(std::uint64_t clave) const {
    if (count(clave) == 0)
        throw std::out_of_range("la celda no está en el grafo");
    return pareja(clave).second;
}

template class VistaGrafo<ConjuntoLectores>;
template class VistaGrafo<std::vector<std::uint64_t>>;

} // namespace nucleo
