#include "model/indice_rangos.h"

#include "model/limites.h"

#include <algorithm>
#include <utility>

namespace nucleo {

namespace {

/// Nodos de un árbol de 2^altura hojas, numerado como un montículo, que cubren justo [desde,
/// hasta].
template <typename Visitante>
void nodosQueCubren(int altura, std::uint32_t desde, std::uint32_t hasta, Visitante&& visitar) {
    std::uint32_t izquierda = desde + (1U << altura);
    std::uint32_t derecha = hasta + (1U << altura) + 1;
    for (; izquierda < derecha; izquierda /= 2, derecha /= 2) {
        if (izquierda % 2 == 1)
            visitar(izquierda++);
        if (derecha % 2 == 1)
            visitar(--derecha);
    }
}

int cuantosNodosCubren(int altura, std::uint32_t desde, std::uint32_t hasta) {
    int cuenta = 0;
    nodosQueCubren(altura, desde, hasta, [&cuenta](std::uint32_t) { ++cuenta; });
    return cuenta;
}

constexpr int kAlturaFilas = 16;
static_assert(kFilas == 1 << kAlturaFilas, "el árbol de filas cubre justo la cuadrícula");
static_assert(kColumnas <= 1024, "el árbol de columnas cubre la cuadrícula");

} // namespace

std::uint32_t IndiceRangos::mezcla(const BloqueDeHoja& bloque) {
    const auto byte = [](int x) {
        return static_cast<std::uint64_t>(static_cast<std::uint32_t>(x));
    };
    return mezclarClave((byte(bloque.rango.fila1) << 32) | byte(bloque.rango.fila2),
                        (byte(bloque.hoja) << 32) | (byte(bloque.rango.col1) << 16) |
                            byte(bloque.rango.col2));
}

BloqueDeHoja IndiceRangos::bloque(Id id) const {
    const Rectangulo& r = rectangulos_[id];
    return {r.hoja, {r.fila1, r.col1, r.fila2, r.col2}};
}

IndiceRangos::Id IndiceRangos::obtener(const BloqueDeHoja& buscado) {
    const std::uint32_t m = mezcla(buscado);
    Id id = tabla_.buscar(m, [&](Id candidato) { return bloque(candidato) == buscado; });
    if (id != 0)
        return id;
    if (libres_.empty()) {
        id = static_cast<Id>(rectangulos_.size());
        rectangulos_.emplace_back();
    } else {
        id = libres_.back();
        libres_.pop_back();
    }
    const auto corto = [](int x) { return static_cast<std::uint16_t>(x); };
    rectangulos_[id] = {corto(buscado.rango.fila1),
                        corto(buscado.rango.fila2),
                        corto(buscado.rango.col1),
                        corto(buscado.rango.col2),
                        buscado.hoja,
                        0,
                        0};
    tabla_.insertar(m, id);
    ++cuenta_;
    apuntar(id);
    return id;
}

void IndiceRangos::apuntar(Id id) {
    const Rectangulo& r = rectangulos_[id];
    const auto hoja = static_cast<std::size_t>(r.hoja);
    if (planos_.size() <= hoja)
        planos_.resize(hoja + 1);
    if (!planos_[hoja])
        planos_[hoja] = std::make_unique<Plano>();
    Plano& plano = *planos_[hoja];
    if (cuantosNodosCubren(kAlturaColumnas, r.col1, r.col2) > kMaximoColumnas) {
        apuntarEnColumna(id, plano, 1);
        return;
    }
    nodosQueCubren(kAlturaColumnas, r.col1, r.col2,
                   [&](std::uint32_t nodo) { apuntarEnColumna(id, plano, nodo); });
}

void IndiceRangos::apuntarEnColumna(Id id, Plano& plano, std::uint32_t nodoColumna) {
    // Los nodos se numeran desde 1, que es la raíz.
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
    plano.alturasUsadas |= 1U << (std::bit_width(nodoColumna) - 1);
    if (plano.raices[nodoColumna] == 0)
        plano.raices[nodoColumna] = nuevaPagina();
    const std::uint32_t raiz = plano.raices[nodoColumna];
    nodosQueCubren(kAlturaFilas, rectangulos_[id].fila1, rectangulos_[id].fila2,
                   [&](std::uint32_t nodo) {
                       // La raíz del árbol de filas no está en ninguna página: son sus dos mitades.
                       if (nodo == 1) {
                           apuntarEnNodo(id, raiz, 2);
                           apuntarEnNodo(id, raiz, 3);
                       } else {
                           apuntarEnNodo(id, raiz, nodo);
                       }
                   });
}

void IndiceRangos::apuntarEnNodo(Id id, std::uint32_t raiz, std::uint32_t nodoFila) {
    const int altura = static_cast<int>(std::bit_width(nodoFila)) - 1;
    const int paginasEncima = (altura - 1) / kAlturaPagina;
    std::uint32_t pagina = raiz;
    for (int p = 1; p <= paginasEncima; ++p) {
        const std::size_t tramo = (nodoFila >> (altura - p * kAlturaPagina)) & 15U;
        if (paginas_[pagina].hijas[tramo] == 0) {
            const std::uint32_t nueva = nuevaPagina();
            paginas_[pagina].hijas[tramo] = nueva;
        }
        pagina = paginas_[pagina].hijas[tramo];
    }
    const int alturaLocal = altura - paginasEncima * kAlturaPagina;
    // La raíz no llega aquí: la altura no es cero.
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
    const std::uint32_t nodo = (1U << alturaLocal) | (nodoFila & ((1U << alturaLocal) - 1));

    std::uint32_t nueva = entradaLibre_;
    if (nueva != 0) {
        entradaLibre_ = entradas_[nueva].siguiente;
    } else {
        nueva = static_cast<std::uint32_t>(entradas_.size());
        entradas_.emplace_back();
    }
    Pagina& destino = paginas_[pagina];
    const std::uint32_t primera = destino.primeras[nodo];
    entradas_[nueva] = {id, primera, 0, rectangulos_[id].entradas, pagina * kNodosPagina + nodo};
    if (primera != 0)
        entradas_[primera].anterior = nueva;
    destino.primeras[nodo] = nueva;
    destino.presentes |= 1U << nodo;
    destino.vistos &= ~(1U << nodo);
    rectangulos_[id].entradas = nueva;
}

void IndiceRangos::quitar(Id id) {
    std::uint32_t actual = rectangulos_[id].entradas;
    while (actual != 0) {
        const Entrada entrada = entradas_[actual];
        if (entrada.siguiente != 0)
            entradas_[entrada.siguiente].anterior = entrada.anterior;
        if (entrada.anterior != 0) {
            entradas_[entrada.anterior].siguiente = entrada.siguiente;
        } else {
            Pagina& pagina = paginas_[entrada.lugar / kNodosPagina];
            const std::uint32_t nodo = entrada.lugar % kNodosPagina;
            pagina.primeras[nodo] = entrada.siguiente;
            if (entrada.siguiente == 0)
                pagina.presentes &= ~(1U << nodo);
        }
        entradas_[actual].siguiente = entradaLibre_;
        entradaLibre_ = std::exchange(actual, entrada.hermana);
    }
    tabla_.quitar(mezcla(bloque(id)), id);
    rectangulos_[id].entradas = 0;
    libres_.push_back(id);
    --cuenta_;
}

void IndiceRangos::vaciar() {
    rectangulos_.resize(1);
    libres_.clear();
    entradas_.resize(1);
    entradaLibre_ = 0;
    paginas_.resize(1);
    planos_.clear();
    tabla_.vaciar();
    cuenta_ = 0;
}

std::uint32_t IndiceRangos::nuevaPagina() {
    paginas_.emplace_back();
    return static_cast<std::uint32_t>(paginas_.size()) - 1;
}

} // namespace nucleo
