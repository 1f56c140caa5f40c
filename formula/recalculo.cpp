#include "formula/recalculo.h"

#include "formula/compilador.h"
#include "formula/evaluador.h"
#include "model/celda.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::Valor;

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

void Recalculo::marcarPendiente(IdFormula formula, const nucleo::Celda& celda) {
    // Se mira la última en crecer: si a las otras les llegó la memoria y a ella no, aún falta.
    if (celdas_.size() <= formula) {
        estados_.resize(grafo().limiteFormulas(), Estado::Hecha);
        turnos_.resize(estados_.size());
        celdas_.resize(estados_.size());
    }
    estado(formula) = Estado::Pendiente;
    celdas_[formula] = &celda;
    formulas_.push_back(formula);
    const std::uint64_t clave = grafo().claveDe(formula);
    if (enLaCuadricula(clave))
        sinHacer_.poner(nucleo::hojaDeClave(clave), nucleo::filaDeClave(clave),
                        nucleo::columnaDeClave(clave));
}

/// Pide a la memoria las celdas y los textos de las fórmulas que siguen a una: se leen casi siempre
/// en este orden.
void Recalculo::adelantar(std::size_t indice) const {
    constexpr std::size_t kCeldas = 8;
    constexpr std::size_t kTextos = 4;
    if (indice + kCeldas >= formulas_.size())
        return;
    const nucleo::Celda* const celda = celdas_[formulas_[indice + kCeldas]];
    __builtin_prefetch(celda);
    __builtin_prefetch(&celda->valor);
    __builtin_prefetch(celdas_[formulas_[indice + kTextos]]->entrada.data());
}

void Recalculo::empezar(Modo modo) {
    if (enMarcha_)
        olvidarInterrumpido();
    enMarcha_ = true;
    modo_ = modo;
    leida_ = 0;
    formulas_.clear();
    maquina_.reponerCupo();
}

void Recalculo::todo() {
    grafo().limpiar();
    empezar(Modo::Leyendo);
    for (std::size_t hoja = 0; hoja < libro_.hojas.size(); ++hoja) {
        libro_.hojas[hoja]->celdas.completarLiterales();
        std::as_const(*libro_.hojas[hoja])
            .celdas.recorrerFormulas([&](int fila, int col, const nucleo::Celda& celda) {
                const std::uint64_t clave = nucleo::claveCelda(static_cast<int>(hoja), fila, col);
                // Un archivo puede traer celdas tan lejos que su clave es la de otra.
                if (nucleo::filaDeClave(clave) == fila && nucleo::columnaDeClave(clave) == col)
                    marcarPendiente(grafo().apuntarFormula(clave), celda);
            });
    }
    for (std::size_t i = 0; i < formulas_.size(); ++i) {
        adelantar(i);
        resolver(formulas_[i]);
    }
    resolverAplazadas();
    terminar();
}

void Recalculo::cascada(std::span<const std::uint64_t> claves) {
    empezar(Modo::Cascada);
    alcanzadas_.clear();
    tandas_.clear();
    grafo().empezarRecorrido();
    // De la última escritura a la primera: cada fórmula es de la última que la alcanza.
    for (std::size_t i = claves.size(); i-- > 0;) {
        const std::size_t primera = alcanzadas_.size();
        alcanzarDesde(claves[i]);
        if (primera < alcanzadas_.size())
            tandas_.push_back({primera, alcanzadas_.size()});
    }
    std::uint32_t turno = 0;
    for (std::size_t t = tandas_.size(); t-- > 0; ++turno) {
        for (std::size_t i = tandas_[t].desde; i < tandas_[t].hasta; ++i) {
            const nucleo::Celda* const celda = celdaFormula(grafo().claveDe(alcanzadas_[i]));
            if (celda == nullptr)
                continue;
            marcarPendiente(alcanzadas_[i], *celda);
            turnos_[alcanzadas_[i]] = turno;
        }
    }
    for (std::size_t i = 0; i < formulas_.size(); ++i) {
        adelantar(i);
        resolver(formulas_[i]);
    }
    terminar();
}

