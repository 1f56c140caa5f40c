// La ventana sin ratón y sin vista: nombres de los controles, camino del foco y textos de Qt.

#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAccessible>
#include <QObject>
#include <QTest>

using pruebas::VentanaDePrueba;

class PruebaAccesible : public QObject {
    Q_OBJECT

  private slots:
    void cadaControlTieneNombre() {
        VentanaDePrueba p;
        int controles = 0;
        for (QWidget* w : p.ventana().findChildren<QWidget*>()) {
            const bool control = qobject_cast<QAbstractButton*>(w) != nullptr ||
                                 qobject_cast<QLineEdit*>(w) != nullptr ||
                                 (qobject_cast<QAbstractSlider*>(w) != nullptr &&
                                  w->objectName() == QStringLiteral("deslizadorZoom")) ||
                                 qobject_cast<QTabBar*>(w) != nullptr || w == p.hoja();
            // Las flechas de la barra de pestañas y el editor de la celda son piezas de otros.
            if (!control || w->parent() == p.pestanas() || w == p.hoja()->editorCelda()) {
                continue;
            }
            QAccessibleInterface* accesible = QAccessible::queryAccessibleInterface(w);
            QVERIFY(accesible != nullptr);
            const QString nombre = accesible->text(QAccessible::Name);
            QVERIFY2(nombre.size() > 2, qPrintable(w->objectName() + u' ' + nombre));
            ++controles;
        }
        QVERIFY(controles >= 17 + 6);
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
