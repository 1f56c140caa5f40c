#include "ui/traducciones.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <memory>

namespace interfaz {

void cargarTraduccionesQt(QApplication& aplicacion) {
    const QString programa = QCoreApplication::applicationDirPath();
    const QStringList carpetas = {
        programa + QStringLiteral("/shared/translations"),
        programa + QStringLiteral("/../shared/translations"),
        QLibraryInfo::path(QLibraryInfo::TranslationsPath),
    };
    auto traductor = std::make_unique<QTranslator>(&aplicacion);
    const QLocale espanol(QStringLiteral("es"));
    const bool cargado = std::any_of(carpetas.begin(), carpetas.end(), [&](const QString& carpeta) {
        return traductor->load(espanol, QStringLiteral("qtbase"), QStringLiteral("_"), carpeta);
    });
    if (cargado) {
        QCoreApplication::installTranslator(traductor.release());
    }
}

} // namespace interfaz
