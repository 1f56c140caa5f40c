#pragma once

#include "model/celda.h"
#include "model/mascara.h"
#include "model/reserva_bloques.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace nucleo {

/// Verdadero si el `valor` de un literal todavía no es el literal.
inline bool literalIncompleto(const Celda& celda) {
    if (celda.tipo == TipoCelda::Numero)
        return celda.valor.tipo != TipoValor::Numero ||
               std::bit_cast<std::uint64_t>(celda.valor.numero) !=
                   std::bit_cast<std::uint64_t>(celda.numero);
    if (celda.tipo == TipoCelda::Texto)
        return celda.valor.tipo != TipoValor::Texto || celda.valor.texto != celda.entrada;
    return false;
}

/// Pone el literal en `valor` y deja los demás campos como en un valor nuevo.
inline void completarLiteral(Celda& celda) {
    Valor& valor = celda.valor;
    if (valor.tipo != TipoValor::Vacio)
        valor = Valor();
    if (celda.tipo == TipoCelda::Numero) {
        valor.tipo = TipoValor::Numero;
        valor.numero = celda.numero;
    } else {
        valor.tipo = TipoValor::Texto;
        valor.texto = celda.entrada;
    }
}

/// Números que se ven en un grupo de celdas: el literal, o el resultado de una fórmula.
struct NumerosVistos {
    int cuenta = 0;
    double suma = 0;

    void sumar(const Celda& celda) {
        if (celda.tipo == TipoCelda::Numero) {
            ++cuenta;
            suma += celda.numero;
        } else if (celda.tipo == TipoCelda::Formula && celda.valor.tipo == TipoValor::Numero) {
            ++cuenta;
            suma += celda.valor.numero;
        }
    }
};

