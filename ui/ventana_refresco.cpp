// Lo que rodea a la cuadrícula, al día con el libro y la selección.

#include "model/direcciones.h"
#include "model/numeros.h"
#include "rendering/tema.h"
#include "ui/paleta.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSlider>
#include <QStyle>
#include <QToolButton>

#include <optional>

namespace interfaz {

namespace {

QString leerEstilo(bool oscuro) {
    QFile archivo(oscuro ? QStringLiteral(":/estilos/oscuro.qss")
                         : QStringLiteral(":/estilos/claro.qss"));
    return archivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(archivo.readAll()) : QString();
}

void marcarSinAvisar(QToolButton* boton, bool marcado) {
    const QSignalBlocker bloqueo(boton);
    boton->setChecked(marcado);
}

/// La celda que guarda el contenido de una dirección: en una fusión, su primera celda.
const nucleo::Celda* celdaDeContenido(const nucleo::Hoja& hoja, int fila, int col) {
    if (const nucleo::RangoFusion* fusion = hoja.fusionEn(fila, col)) {
        return hoja.celda(fusion->fila1, fusion->col1);
    }
    return hoja.celda(fila, col);
}

struct Referencia {
    int fila;
    int col;
};

std::optional<Referencia> leerReferencia(const QString& texto) {
    qsizetype i = 0;
    while (i < texto.size() && texto[i].isLetter()) {
        ++i;
    }
    const int col = nucleo::columnaDesdeNombre(texto.left(i).toStdString());
    if (col < 0 || i == texto.size()) {
        return std::nullopt;
    }
    int fila = 0;
    for (; i < texto.size(); ++i) {
        if (!texto[i].isDigit() || fila > nucleo::kFilas) {
            return std::nullopt;
        }
        fila = fila * 10 + texto[i].digitValue();
    }
    if (fila < 1 || fila > nucleo::kFilas) {
        return std::nullopt;
    }
    return Referencia{fila - 1, col};
}

QString numeroDelResumen(double valor) {
    return QString::fromStdString(nucleo::formatearNumero(valor, nucleo::Formato{}));
}

} // namespace

const nucleo::Hoja* VentanaPrincipal::hojaActiva() const {
    const int indice = libro_.hojaActiva;
    return indice >= 0 && indice < static_cast<int>(libro_.hojas.size())
               ? libro_.hojas[static_cast<std::size_t>(indice)].get()
               : nullptr;
}

nucleo::Hoja* VentanaPrincipal::hojaActiva() {
    return const_cast<nucleo::Hoja*>(std::as_const(*this).hojaActiva());
}

int VentanaPrincipal::zoomPorcentaje() const {
    return widgetHoja_->zoomPorcentaje();
}

void VentanaPrincipal::confirmarPendiente() {
    widgetHoja_->confirmarEdicion(0, 0);
}

void VentanaPrincipal::aceptarFormula(int dFila, int dCol) {
    const QString texto = entradaFormula_->text();
    // Lo que no se ha tocado conserva sus octetos, aunque no sean UTF-8 válido.
    if (texto != contenidoActivo()) {
        const editor::Seleccion& seleccion = editor_.seleccion();
        editor_.establecerContenido(seleccion.activaFila, seleccion.activaCol, texto.toStdString());
    }
    widgetHoja_->confirmarEdicion(dFila, dCol);
    refrescarTodo();
    widgetHoja_->setFocus();
}

void VentanaPrincipal::saltarAReferencia() {
    const std::optional<Referencia> destino =
        leerReferencia(cuadroNombre_->text().trimmed().toUpper());
    confirmarPendiente();
    if (destino) {
        editor_.seleccionar(destino->fila, destino->col);
        widgetHoja_->asegurarVisible();
        actualizarResumen();
        actualizarEstadoBotones();
    }
    actualizarBarraFormulas();
    widgetHoja_->setFocus();
}

QString VentanaPrincipal::contenidoActivo() const {
    const nucleo::Hoja* hoja = hojaActiva();
    const editor::Seleccion& seleccion = editor_.seleccion();
    const nucleo::Celda* celda =
        hoja == nullptr ? nullptr
                        : celdaDeContenido(*hoja, seleccion.activaFila, seleccion.activaCol);
    return celda == nullptr ? QString() : QString::fromStdString(celda->entrada);
}

void VentanaPrincipal::actualizarBarraFormulas() {
    const editor::Seleccion& seleccion = editor_.seleccion();
    cuadroNombre_->setText(
        QString::fromStdString(nucleo::nombreRef(seleccion.activaFila, seleccion.activaCol)));
    if (widgetHoja_->editando()) {
        return;
    }
    const QString texto = contenidoActivo();
    if (entradaFormula_->text() != texto) {
        entradaFormula_->setText(texto);
        entradaFormula_->setCursorPosition(0);
    }
}

void VentanaPrincipal::actualizarResumen() {
    const nucleo::Hoja* hoja = hojaActiva();
    const nucleo::ResumenRango visto = hoja == nullptr
                                           ? nucleo::ResumenRango{}
                                           : hoja->celdas.resumir(editor_.seleccion().rango());
    if (visto.numeros > 0) {
        resumen_->setText(
            QStringLiteral("  Suma: %1   ·   Promedio: %2   ·   Cuenta: %3")
                .arg(numeroDelResumen(visto.suma),
                     numeroDelResumen(visto.suma / static_cast<double>(visto.numeros)),
                     QString::number(visto.conContenido)));
    } else if (visto.conContenido > 1) {
        resumen_->setText(QStringLiteral("  Cuenta: %1").arg(visto.conContenido));
    } else {
        resumen_->clear();
    }
}

void VentanaPrincipal::actualizarMemoria() {
    const QMimeData* datos = QGuiApplication::clipboard()->mimeData();
    const bool hayQuePegar = (datos != nullptr && datos->hasText()) || editor_.hayCeldasCopiadas();
    botonPegar_->setEnabled(hayQuePegar);
    if (botonPegar_->property("encendido") != QVariant(hayQuePegar)) {
        botonPegar_->setProperty("encendido", hayQuePegar);
        botonPegar_->style()->unpolish(botonPegar_);
        botonPegar_->style()->polish(botonPegar_);
    }
}

void VentanaPrincipal::actualizarEstadoBotones() {
    botonDeshacer_->setEnabled(editor_.pasosDeshacer() > 0);
    botonRehacer_->setEnabled(editor_.pasosRehacer() > 0);
    const editor::Seleccion& seleccion = editor_.seleccion();
    accionOrdenAscendente_->setEnabled(!seleccion.esUnaCelda());
    accionOrdenDescendente_->setEnabled(!seleccion.esUnaCelda());

    const nucleo::Hoja* hoja = hojaActiva();
    const nucleo::Celda* celda =
        hoja == nullptr ? nullptr : hoja->celda(seleccion.activaFila, seleccion.activaCol);
    const nucleo::Formato formato = celda == nullptr ? nucleo::Formato{} : celda->formato;
    marcarSinAvisar(botonNegrita_, formato.negrita);
    marcarSinAvisar(botonCursiva_, formato.cursiva);
    marcarSinAvisar(botonSubrayado_, formato.subrayado);
}

void VentanaPrincipal::refrescarTodo() {
    actualizarTitulo();
    actualizarBarraFormulas();
    actualizarResumen();
    actualizarPestanas();
    actualizarEstadoBotones();
    actualizarMemoria();
    widgetHoja_->refrescar();
}

void VentanaPrincipal::establecerZoom(int porcentaje) {
    widgetHoja_->establecerZoom(porcentaje);
    const int zoom = widgetHoja_->zoomPorcentaje();
    etiquetaZoom_->setText(QStringLiteral("%1%").arg(zoom));
    const QSignalBlocker bloqueo(deslizadorZoom_);
    deslizadorZoom_->setValue(zoom);
    for (QAction* accion : accionesZoom_) {
        accion->setChecked(accion->data().toInt() == zoom);
    }
}

void VentanaPrincipal::establecerTema(bool oscuro) {
    oscuro_ = oscuro;
    aplicarTema();
}

void VentanaPrincipal::aplicarTema() {
    QApplication::setPalette(oscuro_ ? paletaOscura() : paletaClara());
    qApp->setStyleSheet(leerEstilo(oscuro_));
    widgetHoja_->establecerTema(oscuro_ ? renderizador::temaOscuro() : renderizador::temaClaro());
    botonTema_->setText(oscuro_ ? QStringLiteral("☀ Modo claro") : QStringLiteral("☾ Modo oscuro"));
    const QSignalBlocker bloqueo(accionModoOscuro_);
    accionModoOscuro_->setChecked(oscuro_);
}

} // namespace interfaz
