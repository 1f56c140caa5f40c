#include "model/grafo_dependencias.h"

#include <bit>
#include <utility>

namespace nucleo {

namespace {

constexpr std::uint64_t kMascaraFilaBloque = 0xfULL << 16;
constexpr std::uint32_t kLargoExacto = 16;

/// Las tiradas se reutilizan entre largos de la misma clase: exactos hasta 16, después potencias de
/// dos.
std::size_t claseDeTirada(std::uint32_t cuenta) {
    if (cuenta <= kLargoExacto)
        return cuenta;
    return kLargoExacto + static_cast<std::size_t>(std::bit_width(cuenta - 1)) - 4;
}
std::uint32_t capacidadDeTirada(std::uint32_t cuenta) {
    return cuenta <= kLargoExacto ? cuenta : std::bit_ceil(cuenta);
}

} // namespace

GrafoDependencias::Ranura GrafoDependencias::ranuraDe(std::uint64_t clave) const {
    const std::uint64_t base = clave & ~kMascaraFilaBloque;
    const std::uint32_t bloque =
        tablaBloques_.buscar(mezclarClave(base), [this, base](std::uint32_t candidato) {
            return bloques_[candidato].claveBase == base;
        });
    return bloque == 0 ? 0
                       : bloque * kFilasBloque +
                             static_cast<std::uint32_t>((clave & kMascaraFilaBloque) >> 16);
}

GrafoDependencias::Ranura GrafoDependencias::ranuraPara(std::uint64_t clave) {
    const std::uint64_t base = clave & ~kMascaraFilaBloque;
    const auto enBloque = static_cast<std::uint32_t>((clave & kMascaraFilaBloque) >> 16);
    BloqueReciente& reciente = recientes_[clave % kRecientes];
    if (reciente.bloque != 0 && reciente.claveBase == base)
        return reciente.bloque * kFilasBloque + enBloque;
    const std::uint32_t mezcla = mezclarClave(base);
    std::uint32_t bloque = tablaBloques_.buscar(mezcla, [this, base](std::uint32_t candidato) {
        return bloques_[candidato].claveBase == base;
    });
    if (bloque == 0) {
        bloque = static_cast<std::uint32_t>(bloques_.size());
        bloques_.emplace_back().claveBase = base;
        tablaBloques_.insertar(mezcla, bloque);
    }
    reciente = {base, bloque};
    return bloque * kFilasBloque + enBloque;
}

std::uint64_t GrafoDependencias::claveDeRanura(Ranura ranura) const {
    return bloques_[ranura / kFilasBloque].claveBase |
           (static_cast<std::uint64_t>(ranura % kFilasBloque) << 16);
}

GrafoDependencias::IdReferencia& GrafoDependencias::cabezaDe(std::uint32_t destino) {
    if ((destino & kEsRectangulo) != 0)
        return lectoresDeRango_[destino & ~kEsRectangulo];
    return celdilla(destino).lectores;
}

GrafoDependencias::IdReferencia GrafoDependencias::tomarTirada(std::uint32_t cuenta) {
    const std::size_t clase = claseDeTirada(cuenta);
    if (clase < tiradasLibres_.size() && !tiradasLibres_[clase].empty()) {
        const IdReferencia primera = tiradasLibres_[clase].back();
        tiradasLibres_[clase].pop_back();
        return primera;
    }
    const auto primera = static_cast<IdReferencia>(referencias_.size());
    referencias_.resize(referencias_.size() + capacidadDeTirada(cuenta));
    return primera;
}

void GrafoDependencias::soltarTirada(IdReferencia primera, std::uint32_t cuenta) {
    const std::size_t clase = claseDeTirada(cuenta);
    if (tiradasLibres_.size() <= clase)
        tiradasLibres_.resize(clase + 1);
    tiradasLibres_[clase].push_back(primera);
}

void GrafoDependencias::enlazar(IdReferencia referencia, std::uint32_t destino, IdFormula lectora) {
    IdReferencia& cabeza = cabezaDe(destino);
    referencias_[referencia] = {destino, lectora, cabeza, 0};
    if (cabeza != 0)
        referencias_[cabeza].anterior = referencia;
    cabeza = referencia;
}

void GrafoDependencias::desenlazar(IdReferencia referencia) {
    const Referencia r = referencias_[referencia];
    if (r.siguiente != 0)
        referencias_[r.siguiente].anterior = r.anterior;
    if (r.anterior != 0) {
        referencias_[r.anterior].siguiente = r.siguiente;
        return;
    }
    cabezaDe(r.destino) = r.siguiente;
    if (r.siguiente == 0 && (r.destino & kEsRectangulo) != 0)
        rangos_.quitar(r.destino & ~kEsRectangulo);
}

void GrafoDependencias::soltarReferencias(IdFormula formula) {
    Formula& f = formulas_[formula];
    if (f.cuenta == 0)
        return;
    for (std::uint32_t i = 0; i < f.cuenta; ++i)
        desenlazar(f.primera + i);
    soltarTirada(f.primera, f.cuenta);
    ++version_;
    f.cuenta = 0;
    f.tomadasComoSeDieron = false;
    --conPrecedentes_;
}

std::uint32_t GrafoDependencias::destinoPara(const BloqueDeHoja& bloque) {
    if (bloque.rango.fila1 == bloque.rango.fila2 && bloque.rango.col1 == bloque.rango.col2)
        return ranuraPara(claveCelda(bloque.hoja, bloque.rango.fila1, bloque.rango.col1));
    const IndiceRangos::Id id = rangos_.obtener(bloque);
    if (lectoresDeRango_.size() <= id)
        lectoresDeRango_.resize(id + 1);
    return kEsRectangulo | id;
}

GrafoDependencias::IdFormula GrafoDependencias::apuntarFormula(std::uint64_t clave) {
    Celdilla& sitio = celdilla(ranuraPara(clave));
    if (sitio.formula != 0)
        return sitio.formula;
    if (formulasLibres_.empty()) {
        sitio.formula = static_cast<IdFormula>(formulas_.size());
        formulas_.emplace_back();
    } else {
        sitio.formula = formulasLibres_.back();
        formulasLibres_.pop_back();
    }
    formulas_[sitio.formula] = {clave, 0, 0, 0, false};
    return sitio.formula;
}

GrafoDependencias::IdFormula GrafoDependencias::formulaEn(std::uint64_t clave) const {
    const Ranura ranura = ranuraDe(clave);
    return ranura == 0 ? 0 : celdilla(ranura).formula;
}

void GrafoDependencias::establecerPrecedentes(std::uint64_t clave,
                                              std::span<const std::uint64_t> precedentes) {
    quitarDependencias(clave);
    if (precedentes.empty())
        return;
    const IdFormula formula = apuntarFormula(clave);
    const auto cuenta = static_cast<std::uint32_t>(precedentes.size());
    const IdReferencia primera = tomarTirada(cuenta);
    for (std::uint32_t i = 0; i < cuenta; ++i)
        enlazar(primera + i, ranuraPara(precedentes[i]), formula);
    Formula& f = formulas_[formula];
    f.primera = primera;
    f.cuenta = cuenta;
    f.tomadasComoSeDieron = true;
    ++version_;
    ++conPrecedentes_;
}

void GrafoDependencias::establecerBloques(std::uint64_t clave,
                                          std::span<const BloqueDeHoja> bloques) {
    const IdFormula anterior = formulaEn(clave);
    if (anterior == 0 && bloques.empty())
        return;
    if (anterior != 0)
        soltarReferencias(anterior);
    if (bloques.empty()) {
        quitarDependencias(clave);
        return;
    }
    ponerBloques(anterior != 0 ? anterior : apuntarFormula(clave), bloques);
}

void GrafoDependencias::ponerBloques(IdFormula formula, std::span<const BloqueDeHoja> bloques) {
    if (bloques.empty())
        return;
    const auto cuenta = static_cast<std::uint32_t>(bloques.size());
    const IdReferencia primera = tomarTirada(cuenta);
    for (std::uint32_t i = 0; i < cuenta; ++i)
        enlazar(primera + i, destinoPara(bloques[i]), formula);
    Formula& f = formulas_[formula];
    f.primera = primera;
    f.cuenta = cuenta;
    f.tomadasComoSeDieron = false;
    ++version_;
    ++conPrecedentes_;
}

void GrafoDependencias::quitarDependencias(std::uint64_t clave) {
    const Ranura ranura = ranuraDe(clave);
    if (ranura == 0)
        return;
    const IdFormula formula = std::exchange(celdilla(ranura).formula, 0);
    if (formula == 0)
        return;
    soltarReferencias(formula);
    formulas_[formula] = {};
    formulasLibres_.push_back(formula);
}

void GrafoDependencias::limpiar() {
    tablaBloques_.vaciar();
    bloques_.resize(1);
    recientes_.fill({});
    formulas_.resize(1);
    formulasLibres_.clear();
    referencias_.resize(1);
    for (std::vector<IdReferencia>& libres : tiradasLibres_)
        libres.clear();
    rangos_.vaciar();
    lectoresDeRango_.resize(1);
    ++version_;
    conPrecedentes_ = 0;
}

} // namespace nucleo
