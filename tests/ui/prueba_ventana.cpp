// Lo que rodea a la cuadrícula: disposición, barra de fórmulas, cuadro de nombre, resumen, zoom y
// temas.

#include "rendering/tema.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QDirIterator>
#include <QObject>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTest>
#include <QWheelEvent>

#include <array>
#include <random>
#include <string>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

class PruebaVentana : public QObject {
    Q_OBJECT

  private slots:
    void laDisposicion() {
        VentanaDePrueba p;
        QCOMPARE(p.ventana().size(), QSize(1280, 720));
        const auto y = [&p](QWidget* w) { return w->mapTo(&p.ventana(), QPoint(0, 0)).y(); };
        auto* formulas = p.control<QWidget>("barraFormulas");
        auto* pestanas = p.control<QWidget>("barraPestanas");
        auto* cinta = p.control<QWidget>("g_historial");
        QVERIFY(y(cinta) < y(formulas));
        QVERIFY(y(formulas) < y(p.hoja()));
        QVERIFY(y(p.hoja()) < y(pestanas));
        QVERIFY(y(pestanas) < y(p.ventana().statusBar()));
        auto* nombre = p.control<QLineEdit>("cuadroNombre");
        QCOMPARE(nombre->width(), 80);
        QCOMPARE(nombre->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
        QCOMPARE(p.control<QLabel>("etiquetaFx")->text(), QStringLiteral("fx"));
        auto* zoom = p.ventana().findChild<QSlider*>();
        QCOMPARE(zoom->minimum(), 50);
        QCOMPARE(zoom->maximum(), 200);
        QCOMPARE(zoom->value(), 100);
        QCOMPARE(zoom->width(), 110);
        QCOMPARE(p.control<QLabel>("etiquetaZoom")->text(), QStringLiteral("100%"));
        QCOMPARE(p.hoja(), qobject_cast<interfaz::WidgetHoja*>(QApplication::focusWidget()));
    }

    void elCuadroDeNombreLlevaALaCelda_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("celda");
        QTest::newRow("minúsculas") << "b12"
                                    << "B12";
        QTest::newRow("con espacios") << "  c3  "
                                      << "C3";
        QTest::newRow("ceros") << "D007"
                               << "D7";
        QTest::newRow("la última") << "ZZ65536"
                                   << "ZZ65536";
        QTest::newRow("cifras de otra escritura") << QStringLiteral("A٣") << "A3";
        QTest::newRow("al revés") << "12B"
                                  << "";
        QTest::newRow("solo letras") << "B"
                                     << "";
        QTest::newRow("solo cifras") << "12"
                                     << "";
        QTest::newRow("fila cero") << "B0"
                                   << "";
        QTest::newRow("fila de más") << "B65537"
                                     << "";
        QTest::newRow("fila enorme") << "B99999999999999999999"
                                     << "";
        QTest::newRow("columna de más") << "AAA1"
                                        << "";
        QTest::newRow("letra ajena") << QStringLiteral("Ñ1") << "";
        QTest::newRow("algo detrás") << "B2x"
                                     << "";
        QTest::newRow("un rango") << "A1:B2"
                                  << "";
        QTest::newRow("vacío") << ""
                               << "";
    }
    void elCuadroDeNombreLlevaALaCelda() {
        QFETCH(QString, texto);
        QFETCH(QString, celda);
        VentanaDePrueba p;
        p.editor().seleccionar(4, 4);
        p.ventana().refrescarTodo();
        auto* nombre = p.control<QLineEdit>("cuadroNombre");
        QCOMPARE(nombre->text(), QStringLiteral("E5"));
        nombre->setFocus();
        nombre->setText(texto);
        QTest::keyClick(nombre, Qt::Key_Return);
        QCOMPARE(nombre->text(), celda.isEmpty() ? QStringLiteral("E5") : celda);
        QVERIFY(p.hoja()->hasFocus());
        QVERIFY(p.editor().seleccion().esUnaCelda());
        QVERIFY(!p.libro().modificado);
    }

    void escapeEnElCuadroDeNombreLoDejaComoEstaba() {
        VentanaDePrueba p;
        auto* nombre = p.control<QLineEdit>("cuadroNombre");
        nombre->setFocus();
        nombre->setText(QStringLiteral("Z9"));
        QTest::keyClick(nombre, Qt::Key_Escape);
        QCOMPARE(nombre->text(), QStringLiteral("A1"));
        QVERIFY(p.hoja()->hasFocus());
    }

