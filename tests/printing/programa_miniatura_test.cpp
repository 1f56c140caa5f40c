#include "formula/motor.h"
#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/printing/programa.h"

#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace {

/// Sobra siempre: estas pruebas no miden el tiempo.
const std::string kSinPrisa = " 600000";

int hacer(const std::string& libro, const std::string& salida, const std::string& resto) {
    return hacerPrograma(PROGRAMA_MINIATURA, libro + " " + salida + " " + resto);
}

TEST(ProgramaMiniatura, DibujaDelLadoPedido) {
    const CarpetaTemporal carpeta;
    const std::string salida = carpeta.ruta("a.png");
    const struct {
        const char* pedido;
        int lado;
    } casos[] = {{"128", 128}, {"256", 256}, {"1", 16}, {"999999", 1024}};
    for (const auto& caso : casos) {
        ASSERT_EQ(hacer(EJEMPLOS "/presupuesto.mrn", salida, caso.pedido + kSinPrisa), 0);
        const QImage imagen(QString::fromStdString(salida));
        EXPECT_EQ(imagen.size(), QSize(caso.lado, caso.lado));
    }
}

TEST(ProgramaMiniatura, EstadosDeSalida) {
    const CarpetaTemporal carpeta;
    const std::string libro = EJEMPLOS "/presupuesto.mrn";
    const std::string salida = carpeta.ruta("a.png");
    EXPECT_EQ(hacer(libro, salida, ""), 1);
    EXPECT_EQ(hacer(libro, salida, "grande"), 1);
    EXPECT_EQ(hacer(libro, salida, "-5"), 1);
    EXPECT_EQ(hacer(libro, salida, "128 0"), 1);
    EXPECT_EQ(hacer(libro, salida, "128 600000 sobra"), 1);
    EXPECT_EQ(hacer(carpeta.ruta("falta.mrn"), salida, "128" + kSinPrisa), 2);
    EXPECT_EQ(hacer(carpeta.escribir("malo.mrn", "MRNL y nada"), salida, "128" + kSinPrisa), 2);
    EXPECT_EQ(hacer("/dev/zero", salida, "128" + kSinPrisa), 2);
    EXPECT_FALSE(carpeta.existe("a.png"));
    EXPECT_EQ(hacer(libro, carpeta.ruta("no/a.png"), "128" + kSinPrisa), 3);
}

TEST(ProgramaMiniatura, LoQueTardaDemasiadoSeDejaSinDibujar) {
    const CarpetaTemporal carpeta;
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    // Cada búsqueda mira mil letras por cada comienzo posible: son minutos de cálculo.
    libro.hojas[0]->celdaMut(0, 0).entrada = std::string(2000, 'a');
    libro.hojas[0]->celdaMut(0, 0).tipo = nucleo::TipoCelda::Texto;
    for (int fila = 1; fila < 4000; ++fila) {
        nucleo::Celda& celda = libro.hojas[0]->celdaMut(fila, 1);
        celda.tipo = nucleo::TipoCelda::Formula;
        celda.entrada = "=CONTAR.SI(A1:A65536;\"*" + std::string(1000, 'a') + "b\")";
    }
    ASSERT_EQ(nucleo::Serializador::guardar(libro, carpeta.ruta("lento.mrn")), 0);
    EXPECT_EQ(hacer(carpeta.ruta("lento.mrn"), carpeta.ruta("a.png"), "128 50"), 4);
    EXPECT_FALSE(carpeta.existe("a.png"));
}

} // namespace
