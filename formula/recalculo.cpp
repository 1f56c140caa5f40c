#include "formula/recalculo.h"

#include "formula/compilador.h"
#include "formula/evaluador.h"
#include "model/celda.h"

#include <bit>
#include <string_view>
#include <utility>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

/// Si guardar uno en lugar del otro no se notaría. Compara los bits: -0 y 0 se muestran distintos y
/// un NaN no es igual a sí mismo.
bool indistinguibles(const Valor& a, const Valor& b) {
    if (a.tipo != b.tipo)
        return false;
    switch (a.tipo) {
    case TipoValor::Numero:
        return std::bit_cast<std::uint64_t>(a.numero) == std::bit_cast<std::uint64_t>(b.numero);
    case TipoValor::Texto:
        return a.texto == b.texto;
    case TipoValor::Logico:
        return a.logico == b.logico;
    case TipoValor::Error:
        return a.error == b.error;
    case TipoValor::Vacio:
        break;
    }
    return true;
}

bool enLaCuadricula(std::uint64_t clave) {
    return nucleo::filaDeClave(clave) <= nucleo::kUltimaFila &&
           nucleo::columnaDeClave(clave) <= nucleo::kUltimaColumna;
}

} // namespace

const nucleo::Celda* Recalculo::celdaFormula(std::uint64_t clave) const {
    const auto hoja = static_cast<std::size_t>(nucleo::hojaDeClave(clave));
    if (hoja >= libro_.hojas.size())
        return nullptr;
    const nucleo::Celda* const celda =
        std::as_const(*libro_.hojas[hoja])
            .celda(nucleo::filaDeClave(clave), nucleo::columnaDeClave(clave));
    return celda != nullptr && celda->tipo == nucleo::TipoCelda::Formula ? celda : nullptr;
}

void Recalculo::marcarPendiente(IdFormula formula) {
    if (estados_.size() <= formula)
        estados_.resize(grafo().limiteFormulas(), Estado::Hecha);
    estado(formula) = Estado::Pendiente;
    formulas_.push_back(formula);
    const std::uint64_t clave = grafo().claveDe(formula);
    if (enLaCuadricula(clave))
        sinHacer_.poner(nucleo::hojaDeClave(clave), nucleo::filaDeClave(clave),
                        nucleo::columnaDeClave(clave));
}

void Recalculo::empezar(Modo modo) {
    modo_ = modo;
    leida_ = 0;
    formulas_.clear();
}

void Recalculo::todo() {
    grafo().limpiar();
    empezar(Modo::Leyendo);
    for (std::size_t hoja = 0; hoja < libro_.hojas.size(); ++hoja) {
        libro_.hojas[hoja]->celdas.completarLiterales();
        std::as_const(*libro_.hojas[hoja])
            .celdas.recorrerFormulas([&](int fila, int col, const nucleo::Celda&) {
                marcarPendiente(
                    grafo().apuntarFormula(nucleo::claveCelda(static_cast<int>(hoja), fila, col)));
            });
    }
    for (const IdFormula formula : formulas_)
        resolver(formula);
    resolverAplazadas();
    terminar();
}

void Recalculo::cascada(std::span<const std::uint64_t> claves) {
    alcanzadas_.clear();
    grafo().empezarRecorrido();
    for (const std::uint64_t clave : claves) {
        if (celdaFormula(clave) == nullptr) {
            grafo().alcanzarLectores(clave, alcanzadas_);
            continue;
        }
        const IdFormula formula = grafo().apuntarFormula(clave);
        if (grafo().alcanzar(formula))
            alcanzadas_.push_back(formula);
    }
    for (std::size_t i = 0; i < alcanzadas_.size(); ++i)
        grafo().alcanzarLectores(grafo().claveDe(alcanzadas_[i]), alcanzadas_);

    empezar(Modo::Cascada);
    for (const IdFormula formula : alcanzadas_) {
        if (celdaFormula(grafo().claveDe(formula)) != nullptr)
            marcarPendiente(formula);
    }
    for (const IdFormula formula : formulas_)
        resolver(formula);
    terminar();
}

void Recalculo::resolver(IdFormula raiz) {
    if (estado(raiz) != Estado::Pendiente)
        return;
    abrir(raiz);
    while (!pila_.empty()) {
        const IdFormula formula = pila_.back().formula;
        const IdFormula otra = siguienteSinHacer(formula, {}, pila_.back().cursor);
        if (otra == 0) {
            calcular(formula);
            cerrar(Estado::Hecha);
            continue;
        }
        switch (estado(otra)) {
        case Estado::Pendiente:
            abrir(otra);
            break;
        case Estado::Aplazada:
            aplazadas_.push_back(formula);
            cerrar(Estado::Aplazada);
            break;
        default:
            cerrar(Estado::Circular);
        }
    }
}

void Recalculo::abrir(IdFormula formula) {
    if (modo_ == Modo::Leyendo && !leerYRegistrar(formula)) {
        estado(formula) = Estado::Aplazada;
        aplazadas_.push_back(formula);
        return;
    }
    estado(formula) = Estado::EnCurso;
    pila_.push_back({formula, {}});
}

