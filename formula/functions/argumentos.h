#pragma once

#include "formula/arg.h"
#include "formula/coercion.h"
#include "formula/contexto_recalculo.h"
#include "formula/evaluador.h"
#include "formula/pliegue.h"
#include "model/valor.h"

#include <cstddef>
#include <string>
#include <vector>

namespace motor_formulas {

/// Lee en orden los argumentos de valor único de una llamada y recuerda el primer fallo: un rango
/// da "#¡VALOR!", un error se da a sí mismo y una conversión fallida, el suyo. Tras un fallo las
/// lecturas devuelven un valor neutro, así que el manejador pregunta una sola vez.
class LectorArgs {
  public:
    explicit LectorArgs(const std::vector<Arg>& args) : args_(args) {}

    double numero(std::size_t indice);
    /// `porDefecto` si la llamada no llega a ese argumento.
    double numero(std::size_t indice, double porDefecto);
    std::string texto(std::size_t indice);
    bool logico(std::size_t indice);
    bool logico(std::size_t indice, bool porDefecto);
    /// El valor tal cual; vacío tras un fallo.
    VistaValor valor(std::size_t indice);

    bool fallo() const { return fallo_; }
    /// El primer fallo; solo si lo hubo.
    nucleo::Valor error() const { return nucleo::Valor::deError(error_); }

  private:
    const std::vector<Arg>& args_;
    bool fallo_ = false;
    nucleo::ErrorCelda error_ = nucleo::ErrorCelda::Ninguno;
};

/// Llama a `visitar(double)` con cada número de un argumento, con las reglas de
/// `recolectarNumeros` y sin reunirlos. Falso, con el error, si encuentra uno; entonces pueden no
/// haberse visitado los de antes. `contexto` puede ser nulo.
template <typename Visitante>
bool recorrerNumeros(const Arg& arg, ContextoRecalculo* contexto, nucleo::ErrorCelda& error,
                     Visitante&& visitar) {
    if (arg.esRango) {
        if (contexto != nullptr && contexto->conviene(arg))
            return contexto->recorrerNumeros(arg, error, visitar);
        return recorrerCeldas(arg, [&](std::int64_t, const VistaValor& celda) {
            if (celda.tipo == nucleo::TipoValor::Error) {
                error = celda.error;
                return false;
            }
            if (celda.tipo == nucleo::TipoValor::Numero)
                visitar(celda.numero);
            return true;
        });
    }
    if (arg.valor.tipo == nucleo::TipoValor::Vacio)
        return true;
    double numero = 0;
    if (!convertirEnNumero(vistaDe(arg.valor), numero, error))
        return false;
    visitar(numero);
    return true;
}

/// Lo mismo con todos los argumentos, en orden.
template <typename Visitante>
bool recorrerNumeros(const std::vector<Arg>& args, ContextoRecalculo* contexto,
                     nucleo::ErrorCelda& error, Visitante&& visitar) {
    for (const Arg& arg : args) {
        if (!recorrerNumeros(arg, contexto, error, visitar))
            return false;
    }
    return true;
}

/// Reduce los números de los argumentos, en orden. Falso, con el error, si hay uno.
template <Pliegue kPliegue>
bool plegarNumeros(const std::vector<Arg>& args, const Evaluador& evaluador, Acumulado& total,
                   nucleo::ErrorCelda& error) {
    total = Acumulado::inicial(kPliegue);
    ContextoRecalculo* const contexto = evaluador.contexto;
    auto actual = args.begin();
    // Solo lo que se reduce desde el principio puede seguir a un total de otra fórmula.
    if (actual != args.end() && contexto != nullptr && contexto->conviene(*actual)) {
        if (!contexto->plegar(kPliegue, *actual, total, error))
            return false;
        ++actual;
    }
    for (; actual != args.end(); ++actual) {
        if (!recorrerNumeros(*actual, contexto, error,
                             [&](double numero) { total.template anadir<kPliegue>(numero); }))
            return false;
    }
    return true;
}

/// Orden estricto de los números para ordenarlos: los que no son un número van detrás de todos.
inline bool numeroMenor(double a, double b) {
    return a < b || (a == a && b != b);
}

} // namespace motor_formulas
