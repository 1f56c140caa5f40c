#pragma once

#include <cstddef>
#include <cstdint>

/// Cotas fijas de la cuadrícula y de los tamaños que el usuario puede dar. Ningún otro archivo las
/// repite como literales.
namespace nucleo {

inline constexpr int kFilas = 65536;  ///< filas 0..65535, vistas como 1..65536
inline constexpr int kColumnas = 702; ///< columnas 0..701, "A".."ZZ"
inline constexpr int kUltimaFila = kFilas - 1;
inline constexpr int kUltimaColumna = kColumnas - 1;

inline constexpr int kAnchoPredeterminado = 88; ///< píxeles sin zoom
inline constexpr int kAltoPredeterminado = 24;  ///< píxeles sin zoom
inline constexpr int kAnchoMinimo = 20;
inline constexpr int kAnchoMaximo = 600;
inline constexpr int kAltoMinimo = 14;
inline constexpr int kAltoMaximo = 400;

inline constexpr int kDecimalesMaximos = 10;

/// Bytes del texto más largo: el de una entrada, el nombre de una hoja o el que hace una fórmula.
inline constexpr std::size_t kMaximoTexto = 16777216;

/// Celdas que una fórmula puede registrar como precedentes; un rango que las supere no se registra.
inline constexpr std::int64_t kMaximoPrecedentes = 100000;

} // namespace nucleo
