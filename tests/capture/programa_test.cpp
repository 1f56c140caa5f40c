#include "tests/comun/carpeta_temporal.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace {

/// El estado de salida del programa de verdad.
int hacer(const std::string& argumentos) {
    const std::string orden =
        std::string("\"") + PROGRAMA_CAPTURA + "\" " + argumentos + " 2>/dev/null";
    const int estado = std::system(orden.c_str());
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

QImage imagen(const std::string& ruta) {
    return QImage(QString::fromStdString(ruta));
}

const std::string kErrores = EJEMPLOS "/errores.mrn";
const std::string kPresupuesto = EJEMPLOS "/presupuesto.mrn";

TEST(Captura, DibujarDelTamanoPedido) {
    const CarpetaTemporal carpeta;
    ASSERT_EQ(hacer(kErrores + " " + carpeta.ruta("a.png") + " --tamano 1100x500"), 0);
    EXPECT_EQ(imagen(carpeta.ruta("a.png")).size(), QSize(1100, 500));
    ASSERT_EQ(hacer(kErrores + " " + carpeta.ruta("b.png") + " --tamano 1100x500 --escala 2"), 0);
    EXPECT_EQ(imagen(carpeta.ruta("b.png")).size(), QSize(2200, 1000));
}

TEST(Captura, CadaOpcionCambiaElDibujo) {
    const CarpetaTemporal carpeta;
    const auto dibujar = [&](const std::string& opciones) {
        EXPECT_EQ(hacer(kPresupuesto + " " + carpeta.ruta("a.png") + " " + opciones), 0)
            << opciones;
        return imagen(carpeta.ruta("a.png"));
    };
    const QImage normal = dibujar("");
    ASSERT_FALSE(normal.isNull());
    EXPECT_EQ(dibujar(""), normal);
    for (const char* opciones :
         {"--tema oscuro", "--zoom 150", "--celda C7", "--seleccion B5:D8", "--hoja Vencimientos",
          "--celda A500", "--escribir '=SUMA(B5:B7)'"}) {
        EXPECT_NE(dibujar(opciones), normal) << opciones;
    }
}

TEST(Captura, EstadosDeSalida) {
    const CarpetaTemporal carpeta;
    const std::string salida = carpeta.ruta("a.png");
    EXPECT_EQ(hacer(kErrores), 1);
    EXPECT_EQ(hacer(kErrores + " " + salida + " --hoja Nada"), 1);
    EXPECT_EQ(hacer(carpeta.ruta("falta.mrn") + " " + salida), 2);
    EXPECT_EQ(hacer(carpeta.escribir("malo.mrn", "no es un libro") + " " + salida), 2);
    EXPECT_FALSE(carpeta.existe("a.png"));
    EXPECT_EQ(hacer(kErrores + " " + carpeta.ruta("no/a.png")), 3);
}

} // namespace
