#pragma once

#include "tests/comun/comprobar_libro.h"

namespace fuzz {

/// Lo que se exige a un libro tras cada ejecución. Los valores no, que para compararlos hay que
/// recalcularlo todo; el grafo, si lee pocas celdas: mirar cien mil cuesta más que mil ejecuciones.
inline pruebas::Exigencias exigencias(const nucleo::Libro& libro) {
    constexpr std::int64_t kLecturasQueSeMiran = 2000;
    return {true, false, pruebas::celdasLeidas(libro) <= kLecturasQueSeMiran};
}

} // namespace fuzz
