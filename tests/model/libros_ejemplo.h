#pragma once

#include "model/libro.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace prueba {

/// Un libro que usa todo lo que el archivo guarda, también lo que solo puede venir de archivos.
inline nucleo::Libro libroCompleto() {
    using namespace nucleo;
    Libro libro;
    Hoja& hoja = *libro.hojas[0];
    hoja.nombre = "Señas & ¡cosas!";
    hoja.filasInmovilizadas = 2;
    hoja.columnasInmovilizadas = -7;
    hoja.anchos = {{3, 120}, {0, 20}, {-1, 0}, {2000000000, -5}};
    hoja.altos = {{7, 30}, {65535, 400}};
    hoja.fusiones = {{0, 0, 1, 1}, {9, 9, 2, 2}, {0, 0, 1, 1}, {-5, 3, 2000000000, 4}};
    Celda& numero = hoja.celdaMut(0, 0);
    numero.tipo = TipoCelda::Numero;
    numero.entrada = "1.234,5";
    numero.numero = 1234.5;
    numero.formato = {FormatoNumero::Moneda, 3,   true, true, false, true, 0xff112233, 0x80000001,
                      AlineacionH::Derecha,  true};
    Celda& formula = hoja.celdaMut(65535, 701);
    formula.tipo = TipoCelda::Formula;
    formula.entrada = "=SUMA(A1:A3;2)";
    Celda& texto = hoja.celdaMut(100, 5);
    texto.tipo = TipoCelda::Texto;
    texto.entrada = std::string("con\0nulo y ñ", 13);
    hoja.celdaMut(3, 3).formato.cursiva = true;
    Celda& rara = hoja.celdas[claveLocal(-3, 70000)];
    rara.tipo = static_cast<TipoCelda>(200);
    rara.formato.numero = static_cast<FormatoNumero>(77);
    rara.formato.decimales = 255;
    rara.formato.alineacion = static_cast<AlineacionH>(9);
    rara.numero = -0.0;
    libro.agregarHoja()->nombre = "";
    libro.agregarHoja()->nombre = "Señas & ¡cosas!";
    for (int i = 0; i < 9; ++i)
        libro.hojas[2]->celdaMut(30 * i, i % 3).entrada =
            std::string(static_cast<std::size_t>(9 * i), 'x');
    libro.hojaActiva = 1;
    libro.modificado = true;
    return libro;
}

inline constexpr int kLibrosDeReferencia = 16;
/// Libros de formas distintas, de los que caben en un bloque a los que no.
inline nucleo::Libro libroDeReferencia(int n) {
    using namespace nucleo;
    if (n == 0)
        return {};
    if (n == 1)
        return libroCompleto();
    Libro libro;
    std::mt19937 azar(static_cast<std::uint32_t>(n));
    for (int hojas = n % 3; hojas > 0; --hojas)
        libro.agregarHoja();
    for (auto& hoja : libro.hojas) {
        for (int i = 0; i < n / 2; ++i) {
            Celda& celda =
                hoja->celdaMut(static_cast<int>(azar() % 300), static_cast<int>(azar() % 20));
            celda.tipo = static_cast<TipoCelda>(azar() % 4);
            celda.entrada = std::string(azar() % 30, 'a');
            celda.numero = static_cast<double>(azar());
            hoja->anchos[static_cast<int>(azar() % 20)] = n;
        }
        hoja->fusionar(n, n, n + 1, n + 2);
    }
    return libro;
}

/// Lo que un archivo guarda de dos libros es igual.
inline bool igualContenido(const nucleo::Libro& a, const nucleo::Libro& b) {
    if (a.hojas.size() != b.hojas.size() || a.hojaActiva != b.hojaActiva)
        return false;
    for (std::size_t i = 0; i < a.hojas.size(); ++i) {
        if (*a.hojas[i] != *b.hojas[i])
            return false;
    }
    return true;
}

/// Sin ruta ni cambios y con una sola hoja vacía.
inline bool estaReiniciado(const nucleo::Libro& libro) {
    return libro.hojas.size() == 1 && *libro.hojas[0] == nucleo::Hoja() && libro.hojaActiva == 0 &&
           libro.ruta.empty() && !libro.modificado && libro.precedentes.empty() &&
           libro.dependientes.empty();
}

} // namespace prueba
