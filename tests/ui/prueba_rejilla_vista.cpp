#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"

#include <QScrollBar>

#include <algorithm>
#include <limits>

using pruebas::RejillaDePrueba;

class PruebaRejillaVista : public QObject {
    Q_OBJECT

  private slots:
    void empiezaConElTemaOscuroYAlCienPorCien();
    void elZoomSeAcota();
    void lasBarrasSiguenAlContenido();
    void asegurarVisibleDesplazaLoJusto();
    void loInmovilizadoNoHaceDesplazar();
    void unaFusionMayorQueLaVistaNoOscila();
    void unaFusionACaballoNoMueveLaVista();
    void elZoomConservaLoQueSeVe();
    void laSeleccionSePintaOrdenada();
    void seEnsenaLaHojaActiva();
    void sinHojaSePintaSinCaerse();
    void hojasHostiles_data();
    void hojasHostiles();

  private:
    static int x(RejillaDePrueba& r) { return r.hoja.horizontalScrollBar()->value(); }
    static int y(RejillaDePrueba& r) { return r.hoja.verticalScrollBar()->value(); }
};

void PruebaRejillaVista::empiezaConElTemaOscuroYAlCienPorCien() {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    editor::Editor editor(libro, motor);
    const interfaz::WidgetHoja hoja(libro, editor);
    QVERIFY(hoja.tema().oscuro);
    QCOMPARE(hoja.zoomPorcentaje(), 100);
    QCOMPARE(hoja.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(hoja.horizontalScrollBar()->singleStep(), 24);
    QCOMPARE(hoja.verticalScrollBar()->singleStep(), 24);
    QVERIFY(!hoja.editando());
    QVERIFY(!hoja.editorCelda()->hasFrame());
}

void PruebaRejillaVista::elZoomSeAcota() {
    RejillaDePrueba r;
    r.hoja.establecerZoom(10);
    QCOMPARE(r.hoja.zoomPorcentaje(), 50);
    QCOMPARE(r.hoja.renderizador().zoom, 0.5);
    r.hoja.establecerZoom(500);
    QCOMPARE(r.hoja.zoomPorcentaje(), 200);
    QCOMPARE(r.hoja.renderizador().zoom, 2.0);
    r.hoja.establecerZoom(std::numeric_limits<int>::min());
    QCOMPARE(r.hoja.zoomPorcentaje(), 50);
}

void PruebaRejillaVista::lasBarrasSiguenAlContenido() {
    RejillaDePrueba r;
    const auto comprobar = [&] {
        const renderizador::Renderizador& g = r.hoja.renderizador();
        const int visibleX = r.hoja.viewport()->width() - (48 + g.anchoPanelFijo());
        const int visibleY = r.hoja.viewport()->height() - (26 + g.altoPanelFijo());
        QCOMPARE(r.hoja.horizontalScrollBar()->minimum(), 0);
        QCOMPARE(r.hoja.horizontalScrollBar()->maximum(),
                 std::max(0, g.tamanoContenido().width() - visibleX));
        QCOMPARE(r.hoja.verticalScrollBar()->maximum(),
                 std::max(0, g.tamanoContenido().height() - visibleY));
        QCOMPARE(r.hoja.horizontalScrollBar()->pageStep(), std::max(1, visibleX));
        QCOMPARE(r.hoja.verticalScrollBar()->pageStep(), std::max(1, visibleY));
    };
    comprobar();
    r.poner(500, 100, "lejos");
    r.hoja.refrescar();
    comprobar();
    r.hoja.establecerZoom(150);
    comprobar();
    r.activa().filasInmovilizadas = 3;
    r.activa().columnasInmovilizadas = 2;
    r.hoja.refrescar();
    comprobar();
    r.hoja.resize(300, 200);
    QApplication::processEvents();
    comprobar();
    r.activa().columnasInmovilizadas = 50; // más que la vista
    r.hoja.refrescar();
    comprobar();
}

void PruebaRejillaVista::asegurarVisibleDesplazaLoJusto() {
    RejillaDePrueba r;
    const int ancho = r.hoja.viewport()->width();
    r.seleccionar(0, 20);
    r.hoja.asegurarVisible();
    // Su último píxel queda a dos del borde, contando desde el ancho de la vista.
    QCOMPARE(r.rect(0, 20).right(), ancho - 2);
    const int antes = x(r);
    r.seleccionar(0, 15);
    r.hoja.asegurarVisible();
    QCOMPARE(x(r), antes);
    r.seleccionar(0, 3);
    r.hoja.asegurarVisible();
    QCOMPARE(r.rect(0, 3).left(), 48);
    r.seleccionar(60, 3);
    r.hoja.asegurarVisible();
    QCOMPARE(r.rect(60, 3).bottom(), r.hoja.viewport()->height() - 2);
    r.seleccionar(10, 3);
    r.hoja.asegurarVisible();
    QCOMPARE(r.rect(10, 3).top(), 26);
}

void PruebaRejillaVista::loInmovilizadoNoHaceDesplazar() {
    RejillaDePrueba r;
    r.activa().filasInmovilizadas = 2;
    r.activa().columnasInmovilizadas = 1;
    r.hoja.refrescar();
    r.hoja.horizontalScrollBar()->setValue(300);
    r.hoja.verticalScrollBar()->setValue(200);
    r.seleccionar(1, 0);
    r.hoja.asegurarVisible();
    QCOMPARE(x(r), 300);
    QCOMPARE(y(r), 200);
    r.seleccionar(3, 1);
    r.hoja.asegurarVisible();
    QCOMPARE(r.rect(3, 1).left(), 48 + 88);
    QCOMPARE(r.rect(3, 1).top(), 26 + 48);
}

void PruebaRejillaVista::unaFusionMayorQueLaVistaNoOscila() {
    RejillaDePrueba r;
    r.activa().fusionar(2, 2, 90, 30);
    r.seleccionar(2, 2);
    r.hoja.asegurarVisible();
    const QPoint primera(x(r), y(r));
    for (int vez = 0; vez < 3; ++vez) {
        r.hoja.asegurarVisible();
        QCOMPARE(QPoint(x(r), y(r)), primera);
    }
    QCOMPARE(r.rect(2, 2).topLeft(), QPoint(48, 26));
}

void PruebaRejillaVista::unaFusionACaballoNoMueveLaVista() {
    RejillaDePrueba r;
    r.activa().columnasInmovilizadas = 1;
    r.activa().fusionar(0, 0, 0, 5);
    r.hoja.refrescar();
    r.hoja.horizontalScrollBar()->setValue(500);
    r.seleccionar(0, 0);
    r.hoja.asegurarVisible();
    QCOMPARE(x(r), 500);
}

void PruebaRejillaVista::elZoomConservaLoQueSeVe() {
    RejillaDePrueba r;
    r.poner(20000, 50, "lejos");
    r.hoja.refrescar();
    r.hoja.verticalScrollBar()->setValue(10000 * 24);
    r.hoja.horizontalScrollBar()->setValue(20 * 88);
    for (const int zoom : {150, 75, 200, 100}) {
        r.hoja.establecerZoom(zoom);
        QCOMPARE(r.hoja.renderizador().filaEnEncabezado({5, 26}), 10000);
        QCOMPARE(r.hoja.renderizador().colEnEncabezado({48, 5}), 20);
    }
}

void PruebaRejillaVista::laSeleccionSePintaOrdenada() {
    RejillaDePrueba r;
    r.seleccionar(5, 6, 2, 3);
    QVERIFY(r.hoja.seleccionVista() == (renderizador::SeleccionVista{2, 3, 5, 6, 2, 3}));
    r.seleccionar(2, 6, 5, 3);
    QVERIFY(r.hoja.seleccionVista() == (renderizador::SeleccionVista{2, 3, 5, 6, 5, 3}));
}

void PruebaRejillaVista::seEnsenaLaHojaActiva() {
    RejillaDePrueba r;
    r.activa().celdaMut(3, 3).formato.colorFondo = 0xFF00FF00;
    r.libro.agregarHoja();
    const auto color = [&] { return r.hoja.viewport()->grab().toImage().pixel(r.centro(3, 3)); };
    QCOMPARE(color(), 0xFF00FF00U);
    r.libro.hojaActiva = 1;
    r.hoja.refrescar();
    QCOMPARE(color(), r.hoja.tema().fondo.rgb());
    QVERIFY(r.hoja.renderizador().hoja == r.libro.hojas[1].get());
    r.hoja.establecerTema(renderizador::temaOscuro());
    QCOMPARE(color(), 0xFFFAF6F1U);
}

void PruebaRejillaVista::sinHojaSePintaSinCaerse() {
    RejillaDePrueba r;
    for (const int indice : {-1, 5, std::numeric_limits<int>::max()}) {
        r.libro.hojaActiva = indice;
        QVERIFY(r.hoja.renderizador().hoja == nullptr);
        r.hoja.refrescar();
        r.hoja.asegurarVisible();
        r.hoja.grab();
        r.pinchar(QPoint(200, 200));
        r.mover(QPointF(300, 300), Qt::NoButton);
        r.tecla(Qt::Key_Down);
        QCOMPARE(r.hoja.horizontalScrollBar()->maximum(), 0);
    }
}

void PruebaRejillaVista::hojasHostiles_data() {
    QTest::addColumn<int>("valor");
    for (const int valor : {-7, 0, 1000000, 2000000000, std::numeric_limits<int>::max(),
                            std::numeric_limits<int>::min()}) {
        QTest::newRow(qPrintable(QString::number(valor))) << valor;
    }
}

void PruebaRejillaVista::hojasHostiles() {
    QFETCH(int, valor);
    RejillaDePrueba r;
    nucleo::Hoja& hoja = r.activa();
    for (int i = 0; i < 30; ++i) {
        hoja.anchos[i * 3] = valor;
        hoja.altos[i * 3] = valor;
    }
    hoja.fusiones = {{-5, -5, valor, valor}, {valor, valor, 4, 4}, {8, 8, 2000000000, 9}};
    const auto usar = [&] {
        r.hoja.refrescar();
        for (const Qt::Key tecla : {Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Home}) {
            r.tecla(tecla);
        }
        r.hoja.horizontalScrollBar()->setValue(r.hoja.horizontalScrollBar()->maximum());
        r.hoja.verticalScrollBar()->setValue(r.hoja.verticalScrollBar()->maximum());
        r.hoja.grab();
        r.pinchar(QPoint(300, 300));
        r.pinchar(QPoint(60, 10));
        r.pinchar(QPoint(10, 60));
        QTest::keyClicks(&r.hoja, "x");
        r.hoja.grab();
        r.teclaEnEditor(Qt::Key_Return);
        r.hoja.establecerZoom(r.hoja.zoomPorcentaje() == 200 ? 50 : 200);
        r.hoja.grab();
    };
    usar();
    hoja.filasInmovilizadas = valor;
    usar();
    hoja.columnasInmovilizadas = valor;
    usar();
    QVERIFY(r.hoja.verticalScrollBar()->minimum() == 0);
}

REGISTRAR_PRUEBAS(PruebaRejillaVista);

#include "prueba_rejilla_vista.moc"
