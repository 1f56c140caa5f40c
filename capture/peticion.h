#pragma once

#include "model/rango.h"

#include <string>
#include <vector>

namespace captura {

/// Qué dibujo se pide.
struct Peticion {
    std::string libro;
    std::string salida;
    std::string hoja;     ///< vacía: la activa
    std::string escribir; ///< lo que se está escribiendo en la celda; vacío: nada
    int ancho = 1280;     ///< en píxeles sin escalar
    int alto = 720;
    int escala = 1;
    int zoom = 100;
    bool oscuro = false;
    nucleo::RangoCeldas seleccion;
};

/// Lee los argumentos, sin el nombre del programa. Devuelve vacío, o lo que está mal.
std::string leerPeticion(const std::vector<std::string>& argumentos, Peticion& peticion);

} // namespace captura
