#pragma once

#include "formula/arg.h"
#include "formula/columna_recordada.h"
#include "formula/functions/criterio.h"
#include "formula/indice_exacto.h"
#include "formula/parciales.h"
#include "formula/pliegue.h"
#include "formula/recorrido_columnas.h"
#include "formula/tramo_filas.h"
#include "model/hoja.h"
#include "model/valor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace motor_formulas {

/// Lo que se aprende de las celdas durante un recálculo y sirve a más de una fórmula: columnas
/// apretadas, totales a medio camino e índices de búsqueda. Se olvida al acabar.
///
/// Nada puede quedarse viejo: el recálculo cuenta cada resultado que cambia, y lo recordado que lo
/// abarca se corrige o deja de servir. Y nada cuesta más de lo que ahorra: la primera lectura de
/// una columna es directa, y un índice se construye cuando ya se ha recorrido tanto como cuesta
/// hacerlo.
///
/// Solo ayuda con bloques prestados y altos; quien llama pregunta antes por `conviene`.
class ContextoRecalculo {
  public:
    ContextoRecalculo() = default;
    ContextoRecalculo(const ContextoRecalculo&) = delete;
    ContextoRecalculo& operator=(const ContextoRecalculo&) = delete;

    void olvidar();
    /// Una fórmula de esa celda ha pasado a valer otra cosa.
    void cambiar(const nucleo::Hoja& hoja, int fila, int col, const nucleo::Valor& valor);

    /// Si el bloque es de los que aquí se leen más deprisa que en la hoja. Cuenta la lectura que el
    /// que pregunta va a hacer.
    bool conviene(const Arg& bloque);

    /// Reduce los números del bloque por filas. Falso, con el primer error, si lo hay.
    bool plegar(Pliegue pliegue, const Arg& bloque, Acumulado& total, nucleo::ErrorCelda& error);
    /// Llama a `visitar(double)` con los números del bloque por filas. Falso, con el primer error,
    /// si lo hay; entonces pueden no haberse visitado los que van antes de él.
    template <typename Visitante>
    bool recorrerNumeros(const Arg& bloque, nucleo::ErrorCelda& error, Visitante&& visitar) {
        const auto columnas = columnasDe(bloque);
        ErrorEnFila encontrado;
        const bool bien =
            visitarNumeros({columnas.data(), static_cast<std::size_t>(bloque.columnas)},
                           filasDe(bloque), encontrado, visitar);
        error = bien ? error : encontrado.error;
        return bien;
    }
    enum class Contadas : std::uint8_t { Numeros, Ocupadas };
    std::int64_t contar(const Arg& bloque, Contadas contadas);

    /// Qué celdas de un bloque de una columna cumplen un criterio: un bit por fila.
    void cumplen(const Arg& bloque, const Criterio& criterio, std::vector<std::uint64_t>& bits);
    /// Suma los números de un bloque de una columna que están en las filas señaladas.
    Acumulado sumar(const Arg& bloque, std::span<const std::uint64_t> bits);

    /// Búsquedas en una columna de un bloque: posición contada desde su primera fila, -1 si no se
    /// encuentra. La exacta no da nada mientras cueste menos recorrer la columna.
    std::int64_t buscarOrdenado(const Arg& bloque, int col, const VistaValor& buscado, Orden orden);
    std::optional<std::int64_t> buscarExacto(const Arg& bloque, int col, const Criterio& criterio);

    /// El valor de una celda de un bloque para el que conviene, por su posición en él.
    VistaValor valor(const Arg& bloque, std::int64_t fila, std::int64_t col);

  private:
    static constexpr int kAltoMinimo = kFilasPagina;
    static constexpr int kAnchoMaximo = 16;
    /// Más allá de esto (unos 64 MiB) las columnas se leen de la hoja.
    static constexpr std::size_t kMaximoPaginas = 120000;

    struct Columna {
        Columna(const nucleo::Hoja& hoja, int col, std::size_t& paginas)
            : valores(hoja, col, paginas) {}

        ColumnaRecordada valores;
        IndiceExacto indice;
        std::int64_t recorridas = 0; ///< celdas leídas sin ayuda
        std::int64_t credito = 0;    ///< celdas recorridas desde que se construyó el índice
    };
    using ColumnasHoja = std::array<std::unique_ptr<Columna>, nucleo::kColumnas>;
    Columna& columna(const nucleo::Hoja& hoja, int col);
    /// Las columnas del bloque, de izquierda a derecha.
    std::array<ColumnaRecordada*, kAnchoMaximo> columnasDe(const Arg& bloque);
    static TramoFilas filasDe(const Arg& bloque) {
        return {bloque.rango.fila1, bloque.rango.fila2};
    }
    const IndiceExacto* indice(Columna& columna, TramoFilas filas);

    std::unordered_map<const nucleo::Hoja*, std::unique_ptr<ColumnasHoja>> hojas_;
    Parciales parciales_;
    std::uint64_t momento_ = 0; ///< cambios contados
    std::size_t paginas_ = 0;
};

} // namespace motor_formulas
