#pragma once

#include "model/libro.h"
#include "model/serializador.h"

#include <string>

/// Archivo de recuperación de cada documento.
namespace nucleo::Autosave {

/// Ruta del archivo de recuperación de un documento; depende solo de su nombre base.
std::string generarRuta(const std::string& rutaDocumento);
ResultadoArchivo guardar(const Libro& libro, const std::string& ruta);
ResultadoArchivo cargar(const std::string& ruta, Libro& libro);
/// Verdadero si la ruta no está vacía y el archivo puede abrirse para leer.
bool hayPendiente(const std::string& ruta);
/// Borra el archivo; que falte o no se pueda borrar no importa.
void descartar(const std::string& ruta);

} // namespace nucleo::Autosave
