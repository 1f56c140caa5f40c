#pragma once

#include "formula/nodo_expr.h"
#include "model/valor.h"

#include <functional>
#include <string>
#include <vector>

namespace pruebas {

/// El lenguaje de las fórmulas escrito del modo más directo: recursión sobre el árbol, rangos
/// reunidos celda a celda y búsquedas de arriba abajo. No comparte nada con el intérprete de verdad
/// salvo el lector de números. Conoce las funciones que usan los libros al azar.
class EvaluadorLlano {
  public:
    /// El valor de una celda, y el índice de una hoja por su nombre (-1 si no existe).
    using LectorCeldas = std::function<nucleo::Valor(int hoja, int fila, int col)>;
    using LectorHojas = std::function<int(const std::string&)>;

    EvaluadorLlano(LectorCeldas celdas, LectorHojas hojas, int hoja)
        : celdas_(std::move(celdas)), hojas_(std::move(hojas)), hoja_(hoja) {}

    nucleo::Valor evaluar(const motor_formulas::NodoExpr& nodo) const;

  private:
    struct Argumento {
        bool esRango = false;
        int filas = 1;
        int columnas = 1;
        std::vector<nucleo::Valor> valores; ///< uno si no es un rango
    };

    Argumento argumento(const motor_formulas::NodoExpr& nodo) const;
    nucleo::Valor llamar(const motor_formulas::NodoExpr& nodo) const;

    LectorCeldas celdas_;
    LectorHojas hojas_;
    int hoja_;
};

} // namespace pruebas
