#pragma once

#include "console/orden.h"
#include "model/libro.h"

#include <string>

namespace consola {

/// Qué es un archivo, por su nombre. "-" es la entrada o la salida estándar, en CSV.
enum class ClaseArchivo { Desconocida, Libro, Tsv, Csv };
ClaseArchivo claseDe(const std::string& ruta);

/// Fallo de un archivo que no puede leerse; `motivo` puede quedar vacío si lo dice el sistema.
Resultado noSeLee(const std::string& ruta, const std::string& motivo = {});
Resultado noSeEscribe(const std::string& ruta);

Resultado abrirLibro(const std::string& ruta, nucleo::Libro& libro);
Resultado guardarLibro(const nucleo::Libro& libro, const std::string& ruta);

/// La hoja que se pide por su nombre, o la activa si no se pide ninguna.
Resultado elegirHoja(const nucleo::Libro& libro, const std::string* nombre, int& indice);

/// Verdadero si las dos rutas llevan al mismo archivo.
bool esElMismoArchivo(const std::string& una, const std::string& otra);

} // namespace consola
