#include "console/archivo_formato.h"
#include "console/palabras_formato.h"
#include "formula/motor.h"
#include "model/libro.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

namespace {

using nucleo::Formato;
using nucleo::Hoja;
using nucleo::Libro;

std::string aplicar(const std::string& texto, Libro& libro) {
    std::istringstream origen(texto);
    return consola::aplicarFormato(origen, libro);
}

std::string escrito(const Hoja& hoja) {
    std::ostringstream destino;
    consola::escribirFormato(destino, hoja);
    return destino.str();
}

TEST(PalabrasFormato, CadaPalabraCambiaUnCampo) {
    Formato formato;
    EXPECT_EQ(consola::aplicarPalabras("  moneda decimales 0 miles\tnegrita cursiva subrayado "
                                       "contorno derecha texto #010203 fondo #80FFFFFF ",
                                       formato),
              "");
    const Formato esperado{.numero = nucleo::FormatoNumero::Moneda,
                           .decimales = 0,
                           .separadorMiles = true,
                           .negrita = true,
                           .cursiva = true,
                           .subrayado = true,
                           .colorTexto = 0xFF010203,
                           .colorFondo = 0x80FFFFFF,
                           .alineacion = nucleo::AlineacionH::Derecha,
                           .estiloExtra = true};
    EXPECT_EQ(formato, esperado);
    EXPECT_EQ(consola::aplicarPalabras("general decimales 2 sin-miles sin-negrita sin-cursiva "
                                       "sin-subrayado sin-contorno automatica texto ninguno "
                                       "fondo ninguno",
                                       formato),
              "");
    EXPECT_EQ(formato, Formato{});
}

TEST(PalabrasFormato, DecirQueNoSeEntiende) {
    const struct {
        const char* palabras;
        const char* mala;
    } casos[] = {
        {"negrita grande", "grande"},  {"decimales", "decimales"}, {"decimales 256", "decimales"},
        {"decimales -1", "decimales"}, {"texto", "texto"},         {"texto rojo", "texto"},
        {"fondo #12345", "fondo"},     {"fondo #GGGGGG", "fondo"}, {"fondo #1234567", "fondo"},
        {"NEGRITA", "NEGRITA"},        {"fondo #-12345", "fondo"},
    };
    for (const auto& caso : casos) {
        Formato formato;
        EXPECT_EQ(consola::aplicarPalabras(caso.palabras, formato), caso.mala) << caso.palabras;
    }
}

TEST(PalabrasFormato, LasPalabrasLlevanDeUnFormatoAOtro) {
    std::mt19937 azar(11);
    const auto cualquiera = [&azar] {
        Formato formato;
        formato.numero = static_cast<nucleo::FormatoNumero>(azar() % 5);
        formato.decimales = static_cast<std::uint8_t>(azar() % 11);
        formato.separadorMiles = azar() % 2 == 0;
        formato.negrita = azar() % 2 == 0;
        formato.cursiva = azar() % 2 == 0;
        formato.subrayado = azar() % 2 == 0;
        formato.estiloExtra = azar() % 2 == 0;
        formato.colorTexto = azar() % 3 == 0 ? 0 : static_cast<std::uint32_t>(azar());
        formato.colorFondo = azar() % 3 == 0 ? 0 : 0xFF000000U | static_cast<std::uint32_t>(azar());
        formato.alineacion = static_cast<nucleo::AlineacionH>(azar() % 4);
        return formato;
    };
    for (int vuelta = 0; vuelta < 2000; ++vuelta) {
        const Formato desde = cualquiera();
        const Formato hasta = cualquiera();
        const std::string palabras = consola::palabrasEntre(desde, hasta);
        Formato formato = desde;
        ASSERT_EQ(consola::aplicarPalabras(palabras, formato), "") << palabras;
        ASSERT_EQ(formato, hasta) << palabras;
        ASSERT_EQ(consola::palabrasEntre(hasta, hasta), "");
    }
}

TEST(ArchivoFormato, AplicarCadaIndicacion) {
    Libro libro;
    libro.agregarHoja();
    EXPECT_EQ(aplicar("# un comentario\n\n"
                      "hoja Gastos de la casa\r\n"
                      "inmovilizar 2 1\n"
                      "ancho A 120\nancho B:C 60\nalto 3 40\nalto 5:6 30\n"
                      "fusion A1:C1\n"
                      "formato A1 negrita\nformato A1:A2 centro\n"
                      "hoja Otra\nancho ZZ 100\n",
                      libro),
              "");
    const Hoja& hoja = *libro.hojas[0];
    EXPECT_EQ(hoja.nombre, "Gastos de la casa");
    EXPECT_EQ(hoja.filasInmovilizadas, 2);
    EXPECT_EQ(hoja.columnasInmovilizadas, 1);
    EXPECT_EQ(hoja.anchoColumna(0), 120);
    EXPECT_EQ(hoja.anchoColumna(2), 60);
    EXPECT_EQ(hoja.altoFila(2), 40);
    EXPECT_EQ(hoja.altoFila(5), 30);
    EXPECT_EQ(hoja.fusiones, (std::vector<nucleo::RangoFusion>{{0, 0, 0, 2}}));
    EXPECT_TRUE(hoja.celda(0, 0)->formato.negrita);
    EXPECT_EQ(hoja.celda(0, 0)->formato.alineacion, nucleo::AlineacionH::Centro);
    EXPECT_FALSE(hoja.celda(1, 0)->formato.negrita);
    EXPECT_EQ(libro.hojas[1]->nombre, "Otra");
    EXPECT_EQ(libro.hojas[1]->anchoColumna(701), 100);
}

TEST(ArchivoFormato, DecirLaLineaYLoQueEstaMal) {
    const struct {
        const char* texto;
        const char* error;
    } casos[] = {
        {"\nnegrita A1", "línea 2: no se entiende «negrita»"},
        {"hoja", "línea 1: falta el nombre de la hoja"},
        {"hoja a\nhoja b", "línea 2: hay más hojas que archivos de texto"},
        {"inmovilizar 1", "línea 1: se espera: inmovilizar FILAS COLUMNAS"},
        {"inmovilizar -1 0", "línea 1: se espera: inmovilizar FILAS COLUMNAS"},
        {"inmovilizar 1 2 3", "línea 1: se espera: inmovilizar FILAS COLUMNAS"},
        {"ancho A 19", "línea 1: se espera un tramo, como A, A:F, 1 o 1:5, y de 20 a 600 píxeles"},
        {"ancho B:A 88",
         "línea 1: se espera un tramo, como A, A:F, 1 o 1:5, y de 20 a 600 píxeles"},
        {"ancho 1 88", "línea 1: se espera un tramo, como A, A:F, 1 o 1:5, y de 20 a 600 píxeles"},
        {"alto 0 24", "línea 1: se espera un tramo, como A, A:F, 1 o 1:5, y de 14 a 400 píxeles"},
        {"alto 1:99999 24",
         "línea 1: se espera un tramo, como A, A:F, 1 o 1:5, y de 14 a 400 píxeles"},
        {"fusion A1", "línea 1: la fusión es de una sola celda o toca otra"},
        {"fusion A1:B1\nfusion B1:C1", "línea 2: la fusión es de una sola celda o toca otra"},
        {"fusion", "línea 1: se espera: fusion A1:F1"},
        {"formato negrita", "línea 1: se espera: formato A1:F1 PALABRAS"},
        {"formato A1 grande", "línea 1: no se entiende «grande»"},
        {"formato A1:ZZ65536 negrita", "línea 1: son demasiadas celdas con formato"},
    };
    for (const auto& caso : casos) {
        Libro libro;
        EXPECT_EQ(aplicar(caso.texto, libro), caso.error) << caso.texto;
    }
}

TEST(ArchivoFormato, NoRepetirNombresDeHoja) {
    Libro libro;
    libro.agregarHoja();
    EXPECT_EQ(aplicar("hoja a\nhoja a", libro), "línea 2: dos hojas no pueden llamarse igual");
}

TEST(ArchivoFormato, EscribirEnRectangulosYSoloLoQueNoSeSabe) {
    Libro libro;
    motor_formulas::Motor motor(libro);
    motor.establecerCelda(0, 0, 0, "Título");
    motor.establecerCelda(0, 1, 0, "1/2/2026"); // fecha por sí misma
    motor.establecerCelda(0, 2, 0, "15%");
    motor.establecerCelda(0, 3, 0, "7");
    Hoja& hoja = *libro.hojas.front();
    hoja.celdaMut(2, 0).formato.numero = nucleo::FormatoNumero::General;
    for (int fila = 1; fila <= 3; ++fila) {
        for (int col = 1; col <= 2; ++col) {
            hoja.celdaMut(fila, col).formato.numero = nucleo::FormatoNumero::Moneda;
        }
    }
    hoja.celdaMut(3, 3).formato.negrita = true;
    hoja.anchos[0] = 200;
    hoja.anchos[2] = 70;
    hoja.anchos[3] = 70;
    hoja.altos[0] = 40;
    hoja.filasInmovilizadas = 1;
    hoja.fusionar(0, 0, 0, 3);
    EXPECT_EQ(escrito(hoja), "hoja Hoja 1\n"
                             "inmovilizar 1 0\n"
                             "ancho A 200\n"
                             "ancho C:D 70\n"
                             "alto 1 40\n"
                             "fusion A1:D1\n"
                             "formato B2:C4 moneda\n"
                             "formato A3 general\n"
                             "formato D4 negrita\n");
}

TEST(ArchivoFormato, CallarLoQueNingunaEdicionProduce) {
    Libro libro;
    Hoja& hoja = *libro.hojas.front();
    hoja.nombre = "a\nfusion A1:B2";
    hoja.filasInmovilizadas = -7;
    hoja.columnasInmovilizadas = 2147483647;
    hoja.anchos[0] = -5;
    hoja.anchos[-3] = 100;
    hoja.anchos[2000000000] = 100;
    hoja.altos[1] = 2000000000;
    hoja.fusiones.push_back({5, 5, 2, 2});
    hoja.fusiones.push_back({0, 0, 2000000000, 3});
    hoja.celdaMut(0, 0).formato.numero = static_cast<nucleo::FormatoNumero>(200);
    EXPECT_EQ(escrito(hoja), "inmovilizar 0 702\n");
    Libro otro;
    EXPECT_EQ(aplicar(escrito(hoja), otro), "");
}

TEST(ArchivoFormato, LoEscritoSeAplicaIgual) {
    std::mt19937 azar(5);
    const auto hasta = [&azar](int maximo) {
        return static_cast<int>(azar() % static_cast<unsigned>(maximo + 1));
    };
    const char* const textos[] = {"", "hola", "5", "1/1/2024", "12,5%", "$ 3", "=A1+1", "-"};
    for (int vuelta = 0; vuelta < 300; ++vuelta) {
        Libro libro;
        motor_formulas::Motor motor(libro);
        Hoja& hoja = *libro.hojas.front();
        for (int i = hasta(20); i > 0; --i) {
            motor.establecerCelda(0, hasta(6), hasta(6), textos[hasta(7)]);
        }
        for (int i = hasta(3); i > 0; --i) {
            const int fila = hasta(6);
            const int col = hasta(6);
            hoja.fusionar(fila, col, fila + hasta(2), col + hasta(2));
        }
        for (int i = hasta(30); i > 0; --i) {
            Formato& formato = hoja.celdaMut(hasta(6), hasta(6)).formato;
            formato.negrita = hasta(1) == 0;
            formato.numero = static_cast<nucleo::FormatoNumero>(hasta(4));
            formato.colorFondo = hasta(1) == 0 ? 0xFFEEEEEE : 0;
        }
        hoja.anchos[hasta(5)] = 20 + hasta(500);
        hoja.altos[hasta(5)] = 14 + hasta(300);
        hoja.filasInmovilizadas = hasta(3);

        Libro otro;
        motor_formulas::Motor otroMotor(otro);
        for (int fila = 0; fila < 10; ++fila) {
            for (int col = 0; col < 10; ++col) {
                if (const nucleo::Celda* celda = hoja.celda(fila, col)) {
                    otroMotor.establecerCelda(0, fila, col, celda->entrada);
                }
            }
        }
        ASSERT_EQ(aplicar(escrito(hoja), otro), "") << escrito(hoja);
        const Hoja& vuelta2 = *otro.hojas.front();
        ASSERT_EQ(escrito(vuelta2), escrito(hoja));
        ASSERT_EQ(vuelta2.fusiones, hoja.fusiones);
        for (int fila = 0; fila < 10; ++fila) {
            for (int col = 0; col < 10; ++col) {
                const nucleo::Celda* una = hoja.celda(fila, col);
                const nucleo::Celda* otra = vuelta2.celda(fila, col);
                const nucleo::Celda vacia;
                ASSERT_EQ((una == nullptr ? vacia : *una).formato,
                          (otra == nullptr ? vacia : *otra).formato)
                    << vuelta << ": " << fila << ", " << col << "\n"
                    << escrito(hoja);
            }
        }
    }
}

} // namespace
