#include "rendering/lote_celdas.h"

#include "model/numeros.h"
#include "rendering/ejes.h"

#include <QPainter>

#include <algorithm>
#include <string>

namespace renderizador {

namespace {

constexpr int kMargenTexto = 4;      ///< píxeles sin zoom
constexpr int kMargenMaximo = 10000; ///< más no cambia nada: el texto ya no se ve

LoteTexto::Lado lado(nucleo::AlineacionH alineacion, nucleo::TipoValor tipo) {
    switch (alineacion) {
    case nucleo::AlineacionH::Izquierda:
        return LoteTexto::Lado::Izquierda;
    case nucleo::AlineacionH::Centro:
        return LoteTexto::Lado::Centro;
    case nucleo::AlineacionH::Derecha:
        return LoteTexto::Lado::Derecha;
    case nucleo::AlineacionH::General:
        break;
    }
    switch (tipo) {
    case nucleo::TipoValor::Numero:
        return LoteTexto::Lado::Derecha;
    case nucleo::TipoValor::Texto:
        return LoteTexto::Lado::Izquierda;
    default:
        return LoteTexto::Lado::Centro;
    }
}

} // namespace

LoteCeldas::LoteCeldas(const Tema& tema, double zoom, const QFont& base, double grosor)
    : tema_(tema), grosor_(grosor), margen_(std::min(escalar(kMargenTexto, zoom), kMargenMaximo)),
      textos_(base) {}

void LoteCeldas::anadir(const nucleo::Celda* celda, const QRect& rect) {
    if (celda == nullptr) {
        return;
    }
    if (celda->formato.colorFondo != 0) {
        rellenos_.push_back({rect, celda->formato.colorFondo});
    }
    if (celda->formato.estiloExtra) {
        contornos_.push_back(rect.adjusted(0, 0, -1, -1));
    }
    anadirTexto(*celda, rect);
}

void LoteCeldas::anadirTexto(const nucleo::Celda& celda, const QRect& rect) {
    nucleo::TipoValor tipo = nucleo::TipoValor::Vacio;
    std::string calculado;
    std::string_view texto;
    switch (celda.tipo) {
    case nucleo::TipoCelda::Texto:
        tipo = nucleo::TipoValor::Texto;
        texto = celda.entrada;
        break;
    case nucleo::TipoCelda::Numero:
        tipo = nucleo::TipoValor::Numero;
        calculado = nucleo::textoVisible(nucleo::Valor::deNumero(celda.numero), celda.formato);
        texto = calculado;
        break;
    case nucleo::TipoCelda::Formula:
        tipo = celda.valor.tipo;
        calculado = nucleo::textoVisible(celda.valor, celda.formato);
        texto = calculado;
        break;
    default:
        return;
    }
    if (texto.empty()) {
        return;
    }
    LoteTexto::Estilo estilo;
    estilo.negrita = celda.formato.negrita;
    estilo.cursiva = celda.formato.cursiva;
    estilo.subrayado = celda.formato.subrayado;
    estilo.lado = lado(celda.formato.alineacion, tipo);
    if (tipo == nucleo::TipoValor::Error) {
        estilo.color = tema_.textoError.rgba();
    } else {
        estilo.color =
            celda.formato.colorTexto != 0 ? celda.formato.colorTexto : tema_.texto.rgba();
    }
    textos_.anadir(texto, rect, margen_, estilo);
}

void LoteCeldas::anadirLineaDerecha(const QRect& rect) {
    lineas_.emplace_back(rect.right() + 1 - grosor_, rect.top(), grosor_, rect.height());
}

void LoteCeldas::anadirLineaInferior(const QRect& rect) {
    lineas_.emplace_back(rect.left(), rect.bottom() + 1 - grosor_, rect.width(), grosor_);
}

void LoteCeldas::volcar(QPainter& pintor) {
    for (const Relleno& relleno : rellenos_) {
        pintor.fillRect(relleno.rect, QColor::fromRgba(relleno.color));
    }
    for (const QRectF& linea : lineas_) {
        pintor.fillRect(linea, tema_.lineas);
    }
    if (!contornos_.empty()) {
        pintor.setBrush(Qt::NoBrush);
        pintor.setPen(QPen(tema_.texto, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        for (const QRect& contorno : contornos_) {
            pintor.drawRect(contorno);
        }
    }
    rellenos_.clear();
    lineas_.clear();
    contornos_.clear();
    textos_.volcar(pintor);
}

} // namespace renderizador
