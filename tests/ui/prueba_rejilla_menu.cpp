#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

#include <functional>

using pruebas::RejillaDePrueba;

class PruebaRejillaMenu : public QObject {
    Q_OBJECT

  private slots:
    void lasEntradasSonLasDelEditor();
    void fueraDeLaSeleccionSeleccionaLaCelda();
    void dentroSeConservaLaSeleccion();
    void noElegirNadaNoHaceNada();
    void lasDelPortapapelesUsanElDelSistema();
    void lasDemasLasHaceElEditor();
    void confirmaLaEdicion();
    void laTeclaDeMenuEsDeLaCeldaActiva();
    void cerrarLaVistaConElMenuAbierto();

  private:
    using Visita = std::function<void(QMenu&)>;

    /// Pide el menú en un punto y deja que `visita` lo mire y elija mientras está abierto.
    static void pedir(RejillaDePrueba& r, const QPoint& donde, const Visita& visita,
                      QContextMenuEvent::Reason por = QContextMenuEvent::Mouse) {
        pruebas::Dialogos d;
        d.luego([&](QWidget* w) {
            auto* menu = qobject_cast<QMenu*>(w);
            if (menu != nullptr) {
                visita(*menu);
            }
            w->close();
        });
        QContextMenuEvent evento(por, donde, r.hoja.viewport()->mapToGlobal(donde));
        QApplication::sendEvent(
            por == QContextMenuEvent::Mouse ? static_cast<QWidget*>(r.hoja.viewport()) : &r.hoja,
            &evento);
        QVERIFY(d.completo());
    }
    static Visita elegir(const QString& id) {
        return [id](QMenu& menu) {
            for (QAction* accion : menu.actions()) {
                if (accion->data().toString() == id) {
                    menu.setActiveAction(accion);
                    QTest::keyClick(&menu, Qt::Key_Return);
                    return;
                }
            }
            QFAIL("no está en el menú");
        };
    }
    static void nada(QMenu&) {}
};

void PruebaRejillaMenu::lasEntradasSonLasDelEditor() {
    RejillaDePrueba r;
    r.seleccionar(1, 1, 3, 2);
    QStringList vistas;
    pedir(r, r.centro(2, 2), [&](QMenu& menu) {
        for (const QAction* accion : menu.actions()) {
            vistas << (accion->isSeparator()
                           ? QStringLiteral("-")
                           : accion->data().toString() + u'|' + accion->text() +
                                 (accion->isEnabled() ? QString() : QStringLiteral("|no")));
        }
    });
    QStringList esperadas;
    for (const editor::AccionMenu& entrada : r.editor.menuContextualCeldas()) {
        if (entrada.separadorAntes) {
            esperadas << QStringLiteral("-");
        }
        esperadas << QString::fromStdString(entrada.id + "|" + entrada.etiqueta) +
                         (entrada.habilitada ? QString() : QStringLiteral("|no"));
    }
    QCOMPARE(vistas, esperadas);
    QCOMPARE(vistas.size(), 14 + 5);
    QVERIFY(vistas.contains(QStringLiteral("insertar_fila_arriba|Insertar 3 filas arriba")));
    QVERIFY(vistas.contains(QStringLiteral("separar|Separar celdas|no")));
}

void PruebaRejillaMenu::fueraDeLaSeleccionSeleccionaLaCelda() {
    RejillaDePrueba r;
    r.seleccionar(1, 1, 2, 2);
    pedir(r, r.centro(5, 4), nada);
    QCOMPARE(r.seleccion(), QStringLiteral("E6"));
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
    pedir(r, QPoint(10, 10), nada);
    QCOMPARE(r.seleccion(), QStringLiteral("E6"));
}

void PruebaRejillaMenu::dentroSeConservaLaSeleccion() {
    RejillaDePrueba r;
    r.seleccionar(1, 1, 3, 3);
    pedir(r, r.centro(3, 1), nada);
    QCOMPARE(r.seleccion(), QStringLiteral("B2>D4"));
}

