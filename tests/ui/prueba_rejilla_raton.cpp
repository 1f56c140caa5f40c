#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <limits>

using pruebas::RejillaDePrueba;

class PruebaRejillaRaton : public QObject {
    Q_OBJECT

  private slots:
    void pulsarSeleccionaYConMayusAmplia();
    void arrastrarAmplia();
    void arrastrarFueraDeLaVistaNoDesplaza();
    void losEncabezadosSeleccionanFilasYColumnas();
    void laEsquinaNoHaceNada();
    void otroBotonNoSelecciona();
    void dosPulsacionesEditan();
    void dosPulsacionesEnUnBordeRedimensionan();
    void pulsarConfirmaLaEdicion();
    void redimensionarSigueAlZoom_data();
    void redimensionarSigueAlZoom();
    void redimensionarFilas();
    void redimensionarTieneTope();
    void redimensionarDesdeUnTamanoHostil();
    void olvidarSueltaLoQueSeArrastraba();
    void elGestoNoPasaAOtraHoja();
    void elCursorDiceQueSePuedeRedimensionar();
    void laRuedaDesplaza();
    void laRuedaConCtrlCambiaElZoom();
    void unaFusionSeSeleccionaEntera();

  private:
    static void girar(RejillaDePrueba& r, QPoint giro, Qt::KeyboardModifiers con) {
        const QPointF donde(300, 300);
        QWheelEvent evento(donde, r.hoja.viewport()->mapToGlobal(donde), QPoint(), giro,
                           Qt::NoButton, con, Qt::NoScrollPhase, false);
        QApplication::sendEvent(r.hoja.viewport(), &evento);
    }
};

void PruebaRejillaRaton::pulsarSeleccionaYConMayusAmplia() {
    RejillaDePrueba r;
    r.pinchar(r.centro(3, 2));
    QCOMPARE(r.seleccion(), QStringLiteral("C4"));
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
    r.pinchar(r.centro(6, 4), Qt::ShiftModifier);
    QCOMPARE(r.seleccion(), QStringLiteral("C4>E7"));
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
}

void PruebaRejillaRaton::arrastrarAmplia() {
    RejillaDePrueba r;
    r.pulsar(r.centro(3, 2));
    r.mover(r.centro(5, 4));
    QCOMPARE(r.seleccion(), QStringLiteral("C4>E6"));
    r.mover(r.centro(1, 0));
    QCOMPARE(r.seleccion(), QStringLiteral("C4>A2"));
    r.mover(QPointF(10, 10)); // sobre los encabezados: se queda como estaba
    QCOMPARE(r.seleccion(), QStringLiteral("C4>A2"));
    r.soltar(r.centro(1, 0));
    r.mover(r.centro(8, 5), Qt::NoButton);
    QCOMPARE(r.seleccion(), QStringLiteral("C4>A2"));
}

void PruebaRejillaRaton::arrastrarFueraDeLaVistaNoDesplaza() {
    RejillaDePrueba r;
    r.pulsar(r.centro(3, 2));
    r.mover(QPointF(5000, 5000));
    QCOMPARE(r.hoja.verticalScrollBar()->value(), 0);
    QCOMPARE(r.hoja.horizontalScrollBar()->value(), 0);
    QCOMPARE(r.seleccion(), QStringLiteral("C4"));
}

void PruebaRejillaRaton::losEncabezadosSeleccionanFilasYColumnas() {
    RejillaDePrueba r;
    r.pinchar(QPoint(r.centro(0, 2).x(), 10));
    QCOMPARE(r.seleccion(), QStringLiteral("C100>C1"));
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
    r.pinchar(QPoint(10, r.centro(3, 0).y()));
    QCOMPARE(r.seleccion(), QStringLiteral("Z4>A4"));
    // Con mayúsculas no se amplía, y arrastrar desde un encabezado tampoco.
    r.pulsar(QPoint(r.centro(0, 4).x(), 10), Qt::ShiftModifier);
    r.mover(r.centro(5, 5));
    QCOMPARE(r.seleccion(), QStringLiteral("E100>E1"));
    r.soltar(r.centro(5, 5));
}

void PruebaRejillaRaton::laEsquinaNoHaceNada() {
    RejillaDePrueba r;
    r.seleccionar(2, 2);
    r.pinchar(QPoint(10, 10));
    QCOMPARE(r.seleccion(), QStringLiteral("C3"));
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
    r.mover(r.centro(5, 5));
    QCOMPARE(r.seleccion(), QStringLiteral("C3"));
}

void PruebaRejillaRaton::otroBotonNoSelecciona() {
    RejillaDePrueba r;
    QTest::mousePress(r.hoja.viewport(), Qt::MiddleButton, Qt::NoModifier, r.centro(3, 3));
    r.mover(r.centro(6, 6), Qt::MiddleButton);
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
    QTest::mouseRelease(r.hoja.viewport(), Qt::MiddleButton, Qt::NoModifier, r.centro(3, 3));
}

