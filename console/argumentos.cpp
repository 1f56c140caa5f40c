#include "console/argumentos.h"

#include <algorithm>

namespace consola {

std::string Argumentos::leer(std::span<const std::string> textos,
                             std::span<const Opcion> admitidas) {
    bool soloSueltos = false;
    for (std::size_t i = 0; i < textos.size(); ++i) {
        const std::string& texto = textos[i];
        if (soloSueltos || !texto.starts_with("--")) {
            sueltos_.push_back(texto);
            continue;
        }
        if (texto == "--") {
            soloSueltos = true;
            continue;
        }
        const std::size_t igual = texto.find('=');
        const std::string nombre = texto.substr(0, igual);
        const auto admitida = std::ranges::find(admitidas, nombre, &Opcion::nombre);
        if (admitida == admitidas.end()) {
            return "opción desconocida «" + nombre + "»";
        }
        if (tiene(nombre)) {
            return "la opción " + nombre + " está repetida";
        }
        std::string valor;
        if (admitida->valor.empty()) {
            if (igual != std::string::npos) {
                return "la opción " + nombre + " no lleva valor";
            }
        } else if (igual != std::string::npos) {
            valor = texto.substr(igual + 1);
        } else if (i + 1 < textos.size()) {
            valor = textos[++i];
        } else {
            return "falta el valor de " + nombre;
        }
        opciones_.emplace(nombre, std::move(valor));
    }
    return {};
}

const std::string* Argumentos::valor(std::string_view opcion) const {
    const auto it = opciones_.find(opcion);
    return it == opciones_.end() ? nullptr : &it->second;
}

} // namespace consola
