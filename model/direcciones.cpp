#include "model/direcciones.h"

#include "model/limites.h"

#include <algorithm>
#include <cstdint>

namespace nucleo {

std::string nombreColumna(int columna) {
    if (columna < 0)
        return "";
    std::string letras;
    std::int64_t resto = std::int64_t{columna} + 1;
    while (resto > 0) {
        --resto;
        letras.push_back(static_cast<char>('A' + resto % 26));
        resto /= 26;
    }
    std::reverse(letras.begin(), letras.end());
    return letras;
}

int columnaDesdeNombre(std::string_view letras) {
    int valor = 0;
    for (const char letra : letras) {
        int posicion = 0;
        if (letra >= 'A' && letra <= 'Z')
            posicion = letra - 'A' + 1;
        else if (letra >= 'a' && letra <= 'z')
            posicion = letra - 'a' + 1;
        else
            return -1;
        valor = valor * 26 + posicion;
        if (valor > kColumnas)
            return -1;
    }
    return valor - 1;
}

std::string nombreRef(int fila, int columna) {
    return nombreColumna(columna) + std::to_string(std::int64_t{fila} + 1);
}

} // namespace nucleo
