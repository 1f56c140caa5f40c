#pragma once

#include "model/archivos.h"
#include "model/escritor_bytes.h"
#include "model/libro.h"
#include "model/serializador.h"

#include <string>

/// Lo que comparten los documentos y sus archivos de recuperación al guardar y cargar.
namespace nucleo {

/// Compone los bytes de un libro; falso si falta memoria.
bool componerLibro(const Libro& libro, EscritorBytes& salida);

/// Sustituye el libro por el contenido de un archivo ya abierto; `ruta` es la que recordará.
ResultadoArchivo cargarLibro(const Archivo& archivo, const std::string& ruta, Libro& libro);

} // namespace nucleo
