// Crear, abrir, guardar y cerrar el documento.

#include "model/autosave.h"
#include "model/serializador.h"
#include "ui/cuadros.h"
#include "ui/espera.h"
#include "ui/texto_plano.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QStandardPaths>
#include <QStatusBar>

namespace interfaz {

namespace {

const QString kExtension = QStringLiteral("mrn");
const QString kFiltro = QStringLiteral("Libro de Marnel (*.mrn)");

QString archivoSoltado(const QMimeData* datos) {
    if (datos == nullptr || !datos->hasUrls()) {
        return {};
    }
    for (const QUrl& url : datos->urls()) {
        if (url.isLocalFile()) {
            return url.toLocalFile();
        }
    }
    return {};
}

} // namespace

QString VentanaPrincipal::rutaBiblioteca() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
           QStringLiteral("/Marnel");
}

QString VentanaPrincipal::carpetaBiblioteca() {
    const QString carpeta = rutaBiblioteca();
    QDir().mkpath(carpeta);
    return carpeta;
}

void VentanaPrincipal::nuevoLibro() {
    if (!confirmarDescarte()) {
        return;
    }
    libro_.reiniciar();
    olvidarDocumentoAnterior();
    refrescarTodo();
    actualizarRutaAutosave();
}

void VentanaPrincipal::abrirLibro() {
    if (!confirmarDescarte()) {
        return;
    }
    cambiosDescartados_ = libro_.modificado;
    abrirDesdeDialogo();
    cambiosDescartados_ = false;
}

void VentanaPrincipal::abrirDesdeDialogo() {
    confirmarPendiente();
    const QString ruta = QFileDialog::getOpenFileName(this, QStringLiteral("Abrir libro"),
                                                      carpetaBiblioteca(), kFiltro);
    if (!ruta.isEmpty()) {
        abrirArchivo(ruta);
    }
}

bool VentanaPrincipal::abrirArchivo(const QString& ruta) {
    confirmarPendiente();
    nucleo::ResultadoArchivo resultado = nucleo::kArchivoBien;
    {
        const Espera espera(statusBar(), QStringLiteral("Abriendo el libro…"));
        resultado = nucleo::Serializador::cargar(ruta.toStdString(), libro_);
        if (resultado == nucleo::kArchivoBien && !motor_.recalcularCargado()) {
            resultado = nucleo::kArchivoInvalido;
        }
        if (resultado != nucleo::kArchivoNoAbre) {
            olvidarDocumentoAnterior();
            refrescarTodo();
            actualizarRutaAutosave();
        }
    }
    if (resultado != nucleo::kArchivoBien) {
        advertir(this, QStringLiteral("No se pudo abrir el archivo. Puede estar dañado o no ser un "
                                      "libro de Marnel."));
        return false;
    }
    ofrecerRecuperacion();
    return true;
}

bool VentanaPrincipal::guardarLibro() {
    confirmarPendiente();
    if (libro_.ruta.empty()) {
        return guardarLibroComo();
    }
    nucleo::ResultadoArchivo resultado = nucleo::kArchivoBien;
    {
        const Espera espera(statusBar(), QStringLiteral("Guardando el libro…"));
        // El destino se trunca antes de escribirlo: hasta que esté entero, la copia buena es esta.
        escribirRecuperacion();
        resultado = nucleo::Serializador::guardar(libro_, libro_.ruta);
    }
    if (resultado != nucleo::kArchivoBien) {
        actualizarTitulo(); // el nombre puede acabar de elegirse
        advertir(this, QStringLiteral("No se pudo guardar el archivo."));
        return false;
    }
    libro_.modificado = false;
    descartarRecuperacion();
    actualizarRutaAutosave();
    actualizarTitulo();
    return true;
}

bool VentanaPrincipal::guardarLibroComo() {
    confirmarPendiente();
    QFileDialog dialogo(this, QStringLiteral("Guardar libro"), carpetaBiblioteca(), kFiltro);
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setDefaultSuffix(kExtension);
    dialogo.selectFile(QStringLiteral("Sin título.mrn"));
    if (dialogo.exec() != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) {
        return false;
    }
    QString ruta = dialogo.selectedFiles().constFirst();
    if (ruta.isEmpty()) {
        return false;
    }
    if (!ruta.endsWith(u'.' + kExtension, Qt::CaseInsensitive)) {
        ruta += u'.' + kExtension;
        // El cuadro preguntó por el nombre sin extensión, que es otro archivo.
        if (QFileInfo::exists(ruta) &&
            preguntar(this,
                      QStringLiteral("Ya existe un archivo llamado \"%1\". ¿Querés reemplazarlo?")
                          .arg(enUnaLinea(QFileInfo(ruta).fileName())),
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No) != QMessageBox::Yes) {
            return false;
        }
    }
    libro_.ruta = ruta.toStdString();
    return guardarLibro();
}

bool VentanaPrincipal::confirmarDescarte() {
    confirmarPendiente();
    if (!libro_.modificado) {
        return true;
    }
    switch (preguntar(
        this, QStringLiteral("El libro tiene cambios sin guardar. ¿Querés guardarlos?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save)) {
    case QMessageBox::Save:
        return guardarLibro();
    case QMessageBox::Discard:
        descartarRecuperacion();
        return true;
    default:
        return false;
    }
}

void VentanaPrincipal::closeEvent(QCloseEvent* evento) {
    // Al acabar la sesión nadie responde a una pregunta, y muchos escritorios no la anuncian: piden
    // cerrar y poco después matan el proceso.
    ponerASalvo();
    if (qGuiApp->isSavingSession()) {
        evento->accept();
        return;
    }
    const bool seguir = confirmarDescarte();
    cambiosDescartados_ = seguir && libro_.modificado;
    evento->setAccepted(seguir);
}

void VentanaPrincipal::actualizarTitulo() {
    const QString nombre = libro_.ruta.empty()
                               ? QStringLiteral("Sin título")
                               : QFileInfo(QString::fromStdString(libro_.ruta)).completeBaseName();
    setWindowTitle(paraTitulo(nombre) + (libro_.modificado ? QStringLiteral("*") : QString()) +
                   QStringLiteral(" — Marnel"));
    estado_->setText(libro_.modificado ? QStringLiteral("Modificado") : QStringLiteral("Guardado"));
}

void VentanaPrincipal::olvidarDocumentoAnterior() {
    cambiosDescartados_ = false;
    editor_.olvidarTodo();
    widgetHoja_->olvidarInteraccion();
    editor_.seleccionar(0, 0);
    widgetHoja_->asegurarVisible();
}

void VentanaPrincipal::dragEnterEvent(QDragEnterEvent* evento) {
    if (!archivoSoltado(evento->mimeData()).isEmpty()) {
        // Abrir es leer: quien ofrece mover el archivo no debe creer que ya puede borrarlo.
        evento->setDropAction(Qt::CopyAction);
        evento->accept();
    }
}

void VentanaPrincipal::dropEvent(QDropEvent* evento) {
    const QString ruta = archivoSoltado(evento->mimeData());
    if (ruta.isEmpty()) {
        return;
    }
    evento->setDropAction(Qt::CopyAction);
    evento->accept();
    // Quien suelta el archivo espera a que termine este evento; una pregunta lo dejaría colgado.
    QMetaObject::invokeMethod(
        this, [this, ruta] { abrirSoltado(ruta); }, Qt::QueuedConnection);
}

void VentanaPrincipal::abrirSoltado(const QString& ruta) {
    if (confirmarDescarte()) {
        abrirArchivo(ruta);
    }
}

} // namespace interfaz
