#pragma once

#include "console/escritor_campos.h"
#include "console/lector_campos.h"
#include "formula/motor.h"
#include "model/libro.h"

#include <functional>
#include <string>

namespace consola {

/// Cómo se toman los campos al leerlos.
enum class Lectura {
    ComoSeEscriben, ///< como si alguien los tecleara: "=A1" es una fórmula
    Literal         ///< ningún campo es una fórmula
};

/// Escribe en una hoja vacía los campos que quedan por leer, con un solo recálculo al final. Llama
/// a `avisar` de cuando en cuando. Devuelve vacío, o por qué no se puede leer.
std::string leerHoja(LectorCampos& lector, Lectura lectura, nucleo::Libro& libro,
                     motor_formulas::Motor& motor, int hoja, const std::function<void()>& avisar);

/// Qué se escribe de cada celda.
enum class Escritura {
    LoEscrito, ///< el texto que se tecleó: al leerlo se obtiene la misma hoja
    LoVisto    ///< el resultado, con su formato
};

/// Escribe una hoja. Con comillas (CSV) todos los registros tienen los mismos campos; sin ellas,
/// cada uno acaba en su última celda.
void escribirHoja(const nucleo::Hoja& hoja, Escritura escritura, bool mismosCampos,
                  EscritorCampos& escritor);

} // namespace consola
