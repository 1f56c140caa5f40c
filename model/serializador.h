#pragma once

#include "model/hoja.h"
#include "model/libro.h"

#include <cstdint>
#include <cstdio>
#include <string>

namespace nucleo {

enum ResultadoArchivo : int {
    kArchivoBien = 0,
    kArchivoNoAbre = 1,
    kArchivoInvalido = 2,    ///< solo al cargar
    kArchivoNoSeEscribe = 3, ///< solo al guardar
};

/// Lee y escribe libros en el formato ".mrn". Guardar sobrescribe el archivo en su sitio.
class Serializador {
  public:
    /// No cambia el libro; si falla puede quedar un archivo truncado.
    static ResultadoArchivo guardar(const Libro& libro, const std::string& ruta);
    /// Con `kArchivoNoAbre` el libro queda como estaba; con `kArchivoInvalido`, reiniciado.
    static ResultadoArchivo cargar(const std::string& ruta, Libro& libro);

    // Piezas con la disposición exacta del formato; falso a la primera lectura o escritura corta, o
    // si falta memoria.
    static bool escribirString(std::FILE* archivo, const std::string& texto);
    static bool leerString(std::FILE* archivo, std::string& texto);
    static bool escribirHoja(std::FILE* archivo, const Hoja& hoja);
    static bool leerHoja(std::FILE* archivo, Hoja& hoja, std::uint32_t version);
    static bool escribirCelda(std::FILE* archivo, std::uint64_t clave, const Celda& celda);
    static bool leerCelda(std::FILE* archivo, Hoja& hoja, std::uint32_t version);
};

} // namespace nucleo
