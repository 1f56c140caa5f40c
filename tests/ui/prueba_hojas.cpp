// Las pestañas, su menú y los cuadros que renombran y eliminan hojas.

#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QContextMenuEvent>
#include <QObject>
#include <QTest>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

void pedirMenu(QTabBar* pestanas, const QPoint& punto) {
    QContextMenuEvent evento(QContextMenuEvent::Mouse, punto, pestanas->mapToGlobal(punto));
    QApplication::sendEvent(pestanas, &evento);
}

} // namespace

class PruebaHojas : public QObject {
    Q_OBJECT

  private slots:
    void hayUnaPestanaPorHoja() {
        VentanaDePrueba p;
        QCOMPARE(p.pestanas()->count(), 1);
        QCOMPARE(p.pestanas()->tabText(0), QStringLiteral("Hoja 1"));
        QVERIFY(!p.pestanas()->expanding());
        QVERIFY(!p.pestanas()->drawBase());
        auto* mas = p.control<QToolButton>("btnNuevaHoja");
        QCOMPARE(mas->text(), QStringLiteral("+"));
        QCOMPARE(mas->toolTip(), QStringLiteral("Hoja nueva"));
    }

    void elMasVaPegadoALasPestanas() {
        VentanaDePrueba p;
        p.ventana();
        QCoreApplication::processEvents();
        const QWidget* mas = p.control<QToolButton>("btnNuevaHoja");
        const int fin = p.pestanas()->x() + p.pestanas()->tabRect(0).right();
        QVERIFY(mas->x() - fin < 16);
    }

    void masAgregaUnaHojaYLaActiva() {
        VentanaDePrueba p;
        p.editor().seleccionar(5, 5);
        p.pulsar(p.control<QToolButton>("btnNuevaHoja"));
        QCOMPARE(p.libro().hojas.size(), std::size_t{2});
        QCOMPARE(p.libro().hojaActiva, 1);
        QCOMPARE(p.pestanas()->currentIndex(), 1);
        QCOMPARE(p.pestanas()->tabText(1), QStringLiteral("Hoja 2"));
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
        QVERIFY(p.libro().modificado);
        p.accion("Insertar", "Hoja nueva")->trigger();
        QCOMPARE(p.libro().hojaActiva, 2);
    }

    void noHayMasHojasDeLasQueSeGuardan() {
        VentanaDePrueba p;
        while (p.libro().hojas.size() < 1024) {
            p.libro().agregarHoja();
        }
        p.ventana().agregarHoja();
        QCOMPARE(p.libro().hojas.size(), std::size_t{1024});
    }

    void pulsarUnaPestanaCambiaDeHoja() {
        VentanaDePrueba p;
        p.escribir(0, 0, "en la primera");
        p.ventana().agregarHoja();
        p.escribir(3, 3, "en la segunda");
        p.pulsarPestana(0);
        QCOMPARE(p.libro().hojaActiva, 0);
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
        QCOMPARE(p.control<QLineEdit>("entradaFormula")->text(), QStringLiteral("en la primera"));
        p.ventana().cambiarHoja(7);
        QCOMPARE(p.libro().hojaActiva, 0);
        p.ventana().cambiarHoja(-1);
        QCOMPARE(p.libro().hojaActiva, 0);
    }

