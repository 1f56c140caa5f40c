#include "tests/rendering/lienzo.h"

#include <gtest/gtest.h>

namespace {

using nucleo::AlineacionH;

const QRect kA1(48, 26, 88, 24);
const QRect kB1(136, 26, 88, 24);
const QRect kB2(136, 50, 88, 24);

QRect dentro(const QRect& celda) {
    return celda.adjusted(0, 0, -1, -1);
}

TEST(PinturaCeldas, SinHojaOSinTemaNoSePintaNada) {
    Lienzo l;
    l.r.hoja = nullptr;
    l.pintar();
    EXPECT_TRUE(l.todo(Lienzo::kIntacto, l.imagen.rect()));
    l.r.hoja = &l.hoja;
    l.r.tema = nullptr;
    l.pintar();
    EXPECT_TRUE(l.todo(Lienzo::kIntacto, l.imagen.rect()));
    l.pintarCon([&](QPainter& p) {
        l.r.dibujarCeldas(p, l.vista, l.seleccion);
        l.r.dibujarCelda(p, 0, 0, kA1);
        l.r.dibujarSeleccion(p, l.vista, l.seleccion);
        l.r.dibujarEncabezados(p, l.vista, l.seleccion);
    });
    EXPECT_TRUE(l.todo(Lienzo::kIntacto, l.imagen.rect()));
}

TEST(PinturaCeldas, CadaCeldaPintaSuBordeDerechoYElInferior) {
    Lienzo l;
    l.pintar();
    const QRgb linea = l.tema.lineas.rgb();
    const QRgb fondo = l.tema.fondo.rgb();
    for (const QRect& celda : {kA1, kB1, kB2}) {
        EXPECT_TRUE(l.todo(fondo, dentro(celda)));
        EXPECT_TRUE(l.todo(linea, QRect(celda.right(), celda.top(), 1, celda.height())));
        EXPECT_TRUE(l.todo(linea, QRect(celda.left(), celda.bottom(), celda.width(), 1)));
    }
}

TEST(PinturaCeldas, ElRellenoCubreLaCeldaSinSusLineas) {
    Lienzo l;
    l.relleno(1, 1, 0xFF00FF00);
    l.pintar();
    EXPECT_TRUE(l.todo(0xFF00FF00, dentro(kB2)));
    EXPECT_EQ(l.pixel(kB2.right(), kB2.top() + 3), l.tema.lineas.rgb());
    EXPECT_EQ(l.pixel(kB2.left() - 1, kB2.top() + 3), l.tema.lineas.rgb());
    EXPECT_EQ(l.pixel(kB2.left() + 3, kB2.top() - 1), l.tema.lineas.rgb());
}

TEST(PinturaCeldas, UnRellenoTranslucidoSeMezcla) {
    Lienzo l;
    l.relleno(0, 0, 0x80FF0000);
    l.pintar();
    EXPECT_EQ(qRed(l.pixel(50, 30)), 255);
    EXPECT_NEAR(qBlue(l.pixel(50, 30)), 127, 1);
}

TEST(PinturaCeldas, ElContornoExtraRodeaLaCelda) {
    Lienzo l;
    l.hoja.celdaMut(0, 0).formato.estiloExtra = true;
    l.pintar();
    const QRgb texto = l.tema.texto.rgb();
    EXPECT_EQ(l.pixel(kA1.topLeft()), texto);
    EXPECT_EQ(l.pixel(kA1.left(), kA1.center().y()), texto);
    // Por el otro lado va sobre las líneas de la propia celda.
    EXPECT_EQ(l.pixel(kA1.right(), kA1.center().y()), texto);
    EXPECT_EQ(l.pixel(kA1.center().x(), kA1.bottom()), texto);
    EXPECT_EQ(l.pixel(kA1.right() + 1, kA1.center().y()), l.tema.fondo.rgb());
    EXPECT_TRUE(l.todo(l.tema.fondo.rgb(), kA1.adjusted(1, 1, -1, -1)));
}

struct CasoAlineacion {
    const char* nombre;
    AlineacionH alineacion;
    nucleo::Valor valor;
    int lado; ///< -1 izquierda, 0 centro, 1 derecha
};

TEST(PinturaCeldas, LaAlineacionEsLaDelFormatoOLaDelValor) {
    const nucleo::Valor numero = nucleo::Valor::deNumero(7);
    const nucleo::Valor texto = nucleo::Valor::deTexto("xx");
    const nucleo::Valor logico = nucleo::Valor::deLogico(false);
    const nucleo::Valor error = nucleo::Valor::deError(nucleo::ErrorCelda::Ref);
    const auto desconocida = static_cast<AlineacionH>(9);
    for (const CasoAlineacion& caso :
         {CasoAlineacion{"número", AlineacionH::General, numero, 1},
          {"texto", AlineacionH::General, texto, -1},
          {"lógico", AlineacionH::General, logico, 0},
          {"error", AlineacionH::General, error, 0},
          {"desconocida", desconocida, numero, 1},
          {"número a la izquierda", AlineacionH::Izquierda, numero, -1},
          {"texto al centro", AlineacionH::Centro, texto, 0},
          {"texto a la derecha", AlineacionH::Derecha, texto, 1}}) {
        Lienzo l;
        l.hoja.anchos[0] = 200;
        l.formula(0, 0, caso.valor).formato.alineacion = caso.alineacion;
        l.pintar();
        const QRect interior(48, 26, 199, 23);
        const Lienzo::Alcance tinta = l.distintos(l.tema.fondo.rgb(), interior);
        ASSERT_GE(tinta.primera, 0) << caso.nombre;
        if (caso.lado < 0) {
            EXPECT_NEAR(tinta.primera, 48 + 4, 2) << caso.nombre;
        } else if (caso.lado > 0) {
            EXPECT_NEAR(tinta.ultima, 48 + 200 - 4, 3) << caso.nombre;
        } else {
            EXPECT_NEAR(tinta.centro(), 48 + 100, 2) << caso.nombre;
        }
    }
}

TEST(PinturaCeldas, ElTextoSeCortaEnElBordeAunqueElVecinoEsteVacio) {
    for (const AlineacionH lado :
         {AlineacionH::Izquierda, AlineacionH::Centro, AlineacionH::Derecha}) {
        Lienzo l;
        l.texto(0, 1, "MMMMMMMMMMMMMMMMMMMMMMMM").formato.alineacion = lado;
        l.pintar();
        const QRgb fondo = l.tema.fondo.rgb();
        EXPECT_TRUE(l.todo(fondo, dentro(kA1)));
        EXPECT_TRUE(l.todo(fondo, dentro(QRect(224, 26, 88, 24))));
        EXPECT_TRUE(l.todo(fondo, dentro(kB2)));
        const Lienzo::Alcance tinta = l.distintos(fondo, dentro(kB1));
        if (lado != AlineacionH::Izquierda) {
            EXPECT_LE(tinta.primera, kB1.left() + 2) << "llega al borde izquierdo";
        }
        if (lado != AlineacionH::Derecha) {
            EXPECT_GE(tinta.ultima, kB1.right() - 3) << "llega al borde derecho";
        }
    }
}

TEST(PinturaCeldas, EnUnaFilaBajaElTextoTampocoSeSale) {
    Lienzo l;
    l.hoja.altos[1] = 14;
    l.texto(1, 1, "ÁÁgg").formato.negrita = true;
    l.r.zoom = 2.0;
    l.hoja.altos[1] = 3;
    l.pintar();
    const QRgb fondo = l.tema.fondo.rgb();
    const QRect arriba(48 + 176, 26, 175, 47);
    const QRect abajo(48 + 176, 26 + 48 + 6, 175, 47);
    EXPECT_TRUE(l.todo(fondo, arriba));
    EXPECT_TRUE(l.todo(fondo, abajo));
}

TEST(PinturaCeldas, UnErrorUsaSuColorAunqueLaCeldaTengaOtro) {
    Lienzo l;
    l.hoja.anchos[0] = 300;
    l.formula(0, 0, nucleo::Valor::deError(nucleo::ErrorCelda::DivCero)).formato.colorTexto =
        0xFF0000FF;
    nucleo::Celda& azul = l.texto(1, 0, "MMMM");
    azul.formato.colorTexto = 0xFF0000FF;
    azul.formato.negrita = true;
    l.texto(2, 0, "MMMM").formato.negrita = true;
    l.pintar();
    const auto domina = [&](const QRect& rect, QRgb color) {
        // La letra se suaviza: se busca el píxel más oscuro.
        QRgb oscuro = 0xFFFFFFFF;
        for (int y = rect.top(); y < rect.bottom(); ++y) {
            for (int x = rect.left(); x < rect.right(); ++x) {
                if (qGray(l.pixel(x, y)) < qGray(oscuro)) {
                    oscuro = l.pixel(x, y);
                }
            }
        }
        return std::abs(qRed(oscuro) - qRed(color)) + std::abs(qGreen(oscuro) - qGreen(color)) +
               std::abs(qBlue(oscuro) - qBlue(color));
    };
    EXPECT_LT(domina(QRect(48, 26, 299, 23), l.tema.textoError.rgb()), 60);
    EXPECT_LT(domina(QRect(48, 50, 299, 23), 0xFF0000FF), 60);
    EXPECT_LT(domina(QRect(48, 74, 299, 23), l.tema.texto.rgb()), 60);
}

TEST(PinturaCeldas, CadaClaseDeCeldaMuestraLoSuyo) {
    // Dos celdas que muestran lo mismo se pintan igual.
    const auto foto = [](const auto& preparar) {
        Lienzo l;
        preparar(l);
        l.pintar();
        return l.imagen.copy(dentro(kA1));
    };
    const QImage siete =
        foto([](Lienzo& l) { l.texto(0, 0, "7").formato.alineacion = AlineacionH::Derecha; });
    EXPECT_EQ(foto([](Lienzo& l) { l.numero(0, 0, 7); }), siete) << "el literal, no la entrada";
    EXPECT_EQ(foto([](Lienzo& l) { l.formula(0, 0, nucleo::Valor::deNumero(7)); }), siete);
    const QImage vacia = foto([](Lienzo&) {});
    EXPECT_NE(siete, vacia);
    EXPECT_EQ(foto([](Lienzo& l) {
                  nucleo::Celda& celda = l.hoja.celdaMut(0, 0);
                  celda.entrada = "no se ve";
                  celda.valor = nucleo::Valor::deTexto("tampoco");
              }),
              vacia);
    EXPECT_EQ(
        foto([](Lienzo& l) { l.numero(0, 0, 1e9).tipo = static_cast<nucleo::TipoCelda>(200); }),
        vacia);
}

TEST(PinturaCeldas, NegritaCursivaYSubrayadoCambianLaTinta) {
    const auto foto = [](bool nucleo::Formato::*estilo) {
        Lienzo l;
        nucleo::Celda& celda = l.texto(0, 0, "Suma");
        if (estilo != nullptr) {
            celda.formato.*estilo = true;
        }
        l.pintar();
        return l.imagen.copy(dentro(kA1));
    };
    const QImage normal = foto(nullptr);
    EXPECT_NE(foto(&nucleo::Formato::negrita), normal);
    EXPECT_NE(foto(&nucleo::Formato::cursiva), normal);
    const QImage subrayada = foto(&nucleo::Formato::subrayado);
    EXPECT_NE(subrayada, normal);
    // Las mismas letras, y una raya debajo.
    const QRect letras(0, 0, 87, 16);
    EXPECT_EQ(subrayada.copy(letras), normal.copy(letras));
}

TEST(PinturaCeldas, UnaCeldaSueltaSePintaEnElRectanguloQueSeLeDa) {
    Lienzo l;
    l.relleno(3, 3, 0xFF00FFFF);
    const QRect donde(100, 100, 60, 40);
    l.pintarCon([&](QPainter& p) { l.r.dibujarCelda(p, 3, 3, donde); });
    EXPECT_TRUE(l.todo(0xFF00FFFF, dentro(donde)));
    EXPECT_TRUE(l.todo(l.tema.lineas.rgb(), QRect(donde.right(), 100, 1, 40)));
    EXPECT_EQ(l.pixel(99, 110), Lienzo::kIntacto);
    EXPECT_EQ(l.pixel(160, 110), Lienzo::kIntacto);
    EXPECT_EQ(l.pixel(110, 140), Lienzo::kIntacto);
}

TEST(PinturaCeldas, ConElDobleDePixelesLasLineasTienenDos) {
    Lienzo l(300, 150);
    l.imagen = QImage(600, 300, QImage::Format_RGB32);
    l.imagen.setDevicePixelRatio(2);
    l.texto(0, 0, "Texto");
    l.pintar();
    const QRgb linea = l.tema.lineas.rgb();
    const QRgb fondo = l.tema.fondo.rgb();
    const int borde = 2 * (48 + 88);
    EXPECT_EQ(l.pixel(borde - 3, 60), fondo);
    EXPECT_EQ(l.pixel(borde - 2, 60), linea);
    EXPECT_EQ(l.pixel(borde - 1, 60), linea);
    EXPECT_EQ(l.pixel(borde, 60), fondo);
}

TEST(PinturaCeldas, ConEscalaFraccionariaTodasLasLineasSonIguales) {
    Lienzo l(400, 300);
    l.imagen = QImage(500, 375, QImage::Format_RGB32);
    l.imagen.setDevicePixelRatio(1.25);
    l.hoja.anchos[0] = 33;
    l.hoja.anchos[1] = 46;
    l.pintar();
    const QRgb linea = l.tema.lineas.rgb();
    int grosor = 0;
    for (int x = 70; x < 500; ++x) {
        if (l.pixel(x, 40) == linea) {
            ++grosor;
        } else {
            EXPECT_TRUE(grosor == 0 || grosor == 1) << x << ": " << grosor;
            grosor = 0;
        }
    }
}

} // namespace
