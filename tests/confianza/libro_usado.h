#pragma once

#include "model/libro.h"
#include "model/serializador.h"

#include <string>
#include <string_view>

namespace prueba {

/// Carga un libro de unos bytes que no están en ningún archivo.
nucleo::ResultadoArchivo cargarBytes(std::string_view bytes, nucleo::Libro& libro);

/// Los bytes con que se guardaría.
std::string guardarEnBytes(const nucleo::Libro& libro);

/// Hace con un libro recién cargado y calculado lo que haría una persona: lo recorre hasta las
/// cuatro esquinas a varios tamaños, lo edita, deshace y lo guarda. Devuelve lo que ha ido mal, o
/// vacío. Necesita una aplicación de Qt.
std::string usarLibro(nucleo::Libro& libro);

} // namespace prueba
