#include "formula/contexto_recalculo.h"

#include "formula/operaciones.h"

#include <algorithm>
#include <bit>

namespace motor_formulas {

namespace {

template <typename Comparacion>
std::uint64_t comparar(const PaginaColumna& pagina, Comparacion cumple) {
    std::uint64_t bits = 0;
    for (std::size_t fila = 0; fila < pagina.numeros.size(); ++fila)
        bits |= std::uint64_t{cumple(pagina.numeros[fila])} << fila;
    return bits & pagina.conNumero;
}

/// Filas de la página que cumplen un criterio numérico.
std::uint64_t cumplenNumero(const PaginaColumna& pagina, const Criterio& criterio) {
    const double n = criterio.numero;
    switch (criterio.op) {
    case 0:
        return comparar(pagina, [n](double x) { return x == n; });
    case 1:
        return comparar(pagina, [n](double x) { return x != n; }) |
               (pagina.ocupadas() & ~pagina.conNumero);
    case 2:
        return comparar(pagina, [n](double x) { return x < n; });
    case 3:
        return comparar(pagina, [n](double x) { return x <= n; });
    case 4:
        return comparar(pagina, [n](double x) { return x > n; });
    case 5:
        return comparar(pagina, [n](double x) { return x >= n; });
    default:
        return 0;
    }
}

void ponerBit(std::vector<std::uint64_t>& bits, int posicion) {
    bits[static_cast<std::size_t>(posicion / kFilasPagina)] |= std::uint64_t{1}
                                                               << (posicion % kFilasPagina);
}

/// Pone los bits de una página en las posiciones que les tocan a partir de `posicion`, que puede
/// ser negativa; los que caen fuera son cero.
void ponerBits(std::vector<std::uint64_t>& bits, int posicion, std::uint64_t pagina) {
    if (posicion < 0) {
        bits[0] |= pagina >> -posicion;
        return;
    }
    const auto palabra = static_cast<std::size_t>(posicion / kFilasPagina);
    const int corrido = posicion % kFilasPagina;
    bits[palabra] |= pagina << corrido;
    if (corrido != 0 && palabra + 1 < bits.size())
        bits[palabra + 1] |= pagina >> (kFilasPagina - corrido);
}

int alto(TramoFilas filas) {
    return filas.hasta - filas.desde + 1;
}

} // namespace

void ContextoRecalculo::olvidar() {
    hojas_.clear();
    parciales_.olvidar();
    momento_ = 0;
    paginas_ = 0;
}

void ContextoRecalculo::cambiar(const nucleo::Hoja& hoja, int fila, int col,
                                const nucleo::Valor& valor) {
    const auto columnas = hojas_.find(&hoja);
    if (columnas == hojas_.end() || fila > nucleo::kUltimaFila || col > nucleo::kUltimaColumna)
        return;
    Columna* const cambiada = (*columnas->second)[static_cast<std::size_t>(col)].get();
    if (cambiada != nullptr)
        cambiada->valores.cambiar(++momento_, fila, valor);
}

ContextoRecalculo::Columna& ContextoRecalculo::columna(const nucleo::Hoja& hoja, int col) {
    std::unique_ptr<ColumnasHoja>& columnas = hojas_[&hoja];
    if (columnas == nullptr)
        columnas = std::make_unique<ColumnasHoja>();
    std::unique_ptr<Columna>& sitio = (*columnas)[static_cast<std::size_t>(col)];
    if (sitio == nullptr)
        sitio = std::make_unique<Columna>(hoja, col, paginas_);
    return *sitio;
}

bool ContextoRecalculo::conviene(const Arg& bloque) {
    if (!bloque.prestado() || bloque.filas < kAltoMinimo || bloque.columnas > kAnchoMaximo ||
        paginas_ > kMaximoPaginas)
        return false;
    Columna& primera = columna(*bloque.hoja, bloque.rango.col1);
    if (primera.recorridas >= bloque.celdas())
        return true;
    primera.recorridas += bloque.celdas();
    return false;
}

std::array<ColumnaRecordada*, ContextoRecalculo::kAnchoMaximo>
ContextoRecalculo::columnasDe(const Arg& bloque) {
    std::array<ColumnaRecordada*, kAnchoMaximo> columnas{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(bloque.columnas); ++i)
        columnas[i] = &columna(*bloque.hoja, bloque.rango.col1 + static_cast<int>(i)).valores;
    return columnas;
}

bool ContextoRecalculo::plegar(Pliegue pliegue, const Arg& bloque, Acumulado& total,
                               nucleo::ErrorCelda& error) {
    const auto columnas = columnasDe(bloque);
    return parciales_.plegar(pliegue, *bloque.hoja, bloque.rango.col1,
                             {columnas.data(), static_cast<std::size_t>(bloque.columnas)},
                             filasDe(bloque), momento_, total, error);
}

std::int64_t ContextoRecalculo::contar(const Arg& bloque, Contadas contadas) {
    std::int64_t cuenta = 0;
    const TramoFilas filas = filasDe(bloque);
    for (int col = bloque.rango.col1; col <= bloque.rango.col2; ++col) {
        ColumnaRecordada& valores = columna(*bloque.hoja, col).valores;
        for (int indice = filas.desde / kFilasPagina; indice <= filas.hasta / kFilasPagina;
             ++indice) {
            const PaginaColumna& pagina = valores.pagina(indice);
            cuenta += std::popcount(
                (contadas == Contadas::Numeros ? pagina.conNumero : pagina.ocupadas()) &
                bitsDePagina(filas, indice));
        }
    }
    return cuenta;
}

void ContextoRecalculo::cumplen(const Arg& bloque, const Criterio& criterio,
                                std::vector<std::uint64_t>& bits) {
    Columna& deCriterio = columna(*bloque.hoja, bloque.rango.col1);
    const TramoFilas filas = filasDe(bloque);
    bits.assign(static_cast<std::size_t>((alto(filas) + kFilasPagina - 1) / kFilasPagina), 0);
    if (esIgualdad(criterio)) {
        if (const IndiceExacto* const iguales = indice(deCriterio, filas)) {
            iguales->recorrer(deCriterio.valores, filas, criterio, [&](int fila) {
                ponerBit(bits, fila - filas.desde);
                return true;
            });
            return;
        }
    }
    for (int indice = filas.desde / kFilasPagina; indice <= filas.hasta / kFilasPagina; ++indice) {
        const int posicion = indice * kFilasPagina - filas.desde;
        if (criterio.esNumero) {
            ponerBits(bits, posicion,
                      cumplenNumero(deCriterio.valores.pagina(indice), criterio) &
                          bitsDePagina(filas, indice));
            continue;
        }
        const bool cumplenVacias = criterio.cumple(VistaValor{});
        const std::uint64_t ocupadas = deCriterio.valores.pagina(indice).ocupadas();
        const std::uint64_t dentro = bitsDePagina(filas, indice);
        std::uint64_t cumplen = cumplenVacias ? dentro & ~ocupadas : 0;
        for (std::uint64_t quedan = ocupadas & dentro; quedan != 0; quedan &= quedan - 1) {
            if (criterio.cumple(
                    deCriterio.valores.valor(indice * kFilasPagina + std::countr_zero(quedan))))
                cumplen |= quedan & -quedan;
        }
        ponerBits(bits, posicion, cumplen);
    }
}

Acumulado ContextoRecalculo::sumar(const Arg& bloque, std::span<const std::uint64_t> bits) {
    ColumnaRecordada& numeros = columna(*bloque.hoja, bloque.rango.col1).valores;
    Acumulado total;
    for (std::size_t palabra = 0; palabra < bits.size(); ++palabra) {
        for (std::uint64_t quedan = bits[palabra]; quedan != 0; quedan &= quedan - 1) {
            const int fila = bloque.rango.fila1 + static_cast<int>(palabra) * kFilasPagina +
                             std::countr_zero(quedan);
            const PaginaColumna& pagina = numeros.pagina(fila / kFilasPagina);
            if ((pagina.conNumero >> (fila % kFilasPagina) & 1) != 0)
                total.anadir<Pliegue::Suma>(
                    pagina.numeros[static_cast<std::size_t>(fila % kFilasPagina)]);
        }
    }
    return total;
}

/// El índice de la columna, si sirve para esas filas o ya compensa construirlo. El que solo se
/// queda corto se rehace con toda la columna: las filas pedidas van cambiando.
const IndiceExacto* ContextoRecalculo::indice(Columna& columna, TramoFilas filas) {
    if (columna.indice.sirve(columna.valores, filas))
        return &columna.indice;
    const TramoFilas hecho = columna.indice.filas();
    const bool corto =
        hecho.desde <= hecho.hasta && (filas.desde < hecho.desde || hecho.hasta < filas.hasta);
    const TramoFilas nuevas = corto ? TramoFilas{0, nucleo::kUltimaFila} : filas;
    if (columna.credito < alto(nuevas)) {
        columna.credito += alto(filas);
        return nullptr;
    }
    columna.credito = 0;
    columna.indice.construir(columna.valores, nuevas, momento_);
    return &columna.indice;
}

VistaValor ContextoRecalculo::valor(const Arg& bloque, std::int64_t fila, std::int64_t col) {
    const int filaHoja = bloque.rango.fila1 + static_cast<int>(fila);
    Columna& leida = columna(*bloque.hoja, bloque.rango.col1 + static_cast<int>(col));
    // Una página cuesta lo que sus celdas: se leen cuando ya se han pedido de una en una tantas
    // como para que salga a cuenta.
    if (leida.recorridas < bloque.filas) {
        leida.recorridas += kFilasPagina;
        return leida.valores.valor(filaHoja);
    }
    const PaginaColumna& pagina = leida.valores.pagina(filaHoja / kFilasPagina);
    const int enPagina = filaHoja % kFilasPagina;
    return (pagina.conNumero >> enPagina & 1) != 0
               ? vistaNumero(pagina.numeros[static_cast<std::size_t>(enPagina)])
               : leida.valores.valor(filaHoja);
}

std::int64_t ContextoRecalculo::buscarOrdenado(const Arg& bloque, int col,
                                               const VistaValor& buscado, Orden orden) {
    const TramoFilas filas = filasDe(bloque);
    Columna& claves = columna(*bloque.hoja, bloque.rango.col1 + col);
    const int fila = claves.valores.buscarOrdenado(filas, buscado, orden);
    return fila < 0 ? -1 : fila - filas.desde;
}

std::optional<std::int64_t> ContextoRecalculo::buscarExacto(const Arg& bloque, int col,
                                                            const Criterio& criterio) {
    const TramoFilas filas = filasDe(bloque);
    Columna& claves = columna(*bloque.hoja, bloque.rango.col1 + col);
    const IndiceExacto* const iguales = esIgualdad(criterio) ? indice(claves, filas) : nullptr;
    if (iguales == nullptr)
        return std::nullopt;
    std::int64_t posicion = -1;
    iguales->recorrer(claves.valores, filas, criterio, [&](int fila) {
        posicion = fila - filas.desde;
        return false;
    });
    return posicion;
}

} // namespace motor_formulas
