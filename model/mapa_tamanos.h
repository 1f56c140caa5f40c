#pragma once

#include <cstddef>
#include <unordered_map>

namespace nucleo {

/// Mezcla la clave con una semilla del proceso: las filas y columnas las elige el archivo, y con
/// la dispersión identidad unas claves escogidas caerían todas en unas pocas listas.
struct DispersionSembrada {
    std::size_t operator()(int clave) const noexcept;
};

/// Tamaños distintos del predeterminado: columna o fila -> píxeles sin zoom.
using MapaTamanos = std::unordered_map<int, int, DispersionSembrada>;

} // namespace nucleo
