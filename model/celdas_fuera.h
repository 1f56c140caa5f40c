#pragma once

#include "model/celda.h"
#include "model/compartido.h"
#include "model/rango.h"

#include <cstddef>
#include <cstdint>
#include <map>

namespace nucleo {

/// Celdas con claves que no caen en la cuadrícula. Solo llegan de archivos, que pueden traer
/// cualquier clave de 64 bits; se conservan en orden, sin dispersarlas, y se comparten entre copias
/// hasta que alguien las cambia.
class CeldasFuera {
  public:
    using Mapa = std::map<std::uint64_t, Celda>;

    /// Nunca nulo.
    const Mapa& celdas() const { return contenido_ ? contenido_->celdas : vacio(); }
    /// Para escribir en ellas.
    Mapa& propias();
    void vaciar() { contenido_ = {}; }

    void quitarRango(const RangoCeldas& rango);
    void completarLiterales();
    int ultimaFilaConContenido() const { return extension().fila; }
    int ultimaColConContenido() const { return extension().col; }

    bool operator==(const CeldasFuera& otras) const {
        return contenido_ == otras.contenido_ || celdas() == otras.celdas();
    }

  private:
    struct Extension {
        int fila = -1;
        int col = -1;
    };
    struct Contenido {
        std::uint32_t referencias = 1;
        Mapa celdas;
        // Lo que se sabe de las celdas mientras nadie las cambie.
        bool literalesCompletos = false;
        mutable bool medidas = false;
        mutable Extension extension;

        static Contenido* copiar(const Contenido& otro);
        static void destruir(Contenido* contenido) { delete contenido; }
    };

    static const Mapa& vacio();
    Extension extension() const;

    Compartido<Contenido> contenido_;
};

} // namespace nucleo
