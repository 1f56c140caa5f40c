#include "tests/comun/carpeta_temporal.h"
#include "tests/printing/programa.h"

#include <QImage>

#include <gtest/gtest.h>

#include <filesystem>
#include <locale>
#include <sstream>
#include <string>

namespace {

const std::string kPresupuesto = EJEMPLOS "/presupuesto.mrn";
const std::string kVentas = EJEMPLOS "/ventas.mrn";

int imprimir(const std::string& argumentos) {
    return hacerPrograma(PROGRAMA_IMPRESORA, argumentos);
}

struct Documento {
    int paginas = 0;
    double ancho = 0; ///< puntos
    double alto = 0;
};

/// Los objetos de página de un PDF van sin comprimir.
Documento leerPdf(const std::string& pdf) {
    const std::string kPagina = "/Type /Page\n";
    const std::string kCaja = "/MediaBox [0 0 ";
    Documento documento;
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
    for (std::size_t i = pdf.find(kPagina); i != std::string::npos; i = pdf.find(kPagina, i + 1)) {
        ++documento.paginas;
    }
    const std::size_t caja = pdf.find(kCaja);
    if (caja != std::string::npos) {
        std::istringstream medidas(pdf.substr(caja + kCaja.size(), 40));
        medidas.imbue(std::locale::classic());
        medidas >> documento.ancho >> documento.alto;
    }
    return documento;
}

class Impresora : public testing::Test {
  protected:
    CarpetaTemporal carpeta;

    Documento documento(const std::string& libro, const std::string& opciones) {
        EXPECT_EQ(imprimir(libro + " " + carpeta.ruta("a.pdf") + " " + opciones), 0) << opciones;
        return leerPdf(carpeta.leer("a.pdf"));
    }
};

TEST_F(Impresora, ElPapelEsA4Vertical) {
    const Documento a4 = documento(kPresupuesto, "");
    EXPECT_GE(a4.paginas, 1);
    EXPECT_NEAR(a4.ancho, 595, 1);
    EXPECT_NEAR(a4.alto, 842, 1);
    const Documento carta = documento(kPresupuesto, "--papel carta --horizontal");
    EXPECT_NEAR(carta.ancho, 792, 1);
    EXPECT_NEAR(carta.alto, 612, 1);
}

TEST_F(Impresora, LasPaginasSonLasQueHacenFalta) {
    const int largas = documento(kVentas, "--rango A5:B2004").paginas;
    EXPECT_EQ(largas, 49) << "caben 41 filas de 24 píxeles en cada una";
    EXPECT_EQ(documento(kVentas, "--rango A1:B20").paginas, 1);
    const int anchas = documento(kPresupuesto, "").paginas;
    EXPECT_GT(anchas, documento(kPresupuesto, "--ajustar").paginas);
    EXPECT_EQ(documento(kPresupuesto, "--ajustar").paginas, 1);
    EXPECT_GT(documento(kPresupuesto, "--todas").paginas, anchas);
}

TEST_F(Impresora, LaImagenEsDeLaZona) {
    const std::string salida = carpeta.ruta("a.png");
    ASSERT_EQ(imprimir(kPresupuesto + " " + salida), 0);
    const QImage entera(QString::fromStdString(salida));
    ASSERT_EQ(imprimir(kPresupuesto + " " + salida + " --encabezados"), 0);
    const QImage conEncabezados(QString::fromStdString(salida));
    EXPECT_EQ(conEncabezados.size(), entera.size() + QSize(48, 26));
    ASSERT_EQ(imprimir(kPresupuesto + " " + salida + " --rango C5:D6"), 0);
    EXPECT_LT(QImage(QString::fromStdString(salida)).width(), entera.width());
    ASSERT_EQ(imprimir(kPresupuesto + " " + salida + " --hoja Vencimientos"), 0);
    EXPECT_NE(QImage(QString::fromStdString(salida)).size(), entera.size());
}

TEST_F(Impresora, LaConsolaLaEncuentra) {
    EXPECT_EQ(hacerPrograma(PROGRAMA_CONSOLA, "imprimir " + kPresupuesto + " " +
                                                  carpeta.ruta("a.pdf") + " --ajustar"),
              0);
    EXPECT_EQ(leerPdf(carpeta.leer("a.pdf")).paginas, 1);
}

TEST_F(Impresora, EstadosDeSalida) {
    const std::string salida = carpeta.ruta("b.pdf");
    EXPECT_EQ(imprimir(kPresupuesto), 1);
    EXPECT_EQ(imprimir(kPresupuesto + " " + salida + " --hoja Nada"), 1);
    EXPECT_EQ(imprimir(kPresupuesto + " " + salida + " --rango ZZ65000:ZZ65536"), 1);
    EXPECT_EQ(imprimir(kVentas + " " + carpeta.ruta("b.png")), 1) << "no cabe en una imagen";
    EXPECT_EQ(imprimir(carpeta.ruta("falta.mrn") + " " + salida), 2);
    EXPECT_EQ(imprimir(carpeta.escribir("malo.mrn", "no es un libro") + " " + salida), 2);
    EXPECT_FALSE(carpeta.existe("b.pdf"));
    EXPECT_FALSE(carpeta.existe("b.png"));
    EXPECT_EQ(imprimir(kPresupuesto + " " + carpeta.ruta("no/a.pdf")), 3);
    EXPECT_EQ(imprimir(kPresupuesto + " " + carpeta.ruta("no/a.png")), 3);
}

TEST_F(Impresora, UnDispositivoLlenoSeDiceYNoSeBorra) {
    for (const char* nombre : {"lleno.pdf", "lleno.png"}) {
        std::filesystem::create_symlink("/dev/full", carpeta.ruta(nombre));
        EXPECT_EQ(imprimir(kPresupuesto + " " + carpeta.ruta(nombre)), 3) << nombre;
        EXPECT_TRUE(std::filesystem::is_character_file(carpeta.ruta(nombre))) << nombre;
    }
}

} // namespace