/// Las celdas de 2^Bits filas seguidas de una columna. Una máscara dice qué filas existen y las
/// celdas van detrás del bloque, apretadas y por orden de fila.
///
/// El resumen (qué filas tienen contenido, cuáles son fórmulas, qué literales están incompletos,
/// la suma) se calcula al pedirlo y solo para las filas que alguien ha podido cambiar. La última
/// fila entregada para escribir, la "abierta", se mira siempre: quien la recibió puede escribir en
/// ella después de que otro pida el resumen.
template <int Bits> class BloqueCeldas {
    static_assert(Bits >= 1 && Bits <= 6);

  public:
    static constexpr int kFilas = 1 << Bits;

    std::uint32_t referencias = 1;

    /// Un bloque vacío con sitio para `sitio` celdas como poco.
    static BloqueCeldas* crear(int sitio);
    static BloqueCeldas* copiar(const BloqueCeldas& otro) { return copiar(otro, otro.cuenta()); }
    static BloqueCeldas* copiar(const BloqueCeldas& otro, int sitio);
    static void destruir(BloqueCeldas* bloque);
    /// De donde salen los de una columna llena.
    static ReservaBloques& reservaBloques();

    Mascara presentes() const { return presentes_; }
    int cuenta() const { return contarBits(presentes_); }
    int capacidad() const { return capacidad_; }
    bool tiene(int fila) const { return (presentes_ >> fila & 1) != 0; }

    /// Las celdas que existen, seguidas y por orden de fila.
    const Celda* celdas() const {
        return std::launder(reinterpret_cast<const Celda*>(memoria() + kInicioCeldas));
    }
    /// Cuántas celdas hay antes de una fila.
    int antesDe(int fila) const {
        const Mascara posibles = bitsAntesDe(fila);
        const Mascara antes = presentes_ & posibles;
        return antes == posibles ? fila : contarBits(antes);
    }
    const Celda* buscar(int fila) const { return tiene(fila) ? celdas() + antesDe(fila) : nullptr; }

    // Quien llama a las que siguen es el único dueño del bloque.

    /// La celda de una fila que existe, para escribir en ella.
    Celda& abrir(int fila);
    /// Crea la celda de una fila que no existe, habiendo sitio, y la abre.
    Celda& insertar(int fila);
    /// Añade una celda, construida con lo que se dé, tras la última fila, habiendo sitio. No queda
    /// abierta.
    template <typename... Datos> Celda& anexar(int fila, Datos&&... datos) {
        Celda* const celda =
            new (celdasParaMover() + cuenta()) Celda(std::forward<Datos>(datos)...);
        presentes_ |= bitDe(fila);
        dudosas_ |= bitDe(fila);
        sumaValida_ = false;
        return *celda;
    }
    /// Cambia solo el valor de una celda que existe.
    void ponerValor(int fila, const Valor& valor);
    void quitar(Mascara filas);
    void completarLiterales();
    /// Un bloque nuevo con las celdas de este, que se quedan movidas, y sitio para `sitio`.
    BloqueCeldas* mudar(int sitio);
    /// Las celdas para moverlas a otro bloque; después solo cabe destruir este.
    Celda* celdasParaMover() { return const_cast<Celda*>(celdas()); }

    // Resumen

    Mascara conContenido() const { return actualizado().contenido_; }
    Mascara formulas() const { return actualizado().formulas_; }
    Mascara literalesIncompletos() const { return actualizado().incompletos_; }
    NumerosVistos numeros() const;
    void actualizarResumen() const { actualizado(); }

    /// Comprueba que el resumen que se da por bueno dice la verdad.
    bool resumenCierto() const;

  private:
    static constexpr std::size_t kInicioCeldas = 64;
    /// Los bloques grandes empiezan en una línea de caché: así el tipo y el número de cada celda
    /// caen siempre en una sola.
    static constexpr int kCapacidadAlineada = 16;
    static constexpr int kCapacidadReservada = 64;
    static constexpr std::align_val_t kAlineacion{64};
    static constexpr int kNinguna = -1;

    explicit BloqueCeldas(int capacidad) : capacidad_(static_cast<std::uint8_t>(capacidad)) {}
    ~BloqueCeldas() { std::destroy_n(celdasParaMover(), cuenta()); }

    const std::byte* memoria() const { return reinterpret_cast<const std::byte*>(this); }
    static int capacidadPara(int cuantas);
    /// Abre sitio para la celda de una fila y la apunta como presente.
    Celda* hueco(int fila);
    const BloqueCeldas& actualizado() const;
    void clasificar(int fila, const Celda& celda) const;

    std::uint8_t capacidad_;
    std::int8_t abierta_ = kNinguna;
    mutable bool sumaValida_ = false;
    Mascara presentes_ = 0;
    mutable Mascara dudosas_ = 0; ///< presentes cuyo resumen puede haber cambiado
    mutable Mascara contenido_ = 0;
    mutable Mascara formulas_ = 0;
    mutable Mascara incompletos_ = 0;
    mutable NumerosVistos numeros_; ///< de todas menos la abierta
};

template <int Bits> int BloqueCeldas<Bits>::capacidadPara(int cuantas) {
    // Crece a medias para que un bloque con pocas celdas ocupe poco más que ellas.
    static constexpr std::array<int, 12> pasos{1, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64};
    return std::min(*std::lower_bound(pasos.begin(), pasos.end(), cuantas), kFilas);
}

template <int Bits> ReservaBloques& BloqueCeldas<Bits>::reservaBloques() {
    // No se destruye nunca: puede haber almacenes que mueran después.
    static auto* const reserva =
        new ReservaBloques(kInicioCeldas + kCapacidadReservada * sizeof(Celda));
    return *reserva;
}

