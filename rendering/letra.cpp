#include "rendering/letra.h"

#include <QFontMetricsF>

namespace renderizador {

Letra::Letra(const QFont& fuente)
    : fuente_(fuente), cruda_(QRawFont::fromFont(fuente)),
      tabla_(kFinAlfabetos + (kFinSignos - kInicioSignos)) {
    const QFontMetricsF metrica(fuente);
    ascenso_ = metrica.ascent();
    descenso_ = metrica.descent();
}

bool Letra::esSimple(char32_t caracter) {
    if (caracter < kFinAlfabetos) {
        const bool combinante =
            (caracter >= 0x300 && caracter < 0x370) || (caracter >= 0x483 && caracter < 0x48A);
        const bool control = caracter < 0x20 || (caracter >= 0x7F && caracter < 0xA0);
        constexpr char32_t kGuionOpcional = 0xAD;
        return !combinante && !control && caracter != kGuionOpcional;
    }
    const bool formato = caracter >= 0x2028 && caracter < 0x2030;
    const bool invisible = caracter >= 0x2060 && caracter < 0x2070;
    return caracter >= kInicioSignos && caracter < kFinSignos && !formato && !invisible;
}

bool Letra::glifo(char32_t caracter, Glifo& salida) const {
    if (!esSimple(caracter)) {
        return false;
    }
    Entrada& entrada =
        tabla_[caracter < kFinAlfabetos ? caracter : kFinAlfabetos + caracter - kInicioSignos];
    if (!entrada.buscado) {
        entrada.buscado = true;
        const QChar unidad(static_cast<char16_t>(caracter));
        quint32 indice = 0;
        int cuantos = 1;
        QPointF avance;
        if (cruda_.glyphIndexesForChars(&unidad, 1, &indice, &cuantos) && cuantos == 1 &&
            indice != 0 && cruda_.advancesForGlyphIndexes(&indice, &avance, 1)) {
            entrada.glifo = {indice, avance.x()};
        }
    }
    salida = entrada.glifo;
    return salida.indice != 0;
}

} // namespace renderizador
