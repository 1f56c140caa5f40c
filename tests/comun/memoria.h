#pragma once

#include <cstddef>

/// Los programas que enlazan `marnel_pruebas_memoria` piden toda su memoria por aquí.
namespace prueba {

/// Para quien sustituye a otra función que pide memoria: si a esta petición le toca fallar.
bool faltaMemoria();

/// Mientras vive falta memoria a partir de la petición número `n` (desde 1): solo en esa, o en
/// todas las siguientes.
class FaltaDeMemoria {
  public:
    enum class Cual { SoloUna, DesdeEntonces };

    FaltaDeMemoria(int n, Cual cual);
    ~FaltaDeMemoria();
    FaltaDeMemoria(const FaltaDeMemoria&) = delete;
    FaltaDeMemoria& operator=(const FaltaDeMemoria&) = delete;

    bool ocurrio() const;
};

/// Cuenta la memoria que se pide mientras vive.
class MemoriaPedida {
  public:
    MemoriaPedida();
    ~MemoriaPedida();
    MemoriaPedida(const MemoriaPedida&) = delete;
    MemoriaPedida& operator=(const MemoriaPedida&) = delete;

    /// Lo más que ha habido a la vez, en bytes.
    std::ptrdiff_t pico() const;
};

} // namespace prueba