template <int Bits> BloqueCeldas<Bits>* BloqueCeldas<Bits>::crear(int sitio) {
    static_assert(sizeof(BloqueCeldas) <= kInicioCeldas);
    const int capacidad = capacidadPara(sitio);
    const std::size_t bytes = kInicioCeldas + static_cast<std::size_t>(capacidad) * sizeof(Celda);
    void* memoria = nullptr;
    if (capacidad == kCapacidadReservada)
        memoria = reservaBloques().pedir();
    else if (capacidad >= kCapacidadAlineada)
        memoria = ::operator new(bytes, kAlineacion);
    else
        memoria = ::operator new(bytes);
    return new (memoria) BloqueCeldas(capacidad);
}

template <int Bits> void BloqueCeldas<Bits>::destruir(BloqueCeldas* bloque) {
    const int capacidad = bloque->capacidad_;
    bloque->~BloqueCeldas();
    if (capacidad == kCapacidadReservada)
        reservaBloques().soltar(bloque);
    else if (capacidad >= kCapacidadAlineada)
        ::operator delete(bloque, kAlineacion);
    else
        ::operator delete(bloque);
}

template <int Bits>
BloqueCeldas<Bits>* BloqueCeldas<Bits>::copiar(const BloqueCeldas& otro, int sitio) {
    struct Destruir {
        void operator()(BloqueCeldas* bloque) const { destruir(bloque); }
    };
    std::unique_ptr<BloqueCeldas, Destruir> copia(crear(sitio));
    Celda* destino = copia->celdasParaMover();
    const Celda* origen = otro.celdas();
    for (Mascara quedan = otro.presentes_; quedan != 0; quedan &= quedan - 1) {
        new (destino++) Celda(*origen++);
        copia->presentes_ |= quedan & -quedan; // si falta memoria se destruyen las ya copiadas
    }
    copia->dudosas_ = otro.dudosas_;
    copia->contenido_ = otro.contenido_;
    copia->formulas_ = otro.formulas_;
    copia->incompletos_ = otro.incompletos_;
    return copia.release();
}

template <int Bits> BloqueCeldas<Bits>* BloqueCeldas<Bits>::mudar(int sitio) {
    BloqueCeldas* nuevo = crear(sitio);
    std::uninitialized_move_n(celdasParaMover(), cuenta(), nuevo->celdasParaMover());
    nuevo->presentes_ = presentes_;
    nuevo->dudosas_ = dudosas_;
    nuevo->contenido_ = contenido_;
    nuevo->formulas_ = formulas_;
    nuevo->incompletos_ = incompletos_;
    return nuevo;
}

template <int Bits> Celda& BloqueCeldas<Bits>::abrir(int fila) {
    if (abierta_ != fila) {
        abierta_ = static_cast<std::int8_t>(fila);
        sumaValida_ = false;
    }
    dudosas_ |= bitDe(fila);
    return celdasParaMover()[antesDe(fila)];
}

template <int Bits> Celda* BloqueCeldas<Bits>::hueco(int fila) {
    Celda* const inicio = celdasParaMover();
    Celda* const fin = inicio + cuenta();
    Celda* const sitio = inicio + antesDe(fila);
    if (sitio != fin) {
        new (fin) Celda(std::move(fin[-1]));
        std::move_backward(sitio, fin - 1, fin);
        std::destroy_at(sitio);
    }
    new (sitio) Celda();
    presentes_ |= bitDe(fila);
    dudosas_ |= bitDe(fila);
    sumaValida_ = false;
    return sitio;
}

template <int Bits> Celda& BloqueCeldas<Bits>::insertar(int fila) {
    Celda* celda = hueco(fila);
    abierta_ = static_cast<std::int8_t>(fila);
    return *celda;
}

template <int Bits> void BloqueCeldas<Bits>::ponerValor(int fila, const Valor& valor) {
    Celda& celda = celdasParaMover()[antesDe(fila)];
    celda.valor = valor;
    if (celda.tipo != TipoCelda::Formula)
        dudosas_ |= bitDe(fila);
    if (abierta_ != fila)
        sumaValida_ = false;
}

