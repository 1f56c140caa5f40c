// La cinta: grupos, botones, medidas y lo que hace cada uno.

#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"
#include "ui/boton_alineacion.h"

#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLayout>
#include <QObject>
#include <QRegularExpression>
#include <QTest>
#include <QToolBar>
#include <QToolTip>

using pruebas::VentanaDePrueba;

namespace {

nucleo::Formato formatoDe(VentanaDePrueba& p, int fila, int col) {
    const nucleo::Celda* celda = p.libro().hojas.at(0)->celda(fila, col);
    return celda == nullptr ? nucleo::Formato{} : celda->formato;
}

} // namespace

class PruebaCinta : public QObject {
    Q_OBJECT

  private slots:
    void laBarraNoSeMueve() {
        VentanaDePrueba p;
        const auto barras = p.ventana().findChildren<QToolBar*>();
        QCOMPARE(barras.size(), 1);
        QCOMPARE(barras[0]->windowTitle(), QStringLiteral("Barra"));
        QVERIFY(!barras[0]->isMovable());
        QVERIFY(!barras[0]->isFloatable());
        int separadores = 0;
        for (const QAction* accion : barras[0]->actions()) {
            separadores += accion->isSeparator() ? 1 : 0;
        }
        QCOMPARE(separadores, 5);
    }

    void cadaGrupoTieneSusBotones_data() {
        QTest::addColumn<QString>("grupo");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QStringList>("glifos");
        QTest::addColumn<QStringList>("rotulos");
        QTest::newRow("historial")
            << "g_historial"
            << "Historial" << QStringList{"↩", "↪"} << QStringList{"Deshacer", "Rehacer"};
        QTest::newRow("memoria") << "g_memoria"
                                 << "Memoria" << QStringList{"✂", "⎘", "⊕"}
                                 << QStringList{"Cortar", "Copiar", "Pegar"};
        QTest::newRow("estilo") << "g_estilo"
                                << "Estilo de celda" << QStringList{"N", "I", "S"}
                                << QStringList{"Negrita", "Cursiva", "Subrayado"};
        QTest::newRow("alineación") << "g_alineacion"
                                    << "Alineación" << QStringList{"", "", ""}
                                    << QStringList{"Izquierda", "Centrar", "Derecha"};
        QTest::newRow("número") << "g_numero"
                                << "Número" << QStringList{"$", "%", ",0", ",00"}
                                << QStringList{"Moneda", "Porcentaje", "Menos decimales",
                                               "Más decimales"};
        QTest::newRow("celdas") << "g_celdas"
                                << "Celdas" << QStringList{"⊞", "⊟"}
                                << QStringList{"Fusionar", "Separar"};
    }
    void cadaGrupoTieneSusBotones() {
        QFETCH(QString, grupo);
        QFETCH(QString, titulo);
        QFETCH(QStringList, glifos);
        QFETCH(QStringList, rotulos);
        VentanaDePrueba p;
        auto* marco = p.ventana().findChild<QFrame*>(grupo);
        QVERIFY(marco != nullptr);
        QCOMPARE(marco->frameShape(), QFrame::NoFrame);
        QCOMPARE(marco->findChild<QLabel*>(QStringLiteral("header_grupo"))->text(), titulo);
        auto* fila = marco->findChild<QWidget*>(QStringLiteral("fila_btns"));
        QVERIFY(fila != nullptr);
        QStringList glifosVistos;
        QStringList rotulosVistos;
        for (const QWidget* ranura : fila->findChildren<QWidget*>(QStringLiteral("slot_btn"))) {
            const auto* boton = ranura->findChild<QToolButton*>(QStringLiteral("btn_toolbar"));
            const auto* rotulo = ranura->findChild<QLabel*>(QStringLiteral("lbl_toolbar"));
            QCOMPARE(ranura->layout()->contentsMargins(), QMargins(2, 1, 2, 1));
            QCOMPARE(boton->size(), QSize(30, 30));
            QVERIFY(rotulo->minimumWidth() >= 56);
            QCOMPARE(boton->toolTip(), rotulo->text());
            QCOMPARE(boton->accessibleName(), rotulo->text());
            QVERIFY2(rotulo->width() >= rotulo->fontMetrics().horizontalAdvance(rotulo->text()),
                     qPrintable(rotulo->text()));
            glifosVistos << boton->text();
            rotulosVistos << rotulo->text();
        }
        QCOMPARE(glifosVistos, glifos);
        QCOMPARE(rotulosVistos, rotulos);
    }

