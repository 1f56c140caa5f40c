#pragma once

#include "model/libro.h"

namespace interfaz {

/// Mientras vive, otra hoja es la activa del libro; al morir vuelve la que estaba.
class HojaPrestada {
  public:
    HojaPrestada(nucleo::Libro& libro, int hoja) : libro_(libro), anterior_(libro.hojaActiva) {
        libro_.hojaActiva = hoja;
    }
    ~HojaPrestada() { libro_.hojaActiva = anterior_; }
    HojaPrestada(const HojaPrestada&) = delete;
    HojaPrestada& operator=(const HojaPrestada&) = delete;

  private:
    nucleo::Libro& libro_;
    int anterior_;
};

} // namespace interfaz