/// Añade a `alcanzadas_` la fórmula de una celda, si lo es, y cuantas dependen de ella.
void Recalculo::alcanzarDesde(std::uint64_t clave) {
    std::size_t siguiente = alcanzadas_.size();
    if (celdaFormula(clave) == nullptr) {
        grafo().alcanzarLectores(clave, alcanzadas_);
    } else {
        const IdFormula formula = grafo().apuntarFormula(clave);
        if (grafo().alcanzar(formula))
            alcanzadas_.push_back(formula);
    }
    for (; siguiente < alcanzadas_.size(); ++siguiente)
        grafo().alcanzarLectores(grafo().claveDe(alcanzadas_[siguiente]), alcanzadas_);
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
        case Estado::Circular:
            // Con la escritura que la alcanzó, la otra ya valía eso cuando se escribió lo que
            // alcanza a esta, que entonces lee su error como un valor más.
            if (modo_ == Modo::Cascada && turnos_[otra] < turnos_[formula])
                pila_.back().cursor.saltar();
            else
                cerrar(Estado::Circular);
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
    if (!leer(formula))
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
    if (final == Estado::Circular)
        guardar(clave, Valor::deError(ErrorCelda::Circular));
    if (final == Estado::Hecha && enLaCuadricula(clave))
        sinHacer_.quitar(nucleo::hojaDeClave(clave), nucleo::filaDeClave(clave),
                         nucleo::columnaDeClave(clave));
}

bool Recalculo::leer(IdFormula formula) {
    formulaValida_ = compilar(textoDeFormula(celdas_[formula]->entrada), &libro_,
                              nucleo::hojaDeClave(grafo().claveDe(formula)), codigo_);
    leida_ = formula;
    return formulaValida_;
}

void Recalculo::calcular(IdFormula formula) {
    const std::uint64_t clave = grafo().claveDe(formula);
    // Si mientras esperaba se han leído otras fórmulas, se lee de nuevo.
    if (leida_ != formula)
        leer(formula);
    leida_ = 0;
    if (!formulaValida_) {
        guardar(clave, Valor::deError(ErrorCelda::ValorInvalido));
        return;
    }
    Evaluador evaluador(libro_, nucleo::hojaDeClave(clave));
    // Una fórmula sola no tiene con quién compartir lo que aprende.
    evaluador.contexto = formulas_.size() > 1 ? &contexto_ : nullptr;
    guardar(clave, maquina_.ejecutar(codigo_, evaluador));
}

void Recalculo::guardar(std::uint64_t clave, const Valor& valor) {
    nucleo::Hoja& hoja = *libro_.hojas[static_cast<std::size_t>(nucleo::hojaDeClave(clave))];
    const int fila = nucleo::filaDeClave(clave);
    const int col = nucleo::columnaDeClave(clave);
    if (hoja.celdas.ponerValor(fila, col, valor))
        contexto_.cambiar(hoja, fila, col, valor);
}

/// Deja la memoria lista para otra vez: las que quedaron en un ciclo o detrás de él ya tienen su
/// valor.
void Recalculo::terminar() {
    for (const IdFormula formula : formulas_) {
        if (estado(formula) == Estado::Circular)
            fijar(formula, Estado::Hecha);
    }
    contexto_.olvidar();
    enMarcha_ = false;
}

/// A un recálculo le faltó memoria: lo que dejó a medias no cuenta.
void Recalculo::olvidarInterrumpido() {
    std::fill(estados_.begin(), estados_.end(), Estado::Hecha);
    sinHacer_ = {};
    pila_.clear();
    aplazadas_.clear();
    blandos_.clear();
    enComponente_.clear();
    contexto_.olvidar();
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
    maquina_.reponerCupo();
    return maquina_.ejecutar(codigo_, evaluador);
}

} // namespace motor_formulas
