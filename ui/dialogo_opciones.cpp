#include "ui/dialogo_opciones.h"

#include "ui/widget_hoja.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

namespace interfaz {

namespace {

/// Una ruta que se lee y se copia, pero no se cambia.
QLineEdit* campoDeRuta(const QString& nombre, const QString& ruta) {
    auto* campo = new QLineEdit(ruta);
    campo->setObjectName(nombre);
    campo->setReadOnly(true);
    campo->setCursorPosition(0);
    campo->setMinimumWidth(360);
    return campo;
}

} // namespace

DialogoOpciones::DialogoOpciones(const Datos& datos, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Opciones"));
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(20, 20, 20, 16);
    columna->setSpacing(18);

    auto* zoom = new QSpinBox;
    zoom->setObjectName(QStringLiteral("opcionZoom"));
    zoom->setRange(WidgetHoja::kZoomMinimo, WidgetHoja::kZoomMaximo);
    zoom->setSingleStep(5);
    zoom->setSuffix(QStringLiteral(" %"));
    zoom->setValue(datos.zoom);
    auto* oscuro = new QCheckBox(QStringLiteral("Modo &oscuro"));
    oscuro->setObjectName(QStringLiteral("opcionModoOscuro"));
    oscuro->setChecked(datos.oscuro);
    auto* intervalo =
        new QLabel(QStringLiteral("Cada %1 segundos mientras haya cambios sin guardar")
                       .arg(datos.intervaloRecuperacion));
    intervalo->setObjectName(QStringLiteral("opcionIntervalo"));

    auto* formulario = new QFormLayout;
    formulario->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    formulario->setHorizontalSpacing(16);
    formulario->setVerticalSpacing(10);
    formulario->addRow(QStringLiteral("&Zoom:"), zoom);
    formulario->addRow(QStringLiteral("Tema:"), oscuro);
    formulario->addRow(QStringLiteral("&Carpeta de libros:"),
                       campoDeRuta(QStringLiteral("opcionCarpeta"), datos.carpetaBiblioteca));
    formulario->addRow(
        QStringLiteral("Archivo de &recuperación:"),
        campoDeRuta(QStringLiteral("opcionRecuperacion"), datos.archivoRecuperacion));
    formulario->addRow(QStringLiteral("Se escribe:"), intervalo);
    columna->addLayout(formulario);

    auto* botones = new QDialogButtonBox(QDialogButtonBox::Close);
    columna->addWidget(botones);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(zoom, &QSpinBox::valueChanged, this, &DialogoOpciones::zoomElegido);
    connect(oscuro, &QCheckBox::toggled, this, &DialogoOpciones::temaElegido);
}

} // namespace interfaz
