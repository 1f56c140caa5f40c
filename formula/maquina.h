#pragma once

#include "formula/arg.h"
#include "formula/codigo.h"
#include "formula/evaluador.h"
#include "model/valor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace motor_formulas {

/// Ejecuta código postfijo sobre una pila de valores. Guarda su memoria de una fórmula a otra:
/// quien calcula muchas usa una sola máquina.
class Maquina {
  public:
    /// El valor de una fórmula compilada con el libro y la hoja del evaluador. No recalcula ninguna
    /// celda y no gasta pila por el anidamiento.
    nucleo::Valor ejecutar(const Codigo& codigo, Evaluador& evaluador);

  private:
    /// Valor en la pila. Los textos se señalan: están en el libro, en el código o en `propios_`.
    struct Elemento {
        enum class Clase : std::uint8_t { Vacio, Numero, Texto, Logico, Error, Rango };
        Clase clase = Clase::Vacio;
        bool propio = false; ///< el texto es de `propios_`
        bool logico = false;
        nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
        std::uint32_t referencia = 0; ///< de un rango
        union {
            double numero = 0;
            const char* inicio;
        };
        std::size_t largo = 0;
    };

    std::vector<Elemento> pila_;
    /// Textos calculados, en el mismo orden en que están en la pila.
    std::deque<std::string> propios_;
    /// Argumentos de la llamada en curso, por su número, para que reutilizarlos no cambie el tamaño
    /// de ningún vector.
    std::array<std::vector<Arg>, 6> argumentos_;
};

/// Ejecuta el código una vez; para una fórmula suelta.
nucleo::Valor ejecutar(const Codigo& codigo, Evaluador& evaluador);

} // namespace motor_formulas
