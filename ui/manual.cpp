#include "ui/manual.h"

#include "ui/cuadros.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace interfaz {

QString rutaDelManual(const QString& carpetaDelPrograma) {
    for (const char* camino : {"../share/doc/marnel/manual/index.html", "../manual/index.html"}) {
        const QString ruta =
            QDir::cleanPath(carpetaDelPrograma + u'/' + QString::fromLatin1(camino));
        if (QFileInfo::exists(ruta)) {
            return ruta;
        }
    }
    return {};
}

void abrirManual(QWidget* ventana, const QString& ruta) {
    if (ruta.isEmpty()) {
        informar(ventana, QStringLiteral("El manual no está instalado."));
    } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(ruta))) {
        informar(ventana, QStringLiteral("No se pudo abrir el manual. Está en:\n%1").arg(ruta));
    }
}

} // namespace interfaz