template <int Bits> void BloqueCeldas<Bits>::quitar(Mascara filas) {
    Celda* const inicio = celdasParaMover();
    Celda* const fin = inicio + cuenta();
    Celda* destino = inicio;
    Celda* origen = inicio;
    for (Mascara quedan = presentes_; quedan != 0; quedan &= quedan - 1, ++origen) {
        if ((filas & quedan & -quedan) != 0)
            continue;
        if (destino != origen)
            *destino = std::move(*origen);
        ++destino;
    }
    std::destroy(destino, fin);
    presentes_ &= ~filas;
    dudosas_ &= ~filas;
    contenido_ &= ~filas;
    formulas_ &= ~filas;
    incompletos_ &= ~filas;
    sumaValida_ = false;
    if (abierta_ != kNinguna && !tiene(abierta_))
        abierta_ = kNinguna;
}

template <int Bits> void BloqueCeldas<Bits>::completarLiterales() {
    for (Mascara quedan = literalesIncompletos(); quedan != 0; quedan &= quedan - 1)
        completarLiteral(celdasParaMover()[antesDe(primerBit(quedan))]);
    incompletos_ = 0;
}

template <int Bits> void BloqueCeldas<Bits>::clasificar(int fila, const Celda& celda) const {
    const auto poner = [bit = bitDe(fila)](Mascara& mascara, bool si) {
        mascara = si ? mascara | bit : mascara & ~bit;
    };
    poner(contenido_, celda.tipo != TipoCelda::Vacia);
    poner(formulas_, celda.tipo == TipoCelda::Formula);
    poner(incompletos_, literalIncompleto(celda));
}

template <int Bits> const BloqueCeldas<Bits>& BloqueCeldas<Bits>::actualizado() const {
    if (dudosas_ != 0) {
        for (Mascara quedan = dudosas_; quedan != 0; quedan &= quedan - 1) {
            const int fila = primerBit(quedan);
            clasificar(fila, celdas()[antesDe(fila)]);
        }
        // Con el bloque compartido nadie puede ya escribir en la que estuviera abierta.
        dudosas_ = abierta_ != kNinguna && referencias == 1 ? bitDe(abierta_) : 0;
    }
    return *this;
}

template <int Bits> NumerosVistos BloqueCeldas<Bits>::numeros() const {
    if (!sumaValida_) {
        numeros_ = {};
        const Celda* celda = celdas();
        for (Mascara quedan = presentes_; quedan != 0; quedan &= quedan - 1, ++celda) {
            if (primerBit(quedan) != abierta_)
                numeros_.sumar(*celda);
        }
        sumaValida_ = true;
    }
    NumerosVistos total = numeros_;
    if (abierta_ != kNinguna)
        total.sumar(celdas()[antesDe(abierta_)]);
    return total;
}

template <int Bits> bool BloqueCeldas<Bits>::resumenCierto() const {
    if (cuenta() > capacidad_ || (dudosas_ & ~presentes_) != 0 ||
        ((contenido_ | formulas_ | incompletos_) & ~presentes_) != 0 ||
        (abierta_ != kNinguna && !tiene(abierta_)))
        return false;
    NumerosVistos contados;
    const Celda* celda = celdas();
    for (Mascara quedan = presentes_; quedan != 0; quedan &= quedan - 1, ++celda) {
        const int fila = primerBit(quedan);
        const auto dice = [fila](Mascara mascara) { return (mascara >> fila & 1) != 0; };
        if (fila != abierta_)
            contados.sumar(*celda);
        if (!dice(dudosas_) && (dice(contenido_) != (celda->tipo != TipoCelda::Vacia) ||
                                dice(formulas_) != (celda->tipo == TipoCelda::Formula) ||
                                dice(incompletos_) != literalIncompleto(*celda)))
            return false;
    }
    return !sumaValida_ || contados.cuenta == numeros_.cuenta;
}

} // namespace nucleo
