#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QInputMethodEvent>
#include <QScrollBar>

using pruebas::RejillaDePrueba;

class PruebaRejillaEdicion : public QObject {
    Q_OBJECT

  private slots:
    void f2EditaLoGuardadoConElCursorAlFinal();
    void f2EnUnaCeldaVaciaEmpiezaVacio();
    void cadaTeclaDelEditor_data();
    void cadaTeclaDelEditor();
    void escapeNoEscribe();
    void lasFlechasMuevenElCursorDelTexto();
    void confirmarAvisaAunqueNadaCambie();
    void confirmarSinEditarNoHaceNada();
    void unaFusionSeEscribeEnSuPrimeraCelda();
    void loTecleadoSeRefleja();
    void laBarraDeFormulasSeRefleja();
    void elTextoPendienteEsDeSuCeldaYDeSuHoja();
    void laHojaEnQueSeEmpezoYaNoExiste();
    void olvidarNoEscribe();
    void loIntactoConservaSusOctetos();
    void losTextosLargosNoSeCortan();
    void elEditorEstaSobreSuCelda();
    void elEditorPasaBajoLoInmovilizado();
    void elEstiloEsElDelTema();
    void laLetraCreceConElZoom();
    void editarOtraCeldaConfirmaLaPrimera();
    void lasTeclasConElFocoEnLaRejillaVanAlTexto();
    void unaTildeCompuestaNoSePierde();
    void laComposicionSigueDentroDeLaCelda();
    void seDiceDondeEstaLaCeldaActiva();
};

void PruebaRejillaEdicion::f2EditaLoGuardadoConElCursorAlFinal() {
    RejillaDePrueba r;
    r.poner(1, 1, "=SUMA(A1:A3)");
    r.seleccionar(1, 1);
    r.tecla(Qt::Key_F2);
    QVERIFY(r.hoja.editando());
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("=SUMA(A1:A3)"));
    QCOMPARE(r.editorCelda()->cursorPosition(), 12);
    QVERIFY(r.editorCelda()->hasFocus());
    QCOMPARE(r.textoEdicion.size(), 1);
    QCOMPARE(r.textoEdicion.at(0).at(0).toString(), QStringLiteral("=SUMA(A1:A3)"));
}

void PruebaRejillaEdicion::f2EnUnaCeldaVaciaEmpiezaVacio() {
    RejillaDePrueba r;
    r.tecla(Qt::Key_F2);
    QVERIFY(r.hoja.editando());
    QCOMPARE(r.editorCelda()->text(), QString());
}

void PruebaRejillaEdicion::cadaTeclaDelEditor_data() {
    QTest::addColumn<int>("tecla");
    QTest::addColumn<int>("con");
    QTest::addColumn<QString>("hasta");
    const int mayus = Qt::ShiftModifier;
    QTest::newRow("intro") << int(Qt::Key_Return) << 0 << "C4";
    QTest::newRow("intro numérico") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "C4";
    QTest::newRow("mayús intro") << int(Qt::Key_Return) << mayus << "C2";
    QTest::newRow("tabulador") << int(Qt::Key_Tab) << 0 << "D3";
    QTest::newRow("tabulador hacia atrás") << int(Qt::Key_Backtab) << mayus << "B3";
    QTest::newRow("tabulador con mayús") << int(Qt::Key_Tab) << mayus << "B3";
}

void PruebaRejillaEdicion::cadaTeclaDelEditor() {
    QFETCH(int, tecla);
    QFETCH(int, con);
    QFETCH(QString, hasta);
    RejillaDePrueba r;
    r.seleccionar(2, 2);
    QTest::keyClicks(&r.hoja, "4");
    QTest::keyClicks(r.editorCelda(), "2");
    r.olvidarSenales();
    r.teclaEnEditor(static_cast<Qt::Key>(tecla), static_cast<Qt::KeyboardModifiers>(con));
    QVERIFY(!r.hoja.editando());
    QVERIFY(r.hoja.hasFocus());
    QCOMPARE(r.entrada(2, 2), QStringLiteral("42"));
    QCOMPARE(r.seleccion(), hasta);
    QCOMPARE(r.senales(), QStringLiteral("1 1 1"));
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{1});
    // En la ventana ningún atajo ni recorrido del foco se la queda.
    pruebas::VentanaDePrueba p;
    p.editor().seleccionar(2, 2);
    p.teclear(QStringLiteral("42"));
    QTest::keyClick(p.hoja()->editorCelda(), static_cast<Qt::Key>(tecla),
                    static_cast<Qt::KeyboardModifiers>(con));
    QCOMPARE(p.entrada(2, 2), std::string("42"));
    QCOMPARE(p.editor().seleccion(), r.editor.seleccion());
    QVERIFY(p.hoja()->hasFocus());
}

