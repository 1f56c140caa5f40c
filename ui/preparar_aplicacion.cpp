#include "ui/preparar_aplicacion.h"

#include "rendering/sustitutos.h"
#include "ui/igualador_simbolos.h"
#include "ui/traducciones.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QStyleFactory>

// Los recursos de una biblioteca estática solo se registran si alguien los nombra, y la macro no
// puede usarse dentro de un espacio de nombres.
static void registrarRecursosCompilados() {
    Q_INIT_RESOURCE(marnel);
}

namespace {

QIcon iconoAplicacion() {
    QIcon icono(QStringLiteral(":/icono.png"));
    for (const int lado : {16, 32, 48, 64}) {
        icono.addFile(QStringLiteral(":/icono-%1.png").arg(lado));
    }
    return icono;
}

} // namespace

namespace interfaz {

void registrarRecursos() {
    registrarRecursosCompilados();
}

void prepararAplicacion(QApplication& aplicacion) {
    aplicacion.installEventFilter(new velora::IgualadorSimbolos(&aplicacion));
    QCoreApplication::setApplicationName(QStringLiteral("Marnel"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    QCoreApplication::setOrganizationName(QStringLiteral("Velora"));
    // El escritorio une la ventana con su icono y su grupo por este nombre.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quenda.Marnel"));
    registrarRecursos();
    QApplication::setWindowIcon(iconoAplicacion());
    // Las hojas de estilo cuentan con este estilo, cualquiera que sea el del escritorio.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    renderizador::sustituirFamilias();
    QApplication::setFont(QFont(QStringLiteral("Segoe UI"), 10));
    cargarTraduccionesQt(aplicacion);
}

} // namespace interfaz
