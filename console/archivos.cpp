#include "console/archivos.h"

#include "console/texto_terminal.h"
#include "model/serializador.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace consola {

namespace {

bool terminaEn(std::string_view ruta, std::string_view final) {
    if (ruta.size() <= final.size()) {
        return false;
    }
    ruta.remove_prefix(ruta.size() - final.size());
    for (std::size_t i = 0; i < final.size(); ++i) {
        const char c = ruta[i];
        if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != final[i]) {
            return false;
        }
    }
    return true;
}

std::string nombrado(const std::string& ruta) {
    return "«" + paraTerminal(ruta) + "»";
}

std::string motivoDelSistema(const std::string& ruta) {
    std::error_code error;
    const auto estado = std::filesystem::status(ruta, error);
    if (!std::filesystem::exists(estado)) {
        return error && error != std::errc::no_such_file_or_directory ? "no se puede llegar a él"
                                                                      : "no existe";
    }
    if (std::filesystem::is_directory(estado)) {
        return "es una carpeta";
    }
    if (access(ruta.c_str(), R_OK) != 0) {
        return "no hay permiso para leerlo";
    }
    return "falla la lectura";
}

} // namespace

ClaseArchivo claseDe(const std::string& ruta) {
    if (ruta == "-" || terminaEn(ruta, ".csv")) {
        return ClaseArchivo::Csv;
    }
    if (terminaEn(ruta, ".tsv")) {
        return ClaseArchivo::Tsv;
    }
    if (terminaEn(ruta, ".mrn")) {
        return ClaseArchivo::Libro;
    }
    return ClaseArchivo::Desconocida;
}

Resultado noSeLee(const std::string& ruta, const std::string& motivo) {
    return {kNoSeLee, "no se puede leer " + nombrado(ruta) + ": " +
                          (motivo.empty() ? motivoDelSistema(ruta) : motivo)};
}

Resultado noSeEscribe(const std::string& ruta) {
    if (ruta == "-") {
        return {kNoSeEscribe, "no se puede escribir en la salida estándar"};
    }
    return {kNoSeEscribe, "no se puede escribir " + nombrado(ruta)};
}

Resultado abrirLibro(const std::string& ruta, nucleo::Libro& libro) {
    switch (nucleo::Serializador::cargar(ruta, libro)) {
    case nucleo::kArchivoBien:
        return {};
    case nucleo::kArchivoInvalido:
        return noSeLee(ruta, "está dañado o no es un libro de Marnel");
    default:
        return noSeLee(ruta);
    }
}

Resultado guardarLibro(const nucleo::Libro& libro, const std::string& ruta) {
    const bool bien = nucleo::Serializador::guardar(libro, ruta) == nucleo::kArchivoBien;
    return bien ? Resultado{} : noSeEscribe(ruta);
}

Resultado elegirHoja(const nucleo::Libro& libro, const std::string* nombre, int& indice) {
    indice = nombre == nullptr ? libro.hojaActiva : libro.indiceHoja(*nombre);
    if (indice >= 0) {
        return {};
    }
    std::string mensaje = "no hay ninguna hoja " + nombrado(*nombre) + "; hay: ";
    for (std::size_t i = 0; i < libro.hojas.size(); ++i) {
        if (i == 10) {
            mensaje += "…";
            break;
        }
        mensaje += (i == 0 ? "" : ", ") + paraTerminal(libro.hojas[i]->nombre);
    }
    return {kMalUso, mensaje};
}

bool esElMismoArchivo(const std::string& una, const std::string& otra) {
    std::error_code error;
    return std::filesystem::equivalent(una, otra, error) && !error;
}

} // namespace consola
