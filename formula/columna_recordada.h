#pragma once

#include "formula/cambios_columna.h"
#include "formula/extremos_columna.h"
#include "formula/tramo_filas.h"
#include "formula/vista_valor.h"
#include "model/hoja.h"
#include "model/limites.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace motor_formulas {

/// Lo que valen 64 filas seguidas de una columna, apretado para recorrerlo deprisa.
struct PaginaColumna {
    std::array<double, kFilasPagina> numeros{}; ///< 0 donde no hay un número
    std::uint64_t conNumero = 0;
    std::uint64_t conTexto = 0;
    std::uint64_t conLogico = 0;
    std::uint64_t conError = 0;

    std::uint64_t ocupadas() const { return conNumero | conTexto | conLogico | conError; }
};

/// Una columna de una hoja tal como está durante un recálculo, leída página a página cuando hace
/// falta. Sigue al día porque se le cuenta cada resultado que cambia.
class ColumnaRecordada {
  public:
    /// `paginas` cuenta las que se leen.
    ColumnaRecordada(const nucleo::Hoja& hoja, int col, std::size_t& paginas)
        : hoja_(hoja), col_(col), cuentaPaginas_(paginas) {}

    const PaginaColumna& pagina(int indice) {
        const PaginaColumna* leida = paginas_[static_cast<std::size_t>(indice)];
        return leida != nullptr ? *leida : leer(indice);
    }
    /// El valor de una celda, tal como está en la hoja.
    VistaValor valor(int fila) const;
    void cambiar(std::uint64_t momento, int fila, const nucleo::Valor& valor);
    const CambiosColumna& cambios() const { return cambios_; }

    /// La última celda de la clase de lo buscado (un número o un texto) antes de la primera que lo
    /// rebasa; -1 si no hay. Los valores pueden no estar ordenados.
    int buscarOrdenado(TramoFilas filas, const VistaValor& buscado, Orden orden);

  private:
    static constexpr std::size_t kPaginas = nucleo::kFilas / kFilasPagina;

    /// Los textos de una página en minúsculas.
    using Minusculas = std::array<std::string, kFilasPagina>;
    struct Textos {
        std::array<std::unique_ptr<Minusculas>, kPaginas> paginas;
        ExtremosColumna<std::string_view> extremos;
    };
    class FuenteNumeros;
    class FuenteTextos;

    const PaginaColumna& leer(int indice);
    int ultimaCon(TramoFilas filas, std::uint64_t PaginaColumna::*clase);

    const nucleo::Hoja& hoja_;
    int col_;
    std::size_t& cuentaPaginas_;
    std::array<PaginaColumna*, kPaginas> paginas_{}; ///< nulas las que no se han leído
    std::deque<PaginaColumna> leidas_;
    std::unique_ptr<ExtremosColumna<double>> extremos_; ///< de los números
    std::unique_ptr<Textos> textos_;
    CambiosColumna cambios_;
};

} // namespace motor_formulas
