#include "model/limites.h"
#include "tests/rendering/lienzo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr int kMaximo = std::numeric_limits<int>::max();
constexpr int kMinimo = std::numeric_limits<int>::min();

TEST(PinturaHostil, CuentasYTamanosImposibles) {
    for (const int valor : {-7, 0, kMinimo, kMaximo, 1000000}) {
        Lienzo l;
        l.hoja.filasInmovilizadas = valor;
        l.hoja.columnasInmovilizadas = valor;
        l.pintar();
        l.hoja.anchos[0] = l.hoja.anchos[2] = valor;
        l.hoja.altos[1] = l.hoja.altos[3] = valor;
        l.texto(0, 0, "texto");
        l.numero(1, 1, 5);
        l.pintar();
        l.hoja.filasInmovilizadas = l.hoja.columnasInmovilizadas = 0;
        l.seleccion = {0, 0, 3, 3, 3, 3};
        l.pintar();
        EXPECT_EQ(l.pixel(5, 5), l.tema.fondoEncabezado.rgb()) << valor;
    }
}

TEST(PinturaHostil, UnaColumnaSinAnchoNoSePinta) {
    Lienzo l;
    l.hoja.anchos[1] = 0;
    l.relleno(0, 1, 0xFF00FF00);
    l.relleno(0, 2, 0xFF0000FF);
    l.pintar();
    EXPECT_FALSE(l.hay(0xFF00FF00, l.imagen.rect()));
    EXPECT_EQ(l.pixel(48 + 88 + 2, 30), 0xFF0000FF);
}

TEST(PinturaHostil, ZoomYDesplazamientoSinSentido) {
    const double infinito = std::numeric_limits<double>::infinity();
    for (const double zoom : {std::nan(""), infinito, -1.0, 0.0, 1e-9, 1e9}) {
        Lienzo l;
        l.texto(0, 0, "texto");
        l.r.zoom = zoom;
        l.seleccion = {0, 0, 1, 1, 0, 0};
        l.pintar();
        l.r.desplazamientoX = l.r.desplazamientoY = kMinimo;
        l.pintar();
        l.r.desplazamientoX = l.r.desplazamientoY = kMaximo;
        l.pintar();
        EXPECT_EQ(l.pixel(5, 5), l.tema.fondoEncabezado.rgb()) << zoom;
    }
}

TEST(PinturaHostil, SeleccionesImposibles) {
    Lienzo l;
    l.seleccion = {kMaximo, kMaximo, kMinimo, kMinimo, kMaximo, kMinimo};
    l.pintar();
    l.seleccion = {5, 5, 1, 1, 3, 3}; // del revés
    l.pintar();
    EXPECT_EQ(l.pixel(l.r.rectCelda(1, 1).topLeft()), l.tema.bordeSeleccion.rgb());
}

TEST(PinturaHostil, FusionesEnormesYPisadas) {
    Lienzo l;
    l.hoja.fusiones.push_back({-5, -5, 2, 2});
    l.hoja.fusiones.push_back({9, 9, 4, 4});
    for (int i = 0; i < 2000; ++i) {
        l.hoja.fusiones.push_back({3, 3, 3 + i, 2000000000});
        l.hoja.fusiones.push_back({i % 20, 0, 2000000000, i % 7});
    }
    l.relleno(3, 3, 0xFF00FF00);
    l.texto(0, 0, "texto");
    l.pintar();
    EXPECT_EQ(l.pixel(l.r.rectCelda(3, 4).center()), 0xFF00FF00);
}

TEST(PinturaHostil, TextosLargosYRaros) {
    std::string largo;
    for (int i = 0; i < 200000; ++i) {
        largo += "ñM";
    }
    const std::string textos[] = {largo,
                                  std::string(100000, '\xC3'),
                                  std::string("a\0b", 3),
                                  "\xFF\xFE\xE2\x82",
                                  "uno\ndos\tres\r",
                                  "a\xCC\x81\xCC\x81\xCC\x81",
                                  "\xE2\x80\xAEoscar",
                                  "<b>&amp;%1</b>",
                                  "\xF0\x9F\x98\x80 \xD7\xA9\xD7\x9C \xE6\x97\xA5"};
    for (const std::string& texto : textos) {
        for (const auto lado : {nucleo::AlineacionH::Izquierda, nucleo::AlineacionH::Centro,
                                nucleo::AlineacionH::Derecha}) {
            Lienzo l;
            l.texto(1, 1, texto).formato.alineacion = lado;
            l.pintar();
            const QRgb fondo = l.tema.fondo.rgb();
            EXPECT_TRUE(l.todo(fondo, QRect(48, 50, 87, 23))) << texto.substr(0, 20);
            EXPECT_TRUE(l.todo(fondo, QRect(224, 50, 87, 23))) << texto.substr(0, 20);
            EXPECT_TRUE(l.todo(fondo, QRect(136, 74, 87, 23))) << texto.substr(0, 20);
        }
    }
}

TEST(PinturaHostil, UnTextoLargoEnsenaElTrozoQueToca) {
    // Antes del recorte por bytes y después se ve lo mismo.
    const auto foto = [](const std::string& texto, nucleo::AlineacionH lado) {
        Lienzo l;
        l.texto(0, 0, texto).formato.alineacion = lado;
        l.pintar();
        return l.imagen.copy(48, 26, 87, 23);
    };
    const std::string relleno(20000, 'i');
    EXPECT_EQ(foto("Principio " + relleno, nucleo::AlineacionH::Izquierda),
              foto("Principio iiiiiiiiiiiiiiiiiiiiiiiiiiiiiii", nucleo::AlineacionH::Izquierda));
    EXPECT_EQ(foto(relleno + " final", nucleo::AlineacionH::Derecha),
              foto("iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii final", nucleo::AlineacionH::Derecha));
}

TEST(PinturaHostil, FormatosDeArchivoFueraDeTabla) {
    Lienzo l;
    nucleo::Celda& celda = l.numero(0, 0, 1e308);
    celda.formato.numero = static_cast<nucleo::FormatoNumero>(77);
    celda.formato.decimales = 255;
    nucleo::Celda& otra = l.numero(1, 0, 1e308);
    otra.formato.numero = nucleo::FormatoNumero::Porcentaje;
    otra.formato.decimales = 255;
    l.formula(2, 0, nucleo::Valor{}).valor.tipo = static_cast<nucleo::TipoValor>(99);
    l.pintar();
    EXPECT_TRUE(l.todo(l.tema.fondo.rgb(), QRect(48, 74, 87, 23)));
}

} // namespace