void PruebaRejillaEdicion::escapeNoEscribe() {
    RejillaDePrueba r;
    r.poner(0, 0, "antes");
    QTest::keyClicks(&r.hoja, "x");
    r.olvidarSenales();
    r.teclaEnEditor(Qt::Key_Escape);
    QVERIFY(!r.hoja.editando());
    QVERIFY(r.hoja.hasFocus());
    QCOMPARE(r.entrada(0, 0), QStringLiteral("antes"));
    QCOMPARE(r.senales(), QStringLiteral("1 0 1"));
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{0});
}

void PruebaRejillaEdicion::lasFlechasMuevenElCursorDelTexto() {
    RejillaDePrueba r;
    r.poner(0, 0, "abc");
    r.tecla(Qt::Key_F2);
    r.teclaEnEditor(Qt::Key_Left);
    r.teclaEnEditor(Qt::Key_Up);
    QVERIFY(r.hoja.editando());
    QCOMPARE(r.editorCelda()->cursorPosition(), 2);
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
}

void PruebaRejillaEdicion::confirmarAvisaAunqueNadaCambie() {
    RejillaDePrueba r;
    r.poner(0, 0, "igual");
    r.libro.modificado = false;
    r.tecla(Qt::Key_F2);
    r.olvidarSenales();
    r.hoja.confirmarEdicion(0, 0);
    QCOMPARE(r.senales(), QStringLiteral("1 1 1"));
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
    QVERIFY(!r.libro.modificado);
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{0});
}

void PruebaRejillaEdicion::confirmarSinEditarNoHaceNada() {
    RejillaDePrueba r;
    r.hoja.confirmarEdicion(1, 0);
    r.hoja.cancelarEdicion();
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
}

void PruebaRejillaEdicion::unaFusionSeEscribeEnSuPrimeraCelda() {
    RejillaDePrueba r;
    r.activa().fusionar(1, 1, 2, 2);
    r.poner(1, 1, "título");
    r.seleccionar(1, 1);
    // La esquina activa es la última celda, que está vacía: su texto es el que se edita.
    r.tecla(Qt::Key_F2);
    QCOMPARE(r.editorCelda()->text(), QString());
    QCOMPARE(r.editorCelda()->geometry(), r.hoja.renderizador().rectCeldaConFusion(1, 1));
    QTest::keyClicks(r.editorCelda(), "nuevo");
    r.teclaEnEditor(Qt::Key_Return);
    QCOMPARE(r.entrada(1, 1), QStringLiteral("nuevo"));
    QCOMPARE(r.entrada(2, 2), QString());
    QCOMPARE(r.seleccion(), QStringLiteral("C4"));
}

void PruebaRejillaEdicion::loTecleadoSeRefleja() {
    RejillaDePrueba r;
    QTest::keyClicks(&r.hoja, "a");
    QTest::keyClicks(r.editorCelda(), "bc");
    QCOMPARE(r.textoEdicion.size(), 3);
    QCOMPARE(r.textoEdicion.last().at(0).toString(), QStringLiteral("abc"));
    r.editorCelda()->setText(QStringLiteral("puesto por programa"));
    QCOMPARE(r.textoEdicion.size(), 3);
}

