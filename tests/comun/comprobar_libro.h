#pragma once

#include "model/libro.h"

#include <cstdint>
#include <string>

namespace pruebas {

/// Lo que se exige a un libro además de lo que se cumple siempre.
struct Exigencias {
    /// Fusiones normalizadas, dentro de la cuadrícula, de más de una celda y sin solaparse: las que
    /// hace el editor. Las de un archivo pueden ser cualesquiera.
    bool fusionesDelEditor = true;
    /// Cada fórmula muestra lo que mostraría un recálculo completo. No vale con fórmulas que leen
    /// un bloque mayor que el máximo de precedentes, ni con las que miran el reloj o el azar.
    bool valoresAlDia = true;
    /// El grafo dice en los dos sentidos lo que dicen los textos. Se mira celda a celda: no es para
    /// fórmulas que leen bloques grandes.
    bool grafo = true;
};

/// Cuántas celdas tiene apuntadas el grafo como leídas por la fórmula de una celda.
std::int64_t celdasLeidas(const nucleo::GrafoDependencias& grafo, std::uint64_t clave);
/// Y por todas las de un libro: lo que cuesta mirar su grafo.
std::int64_t celdasLeidas(const nucleo::Libro& libro);

/// El primer invariante que el libro no cumple, dicho en una frase; vacío si los cumple todos. Mira
/// hojas, almacenes de celdas, extensión usada, fusiones, grafo en los dos sentidos y valores.
std::string defectoDelLibro(nucleo::Libro& libro, const Exigencias& exigencias = {});

} // namespace pruebas