    void laBarraDeFormulasReflejaEnLosDosSentidos() {
        VentanaDePrueba p;
        auto* barra = p.control<QLineEdit>("entradaFormula");
        p.escribir(0, 0, "=1+2");
        QCOMPARE(barra->text(), QString());
        QTest::keyClick(p.hoja(), Qt::Key_Up);
        QCOMPARE(barra->text(), QStringLiteral("=1+2"));
        // De la celda a la barra.
        p.teclear("ho");
        QCOMPARE(barra->text(), QStringLiteral("ho"));
        pruebas::teclearEn(p.hoja()->editorCelda(), QStringLiteral("la"));
        QCOMPARE(barra->text(), QStringLiteral("hola"));
        QTest::keyClick(p.hoja()->editorCelda(), Qt::Key_Escape);
        QCOMPARE(barra->text(), QStringLiteral("=1+2"));
        // De la barra a la celda.
        barra->setFocus();
        barra->selectAll();
        pruebas::teclearEn(barra, QStringLiteral("=10*2"));
        QVERIFY(p.hoja()->editando());
        QCOMPARE(p.hoja()->editorCelda()->text(), QStringLiteral("=10*2"));
        QCOMPARE(p.entrada(0, 0), std::string("=1+2"));
        QTest::keyClick(barra, Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0), std::string("=10*2"));
        QVERIFY(!p.hoja()->editando());
        QVERIFY(p.hoja()->hasFocus());
        QCOMPARE(p.editor().seleccion().activaFila, 1);
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{2});
    }

    void escapeYTabuladorEnLaBarraDeFormulas() {
        VentanaDePrueba p;
        auto* barra = p.control<QLineEdit>("entradaFormula");
        barra->setFocus();
        pruebas::teclearEn(barra, QStringLiteral("no"));
        QTest::keyClick(barra, Qt::Key_Escape);
        QCOMPARE(p.entrada(0, 0), std::string());
        QCOMPARE(barra->text(), QString());
        QVERIFY(!p.hoja()->editando());
        barra->setFocus();
        pruebas::teclearEn(barra, QStringLiteral("sí"));
        QTest::keyClick(barra, Qt::Key_Tab);
        QCOMPARE(p.entrada(0, 0), std::string("sí"));
        QCOMPARE(p.editor().seleccion().activaCol, 1);
        QVERIFY(p.hoja()->hasFocus());
    }

    void laBarraMuestraElContenidoDeLaFusion() {
        VentanaDePrueba p;
        auto* barra = p.control<QLineEdit>("entradaFormula");
        p.escribir(0, 0, "título");
        p.editor().seleccionar(0, 0);
        p.editor().extender(0, 3);
        p.accion("Editar", "Fusionar celdas")->trigger();
        QCOMPARE(barra->text(), QStringLiteral("título"));
        // Aceptar sin tocar nada no borra lo que hay.
        barra->setFocus();
        QTest::keyClick(barra, Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0), std::string("título"));
    }

    void aceptarSinCambiosConservaLosOctetos() {
        VentanaDePrueba p;
        const std::string octetos = "caf\xe9 \xff";
        p.editor().establecerContenido(0, 0, octetos);
        p.ventana().refrescarTodo();
        auto* barra = p.control<QLineEdit>("entradaFormula");
        barra->setFocus();
        QTest::keyClick(barra, Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0), octetos);
    }

    void unTextoLarguisimoNoSeRecorta() {
        VentanaDePrueba p;
        const std::string largo(100000, 'x');
        p.editor().establecerContenido(0, 0, largo);
        p.ventana().refrescarTodo();
        auto* barra = p.control<QLineEdit>("entradaFormula");
        QCOMPARE(barra->text().size(), qsizetype{100000});
        barra->setFocus();
        QTest::keyClick(barra, Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0).size(), largo.size());
        p.hoja()->setFocus();
        p.editor().seleccionar(0, 0);
        QTest::keyClick(p.hoja(), Qt::Key_F2);
        QTest::keyClick(p.hoja()->editorCelda(), Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0).size(), largo.size());
    }

    void elResumen_data() {
        QTest::addColumn<QStringList>("columna");
        QTest::addColumn<QString>("resumen");
        const QString completo = QStringLiteral("  Suma: %1   ·   Promedio: %2   ·   Cuenta: %3");
        QTest::newRow("nada") << QStringList{} << "";
        QTest::newRow("un texto") << QStringList{"a"} << "";
        QTest::newRow("dos textos") << QStringList{"a", "b"} << "  Cuenta: 2";
        QTest::newRow("un número") << QStringList{"3"} << completo.arg("3", "3", "1");
        QTest::newRow("números y texto")
            << QStringList{"1", "2,5", "a"} << completo.arg("3,5", "1,75", "3");
        QTest::newRow("una fórmula")
            << QStringList{"=2*3", "=\"x\""} << completo.arg("6", "6", "2");
        QTest::newRow("un texto que parece número") << QStringList{"'5", "x"} << "  Cuenta: 2";
        QTest::newRow("un error no suma")
            << QStringList{"=1/0", "4"} << completo.arg("4", "4", "2");
        QTest::newRow("muchas cifras")
            << QStringList{"=1/3", "=1/3"} << completo.arg("0,6666666667", "0,3333333333", "2");
    }
    void elResumen() {
        QFETCH(QStringList, columna);
        QFETCH(QString, resumen);
        VentanaDePrueba p;
        for (int i = 0; i < columna.size(); ++i) {
            p.escribir(i, 1, columna[i]);
        }
        p.escribir(9, 5, "1000");
        p.editor().seleccionar(0, 1);
        p.hoja()->setFocus();
        for (int i = 1; i < 5; ++i) {
            QTest::keyClick(p.hoja(), Qt::Key_Down, Qt::ShiftModifier);
        }
        QCOMPARE(p.control<QLabel>("resumen")->text(), resumen);
    }

    void elResumenEsElDeRecorrerLasCeldas() {
        VentanaDePrueba p;
        // Más filas que un bloque del almacén, con huecos, textos, fórmulas, errores y formatos.
        std::mt19937 azar(20261121);
        const auto hasta = [&azar](int n) { return static_cast<int>(azar() % unsigned(n)); };
        for (int i = 0; i < 600; ++i) {
            const int fila = hasta(200);
            const int col = hasta(6);
            const std::array<std::string, 6> textos = {std::to_string(hasta(1000)),
                                                       "texto",
                                                       "=1+" + std::to_string(hasta(9)),
                                                       "=1/0",
                                                       "=\"x\"",
                                                       std::string()};
            p.motor().establecerCelda(0, fila, col, textos[static_cast<std::size_t>(hasta(6))]);
            p.libro().hojas[0]->celdaMut(hasta(200), hasta(6)).formato.negrita = true;
        }
        for (int i = 0; i < 200; ++i) {
            p.editor().seleccionar(hasta(220), hasta(7));
            p.editor().extender(hasta(220), hasta(7));
            const editor::Seleccion& s = p.editor().seleccion();
            double suma = 0;
            int numeros = 0;
            int cuenta = 0;
            for (int fila = s.filaMin(); fila <= s.filaMax(); ++fila) {
                for (int col = s.colMin(); col <= s.colMax(); ++col) {
                    const nucleo::Celda* celda = p.libro().hojas[0]->celda(fila, col);
                    if (celda == nullptr || celda->tipo == nucleo::TipoCelda::Vacia) {
                        continue;
                    }
                    ++cuenta;
                    if (celda->tipo != nucleo::TipoCelda::Texto &&
                        celda->valor.tipo == nucleo::TipoValor::Numero) {
                        suma += celda->valor.numero;
                        ++numeros;
                    }
                }
            }
            const auto texto = [](double valor) {
                return QString::fromStdString(nucleo::formatearNumero(valor, nucleo::Formato{}));
            };
            QString esperado;
            if (numeros > 0) {
                esperado = QStringLiteral("  Suma: %1   ·   Promedio: %2   ·   Cuenta: %3")
                               .arg(texto(suma), texto(suma / numeros), QString::number(cuenta));
            } else if (cuenta > 1) {
                esperado = QStringLiteral("  Cuenta: %1").arg(cuenta);
            }
            p.ventana().actualizarResumen();
            QCOMPARE(p.control<QLabel>("resumen")->text(), esperado);
        }
    }

    void elZoomVaALaPar() {
        VentanaDePrueba p;
        auto* deslizador = p.ventana().findChild<QSlider*>();
        auto* etiqueta = p.control<QLabel>("etiquetaZoom");
        deslizador->setValue(150);
        QCOMPARE(p.hoja()->zoomPorcentaje(), 150);
        QCOMPARE(etiqueta->text(), QStringLiteral("150%"));
        QVERIFY(p.accion("Ver", "150%")->isChecked());
        p.ventana().establecerZoom(500);
        QCOMPARE(etiqueta->text(), QStringLiteral("200%"));
        QCOMPARE(deslizador->value(), 200);
        p.ventana().establecerZoom(10);
        QCOMPARE(etiqueta->text(), QStringLiteral("50%"));
        QVERIFY(!p.accion("Ver", "200%")->isChecked());
        QWidget* vista = p.hoja()->viewport();
        const QPointF centro = vista->rect().center();
        QWheelEvent rueda(centro, vista->mapToGlobal(centro), {}, QPoint(0, 120), Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(vista, &rueda);
        QVERIFY(p.hoja()->zoomPorcentaje() > 50);
        QCOMPARE(deslizador->value(), p.hoja()->zoomPorcentaje());
        QCOMPARE(etiqueta->text(), QStringLiteral("%1%").arg(p.hoja()->zoomPorcentaje()));
    }

    void elTemaSeAlterna() {
        VentanaDePrueba p;
        auto* boton = p.control<QAbstractButton>("toggle_modo");
        QAction* accion = p.accion("Herramientas", "Modo oscuro");
        QVERIFY(accion->isCheckable());
        QVERIFY(!accion->isChecked());
        QCOMPARE(boton->text(), QStringLiteral("☾ Modo oscuro"));
        QCOMPARE(p.hoja()->tema(), renderizador::temaClaro());
        QVERIFY(qApp->styleSheet().contains(QStringLiteral("#F8E2D0")));
        p.pulsar(boton);
        QCOMPARE(boton->text(), QStringLiteral("☀ Modo claro"));
        QVERIFY(accion->isChecked());
        QCOMPARE(p.hoja()->tema(), renderizador::temaOscuro());
        QVERIFY(qApp->styleSheet().contains(QStringLiteral("#180C05")));
        accion->trigger();
        QCOMPARE(boton->text(), QStringLiteral("☾ Modo oscuro"));
        QCOMPARE(p.hoja()->tema(), renderizador::temaClaro());
    }

    void losSimbolosSiguenParejosTrasCambiarDeTema() {
        VentanaDePrueba p;
        QToolButton* boton = p.boton("Copiar");
        const QString estilo = boton->styleSheet();
        const int tamano = boton->font().pixelSize();
        p.pulsar(p.control<QAbstractButton>("toggle_modo"));
        QCOMPARE(boton->styleSheet(), estilo);
        QCOMPARE(boton->font().pixelSize(), tamano);
        p.pulsar(p.control<QAbstractButton>("toggle_modo"));
    }

    void lasOpcionesMuestranYCambian() {
        VentanaDePrueba p;
        p.ventana().establecerZoom(125);
        Dialogos d;
        d.luego([&p](QWidget* w) {
            const auto linea = [w](const char* nombre) {
                return w->findChild<QLineEdit*>(QLatin1String(nombre))->text();
            };
            QCOMPARE(linea("opcionCarpeta"), interfaz::VentanaPrincipal::rutaBiblioteca());
            QCOMPARE(w->windowTitle(), QStringLiteral("Opciones"));
            const auto botones = w->findChildren<QPushButton*>();
            QCOMPARE(botones.size(), 1);
            QCOMPARE(botones.constFirst()->text().remove(u'&'), QStringLiteral("Cerrar"));
            QCOMPARE(linea("opcionRecuperacion"),
                     QString::fromStdString(p.ventana().rutaAutosave()));
            QVERIFY(w->findChild<QLabel*>(QStringLiteral("opcionIntervalo"))
                        ->text()
                        .contains(QStringLiteral("30 segundos")));
            auto* zoom = w->findChild<QSpinBox*>(QStringLiteral("opcionZoom"));
            QCOMPARE(zoom->value(), 125);
            zoom->setValue(80);
            auto* oscuro = w->findChild<QCheckBox*>(QStringLiteral("opcionModoOscuro"));
            QVERIFY(!oscuro->isChecked());
            oscuro->click();
            QTest::keyClick(w, Qt::Key_Escape);
        });
        const auto enDisco = [] {
            QStringList rutas;
            for (QDirIterator it(QDir::homePath(), QDirIterator::Subdirectories); it.hasNext();) {
                rutas << it.next();
            }
            rutas.sort();
            return rutas;
        };
        const QStringList antes = enDisco();
        p.accion("Herramientas", "Opciones")->trigger();
        QVERIFY(d.completo());
        QCOMPARE(enDisco(), antes);
        QCOMPARE(p.hoja()->zoomPorcentaje(), 80);
        QVERIFY(p.ventana().temaOscuroActivo());
        QVERIFY(p.accion("Herramientas", "Modo oscuro")->isChecked());
        QCOMPARE(QDir(p.ruta(".")).entryList(QDir::Files), QStringList());
    }

    void abrirUnLibroConUnaHojaActivaImposible() {
        VentanaDePrueba p;
        p.libro().hojaActiva = 99;
        p.ventana().refrescarTodo();
        QCOMPARE(p.control<QLineEdit>("entradaFormula")->text(), QString());
        p.libro().hojaActiva = -3;
        p.ventana().refrescarTodo();
        QVERIFY(p.control<QLabel>("resumen")->text().isEmpty());
        p.libro().hojaActiva = 0;
    }
};

REGISTRAR_PRUEBAS(PruebaVentana);
#include "prueba_ventana.moc"
