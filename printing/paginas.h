#pragma once

#include "model/rango.h"

#include <QSize>

#include <vector>

#include "printing/lamina.h"

namespace impresion {

/// Un libro hostil puede repartir sus celdas por toda la cuadrícula: más páginas no se imprimen.
inline constexpr std::size_t kMaximoPaginas = 10000;

/// La zona con contenido de una hoja, dentro de la cuadrícula; vacía (`fila2 < 0`) si no hay nada.
nucleo::RangoCeldas zonaConContenido(const nucleo::Hoja& hoja);

/// Cuántas filas del principio se repiten en cada página: las inmovilizadas, si la zona empieza por
/// ellas, sigue después y les queda al menos media página.
int filasQueSeRepiten(const nucleo::Hoja& hoja, const nucleo::RangoCeldas& zona, double escala,
                      int alto);

/// Escala, de 0,1 a 1, con que las columnas de la zona caben en el ancho dado.
double escalaParaElAncho(const nucleo::Hoja& hoja, const nucleo::RangoCeldas& zona,
                         bool encabezados, int ancho);

/// Reparte una zona en páginas de `util` píxeles, de arriba abajo y después hacia la derecha. Las
/// que quedarían en blanco no salen. Como mucho da `kMaximoPaginas` + 1.
std::vector<nucleo::RangoCeldas> repartir(const Lamina& lamina, const nucleo::Hoja& hoja,
                                          const nucleo::RangoCeldas& zona, const QSize& util);

} // namespace impresion
