// Cada entrada de los menús: su sitio, su atajo y lo que hace en la ventana de verdad.

#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QDesktopServices>
#include <QObject>
#include <QSignalSpy>
#include <QTest>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

/// Las entradas de un menú en orden: "---" es un separador y "Texto >" un submenú.
QStringList entradas(const QMenu* menu) {
    QStringList textos;
    for (const QAction* accion : menu->actions()) {
        textos << (accion->isSeparator()
                       ? QStringLiteral("---")
                       : accion->text() +
                             (accion->menu() != nullptr ? QStringLiteral(" >") : QString()));
    }
    return textos;
}

} // namespace

class PruebaMenus : public QObject {
    Q_OBJECT

  public slots:
    void recibirEnlace(const QUrl& url) { enlace_ = url; }

  private:
    QUrl enlace_;

  private slots:
    void losMenusVanEnSuOrden() {
        VentanaDePrueba p;
        QStringList titulos;
        for (const QAction* accion : p.ventana().menuBar()->actions()) {
            titulos << accion->text();
        }
        QCOMPARE(titulos, QStringList({"&Archivo", "&Editar", "&Ver", "&Insertar", "&Datos",
                                       "&Herramientas", "A&yuda"}));
    }

    void cadaMenuTieneSusEntradas_data() {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QStringList>("esperadas");
        QTest::newRow("Archivo") << "Archivo"
                                 << QStringList{"Libro nuevo",
                                                "Abrir…",
                                                "---",
                                                "Guardar",
                                                "Guardar como…",
                                                "Importar planilla Excel (.xlsx)…",
                                                "Importar planilla LibreOffice (.ods)…",
                                                "Salir"};
        QTest::newRow("Editar") << "Editar"
                                << QStringList{
                                       "Deshacer",         "Rehacer",         "Cortar",
                                       "Copiar",           "Pegar",           "Borrar contenido",
                                       "Seleccionar todo", "Fusionar celdas", "Separar celdas"};
        QTest::newRow("Ver") << "Ver"
                             << QStringList{"Inmovilizar filas hasta la actual",
                                            "Inmovilizar columnas hasta la actual",
                                            "Liberar paneles", "Zoom >"};
        QTest::newRow("Insertar") << "Insertar"
                                  << QStringList{"Hoja nueva",           "Fila arriba",
                                                 "Fila abajo",           "Columna a la izquierda",
                                                 "Columna a la derecha", "Gráfico >"};
        QTest::newRow("Datos") << "Datos"
                               << QStringList{"Ordenar ascendente", "Ordenar descendente",
                                              "Filtrar…"};
        QTest::newRow("Herramientas") << "Herramientas" << QStringList{"Opciones", "Modo oscuro"};
        QTest::newRow("Ayuda") << "Ayuda"
                               << QStringList{"Acerca de Marnel", "Reportar un problema"};
    }
    void cadaMenuTieneSusEntradas() {
        QFETCH(QString, menu);
        QFETCH(QStringList, esperadas);
        VentanaDePrueba p;
        QCOMPARE(entradas(p.menu(menu)), esperadas);
    }

    void losSubmenusTienenSusEntradas() {
        VentanaDePrueba p;
        QCOMPARE(entradas(p.accion("Ver", "Zoom")->menu()),
                 QStringList({"50%", "75%", "100%", "125%", "150%", "200%"}));
        QCOMPARE(entradas(p.accion("Insertar", "Gráfico")->menu()),
                 QStringList({"Barras", "Líneas", "Torta"}));
    }