void PruebaRejillaRaton::dosPulsacionesEditan() {
    RejillaDePrueba r;
    r.poner(3, 2, "=A1");
    QTest::mouseDClick(r.hoja.viewport(), Qt::LeftButton, Qt::NoModifier, r.centro(3, 2));
    QVERIFY(r.hoja.editando());
    QCOMPARE(r.seleccion(), QStringLiteral("C4"));
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("=A1"));
    QCOMPARE(r.editorCelda()->cursorPosition(), 3);
    QVERIFY(r.editorCelda()->hasFocus());
}

void PruebaRejillaRaton::dosPulsacionesEnUnBordeRedimensionan() {
    RejillaDePrueba r;
    const QPoint borde(48 + 88, 10);
    QTest::mouseDClick(r.hoja.viewport(), Qt::LeftButton, Qt::NoModifier, borde);
    QVERIFY(!r.hoja.editando());
    QMouseEvent segunda(QEvent::MouseButtonDblClick, borde, r.hoja.viewport()->mapToGlobal(borde),
                        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(r.hoja.viewport(), &segunda);
    r.mover(borde + QPoint(12, 0));
    r.soltar(borde + QPoint(12, 0));
    QCOMPARE(r.activa().anchoColumna(0), 100);
}

void PruebaRejillaRaton::pulsarConfirmaLaEdicion() {
    RejillaDePrueba r;
    QTest::keyClicks(&r.hoja, "5");
    r.pinchar(r.centro(4, 4));
    QVERIFY(!r.hoja.editando());
    QCOMPARE(r.entrada(0, 0), QStringLiteral("5"));
    QCOMPARE(r.seleccion(), QStringLiteral("E5"));
    QTest::keyClicks(&r.hoja, "6");
    QTest::mousePress(r.hoja.viewport(), Qt::MiddleButton, Qt::NoModifier, r.centro(0, 0));
    QCOMPARE(r.entrada(4, 4), QStringLiteral("6"));
}

void PruebaRejillaRaton::redimensionarSigueAlZoom_data() {
    QTest::addColumn<int>("zoom");
    QTest::addColumn<int>("movido");
    QTest::addColumn<int>("ancho");
    QTest::newRow("100") << 100 << 30 << 88 + 30;
    QTest::newRow("150") << 150 << 30 << 88 + 20;
    QTest::newRow("150 hacia atrás") << 150 << -31 << 88 - 20;
    QTest::newRow("200 truncado") << 200 << 31 << 88 + 15;
    QTest::newRow("50") << 50 << 7 << 88 + 14;
}

void PruebaRejillaRaton::redimensionarSigueAlZoom() {
    QFETCH(int, zoom);
    QFETCH(int, movido);
    QFETCH(int, ancho);
    RejillaDePrueba r;
    r.hoja.establecerZoom(zoom);
    const QPoint borde(r.rect(0, 1).left() - 1, 12);
    r.pulsar(borde);
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
    r.mover(borde + QPoint(movido, 40));
    QCOMPARE(r.activa().anchoColumna(0), ancho);
    QCOMPARE(r.senales(), QStringLiteral("0 1 0"));
    r.soltar(borde);
    r.mover(borde + QPoint(90, 0), Qt::NoButton);
    QCOMPARE(r.activa().anchoColumna(0), ancho);
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{0});
    QVERIFY(r.libro.modificado);
}

void PruebaRejillaRaton::redimensionarFilas() {
    RejillaDePrueba r;
    r.hoja.establecerZoom(150);
    const QPoint borde(12, r.rect(3, 0).top());
    r.pulsar(borde);
    r.mover(borde + QPoint(100, 15));
    r.soltar(borde);
    QCOMPARE(r.activa().altoFila(2), 24 + 10);
}

void PruebaRejillaRaton::redimensionarTieneTope() {
    RejillaDePrueba r;
    const QPoint borde(48 + 88, 12);
    r.pulsar(borde);
    for (const double x : {-1e300, -5000.0, 0.0}) {
        r.mover(QPointF(x, 12));
        QCOMPARE(r.activa().anchoColumna(0), 20);
    }
    for (const double x : {5000.0, 2147483647.0, 1e300}) {
        r.mover(QPointF(x, 12));
        QCOMPARE(r.activa().anchoColumna(0), 600);
    }
    r.soltar(borde);
}

