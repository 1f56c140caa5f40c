#include <cstdio>

#include "printing/aplicacion.h"
#include "printing/documento_pdf.h"
#include "printing/imagen.h"
#include "printing/libro_calculado.h"
#include "printing/peticion.h"

namespace {

using namespace impresion;

Resultado hacer(const Peticion& peticion) {
    nucleo::Libro libro;
    if (Resultado abierto = abrirCalculado(peticion.libro, libro); abierto.estado != kBien) {
        return abierto;
    }
    std::vector<int> hojas{peticion.hoja.empty() ? libro.hojaActiva
                                                 : libro.indiceHoja(peticion.hoja)};
    if (hojas.front() < 0) {
        return {kMalUso, "no hay ninguna hoja «" + peticion.hoja + "»"};
    }
    if (peticion.enImagen()) {
        return dibujarImagen(*libro.hojas[static_cast<std::size_t>(hojas.front())], peticion);
    }
    if (peticion.todas) {
        hojas.clear();
        for (int i = 0; i < static_cast<int>(libro.hojas.size()); ++i) {
            hojas.push_back(i);
        }
    }
    return imprimirPdf(libro, hojas, peticion);
}

} // namespace

int main(int argc, char* argv[]) {
    Peticion peticion;
    const std::vector<std::string> argumentos(argv + (argc > 0 ? 1 : 0), argv + argc);
    Resultado resultado;
    if (const std::string error = leerPeticion(argumentos, peticion); !error.empty()) {
        resultado = {kMalUso, error};
    } else {
        const Aplicacion aplicacion(argc, argv);
        resultado = hacer(peticion);
    }
    if (!resultado.mensaje.empty()) {
        std::fprintf(stderr, "marnel-impresora: %s\n", resultado.mensaje.c_str());
    }
    return resultado.estado;
}
