#include "printing/documento_pdf.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <array>
#include <memory>

#include "printing/archivo.h"
#include "printing/paginas.h"

namespace impresion {

namespace {

constexpr int kPuntosPorPulgada = 96; ///< los de los tamaños de la hoja
constexpr double kMargen = 15;        ///< milímetros
constexpr int kAltoPie = 24;
constexpr double kPuntosPie = 8;

struct Pagina {
    Lamina* lamina;
    const nucleo::Hoja* hoja;
    nucleo::RangoCeldas zona;
};

/// Las páginas de varias hojas y las láminas con que se dibujan.
struct Tirada {
    std::vector<std::unique_ptr<Lamina>> laminas;
    std::vector<Pagina> paginas;
};

QPageSize::PageSizeId papelDe(Papel papel) {
    constexpr std::array kPapeles{QPageSize::A4, QPageSize::A3, QPageSize::A5, QPageSize::Letter};
    return kPapeles[static_cast<std::size_t>(papel)];
}

void anadirHoja(Tirada& tirada, const nucleo::Hoja& hoja, const Peticion& peticion,
                const QSize& util) {
    const nucleo::RangoCeldas zona = peticion.rango ? *peticion.rango : zonaConContenido(hoja);
    if (zona.fila2 < 0 || zona.col2 < 0) {
        return;
    }
    const double escala =
        peticion.ajustar ? escalaParaElAncho(hoja, zona, peticion.encabezados, util.width()) : 1.0;
    const int titulo = filasQueSeRepiten(hoja, zona, escala, util.height());
    tirada.laminas.push_back(std::make_unique<Lamina>(hoja, titulo, peticion.encabezados, escala));
    Lamina& lamina = *tirada.laminas.back();
    // Las filas que se repiten van con cada página y no en ninguna.
    const nucleo::RangoCeldas resto{std::max(zona.fila1, titulo), zona.col1, zona.fila2, zona.col2};
    for (const nucleo::RangoCeldas& pagina : repartir(lamina, hoja, resto, util)) {
        tirada.paginas.push_back({&lamina, &hoja, pagina});
    }
}

void dibujarPie(QPainter& pintor, const QSize& papel, const QString& hoja, std::size_t pagina,
                std::size_t paginas) {
    QFont letra(QStringLiteral("Segoe UI"));
    letra.setPointSizeF(kPuntosPie);
    pintor.setFont(letra);
    pintor.setPen(Qt::black);
    const QRect pie(0, papel.height() - kAltoPie, papel.width(), kAltoPie);
    const QString numero = QStringLiteral("Página %1 de %2").arg(pagina).arg(paginas);
    pintor.drawText(pie, Qt::AlignRight | Qt::AlignBottom, numero);
    const QFontMetrics metrica(letra);
    const int libre = papel.width() - metrica.horizontalAdvance(numero) - kAltoPie;
    pintor.drawText(pie, Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine,
                    metrica.elidedText(hoja, Qt::ElideRight, libre));
}

} // namespace

Resultado imprimirPdf(const nucleo::Libro& libro, const std::vector<int>& hojas,
                      const Peticion& peticion) {
    Resultado noSeEscribe{kNoSeEscribe, "no se puede escribir «" + peticion.salida + "»"};
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter documento(&pdf);
    documento.setResolution(kPuntosPorPulgada);
    documento.setPageLayout(
        QPageLayout(QPageSize(papelDe(peticion.papel)),
                    peticion.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait,
                    QMarginsF(kMargen, kMargen, kMargen, kMargen), QPageLayout::Millimeter));
    documento.setTitle(
        QFileInfo(QString::fromLocal8Bit(peticion.libro.c_str())).completeBaseName());
    documento.setCreator(QStringLiteral("Marnel " MARNEL_VERSION));
    const QSize papel(documento.width(), documento.height());
    const QSize util = papel - QSize(0, kAltoPie);

    Tirada tirada;
    for (const int hoja : hojas) {
        anadirHoja(tirada, *libro.hojas[static_cast<std::size_t>(hoja)], peticion, util);
        if (tirada.paginas.size() > kMaximoPaginas) {
            return {kMalUso, "salen más de " + std::to_string(kMaximoPaginas) +
                                 " páginas: elija un --rango"};
        }
    }
    if (tirada.paginas.empty()) {
        return {kMalUso, "no hay nada que imprimir"};
    }

    QPainter pintor;
    if (!pintor.begin(&documento)) {
        return noSeEscribe;
    }
    for (std::size_t i = 0; i < tirada.paginas.size(); ++i) {
        const Pagina& pagina = tirada.paginas[i];
        if (i > 0 && !documento.newPage()) {
            return noSeEscribe;
        }
        pagina.lamina->dibujar(pintor, pagina.zona, util);
        dibujarPie(pintor, papel, QString::fromStdString(pagina.hoja->nombre), i + 1,
                   tirada.paginas.size());
    }
    return pintor.end() && guardarBytes(pdf.data(), peticion.salida) ? Resultado{} : noSeEscribe;
}

} // namespace impresion
