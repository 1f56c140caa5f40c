#pragma once

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "ui/widget_hoja.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <string>

namespace pruebas {

/// Una vista de hoja de verdad, sola y a la vista, con su libro detrás.
class RejillaDePrueba {
  public:
    RejillaDePrueba() {
        hoja.resize(800, 600);
        hoja.establecerTema(renderizador::temaClaro());
        hoja.show();
        hoja.activateWindow();
        [[maybe_unused]] const bool activa = QTest::qWaitForWindowActive(&hoja);
        hoja.setFocus();
        olvidarSenales();
    }

    nucleo::Hoja& activa() { return *libro.hojas.at(static_cast<std::size_t>(libro.hojaActiva)); }
    void poner(int fila, int col, const std::string& texto) {
        motor.establecerCelda(libro.hojaActiva, fila, col, texto);
    }
    QString entrada(int fila, int col, std::size_t indice = 0) const {
        const nucleo::Celda* celda = libro.hojas.at(indice)->celda(fila, col);
        return celda == nullptr ? QString() : QString::fromStdString(celda->entrada);
    }
    /// "B2>C3": del ancla a la esquina activa; "B2" si es una sola celda.
    QString seleccion() const {
        const editor::Seleccion& s = editor.seleccion();
        const auto nombre = [](int fila, int col) {
            return QString::fromStdString(nucleo::nombreRef(fila, col));
        };
        const QString activa = nombre(s.activaFila, s.activaCol);
        return s.esUnaCelda() ? activa : nombre(s.anclaFila, s.anclaCol) + u'>' + activa;
    }
    /// Selecciona sin pasar por la vista, de una esquina a la otra.
    void seleccionar(int fila, int col) { editor.seleccionar(fila, col); }
    void seleccionar(int fila, int col, int filaActiva, int colActiva) {
        editor.seleccionar(fila, col);
        editor.extender(filaActiva, colActiva);
    }

    void tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
        QTest::keyClick(&hoja, tecla, con);
    }
    void teclaEnEditor(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
        QTest::keyClick(editorCelda(), tecla, con);
    }
    QLineEdit* editorCelda() const { return hoja.editorCelda(); }

    QRect rect(int fila, int col) const { return hoja.renderizador().rectCelda(fila, col); }
    QPoint centro(int fila, int col) const { return rect(fila, col).center(); }
    void pulsar(const QPoint& donde, Qt::KeyboardModifiers con = Qt::NoModifier) {
        QTest::mousePress(hoja.viewport(), Qt::LeftButton, con, donde);
    }
    void soltar(const QPoint& donde) {
        QTest::mouseRelease(hoja.viewport(), Qt::LeftButton, Qt::NoModifier, donde);
    }
    void mover(const QPointF& donde, Qt::MouseButtons con = Qt::LeftButton) {
        QMouseEvent evento(QEvent::MouseMove, donde, hoja.viewport()->mapToGlobal(donde),
                           Qt::NoButton, con, Qt::NoModifier);
        QApplication::sendEvent(hoja.viewport(), &evento);
    }
    void pinchar(const QPoint& donde, Qt::KeyboardModifiers con = Qt::NoModifier) {
        pulsar(donde, con);
        soltar(donde);
    }

    void olvidarSenales() {
        for (QSignalSpy* espia :
             {&seleccionCambiada, &libroModificado, &edicionTerminada, &textoEdicion}) {
            espia->clear();
        }
    }
    /// Cuántas veces ha avisado de cada cosa, y lo olvida: "selección modificado terminada".
    QString senales() {
        const QString cuenta = QStringLiteral("%1 %2 %3")
                                   .arg(seleccionCambiada.size())
                                   .arg(libroModificado.size())
                                   .arg(edicionTerminada.size());
        olvidarSenales();
        return cuenta;
    }

    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor editor{libro, motor};
    interfaz::WidgetHoja hoja{libro, editor};
    QSignalSpy seleccionCambiada{&hoja, &interfaz::WidgetHoja::seleccionCambiada};
    QSignalSpy libroModificado{&hoja, &interfaz::WidgetHoja::libroModificado};
    QSignalSpy edicionTerminada{&hoja, &interfaz::WidgetHoja::edicionTerminada};
    QSignalSpy textoEdicion{&hoja, &interfaz::WidgetHoja::textoEdicionCambiado};
};

} // namespace pruebas
