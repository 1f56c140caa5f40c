#pragma once

#include "console/argumentos.h"
#include "console/orden.h"

/// Lo que hace cada orden; la tabla que las reúne está en `ordenes.cpp`.
namespace consola {

Resultado evaluar(const Argumentos& argumentos, Terminal& terminal);
Resultado mostrar(const Argumentos& argumentos, Terminal& terminal);
Resultado convertir(const Argumentos& argumentos, Terminal& terminal);
Resultado imprimir(const Argumentos& argumentos, Terminal& terminal);
Resultado recalcular(const Argumentos& argumentos, Terminal& terminal);
Resultado listarFunciones(const Argumentos& argumentos, Terminal& terminal);

} // namespace consola
