#include "ui/igualador_simbolos.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

namespace velora {

namespace {

constexpr double kAnchoTinta = 20;
constexpr double kAltoTinta = 16;
constexpr double kGlifoAlto = 0.95;
constexpr double kMinimoSimbolo = 11;
constexpr double kMinimoSigla = 10;
constexpr double kMaximo = 40;

int redondear(double tamano) {
    return static_cast<int>(std::floor(tamano + 0.5));
}

int contarLetrasYCifras(const QString& texto) {
    return static_cast<int>(
        std::count_if(texto.begin(), texto.end(), [](QChar c) { return c.isLetterOrNumber(); }));
}

/// Píxeles que igualan la tinta a la de los demás botones; nada si el botón se deja como está.
std::optional<int> tamanoParejo(const QString& texto, double tamano, const QSizeF& tinta) {
    double factor = 1;
    double minimo = kMinimoSimbolo;
    if (contarLetrasYCifras(texto) < 2) {
        factor = std::min(kAnchoTinta / tinta.width(), kAltoTinta / tinta.height());
        if (factor < 1 && tinta.height() >= kGlifoAlto * tamano) {
            return std::nullopt;
        }
    } else {
        factor = std::min(kAnchoTinta / tinta.width(), 1.0);
        minimo = kMinimoSigla;
    }
    const double nuevo = std::max(std::floor(factor * tamano + 0.5), minimo);
    return static_cast<int>(std::min(nuevo, kMaximo));
}

void igualarBoton(QToolButton& boton) {
    static const QRegularExpression kTamano(QStringLiteral("font-size\\s*:\\s*[0-9.]+px\\s*;?"));
    const QString texto = boton.text().trimmed();
    if (texto.isEmpty() || !boton.icon().isNull()) {
        return;
    }
    boton.ensurePolished();
    const QFont fuente = boton.font();
    const double tamano =
        fuente.pixelSize() >= 1 ? fuente.pixelSize() : QFontInfo(fuente).pixelSize();
    const QSizeF tinta = QFontMetricsF(fuente).tightBoundingRect(texto).size();
    if (tinta.width() < 1 || tinta.height() < 1) {
        return;
    }
    const std::optional<int> nuevo = tamanoParejo(texto, tamano, tinta);
    if (!nuevo) {
        return;
    }
    if (qEnvironmentVariableIsSet("VELORA_SIMBOLOS")) {
        std::fprintf(stderr, "simbolo \"%s\" tinta %.0fx%.0f a %.0fpx -> %dpx\n",
                     texto.toUtf8().constData(), tinta.width(), tinta.height(), tamano, *nuevo);
    }
    if (*nuevo == redondear(tamano)) {
        return;
    }
    QString estilo = boton.styleSheet();
    estilo.remove(kTamano);
    boton.setStyleSheet(estilo + QStringLiteral(" font-size: %1px;").arg(*nuevo));
}

} // namespace

void igualarSimbolos(QWidget* raiz) {
    if (raiz == nullptr) {
        return;
    }
    for (const char* nombre : {"btn_toolbar", "btn_sigla"}) {
        for (QToolButton* boton : raiz->findChildren<QToolButton*>(QLatin1String(nombre))) {
            igualarBoton(*boton);
        }
    }
}

IgualadorSimbolos::IgualadorSimbolos(QObject* parent) : QObject(parent) {}

bool IgualadorSimbolos::eventFilter(QObject* receptor, QEvent* evento) {
    if (evento->type() == QEvent::Show && receptor->isWidgetType()) {
        auto* widget = static_cast<QWidget*>(receptor);
        if (widget->isWindow()) {
            igualarSimbolos(widget);
        }
    }
    return false;
}

} // namespace velora
