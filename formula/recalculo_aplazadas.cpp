#include "formula/recalculo.h"

#include <algorithm>

namespace motor_formulas {

/// Calcula las fórmulas que leen rangos demasiado grandes, y las que dependen de ellas, después de
/// las que hay dentro de esos rangos. Donde eso cierra un ciclo manda solo el orden de las
/// dependencias registradas: se buscan las componentes conexas con las dos clases de lecturas, y
/// dentro de cada una se resuelve como si las blandas no estuvieran.
void Recalculo::resolverAplazadas() {
    if (aplazadas_.empty())
        return;
    modo_ = Modo::Aplazadas;
    leida_ = 0;
    for (const IdFormula formula : aplazadas_)
        estado(formula) = Estado::Pendiente;
    std::stable_sort(
        blandos_.begin(), blandos_.end(),
        [](const RangoBlando& a, const RangoBlando& b) { return a.formula < b.formula; });
    componentes_.assign(estados_.size(), Componente{});
    ultimoOrden_ = 0;
    pasosBlandos_ = 0;
    for (const IdFormula formula : aplazadas_) {
        if (estado(formula) == Estado::Pendiente && componentes_[formula].orden == 0)
            ordenarDesde(formula);
    }
    aplazadas_.clear();
    blandos_.clear();
}

/// Sus rangos demasiado grandes. Muchas fórmulas que se leen unas a otras por ellos tienen tantas
/// parejas como el cuadrado: cuando ya se han mirado demasiadas manda solo el orden registrado.
std::span<const Recalculo::RangoBlando> Recalculo::blandosDe(IdFormula formula) const {
    if (pasosBlandos_ > kMaximoPasosBlandos)
        return {};
    const auto tramo = std::equal_range(
        blandos_.begin(), blandos_.end(), RangoBlando{formula, {}},
        [](const RangoBlando& a, const RangoBlando& b) { return a.formula < b.formula; });
    return {tramo.first, tramo.second};
}

/// Recorrido en profundidad que cierra las componentes de lo leído a lo que lee, con su propia
/// pila.
void Recalculo::ordenarDesde(IdFormula raiz) {
    std::vector<Marco> marcos;
    const auto entrar = [&](IdFormula formula) {
        ++ultimoOrden_;
        componentes_[formula] = {ultimoOrden_, ultimoOrden_};
        enComponente_.push_back(formula);
        marcos.push_back({formula, {}});
    };
    entrar(raiz);
    while (!marcos.empty()) {
        ++pasosBlandos_;
        Marco& marco = marcos.back();
        Componente& propia = componentes_[marco.formula];
        const IdFormula otra =
            siguienteSinHacer(marco.formula, blandosDe(marco.formula), marco.cursor);
        if (otra != 0) {
            if (estado(otra) == Estado::Pendiente && componentes_[otra].orden == 0) {
                entrar(otra);
                continue;
            }
            if (estado(otra) == Estado::Pendiente)
                propia.menor = std::min(propia.menor, componentes_[otra].menor);
            marco.cursor.saltar();
            continue;
        }
        // Si cierra su componente, lo que esta lee de fuera ya está calculado.
        if (propia.menor == propia.orden) {
            IdFormula miembro = 0;
            do {
                miembro = enComponente_.back();
                enComponente_.pop_back();
                resolver(miembro);
            } while (miembro != marco.formula);
        }
        marcos.pop_back();
    }
}

} // namespace motor_formulas
