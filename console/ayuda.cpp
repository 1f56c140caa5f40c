#include "console/ayuda.h"

#include "console/tabla.h"

#include <array>
#include <ostream>
#include <string>

namespace consola {

namespace {

std::array<Hueco, 2> filaDe(const Opcion& opcion) {
    std::string escrita = "  " + std::string(opcion.nombre);
    if (!opcion.valor.empty()) {
        escrita.append(" ").append(opcion.valor);
    }
    return {Hueco{std::move(escrita), Lado::Izquierda},
            Hueco{std::string(opcion.descripcion), Lado::Izquierda}};
}

std::string llamada(const Orden& orden) {
    std::string texto = "marnel-consola " + std::string(orden.nombre);
    if (!orden.uso.empty()) {
        texto.append(" ").append(orden.uso);
    }
    return texto + (orden.opciones.empty() ? "" : " [OPCIONES]");
}

} // namespace

void escribirAyuda(std::ostream& salida, const Orden& orden) {
    salida << llamada(orden) << "\n  " << orden.descripcion << '\n';
    Tabla tabla;
    for (const Opcion& opcion : orden.opciones) {
        tabla.medir(filaDe(opcion));
    }
    for (const Opcion& opcion : orden.opciones) {
        tabla.escribir(salida, filaDe(opcion));
    }
}

void escribirAyuda(std::ostream& salida) {
    salida << "marnel-consola: trabaja con libros de Marnel sin pantalla.\n\n";
    for (const Orden& orden : ordenes()) {
        escribirAyuda(salida, orden);
        salida << '\n';
    }
    salida
        << "marnel-consola --ayuda | --version\n\n"
           "Estados de salida: 0 bien; 1 argumentos incorrectos; 2 un archivo no se puede leer;\n"
           "3 no se puede escribir; 4 falta o ha fallado el programa que imprime.\n";
}

} // namespace consola
