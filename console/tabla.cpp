#include "console/tabla.h"

#include "console/texto_terminal.h"

#include <algorithm>

namespace consola {

namespace {

constexpr std::size_t kSeparacion = 2;

std::size_t ancho(const Hueco& hueco) {
    return static_cast<std::size_t>(anchoVisible(hueco.texto));
}

std::size_t huecosHastaElUltimo(std::span<const Hueco> fila) {
    std::size_t cuantos = fila.size();
    while (cuantos > 0 && fila[cuantos - 1].texto.empty()) {
        --cuantos;
    }
    return cuantos;
}

} // namespace

void Tabla::medir(std::span<const Hueco> fila) {
    const std::size_t cuantos = huecosHastaElUltimo(fila);
    anchos_.resize(std::max(anchos_.size(), fila.size()));
    for (std::size_t i = 0; i < cuantos; ++i) {
        const bool seExtiende = i + 1 == cuantos && fila[i].lado == Lado::Izquierda;
        if (!seExtiende) {
            anchos_[i] = std::max(anchos_[i], ancho(fila[i]));
        }
    }
}

void Tabla::escribir(std::ostream& salida, std::span<const Hueco> fila) const {
    std::string linea;
    const std::size_t cuantos = huecosHastaElUltimo(fila);
    std::size_t debidos = 0;
    for (std::size_t i = 0; i < cuantos; ++i) {
        const std::size_t propio = ancho(fila[i]);
        const std::size_t disponible = std::max(i < anchos_.size() ? anchos_[i] : 0, propio);
        const std::size_t sobra = disponible - propio;
        const std::size_t antes = fila[i].lado == Lado::Derecha  ? sobra
                                  : fila[i].lado == Lado::Centro ? sobra / 2
                                                                 : 0;
        linea.append(debidos + antes, ' ');
        linea += fila[i].texto;
        debidos = sobra - antes + kSeparacion;
    }
    linea += '\n';
    salida << linea;
}

} // namespace consola
