#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QScrollBar>

using pruebas::RejillaDePrueba;

class PruebaRejillaTeclado : public QObject {
    Q_OBJECT

  private slots:
    void cadaTeclaMueve_data();
    void cadaTeclaMueve();
    void borrarVaciaLaSeleccion_data();
    void borrarVaciaLaSeleccion();
    void teclearEmpiezaAEditar_data();
    void teclearEmpiezaAEditar();
    void loQueNoEsTextoNoEdita_data();
    void loQueNoEsTextoNoEdita();
    void elTabuladorNoSacaElFoco();
    void lasFusionesSeCruzanDeUnPaso();
    void laCeldaActivaSiempreSeVe();
    void lasTeclasSinUsoSiguenSuCamino();
};

void PruebaRejillaTeclado::cadaTeclaMueve_data() {
    QTest::addColumn<int>("tecla");
    QTest::addColumn<int>("con");
    QTest::addColumn<QString>("desde");
    QTest::addColumn<QString>("hasta");
    const int sin = Qt::NoModifier;
    const int mayus = Qt::ShiftModifier;
    const int ctrl = Qt::ControlModifier;
    const auto fila = [](const char* nombre, int tecla, int con, const char* hasta) {
        QTest::newRow(nombre) << tecla << con << "E30" << QString::fromLatin1(hasta);
    };
    fila("arriba", Qt::Key_Up, sin, "E29");
    fila("abajo", Qt::Key_Down, sin, "E31");
    fila("izquierda", Qt::Key_Left, sin, "D30");
    fila("derecha", Qt::Key_Right, sin, "F30");
    fila("mayús arriba", Qt::Key_Up, mayus, "E30>E29");
    fila("mayús abajo", Qt::Key_Down, mayus, "E30>E31");
    fila("mayús izquierda", Qt::Key_Left, mayus, "E30>D30");
    fila("mayús derecha", Qt::Key_Right, mayus, "E30>F30");
    fila("tabulador", Qt::Key_Tab, sin, "F30");
    fila("tabulador hacia atrás", Qt::Key_Backtab, mayus, "E30>D30");
    fila("tabulador con mayús", Qt::Key_Tab, mayus, "E30>D30");
    fila("intro", Qt::Key_Return, sin, "E31");
    fila("intro numérico", Qt::Key_Enter, sin, "E31");
    fila("mayús intro", Qt::Key_Return, mayus, "E30>E29");
    fila("mayús intro numérico", Qt::Key_Enter, mayus, "E30>E29");
    fila("retroceder página", Qt::Key_PageUp, sin, "E10");
    fila("avanzar página", Qt::Key_PageDown, sin, "E50");
    fila("mayús avanzar página", Qt::Key_PageDown, mayus, "E30>E50");
    fila("inicio", Qt::Key_Home, sin, "A30");
    fila("mayús inicio", Qt::Key_Home, mayus, "A30");
    fila("ctrl inicio", Qt::Key_Home, ctrl, "A1");
}

void PruebaRejillaTeclado::cadaTeclaMueve() {
    QFETCH(int, tecla);
    QFETCH(int, con);
    QFETCH(QString, hasta);
    RejillaDePrueba r;
    r.seleccionar(29, 4);
    r.tecla(static_cast<Qt::Key>(tecla), static_cast<Qt::KeyboardModifiers>(con));
    QCOMPARE(r.seleccion(), hasta);
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
    QVERIFY(!r.hoja.editando());
    QVERIFY(!r.libro.modificado);
    // En la ventana ningún atajo ni recorrido del foco se la queda.
    pruebas::VentanaDePrueba p;
    p.editor().seleccionar(29, 4);
    QTest::keyClick(p.hoja(), static_cast<Qt::Key>(tecla), static_cast<Qt::KeyboardModifiers>(con));
    QCOMPARE(p.editor().seleccion(), r.editor.seleccion());
    QVERIFY(p.hoja()->hasFocus());
}

void PruebaRejillaTeclado::borrarVaciaLaSeleccion_data() {
    QTest::addColumn<int>("tecla");
    QTest::newRow("suprimir") << int(Qt::Key_Delete);
    QTest::newRow("retroceso") << int(Qt::Key_Backspace);
}

void PruebaRejillaTeclado::borrarVaciaLaSeleccion() {
    QFETCH(int, tecla);
    RejillaDePrueba r;
    r.poner(0, 0, "uno");
    r.poner(1, 1, "dos");
    r.poner(2, 2, "tres");
    r.seleccionar(0, 0, 1, 1);
    r.tecla(static_cast<Qt::Key>(tecla));
    QCOMPARE(r.entrada(0, 0), QString());
    QCOMPARE(r.entrada(1, 1), QString());
    QCOMPARE(r.entrada(2, 2), QStringLiteral("tres"));
    QCOMPARE(r.senales(), QStringLiteral("1 1 0"));
    QVERIFY(!r.hoja.editando());
}

void PruebaRejillaTeclado::teclearEmpiezaAEditar_data() {
    QTest::addColumn<QString>("texto");
    for (const char* texto : {"=", "a", "7", "ñ", "-", " ", "¿", "á"}) {
        QTest::newRow(texto) << QString::fromUtf8(texto);
    }
    // Una letra fuera del plano básico son dos unidades.
    QTest::newRow("emoji") << QString::fromUcs4(U"\U0001F600");
}

