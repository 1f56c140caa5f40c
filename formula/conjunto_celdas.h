#pragma once

#include "model/indice_rangos.h"
#include "model/limites.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace motor_formulas {

/// Conjunto de celdas de la cuadrícula con un bit por celda, para hallar deprisa la siguiente que
/// cae en un rectángulo: salta de 64 en 64 filas y pasa de largo las columnas sin ninguna.
class ConjuntoCeldas {
  public:
    /// Lugar por el que va una búsqueda; la inicial es la de valor cero.
    struct Cursor {
        int col = 0; ///< contadas desde la esquina del rectángulo
        int fila = 0;
    };

    void poner(int hoja, int fila, int col);
    /// La celda puede no estar.
    void quitar(int hoja, int fila, int col);
    /// Deja el cursor en la primera celda del conjunto desde él, por columnas; falso si no hay más.
    bool buscar(const nucleo::BloqueDeHoja& bloque, Cursor& cursor) const;
    bool toca(const nucleo::BloqueDeHoja& bloque) const {
        Cursor cursor;
        return buscar(bloque, cursor);
    }

  private:
    static constexpr int kFilasPagina = 4096;
    static constexpr std::size_t kPaginas = nucleo::kFilas / kFilasPagina;

    struct Pagina {
        std::array<std::uint64_t, kFilasPagina / 64> palabras{};
    };
    struct Columna {
        std::uint32_t cuenta = 0;
        std::array<std::unique_ptr<Pagina>, kPaginas> paginas;
    };
    using Hoja = std::array<std::unique_ptr<Columna>, nucleo::kColumnas>;

    Columna* columna(int hoja, int col) const;

    std::vector<std::unique_ptr<Hoja>> hojas_;
};

} // namespace motor_formulas
