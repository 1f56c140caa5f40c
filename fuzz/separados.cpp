/// Texto separado por comas, puntos y coma o tabulaciones: se lee, se escribe y se vuelve a leer.

#include "console/dialecto.h"
#include "console/escritor_campos.h"
#include "console/hoja_texto.h"
#include "console/lector_campos.h"

#include <sstream>

#include "fuzz/bytes.h"

namespace {

/// Lo que una hoja tiene escrito, leído de un texto; vacío si el texto no se puede leer.
bool leer(const std::string& texto, bool tabulado, nucleo::Libro& libro) {
    motor_formulas::Motor motor(libro);
    std::istringstream origen(texto);
    consola::LectorCampos lector(origen, 64);
    consola::Dialecto dialecto = tabulado ? consola::kTsv : consola::kCsv;
    if (!tabulado)
        dialecto.separador = consola::detectarSeparador(lector.comienzo());
    lector.elegirDialecto(dialecto);
    return consola::leerHoja(lector, consola::Lectura::ComoSeEscriben, libro, motor, 0, [] {})
        .empty();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    if (cuantos == 0)
        return 0;
    const bool tabulado = datos[0] % 2 == 0;
    const std::string texto(reinterpret_cast<const char*>(datos + 1), cuantos - 1);
    nucleo::Libro libro;
    leer(texto, tabulado, libro);
    return 0;
}
