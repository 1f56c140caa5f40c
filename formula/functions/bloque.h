#pragma once

#include "formula/arg.h"

#include <cstdint>

namespace motor_formulas {

/// El bloque que da un argumento: el suyo si es un rango, o uno de 1 × 1 con su valor. Las
/// posiciones van por filas desde 0. No guarda nada: vale mientras viva el argumento.
class Bloque {
  public:
    explicit Bloque(const Arg& arg) : arg_(&arg) {}

    std::int64_t filas() const { return arg_->esRango ? arg_->filas : 1; }
    std::int64_t columnas() const { return arg_->esRango ? arg_->columnas : 1; }
    std::int64_t celdas() const { return filas() * columnas(); }

    VistaValor en(std::int64_t posicion) const {
        return arg_->esRango ? celdaDeArg(*arg_, posicion) : vistaDe(arg_->valor);
    }
    VistaValor en(std::int64_t fila, std::int64_t columna) const {
        return en(fila * columnas() + columna);
    }

    /// Como `recorrerCeldas`.
    template <typename Visitante> bool recorrer(Visitante&& visitar) const {
        return arg_->esRango ? recorrerCeldas(*arg_, visitar)
                             : visitar(std::int64_t{0}, vistaDe(arg_->valor));
    }

    const Arg& arg() const { return *arg_; }

  private:
    const Arg* arg_;
};

/// Una fila o una columna de un bloque, numerada desde 0.
class Linea {
  public:
    static Linea columna(const Bloque& bloque, int columna) { return {bloque, columna, true}; }
    static Linea fila(const Bloque& bloque, int fila) { return {bloque, fila, false}; }

    const Bloque& bloque() const { return bloque_; }
    int cual() const { return cual_; }
    bool vertical() const { return vertical_; }
    std::int64_t largo() const { return vertical_ ? bloque_.filas() : bloque_.columnas(); }

    VistaValor en(std::int64_t indice) const {
        return vertical_ ? bloque_.en(indice, cual_) : bloque_.en(cual_, indice);
    }

    /// Llama a `visitar(indice, VistaValor)` en orden con las celdas que existen; las que faltan
    /// son vacías. Se detiene en cuanto devuelve falso.
    template <typename Visitante> void recorrer(Visitante&& visitar) const {
        const Arg& arg = bloque_.arg();
        if (!arg.prestado()) {
            for (std::int64_t i = 0; i < largo() && visitar(i, en(i)); ++i) {
            }
            return;
        }
        nucleo::RangoCeldas rango = arg.rango;
        if (vertical_)
            rango.col1 = rango.col2 = rango.col1 + cual_;
        else
            rango.fila1 = rango.fila2 = rango.fila1 + cual_;
        arg.hoja->celdas.recorrerPorFilas(
            rango, [&](int fila, int col, const nucleo::Celda& celda) {
                return visitar(std::int64_t{vertical_ ? fila - rango.fila1 : col - rango.col1},
                               vistaDe(celda));
            });
    }

  private:
    Linea(const Bloque& bloque, int cual, bool vertical)
        : bloque_(bloque), cual_(cual), vertical_(vertical) {}

    Bloque bloque_;
    int cual_;
    bool vertical_;
};

} // namespace motor_formulas
