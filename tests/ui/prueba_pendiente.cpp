// Lo que se está tecleando se escribe antes de cualquier otra orden, en la celda en que empezó.

#include "model/serializador.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QObject>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <functional>
#include <utility>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

using Gesto = std::function<void(VentanaDePrueba&)>;

struct Caso {
    const char* nombre;
    Gesto gesto;
};

/// Todas las entradas de los menús, con el menú en que están.
constexpr std::array kEntradas = {
    std::pair("Archivo", "Libro nuevo"),
    std::pair("Archivo", "Abrir…"),
    std::pair("Archivo", "Guardar"),
    std::pair("Archivo", "Guardar como…"),
    std::pair("Archivo", "Importar planilla Excel (.xlsx)…"),
    std::pair("Archivo", "Importar planilla LibreOffice (.ods)…"),
    std::pair("Archivo", "Salir"),
    std::pair("Editar", "Deshacer"),
    std::pair("Editar", "Rehacer"),
    std::pair("Editar", "Cortar"),
    std::pair("Editar", "Copiar"),
    std::pair("Editar", "Pegar"),
    std::pair("Editar", "Borrar contenido"),
    std::pair("Editar", "Seleccionar todo"),
    std::pair("Editar", "Fusionar celdas"),
    std::pair("Editar", "Separar celdas"),
    std::pair("Ver", "Inmovilizar filas hasta la actual"),
    std::pair("Ver", "Inmovilizar columnas hasta la actual"),
    std::pair("Ver", "Liberar paneles"),
    std::pair("Ver", "50%"),
    std::pair("Ver", "200%"),
    std::pair("Insertar", "Hoja nueva"),
    std::pair("Insertar", "Fila arriba"),
    std::pair("Insertar", "Fila abajo"),
    std::pair("Insertar", "Columna a la izquierda"),
    std::pair("Insertar", "Columna a la derecha"),
    std::pair("Insertar", "Torta"),
    std::pair("Datos", "Ordenar ascendente"),
    std::pair("Datos", "Ordenar descendente"),
    std::pair("Datos", "Filtrar…"),
    std::pair("Herramientas", "Opciones"),
    std::pair("Herramientas", "Modo oscuro"),
    std::pair("Ayuda", "Acerca de Marnel"),
    std::pair("Ayuda", "Reportar un problema"),
};

std::vector<Caso> gestos() {
    std::vector<Caso> casos = {
        {"pulsar otra pestaña", [](VentanaDePrueba& p) { p.pulsarPestana(1); }},
        {"pulsar la misma pestaña", [](VentanaDePrueba& p) { p.pulsarPestana(0); }},
        {"botón de hoja nueva",
         [](VentanaDePrueba& p) { p.pulsar(p.control<QToolButton>("btnNuevaHoja")); }},
        {"cuadro de nombre",
         [](VentanaDePrueba& p) {
             auto* nombre = p.control<QLineEdit>("cuadroNombre");
             nombre->setFocus();
             nombre->setText(QStringLiteral("D9"));
             QTest::keyClick(nombre, Qt::Key_Return);
         }},
        {"F6", [](VentanaDePrueba& p) { QTest::keyClick(&p.ventana(), Qt::Key_F6); }},
        {"Ctrl+S",
         [](VentanaDePrueba& p) {
             QTest::keyClick(p.hoja()->editorCelda(), Qt::Key_S, Qt::ControlModifier);
         }},
    };
    for (const char* boton :
         {"Deshacer", "Rehacer", "Cortar", "Copiar", "Pegar", "Negrita", "Cursiva", "Subrayado",
          "Izquierda", "Centrar", "Derecha", "Moneda", "Porcentaje", "Menos decimales",
          "Más decimales", "Fusionar", "Separar"}) {
        casos.push_back({boton, [boton](VentanaDePrueba& p) {
                             QToolButton* pulsado = p.boton(QString::fromUtf8(boton));
                             QSignalSpy pulsaciones(pulsado, &QToolButton::clicked);
                             p.pulsar(pulsado);
                             QCOMPARE(pulsaciones.size(), 1);
                         }});
    }
    for (const auto& [menu, entrada] : kEntradas) {
        casos.push_back({entrada, [menu = menu, entrada = entrada](VentanaDePrueba& p) {
                             const QString titulo = QString::fromUtf8(menu);
                             const QString texto = QString::fromUtf8(entrada);
                             QSignalSpy elecciones(p.accion(titulo, texto), &QAction::triggered);
                             p.elegir(titulo, texto);
                             QCOMPARE(elecciones.size(), 1);
                         }});
    }
    return casos;
}

} // namespace

class PruebaPendiente : public QObject {
    Q_OBJECT

  public slots:
    void recibirEnlace(const QUrl&) {}

