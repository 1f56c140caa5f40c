#pragma once

#include <QFont>
#include <QRawFont>

#include <cstdint>
#include <vector>

namespace renderizador {

/// Un tipo de letra preparado para medir y pintar muchos textos cortos: recuerda el dibujo y el
/// avance de cada carácter que no necesita componerse con sus vecinos.
class Letra {
  public:
    struct Glifo {
        std::uint32_t indice = 0; ///< 0 si la letra no lo tiene
        double avance = 0;        ///< píxeles
    };

    explicit Letra(const QFont& fuente);

    const QFont& fuente() const { return fuente_; }
    const QRawFont& cruda() const { return cruda_; }
    double ascenso() const { return ascenso_; }
    double alto() const { return ascenso_ + descenso_; }

    /// Falso si el carácter pide composición (combinantes, escritura compleja, otra fuente).
    bool glifo(char32_t caracter, Glifo& salida) const;

  private:
    /// Alfabetos latino, griego y cirílico, puntuación y monedas, todos de izquierda a derecha.
    static constexpr char32_t kFinAlfabetos = 0x530;
    static constexpr char32_t kInicioSignos = 0x2010;
    static constexpr char32_t kFinSignos = 0x20C0;

    struct Entrada {
        Glifo glifo;
        bool buscado = false;
    };

    static bool esSimple(char32_t caracter);

    QFont fuente_;
    QRawFont cruda_;
    double ascenso_;
    double descenso_;
    mutable std::vector<Entrada> tabla_;
};

} // namespace renderizador