void PruebaRejillaMenu::noElegirNadaNoHaceNada() {
    RejillaDePrueba r;
    r.poner(0, 0, "x");
    r.libro.modificado = false;
    pedir(r, r.centro(0, 0), nada);
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
    QVERIFY(!r.libro.modificado);
}

void PruebaRejillaMenu::lasDelPortapapelesUsanElDelSistema() {
    RejillaDePrueba r;
    r.poner(0, 0, "dato");
    pedir(r, r.centro(0, 0), elegir(QStringLiteral("copiar")));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("dato"));
    pedir(r, r.centro(4, 4), elegir(QStringLiteral("pegar")));
    QCOMPARE(r.entrada(4, 4), QStringLiteral("dato"));
    pedir(r, r.centro(4, 4), elegir(QStringLiteral("cortar")));
    QCOMPARE(r.entrada(4, 4), QString());
}

void PruebaRejillaMenu::lasDemasLasHaceElEditor() {
    RejillaDePrueba r;
    r.poner(0, 0, "abajo");
    pedir(r, r.centro(0, 0), elegir(QStringLiteral("insertar_fila_arriba")));
    QCOMPARE(r.entrada(1, 0), QStringLiteral("abajo"));
    QCOMPARE(r.senales(), QStringLiteral("1 1 0"));
    r.seleccionar(0, 0, 1, 1);
    pedir(r, r.centro(0, 0), elegir(QStringLiteral("fusionar")));
    QCOMPARE(r.activa().fusiones.size(), std::size_t{1});
}

void PruebaRejillaMenu::confirmaLaEdicion() {
    RejillaDePrueba r;
    QTest::keyClicks(&r.hoja, "9");
    pedir(r, r.centro(3, 3), nada);
    QVERIFY(!r.hoja.editando());
    QCOMPARE(r.entrada(0, 0), QStringLiteral("9"));
}

void PruebaRejillaMenu::laTeclaDeMenuEsDeLaCeldaActiva() {
    RejillaDePrueba r;
    r.seleccionar(0, 0, 4, 1);
    // El entorno manda el centro de lo que la vista dice que es la celda activa.
    const QPoint centro = r.hoja.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QPoint abierto;
    pedir(
        r, centro, [&](QMenu& menu) { abierto = menu.pos(); }, QContextMenuEvent::Keyboard);
    QCOMPARE(r.seleccion(), QStringLiteral("A1>B5"));
    QVERIFY(r.rect(4, 1).contains(r.hoja.viewport()->mapFromGlobal(abierto)));
    // Con la celda activa fuera de la vista, primero se enseña.
    r.seleccionar(300, 30);
    pedir(
        r, QPoint(-500, -500), [&](QMenu& menu) { abierto = menu.pos(); },
        QContextMenuEvent::Keyboard);
    QCOMPARE(r.seleccion(), QStringLiteral("AE301"));
    QVERIFY(r.hoja.viewport()->rect().contains(r.centro(300, 30)));
}

void PruebaRejillaMenu::cerrarLaVistaConElMenuAbierto() {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    editor::Editor editor(libro, motor);
    auto* hoja = new interfaz::WidgetHoja(libro, editor);
    hoja->resize(400, 300);
    hoja->show();
    QVERIFY(QTest::qWaitForWindowExposed(hoja));
    const QPointer<interfaz::WidgetHoja> vivo(hoja);
    QTimer::singleShot(0, qApp, [hoja] { delete hoja; });
    const QPoint donde(100, 100);
    QContextMenuEvent evento(QContextMenuEvent::Mouse, donde, hoja->mapToGlobal(donde));
    QApplication::sendEvent(hoja->viewport(), &evento);
    QVERIFY(vivo == nullptr);
}

REGISTRAR_PRUEBAS(PruebaRejillaMenu);

#include "prueba_rejilla_menu.moc"
