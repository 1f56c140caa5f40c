#pragma once

#include "formula/arg.h"
#include "formula/coercion.h"
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

/// Llama a `visitar(double)` con cada número de los argumentos, en orden, con las reglas de
/// `recolectarNumeros` y sin reunirlos. Falso, con el error, en cuanto encuentra uno.
template <typename Visitante>
bool recorrerNumeros(const std::vector<Arg>& args, nucleo::ErrorCelda& error, Visitante&& visitar) {
    const auto visitarCelda = [&](std::int64_t, const VistaValor& celda) {
        if (celda.tipo == nucleo::TipoValor::Error) {
            error = celda.error;
            return false;
        }
        if (celda.tipo == nucleo::TipoValor::Numero)
            visitar(celda.numero);
        return true;
    };
    for (const Arg& arg : args) {
        if (arg.esRango) {
            if (!recorrerCeldas(arg, visitarCelda))
                return false;
        } else if (arg.valor.tipo != nucleo::TipoValor::Vacio) {
            double numero = 0;
            if (!convertirEnNumero(vistaDe(arg.valor), numero, error))
                return false;
            visitar(numero);
        }
    }
    return true;
}

/// Orden estricto de los números para ordenarlos: los que no son un número van detrás de todos.
inline bool numeroMenor(double a, double b) {
    return a < b || (a == a && b != b);
}

} // namespace motor_formulas
