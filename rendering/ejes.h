#pragma once

#include "model/mapa_tamanos.h"

#include <cstdint>
#include <vector>

namespace nucleo {
class Hoja;
}

namespace renderizador {

/// Píxeles de un tamaño con zoom: trunca tamaño × zoom + 0,5. Cero si no llega a un píxel (también
/// con zoom NaN); se satura si no cabe.
int escalar(int tamano, double zoom);

/// Qué eje de la hoja se mide: cuántos elementos tiene y cuáles llevan tamaño propio.
struct MedidasEje {
    const nucleo::MapaTamanos& tamanos; ///< elemento -> píxeles sin zoom
    int elementos;
    int predeterminado; ///< píxeles sin zoom
    double zoom;

    int tamano(int elemento) const;
    /// Píxeles que ocupan los elementos [desde, hasta), acotados a la cuadrícula. Cuesta lo que el
    /// menor de los dos: el tramo, o los tamaños propios que haya.
    std::int64_t suma(int desde, int hasta) const;
};

MedidasEje medidasColumnas(const nucleo::Hoja& hoja, double zoom);
MedidasEje medidasFilas(const nucleo::Hoja& hoja, double zoom);

/// Índice de un eje. Con pocos tamaños propios los guarda en orden, cada uno con su posición: lo
/// que hay entre ellos es una multiplicación. Con muchos, guarda dónde acaba cada elemento.
class Eje {
  public:
    Eje() = default;
    explicit Eje(const MedidasEje& medidas);

    int elementos() const { return elementos_; }
    /// De un elemento de la cuadrícula.
    int tamano(int elemento) const;
    /// Píxeles de los elementos 0..elemento - 1.
    std::int64_t posicion(int elemento) const;
    /// El primer elemento que acaba más allá de esa posición; `elementos()` si no hay.
    int elementoEn(std::int64_t posicion) const;

  private:
    struct Propio {
        int elemento;
        int tamano;
        std::int64_t inicio; ///< posición del elemento
    };

    void ordenarPropios(const MedidasEje& medidas);
    void sumarTodos(const MedidasEje& medidas);
    std::vector<Propio>::const_iterator primeroDesde(int elemento) const;

    std::vector<Propio> propios_;       ///< en orden de elemento, si son pocos
    std::vector<std::int64_t> finales_; ///< uno por elemento, si los propios son muchos
    int elementos_ = 0;
    int predeterminado_ = 0; ///< ya con zoom
};

/// Los dos ejes de una hoja, y de qué hoja y zoom salieron.
struct Ejes {
    const nucleo::Hoja* hoja = nullptr;
    double zoom = 1.0;
    Eje filas;
    Eje columnas;
};

/// Puntero a unos ejes prestados que no se copia con su dueño: la copia no sabe si siguen vivos.
class RefEjes {
  public:
    RefEjes() = default;
    RefEjes(const RefEjes&) {}
    RefEjes& operator=(const RefEjes&) { return *this; }
    ~RefEjes() = default;

    const Ejes* get() const { return ejes_; }
    void prestar(const Ejes* ejes) const { ejes_ = ejes; }

  private:
    mutable const Ejes* ejes_ = nullptr;
};

} // namespace renderizador
