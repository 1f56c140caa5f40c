#pragma once

#include "model/libro.h"

#include <string>

#include "printing/resultado.h"

namespace impresion {

/// Abre un libro y calcula sus fórmulas: el archivo no guarda los resultados.
Resultado abrirCalculado(const std::string& ruta, nucleo::Libro& libro);

} // namespace impresion
