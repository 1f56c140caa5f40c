#include "printing/imagen.h"

#include <QBuffer>
#include <QPainter>

#include <cstdint>

#include "printing/archivo.h"
#include "printing/lamina.h"
#include "printing/paginas.h"

namespace impresion {

namespace {

constexpr std::int64_t kMaximoPixeles = 32'000'000;
constexpr int kLadoMaximo = 32'000;

} // namespace

bool guardarPng(const QImage& imagen, const std::string& ruta) {
    QBuffer png;
    return png.open(QIODevice::WriteOnly) && imagen.save(&png, "PNG") &&
           guardarBytes(png.data(), ruta);
}

Resultado dibujarImagen(const nucleo::Hoja& hoja, const Peticion& peticion) {
    const nucleo::RangoCeldas zona = peticion.rango ? *peticion.rango : zonaConContenido(hoja);
    if (zona.fila2 < 0 || zona.col2 < 0) {
        return {kMalUso, "no hay nada que imprimir"};
    }
    Lamina lamina(hoja, 0, peticion.encabezados, 1.0);
    const QSize celdas = lamina.medir(zona);
    const std::int64_t ancho = std::int64_t{celdas.width()} + lamina.orla().width();
    const std::int64_t alto = std::int64_t{celdas.height()} + lamina.orla().height();
    if (ancho > kLadoMaximo || alto > kLadoMaximo || ancho * alto > kMaximoPixeles) {
        return {kMalUso, "la imagen mediría " + std::to_string(ancho) + " × " +
                             std::to_string(alto) + " píxeles: elija un --rango menor"};
    }
    if (ancho == 0 || alto == 0) {
        return {kMalUso, "no hay nada que imprimir"};
    }
    const QSize tamano(static_cast<int>(ancho), static_cast<int>(alto));
    QImage imagen(tamano, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    lamina.dibujar(pintor, zona, tamano);
    pintor.end();
    return guardarPng(imagen, peticion.salida)
               ? Resultado{}
               : Resultado{kNoSeEscribe, "no se puede escribir «" + peticion.salida + "»"};
}

} // namespace impresion
