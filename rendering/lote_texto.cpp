#include "rendering/lote_texto.h"

#include <QGlyphRun>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace renderizador {

namespace {

constexpr unsigned kNegrita = 1;
constexpr unsigned kCursiva = 2;

/// Más bytes no caben en la celda más ancha: medir un texto de un megabyte no cambia lo que se ve.
constexpr std::size_t kBytesPintables = 8192;

/// Más allá de cualquier vista.
constexpr int kSinCota = 1 << 24;

/// El trozo del texto que puede verse según el lado al que se pega.
std::string_view trozoPintable(std::string_view texto, LoteTexto::Lado lado) {
    if (texto.size() <= kBytesPintables) {
        return texto;
    }
    const auto esContinuacion = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    const std::size_t sobra = texto.size() - kBytesPintables;
    std::size_t inicio = 0;
    if (lado == LoteTexto::Lado::Derecha) {
        inicio = sobra;
    } else if (lado == LoteTexto::Lado::Centro) {
        inicio = sobra / 2;
    }
    texto = texto.substr(inicio, kBytesPintables);
    while (inicio > 0 && !texto.empty() && esContinuacion(texto.front())) {
        texto.remove_prefix(1);
    }
    return texto;
}

/// Lee un carácter de hasta tres bytes; 0 si no lo es, que manda el texto a componer.
char32_t leerCaracter(std::string_view texto, std::size_t& i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(texto[k]); };
    const auto continuacion = [&](std::size_t k) {
        return k < texto.size() && (byte(k) & 0xC0U) == 0x80U;
    };
    const char32_t primero = byte(i);
    if (primero < 0x80) {
        i += 1;
        return primero;
    }
    if (primero >= 0xC2 && primero < 0xE0 && continuacion(i + 1)) {
        const char32_t caracter = ((primero & 0x1FU) << 6) | (byte(i + 1) & 0x3FU);
        i += 2;
        return caracter;
    }
    if (primero >= 0xE1 && primero < 0xF0 && continuacion(i + 1) && continuacion(i + 2)) {
        const char32_t caracter =
            ((primero & 0x0FU) << 12) | ((byte(i + 1) & 0x3FU) << 6) | (byte(i + 2) & 0x3FU);
        i += 3;
        return caracter;
    }
    return 0;
}

double origenTexto(const QRect& celda, int margen, double ancho, LoteTexto::Lado lado) {
    const double libre = celda.width() - 2.0 * margen - ancho;
    double desvio = 0;
    if (lado == LoteTexto::Lado::Centro) {
        desvio = libre / 2;
    } else if (lado == LoteTexto::Lado::Derecha) {
        desvio = libre;
    }
    return celda.left() + margen + desvio;
}

