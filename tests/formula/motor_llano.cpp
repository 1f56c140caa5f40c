#include "tests/formula/motor_llano.h"

#include "formula/parser.h"
#include "model/celda.h"
#include "model/fechas.h"
#include "model/limites.h"
#include "model/numeros.h"
#include "tests/formula/evaluador_llano.h"

#include <queue>

#include <algorithm>
#include <cstdlib>

namespace pruebas {

namespace {

using motor_formulas::NodoExpr;
using nucleo::ErrorCelda;
using nucleo::Valor;

void juntar(const NodoExpr& nodo, const nucleo::Libro& libro, int hoja,
            std::vector<std::uint64_t>& claves) {
    if (nodo.tipo == NodoExpr::Referencia || nodo.tipo == NodoExpr::Rango) {
        const int suya = nodo.ref.hoja.empty() ? hoja : libro.indiceHoja(nodo.ref.hoja);
        if (suya < 0)
            return;
        if (nodo.tipo == NodoExpr::Referencia) {
            claves.push_back(nucleo::claveCelda(suya, nodo.ref.fila, nodo.ref.col));
            return;
        }
        const auto [fila1, fila2] = std::minmax(nodo.ref.fila, nodo.ref2.fila);
        const auto [col1, col2] = std::minmax(nodo.ref.col, nodo.ref2.col);
        const std::size_t cuantas =
            static_cast<std::size_t>(fila2 - fila1 + 1) * static_cast<std::size_t>(col2 - col1 + 1);
        if (claves.size() + cuantas > static_cast<std::size_t>(nucleo::kMaximoPrecedentes))
            return;
        for (int fila = fila1; fila <= fila2; ++fila) {
            for (int col = col1; col <= col2; ++col)
                claves.push_back(nucleo::claveCelda(suya, fila, col));
        }
    }
    for (const auto& hijo : nodo.hijos)
        juntar(*hijo, libro, hoja, claves);
}

} // namespace

void MotorLlano::establecer(int hoja, int fila, int col, const std::string& texto) {
    const std::uint64_t clave = nucleo::claveCelda(hoja, fila, col);
    for (const std::uint64_t precedente : celdas_[clave].precedentes)
        lectores_[precedente].erase(clave);
    celdas_.erase(clave);
    if (!texto.empty()) {
        Celda& celda = celdas_[clave];
        double numero = 0;
        celda.texto = texto;
        celda.esFormula = texto.size() > 1 && texto[0] == '=';
        if (celda.esFormula)
            celda.precedentes = precedentesDe(clave);
        else if (nucleo::parsearFecha(texto, numero) || nucleo::parsearNumeroUsuario(texto, numero))
            celda.valor = Valor::deNumero(numero);
        else
            celda.valor = Valor::deTexto(texto);
        for (const std::uint64_t precedente : celda.precedentes)
            lectores_[precedente].insert(clave);
    }
    cascada(clave);
}

std::vector<std::uint64_t> MotorLlano::precedentesDe(std::uint64_t clave) const {
    std::vector<std::uint64_t> claves;
    const auto arbol = motor_formulas::Parser().parsear(celdas_.at(clave).texto.substr(1));
    if (arbol != nullptr)
        juntar(*arbol, nombres_, nucleo::hojaDeClave(clave), claves);
    std::sort(claves.begin(), claves.end());
    claves.erase(std::unique(claves.begin(), claves.end()), claves.end());
    return claves;
}

nucleo::Valor MotorLlano::evaluar(std::uint64_t clave) const {
    const auto arbol = motor_formulas::Parser().parsear(celdas_.at(clave).texto.substr(1));
    if (arbol == nullptr)
        return Valor::deError(ErrorCelda::ValorInvalido);
    const auto leer = [this](int hoja, int fila, int col) {
        const auto celda = celdas_.find(nucleo::claveCelda(hoja, fila, col));
        return celda == celdas_.end() ? Valor{} : celda->second.valor;
    };
    const auto hoja = [this](const std::string& nombre) { return nombres_.indiceHoja(nombre); };
    return EvaluadorLlano(leer, hoja, nucleo::hojaDeClave(clave)).evaluar(*arbol);
}

void MotorLlano::cascada(std::uint64_t clave) {
    std::set<std::uint64_t> alcanzadas{clave};
    std::queue<std::uint64_t> cola;
    cola.push(clave);
    while (!cola.empty()) {
        for (const std::uint64_t lectora : lectores_[cola.front()]) {
            if (alcanzadas.insert(lectora).second)
                cola.push(lectora);
        }
        cola.pop();
    }
    std::set<std::uint64_t> afectadas;
    for (const std::uint64_t alcanzada : alcanzadas) {
        const auto celda = celdas_.find(alcanzada);
        if (celda != celdas_.end() && celda->second.esFormula)
            afectadas.insert(alcanzada);
    }
    calcular(afectadas);
}

void MotorLlano::recalcularTodo() {
    std::set<std::uint64_t> formulas;
    for (const auto& [clave, celda] : celdas_) {
        if (celda.esFormula)
            formulas.insert(clave);
    }
    calcular(formulas);
}

void MotorLlano::calcular(const std::set<std::uint64_t>& afectadas) {
    std::map<std::uint64_t, std::size_t> pendientes;
    std::queue<std::uint64_t> listas;
    for (const std::uint64_t clave : afectadas) {
        std::size_t cuenta = 0;
        for (const std::uint64_t precedente : celdas_.at(clave).precedentes)
            cuenta += afectadas.count(precedente);
        pendientes[clave] = cuenta;
        if (cuenta == 0)
            listas.push(clave);
    }
    std::set<std::uint64_t> hechas;
    while (!listas.empty()) {
        const std::uint64_t clave = listas.front();
        listas.pop();
        hechas.insert(clave);
        celdas_.at(clave).valor = evaluar(clave);
        for (const std::uint64_t lectora : lectores_[clave]) {
            if (afectadas.count(lectora) != 0 && --pendientes[lectora] == 0)
                listas.push(lectora);
        }
    }
    for (const std::uint64_t clave : afectadas) {
        if (hechas.count(clave) == 0)
            celdas_.at(clave).valor = Valor::deError(ErrorCelda::Circular);
    }
}

} // namespace pruebas
