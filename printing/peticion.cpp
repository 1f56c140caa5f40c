#include "printing/peticion.h"

#include "model/rango_texto.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace impresion {

namespace {

bool terminaEn(std::string_view texto, std::string_view final) {
    return texto.size() > final.size() &&
           std::ranges::equal(texto.substr(texto.size() - final.size()), final, [](char a, char b) {
               return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
           });
}

bool leerPapel(std::string_view texto, Peticion& peticion) {
    constexpr std::array<std::string_view, 4> kPapeles{"A4", "A3", "A5", "carta"};
    const auto it = std::ranges::find(kPapeles, texto);
    peticion.papel = static_cast<Papel>(it - kPapeles.begin());
    return it != kPapeles.end();
}

bool leerRango(std::string_view texto, Peticion& peticion) {
    peticion.rango = nucleo::leerRango(texto);
    return peticion.rango.has_value();
}

bool leerHoja(std::string_view texto, Peticion& peticion) {
    peticion.hoja = texto;
    return !texto.empty();
}

struct ConValor {
    std::string_view nombre;
    bool (*leer)(std::string_view, Peticion&);
};
constexpr ConValor kConValor[] = {
    {"--hoja", leerHoja}, {"--rango", leerRango}, {"--papel", leerPapel}};

struct Marca {
    std::string_view nombre;
    bool Peticion::*campo;
};
constexpr Marca kMarcas[] = {{"--horizontal", &Peticion::horizontal},
                             {"--encabezados", &Peticion::encabezados},
                             {"--ajustar", &Peticion::ajustar},
                             {"--todas", &Peticion::todas}};

std::string incoherencia(const Peticion& peticion) {
    if (!peticion.enImagen() && !terminaEn(peticion.salida, ".pdf")) {
        return "«" + peticion.salida + "» no acaba en .pdf o .png";
    }
    if (peticion.todas && (!peticion.hoja.empty() || peticion.rango)) {
        return "--todas no va con --hoja ni con --rango";
    }
    if (peticion.enImagen() && (peticion.todas || peticion.horizontal || peticion.ajustar)) {
        return "--todas, --horizontal y --ajustar son para un .pdf";
    }
    return {};
}

} // namespace

bool Peticion::enImagen() const {
    return terminaEn(salida, ".png");
}

std::string leerPeticion(const std::vector<std::string>& argumentos, Peticion& peticion) {
    std::vector<std::string> sueltos;
    bool soloSueltos = false;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        if (soloSueltos || !argumento.starts_with("--")) {
            sueltos.push_back(argumento);
            continue;
        }
        if (argumento == "--") {
            soloSueltos = true;
            continue;
        }
        if (const auto* marca = std::ranges::find(kMarcas, argumento, &Marca::nombre);
            marca != std::end(kMarcas)) {
            peticion.*marca->campo = true;
            continue;
        }
        const auto* opcion = std::ranges::find(kConValor, argumento, &ConValor::nombre);
        if (opcion == std::end(kConValor)) {
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
        return "se esperan un libro y un .pdf o .png";
    }
    peticion.libro = sueltos[0];
    peticion.salida = sueltos[1];
    return incoherencia(peticion);
}

} // namespace impresion
