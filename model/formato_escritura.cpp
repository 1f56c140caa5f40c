#include "model/formato_archivo.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace nucleo {

namespace {

/// Lo que ocupa un registro de celda tras el texto: número y formato.
constexpr std::size_t kColaCelda = 8 + 4 + 4 + 4 + 1;

std::uint32_t cuenta(std::size_t tamano) {
    return static_cast<std::uint32_t>(tamano);
}

std::uint8_t bitsDeEstilo(const Formato& formato) {
    return static_cast<std::uint8_t>((formato.negrita ? 1U : 0U) | (formato.cursiva ? 2U : 0U) |
                                     (formato.subrayado ? 4U : 0U) |
                                     (formato.estiloExtra ? 8U : 0U));
}

/// Ordenados por clave: el mismo libro da siempre los mismos bytes.
void escribirTamanos(EscritorBytes& salida, const MapaTamanos& tamanos) {
    std::vector<std::pair<int, int>> ordenados(tamanos.begin(), tamanos.end());
    std::sort(ordenados.begin(), ordenados.end());
    salida.entero32(cuenta(ordenados.size()));
    for (const auto& [clave, tamano] : ordenados) {
        salida.entero32(clave);
        salida.entero32(tamano);
    }
}

} // namespace

void escribirTexto(EscritorBytes& salida, std::string_view texto) {
    salida.entero32(cuenta(texto.size()));
    salida.bytes(texto);
}

void escribirRegistroCelda(EscritorBytes& salida, std::uint64_t clave, const Celda& celda) {
    unsigned char* inicio = salida.hueco(8 + 1 + 4);
    EscritorBytes::poner(inicio, clave);
    inicio[8] = static_cast<unsigned char>(celda.tipo);
    EscritorBytes::poner(inicio + 9, cuenta(celda.entrada.size()));
    salida.bytes(celda.entrada);

    const Formato& formato = celda.formato;
    unsigned char* cola = salida.hueco(kColaCelda);
    EscritorBytes::poner(cola, std::bit_cast<std::uint64_t>(celda.numero));
    cola[8] = static_cast<unsigned char>(formato.numero);
    cola[9] = formato.decimales;
    cola[10] = formato.separadorMiles ? 1 : 0;
    cola[11] = bitsDeEstilo(formato);
    EscritorBytes::poner(cola + 12, formato.colorTexto);
    EscritorBytes::poner(cola + 16, formato.colorFondo);
    cola[20] = static_cast<unsigned char>(formato.alineacion);
}

void escribirRegistroHoja(EscritorBytes& salida, const Hoja& hoja) {
    escribirTexto(salida, hoja.nombre);
    salida.entero32(hoja.filasInmovilizadas);
    salida.entero32(hoja.columnasInmovilizadas);
    escribirTamanos(salida, hoja.anchos);
    escribirTamanos(salida, hoja.altos);
    salida.entero32(cuenta(hoja.fusiones.size()));
    for (const RangoFusion& fusion : hoja.fusiones) {
        salida.entero32(fusion.fila1);
        salida.entero32(fusion.col1);
        salida.entero32(fusion.fila2);
        salida.entero32(fusion.col2);
    }
    salida.entero32(cuenta(hoja.celdas.size()));
    hoja.celdas.recorrer([&](std::uint64_t clave, const Celda& celda) {
        escribirRegistroCelda(salida, clave, celda);
    });
}

void escribirLibro(EscritorBytes& salida, const Libro& libro) {
    salida.bytes(kMagia);
    salida.entero32(kVersion);
    salida.entero32(cuenta(libro.hojas.size()));
    salida.entero32(libro.hojaActiva);
    for (const auto& hoja : libro.hojas)
        escribirRegistroHoja(salida, *hoja);
}

} // namespace nucleo
