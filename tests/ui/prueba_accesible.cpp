// La ventana sin ratón y sin vista: nombres de los controles, camino del foco y textos de Qt.

#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAccessible>
#include <QObject>
#include <QTest>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

/// Todo lo que toma el foco o se pulsa dice a los lectores de pantalla qué es.
void comprobarNombres(QWidget& ventana, int minimo) {
    int controles = 0;
    for (QWidget* w : ventana.findChildren<QWidget*>()) {
        const bool control = qobject_cast<QAbstractButton*>(w) != nullptr ||
                             qobject_cast<QLineEdit*>(w) != nullptr ||
                             qobject_cast<QAbstractSlider*>(w) != nullptr ||
                             w->focusPolicy() != Qt::NoFocus;
        // El campo de un control de número es una pieza suya.
        if (!control || w->objectName() == QStringLiteral("qt_spinbox_lineedit")) {
            continue;
        }
        QAccessibleInterface* accesible = QAccessible::queryAccessibleInterface(w);
        QVERIFY(accesible != nullptr);
        const QString nombre = accesible->text(QAccessible::Name);
        QVERIFY2(nombre.size() > 2, qPrintable(QLatin1String(w->metaObject()->className()) + u' ' +
                                               w->objectName() + u' ' + nombre));
        ++controles;
    }
    QVERIFY(controles >= minimo);
}

} // namespace

class PruebaAccesible : public QObject {
    Q_OBJECT

  private slots:
    void cadaControlTieneNombre() {
        VentanaDePrueba p;
        comprobarNombres(p.ventana(), 17 + 6);
        Dialogos d;
        d.luego([](QWidget* w) {
            comprobarNombres(*w, 5);
            w->close();
        });
        p.accion("Herramientas", "Opciones")->trigger();
        QVERIFY(d.completo());
    }

    void laCuadriculaDiceLaCeldaActiva_data() {
        QTest::addColumn<QString>("tecleado");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("descripcion");
        QTest::newRow("texto") << "hola"
                               << "hola"
                               << "";
        QTest::newRow("número") << "1234,5"
                                << "1234,5"
                                << "";
        QTest::newRow("fórmula") << "=2*3"
                                 << "6"
                                 << "Fórmula: =2*3";
        QTest::newRow("error") << "=1/0" << QStringLiteral("#¡DIV/0!")
                               << QStringLiteral("Error: división por cero. Fórmula: =1/0");
    }
    void laCuadriculaDiceLaCeldaActiva() {
        QFETCH(QString, tecleado);
        QFETCH(QString, valor);
        QFETCH(QString, descripcion);
        VentanaDePrueba p;
        p.escribir(6, 3, "otra");
        p.escribir(2, 1, tecleado);
        QTest::keyClick(p.hoja(), Qt::Key_Up);
        QAccessibleInterface* tabla = QAccessible::queryAccessibleInterface(p.hoja());
        QCOMPARE(tabla->role(), QAccessible::Table);
        QCOMPARE(tabla->text(QAccessible::Name), QStringLiteral("Hoja 1"));
        QCOMPARE(tabla->tableInterface()->rowCount(), 7);
        QCOMPARE(tabla->tableInterface()->columnCount(), 4);
        QAccessibleInterface* activa = tabla->focusChild();
        QVERIFY(activa != nullptr);
        QCOMPARE(activa->text(QAccessible::Name), QStringLiteral("B3"));
        QCOMPARE(activa->text(QAccessible::Value), valor);
        QCOMPARE(activa->text(QAccessible::Description), descripcion);
        QVERIFY(activa->state().focused);
        QCOMPARE(activa->tableCellInterface()->rowIndex(), 2);
        QCOMPARE(activa->tableCellInterface()->columnIndex(), 1);
    }

    void losBotonesDeLaCintaNoSeLlamanComoSuGlifo() {
        VentanaDePrueba p;
        QAccessibleInterface* accesible =
            QAccessible::queryAccessibleInterface(p.boton(QStringLiteral("Copiar")));
        QCOMPARE(accesible->text(QAccessible::Name), QStringLiteral("Copiar"));
    }

    void f6RecorreLasZonas() {
        VentanaDePrueba p;
        p.hoja()->setFocus();
        const QList<QWidget*> zonas = {p.pestanas(), p.control<QWidget>("deslizadorZoom"),
                                       p.control<QWidget>("cuadroNombre"),
                                       p.control<QWidget>("entradaFormula"), p.hoja()};
        for (QWidget* zona : zonas) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
            QVERIFY2(zona->hasFocus(), qPrintable(zona->objectName()));
        }
        for (int i = static_cast<int>(zonas.size()) - 2; i >= 0; --i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
            QVERIFY2(zonas[i]->hasFocus(), qPrintable(zonas[i]->objectName()));
        }
        // Desde un vecino de la zona se sigue a la siguiente; desde la cinta se vuelve a empezar.
        p.control<QWidget>("btnNuevaHoja")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        QVERIFY(p.control<QWidget>("deslizadorZoom")->hasFocus());
        p.control<QWidget>("toggle_modo")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        QVERIFY(p.control<QWidget>("cuadroNombre")->hasFocus());
        p.boton(QStringLiteral("Copiar"))->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        QVERIFY(p.pestanas()->hasFocus());
    }

    void elRatonNoQuitaElFocoALaCuadricula() {
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.hoja()->setFocus();
        p.pulsarPestana(0);
        for (const char* nombre :
             {"btnNuevaHoja", "deslizadorZoom", "toggle_modo", "toggle_modo"}) {
            p.pulsar(p.control<QWidget>(nombre));
            QVERIFY2(p.hoja()->hasFocus(), nombre);
        }
        p.pulsar(p.boton(QStringLiteral("Negrita")));
        QVERIFY(p.hoja()->hasFocus());
    }

    void elTabuladorVaDelNombreALaCuadricula() {
        VentanaDePrueba p;
        auto* nombre = p.control<QLineEdit>("cuadroNombre");
        nombre->setFocus();
        QTest::keyClick(nombre, Qt::Key_Tab);
        auto* barra = p.control<QLineEdit>("entradaFormula");
        QVERIFY(barra->hasFocus());
        QTest::keyClick(barra, Qt::Key_Tab);
        QVERIFY(p.hoja()->hasFocus());
        p.pestanas()->setFocus();
        for (const char* siguiente : {"btnNuevaHoja", "deslizadorZoom", "toggle_modo"}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QVERIFY2(p.control<QWidget>(siguiente)->hasFocus(), siguiente);
        }
        // Del último se pasa, por la cinta, al primero, y de él otra vez a la cuadrícula.
        QList<QWidget*> recorridos;
        for (int i = 0; i < 40 && !p.hoja()->hasFocus(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            recorridos << QApplication::focusWidget();
        }
        QVERIFY(p.hoja()->hasFocus());
        QVERIFY(recorridos.contains(nombre));
        QVERIFY(recorridos.contains(barra));
        QVERIFY(recorridos.contains(p.boton(QStringLiteral("Copiar"))));
    }

    void losTextosDeQtEstanEnEspanol() {
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"),
                 QStringLiteral("Cancelar"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Save"), QStringLiteral("Guardar"));
        QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Marnel"));
        QCOMPARE(QCoreApplication::applicationVersion(), QStringLiteral("1.0"));
        QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Velora"));
    }
};

REGISTRAR_PRUEBAS(PruebaAccesible);
#include "prueba_accesible.moc"
