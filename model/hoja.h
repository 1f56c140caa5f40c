#pragma once

#include "model/almacen_celdas.h"
#include "model/celda.h"
#include "model/limites.h"
#include "model/mapa_tamanos.h"
#include "model/rango.h"

#include <cstdint>
#include <string>
#include <vector>

namespace nucleo {

/// Rango fusionado, con las esquinas incluidas. `Hoja::fusionar` los guarda normalizados y sin
/// solaparse; los que vienen de un archivo se conservan como estén escritos.
struct RangoFusion {
    int fila1 = 0;
    int col1 = 0;
    int fila2 = 0;
    int col2 = 0;

    bool operator==(const RangoFusion&) const = default;
};

/// Una hoja del libro. Se copia como un valor; las copias comparten los bloques de celdas que
/// ninguna ha modificado.
class Hoja {
  public:
    std::string nombre = "Hoja 1";
    AlmacenCeldas celdas; ///< por `claveLocal`
    std::vector<RangoFusion> fusiones;
    MapaTamanos anchos; ///< columna -> píxeles, solo las que no son de 88
    MapaTamanos altos;  ///< fila -> píxeles, solo las que no son de 24
    int filasInmovilizadas = 0;
    int columnasInmovilizadas = 0;
    /// Distingue esta hoja de otra aunque se llamen igual. Una copia la conserva, porque es la
    /// misma hoja en otro momento, y por eso no cuenta al comparar hojas.
    std::uint64_t identidad = nuevaIdentidad();

    /// La celda, o nulo si no existe. Nunca la crea.
    const Celda* celda(int fila, int col) const;
    /// La celda para escribir en ella, creada si no existía. La referencia vale hasta la siguiente
    /// operación sobre la hoja o hasta que esta se copie.
    Celda& celdaMut(int fila, int col);
    void quitarCelda(int fila, int col);

    /// La primera fusión, por orden de creación, que contiene la celda; nulo si ninguna.
    const RangoFusion* fusionEn(int fila, int col) const;
    /// La primera fusión que comparte alguna celda con el rango; nulo si ninguna.
    const RangoFusion* fusionQueToca(const RangoCeldas& rango) const;
    /// Fusiona el rectángulo de dos esquinas cualesquiera y quita todas sus celdas menos la
    /// superior izquierda. Falso, sin cambios, si es una sola celda o toca otra fusión.
    bool fusionar(int fila1, int col1, int fila2, int col2);
    /// Deshace la primera fusión que contiene la celda; falso si no hay.
    bool separar(int fila, int col);

    int anchoColumna(int col) const; ///< píxeles sin zoom
    int altoFila(int fila) const;    ///< píxeles sin zoom

    /// Última fila con contenido o alcanzada por una fusión; -1 si no hay. Las celdas que solo
    /// tienen formato no cuentan.
    int ultimaFilaUsada() const;
    int ultimaColUsada() const;

    bool operator==(const Hoja& otra) const;

  private:
    static std::uint64_t nuevaIdentidad();
};

} // namespace nucleo