    void cadaBotonLlevaSuEstilo_data() {
        QTest::addColumn<QString>("rotulo");
        QTest::addColumn<QString>("estilo");
        QTest::newRow("negrita") << "Negrita"
                                 << "font-weight: 900;";
        QTest::newRow("cursiva") << "Cursiva"
                                 << "font-style: italic;";
        QTest::newRow("subrayado") << "Subrayado"
                                   << "text-decoration: underline;";
        QTest::newRow("menos") << "Menos decimales"
                               << "font-weight: 700;";
        QTest::newRow("más") << "Más decimales"
                             << "font-weight: 700;";
        QTest::newRow("otro") << "Moneda"
                              << "";
    }
    void cadaBotonLlevaSuEstilo() {
        QFETCH(QString, rotulo);
        QFETCH(QString, estilo);
        VentanaDePrueba p;
        // El tamaño de la letra lo pone el igualador.
        static const QRegularExpression tamano(QStringLiteral("font-size: \\d+px;"));
        QCOMPARE(p.boton(rotulo)->styleSheet().remove(tamano).trimmed(), estilo);
    }

    void losGruposVanDeIzquierdaADerecha() {
        VentanaDePrueba p;
        int anterior = -1;
        for (const char* nombre :
             {"g_historial", "g_memoria", "g_estilo", "g_alineacion", "g_numero", "g_celdas"}) {
            auto* grupo = p.control<QFrame>(nombre);
            QVERIFY2(grupo->isVisible(), nombre);
            const int x = grupo->mapTo(&p.ventana(), QPoint(0, 0)).x();
            QVERIFY2(x > anterior, nombre);
            anterior = x;
        }
    }

    void soloElEstiloEsMarcable() {
        VentanaDePrueba p;
        QStringList marcables;
        for (const QToolButton* boton :
             p.ventana().findChildren<QToolButton*>(QStringLiteral("btn_toolbar"))) {
            if (boton->isCheckable()) {
                marcables << boton->toolTip();
            }
        }
        QCOMPARE(marcables, QStringList({"Negrita", "Cursiva", "Subrayado"}));
    }

    void losEstilosSeAlternanYSeReflejan() {
        VentanaDePrueba p;
        p.editor().seleccionar(1, 1);
        p.pulsar(p.boton("Negrita"));
        p.pulsar(p.boton("Cursiva"));
        p.pulsar(p.boton("Subrayado"));
        QVERIFY(formatoDe(p, 1, 1).negrita);
        QVERIFY(formatoDe(p, 1, 1).cursiva);
        QVERIFY(formatoDe(p, 1, 1).subrayado);
        QVERIFY(p.boton("Negrita")->isChecked());
        p.hoja()->setFocus();
        QTest::keyClick(p.hoja(), Qt::Key_Down);
        QVERIFY(!p.boton("Negrita")->isChecked());
        QVERIFY(!p.boton("Cursiva")->isChecked());
        QVERIFY(!p.boton("Subrayado")->isChecked());
        QTest::keyClick(p.hoja(), Qt::Key_Up);
        QVERIFY(p.boton("Negrita")->isChecked());
        p.pulsar(p.boton("Negrita"));
        QVERIFY(!formatoDe(p, 1, 1).negrita);
        QVERIFY(!p.boton("Negrita")->isChecked());
        QVERIFY(p.boton("Cursiva")->isChecked());
    }

    void laAlineacionYLosNumeros() {
        VentanaDePrueba p;
        p.escribir(0, 0, "12,345");
        p.editor().seleccionar(0, 0);
        p.pulsar(p.boton("Izquierda"));
        QCOMPARE(formatoDe(p, 0, 0).alineacion, nucleo::AlineacionH::Izquierda);
        p.pulsar(p.boton("Centrar"));
        QCOMPARE(formatoDe(p, 0, 0).alineacion, nucleo::AlineacionH::Centro);
        p.pulsar(p.boton("Derecha"));
        QCOMPARE(formatoDe(p, 0, 0).alineacion, nucleo::AlineacionH::Derecha);
        p.pulsar(p.boton("Moneda"));
        QCOMPARE(formatoDe(p, 0, 0).numero, nucleo::FormatoNumero::Moneda);
        p.pulsar(p.boton("Más decimales"));
        QCOMPARE(formatoDe(p, 0, 0).decimales, std::uint8_t{3});
        p.pulsar(p.boton("Menos decimales"));
        p.pulsar(p.boton("Menos decimales"));
        QCOMPARE(formatoDe(p, 0, 0).decimales, std::uint8_t{1});
        p.pulsar(p.boton("Porcentaje"));
        QCOMPARE(formatoDe(p, 0, 0).numero, nucleo::FormatoNumero::Porcentaje);
    }