void PruebaRejillaTeclado::teclearEmpiezaAEditar() {
    QFETCH(QString, texto);
    RejillaDePrueba r;
    r.poner(2, 2, "lo de antes");
    r.seleccionar(2, 2);
    QTest::sendKeyEvent(QTest::Click, &r.hoja, Qt::Key_unknown, texto, Qt::NoModifier);
    QVERIFY(r.hoja.editando());
    QVERIFY(r.editorCelda()->hasFocus());
    QCOMPARE(r.editorCelda()->text(), texto);
    QCOMPARE(r.textoEdicion.size(), 1);
    QCOMPARE(r.textoEdicion.at(0).at(0).toString(), texto);
    QCOMPARE(r.entrada(2, 2), QStringLiteral("lo de antes"));
}

void PruebaRejillaTeclado::loQueNoEsTextoNoEdita_data() {
    QTest::addColumn<int>("tecla");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("con");
    QTest::newRow("ctrl y letra") << int(Qt::Key_B) << "b" << int(Qt::ControlModifier);
    QTest::newRow("escape") << int(Qt::Key_Escape) << QStringLiteral("\x1b") << 0;
    QTest::newRow("mayúsculas") << int(Qt::Key_Shift) << QString() << int(Qt::ShiftModifier);
    QTest::newRow("F5") << int(Qt::Key_F5) << QString() << 0;
    QTest::newRow("fin") << int(Qt::Key_End) << QString() << 0;
    QTest::newRow("control suelto") << int(Qt::Key_unknown) << QStringLiteral("\x01") << 0;
}

void PruebaRejillaTeclado::loQueNoEsTextoNoEdita() {
    QFETCH(int, tecla);
    QFETCH(QString, texto);
    QFETCH(int, con);
    RejillaDePrueba r;
    QTest::sendKeyEvent(QTest::Click, &r.hoja, static_cast<Qt::Key>(tecla), texto,
                        static_cast<Qt::KeyboardModifiers>(con));
    QVERIFY(!r.hoja.editando());
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
}

void PruebaRejillaTeclado::elTabuladorNoSacaElFoco() {
    QWidget ventana;
    QLineEdit antes(&ventana);
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    editor::Editor editor(libro, motor);
    interfaz::WidgetHoja hoja(libro, editor, &ventana);
    QLineEdit despues(&ventana);
    ventana.show();
    ventana.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&ventana));
    hoja.setFocus();
    QTest::keyClick(&hoja, Qt::Key_Tab);
    QVERIFY(hoja.hasFocus());
    QCOMPARE(editor.seleccion().activaCol, 1);
    QTest::keyClick(&hoja, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(hoja.hasFocus());
    // Desde fuera sí se llega.
    antes.setFocus();
    QTest::keyClick(&antes, Qt::Key_Tab);
    QVERIFY(hoja.hasFocus());
}

void PruebaRejillaTeclado::lasFusionesSeCruzanDeUnPaso() {
    RejillaDePrueba r;
    r.activa().fusionar(1, 1, 2, 2);
    r.seleccionar(1, 0);
    r.tecla(Qt::Key_Right);
    QCOMPARE(r.seleccion(), QStringLiteral("B2>C3"));
    r.tecla(Qt::Key_Down);
    QCOMPARE(r.seleccion(), QStringLiteral("C4"));
}

void PruebaRejillaTeclado::laCeldaActivaSiempreSeVe() {
    RejillaDePrueba r;
    const auto seVe = [&] {
        const editor::Seleccion& s = r.editor.seleccion();
        const QRect visible(48, 26, r.hoja.viewport()->width() - 48 + 1,
                            r.hoja.viewport()->height() - 26 + 1);
        return visible.contains(r.rect(s.activaFila, s.activaCol));
    };
    // Más allá de lo que la hoja vacía deja recorrer con las barras.
    for (int vez = 0; vez < 300; ++vez) {
        r.tecla(Qt::Key_PageDown);
        QVERIFY2(seVe(), qPrintable(r.seleccion()));
    }
    for (int vez = 0; vez < 60; ++vez) {
        r.tecla(Qt::Key_Right);
        QVERIFY2(seVe(), qPrintable(r.seleccion()));
    }
    for (int vez = 0; vez < 100; ++vez) {
        r.tecla(Qt::Key_PageUp);
        QVERIFY2(seVe(), qPrintable(r.seleccion()));
    }
    r.seleccionar(65535, 701);
    r.hoja.asegurarVisible();
    QVERIFY(seVe());
    r.tecla(Qt::Key_Down);
    r.tecla(Qt::Key_Right);
    QCOMPARE(r.seleccion(), QStringLiteral("ZZ65536"));
    QVERIFY(seVe());
    r.tecla(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(seVe());
    QCOMPARE(r.hoja.verticalScrollBar()->value(), 0);
    QCOMPARE(r.hoja.horizontalScrollBar()->value(), 0);
}

void PruebaRejillaTeclado::lasTeclasSinUsoSiguenSuCamino() {
    RejillaDePrueba r;
    QKeyEvent evento(QEvent::KeyPress, Qt::Key_F6, Qt::NoModifier);
    QApplication::sendEvent(&r.hoja, &evento);
    QVERIFY(!evento.isAccepted());
}

REGISTRAR_PRUEBAS(PruebaRejillaTeclado);

#include "prueba_rejilla_teclado.moc"
