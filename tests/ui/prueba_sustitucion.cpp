// El libro cambia por debajo mientras hay algo a medias en la ventana: un cuadro, un menú, un
// arrastre o un texto. Nada de lo empezado alcanza al libro nuevo.

#include "model/serializador.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QObject>
#include <QTest>

#include <functional>
#include <vector>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

using Cambiar = std::function<void()>;

/// Empieza algo, llama a `cambiar` cuando está a medias y lo termina.
struct Caso {
    const char* nombre;
    std::function<void(VentanaDePrueba&, const Cambiar&)> hacer;
};

void moverRaton(VentanaDePrueba& p, const QPoint& donde) {
    QWidget* vista = p.hoja()->viewport();
    QMouseEvent evento(QEvent::MouseMove, donde, vista->mapToGlobal(donde), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(vista, &evento);
}

/// Arrastra entre dos puntos de la cuadrícula y cambia el libro a mitad de camino.
void arrastrar(VentanaDePrueba& p, const QPoint& desde, const QPoint& hasta,
               const Cambiar& cambiar) {
    QTest::mousePress(p.hoja()->viewport(), Qt::LeftButton, {}, desde);
    moverRaton(p, (desde + hasta) / 2);
    cambiar();
    moverRaton(p, hasta);
    QTest::mouseRelease(p.hoja()->viewport(), Qt::LeftButton, {}, hasta);
}

const std::vector<Caso>& casos() {
    static const std::vector<Caso> todos = {
        {"renombrando una hoja",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             Dialogos d;
             d.luego([&](QWidget* w) {
                 cambiar();
                 w->findChild<QLineEdit*>()->setText(QStringLiteral("Otra"));
                 QTest::keyClick(w, Qt::Key_Return);
             });
             p.ventana().renombrarHoja(1);
             QVERIFY(d.completo());
         }},
        {"eliminando una hoja",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             Dialogos d;
             d.luego([&](QWidget* w) {
                 cambiar();
                 qobject_cast<QMessageBox*>(w)->button(QMessageBox::Yes)->click();
             });
             p.ventana().eliminarHoja(1);
             QVERIFY(d.completo());
         }},
        {"con el menú de la cuadrícula abierto",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             Dialogos d;
             d.luego([&](QWidget* w) {
                 cambiar();
                 for (QAction* accion : w->actions()) {
                     if (accion->data().toString() == QStringLiteral("insertar_fila_arriba")) {
                         qobject_cast<QMenu*>(w)->setActiveAction(accion);
                     }
                 }
                 QTest::keyClick(w, Qt::Key_Return);
             });
             QContextMenuEvent evento(QContextMenuEvent::Keyboard, QPoint(), QPoint());
             QApplication::sendEvent(p.hoja(), &evento);
             QVERIFY(d.completo());
         }},
        {"redimensionando una columna",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             const QRect primera = p.hoja()->renderizador().rectCelda(0, 0);
             const QPoint borde(primera.right() + 1, 10);
             arrastrar(p, borde, borde + QPoint(80, 0), cambiar);
         }},
        {"arrastrando la selección",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             const auto centro = [&](int fila, int col) {
                 return p.hoja()->renderizador().rectCelda(fila, col).center();
             };
             arrastrar(p, centro(2, 2), centro(6, 4), cambiar);
         }},
        {"tecleando en una celda",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             p.teclear("de A");
             cambiar();
             QTest::keyClick(p.hoja(), Qt::Key_Escape);
         }},
        {"tecleando en la barra de fórmulas",
         [](VentanaDePrueba& p, const Cambiar& cambiar) {
             auto* barra = p.control<QLineEdit>("entradaFormula");
             barra->setFocus();
             pruebas::teclearEn(barra, QStringLiteral("de A"));
             cambiar();
             QTest::keyClick(barra, Qt::Key_Return);
         }},
    };
    return todos;
}

} // namespace

class PruebaSustitucion : public QObject {
    Q_OBJECT

  private slots:
    void nadaAMediasAlcanzaAlLibroNuevo_data() {
        QTest::addColumn<int>("caso");
        for (std::size_t i = 0; i < casos().size(); ++i) {
            QTest::newRow(casos()[i].nombre) << static_cast<int>(i);
        }
    }
    void nadaAMediasAlcanzaAlLibroNuevo() {
        QFETCH(int, caso);
        VentanaDePrueba p;
        nucleo::Libro b;
        motor_formulas::Motor motor(b);
        b.agregarHoja();
        motor.establecerCelda(0, 0, 0, "de B");
        motor.establecerCelda(1, 0, 0, "=1+1");
        const QString ruta = p.ruta("b.mrn");
        nucleo::Serializador::guardar(b, ruta.toStdString());

        p.ventana().agregarHoja();
        p.ventana().cambiarHoja(0);
        p.escribir(3, 3, "de A");
        p.editor().seleccionar(0, 0);
        p.hoja()->setFocus();
        casos()[static_cast<std::size_t>(caso)].hacer(
            p, [&] { QVERIFY(p.ventana().abrirArchivo(ruta)); });

        QVERIFY(!p.hoja()->editando());
        QCOMPARE(p.libro().hojas.size(), std::size_t{2});
        for (std::size_t i = 0; i < 2; ++i) {
            QVERIFY(*p.libro().hojas[i] == *b.hojas[i]);
        }
        QCOMPARE(p.pestanas()->tabText(1), QStringLiteral("Hoja 2"));
        QVERIFY(!p.libro().modificado);
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
        QCOMPARE(p.editor().pasosDeshacer() + p.editor().pasosRehacer(), std::size_t{0});
        QTest::keyClick(p.hoja(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(p.entrada(0, 0), std::string("de B"));
    }
};

REGISTRAR_PRUEBAS(PruebaSustitucion);
#include "prueba_sustitucion.moc"