Qt::Alignment alineacionQt(LoteTexto::Lado lado) {
    switch (lado) {
    case LoteTexto::Lado::Centro:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case LoteTexto::Lado::Derecha:
        return Qt::AlignRight | Qt::AlignVCenter;
    case LoteTexto::Lado::Izquierda:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

const Letra& LoteTexto::letra(unsigned cual) {
    std::unique_ptr<Letra>& preparada = letras_[cual];
    if (!preparada) {
        QFont fuente = base_;
        fuente.setWeight((cual & kNegrita) != 0 ? QFont::Bold : QFont::Normal);
        fuente.setItalic((cual & kCursiva) != 0);
        preparada = std::make_unique<Letra>(fuente);
    }
    return *preparada;
}

bool LoteTexto::trazar(std::string_view utf8, const Letra& letra) {
    trazo_.clear();
    anchoTrazo_ = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        Letra::Glifo glifo;
        if (!letra.glifo(leerCaracter(utf8, i), glifo)) {
            return false;
        }
        trazo_.push_back(glifo);
        anchoTrazo_ += glifo.avance;
    }
    return true;
}

LoteTexto::Grupo& LoteTexto::grupo(const Clave& clave) {
    if (ultimoGrupo_ == nullptr || clave != ultimaClave_) {
        ultimoGrupo_ = &grupos_[clave];
        ultimaClave_ = clave;
    }
    return *ultimoGrupo_;
}

void LoteTexto::anadir(std::string_view utf8, const QRect& celda, int margen,
                       const Estilo& estilo) {
    if (celda.isEmpty()) {
        return;
    }
    const std::string_view texto = trozoPintable(utf8, estilo.lado);
    const unsigned cual = (estilo.negrita ? kNegrita : 0U) | (estilo.cursiva ? kCursiva : 0U);
    const Letra& tipo = letra(cual);
    if (!trazar(texto, tipo)) {
        compuestos_.push_back(
            {QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size())), celda, margen,
             estilo});
        return;
    }
    Clave clave;
    clave.color = estilo.color;
    clave.letra = cual;
    const bool cabeAncho = anchoTrazo_ <= celda.width() - 2.0 * margen;
    const bool cabeAlto = tipo.alto() <= celda.height();
    if (!cabeAncho || !cabeAlto) {
        clave.izquierda = celda.left();
        clave.derecha = celda.right() + 1;
        // Las celdas de una columna comparten recorte si el texto cabe a lo alto.
        clave.arriba = cabeAlto ? -kSinCota : celda.top();
        clave.abajo = cabeAlto ? kSinCota : celda.bottom() + 1;
    }
    Grupo& destino = grupo(clave);
    const double inicio = origenTexto(celda, margen, anchoTrazo_, estilo.lado);
    const double base = celda.top() + (celda.height() - tipo.alto()) / 2 + tipo.ascenso();
    // Un dibujo puede salirse de su avance, pero nunca más que el alto de la letra.
    const double holgura = tipo.alto();
    double x = inicio;
    for (const Letra::Glifo& glifo : trazo_) {
        if (x + glifo.avance + holgura > celda.left() && x - holgura <= celda.right()) {
            destino.glifos.push_back(glifo.indice);
            destino.posiciones.emplace_back(x, base);
        }
        x += glifo.avance;
    }
    if (estilo.subrayado) {
        const double grosor = std::max(1.0, std::round(tipo.cruda().lineThickness()));
        const QRectF linea(inicio, std::round(base + tipo.cruda().underlinePosition()), anchoTrazo_,
                           grosor);
        destino.subrayados.push_back(linea.intersected(QRectF(celda)));
    }
}

void LoteTexto::volcar(QPainter& pintor) {
    for (const auto& [clave, grupo] : grupos_) {
        const bool recortado = clave.derecha > clave.izquierda;
        if (recortado) {
            pintor.save();
            QRect recorte;
            recorte.setCoords(clave.izquierda, clave.arriba, clave.derecha - 1, clave.abajo - 1);
            pintor.setClipRect(recorte, Qt::IntersectClip);
        }
        const QColor color = QColor::fromRgba(clave.color);
        pintor.setPen(color);
        QGlyphRun tramo;
        tramo.setRawFont(letra(clave.letra).cruda());
        tramo.setRawData(grupo.glifos.data(), grupo.posiciones.data(),
                         static_cast<int>(grupo.glifos.size()));
        pintor.drawGlyphRun(QPointF(), tramo);
        for (const QRectF& linea : grupo.subrayados) {
            pintor.fillRect(linea, color);
        }
        if (recortado) {
            pintor.restore();
        }
    }
    grupos_.clear();
    ultimoGrupo_ = nullptr;
    pintarCompuestos(pintor);
}

void LoteTexto::pintarCompuestos(QPainter& pintor) {
    for (const auto& [texto, celda, margen, estilo] : compuestos_) {
        QFont fuente =
            letra((estilo.negrita ? kNegrita : 0U) | (estilo.cursiva ? kCursiva : 0U)).fuente();
        fuente.setUnderline(estilo.subrayado);
        pintor.save();
        pintor.setClipRect(celda, Qt::IntersectClip);
        pintor.setFont(fuente);
        pintor.setPen(QColor::fromRgba(estilo.color));
        pintor.drawText(celda.adjusted(margen, 0, -margen, 0),
                        static_cast<int>(alineacionQt(estilo.lado)) | Qt::TextSingleLine, texto);
        pintor.restore();
    }
    compuestos_.clear();
}

} // namespace renderizador