    void losAtajosSonLosDeSiempre_data() {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<QKeySequence>("atajo");
        QTest::newRow("nuevo") << "Archivo"
                               << "Libro nuevo" << QKeySequence(QKeySequence::New);
        QTest::newRow("abrir") << "Archivo"
                               << "Abrir…" << QKeySequence(QKeySequence::Open);
        QTest::newRow("guardar") << "Archivo"
                                 << "Guardar" << QKeySequence(QKeySequence::Save);
        QTest::newRow("como") << "Archivo"
                              << "Guardar como…" << QKeySequence();
        QTest::newRow("salir") << "Archivo"
                               << "Salir" << QKeySequence(Qt::ALT | Qt::Key_F4);
        QTest::newRow("deshacer") << "Editar"
                                  << "Deshacer" << QKeySequence(QKeySequence::Undo);
        QTest::newRow("rehacer") << "Editar"
                                 << "Rehacer" << QKeySequence(Qt::CTRL | Qt::Key_Y);
        QTest::newRow("cortar") << "Editar"
                                << "Cortar" << QKeySequence(QKeySequence::Cut);
        QTest::newRow("copiar") << "Editar"
                                << "Copiar" << QKeySequence(QKeySequence::Copy);
        QTest::newRow("pegar") << "Editar"
                               << "Pegar" << QKeySequence(QKeySequence::Paste);
        QTest::newRow("todo") << "Editar"
                              << "Seleccionar todo" << QKeySequence(QKeySequence::SelectAll);
        QTest::newRow("borrar") << "Editar"
                                << "Borrar contenido" << QKeySequence();
        QTest::newRow("ascendente") << "Datos"
                                    << "Ordenar ascendente" << QKeySequence();
    }
    void losAtajosSonLosDeSiempre() {
        QFETCH(QString, menu);
        QFETCH(QString, entrada);
        QFETCH(QKeySequence, atajo);
        VentanaDePrueba p;
        QVERIFY(p.accion(menu, entrada) != nullptr);
        QCOMPARE(p.accion(menu, entrada)->shortcut(), atajo);
    }

    void cadaAtajoEligeSuEntrada_data() {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("con");
        const auto fila = [](const char* menu, const char* entrada, Qt::Key tecla,
                             Qt::KeyboardModifier con = Qt::ControlModifier) {
            QTest::newRow(entrada)
                << QString::fromUtf8(menu) << QString::fromUtf8(entrada) << int(tecla) << int(con);
        };
        fila("Archivo", "Libro nuevo", Qt::Key_N);
        fila("Archivo", "Abrir…", Qt::Key_O);
        fila("Archivo", "Guardar", Qt::Key_S);
        fila("Archivo", "Salir", Qt::Key_F4, Qt::AltModifier);
        fila("Editar", "Deshacer", Qt::Key_Z);
        fila("Editar", "Rehacer", Qt::Key_Y);
        fila("Editar", "Cortar", Qt::Key_X);
        fila("Editar", "Copiar", Qt::Key_C);
        fila("Editar", "Pegar", Qt::Key_V);
        fila("Editar", "Seleccionar todo", Qt::Key_A);
    }
    void cadaAtajoEligeSuEntrada() {
        QFETCH(QString, menu);
        QFETCH(QString, entrada);
        QFETCH(int, tecla);
        QFETCH(int, con);
        VentanaDePrueba p;
        p.libro().ruta = p.ruta("atajos.mrn").toStdString();
        p.escribir(0, 0, "algo");
        QSignalSpy elecciones(p.accion(menu, entrada), &QAction::triggered);
        const Dialogos d;
        QTest::keyClick(p.hoja(), static_cast<Qt::Key>(tecla),
                        static_cast<Qt::KeyboardModifiers>(con));
        QCOMPARE(elecciones.size(), 1);
    }

