#pragma once

#include <QString>

class QStatusBar;

namespace interfaz {

/// Mientras vive, el puntero dice que el programa trabaja y la barra de estado, en qué.
class Espera {
  public:
    Espera(QStatusBar* barra, const QString& mensaje);
    ~Espera();
    Espera(const Espera&) = delete;
    Espera& operator=(const Espera&) = delete;

  private:
    QStatusBar* barra_;
};

} // namespace interfaz
