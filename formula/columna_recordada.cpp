#include "formula/columna_recordada.h"

#include "formula/functions/criterio.h"

#include <bit>
#include <utility>

namespace motor_formulas {

namespace {

using nucleo::TipoValor;

void ponerEnPagina(PaginaColumna& pagina, int fila, const VistaValor& valor) {
    const std::uint64_t bit = std::uint64_t{1} << fila;
    pagina.conNumero &= ~bit;
    pagina.conTexto &= ~bit;
    pagina.conLogico &= ~bit;
    pagina.conError &= ~bit;
    pagina.numeros[static_cast<std::size_t>(fila)] = 0;
    switch (valor.tipo) {
    case TipoValor::Numero:
        pagina.conNumero |= bit;
        pagina.numeros[static_cast<std::size_t>(fila)] = valor.numero;
        break;
    case TipoValor::Texto:
        pagina.conTexto |= bit;
        break;
    case TipoValor::Logico:
        pagina.conLogico |= bit;
        break;
    case TipoValor::Error:
        pagina.conError |= bit;
        break;
    case TipoValor::Vacio:
        break;
    }
}

} // namespace

/// Los números de la columna, para buscar entre ellos.
class ColumnaRecordada::FuenteNumeros {
  public:
    explicit FuenteNumeros(ColumnaRecordada& columna) : columna_(columna) {}
    std::uint64_t con(int pagina) const { return columna_.pagina(pagina).conNumero; }
    double valor(int pagina, int fila) const {
        return columna_.pagina(pagina).numeros[static_cast<std::size_t>(fila)];
    }

  private:
    ColumnaRecordada& columna_;
};

/// Los textos de la columna en minúsculas.
class ColumnaRecordada::FuenteTextos {
  public:
    explicit FuenteTextos(ColumnaRecordada& columna) : columna_(columna) {}
    std::uint64_t con(int pagina) const { return columna_.pagina(pagina).conTexto; }
    std::string_view valor(int pagina, int fila) const {
        return minusculas(pagina)[static_cast<std::size_t>(fila)];
    }

  private:
    const Minusculas& minusculas(int pagina) const {
        std::unique_ptr<Minusculas>& sitio =
            columna_.textos_->paginas[static_cast<std::size_t>(pagina)];
        if (sitio == nullptr) {
            sitio = std::make_unique<Minusculas>();
            for (std::uint64_t quedan = con(pagina); quedan != 0; quedan &= quedan - 1) {
                const int fila = std::countr_zero(quedan);
                (*sitio)[static_cast<std::size_t>(fila)] =
                    cambiarCaso(columna_.valor(pagina * kFilasPagina + fila).texto, false);
            }
        }
        return *sitio;
    }

    ColumnaRecordada& columna_;
};

const PaginaColumna& ColumnaRecordada::leer(int indice) {
    // Todas las páginas sin celdas son esta; nunca se escribe en ella.
    static PaginaColumna vacia;
    PaginaColumna* pagina = &vacia;
    const int primera = indice * kFilasPagina;
    hoja_.celdas.recorrerPorFilas({primera, col_, primera + kFilasPagina - 1, col_},
                                  [&](int fila, int, const nucleo::Celda& celda) {
                                      if (pagina == &vacia) {
                                          pagina = &leidas_.emplace_back();
                                          ++cuentaPaginas_;
                                      }
                                      ponerEnPagina(*pagina, fila - primera, vistaDe(celda));
                                      return true;
                                  });
    return *(paginas_[static_cast<std::size_t>(indice)] = pagina);
}

VistaValor ColumnaRecordada::valor(int fila) const {
    const nucleo::Celda* const celda = hoja_.celdas.buscar(fila, col_);
    return celda == nullptr ? VistaValor{} : vistaDe(*celda);
}

void ColumnaRecordada::cambiar(std::uint64_t momento, int fila, const nucleo::Valor& valor) {
    cambios_.apuntar(momento, fila);
    const int indice = fila / kFilasPagina;
    // Quien cambia es una fórmula, así que su página no es la que comparten las que no tienen
    // celdas.
    PaginaColumna* const pagina = paginas_[static_cast<std::size_t>(indice)];
    if (pagina == nullptr)
        return;
    ponerEnPagina(*pagina, fila % kFilasPagina, vistaDe(valor));
    if (extremos_)
        extremos_->invalidar(indice);
    if (textos_) {
        textos_->paginas[static_cast<std::size_t>(indice)].reset();
        textos_->extremos.invalidar(indice);
    }
}

int ColumnaRecordada::buscarOrdenado(TramoFilas filas, const VistaValor& buscado, Orden orden) {
    int rebasa = 0;
    if (buscado.tipo == TipoValor::Numero) {
        if (!extremos_)
            extremos_ = std::make_unique<ExtremosColumna<double>>();
        FuenteNumeros numeros(*this);
        rebasa = extremos_->primeraQueRebasa(numeros, filas, buscado.numero, orden);
        return ultimaCon({filas.desde, rebasa - 1}, &PaginaColumna::conNumero);
    }
    if (!textos_)
        textos_ = std::make_unique<Textos>();
    FuenteTextos textos(*this);
    const std::string minusculas = cambiarCaso(buscado.texto, false);
    rebasa = textos_->extremos.primeraQueRebasa(textos, filas, minusculas, orden);
    return ultimaCon({filas.desde, rebasa - 1}, &PaginaColumna::conTexto);
}

int ColumnaRecordada::ultimaCon(TramoFilas filas, std::uint64_t PaginaColumna::*clase) {
    if (filas.hasta < filas.desde)
        return -1;
    const int primera = filas.desde / kFilasPagina;
    for (int indice = filas.hasta / kFilasPagina; indice >= primera; --indice) {
        const std::uint64_t hay = pagina(indice).*clase & bitsDePagina(filas, indice);
        if (hay != 0)
            return indice * kFilasPagina + kFilasPagina - 1 - std::countl_zero(hay);
    }
    return -1;
}

} // namespace motor_formulas
