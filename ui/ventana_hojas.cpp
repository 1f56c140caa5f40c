// Las hojas del libro y sus pestañas.

#include "model/formato_archivo.h"
#include "ui/cuadros.h"
#include "ui/texto_plano.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QAction>
#include <QInputDialog>
#include <QMenu>
#include <QStatusBar>
#include <QTabBar>

#include <string>
#include <utility>

namespace interfaz {

namespace {

/// Desde este largo el rótulo de la pestaña se recorta y el globo de ayuda lo muestra entero.
constexpr qsizetype kNombreLargo = 20;
constexpr int kDuracionAviso = 5000; ///< milisegundos

/// Verdadero si alguna fórmula puede nombrar esa hoja, aunque todavía no exista.
bool algunaFormulaNombra(const nucleo::Libro& libro, const std::string& nombre) {
    bool alguna = false;
    for (const auto& hoja : libro.hojas) {
        std::as_const(*hoja).celdas.recorrerFormulas([&](int, int, const nucleo::Celda& celda) {
            alguna = alguna || celda.entrada.find(nombre) != std::string::npos;
        });
    }
    return alguna;
}

} // namespace

bool VentanaPrincipal::esLaHoja(int indice, std::uint64_t identidad) const {
    const auto posicion = static_cast<std::size_t>(indice);
    return indice >= 0 && posicion < libro_.hojas.size() &&
           libro_.hojas[posicion]->identidad == identidad;
}

void VentanaPrincipal::cambiarHoja(int indice) {
    confirmarPendiente();
    if (indice < 0 || indice >= static_cast<int>(libro_.hojas.size())) {
        return;
    }
    libro_.hojaActiva = indice;
    editor_.seleccionar(0, 0);
    actualizarPestanas();
    actualizarBarraFormulas();
    actualizarResumen();
    actualizarEstadoBotones();
    widgetHoja_->asegurarVisible();
}

void VentanaPrincipal::actualizarPestanas() {
    const QSignalBlocker bloqueo(pestanas_);
    const int hojas = static_cast<int>(libro_.hojas.size());
    // Se cambian solo las que difieren: rehacerlas todas perdería el desplazamiento de la barra.
    while (pestanas_->count() > hojas) {
        pestanas_->removeTab(pestanas_->count() - 1);
    }
    while (pestanas_->count() < hojas) {
        pestanas_->addTab(QString());
    }
    for (int i = 0; i < hojas; ++i) {
        const QString nombre =
            QString::fromStdString(libro_.hojas[static_cast<std::size_t>(i)]->nombre);
        const QString rotulo = paraRotulo(nombre);
        if (pestanas_->tabText(i) != rotulo) {
            pestanas_->setTabText(i, rotulo);
            pestanas_->setTabToolTip(i,
                                     nombre.size() > kNombreLargo ? paraAyuda(nombre) : QString());
        }
    }
    pestanas_->setCurrentIndex(libro_.hojaActiva);
}

void VentanaPrincipal::menuDePestana(const QPoint& punto) {
    const int indice = pestanas_->tabAt(punto);
    if (indice < 0) {
        return;
    }
    confirmarPendiente();
    QMenu menu(this);
    const QAction* renombrar = menu.addAction(QStringLiteral("Renombrar hoja"));
    QAction* eliminar = menu.addAction(QStringLiteral("Eliminar hoja"));
    eliminar->setEnabled(libro_.hojas.size() >= 2);
    const QAction* elegida = menu.exec(pestanas_->mapToGlobal(punto));
    if (elegida == renombrar) {
        renombrarHoja(indice);
    } else if (elegida == eliminar) {
        eliminarHoja(indice);
    }
}

void VentanaPrincipal::agregarHoja() {
    confirmarPendiente();
    if (libro_.hojas.size() >= nucleo::kMaximoHojas) {
        statusBar()->showMessage(
            QStringLiteral("Un libro admite %1 hojas como máximo.").arg(nucleo::kMaximoHojas),
            kDuracionAviso);
        return;
    }
    editor_.registrarHistorial();
    const nucleo::Hoja* nueva = libro_.agregarHoja();
    // Las que ya la nombraban no la encontraban: ahora la leen.
    if (algunaFormulaNombra(libro_, nueva->nombre)) {
        motor_.recalcularTodo();
    }
    libro_.hojaActiva = static_cast<int>(libro_.hojas.size()) - 1;
    editor_.seleccionar(0, 0);
    refrescarTodo();
    widgetHoja_->asegurarVisible();
}

void VentanaPrincipal::renombrarHoja(int indice) {
    confirmarPendiente();
    if (indice < 0 || indice >= static_cast<int>(libro_.hojas.size())) {
        return;
    }
    const nucleo::Hoja& hoja = *libro_.hojas[static_cast<std::size_t>(indice)];
    const std::uint64_t identidad = hoja.identidad;
    const std::string actual = hoja.nombre;
    bool aceptado = false;
    const std::string nombre =
        QInputDialog::getText(this, QStringLiteral("Renombrar hoja"),
                              QStringLiteral("Nombre de la hoja:"), QLineEdit::Normal,
                              QString::fromStdString(actual), &aceptado)
            .trimmed()
            .toStdString();
    if (!aceptado || nombre.empty() || !esLaHoja(indice, identidad)) {
        return;
    }
    const int homonima = libro_.indiceHoja(nombre);
    if (homonima >= 0 && homonima != indice) {
        advertir(this, QStringLiteral("Ya existe una hoja con ese nombre."));
        return;
    }
    if (nombre != actual) {
        editor_.registrarHistorial();
    }
    motor_.renombrarHoja(indice, nombre);
    refrescarTodo();
}

void VentanaPrincipal::eliminarHoja(int indice) {
    confirmarPendiente();
    if (libro_.hojas.size() < 2 || indice < 0 || indice >= static_cast<int>(libro_.hojas.size())) {
        return;
    }
    const nucleo::Hoja& hoja = *libro_.hojas[static_cast<std::size_t>(indice)];
    const std::uint64_t identidad = hoja.identidad;
    if (preguntar(this,
                  QStringLiteral("¿Eliminar la hoja \"%1\"? Esta acción no se puede deshacer.")
                      .arg(enUnaLinea(QString::fromStdString(hoja.nombre))),
                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No) != QMessageBox::Yes ||
        !esLaHoja(indice, identidad)) {
        return;
    }
    libro_.eliminarHoja(indice);
    motor_.recalcularTodo();
    editor_.seleccionar(0, 0);
    refrescarTodo();
    widgetHoja_->asegurarVisible();
}

} // namespace interfaz
