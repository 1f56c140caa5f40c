#pragma once

#include "model/autosave.h"
#include "model/numeros.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <memory>
#include <string>

namespace pruebas {

/// Teclea cualquier texto, también el que no está en un teclado inglés.
inline void teclearEn(QWidget* w, const QString& texto) {
    for (const QChar c : texto) {
        if (c.unicode() < 0x80) {
            QTest::keyClick(w, c.toLatin1());
        } else {
            QKeyEvent pulsa(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
            QApplication::sendEvent(w, &pulsa);
        }
    }
}

/// La ventana de verdad, con su propia carpeta temporal para los archivos de recuperación.
class VentanaDePrueba {
  public:
    VentanaDePrueba() {
        anterior_ = qgetenv("TMPDIR");
        qputenv("TMPDIR", carpeta_.path().toLocal8Bit());
    }
    ~VentanaDePrueba() {
        ventana_.reset();
        qputenv("TMPDIR", anterior_);
    }
    VentanaDePrueba(const VentanaDePrueba&) = delete;
    VentanaDePrueba& operator=(const VentanaDePrueba&) = delete;

    /// La construye al pedirla por primera vez, para que una prueba prepare antes lo que encuentre.
    interfaz::VentanaPrincipal& ventana() {
        if (!ventana_) {
            ventana_ = std::make_unique<interfaz::VentanaPrincipal>();
            ventana_->show();
            ventana_->activateWindow();
            [[maybe_unused]] const bool activa = QTest::qWaitForWindowActive(ventana_.get());
        }
        return *ventana_;
    }
    void cerrarSinMas() { ventana_.reset(); }

    interfaz::WidgetHoja* hoja() { return ventana().widgetHoja(); }
    nucleo::Libro& libro() { return ventana().libro(); }
    motor_formulas::Motor& motor() { return ventana().motor(); }
    editor::Editor& editor() { return ventana().editor(); }
    QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }

    /// Teclea en la celda activa, sin terminar la edición.
    void teclear(const QString& texto) {
        teclearEn(hoja(), texto.left(1));
        teclearEn(hoja()->editorCelda(), texto.mid(1));
    }
    /// Escribe en una celda por el camino de una persona: la selecciona, teclea y pulsa Intro.
    void escribir(int fila, int col, const QString& texto) {
        editor().seleccionar(fila, col);
        hoja()->setFocus();
        teclear(texto);
        QTest::keyClick(hoja()->editorCelda(), Qt::Key_Return);
    }
    std::string entrada(int fila, int col, int indiceHoja = -1) {
        const int indice = indiceHoja < 0 ? libro().hojaActiva : indiceHoja;
        const nucleo::Celda* celda =
            libro().hojas.at(static_cast<std::size_t>(indice))->celda(fila, col);
        return celda == nullptr ? std::string() : celda->entrada;
    }
    QString valor(int fila, int col) {
        const nucleo::Celda* celda =
            libro().hojas.at(static_cast<std::size_t>(libro().hojaActiva))->celda(fila, col);
        return celda == nullptr
                   ? QString()
                   : QString::fromStdString(nucleo::textoVisible(celda->valor, celda->formato));
    }

    QMenu* menu(const QString& titulo) {
        for (QAction* accion : ventana().menuBar()->actions()) {
            if (accion->text().remove(u'&') == titulo) {
                return accion->menu();
            }
        }
        return nullptr;
    }
    /// La entrada de un menú; nula si no existe.
    QAction* accion(const QString& titulo, const QString& entrada) {
        QList<QMenu*> menus = menu(titulo)->findChildren<QMenu*>();
        menus << menu(titulo);
        for (QMenu* m : menus) {
            for (QAction* a : m->actions()) {
                if (a->text() == entrada) {
                    return a;
                }
            }
        }
        return nullptr;
    }
    /// Elige una entrada como una persona: abre su menú y la pulsa con el ratón; si está en un
    /// submenú, sigue en él con las flechas.
    void elegir(const QString& titulo, const QString& entrada) {
        const QAction* buscada = accion(titulo, entrada);
        QMenuBar* barra = ventana().menuBar();
        QMenu* abierto = menu(titulo);
        QTest::mouseClick(barra, Qt::LeftButton, {},
                          barra->actionGeometry(abierto->menuAction()).center());
        for (QAction* a : abierto->actions()) {
            if (a == buscada || (a->menu() != nullptr && a->menu()->actions().contains(buscada))) {
                QTest::mouseClick(abierto, Qt::LeftButton, {}, abierto->actionGeometry(a).center());
            }
        }
        if (auto* submenu = qobject_cast<QMenu*>(buscada->parent()); submenu != abierto) {
            [[maybe_unused]] const bool visible = QTest::qWaitForWindowExposed(submenu);
            for (int i = 0; i < submenu->actions().size() && submenu->activeAction() != buscada;
                 ++i) {
                QTest::keyClick(submenu, Qt::Key_Down);
            }
            QTest::keyClick(submenu, Qt::Key_Return);
        }
    }
    template <typename T> T* control(const char* nombre) {
        return ventana().findChild<T*>(QLatin1String(nombre));
    }
    QTabBar* pestanas() { return ventana().findChild<QTabBar*>(); }
    /// El botón de la cinta con ese rótulo.
    QToolButton* boton(const QString& rotulo) {
        for (QToolButton* b : ventana().findChildren<QToolButton*>(QStringLiteral("btn_toolbar"))) {
            if (b->toolTip() == rotulo) {
                return b;
            }
        }
        return nullptr;
    }
    void pulsar(QWidget* w) { QTest::mouseClick(w, Qt::LeftButton); }
    /// Pulsa la pestaña de una hoja con el ratón.
    void pulsarPestana(int indice) {
        QTest::mouseClick(pestanas(), Qt::LeftButton, {}, pestanas()->tabRect(indice).center());
    }

  private:
    QTemporaryDir carpeta_;
    QByteArray anterior_;
    std::unique_ptr<interfaz::VentanaPrincipal> ventana_;
};

} // namespace pruebas
