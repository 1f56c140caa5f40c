#include "tests/ui/eventos/defecto_ventana.h"

#include "model/autosave.h"
#include "model/limites.h"
#include "ui/texto_plano.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTabBar>
#include <QToolButton>

#include <filesystem>
#include <limits>

namespace pruebas {

namespace {

using interfaz::VentanaPrincipal;

std::string defectoDePestanas(VentanaPrincipal& ventana) {
    const nucleo::Libro& libro = ventana.libro();
    const auto* pestanas = ventana.findChild<QTabBar*>();
    if (pestanas->count() != static_cast<int>(libro.hojas.size())) {
        return "hay " + std::to_string(pestanas->count()) + " pestañas y " +
               std::to_string(libro.hojas.size()) + " hojas";
    }
    if (pestanas->currentIndex() != libro.hojaActiva) {
        return "la pestaña elegida no es la de la hoja activa";
    }
    for (int i = 0; i < pestanas->count(); ++i) {
        const auto& hoja = libro.hojas[static_cast<std::size_t>(i)];
        if (pestanas->tabText(i) != interfaz::paraRotulo(QString::fromStdString(hoja->nombre))) {
            return "la pestaña " + std::to_string(i) + " no se llama como su hoja";
        }
    }
    return {};
}

std::string defectoDeSeleccion(const editor::Seleccion& s) {
    const bool dentro = s.filaMin() >= 0 && s.colMin() >= 0 && s.filaMax() <= nucleo::kUltimaFila &&
                        s.colMax() <= nucleo::kUltimaColumna;
    return dentro ? "" : "la selección se sale de la cuadrícula";
}

std::string defectoDeBarra(VentanaPrincipal& ventana) {
    const interfaz::WidgetHoja* rejilla = ventana.widgetHoja();
    const QString enBarra = ventana.findChild<QLineEdit*>(QStringLiteral("entradaFormula"))->text();
    if (rejilla->editando()) {
        return enBarra == rejilla->editorCelda()->text()
                   ? ""
                   : "la barra de fórmulas no dice lo que se teclea en la celda";
    }
    const nucleo::Libro& libro = ventana.libro();
    const nucleo::Hoja& hoja = *libro.hojas[static_cast<std::size_t>(libro.hojaActiva)];
    int fila = ventana.editor().seleccion().activaFila;
    int col = ventana.editor().seleccion().activaCol;
    if (const nucleo::RangoFusion* fusion = hoja.fusionEn(fila, col)) {
        fila = fusion->fila1;
        col = fusion->col1;
    }
    const nucleo::Celda* celda = hoja.celda(fila, col);
    QLineEdit comoSeVe;
    comoSeVe.setMaxLength(std::numeric_limits<int>::max());
    comoSeVe.setText(celda == nullptr ? QString() : QString::fromStdString(celda->entrada));
    return enBarra == comoSeVe.text() ? "" : "la barra de fórmulas no dice lo de la celda activa";
}

std::string defectoDeBotones(VentanaPrincipal& ventana) {
    for (const auto* boton : ventana.findChildren<QToolButton*>(QStringLiteral("btn_toolbar"))) {
        if (boton->toolTip() == QStringLiteral("Deshacer") &&
            boton->isEnabled() != (ventana.editor().pasosDeshacer() > 0)) {
            return "el botón de deshacer no está como el historial";
        }
        if (boton->toolTip() == QStringLiteral("Rehacer") &&
            boton->isEnabled() != (ventana.editor().pasosRehacer() > 0)) {
            return "el botón de rehacer no está como el historial";
        }
    }
    return {};
}

} // namespace

std::string defectoDeLaVentana(VentanaPrincipal& ventana) {
    const nucleo::Libro& libro = ventana.libro();
    if (ventana.windowTitle().contains(QStringLiteral("* — ")) != libro.modificado) {
        return "el título no dice si hay cambios: " + ventana.windowTitle().toStdString();
    }
    // Tras un «Guardar como» que falló, el trabajo sigue a salvo en el archivo de antes.
    const bool hayDocumento = libro.ruta.empty() || std::filesystem::is_regular_file(libro.ruta);
    if (hayDocumento && ventana.rutaAutosave() != nucleo::Autosave::generarRuta(libro.ruta)) {
        return "la ruta de recuperación no es la del documento";
    }
    const int zoom = ventana.zoomPorcentaje();
    if (ventana.findChild<QSlider*>(QStringLiteral("deslizadorZoom"))->value() != zoom ||
        ventana.findChild<QLabel*>(QStringLiteral("etiquetaZoom"))->text() !=
            QStringLiteral("%1%").arg(zoom)) {
        return "el zoom que se dice no es el que hay";
    }
    for (const auto& mirar : {defectoDePestanas, defectoDeBarra, defectoDeBotones}) {
        if (std::string defecto = mirar(ventana); !defecto.empty()) {
            return defecto;
        }
    }
    return defectoDeSeleccion(ventana.editor().seleccion());
}

} // namespace pruebas
