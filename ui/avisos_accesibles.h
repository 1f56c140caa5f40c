#pragma once

#include "editing/seleccion.h"

#include <QAccessible>

namespace interfaz {

class WidgetHoja;

/// Cuenta a los lectores de pantalla lo que cambia en la cuadrícula: la celda activa, lo
/// seleccionado y la forma de la tabla. Recuerda lo último que contó para no repetirse.
class AvisosAccesibles {
  public:
    /// Da de alta la tabla accesible de las vistas de hoja; solo hace algo la primera vez.
    static void instalarFabrica();

    /// A quién se cuenta cada cosa.
    using Emisor = void (*)(QAccessibleEvent*);

    explicit AvisosAccesibles(WidgetHoja& vista, Emisor emisor = &QAccessible::updateAccessibility)
        : vista_(vista), emisor_(emisor) {}

    void ponerAlDia();

  private:
    WidgetHoja& vista_;
    Emisor emisor_;
    int hoja_ = -1;
    int filas_ = -1;
    int columnas_ = -1;
    editor::Seleccion seleccion_;
};

} // namespace interfaz
