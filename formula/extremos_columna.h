#pragma once

#include "formula/tramo_filas.h"
#include "model/limites.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace motor_formulas {

/// Mayor y menor de unos valores seguidos, y si están en orden. Los que no son iguales a sí mismos
/// no cuentan, salvo para el orden, que rompen.
template <typename Valor> struct Extremos {
    bool validos = false;
    bool hay = false;
    bool crecen = true;   ///< ninguno es menor que el anterior
    bool decrecen = true; ///< ninguno es mayor que el anterior
    Valor mayor{};
    Valor menor{};

    bool enOrden(Orden orden) const { return orden == Orden::Ascendente ? crecen : decrecen; }
    /// El que antes rebasaría a otro en ese orden.
    const Valor& extremo(Orden orden) const { return orden == Orden::Ascendente ? mayor : menor; }

    void anadir(const Valor& valor) {
        if (!(valor == valor)) { // NOLINT(misc-redundant-expression): un NaN
            crecen = decrecen = false;
            return;
        }
        // Mientras crecen el último es el mayor; mientras decrecen, el menor.
        crecen = crecen && (!hay || !(valor < mayor));
        decrecen = decrecen && (!hay || !(valor > menor));
        if (!hay || valor > mayor)
            mayor = valor;
        if (!hay || valor < menor)
            menor = valor;
        hay = true;
    }
    /// Añade los de un grupo que los sigue. Donde no hay ninguno no se puede partir por la mitad.
    void unir(const Extremos& otros) {
        if (!otros.hay) {
            crecen = decrecen = false;
            return;
        }
        crecen = crecen && otros.crecen && (!hay || !(otros.menor < mayor));
        decrecen = decrecen && otros.decrecen && (!hay || !(otros.mayor > menor));
        if (!hay || otros.mayor > mayor)
            mayor = otros.mayor;
        if (!hay || otros.menor < menor)
            menor = otros.menor;
        hay = true;
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
            return !extremos.hay || !rebasa(extremos.extremo(orden));
        };
        for (int fila = filas.desde; fila <= filas.hasta;) {
            if (fila % kFilasGrupo == 0 && fila + kFilasGrupo - 1 <= filas.hasta) {
                const Extremos<Valor>& grupo = deGrupo(fuente, fila / kFilasGrupo);
                if (puedeSaltarse(grupo)) {
                    fila += kFilasGrupo;
                    continue;
                }
                if (grupo.enOrden(orden)) {
                    const Extremos<Valor>* const paginas = &paginas_[paginaDe(fila)];
                    fila += kFilasPagina * primeraDe<kPaginasGrupo>([&](int i) {
                                return rebasa(paginas[i].extremo(orden));
                            });
                }
            }
            const int pagina = fila / kFilasPagina;
            const Extremos<Valor>& extremos = dePagina(fuente, pagina);
            if (!puedeSaltarse(extremos)) {
                const std::uint64_t con = fuente.con(pagina);
                if (fila % kFilasPagina == 0 && con == ~std::uint64_t{0} &&
                    fila + kFilasPagina - 1 <= filas.hasta && extremos.enOrden(orden))
                    return fila + primeraDe<kFilasPagina>(
                                      [&](int i) { return rebasa(fuente.valor(pagina, i)); });
                for (std::uint64_t quedan = con & bitsDePagina({fila, filas.hasta}, pagina);
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

    static std::size_t paginaDe(int fila) { return static_cast<std::size_t>(fila / kFilasPagina); }

    /// El primero de tantos (potencia de dos) que cumple lo que cumplen él y cuantos le siguen;
    /// alguno lo cumple. Parte por la mitad sin saltos que adivinar.
    template <int kCuantos, typename Cumple> static int primeraDe(Cumple&& cumple) {
        int primera = 0;
        for (int mitad = kCuantos / 2; mitad > 0; mitad /= 2)
            primera += cumple(primera + mitad - 1) ? 0 : mitad;
        return primera;
    }

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
