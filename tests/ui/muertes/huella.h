#pragma once

#include "model/archivo_libro.h"

#include <cstddef>
#include <cstdint>

namespace pruebas {

/// Resume unos bytes: los de dos estados distintos de un libro no coinciden.
inline std::uint64_t huella(const unsigned char* datos, std::size_t tamano) {
    std::uint64_t resumen = 14695981039346656037ULL;
    for (std::size_t i = 0; i < tamano; ++i) {
        resumen = (resumen ^ datos[i]) * 1099511628211ULL;
    }
    return resumen;
}

/// La huella del archivo que se escribiría con ese libro.
inline std::uint64_t huella(const nucleo::Libro& libro) {
    nucleo::EscritorBytes bytes;
    nucleo::componerLibro(libro, bytes);
    return huella(bytes.datos(), bytes.tamano());
}

} // namespace pruebas
