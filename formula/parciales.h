#pragma once

#include "formula/pliegue.h"
#include "formula/recorrido_columnas.h"
#include "formula/tramo_filas.h"
#include "model/hoja.h"
#include "model/tabla_indices.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace motor_formulas {

/// Totales a medio camino de los bloques que empiezan en la misma fila y ocupan las mismas
/// columnas: el de uno más largo sigue desde donde acabó el anterior, y el de uno más corto desde
/// el punto guardado al pasar por su última página. Los números se añaden siempre en el mismo
/// orden, así que el resultado es el mismo hasta el último bit.
class Parciales {
  public:
    void olvidar();

    /// Reduce los números de un bloque. Falso, con el primer error, si lo hay. `momento` cuenta los
    /// cambios de las columnas.
    bool plegar(Pliegue pliegue, const nucleo::Hoja& hoja, int col, Columnas columnas,
                TramoFilas filas, std::uint64_t momento, Acumulado& total,
                nucleo::ErrorCelda& error);

  private:
    /// Más allá de estos puntos (unos 16 MiB) no se guardan más.
    static constexpr std::size_t kMaximoPuntos = 1000000;

    struct Clave {
        const nucleo::Hoja* hoja;
        std::uint64_t resto; ///< pliegue, primera fila, primera columna y cuántas

        bool operator==(const Clave&) const = default;
    };
    struct Dispersion {
        std::size_t operator()(const Clave& clave) const {
            return nucleo::mezclarClave(reinterpret_cast<std::uintptr_t>(clave.hoja), clave.resto);
        }
    };
    struct Parcial {
        Acumulado estado;  ///< de las filas anteriores a `siguiente`
        int siguiente = 0; ///< primera fila que falta
        /// El estado al empezar cada página después de la primera.
        std::vector<Acumulado> puntos;
        std::uint64_t momento = 0;
        bool hayError = false;
        ErrorEnFila error; ///< en `siguiente` o después
    };

    template <Pliegue kPliegue>
    bool plegar(Parcial& parcial, Columnas columnas, TramoFilas filas, Acumulado& total,
                nucleo::ErrorCelda& error);
    template <Pliegue kPliegue> void avanzar(Parcial& parcial, Columnas columnas, TramoFilas filas);
    void ponerAlDia(Parcial& parcial, Pliegue pliegue, Columnas columnas, int primeraFila,
                    std::uint64_t momento);

    std::unordered_map<Clave, Parcial, Dispersion> parciales_;
    std::size_t puntos_ = 0;
};

} // namespace motor_formulas