/// Falso si la fórmula tiene que esperar a las que hay en un rango demasiado grande.
bool Recalculo::leerYRegistrar(IdFormula formula) {
    const nucleo::Celda* const celda = celdaFormula(grafo().claveDe(formula));
    if (celda == nullptr || !leer(formula, *celda))
        return true;
    precedentes_.recoger(codigo_);
    grafo().ponerBloques(formula, precedentes_.registrados);
    bool espera = false;
    for (const nucleo::BloqueDeHoja& bloque : precedentes_.demasiadoGrandes) {
        if (!sinHacer_.toca(bloque))
            continue;
        blandos_.push_back({formula, bloque});
        espera = true;
    }
    return !espera;
}

/// La primera fórmula sin hacer que lee esta, desde el cursor; 0 si no queda ninguna. El cursor se
/// queda en ella. Los rangos blandos siguen a las lecturas registradas.
Recalculo::IdFormula Recalculo::siguienteSinHacer(IdFormula formula,
                                                  std::span<const RangoBlando> blandos,
                                                  Cursor& cursor) {
    const std::uint32_t lecturas = grafo().cuentaLecturas(formula);
    for (; cursor.lectura < lecturas + blandos.size(); ++cursor.lectura, cursor.celda = {}) {
        nucleo::BloqueDeHoja bloque;
        if (cursor.lectura < lecturas) {
            const nucleo::GrafoDependencias::Lectura lectura =
                grafo().lectura(formula, cursor.lectura);
            if (!lectura.esRectangulo) {
                const bool saltada = cursor.celda.fila != 0;
                if (!saltada && lectura.formula != 0 && lectura.formula < estados_.size() &&
                    estado(lectura.formula) != Estado::Hecha)
                    return lectura.formula;
                continue;
            }
            bloque = lectura.bloque;
        } else {
            bloque = blandos[cursor.lectura - lecturas].bloque;
        }
        if (sinHacer_.buscar(bloque, cursor.celda))
            return grafo().formulaEn(nucleo::claveCelda(bloque.hoja,
                                                        bloque.rango.fila1 + cursor.celda.fila,
                                                        bloque.rango.col1 + cursor.celda.col));
    }
    return 0;
}

void Recalculo::cerrar(Estado final) {
    fijar(pila_.back().formula, final);
    pila_.pop_back();
}

void Recalculo::fijar(IdFormula formula, Estado final) {
    estado(formula) = final;
    const std::uint64_t clave = grafo().claveDe(formula);
    if (final == Estado::Hecha && enLaCuadricula(clave))
        sinHacer_.quitar(nucleo::hojaDeClave(clave), nucleo::filaDeClave(clave),
                         nucleo::columnaDeClave(clave));
}

bool Recalculo::leer(IdFormula formula, const nucleo::Celda& celda) {
    formulaValida_ = compilar(textoDeFormula(celda.entrada), &libro_,
                              nucleo::hojaDeClave(grafo().claveDe(formula)), codigo_);
    leida_ = formula;
    return formulaValida_;
}

void Recalculo::calcular(IdFormula formula) {
    const std::uint64_t clave = grafo().claveDe(formula);
    const nucleo::Celda* const celda = celdaFormula(clave);
    if (celda == nullptr)
        return;
    // Si mientras esperaba se han leído otras fórmulas, se lee de nuevo.
    if (leida_ != formula)
        leer(formula, *celda);
    leida_ = 0;
    if (!formulaValida_) {
        guardar(clave, Valor::deError(ErrorCelda::ValorInvalido));
        return;
    }
    Evaluador evaluador(libro_, nucleo::hojaDeClave(clave));
    guardar(clave, maquina_.ejecutar(codigo_, evaluador));
}

void Recalculo::guardar(std::uint64_t clave, Valor valor) {
    // Lo que no cambia no se escribe: los bloques compartidos con otras copias siguen compartidos.
    const nucleo::Celda* const celda = celdaFormula(clave);
    if (celda == nullptr || indistinguibles(celda->valor, valor))
        return;
    libro_.hojas[static_cast<std::size_t>(nucleo::hojaDeClave(clave))]->celdas.ponerValor(
        nucleo::filaDeClave(clave), nucleo::columnaDeClave(clave), std::move(valor));
}

/// Da su valor a las que quedaron en un ciclo o detrás de él y deja la memoria lista para otra vez.
void Recalculo::terminar() {
    for (const IdFormula formula : formulas_) {
        if (estado(formula) != Estado::Circular)
            continue;
        fijar(formula, Estado::Hecha);
        guardar(grafo().claveDe(formula), Valor::deError(ErrorCelda::Circular));
    }
}

std::span<const nucleo::BloqueDeHoja> Recalculo::precedentes(int hoja, const std::string& texto) {
    leida_ = 0;
    if (!compilar(textoDeFormula(texto), &libro_, hoja, codigo_))
        return {};
    precedentes_.recoger(codigo_);
    return precedentes_.registrados;
}

nucleo::Valor Recalculo::evaluar(int hoja, const std::string& texto) {
    leida_ = 0;
    if (!compilar(textoDeFormula(texto), &libro_, hoja, codigo_))
        return Valor::deError(ErrorCelda::ValorInvalido);
    Evaluador evaluador(libro_, hoja);
    return maquina_.ejecutar(codigo_, evaluador);
}

} // namespace motor_formulas
