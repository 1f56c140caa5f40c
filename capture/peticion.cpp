#include "capture/peticion.h"

#include "model/rango_texto.h"

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace captura {

namespace {

constexpr int kLadoMinimo = 100;
constexpr int kLadoMaximo = 8192;

std::optional<int> leerEntero(std::string_view texto, int minimo, int maximo) {
    int numero = 0;
    const char* fin = texto.data() + texto.size();
    const auto leido = std::from_chars(texto.data(), fin, numero);
    const bool bien =
        leido.ec == std::errc{} && leido.ptr == fin && numero >= minimo && numero <= maximo;
    return bien ? std::optional(numero) : std::nullopt;
}

bool leerTamano(std::string_view texto, Peticion& peticion) {
    const std::size_t equis = texto.find('x');
    if (equis == std::string_view::npos) {
        return false;
    }
    const auto ancho = leerEntero(texto.substr(0, equis), kLadoMinimo, kLadoMaximo);
    const auto alto = leerEntero(texto.substr(equis + 1), kLadoMinimo, kLadoMaximo);
    peticion.ancho = ancho.value_or(peticion.ancho);
    peticion.alto = alto.value_or(peticion.alto);
    return ancho && alto;
}

bool leerTema(std::string_view texto, Peticion& peticion) {
    peticion.oscuro = texto == "oscuro";
    return texto == "claro" || texto == "oscuro";
}

bool leerEscala(std::string_view texto, Peticion& peticion) {
    const auto escala = leerEntero(texto, 1, 4);
    peticion.escala = escala.value_or(1);
    return escala.has_value();
}

bool leerZoom(std::string_view texto, Peticion& peticion) {
    const auto zoom = leerEntero(texto, 50, 200);
    peticion.zoom = zoom.value_or(100);
    return zoom.has_value();
}

bool leerSeleccion(std::string_view texto, Peticion& peticion) {
    const auto rango = nucleo::leerRango(texto);
    peticion.seleccion = rango.value_or(nucleo::RangoCeldas{});
    return rango.has_value();
}

bool leerHoja(std::string_view texto, Peticion& peticion) {
    peticion.hoja = texto;
    return !texto.empty();
}

bool leerEscritura(std::string_view texto, Peticion& peticion) {
    peticion.escribir = texto;
    return !texto.empty();
}

struct Opcion {
    std::string_view nombre;
    bool (*leer)(std::string_view, Peticion&);
};

constexpr Opcion kOpciones[] = {
    {"--tamano", leerTamano}, {"--tema", leerTema},          {"--escala", leerEscala},
    {"--zoom", leerZoom},     {"--celda", leerSeleccion},    {"--seleccion", leerSeleccion},
    {"--hoja", leerHoja},     {"--escribir", leerEscritura},
};

} // namespace

std::string leerPeticion(const std::vector<std::string>& argumentos, Peticion& peticion) {
    std::vector<std::string> sueltos;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        if (!argumento.starts_with("--")) {
            sueltos.push_back(argumento);
            continue;
        }
        const Opcion* opcion = nullptr;
        for (const Opcion& candidata : kOpciones) {
            opcion = candidata.nombre == argumento ? &candidata : opcion;
        }
        if (opcion == nullptr) {
            return "opción desconocida «" + argumento + "»";
        }
        if (++i == argumentos.size()) {
            return "falta el valor de " + argumento;
        }
        if (!opcion->leer(argumentos[i], peticion)) {
            return "«" + argumentos[i] + "» no vale para " + argumento;
        }
    }
    if (sueltos.size() != 2) {
        return "se esperan un libro y una imagen";
    }
    peticion.libro = sueltos[0];
    peticion.salida = sueltos[1];
    return {};
}

} // namespace captura