void PruebaRejillaRaton::redimensionarDesdeUnTamanoHostil() {
    RejillaDePrueba r;
    r.activa().anchos[0] = std::numeric_limits<int>::max();
    r.activa().altos[0] = std::numeric_limits<int>::max();
    // El borde de la fila 1 no se ve; el de la columna B, que mide cero, está donde acaba la A.
    r.activa().anchos[0] = 60;
    r.activa().anchos[1] = -2000000000;
    const QPoint borde(48 + 60, 12);
    r.pulsar(borde);
    r.mover(borde + QPoint(5, 0));
    r.soltar(borde);
    QCOMPARE(r.activa().anchoColumna(0), 65);
    r.hoja.repaint();
}

void PruebaRejillaRaton::olvidarSueltaLoQueSeArrastraba() {
    RejillaDePrueba r;
    const QPoint borde(48 + 88, 12);
    r.pulsar(borde);
    r.hoja.olvidarInteraccion();
    r.mover(borde + QPoint(50, 0));
    QVERIFY(r.activa().anchos.empty());
    r.pulsar(r.centro(2, 2));
    r.hoja.olvidarInteraccion();
    r.mover(r.centro(5, 5));
    QCOMPARE(r.seleccion(), QStringLiteral("C3"));
}

void PruebaRejillaRaton::elGestoNoPasaAOtraHoja() {
    RejillaDePrueba r;
    r.libro.agregarHoja();
    const QPoint borde(48 + 88, 12);
    for (const QPoint& desde : {borde, r.centro(2, 2)}) {
        r.libro.hojaActiva = 0;
        r.pulsar(desde);
        r.libro.hojaActiva = 1;
        r.seleccionar(0, 0);
        r.mover(desde + QPoint(60, 60));
        QVERIFY(r.libro.hojas[1]->anchos.empty());
        QCOMPARE(r.seleccion(), QStringLiteral("A1"));
        r.soltar(desde);
    }
}

void PruebaRejillaRaton::elCursorDiceQueSePuedeRedimensionar() {
    RejillaDePrueba r;
    const auto forma = [&](QPoint donde) {
        r.mover(donde, Qt::NoButton);
        return r.hoja.viewport()->cursor().shape();
    };
    QCOMPARE(forma({48 + 88, 12}), Qt::SplitHCursor);
    QCOMPARE(forma({48 + 40, 12}), Qt::ArrowCursor);
    QCOMPARE(forma({12, 26 + 24}), Qt::SplitVCursor);
    QCOMPARE(forma({12, 26 + 12}), Qt::ArrowCursor);
    QCOMPARE(forma({300, 300}), Qt::ArrowCursor);
    QVERIFY(r.hoja.hasMouseTracking());
    QVERIFY(r.hoja.viewport()->hasMouseTracking());
}

void PruebaRejillaRaton::laRuedaDesplaza() {
    RejillaDePrueba r;
    girar(r, {0, -120}, Qt::NoModifier);
    const int bajado = r.hoja.verticalScrollBar()->value();
    QVERIFY(bajado > 0);
    girar(r, {0, 120}, Qt::NoModifier);
    QCOMPARE(r.hoja.verticalScrollBar()->value(), 0);
    girar(r, {0, -120}, Qt::ShiftModifier);
    QCOMPARE(r.hoja.verticalScrollBar()->value(), 0);
    QCOMPARE(r.hoja.horizontalScrollBar()->value(), bajado);
    QCOMPARE(r.hoja.zoomPorcentaje(), 100);
}

void PruebaRejillaRaton::laRuedaConCtrlCambiaElZoom() {
    RejillaDePrueba r;
    QSignalSpy pedido(&r.hoja, &interfaz::WidgetHoja::zoomPedido);
    girar(r, {0, 120}, Qt::ControlModifier);
    QCOMPARE(r.hoja.zoomPorcentaje(), 110);
    QCOMPARE(pedido.size(), 1);
    QCOMPARE(pedido.at(0).at(0).toInt(), 110);
    // Una rueda fina suma sus giros hasta un paso.
    for (int vez = 0; vez < 4; ++vez) {
        girar(r, {0, -30}, Qt::ControlModifier);
    }
    QCOMPARE(r.hoja.zoomPorcentaje(), 100);
    for (int vez = 0; vez < 30; ++vez) {
        girar(r, {0, 120}, Qt::ControlModifier);
    }
    QCOMPARE(r.hoja.zoomPorcentaje(), 200);
    for (int vez = 0; vez < 30; ++vez) {
        girar(r, {0, -120}, Qt::ControlModifier);
    }
    QCOMPARE(r.hoja.zoomPorcentaje(), 50);
    QCOMPARE(r.hoja.verticalScrollBar()->value(), 0);
}

void PruebaRejillaRaton::unaFusionSeSeleccionaEntera() {
    RejillaDePrueba r;
    r.activa().fusionar(1, 1, 2, 2);
    r.pinchar(r.centro(2, 1));
    QCOMPARE(r.seleccion(), QStringLiteral("B2>C3"));
}

REGISTRAR_PRUEBAS(PruebaRejillaRaton);

#include "prueba_rejilla_raton.moc"
