#pragma once

#include "rendering/letra.h"

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QRgb>
#include <QString>

#include <array>
#include <compare>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

class QPainter;

namespace renderizador {

/// Reúne los textos de muchas celdas y los pinta de una vez por cada letra y color, que es mucho
/// más barato que texto a texto. Cada texto va en una línea y se corta en el borde de su celda.
class LoteTexto {
  public:
    enum class Lado { Izquierda, Centro, Derecha };

    struct Estilo {
        QRgb color = 0;
        bool negrita = false;
        bool cursiva = false;
        bool subrayado = false;
        Lado lado = Lado::Izquierda;
    };

    /// `base` da familia y tamaño.
    explicit LoteTexto(const QFont& base) : base_(base) {}

    /// `margen`: píxeles que el texto deja a cada lado de la celda.
    void anadir(std::string_view utf8, const QRect& celda, int margen, const Estilo& estilo);
    /// Pinta lo reunido y lo olvida.
    void volcar(QPainter& pintor);

  private:
    /// Textos que se pintan juntos: misma letra, mismo color y mismo recorte (nulo si todos caben).
    struct Clave {
        int izquierda = 0;
        int derecha = 0;
        int arriba = 0;
        int abajo = 0;
        QRgb color = 0;
        unsigned letra = 0;

        auto operator<=>(const Clave&) const = default;
    };
    struct Grupo {
        std::vector<quint32> glifos;
        std::vector<QPointF> posiciones;
        std::vector<QRectF> subrayados;
    };
    /// Texto que necesita composición: se pinta suelto.
    struct Compuesto {
        QString texto;
        QRect celda;
        int margen;
        Estilo estilo;
    };

    const Letra& letra(unsigned cual);
    bool trazar(std::string_view utf8, const Letra& letra);
    Grupo& grupo(const Clave& clave);
    void pintarCompuestos(QPainter& pintor);

    QFont base_;
    std::array<std::unique_ptr<Letra>, 4> letras_; ///< por negrita y cursiva
    std::map<Clave, Grupo> grupos_;
    std::vector<Compuesto> compuestos_;
    Clave ultimaClave_;
    Grupo* ultimoGrupo_ = nullptr;
    // El texto que se está midiendo
    std::vector<Letra::Glifo> trazo_;
    double anchoTrazo_ = 0;
};

} // namespace renderizador