void PruebaRejillaEdicion::laBarraDeFormulasSeRefleja() {
    RejillaDePrueba r;
    r.poner(0, 0, "viejo");
    QLineEdit barra;
    barra.show();
    barra.activateWindow();
    barra.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&barra));
    r.hoja.sincronizarTextoEdicion(QStringLiteral("=1+"));
    QVERIFY(r.hoja.editando());
    QVERIFY2(barra.hasFocus(), "se sigue escribiendo en la barra");
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("=1+"));
    QCOMPARE(r.textoEdicion.size(), 0);
    r.editorCelda()->setCursorPosition(1);
    r.hoja.sincronizarTextoEdicion(QStringLiteral("=1+"));
    QCOMPARE(r.editorCelda()->cursorPosition(), 1);
    r.hoja.sincronizarTextoEdicion(QStringLiteral("=1+1"));
    // Como al pulsar Intro en la barra.
    r.editor.establecerContenido(0, 0, "=1+1");
    r.hoja.confirmarEdicion(1, 0);
    QCOMPARE(r.entrada(0, 0), QStringLiteral("=1+1"));
    QCOMPARE(r.seleccion(), QStringLiteral("A2"));
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{1});
}

void PruebaRejillaEdicion::elTextoPendienteEsDeSuCeldaYDeSuHoja() {
    RejillaDePrueba r;
    r.libro.agregarHoja();
    r.seleccionar(4, 2);
    QTest::keyClicks(&r.hoja, "x");
    r.libro.hojaActiva = 1;
    r.seleccionar(0, 0);
    r.hoja.confirmarEdicion(0, 0);
    QCOMPARE(r.entrada(4, 2, 0), QStringLiteral("x"));
    QCOMPARE(r.entrada(0, 0, 1), QString());
    QCOMPARE(r.entrada(4, 2, 1), QString());
    QCOMPARE(r.libro.hojaActiva, 1);
    QCOMPARE(r.seleccion(), QStringLiteral("A1"));
    // En la misma hoja, con otra celda activa.
    QTest::keyClicks(&r.hoja, "y");
    r.seleccionar(7, 7);
    r.hoja.confirmarEdicion(1, 0);
    QCOMPARE(r.entrada(0, 0, 1), QStringLiteral("y"));
    QCOMPARE(r.entrada(7, 7, 1), QString());
}

void PruebaRejillaEdicion::laHojaEnQueSeEmpezoYaNoExiste() {
    RejillaDePrueba r;
    r.libro.agregarHoja();
    r.libro.hojaActiva = 1;
    QTest::keyClicks(&r.hoja, "x");
    r.libro.eliminarHoja(1);
    r.hoja.confirmarEdicion(1, 0);
    QVERIFY(!r.hoja.editando());
    QCOMPARE(r.entrada(0, 0), QString());
    // Sin ninguna hoja activa tampoco pasa nada.
    r.libro.hojaActiva = 40;
    QTest::keyClicks(&r.hoja, "x");
    r.hoja.confirmarEdicion(0, 0);
    r.tecla(Qt::Key_F2);
    r.tecla(Qt::Key_Delete);
    r.hoja.repaint();
    QVERIFY(r.libro.hojas.front()->celdas.empty());
}

void PruebaRejillaEdicion::olvidarNoEscribe() {
    RejillaDePrueba r;
    QTest::keyClicks(&r.hoja, "x");
    r.libro.reiniciar();
    r.hoja.olvidarInteraccion();
    QVERIFY(!r.hoja.editando());
    r.hoja.confirmarEdicion(0, 0);
    QVERIFY(r.libro.hojas.front()->celdas.empty());
    QVERIFY(!r.libro.modificado);
}

void PruebaRejillaEdicion::loIntactoConservaSusOctetos() {
    RejillaDePrueba r;
    const std::string octetos = "a\xFF\xFE"
                                "b";
    r.poner(0, 0, octetos);
    r.libro.modificado = false;
    r.tecla(Qt::Key_F2);
    r.teclaEnEditor(Qt::Key_Return);
    QVERIFY(r.activa().celda(0, 0)->entrada == octetos);
    QVERIFY(!r.libro.modificado);
    for (const std::string& texto : {std::string("uno\ndos"), std::string("a\tb"),
                                     std::string("x\r\ny"), std::string("z\0w", 3)}) {
        r.poner(5, 5, texto);
        r.seleccionar(5, 5);
        r.tecla(Qt::Key_F2);
        r.teclaEnEditor(Qt::Key_Return);
        QCOMPARE(r.activa().celda(5, 5)->entrada, texto);
    }
}

