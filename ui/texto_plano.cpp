#include "ui/texto_plano.h"

#include <algorithm>

namespace interfaz {

namespace {

constexpr qsizetype kLargoMaximo = 200;

} // namespace

QString enUnaLinea(const QString& nombre) {
    QString linea = nombre.left(kLargoMaximo);
    std::replace_if(
        linea.begin(), linea.end(),
        [](QChar c) {
            return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                   c == QChar::ParagraphSeparator;
        },
        QChar(u' '));
    return nombre.size() > kLargoMaximo ? linea + u'…' : linea;
}

QString paraRotulo(const QString& nombre) {
    return enUnaLinea(nombre).replace(u'&', QStringLiteral("&&"));
}

QString paraAyuda(const QString& nombre) {
    return QStringLiteral("<span>") + enUnaLinea(nombre).toHtmlEscaped() +
           QStringLiteral("</span>");
}

QString paraTitulo(const QString& nombre) {
    return enUnaLinea(nombre).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

} // namespace interfaz
