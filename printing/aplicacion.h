#pragma once

#include <QGuiApplication>

namespace impresion {

/// Lo que Qt necesita para dibujar texto donde no hay pantalla: elige por sí misma la plataforma
/// sin ventanas, aunque quien llama tenga una, y calla los avisos de lo que esa plataforma no sabe
/// hacer.
class Aplicacion {
  public:
    /// Los argumentos de `main`, que duran tanto como el programa.
    Aplicacion(int& argc, char** argv);

  private:
    QGuiApplication aplicacion_;
};

} // namespace impresion
