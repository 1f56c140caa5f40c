#pragma once

#include <string>
#include <vector>

namespace consola {

/// Cómo acabó otro programa.
struct Acabado {
    int estado = -1;     ///< su estado de salida; -1 si no se pudo llamar o lo mató una señal
    std::string errores; ///< el comienzo de lo que escribió en la salida de errores
};

/// Llama a otro programa, sin pasar por ningún intérprete de órdenes, y espera a que acabe.
Acabado llamarPrograma(const std::string& ruta, const std::vector<std::string>& argumentos);

} // namespace consola
