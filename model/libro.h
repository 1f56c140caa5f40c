#pragma once

#include "model/grafo_dependencias.h"
#include "model/hoja.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nucleo {

/// El libro: sus hojas, de dónde vino, si tiene cambios sin guardar y qué fórmula lee qué celda.
/// Siempre hay al menos una hoja.
class Libro {
  public:
    std::vector<std::unique_ptr<Hoja>> hojas;
    int hojaActiva = 0;
    std::string ruta; ///< vacía en un libro sin guardar
    bool modificado = false;

  private:
    std::unique_ptr<GrafoDependencias> grafo_ = std::make_unique<GrafoDependencias>();

  public:
    /// Por cada celda, las fórmulas que la leen.
    VistaDependientes dependientes{*grafo_};
    /// Por cada fórmula, las celdas que lee.
    VistaPrecedentes precedentes{*grafo_};

    Libro();
    /// El otro queda como un libro nuevo.
    Libro(Libro&& otro); // NOLINT(performance-noexcept-move-constructor)
    /// El otro se queda con lo que este tenía.
    Libro& operator=(Libro&& otro) noexcept;
    Libro(const Libro&) = delete;
    Libro& operator=(const Libro&) = delete;
    ~Libro() = default;
    void intercambiar(Libro& otro) noexcept;

    /// Deja una sola hoja vacía "Hoja 1", sin ruta y sin cambios.
    void reiniciar();
    /// Añade al final una hoja "Hoja N" con el primer N libre; no cambia la hoja activa.
    Hoja* agregarHoja();
    /// Índice de la hoja con exactamente ese nombre; -1 si no hay.
    int indiceHoja(std::string_view nombre) const;
    /// Falso si es la única o el índice no existe. No reescribe fórmulas ni claves del grafo.
    bool eliminarHoja(int indice);
    /// Falso si el nombre está vacío o es de otra hoja. No reescribe fórmulas.
    bool renombrarHoja(int indice, const std::string& nombre);

    /// Sustituye los precedentes de una fórmula; con la lista vacía la saca del grafo.
    void establecerPrecedentes(std::uint64_t clave, std::vector<std::uint64_t> precedentesNuevos);
    void quitarDependencias(std::uint64_t clave);
    void limpiarGrafo();

    GrafoDependencias& grafo() { return *grafo_; }
    const GrafoDependencias& grafo() const { return *grafo_; }
};

} // namespace nucleo