void PruebaRejillaEdicion::losTextosLargosNoSeCortan() {
    RejillaDePrueba r;
    const QString largo(100000, u'ñ');
    r.poner(0, 0, largo.toStdString());
    r.tecla(Qt::Key_F2);
    QTest::keyClicks(r.editorCelda(), "!");
    r.teclaEnEditor(Qt::Key_Return);
    QCOMPARE(r.entrada(0, 0), largo + u'!');
}

void PruebaRejillaEdicion::elEditorEstaSobreSuCelda() {
    RejillaDePrueba r;
    r.activa().anchos[2] = 150;
    r.seleccionar(3, 2);
    r.tecla(Qt::Key_F2);
    QCOMPARE(r.editorCelda()->geometry(), r.rect(3, 2));
    r.hoja.verticalScrollBar()->setValue(30);
    QCOMPARE(r.editorCelda()->geometry(), r.rect(3, 2));
    r.hoja.establecerZoom(150);
    QCOMPARE(r.editorCelda()->geometry(), r.rect(3, 2));
    r.activa().anchos[0] = 200;
    r.hoja.refrescar();
    QCOMPARE(r.editorCelda()->geometry(), r.rect(3, 2));
    QVERIFY(r.editorCelda()->parentWidget() == r.hoja.viewport());
}

void PruebaRejillaEdicion::elEditorPasaBajoLoInmovilizado() {
    RejillaDePrueba r;
    r.activa().filasInmovilizadas = 2;
    r.seleccionar(3, 1);
    r.tecla(Qt::Key_F2);
    QVERIFY(r.editorCelda()->mask().isEmpty());
    r.hoja.verticalScrollBar()->setValue(34);
    const QRect rect = r.rect(3, 1);
    const QRegion visible = r.editorCelda()->mask().translated(rect.topLeft());
    QCOMPARE(visible.boundingRect().top(), 26 + 48);
    QCOMPARE(visible.boundingRect().bottom(), rect.bottom());
    r.hoja.verticalScrollBar()->setValue(400);
    const QRegion nada = r.editorCelda()->mask() & QRect(QPoint(), rect.size());
    QVERIFY(nada.isEmpty());
    QVERIFY(r.hoja.editando());
    r.hoja.verticalScrollBar()->setValue(0);
    QVERIFY(r.editorCelda()->mask().isEmpty());
}

void PruebaRejillaEdicion::elEstiloEsElDelTema() {
    RejillaDePrueba r;
    const auto esperado = [](const char* fondo) {
        return QStringLiteral("QLineEdit { background: %1; color: #2c2c2c; border: 2px solid "
                              "#d4570a; selection-background-color: #d4570a; }")
            .arg(QLatin1String(fondo));
    };
    r.tecla(Qt::Key_F2);
    QCOMPARE(r.editorCelda()->styleSheet(), esperado("#ffffff"));
    r.hoja.establecerTema(renderizador::temaOscuro());
    QCOMPARE(r.editorCelda()->styleSheet(), esperado("#faf6f1"));
}

void PruebaRejillaEdicion::laLetraCreceConElZoom() {
    RejillaDePrueba r;
    r.tecla(Qt::Key_F2);
    QCOMPARE(r.editorCelda()->font().family(), QStringLiteral("Segoe UI"));
    QCOMPARE(r.editorCelda()->font().pointSizeF(), 10.0);
    r.hoja.establecerZoom(150);
    QCOMPARE(r.editorCelda()->font().pointSizeF(), 15.0);
}

void PruebaRejillaEdicion::editarOtraCeldaConfirmaLaPrimera() {
    RejillaDePrueba r;
    QTest::keyClicks(&r.hoja, "1");
    r.seleccionar(5, 5);
    r.hoja.comenzarEdicion(QStringLiteral("2"), true);
    QCOMPARE(r.entrada(0, 0), QStringLiteral("1"));
    r.hoja.confirmarEdicion(0, 0);
    QCOMPARE(r.entrada(5, 5), QStringLiteral("2"));
}

