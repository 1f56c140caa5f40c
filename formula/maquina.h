#pragma once

#include "formula/arg.h"
#include "formula/codigo.h"
#include "formula/cupo_texto.h"
#include "formula/evaluador.h"
#include "formula/vista_valor.h"
#include "model/valor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

/// Ejecuta código postfijo sobre una pila de valores. Guarda su memoria de una fórmula a otra:
/// quien calcula muchas usa una sola máquina.
class Maquina {
  public:
    /// El valor de una fórmula compilada con el libro y la hoja del evaluador. No recalcula ninguna
    /// celda y no gasta pila por el anidamiento. No puede llamarse otra vez desde una función que
    /// esta misma máquina esté calculando.
    nucleo::Valor ejecutar(const Codigo& codigo, Evaluador& evaluador);
    /// Empieza otro recálculo: las fórmulas vuelven a poder hacer todo el texto que se admite.
    void reponerCupo() { cupo_.reponer(); }

  private:
    /// Valor en la pila. Un texto está en el libro, en el código o, si es propio, en `propios_`;
    /// las clases que no son `Rango` coinciden con `TipoValor`.
    struct Elemento {
        enum class Clase : std::uint8_t { Vacio, Numero, Texto, Logico, Error, Rango };
        Clase clase = Clase::Vacio;
        bool propio = false; ///< solo de un texto
        bool logico = false;
        nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno;
        std::uint32_t referencia = 0; ///< de un rango
        union {
            double numero = 0;
            const char* inicio; ///< de un texto
        };
        std::size_t largo = 0;

        void ponerNumero(double valor);
        void ponerFinito(double valor);
        void ponerLogico(bool valor);
        void ponerError(nucleo::ErrorCelda codigo);
        void ponerTexto(std::string_view valor, bool esPropio);
        void ponerVista(const VistaValor& valor);
        void ponerCelda(const nucleo::Celda* celda);
        VistaValor vista() const;
    };

    void operarUnaria(Operacion operacion, Elemento& operando);
    void operarBinaria(Operacion operacion, Elemento& izquierdo, Elemento& derecho);
    void concatenar(Elemento& izquierdo, Elemento& derecho);
    void llamar(const Instruccion& llamada, Elemento* primero, const Codigo& codigo,
                Evaluador& evaluador);
    std::vector<Arg>& prepararArgumentos(Elemento* primero, std::size_t cuantos,
                                         const Codigo& codigo, const nucleo::Libro& libro);
    void ponerTextoPropio(Elemento& elemento, std::string texto);
    void soltar(const Elemento& elemento);
    std::size_t contarPropios(const Elemento* primero, const Elemento* fin) const;
    static std::size_t bytesDeTexto(const Elemento* primero, const Elemento* fin);
    nucleo::Valor resultado(const Elemento& elemento);

    std::vector<Elemento> pila_;
    /// Los textos calculados que están en la pila, en su mismo orden.
    std::deque<std::string> propios_;
    CupoTexto cupo_;
    /// Argumentos de la llamada en curso: por su número, para que reutilizarlos no cambie el tamaño
    /// de ningún vector; el último sirve a todas las llamadas largas.
    std::array<std::vector<Arg>, 8> argumentos_;
};

/// Ejecuta el código una vez; para una fórmula suelta.
nucleo::Valor ejecutar(const Codigo& codigo, Evaluador& evaluador);

} // namespace motor_formulas
