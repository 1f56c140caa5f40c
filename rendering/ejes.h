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

/// El eje por el que se preguntó la última vez. Se rehace si han cambiado los tamaños o el zoom, y
/// saberlo no cuesta mirar los tamaños: guarda una copia del mapa, y quien escribe en él lo aparta
/// de sus copias.
class EjeRecordado {
  public:
    const Eje& de(const MedidasEje& medidas);

  private:
    nucleo::MapaTamanos tamanos_;
    double zoom_ = 0;
    Eje eje_;
};

} // namespace renderizador