void PruebaRejillaEdicion::lasTeclasConElFocoEnLaRejillaVanAlTexto() {
    RejillaDePrueba r;
    r.hoja.sincronizarTextoEdicion(QStringLiteral("ab"));
    QTest::keyClicks(&r.hoja, "c");
    QVERIFY(r.editorCelda()->hasFocus());
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("abc"));
    r.hoja.setFocus();
    QInputMethodEvent compuesta;
    compuesta.setCommitString(QStringLiteral("é"));
    QApplication::sendEvent(&r.hoja, &compuesta);
    QVERIFY(r.editorCelda()->hasFocus());
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("abcé"));
    r.hoja.setFocus();
    r.tecla(Qt::Key_Return);
    QCOMPARE(r.entrada(0, 0), QStringLiteral("abcé"));
    QCOMPARE(r.seleccion(), QStringLiteral("A2"));
}

void PruebaRejillaEdicion::unaTildeCompuestaNoSePierde() {
    RejillaDePrueba r;
    QVERIFY(r.hoja.testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(r.hoja.inputMethodQuery(Qt::ImEnabled).toBool());
    for (const QString& palabra :
         {QStringLiteral("África"), QStringLiteral("Índice"), QStringLiteral("Óscar")}) {
        // La tecla muerta llega como un texto ya compuesto, sin pulsación de tecla.
        QInputMethodEvent compuesta;
        compuesta.setCommitString(palabra.left(1));
        QApplication::sendEvent(&r.hoja, &compuesta);
        QVERIFY(compuesta.isAccepted());
        QVERIFY(r.hoja.editando());
        QTest::keyClicks(r.editorCelda(), palabra.mid(1));
        r.teclaEnEditor(Qt::Key_Return);
    }
    QCOMPARE(r.entrada(0, 0), QStringLiteral("África"));
    QCOMPARE(r.entrada(1, 0), QStringLiteral("Índice"));
    QCOMPARE(r.entrada(2, 0), QStringLiteral("Óscar"));
}

void PruebaRejillaEdicion::laComposicionSigueDentroDeLaCelda() {
    RejillaDePrueba r;
    r.poner(0, 0, "antes");
    QInputMethodEvent aMedias(QStringLiteral("´"), {});
    QApplication::sendEvent(&r.hoja, &aMedias);
    QVERIFY(r.hoja.editando());
    QVERIFY(r.editorCelda()->hasFocus());
    QCOMPARE(r.editorCelda()->text(), QString());
    QInputMethodEvent hecha;
    hecha.setCommitString(QStringLiteral("é"));
    QApplication::sendEvent(r.editorCelda(), &hecha);
    QCOMPARE(r.editorCelda()->text(), QStringLiteral("é"));
    r.teclaEnEditor(Qt::Key_Return);
    QCOMPARE(r.entrada(0, 0), QStringLiteral("é"));
    // Un aviso vacío, como el de un método que se reinicia, no abre nada.
    QInputMethodEvent vacio;
    QApplication::sendEvent(&r.hoja, &vacio);
    QVERIFY(!r.hoja.editando());
}

void PruebaRejillaEdicion::seDiceDondeEstaLaCeldaActiva() {
    RejillaDePrueba r;
    // Se dice en coordenadas de la vista entera, que puede tener un marco.
    const auto dicho = [&] {
        return r.hoja.inputMethodQuery(Qt::ImCursorRectangle)
            .toRect()
            .translated(-r.hoja.viewport()->pos());
    };
    r.seleccionar(5, 3);
    QCOMPARE(dicho(), r.rect(5, 3));
    r.activa().fusionar(1, 1, 2, 2);
    r.seleccionar(1, 1);
    QCOMPARE(dicho(), r.hoja.renderizador().rectCeldaConFusion(1, 1));
}

REGISTRAR_PRUEBAS(PruebaRejillaEdicion);

#include "prueba_rejilla_edicion.moc"
