#pragma once

#include "formula/operacion.h"
#include "formula/tokenizador.h"
#include "model/rango.h"
#include "model/valor.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

struct Funcion;

/// Trozo de los textos de un `Codigo`; se lee con `Codigo::texto`.
struct Tramo {
    std::uint32_t pos;
    std::uint32_t largo;
};

/// Instrucción del código postfijo de una fórmula. Sus operandos ya están en la pila de valores.
struct Instruccion {
    Operacion operacion = Operacion::Numero;
    /// `Logico`: el valor. `SaltoSi`: no hay tercera expresión. `CerrarPerezosa`: es SI.ERROR.
    bool marca = false;
    nucleo::ErrorCelda error = nucleo::ErrorCelda::Ninguno; ///< `Error`
    /// Celdas y rangos: posición en `referencias`. Llamadas y `CerrarPerezosa`: número de
    /// argumentos. Saltos y `AbrirPerezosa`: instrucción a la que se salta (0: no se salta).
    std::uint32_t indice = 0;
    union {
        double numero = 0;      ///< `Numero`
        Tramo tramo;            ///< `Texto`; nombre normalizado en `LlamadaDesconocida`
        const Funcion* funcion; ///< `Llamada`
        std::uint32_t final;    ///< `SaltoSi`: a dónde se va con un error
    };
};

/// Celda o rango que nombra una fórmula.
struct ReferenciaCodigo {
    nucleo::RangoCeldas rango; ///< normalizado; una sola celda si no es un rango
    std::int32_t hoja = 0; ///< índice de la hoja; -1 si el libro no tiene ninguna con ese nombre
    std::int32_t nombres = -1; ///< nombres de hoja tal como se escribieron; -1 si no se escribieron
    bool esRango = false;

    // Lo necesario para recuperar las esquinas tal como se escribieron.
    bool filasInvertidas = false;
    bool columnasInvertidas = false;
    std::uint8_t absolutas = 0; ///< bits: 1 fila y 2 columna de la primera; 4 y 8 de la segunda
};

/// Una fórmula leída: instrucciones en orden postfijo y las referencias que usan. Se reutiliza de
/// una fórmula a otra sin devolver su memoria. Señala el texto del que salió, que debe seguir vivo
/// mientras se use.
///
/// `A1+SUMA(B1:B9)*2` es: Celda 0, RangoArg 1, Llamada SUMA de 1, Numero 2, Producto, Suma.
///
/// SI y SI.ERROR saltan lo que no se elige. `SI(A1;B1;C1)` es:
///
///     0 AbrirPerezosa          con otro número de argumentos saltaría a 7 dejando "#¡VALOR!"
///     1 Celda A1
///     2 SaltoSi 5              falsa: a 5; con un error: a 7 con él
///     3 Celda B1
///     4 Salto 7
///     5 Celda C1
///     6 CerrarPerezosa de 3
class Codigo {
  public:
    std::span<const Instruccion> instrucciones() const { return instrucciones_; }
    /// Todas las celdas y rangos, en el orden en que aparecen escritos, repetidos incluidos.
    std::span<const ReferenciaCodigo> referencias() const { return referencias_; }
    /// Valores que llegan a estar a la vez en la pila.
    std::uint32_t profundidad() const { return profundidadMaxima_; }

    std::string_view texto(Tramo tramo) const;
    /// La primera esquina (o la única celda) y la segunda, tal como se escribieron.
    RefCelda primeraEsquina(const ReferenciaCodigo& referencia) const;
    RefCelda segundaEsquina(const ReferenciaCodigo& referencia) const;

  private:
    friend class Emisor;
    friend class Compilador;

    struct NombresHoja {
        Tramo primera;
        Tramo segunda;
    };

    /// Una llamada cuyo paréntesis aún no se ha cerrado.
    struct LlamadaAbierta {
        enum class Clase : std::uint8_t { Normal, Desconocida, Si, SiError };
        Clase clase = Clase::Normal;
        const Funcion* funcion = nullptr;
        Tramo nombre{0, 0};
        std::uint32_t argumentos = 0;
        std::uint32_t apertura = 0;    ///< su `AbrirPerezosa`
        std::uint32_t primerSalto = 0; ///< su `SaltoSi` o `SaltoSinError`
        std::uint32_t segundoSalto = 0;
        std::uint32_t profundidad = 0; ///< valores en la pila al abrirla
    };

    std::string_view fuente_;
    std::string propios_; ///< textos que no están tal cual en la fórmula; siguen a `fuente_`
    std::vector<Instruccion> instrucciones_;
    std::vector<ReferenciaCodigo> referencias_;
    std::vector<NombresHoja> nombres_;
    std::uint32_t profundidad_ = 0;
    std::uint32_t profundidadMaxima_ = 0;

    // Memoria de trabajo de la lectura; aquí solo para no pedirla en cada fórmula.
    std::vector<std::uint8_t> operadores_;
    std::vector<LlamadaAbierta> llamadas_;
};

} // namespace motor_formulas
