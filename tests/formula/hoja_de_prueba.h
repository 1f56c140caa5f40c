#pragma once

#include "formula/motor.h"
#include "model/libro.h"
#include "model/valor.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace pruebas {

/// Un libro de una hoja cuyas celdas se dan como se ven: un texto por fila, con las celdas
/// separadas por "|" y escritas tal como se teclean. Los espacios junto a "|" no cuentan.
class HojaDePrueba {
  public:
    HojaDePrueba(std::initializer_list<std::string_view> filas);
    HojaDePrueba() : HojaDePrueba({}) {}

    void escribir(int fila, int col, const std::string& contenido);
    /// Una fila con sus celdas separadas por "|".
    void escribirFila(int fila, std::string_view celdas);
    nucleo::Valor valor(std::string_view formula);
    /// Lo que se ve en una celda sin formato con esa fórmula.
    std::string texto(std::string_view formula);

  private:
    nucleo::Libro libro_;
    motor_formulas::Motor motor_;
};

/// Una fórmula y lo que muestra.
struct Caso {
    std::string_view formula;
    std::string_view muestra;
};

/// Comprueba cada caso sobre la hoja; un fallo enseña su fórmula.
void comprobar(HojaDePrueba& hoja, std::initializer_list<Caso> casos);
/// Lo mismo, para fórmulas que no leen ninguna celda.
void comprobar(std::initializer_list<Caso> casos);

} // namespace pruebas
