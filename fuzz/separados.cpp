/// Texto separado por comas, puntos y coma o tabulaciones: se lee, se escribe y al volver a leerlo
/// sale el mismo libro.

#include "console/dialecto.h"
#include "console/escritor_campos.h"
#include "console/hoja_texto.h"
#include "console/lector_campos.h"
#include "model/archivo_libro.h"

#include <optional>
#include <sstream>

#include "fuzz/bytes.h"

namespace {

/// Los bytes del libro que sale de un texto; nada si el texto no se puede leer. Sin dialecto, se
/// reconoce el separador.
std::optional<std::string> leer(const std::string& texto, std::optional<consola::Dialecto> dialecto,
                                consola::Lectura lectura, nucleo::Libro& libro) {
    motor_formulas::Motor motor(libro);
    std::istringstream origen(texto);
    consola::LectorCampos lector(origen, 64); // bloques cortos: los campos los cruzan
    if (!dialecto) {
        dialecto = consola::kCsv;
        dialecto->separador = consola::detectarSeparador(lector.comienzo());
    }
    lector.elegirDialecto(*dialecto);
    if (!consola::leerHoja(lector, lectura, libro, motor, 0, [] {}).empty())
        return std::nullopt;
    nucleo::EscritorBytes salida;
    fuzz::exigir(nucleo::componerLibro(libro, salida), "falta memoria");
    return std::string(reinterpret_cast<const char*>(salida.datos()), salida.tamano());
}

std::string escribir(const nucleo::Libro& libro, const consola::Dialecto& dialecto) {
    std::ostringstream destino;
    consola::EscritorCampos escritor(destino, dialecto);
    consola::escribirHoja(*libro.hojas[0], consola::Escritura::LoEscrito, dialecto.comillas,
                          escritor);
    fuzz::exigir(escritor.terminar(), "no se escribe lo que se leyó");
    return destino.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    if (cuantos == 0)
        return 0;
    const bool tabulado = (datos[0] & 1U) == 0;
    const auto lectura =
        (datos[0] & 2U) == 0 ? consola::Lectura::ComoSeEscriben : consola::Lectura::Literal;
    const std::string texto(reinterpret_cast<const char*>(datos + 1), cuantos - 1);
    nucleo::Libro libro;
    const auto leido =
        leer(texto, tabulado ? std::optional(consola::kTsv) : std::nullopt, lectura, libro);
    if (!leido)
        return 0;
    const consola::Dialecto dialecto = tabulado ? consola::kTsv : consola::kCsv;
    nucleo::Libro vuelto;
    fuzz::exigir(leer(escribir(libro, dialecto), dialecto, lectura, vuelto) == leido,
                 "lo que se lee de lo escrito es otro libro");
    return 0;
}