    void deshacerYRehacerConElTeclado() {
        VentanaDePrueba p;
        p.escribir(0, 0, "uno");
        QTest::keyClick(p.hoja(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(p.entrada(0, 0), std::string());
        QTest::keyClick(p.hoja(), Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(p.entrada(0, 0), std::string("uno"));
    }

    void copiarCortarYPegarConElTeclado() {
        VentanaDePrueba p;
        p.escribir(0, 0, "=1+1");
        p.editor().seleccionar(0, 0);
        QTest::keyClick(p.hoja(), Qt::Key_C, Qt::ControlModifier);
        p.editor().seleccionar(2, 2);
        QTest::keyClick(p.hoja(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(p.entrada(2, 2), std::string("=1+1"));
        QTest::keyClick(p.hoja(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(p.entrada(2, 2), std::string());
        QCOMPARE(p.entrada(0, 0), std::string("=1+1"));
        QTest::keyClick(p.hoja(), Qt::Key_A, Qt::ControlModifier);
        QVERIFY(p.editor().seleccion().esUnaCelda());
        p.escribir(3, 1, "x");
        QTest::keyClick(p.hoja(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(p.editor().seleccion().filaMax(), 3);
        QCOMPARE(p.editor().seleccion().colMax(), 1);
    }

    void borrarFusionarYSeparar() {
        VentanaDePrueba p;
        p.escribir(0, 0, "título");
        p.editor().seleccionar(0, 0);
        p.editor().extender(1, 2);
        p.accion("Editar", "Fusionar celdas")->trigger();
        QCOMPARE(p.libro().hojas[0]->fusiones.size(), std::size_t{1});
        p.accion("Editar", "Separar celdas")->trigger();
        QVERIFY(p.libro().hojas[0]->fusiones.empty());
        p.accion("Editar", "Borrar contenido")->trigger();
        QCOMPARE(p.entrada(0, 0), std::string());
    }

    void insertarFilasYColumnas_data() {
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<int>("fila");
        QTest::addColumn<int>("col");
        QTest::newRow("arriba") << "Fila arriba" << 3 << 2;
        QTest::newRow("abajo") << "Fila abajo" << 2 << 2;
        QTest::newRow("izquierda") << "Columna a la izquierda" << 2 << 3;
        QTest::newRow("derecha") << "Columna a la derecha" << 2 << 2;
    }
    void insertarFilasYColumnas() {
        QFETCH(QString, entrada);
        QFETCH(int, fila);
        QFETCH(int, col);
        VentanaDePrueba p;
        p.escribir(2, 2, "aquí");
        p.escribir(3, 3, "después");
        p.editor().seleccionar(2, 2);
        p.accion("Insertar", entrada)->trigger();
        QCOMPARE(p.entrada(fila, col), std::string("aquí"));
        const bool filas = entrada.startsWith(u'F');
        QCOMPARE(p.entrada(filas ? 4 : 3, filas ? 3 : 4), std::string("después"));
    }

    void ordenarSoloConVariasCeldas() {
        VentanaDePrueba p;
        p.escribir(0, 0, "3");
        p.escribir(1, 0, "1");
        p.escribir(2, 0, "2");
        p.editor().seleccionar(0, 0);
        p.ventana().refrescarTodo();
        QVERIFY(!p.accion("Datos", "Ordenar ascendente")->isEnabled());
        QVERIFY(!p.accion("Datos", "Ordenar descendente")->isEnabled());
        QTest::keyClick(p.hoja(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(p.hoja(), Qt::Key_Down, Qt::ShiftModifier);
        QVERIFY(p.accion("Datos", "Ordenar ascendente")->isEnabled());
        p.accion("Datos", "Ordenar ascendente")->trigger();
        QCOMPARE(p.entrada(0, 0), std::string("1"));
        QCOMPARE(p.entrada(2, 0), std::string("3"));
        p.accion("Datos", "Ordenar descendente")->trigger();
        QCOMPARE(p.entrada(0, 0), std::string("3"));
        QCOMPARE(p.entrada(2, 0), std::string("1"));
    }

    void inmovilizarYLiberar() {
        VentanaDePrueba p;
        p.editor().seleccionar(2, 1);
        p.accion("Ver", "Inmovilizar filas hasta la actual")->trigger();
        QCOMPARE(p.libro().hojas[0]->filasInmovilizadas, 3);
        QCOMPARE(p.libro().hojas[0]->columnasInmovilizadas, 0);
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título* — Marnel"));
        p.accion("Ver", "Inmovilizar columnas hasta la actual")->trigger();
        QCOMPARE(p.libro().hojas[0]->columnasInmovilizadas, 2);
        p.libro().modificado = false;
        p.accion("Ver", "Liberar paneles")->trigger();
        QCOMPARE(p.libro().hojas[0]->filasInmovilizadas, 0);
        QCOMPARE(p.libro().hojas[0]->columnasInmovilizadas, 0);
        QVERIFY(p.libro().modificado);
        p.libro().hojaActiva = 7;
        p.libro().modificado = false;
        p.ventana().inmovilizarFilas();
        QVERIFY(!p.libro().modificado);
        p.libro().hojaActiva = 0;
    }

    void elZoomDelMenu() {
        VentanaDePrueba p;
        for (const int nivel : {50, 75, 100, 125, 150, 200}) {
            p.accion("Ver", QStringLiteral("%1%").arg(nivel))->trigger();
            QCOMPARE(p.hoja()->zoomPorcentaje(), nivel);
            QCOMPARE(p.control<QLabel>("etiquetaZoom")->text(), QStringLiteral("%1%").arg(nivel));
            QVERIFY(p.accion("Ver", QStringLiteral("%1%").arg(nivel))->isChecked());
        }
    }

    void loQueFaltaSeAnuncia_data() {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<QString>("texto");
        const auto futuro = [](const char* que, const char* fase) {
            return QString::fromUtf8(que) +
                   QStringLiteral(" llegará en una próxima versión de Marnel (") +
                   QString::fromUtf8(fase) + QStringLiteral(").");
        };
        QTest::newRow("xlsx") << "Archivo"
                              << "Importar planilla Excel (.xlsx)…"
                              << futuro("La importación de archivos .xlsx", "Fase 3");
        QTest::newRow("ods") << "Archivo"
                             << "Importar planilla LibreOffice (.ods)…"
                             << futuro("La importación de archivos .ods", "Fase 3");
        for (const char* clase : {"Barras", "Líneas", "Torta"}) {
            QTest::newRow(clase) << "Insertar" << QString::fromUtf8(clase)
                                 << futuro("La inserción de gráficos", "Fase 2");
        }
        QTest::newRow("filtrar") << "Datos"
                                 << "Filtrar…"
                                 << futuro("El filtrado de datos", "una próxima versión");
    }
    void loQueFaltaSeAnuncia() {
        QFETCH(QString, menu);
        QFETCH(QString, entrada);
        QFETCH(QString, texto);
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        p.accion(menu, entrada)->trigger();
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).titulo, QStringLiteral("Marnel"));
        QCOMPARE(d.vistos().at(0).texto, texto);
        QCOMPARE(d.vistos().at(0).icono, QMessageBox::Information);
        QCOMPARE(d.vistos().at(0).formato, Qt::PlainText);
    }

    void acercaDeSeCierraConSuBoton() {
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        QString cuerpo;
        d.luego([&cuerpo](QWidget* w) {
            auto* cuadro = qobject_cast<QMessageBox*>(w);
            QVERIFY(cuadro != nullptr);
            cuerpo = cuadro->text();
            QVERIFY(!cuadro->iconPixmap().isNull());
            QCOMPARE(cuadro->buttons().size(), 1);
            cuadro->buttons().constFirst()->click();
        });
        p.accion("Ayuda", "Acerca de Marnel")->trigger();
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).titulo, QStringLiteral("Acerca de Marnel"));
        QCOMPARE(d.vistos().at(0).rotulos, QStringList{"Cerrar"});
        for (const char* trozo : {"Marnel", "Versión 1.0", "Quenda", "Velora"}) {
            QVERIFY2(cuerpo.contains(QString::fromUtf8(trozo)), trozo);
        }
    }

    void reportarAbreUnCorreoDeDireccionFija() {
        VentanaDePrueba p;
        p.libro().hojas[0]->nombre = "x@y.example";
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "recibirEnlace");
        p.accion("Ayuda", "Reportar un problema")->trigger();
        QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
        QCOMPARE(enlace_.scheme(), QStringLiteral("mailto"));
        QCOMPARE(enlace_.path(), QStringLiteral("soporte@velora.example"));
    }

    void salirPreguntaComoCerrar() {
        VentanaDePrueba p;
        p.escribir(0, 0, "sin guardar");
        Dialogos d;
        d.pulsar(QMessageBox::Cancel);
        p.accion("Archivo", "Salir")->trigger();
        QVERIFY(d.completo());
        QVERIFY(p.ventana().isVisible());
        d.pulsar(QMessageBox::Discard);
        p.accion("Archivo", "Salir")->trigger();
        QVERIFY(d.completo());
        QVERIFY(!p.ventana().isVisible());
    }
};

REGISTRAR_PRUEBAS(PruebaMenus);
#include "prueba_menus.moc"
