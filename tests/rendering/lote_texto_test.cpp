#include "rendering/lote_texto.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <string>

namespace {

using renderizador::LoteTexto;

QFont letra() {
    QFont fuente(QStringLiteral("Segoe UI"));
    fuente.setPointSizeF(10);
    return fuente;
}

const QRect kCelda(20, 10, 200, 24);

QImage pintar(const std::string& texto, const LoteTexto::Estilo& estilo,
              const QRect& celda = kCelda) {
    QImage imagen(260, 50, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    LoteTexto lote(letra());
    lote.anadir(texto, celda, 4, estilo);
    lote.volcar(pintor);
    return imagen;
}

int tinta(const QImage& imagen) {
    int total = 0;
    for (int y = 0; y < imagen.height(); ++y) {
        for (int x = 0; x < imagen.width(); ++x) {
            total += 255 - qGray(imagen.pixel(x, y));
        }
    }
    return total;
}

TEST(LoteTexto, DejaCasiLaMismaTintaQueElPintorSuelto) {
    const std::string texto = "Importe: 1.234,56 € — ñandú Ω Ж";
    QImage suelto(260, 50, QImage::Format_RGB32);
    suelto.fill(Qt::white);
    QPainter pintor(&suelto);
    pintor.setFont(letra());
    pintor.drawText(kCelda.adjusted(4, 0, -4, 0), Qt::AlignLeft | Qt::AlignVCenter,
                    QString::fromStdString(texto));
    pintor.end();
    const QImage lote = pintar(texto, {.color = 0xFF000000});
    EXPECT_NEAR(tinta(lote), tinta(suelto), tinta(suelto) * 0.05);
    // La línea base está en el mismo sitio: las filas con tinta son las mismas.
    const auto filaVacia = [](const QImage& imagen, int y) {
        for (int x = 0; x < imagen.width(); ++x) {
            if (imagen.pixel(x, y) != 0xFFFFFFFF) {
                return false;
            }
        }
        return true;
    };
    for (int y = 0; y < 50; ++y) {
        EXPECT_EQ(filaVacia(lote, y), filaVacia(suelto, y)) << y;
    }
}

TEST(LoteTexto, LoCompuestoSePintaPorElOtroCamino) {
    // Una e con su tilde combinante se ve como la é de una pieza, aunque el camino sea otro.
    const QImage pieza = pintar("caf\xC3\xA9", {.color = 0xFF000000});
    const QImage compuesta = pintar("cafe\xCC\x81", {.color = 0xFF000000});
    EXPECT_NEAR(tinta(compuesta), tinta(pieza), tinta(pieza) * 0.1);
}

TEST(LoteTexto, JuntarTextosNoCambiaNinguno) {
    QImage juntos(260, 50, QImage::Format_RGB32);
    juntos.fill(Qt::white);
    {
        QPainter pintor(&juntos);
        LoteTexto lote(letra());
        lote.anadir("izquierda larguísima", QRect(0, 10, 60, 24), 4, {.color = 0xFFFF0000});
        lote.anadir("123", QRect(60, 10, 60, 24), 4,
                    {.color = 0xFF0000FF, .lado = LoteTexto::Lado::Derecha});
        lote.anadir("negrita", QRect(120, 10, 80, 24), 4,
                    {.color = 0xFF000000, .negrita = true, .subrayado = true});
        lote.volcar(pintor);
        lote.volcar(pintor); // vacío: no repite nada
    }
    QImage sueltos(260, 50, QImage::Format_RGB32);
    sueltos.fill(Qt::white);
    {
        QPainter pintor(&sueltos);
        const auto uno = [&](const char* texto, const QRect& celda, LoteTexto::Estilo estilo) {
            LoteTexto lote(letra());
            lote.anadir(texto, celda, 4, estilo);
            lote.volcar(pintor);
        };
        uno("izquierda larguísima", QRect(0, 10, 60, 24), {.color = 0xFFFF0000});
        uno("123", QRect(60, 10, 60, 24), {.color = 0xFF0000FF, .lado = LoteTexto::Lado::Derecha});
        uno("negrita", QRect(120, 10, 80, 24),
            {.color = 0xFF000000, .negrita = true, .subrayado = true});
    }
    EXPECT_EQ(juntos, sueltos);
}

TEST(LoteTexto, NadaSaleDeSuCelda) {
    for (const auto lado :
         {LoteTexto::Lado::Izquierda, LoteTexto::Lado::Centro, LoteTexto::Lado::Derecha}) {
        for (const QRect& celda : {QRect(100, 10, 40, 24), QRect(100, 10, 40, 8),
                                   QRect(100, 10, 3, 24), QRect(100, 10, 0, 24)}) {
            const QImage imagen = pintar("WWWWWWWWjÁ",
                                         {.color = 0xFF000000,
                                          .negrita = true,
                                          .cursiva = true,
                                          .subrayado = true,
                                          .lado = lado},
                                         celda);
            QImage sinCelda = imagen;
            QPainter(&sinCelda).fillRect(celda, Qt::white);
            EXPECT_EQ(tinta(sinCelda), 0) << celda.width() << " × " << celda.height();
        }
    }
}

} // namespace
