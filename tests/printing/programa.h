#pragma once

#include <cstdlib>
#include <string>
#include <sys/wait.h>

/// El estado de salida de un programa, o -1 si lo mató una señal. Lo que dice se pierde.
inline int hacerPrograma(const std::string& programa, const std::string& argumentos) {
    const std::string orden = "\"" + programa + "\" " + argumentos + " >/dev/null 2>&1";
    const int estado = std::system(orden.c_str());
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}
