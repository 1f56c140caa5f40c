#pragma once

#include "model/arbol_celdas.h"

#include <functional>

/// Cambio de todas las celdas de un rectángulo de ArbolCeldas. Solo lo incluye quien lo instancia.
namespace nucleo {

/// Cambia las partes de un árbol de las hojas hacia arriba. En un rectángulo grande casi todas las
/// partes faltan o son la misma de al lado, y de cada parte solo se hace un cambio: el resultado se
/// comparte, y dar formato a una hoja vacía entera cuesta lo que una columna.
template <typename G> class CambiadorDeRango {
    using Arbol = ArbolCeldas<G>;
    using Bloque = typename Arbol::Bloque;
    using Tramo = typename Arbol::Tramo;
    using Columna = typename Arbol::Columna;

  public:
    CambiadorDeRango(const RangoCeldas& rango, const std::function<void(Celda&)>& cambio)
        : rango_(rango), cambio_(cambio) {}

    /// La columna con sus filas del rectángulo cambiadas.
    Compartido<Columna> columna(const Compartido<Columna>& antes) {
        return ultimaColumna_.recordar(antes,
                                       [&] { return nodo(antes, rango_.fila1, rango_.fila2); });
    }

  private:
    /// Lo último que se cambió entero y lo que salió de ello.
    template <typename Parte> struct Ultima {
        bool hay = false;
        Compartido<Parte> antes; ///< se conserva para que nadie más tenga su dirección
        Compartido<Parte> despues;

        template <typename Cambiar>
        Compartido<Parte> recordar(const Compartido<Parte>& parte, Cambiar&& cambiar) {
            if (!hay || !(antes == parte)) {
                despues = cambiar();
                antes = parte;
                hay = true;
            }
            return despues;
        }
    };

    static std::uint32_t celdasDe(const Bloque* bloque) {
        return bloque != nullptr ? static_cast<std::uint32_t>(bloque->cuenta()) : 0;
    }
    template <typename Nodo> static std::uint32_t celdasDe(const Nodo* nodo) {
        return nodo != nullptr ? nodo->celdas : 0;
    }

    Ultima<Bloque>& ultima(const Bloque*) { return ultimoBloque_; }
    Ultima<Tramo>& ultima(const Tramo*) { return ultimoTramo_; }

    static constexpr int filasDe(const Bloque*) { return Bloque::kFilas; }
    static constexpr int filasDe(const Tramo*) { return Bloque::kFilas * Tramo::kHijos; }

    Compartido<Bloque> parte(const Compartido<Bloque>& antes, int desde, int hasta) {
        const Mascara cambiadas = bitsEntre(desde, hasta);
        const Mascara previas = antes ? antes->presentes() : 0;
        Compartido<Bloque> despues(Bloque::crear(contarBits(previas | cambiadas)));
        Bloque& bloque = despues.propio();
        for (Mascara quedan = previas | cambiadas; quedan != 0; quedan &= quedan - 1) {
            const int fila = primerBit(quedan);
            const Celda* previa = antes ? antes->buscar(fila) : nullptr;
            Celda& celda = previa != nullptr ? bloque.anexar(fila, *previa) : bloque.anexar(fila);
            if ((cambiadas & bitDe(fila)) != 0)
                cambio_(celda);
        }
        return despues;
    }
    Compartido<Tramo> parte(const Compartido<Tramo>& antes, int desde, int hasta) {
        return nodo(antes, desde, hasta);
    }

    template <typename Hijo, int Bits>
    Compartido<NodoCeldas<Hijo, Bits>> nodo(const Compartido<NodoCeldas<Hijo, Bits>>& antes,
                                            int desde, int hasta) {
        using Nodo = NodoCeldas<Hijo, Bits>;
        constexpr int kFilasHijo = filasDe(static_cast<const Hijo*>(nullptr));
        Compartido<Nodo> despues(antes ? Nodo::copiar(*antes) : new Nodo);
        Nodo& nuevo = despues.propio();
        for (int i = desde / kFilasHijo; i <= hasta / kFilasHijo; ++i) {
            const int primera = std::max(desde - i * kFilasHijo, 0);
            const int ultimaFila = std::min(hasta - i * kFilasHijo, kFilasHijo - 1);
            const Compartido<Hijo> hijo = nuevo.compartido(i);
            const auto cambiar = [&] { return parte(hijo, primera, ultimaFila); };
            const bool entero = primera == 0 && ultimaFila == kFilasHijo - 1;
            Compartido<Hijo> cambiado =
                entero ? ultima(hijo.get()).recordar(hijo, cambiar) : cambiar();
            nuevo.celdas += celdasDe(cambiado.get()) - celdasDe(hijo.get());
            nuevo.poner(i, std::move(cambiado));
        }
        return despues;
    }

    RangoCeldas rango_;
    const std::function<void(Celda&)>& cambio_;
    Ultima<Bloque> ultimoBloque_;
    Ultima<Tramo> ultimoTramo_;
    Ultima<Columna> ultimaColumna_;
};

template <typename G>
void ArbolCeldas<G>::cambiarRango(const RangoCeldas& rango,
                                  const std::function<void(Celda&)>& cambio) {
    const std::optional<RangoCeldas> recortado = recortar(rango);
    if (!recortado)
        return;
    CambiadorDeRango<G> cambiador(*recortado, cambio);
    for (int col = recortado->col1; col <= recortado->col2; ++col) {
        const Franja* franja = raiz_ ? raiz_->hijo(franjaDe(col)) : nullptr;
        ponerColumna(col, cambiador.columna(franja != nullptr ? franja->compartido(enFranja(col))
                                                              : Compartido<Columna>()));
    }
}

} // namespace nucleo