  private slots:
    void initTestCase() {
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "recibirEnlace");
    }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("mailto")); }

    void cadaGestoLoEscribeAntes_data() {
        QTest::addColumn<int>("caso");
        const auto casos = gestos();
        for (std::size_t i = 0; i < casos.size(); ++i) {
            QTest::newRow(casos[i].nombre) << static_cast<int>(i);
        }
    }
    void cadaGestoLoEscribeAntes() {
        QFETCH(int, caso);
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.ventana().cambiarHoja(0);
        p.libro().ruta = p.ruta("pendiente.mrn").toStdString();
        QGuiApplication::clipboard()->setText(QStringLiteral("del portapapeles"));
        p.escribir(8, 1, "antes");
        p.escribir(9, 1, "deshecho");
        p.ventana().editor().deshacer();
        p.editor().seleccionar(1, 1);
        p.editor().extender(2, 1);
        p.ventana().refrescarTodo();
        p.hoja()->setFocus();
        p.teclear("pendiente");
        QVERIFY(p.hoja()->editando());
        QCOMPARE(p.entrada(2, 1, 0), std::string());
        QStringList alTerminar;
        connect(p.hoja(), &interfaz::WidgetHoja::edicionTerminada, this,
                [&] { alTerminar << QString::fromStdString(p.entrada(2, 1, 0)); });
        // Los cuadros que abren algunas órdenes se cierran sin responder.
        const Dialogos d;
        gestos()[static_cast<std::size_t>(caso)].gesto(p);
        QVERIFY(!p.hoja()->editando());
        QVERIFY(!alTerminar.isEmpty());
        QCOMPARE(alTerminar.constFirst(), QStringLiteral("pendiente"));
        QCOMPARE(p.entrada(0, 0, 1), std::string());
        QCOMPARE(p.entrada(2, 1, 1), std::string());
    }

    void deshacerQuitaLoQueSeTecleaba() {
        VentanaDePrueba p;
        p.escribir(0, 0, "antes");
        p.teclear("pendiente");
        p.pulsar(p.boton("Deshacer"));
        QCOMPARE(p.entrada(0, 0), std::string("antes"));
        QCOMPARE(p.entrada(1, 0), std::string());
        p.pulsar(p.boton("Rehacer"));
        QCOMPARE(p.entrada(1, 0), std::string("pendiente"));
    }

    void lasTeclasQueElEditorNoQuiereNoHacenNada() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("sigue");
        for (const int tecla : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_F5}) {
            QTest::keyClick(p.hoja()->editorCelda(), static_cast<Qt::Key>(tecla));
        }
        // Tampoco si la ventana no es la activa y, por tanto, nadie tiene el foco.
        QWidget otra;
        otra.show();
        otra.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&otra));
        QVERIFY(!p.hoja()->editorCelda()->hasFocus());
        QTest::keyClick(p.hoja()->editorCelda(), Qt::Key_Up);
        QTest::keyClick(p.hoja(), Qt::Key_Up);
        QVERIFY(p.hoja()->editando());
        QCOMPARE(p.hoja()->editorCelda()->text(), QStringLiteral("sigue"));
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
    }

    void guardarLoIncluye() {
        VentanaDePrueba p;
        p.libro().ruta = p.ruta("completo.mrn").toStdString();
        p.teclear("último");
        QVERIFY(p.ventana().guardarLibro());
        nucleo::Libro leido;
        nucleo::Serializador::cargar(p.libro().ruta, leido);
        QVERIFY(leido.hojas[0]->celda(0, 0) != nullptr);
        QCOMPARE(leido.hojas[0]->celda(0, 0)->entrada, std::string("último"));
    }

    void cerrarNuevoYAbrirLoPreguntan_data() {
        QTest::addColumn<int>("orden");
        QTest::newRow("cerrar") << 0;
        QTest::newRow("nuevo") << 1;
        QTest::newRow("abrir") << 2;
    }
    void cerrarNuevoYAbrirLoPreguntan() {
        QFETCH(int, orden);
        VentanaDePrueba p;
        p.ventana();
        p.teclear("sin aceptar");
        QVERIFY(!p.libro().modificado);
        Dialogos d;
        d.pulsar(QMessageBox::Cancel);
        if (orden == 0) {
            p.ventana().close();
        } else if (orden == 1) {
            p.ventana().nuevoLibro();
        } else {
            p.ventana().abrirLibro();
        }
        QVERIFY(d.completo());
        QCOMPARE(p.entrada(0, 0), std::string("sin aceptar"));
    }

    void loTecleadoEnLaBarraTambien() {
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        auto* barra = p.control<QLineEdit>("entradaFormula");
        barra->setFocus();
        pruebas::teclearEn(barra, QStringLiteral("=3*3"));
        p.pulsarPestana(0);
        QCOMPARE(p.entrada(0, 0, 1), std::string("=3*3"));
        QCOMPARE(p.entrada(0, 0, 0), std::string());
        QCOMPARE(p.libro().hojaActiva, 0);
        QCOMPARE(p.pestanas()->currentIndex(), 0);
    }

    void elMenuDePestanaTambien() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("antes del menú");
        Dialogos d;
        d.elegir(QString());
        const QPoint punto = p.pestanas()->tabRect(0).center();
        QContextMenuEvent evento(QContextMenuEvent::Mouse, punto, p.pestanas()->mapToGlobal(punto));
        QApplication::sendEvent(p.pestanas(), &evento);
        QVERIFY(d.completo());
        QCOMPARE(p.entrada(0, 0), std::string("antes del menú"));
    }

    void sustituirElLibroNoDejaNadaAMedias() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("de A");
        Dialogos d;
        d.pulsar(QMessageBox::Discard);
        p.ventana().nuevoLibro();
        QVERIFY(d.completo());
        QVERIFY(!p.hoja()->editando());
        QCOMPARE(p.entrada(0, 0), std::string());
        QTest::keyClick(p.hoja(), Qt::Key_Return);
        QCOMPARE(p.entrada(0, 0), std::string());
        QVERIFY(!p.libro().modificado);
    }
};

REGISTRAR_PRUEBAS(PruebaPendiente);
#include "prueba_pendiente.moc"
