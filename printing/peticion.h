#pragma once

#include "model/rango.h"

#include <optional>
#include <string>
#include <vector>

namespace impresion {

enum class Papel { A4, A3, A5, Carta };

/// Qué se imprime y cómo.
struct Peticion {
    std::string libro;
    std::string salida;
    std::string hoja;                         ///< vacía: la activa
    std::optional<nucleo::RangoCeldas> rango; ///< sin él, lo que tenga contenido
    Papel papel = Papel::A4;
    bool horizontal = false;
    bool encabezados = false; ///< las letras de columna y los números de fila
    bool ajustar = false;     ///< encoger hasta que las columnas quepan en una página
    bool todas = false;       ///< todas las hojas

    bool enImagen() const; ///< la salida es una imagen y no un documento
};

/// Lee los argumentos, sin el nombre del programa. Devuelve vacío, o lo que está mal.
std::string leerPeticion(const std::vector<std::string>& argumentos, Peticion& peticion);

} // namespace impresion
