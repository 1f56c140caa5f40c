#pragma once

#include "formula/tramo_filas.h"
#include "model/limites.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace motor_formulas {

/// Mayor y menor de unos valores. Los que no son iguales a sí mismos no cuentan.
template <typename Valor> struct Extremos {
    bool validos = false;
    bool hay = false;
    Valor mayor{};
    Valor menor{};

    void anadir(const Valor& valor) {
        if (!(valor == valor))
            return;
        if (!hay || valor > mayor)
            mayor = valor;
        if (!hay || valor < menor)
            menor = valor;
        hay = true;
    }
    void unir(const Extremos& otros) {
        if (!otros.hay)
            return;
        anadir(otros.mayor);
        anadir(otros.menor);
    }
};

/// Extremos de cada página de una columna y de cada grupo de páginas, calculados al pedirlos, para
/// hallar el primer valor que rebasa a otro saltando cuanto no puede rebasarlo.
///
/// `Fuente` da los valores: `con(pagina)` dice con bits qué filas tienen uno, y `valor(pagina,
/// fila)` cuál es.
template <typename Valor> class ExtremosColumna {
  public:
    void invalidar(int pagina) {
        paginas_[static_cast<std::size_t>(pagina)].validos = false;
        grupos_[static_cast<std::size_t>(pagina / kPaginasGrupo)].validos = false;
    }

    /// Primera fila del tramo cuyo valor rebasa al buscado; la que sigue al tramo si no hay.
    template <typename Fuente>
    int primeraQueRebasa(Fuente& fuente, TramoFilas filas, const Valor& buscado, Orden orden) {
        const auto rebasa = [&](const Valor& valor) {
            return orden == Orden::Ascendente ? valor > buscado : valor < buscado;
        };
        const auto puedeSaltarse = [&](const Extremos<Valor>& extremos) {
            return !extremos.hay ||
                   !rebasa(orden == Orden::Ascendente ? extremos.mayor : extremos.menor);
        };
        for (int fila = filas.desde; fila <= filas.hasta;) {
            if (fila % kFilasGrupo == 0 && fila + kFilasGrupo - 1 <= filas.hasta &&
                puedeSaltarse(deGrupo(fuente, fila / kFilasGrupo))) {
                fila += kFilasGrupo;
                continue;
            }
            const int pagina = fila / kFilasPagina;
            if (!puedeSaltarse(dePagina(fuente, pagina))) {
                for (std::uint64_t quedan =
                         fuente.con(pagina) & bitsDePagina({fila, filas.hasta}, pagina);
                     quedan != 0; quedan &= quedan - 1) {
                    const int cual = std::countr_zero(quedan);
                    if (rebasa(fuente.valor(pagina, cual)))
                        return pagina * kFilasPagina + cual;
                }
            }
            fila = (pagina + 1) * kFilasPagina;
        }
        return filas.hasta + 1;
    }

  private:
    static constexpr int kPaginasGrupo = 32;
    static constexpr int kFilasGrupo = kFilasPagina * kPaginasGrupo;
    static constexpr std::size_t kPaginas = nucleo::kFilas / kFilasPagina;

    template <typename Fuente> const Extremos<Valor>& dePagina(Fuente& fuente, int pagina) {
        Extremos<Valor>& extremos = paginas_[static_cast<std::size_t>(pagina)];
        if (!extremos.validos) {
            extremos = {};
            for (std::uint64_t quedan = fuente.con(pagina); quedan != 0; quedan &= quedan - 1)
                extremos.anadir(fuente.valor(pagina, std::countr_zero(quedan)));
            extremos.validos = true;
        }
        return extremos;
    }

    template <typename Fuente> const Extremos<Valor>& deGrupo(Fuente& fuente, int grupo) {
        Extremos<Valor>& extremos = grupos_[static_cast<std::size_t>(grupo)];
        if (!extremos.validos) {
            extremos = {};
            for (int i = 0; i < kPaginasGrupo; ++i)
                extremos.unir(dePagina(fuente, grupo * kPaginasGrupo + i));
            extremos.validos = true;
        }
        return extremos;
    }

    std::array<Extremos<Valor>, kPaginas> paginas_;
    std::array<Extremos<Valor>, kPaginas / kPaginasGrupo> grupos_;
};

} // namespace motor_formulas
