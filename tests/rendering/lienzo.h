#pragma once

#include "model/hoja.h"
#include "rendering/renderizador.h"
#include "rendering/tema.h"

#include <QImage>
#include <QPainter>

#include <string>

/// Una hoja, su renderizador y la imagen en que se pinta, para mirar píxeles.
class Lienzo {
  public:
    explicit Lienzo(int ancho = 600, int alto = 300)
        : vista(ancho, alto), imagen(ancho, alto, QImage::Format_RGB32) {
        r.hoja = &hoja;
        r.tema = &tema;
    }

    void pintar() {
        pintarCon([this](QPainter& p) { r.dibujar(p, vista, seleccion); });
    }
    /// Pinta con otra operación sobre un fondo que ningún tema tiene.
    template <typename Operacion> void pintarCon(Operacion operacion) {
        imagen.fill(kIntacto);
        QPainter pintor(&imagen);
        operacion(pintor);
    }

    QRgb pixel(int x, int y) const { return imagen.pixel(x, y) | 0xFF000000; }
    QRgb pixel(const QPoint& punto) const { return pixel(punto.x(), punto.y()); }
    /// Verdadero si hay algún píxel de ese color exacto en el rectángulo.
    bool hay(QRgb color, const QRect& rect) const { return cuantos(color, rect) > 0; }
    int cuantos(QRgb color, const QRect& rect) const {
        int total = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                total += pixel(x, y) == color ? 1 : 0;
            }
        }
        return total;
    }
    bool todo(QRgb color, const QRect& rect) const {
        return cuantos(color, rect) == rect.width() * rect.height();
    }
    /// Columnas, primera y última, con algún píxel que no es de ese color.
    struct Alcance {
        int primera = -1;
        int ultima = -1;
        double centro() const { return (primera + ultima) / 2.0; }
    };
    Alcance distintos(QRgb fondo, const QRect& rect) const {
        Alcance alcance;
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                if (pixel(x, y) != fondo) {
                    alcance.primera = alcance.primera < 0 ? x : alcance.primera;
                    alcance.ultima = x;
                    break;
                }
            }
        }
        return alcance;
    }

    nucleo::Celda& texto(int fila, int col, const std::string& entrada) {
        nucleo::Celda& celda = hoja.celdaMut(fila, col);
        celda.tipo = nucleo::TipoCelda::Texto;
        celda.entrada = entrada;
        return celda;
    }
    nucleo::Celda& numero(int fila, int col, double valor) {
        nucleo::Celda& celda = hoja.celdaMut(fila, col);
        celda.tipo = nucleo::TipoCelda::Numero;
        celda.entrada = "1";
        celda.numero = valor;
        return celda;
    }
    nucleo::Celda& formula(int fila, int col, const nucleo::Valor& valor) {
        nucleo::Celda& celda = hoja.celdaMut(fila, col);
        celda.tipo = nucleo::TipoCelda::Formula;
        celda.entrada = "=1";
        celda.valor = valor;
        return celda;
    }
    nucleo::Celda& relleno(int fila, int col, QRgb color) {
        nucleo::Celda& celda = hoja.celdaMut(fila, col);
        celda.formato.colorFondo = color;
        return celda;
    }

    static constexpr QRgb kIntacto = 0xFFFF00FF;

    QSize vista;
    QImage imagen;
    nucleo::Hoja hoja;
    renderizador::Tema tema = renderizador::temaClaro();
    renderizador::Renderizador r;
    /// Lejos de lo que se mira, si la prueba no dice otra cosa.
    renderizador::SeleccionVista seleccion{60000, 600, 60000, 600, 60000, 600};
};
