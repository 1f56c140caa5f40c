#pragma once

#include "console/argumentos.h"

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace consola {

/// Estados de salida del programa.
enum Estado : int {
    kBien = 0,
    kMalUso = 1,
    kNoSeLee = 2,     ///< un archivo de entrada falta o no es lo que se espera
    kNoSeEscribe = 3, ///< el destino, o la salida estándar, no admite lo escrito
    kSinPrograma = 4  ///< otro programa que hace falta no está o ha terminado mal
};

/// Cómo terminó una orden. El mensaje, de una línea, se escribe en la salida de errores.
struct Resultado {
    Estado estado = kBien;
    std::string mensaje;
};

/// Por dónde habla el programa.
struct Terminal {
    std::istream& entrada;
    std::ostream& salida;
    std::ostream& errores;
    bool interactiva; ///< la salida de errores es una pantalla: se puede enseñar el progreso
};

/// Una orden de la línea de órdenes: la ayuda y la lectura de argumentos salen de aquí.
struct Orden {
    std::string_view nombre;
    std::string_view uso; ///< lo que sigue al nombre
    std::string_view descripcion;
    std::span<const Opcion> opciones;
    std::size_t minimo; ///< argumentos sin contar las opciones
    std::size_t maximo;
    Resultado (*hacer)(const Argumentos&, Terminal&);
};

/// Todas, en el orden en que las enseña la ayuda.
std::span<const Orden> ordenes();

} // namespace consola
