#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include "printing/aplicacion.h"
#include "printing/imagen.h"
#include "printing/libro_calculado.h"
#include "printing/miniatura.h"
#include "printing/plazo.h"

namespace {

using namespace impresion;

/// El gestor de archivos llama con lo que haya en una carpeta, y nadie mira: mejor sin miniatura
/// que tarde.
constexpr int kPlazo = 900; // milisegundos
constexpr unsigned long kMegabytes = 512;

int fallar(const Resultado& resultado) {
    std::fprintf(stderr, "marnel-miniatura: %s\n", resultado.mensaje.c_str());
    return resultado.estado;
}

/// Un número entero positivo; 0 si no lo es.
int leerNatural(std::string_view texto) {
    int numero = 0;
    const char* fin = texto.data() + texto.size();
    const auto leido = std::from_chars(texto.data(), fin, numero);
    return leido.ec == std::errc{} && leido.ptr == fin && numero > 0 ? numero : 0;
}

} // namespace

int main(int argc, char* argv[]) {
    const int lado = argc == 4 || argc == 5 ? leerNatural(argv[3]) : 0;
    const int plazo = argc == 5 ? leerNatural(argv[4]) : kPlazo;
    if (lado == 0 || plazo == 0) {
        return fallar({kMalUso, "uso: marnel-miniatura LIBRO IMAGEN LADO [MILISEGUNDOS]"});
    }
    ponerPlazo(plazo);
#ifndef __SANITIZE_ADDRESS__ // reserva por adelantado toda la memoria que puede vigilar
    toparMemoria(kMegabytes);
#endif
    nucleo::Libro libro;
    if (const Resultado abierto = abrirCalculado(argv[1], libro); abierto.estado != kBien) {
        return fallar(abierto);
    }
    const std::string salida = argv[2];
    const Aplicacion aplicacion(argc, argv);
    const QImage imagen =
        dibujarMiniatura(*libro.hojas[static_cast<std::size_t>(libro.hojaActiva)],
                         std::clamp(lado, kLadoMinimoMiniatura, kLadoMaximoMiniatura));
    return guardarPng(imagen, salida)
               ? kBien
               : fallar({kNoSeEscribe, "no se puede escribir «" + salida + "»"});
}
