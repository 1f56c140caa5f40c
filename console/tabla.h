#pragma once

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace consola {

enum class Lado { Izquierda, Centro, Derecha };

/// Lo que va en un hueco de la tabla, ya limpio para la terminal.
struct Hueco {
    std::string texto;
    Lado lado = Lado::Izquierda;
};

/// Una tabla alineada. Se mide fila a fila y luego se escribe fila a fila: no guarda los textos.
///
/// Un texto a la izquierda al que solo siguen huecos vacíos no ensancha su columna: se extiende
/// sobre ellos, como en la cuadrícula.
class Tabla {
  public:
    void medir(std::span<const Hueco> fila);
    /// Sin espacios al final de la línea.
    void escribir(std::ostream& salida, std::span<const Hueco> fila) const;

  private:
    std::vector<std::size_t> anchos_;
};

} // namespace consola
