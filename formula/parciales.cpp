#include "formula/parciales.h"

#include "model/limites.h"

#include <algorithm>

namespace motor_formulas {

void Parciales::olvidar() {
    parciales_.clear();
    puntos_ = 0;
}

bool Parciales::plegar(Pliegue pliegue, const nucleo::Hoja& hoja, int col, Columnas columnas,
                       TramoFilas filas, std::uint64_t momento, Acumulado& total,
                       nucleo::ErrorCelda& error) {
    const std::uint64_t resto = (static_cast<std::uint64_t>(pliegue) << 48) |
                                (static_cast<std::uint64_t>(filas.desde) << 24) |
                                (static_cast<std::uint64_t>(col) << 8) | columnas.size();
    const auto [entrada, nueva] = parciales_.try_emplace({&hoja, resto});
    Parcial& parcial = entrada->second;
    if (nueva) {
        parcial.estado = Acumulado::inicial(pliegue);
        parcial.siguiente = filas.desde;
        parcial.momento = momento;
    }
    ponerAlDia(parcial, pliegue, columnas, filas.desde, momento);
    switch (pliegue) {
    case Pliegue::Suma:
        return plegar<Pliegue::Suma>(parcial, columnas, filas, total, error);
    case Pliegue::Producto:
        return plegar<Pliegue::Producto>(parcial, columnas, filas, total, error);
    case Pliegue::Maximo:
        return plegar<Pliegue::Maximo>(parcial, columnas, filas, total, error);
    case Pliegue::Minimo:
        break;
    }
    return plegar<Pliegue::Minimo>(parcial, columnas, filas, total, error);
}

/// Retrocede hasta antes de la primera fila que haya cambiado.
void Parciales::ponerAlDia(Parcial& parcial, Pliegue pliegue, Columnas columnas, int primeraFila,
                           std::uint64_t momento) {
    if (parcial.momento == momento)
        return;
    int cambiada = nucleo::kFilas;
    for (const ColumnaRecordada* const columna : columnas) {
        const TramoFilas cambiadas = columna->cambios().despuesDe(parcial.momento);
        if (cambiadas.hasta < primeraFila)
            continue;
        // La menor puede estar por encima del bloque; entonces se retrocede de más.
        cambiada = std::min(cambiada, std::max(cambiadas.desde, primeraFila));
    }
    parcial.momento = momento;
    if (parcial.hayError && cambiada <= parcial.error.fila)
        parcial.hayError = false;
    if (cambiada >= parcial.siguiente)
        return;
    const int paginasEnteras = cambiada / kFilasPagina - primeraFila / kFilasPagina;
    const auto quedan = std::min(static_cast<std::size_t>(paginasEnteras), parcial.puntos.size());
    puntos_ -= parcial.puntos.size() - quedan;
    parcial.puntos.resize(quedan);
    if (quedan == 0) {
        parcial.estado = Acumulado::inicial(pliegue);
        parcial.siguiente = primeraFila;
    } else {
        parcial.estado = parcial.puntos.back();
        parcial.siguiente = (primeraFila / kFilasPagina + static_cast<int>(quedan)) * kFilasPagina;
    }
}

template <Pliegue kPliegue>
bool Parciales::plegar(Parcial& parcial, Columnas columnas, TramoFilas filas, Acumulado& total,
                       nucleo::ErrorCelda& error) {
    if (!parcial.hayError && parcial.siguiente <= filas.hasta)
        avanzar<kPliegue>(parcial, columnas, filas);
    if (parcial.hayError && parcial.error.fila <= filas.hasta) {
        error = parcial.error.error;
        return false;
    }
    if (parcial.siguiente == filas.hasta + 1) {
        total = parcial.estado;
        return true;
    }
    // Un bloque más corto, o uno cuya última página está cortada justo antes de un error.
    const int paginas = filas.hasta / kFilasPagina - filas.desde / kFilasPagina;
    const auto punto = std::min(static_cast<std::size_t>(paginas), parcial.puntos.size());
    int desde = filas.desde;
    total = Acumulado::inicial(kPliegue);
    if (punto > 0) {
        total = parcial.puntos[punto - 1];
        desde = (filas.desde / kFilasPagina + static_cast<int>(punto)) * kFilasPagina;
    }
    ErrorEnFila encontrado;
    const bool bien =
        visitarNumeros(columnas, {desde, filas.hasta}, encontrado,
                       [&](double numero) { total.template anadir<kPliegue>(numero); });
    error = encontrado.error;
    return bien;
}

template <Pliegue kPliegue>
void Parciales::avanzar(Parcial& parcial, Columnas columnas, TramoFilas filas) {
    Acumulado estado = parcial.estado;
    const int primeraPagina = filas.desde / kFilasPagina;
    while (parcial.siguiente <= filas.hasta) {
        const int pagina = parcial.siguiente / kFilasPagina;
        const int hasta = std::min(filas.hasta, pagina * kFilasPagina + kFilasPagina - 1);
        if (!visitarPagina(columnas, {parcial.siguiente, hasta}, pagina, parcial.error,
                           [&](double numero) { estado.template anadir<kPliegue>(numero); })) {
            parcial.hayError = true;
            break;
        }
        parcial.siguiente = hasta + 1;
        const bool acabaPagina = parcial.siguiente % kFilasPagina == 0;
        if (acabaPagina && puntos_ < kMaximoPuntos &&
            parcial.puntos.size() == static_cast<std::size_t>(pagina - primeraPagina)) {
            parcial.puntos.push_back(estado);
            ++puntos_;
        }
    }
    parcial.estado = estado;
}

} // namespace motor_formulas