    void fusionarYSeparar() {
        VentanaDePrueba p;
        p.editor().seleccionar(0, 0);
        p.editor().extender(0, 2);
        p.pulsar(p.boton("Fusionar"));
        QCOMPARE(p.libro().hojas[0]->fusiones.size(), std::size_t{1});
        QVERIFY(p.ventana().windowTitle().contains(u'*'));
        p.pulsar(p.boton("Separar"));
        QVERIFY(p.libro().hojas[0]->fusiones.empty());
    }

    void deshacerYRehacerSeApaganSinPasos() {
        VentanaDePrueba p;
        QVERIFY(!p.boton("Deshacer")->isEnabled());
        QVERIFY(!p.boton("Rehacer")->isEnabled());
        p.escribir(0, 0, "1");
        QVERIFY(p.boton("Deshacer")->isEnabled());
        p.pulsar(p.boton("Deshacer"));
        QCOMPARE(p.entrada(0, 0), std::string());
        QVERIFY(!p.boton("Deshacer")->isEnabled());
        QVERIFY(p.boton("Rehacer")->isEnabled());
        p.pulsar(p.boton("Rehacer"));
        QCOMPARE(p.entrada(0, 0), std::string("1"));
        QVERIFY(!p.boton("Rehacer")->isEnabled());
    }

    void pegarSigueAlPortapapeles() {
        QGuiApplication::clipboard()->clear();
        VentanaDePrueba p;
        QVERIFY(!p.boton("Pegar")->isEnabled());
        QCOMPARE(p.boton("Pegar")->property("encendido").toBool(), false);
        QGuiApplication::clipboard()->setText(QStringLiteral("a\tb"));
        QVERIFY(p.boton("Pegar")->isEnabled());
        QCOMPARE(p.boton("Pegar")->property("encendido").toBool(), true);
        p.editor().seleccionar(1, 0);
        p.pulsar(p.boton("Pegar"));
        QCOMPARE(p.entrada(1, 1), std::string("b"));
        QGuiApplication::clipboard()->clear();
        QVERIFY(!p.boton("Pegar")->isEnabled());
        p.editor().seleccionar(1, 0);
        p.pulsar(p.boton("Copiar"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a"));
        QVERIFY(p.boton("Pegar")->isEnabled());
        p.pulsar(p.boton("Cortar"));
        QCOMPARE(p.entrada(1, 0), std::string());
        // Las celdas copiadas bastan aunque otro programa vacíe el portapapeles.
        QGuiApplication::clipboard()->clear();
        QVERIFY(p.boton("Pegar")->isEnabled());
    }

    void losPictogramasDeAlineacionSonDistintos() {
        VentanaDePrueba p;
        QList<QImage> imagenes;
        for (const char* rotulo : {"Izquierda", "Centrar", "Derecha"}) {
            QToolButton* boton = p.boton(QString::fromUtf8(rotulo));
            QVERIFY(qobject_cast<interfaz::BotonAlineacion*>(boton) != nullptr);
            // Sin el borde, cuyas esquinas suaviza Qt a su manera.
            imagenes << boton->grab().toImage().copy(4, 4, 22, 22);
        }
        QVERIFY(imagenes[0] != imagenes[1]);
        QVERIFY(imagenes[1] != imagenes[2]);
        // Izquierda y derecha son la misma imagen en un espejo.
        QCOMPARE(imagenes[0].mirrored(true, false), imagenes[2]);
    }

    void losGlobosNoTomanLaLetraDelBoton() {
        VentanaDePrueba p;
        QToolButton* boton = p.boton(QStringLiteral("Cursiva"));
        const QPoint punto = boton->rect().center();
        QHelpEvent ayuda(QEvent::ToolTip, punto, boton->mapToGlobal(punto));
        QApplication::sendEvent(boton, &ayuda);
        const QWidget* globo = nullptr;
        for (const QWidget* w : QApplication::topLevelWidgets()) {
            if (w->inherits("QTipLabel") && w->isVisible()) {
                globo = w;
            }
        }
        QVERIFY(globo != nullptr);
        QVERIFY(!globo->font().italic());
        QVERIFY(globo->font().pixelSize() < 16);
        QToolTip::hideText();
    }

    void laTintaDeLosSimbolosEsPareja() {
        VentanaDePrueba p;
        for (const QToolButton* boton :
             p.ventana().findChildren<QToolButton*>(QStringLiteral("btn_toolbar"))) {
            if (boton->text().isEmpty()) {
                continue;
            }
            const QRectF tinta = QFontMetricsF(boton->font()).tightBoundingRect(boton->text());
            QVERIFY2(tinta.width() <= 22 && tinta.height() <= 18, qPrintable(boton->toolTip()));
            QVERIFY2(tinta.height() >= 9, qPrintable(boton->toolTip()));
        }
    }
};

REGISTRAR_PRUEBAS(PruebaCinta);
#include "prueba_cinta.moc"