    void deshacerDevuelveLasPestanas() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        p.ventana().agregarHoja();
        p.accion("Editar", "Deshacer")->trigger();
        QCOMPARE(p.pestanas()->count(), 1);
        QCOMPARE(p.entrada(0, 0), std::string("1"));
        p.accion("Editar", "Rehacer")->trigger();
        QCOMPARE(p.pestanas()->count(), 2);
        QCOMPARE(p.pestanas()->currentIndex(), 1);
    }

    void laHojaNuevaLlegaAQuienYaLaNombraba() {
        VentanaDePrueba p;
        p.escribir(0, 0, "='Hoja 2'!A1+1");
        QCOMPARE(p.valor(0, 0), QStringLiteral("#¡REF!"));
        p.ventana().agregarHoja();
        p.escribir(0, 0, "41");
        p.pulsarPestana(0);
        QCOMPARE(p.valor(0, 0), QStringLiteral("42"));
    }

    void dobleClicRenombra() {
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.escribir(0, 0, "='Hoja 1'!A1+1");
        p.ventana();
        Dialogos d;
        d.luego([](QWidget* w) {
            auto* linea = w->findChild<QLineEdit*>();
            QCOMPARE(w->windowTitle(), QStringLiteral("Renombrar hoja"));
            QCOMPARE(w->findChild<QLabel*>()->text(), QStringLiteral("Nombre de la hoja:"));
            QCOMPARE(linea->text(), QStringLiteral("Hoja 1"));
            linea->setText(QStringLiteral("  Ventas  "));
            QTest::keyClick(linea, Qt::Key_Return);
        });
        QTest::mouseDClick(p.pestanas(), Qt::LeftButton, {}, p.pestanas()->tabRect(0).center());
        QVERIFY(d.completo());
        QCOMPARE(p.libro().hojas[0]->nombre, std::string("Ventas"));
        QCOMPARE(p.pestanas()->tabText(0), QStringLiteral("Ventas"));
        QVERIFY(p.entrada(0, 0, 1).find("Ventas") != std::string::npos);
    }

    void renombrarATodoTipoDeNombres_data() {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("queda");
        QTest::addColumn<bool>("aviso");
        QTest::newRow("otro") << "Gastos"
                              << "Gastos" << false;
        QTest::newRow("el suyo con espacios") << "  Hoja 1 "
                                              << "Hoja 1" << false;
        QTest::newRow("vacío") << ""
                               << "Hoja 1" << false;
        QTest::newRow("en blanco") << "   "
                                   << "Hoja 1" << false;
        QTest::newRow("el de otra") << "Hoja 2"
                                    << "Hoja 1" << true;
        QTest::newRow("otra caja") << "hoja 2"
                                   << "hoja 2" << false;
    }
    void renombrarATodoTipoDeNombres() {
        QFETCH(QString, escrito);
        QFETCH(QString, queda);
        QFETCH(bool, aviso);
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        Dialogos d;
        d.escribir(escrito);
        if (aviso) {
            d.pulsar(QMessageBox::Ok);
        }
        p.ventana().renombrarHoja(0);
        QVERIFY(d.completo());
        QCOMPARE(QString::fromStdString(p.libro().hojas[0]->nombre), queda);
        if (aviso) {
            QCOMPARE(d.vistos().at(0).texto, QStringLiteral("Ya existe una hoja con ese nombre."));
            QCOMPARE(d.vistos().at(0).icono, QMessageBox::Warning);
            QCOMPARE(d.vistos().at(0).titulo, QStringLiteral("Marnel"));
        }
    }

    void cancelarElNombreNoHaceNada() {
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.cerrar();
        p.ventana().renombrarHoja(0);
        QVERIFY(d.completo());
        QCOMPARE(p.libro().hojas[0]->nombre, std::string("Hoja 1"));
        QVERIFY(!p.libro().modificado);
        p.ventana().renombrarHoja(9);
    }

    void elMenuDeUnaPestana() {
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.luego([](QWidget* w) {
            auto* menu = qobject_cast<QMenu*>(w);
            QVERIFY(menu != nullptr);
            QCOMPARE(menu->actions().size(), 2);
            QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("Renombrar hoja"));
            QCOMPARE(menu->actions().at(1)->text(), QStringLiteral("Eliminar hoja"));
            QVERIFY(!menu->actions().at(1)->isEnabled());
            menu->close();
        });
        pedirMenu(p.pestanas(), p.pestanas()->tabRect(0).center());
        QVERIFY(d.completo());
        p.ventana().agregarHoja();
        d.elegir("Eliminar hoja").pulsar(QMessageBox::Yes);
        pedirMenu(p.pestanas(), p.pestanas()->tabRect(0).center());
        QVERIFY(d.completo());
        QCOMPARE(p.libro().hojas.size(), std::size_t{1});
        QCOMPARE(p.libro().hojas[0]->nombre, std::string("Hoja 2"));
        d.elegir("Renombrar hoja").escribir("Única");
        pedirMenu(p.pestanas(), p.pestanas()->tabRect(0).center());
        QVERIFY(d.completo());
        QCOMPARE(p.pestanas()->tabText(0), QStringLiteral("Única"));
        // Fuera de las pestañas no hay menú: ninguno queda por atender.
        pedirMenu(p.pestanas(), QPoint(p.pestanas()->width() + 5, 3));
        QVERIFY(d.completo());
    }

    void elTecladoAlcanzaLasPestanas() {
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.pestanas()->setFocus();
        QTest::keyClick(p.pestanas(), Qt::Key_Left);
        QCOMPARE(p.libro().hojaActiva, 0);
        Dialogos d;
        d.escribir("Con F2");
        QTest::keyClick(p.pestanas(), Qt::Key_F2);
        QVERIFY(d.completo());
        QCOMPARE(p.libro().hojas[0]->nombre, std::string("Con F2"));
        // La tecla Menú actúa sobre la pestaña actual, esté donde esté el ratón.
        d.elegir("Eliminar hoja").pulsar(QMessageBox::Yes);
        const QPoint lejos(500, 3);
        QContextMenuEvent evento(QContextMenuEvent::Keyboard, lejos,
                                 p.pestanas()->mapToGlobal(lejos));
        QApplication::sendEvent(p.pestanas(), &evento);
        QVERIFY(d.completo());
        QCOMPARE(p.libro().hojas.size(), std::size_t{1});
        QCOMPARE(p.libro().hojas[0]->nombre, std::string("Hoja 2"));
    }

    void eliminarPregunta_data() {
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<int>("quedan");
        QTest::newRow("sí") << int(QMessageBox::Yes) << 1;
        QTest::newRow("no") << int(QMessageBox::No) << 2;
        QTest::newRow("cerrar") << int(QMessageBox::NoButton) << 2;
    }
    void eliminarPregunta() {
        QFETCH(int, respuesta);
        QFETCH(int, quedan);
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        p.ventana().agregarHoja();
        p.editor().seleccionar(4, 4);
        const std::size_t pasos = p.editor().pasosDeshacer();
        Dialogos d;
        if (respuesta == QMessageBox::NoButton) {
            d.cerrar();
        } else {
            d.pulsar(static_cast<QMessageBox::StandardButton>(respuesta));
        }
        p.ventana().eliminarHoja(1);
        QVERIFY(d.completo());
        QCOMPARE(static_cast<int>(p.libro().hojas.size()), quedan);
        QCOMPARE(p.pestanas()->count(), quedan);
        QCOMPARE(p.editor().pasosDeshacer(), pasos);
        const auto& cuadro = d.vistos().at(0);
        QCOMPARE(cuadro.titulo, QStringLiteral("Marnel"));
        QCOMPARE(cuadro.texto, QStringLiteral("¿Eliminar la hoja \"Hoja 2\"? Esta acción no se "
                                              "puede deshacer."));
        QCOMPARE(cuadro.icono, QMessageBox::Question);
        QCOMPARE(cuadro.botones, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(cuadro.predeterminado, QMessageBox::No);
        if (quedan == 1) {
            QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
            QCOMPARE(p.libro().hojaActiva, 0);
        }
    }

    void laUltimaHojaNoSeElimina() {
        VentanaDePrueba p;
        p.ventana();
        const Dialogos d;
        p.ventana().eliminarHoja(0);
        QCOMPARE(d.inesperados(), 0);
        QCOMPARE(p.libro().hojas.size(), std::size_t{1});
    }

    void eliminarRecalculaLoQueLaNombraba() {
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.escribir(0, 0, "7");
        p.pulsarPestana(0);
        p.escribir(0, 0, "='Hoja 2'!A1+1");
        QCOMPARE(p.valor(0, 0), QStringLiteral("8"));
        Dialogos d;
        d.pulsar(QMessageBox::Yes);
        p.ventana().eliminarHoja(1);
        QVERIFY(d.completo());
        QCOMPARE(p.valor(0, 0), QStringLiteral("#¡REF!"));
    }

    void losNombresHostilesSeVenTalCual_data() {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QString>("rotulo");
        QTest::newRow("marcas") << "<img src=x>"
                                << "<img src=x>";
        QTest::newRow("marcador") << "%1 y %2"
                                  << "%1 y %2";
        QTest::newRow("ampersand") << "I&D"
                                   << "I&&D";
        QTest::newRow("saltos") << "a\nb\tc"
                                << "a b c";
    }
    void losNombresHostilesSeVenTalCual() {
        QFETCH(QString, nombre);
        QFETCH(QString, rotulo);
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.libro().hojas[0]->nombre = nombre.toStdString();
        p.ventana().refrescarTodo();
        QCOMPARE(p.pestanas()->tabText(0), rotulo);
        Dialogos d;
        d.pulsar(QMessageBox::No);
        p.ventana().eliminarHoja(0);
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).formato, Qt::PlainText);
        QVERIFY(d.vistos().at(0).texto.contains(
            QString(nombre).replace(u'\n', u' ').replace(u'\t', u' ')));
    }

    void unNombreLarguisimoNoDeformaLaVentana() {
        VentanaDePrueba p;
        const int ancho = p.ventana().width();
        p.libro().hojas[0]->nombre = "<b>" + std::string(100000, 'x');
        p.ventana().refrescarTodo();
        QCoreApplication::processEvents();
        QVERIFY(p.pestanas()->tabRect(0).width() <= 260);
        QCOMPARE(p.ventana().width(), ancho);
        QVERIFY(p.pestanas()->tabToolTip(0).size() < 2000);
        QVERIFY(p.pestanas()->tabToolTip(0).contains(QStringLiteral("&lt;b&gt;")));
    }
};

REGISTRAR_PRUEBAS(PruebaHojas);
#include "prueba_hojas.moc"
