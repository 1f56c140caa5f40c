#pragma once

#include "model/libro.h"

#include <vector>

#include "printing/peticion.h"
#include "printing/resultado.h"

namespace impresion {

/// Imprime las hojas dadas en el PDF de la petición, con márgenes de 15 mm y, al pie, el nombre de
/// la hoja y la página. O queda entero o no queda.
Resultado imprimirPdf(const nucleo::Libro& libro, const std::vector<int>& hojas,
                      const Peticion& peticion);

} // namespace impresion
