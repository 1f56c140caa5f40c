#include "ui/paleta.h"

namespace interfaz {

namespace {

struct Colores {
    const char* ventana;
    const char* texto;
    const char* campo;
    const char* campoAlterno;
    const char* textoCampo;
    const char* boton;
    const char* acento;
    const char* sobreAcento;
    const char* apagado;
    const char* enlace;
};

QPalette crear(const Colores& c) {
    QPalette paleta(QColor(c.boton), QColor(c.ventana));
    const auto poner = [&paleta](QPalette::ColorRole papel, const char* color) {
        paleta.setColor(papel, QColor(color));
    };
    poner(QPalette::Window, c.ventana);
    poner(QPalette::WindowText, c.texto);
    poner(QPalette::Base, c.campo);
    poner(QPalette::AlternateBase, c.campoAlterno);
    poner(QPalette::Text, c.textoCampo);
    poner(QPalette::Button, c.boton);
    poner(QPalette::ButtonText, c.texto);
    poner(QPalette::BrightText, c.sobreAcento);
    poner(QPalette::Highlight, c.acento);
    poner(QPalette::HighlightedText, c.sobreAcento);
    poner(QPalette::Link, c.enlace);
    poner(QPalette::LinkVisited, c.enlace);
    poner(QPalette::ToolTipBase, c.boton);
    poner(QPalette::ToolTipText, c.texto);
    poner(QPalette::PlaceholderText, c.apagado);
    for (const QPalette::ColorRole papel :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        paleta.setColor(QPalette::Disabled, papel, QColor(c.apagado));
    }
    return paleta;
}

} // namespace

QPalette paletaClara() {
    return crear({"#F8E2D0", "#3B2213", "#FFFFFF", "#FFF8F1", "#2C2C2C", "#FFF8F1", "#C2521A",
                  "#FFFFFF", "#7A5F4D", "#8A3B12"});
}

QPalette paletaOscura() {
    return crear({"#180C05", "#F3DCC8", "#120803", "#1E1009", "#F8E8DA", "#2E1A10", "#B84C14",
                  "#FFFFFF", "#A98B76", "#F0A878"});
}

} // namespace interfaz
