// Crear, abrir, guardar y cerrar: preguntas, respuestas y fallos del disco.

#include "model/serializador.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QObject>
#include <QStatusBar>
#include <QTest>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

const QString kPregunta = QStringLiteral("El libro tiene cambios sin guardar. ¿Querés guardarlos?");
const QString kNoSeAbre =
    QStringLiteral("No se pudo abrir el archivo. Puede estar dañado o no ser un libro de Marnel.");
const QString kNoSeGuarda = QStringLiteral("No se pudo guardar el archivo.");

/// Escribe un libro con ese texto en A1 y devuelve su ruta.
QString crearLibro(const QString& ruta, const std::string& texto) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    motor.establecerCelda(0, 0, 0, texto);
    nucleo::Serializador::guardar(libro, ruta.toStdString());
    return ruta;
}

/// Los mensajes que una barra de estado tiene cada vez que se pinta.
class Pintura : public QObject {
  public:
    explicit Pintura(QStatusBar* barra) : QObject(barra), barra_(barra) {
        barra->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* evento) override {
        if (evento->type() == QEvent::Paint && !barra_->currentMessage().isEmpty()) {
            mensajes << barra_->currentMessage();
        }
        return false;
    }

    QStringList mensajes;

  private:
    QStatusBar* barra_;
};

void escribirArchivo(const QString& ruta, const QByteArray& bytes) {
    QFile archivo(ruta);
    QVERIFY(archivo.open(QIODevice::WriteOnly));
    archivo.write(bytes);
}

} // namespace

class PruebaDocumento : public QObject {
    Q_OBJECT

  private slots:
    void elTituloDiceElNombreYLosCambios() {
        VentanaDePrueba p;
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título — Marnel"));
        QCOMPARE(p.control<QLabel>("etiquetaEstado")->text(), QStringLiteral("Guardado"));
        p.escribir(0, 0, "1");
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título* — Marnel"));
        QCOMPARE(p.control<QLabel>("etiquetaEstado")->text(), QStringLiteral("Modificado"));
        for (const auto& [archivo, nombre] :
             {std::pair("Ventas.2026.mrn", "Ventas.2026"),
              std::pair("sin extensión", "sin extensión"),
              std::pair("<img src=x>.mrn", "<img src=x>"), std::pair("%1&.mrn", "%1&"),
              std::pair("a[*]b.mrn", "a[*][*]b"), std::pair("a\nb.mrn", "a b")}) {
            p.libro().ruta = std::string("/carpeta/") + archivo;
            p.ventana().actualizarTitulo();
            QCOMPARE(p.ventana().windowTitle(),
                     QString::fromUtf8(nombre) + QStringLiteral("* — Marnel"));
        }
    }

    void guardarYVolverAAbrir() {
        VentanaDePrueba p;
        p.escribir(0, 0, "2");
        p.escribir(1, 0, "=A1*21");
        Dialogos d;
        d.escribir(p.ruta("informe"));
        QVERIFY(p.ventana().guardarLibro());
        QVERIFY(d.completo());
        QVERIFY(QFile::exists(p.ruta("informe.mrn")));
        QCOMPARE(p.libro().ruta, p.ruta("informe.mrn").toStdString());
        QVERIFY(!p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("informe — Marnel"));
        p.ventana().nuevoLibro();
        QVERIFY(p.libro().ruta.empty());
        QVERIFY(p.ventana().abrirArchivo(p.ruta("informe.mrn")));
        QCOMPARE(p.valor(1, 0), QStringLiteral("42"));
        QVERIFY(!p.libro().modificado);
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{0});
    }

    void elCuadroDeGuardarComo() {
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.luego([](QWidget* w) {
            auto* dialogo = qobject_cast<QFileDialog*>(w);
            QVERIFY(dialogo != nullptr);
            QCOMPARE(dialogo->windowTitle(), QStringLiteral("Guardar libro"));
            QCOMPARE(dialogo->nameFilters(), QStringList{"Libro de Marnel (*.mrn)"});
            QCOMPARE(dialogo->directory().absolutePath(),
                     interfaz::VentanaPrincipal::carpetaBiblioteca());
            QCOMPARE(dialogo->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                     QStringLiteral("Sin título.mrn"));
            dialogo->reject();
        });
        QVERIFY(!p.ventana().guardarLibroComo());
        QVERIFY(d.completo());
        QVERIFY(p.libro().ruta.empty());
        d.luego([](QWidget* w) {
            auto* dialogo = qobject_cast<QFileDialog*>(w);
            QVERIFY(dialogo != nullptr);
            QCOMPARE(dialogo->windowTitle(), QStringLiteral("Abrir libro"));
            QCOMPARE(dialogo->nameFilters(), QStringList{"Libro de Marnel (*.mrn)"});
            dialogo->reject();
        });
        p.accion("Archivo", "Abrir…")->trigger();
        QVERIFY(d.completo());
    }

    void laExtensionSeAnade_data() {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("queda");
        QTest::newRow("sin extensión") << "informe"
                                       << "informe.mrn";
        QTest::newRow("en mayúsculas") << "INFORME.MRN"
                                       << "INFORME.MRN";
        QTest::newRow("otra extensión") << "datos.txt"
                                        << "datos.txt.mrn";
        QTest::newRow("con marcas") << "<b>%1&.mrn"
                                    << "<b>%1&.mrn";
    }
    void laExtensionSeAnade() {
        QFETCH(QString, escrito);
        QFETCH(QString, queda);
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.escribir(p.ruta(escrito));
        QVERIFY(p.ventana().guardarLibroComo());
        QVERIFY(d.completo());
        QCOMPARE(QString::fromStdString(p.libro().ruta), p.ruta(queda));
        QVERIFY(QFile::exists(p.ruta(queda)));
    }

    void sobrescribirPorLaExtensionAnadidaSePregunta() {
        VentanaDePrueba p;
        crearLibro(p.ruta("datos.txt.mrn"), "lo de antes");
        p.escribir(0, 0, "lo nuevo");
        Dialogos d;
        d.escribir(p.ruta("datos.txt")).pulsar(QMessageBox::No);
        QVERIFY(!p.ventana().guardarLibroComo());
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, QStringLiteral("Ya existe un archivo llamado "
                                                        "\"datos.txt.mrn\". ¿Querés "
                                                        "reemplazarlo?"));
        QCOMPARE(d.vistos().at(0).formato, Qt::PlainText);
        QVERIFY(p.libro().ruta.empty());
        nucleo::Libro intacto;
        nucleo::Serializador::cargar(p.ruta("datos.txt.mrn").toStdString(), intacto);
        QCOMPARE(intacto.hojas[0]->celda(0, 0)->entrada, std::string("lo de antes"));
        d.escribir(p.ruta("datos.txt")).pulsar(QMessageBox::Yes);
        QVERIFY(p.ventana().guardarLibroComo());
        QVERIFY(d.completo());
    }

    void sobrescribirLoEscritoEnElCuadroLoPreguntaEl() {
        VentanaDePrueba p;
        crearLibro(p.ruta("datos.mrn"), "lo de antes");
        p.escribir(0, 0, "lo nuevo");
        Dialogos d;
        // Al decir que no, el cuadro sigue abierto y se cancela.
        d.luego([&p, &d](QWidget* w) {
            d.pulsar(QMessageBox::No);
            w->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(p.ruta("datos"));
            QMetaObject::invokeMethod(w, "accept");
            qobject_cast<QDialog*>(w)->reject();
        });
        QVERIFY(!p.ventana().guardarLibroComo());
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().size(), std::size_t{1});
        nucleo::Libro intacto;
        nucleo::Serializador::cargar(p.ruta("datos.mrn").toStdString(), intacto);
        QCOMPARE(intacto.hojas[0]->celda(0, 0)->entrada, std::string("lo de antes"));
    }

    void laPreguntaDeLosCambios() {
        VentanaDePrueba p;
        QVERIFY(p.ventana().confirmarDescarte());
        p.escribir(0, 0, "1");
        Dialogos d;
        d.cerrar();
        QVERIFY(!p.ventana().confirmarDescarte());
        QVERIFY(d.completo());
        const auto& cuadro = d.vistos().at(0);
        QCOMPARE(cuadro.titulo, QStringLiteral("Marnel"));
        QCOMPARE(cuadro.texto, kPregunta);
        QCOMPARE(cuadro.botones, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        QCOMPARE(cuadro.predeterminado, QMessageBox::Save);
        QCOMPARE(cuadro.rotulos, QStringList({"Cancelar", "Descartar", "Guardar"}));
    }

    void cerrarConCambios() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        Dialogos d;
        d.pulsar(QMessageBox::Cancel);
        QVERIFY(!p.ventana().close());
        QVERIFY(d.completo());
        // Guardar, pero cancelar el nombre: la ventana sigue abierta.
        d.pulsar(QMessageBox::Save).cerrar();
        QVERIFY(!p.ventana().close());
        QVERIFY(d.completo());
        QVERIFY(p.libro().modificado);
        d.pulsar(QMessageBox::Save).escribir(p.ruta("cierre"));
        QVERIFY(p.ventana().close());
        QVERIFY(d.completo());
        QVERIFY(QFile::exists(p.ruta("cierre.mrn")));
    }

    void cerrarSinCambiosNoPregunta() {
        VentanaDePrueba p;
        escribirArchivo(p.ruta("marnel_otro.mrt"), "x");
        p.ventana();
        const Dialogos d;
        QVERIFY(p.ventana().close());
        QCOMPARE(d.inesperados(), 0);
        QVERIFY(QFile::exists(p.ruta("marnel_otro.mrt")));
    }

    void nuevoConCambios_data() {
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<bool>("nuevo");
        QTest::newRow("descartar") << int(QMessageBox::Discard) << true;
        QTest::newRow("cancelar") << int(QMessageBox::Cancel) << false;
    }
    void nuevoConCambios() {
        QFETCH(int, respuesta);
        QFETCH(bool, nuevo);
        VentanaDePrueba p;
        p.ventana().agregarHoja();
        p.escribir(2, 2, "1");
        Dialogos d;
        d.pulsar(static_cast<QMessageBox::StandardButton>(respuesta));
        QTest::keyClick(p.hoja(), Qt::Key_N, Qt::ControlModifier);
        QVERIFY(d.completo());
        QCOMPARE(p.libro().modificado, !nuevo);
        QCOMPARE(p.pestanas()->count(), nuevo ? 1 : 2);
        QCOMPARE(p.editor().pasosDeshacer() == 0, nuevo);
        if (nuevo) {
            QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
            QVERIFY(!p.editor().hayCeldasCopiadas());
        }
    }

    void abrirOlvidaElDocumentoAnterior() {
        VentanaDePrueba p;
        const QString b = crearLibro(p.ruta("b.mrn"), "de B");
        p.escribir(0, 0, "de A");
        p.editor().seleccionar(0, 0);
        p.editor().copiar();
        p.editor().seleccionar(9, 9);
        Dialogos d;
        d.pulsar(QMessageBox::Discard).escribir(b);
        p.accion("Archivo", "Abrir…")->trigger();
        QVERIFY(d.completo());
        QCOMPARE(p.entrada(0, 0), std::string("de B"));
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
        QVERIFY(!p.editor().hayCeldasCopiadas());
        QVERIFY(!p.boton("Deshacer")->isEnabled());
        QTest::keyClick(p.hoja(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(p.entrada(0, 0), std::string("de B"));
        QCOMPARE(QString::fromStdString(p.ventana().rutaAutosave()), p.ruta("marnel_b.mrt"));
        QCOMPARE(p.control<QLineEdit>("entradaFormula")->text(), QStringLiteral("de B"));
    }

    void abrirLoQueNoExisteNoCambiaNada() {
        VentanaDePrueba p;
        p.escribir(0, 0, "sigue");
        p.libro().modificado = false;
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        QVERIFY(!p.ventana().abrirArchivo(p.ruta("no-existe.mrn")));
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kNoSeAbre);
        QCOMPARE(d.vistos().at(0).titulo, QStringLiteral("Marnel"));
        QCOMPARE(d.vistos().at(0).icono, QMessageBox::Warning);
        QCOMPARE(p.entrada(0, 0), std::string("sigue"));
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{1});
    }

    void abrirLoQueNoEsUnLibroDejaUnoVacio() {
        VentanaDePrueba p;
        escribirArchivo(p.ruta("foto.mrn"), "esto no es un libro");
        QVERIFY(p.ventana().abrirArchivo(crearLibro(p.ruta("bueno.mrn"), "hola")));
        p.ventana().agregarHoja();
        p.escribir(4, 4, "x");
        p.libro().modificado = false;
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        QVERIFY(!p.ventana().abrirArchivo(p.ruta("foto.mrn")));
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kNoSeAbre);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título — Marnel"));
        QCOMPARE(p.pestanas()->count(), 1);
        QCOMPARE(p.pestanas()->tabText(0), QStringLiteral("Hoja 1"));
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{0});
        QCOMPARE(p.editor().seleccion(), editor::Seleccion{});
        QCOMPARE(QString::fromStdString(p.ventana().rutaAutosave()),
                 p.ruta("marnel_sin_titulo.mrt"));
    }

    void unaCarpetaNoEsUnLibro() {
        VentanaDePrueba p;
        p.ventana();
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        QVERIFY(!p.ventana().abrirArchivo(p.ruta(".")));
        QVERIFY(d.completo());
    }

    void guardarDondeNoSePuede_data() {
        QTest::addColumn<QString>("destino");
        QTest::newRow("carpeta quitada") << "quitada/libro.mrn";
        QTest::newRow("disco lleno") << "/dev/full";
        QTest::newRow("una carpeta") << "carpeta";
    }
    void guardarDondeNoSePuede() {
        QFETCH(QString, destino);
        VentanaDePrueba p;
        QVERIFY(QDir().mkpath(p.ruta("carpeta")));
        p.escribir(0, 0, "vale mucho");
        p.libro().ruta = (destino.startsWith(u'/') ? destino : p.ruta(destino)).toStdString();
        p.ventana().actualizarRutaAutosave();
        const std::size_t pasos = p.editor().pasosDeshacer();
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        QVERIFY(!p.ventana().guardarLibro());
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kNoSeGuarda);
        QCOMPARE(d.vistos().at(0).icono, QMessageBox::Warning);
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.entrada(0, 0), std::string("vale mucho"));
        QCOMPARE(p.editor().pasosDeshacer(), pasos);
        // El trabajo ya está a salvo, sin esperar al siguiente guardado periódico.
        nucleo::Libro copia;
        QCOMPARE(nucleo::Autosave::cargar(p.ventana().rutaAutosave(), copia), nucleo::kArchivoBien);
        QCOMPARE(copia.hojas[0]->celda(0, 0)->entrada, std::string("vale mucho"));
    }

    void guardarSinDondeRecuperarGuardaIgual() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        p.libro().ruta = p.ruta("directo.mrn").toStdString();
        qputenv("TMPDIR", p.ruta("no/existe").toLocal8Bit());
        p.ventana().actualizarRutaAutosave();
        QVERIFY(p.ventana().guardarLibro());
        QVERIFY(QFile::exists(p.ruta("directo.mrn")));
    }

    void elPunteroDiceQueSeEspera() {
        VentanaDePrueba p;
        const QString ruta = crearLibro(p.ruta("c.mrn"), "1");
        p.ventana();
        QStringList visto;
        connect(p.ventana().statusBar(), &QStatusBar::messageChanged, this,
                [&](const QString& texto) {
                    const QCursor* puntero = QApplication::overrideCursor();
                    visto << texto;
                    if (puntero != nullptr && puntero->shape() == Qt::WaitCursor) {
                        visto << QStringLiteral("con reloj");
                    }
                });
        Pintura pintura(p.ventana().statusBar());
        QVERIFY(p.ventana().abrirArchivo(ruta));
        QVERIFY(p.ventana().guardarLibro());
        // El mensaje se pinta antes de empezar, y al quitarlo el puntero todavía espera.
        const QStringList esperado = {"Abriendo el libro…",  "", "con reloj",
                                      "Guardando el libro…", "", "con reloj"};
        QCOMPARE(visto, esperado);
        QCOMPARE(pintura.mensajes, QStringList({"Abriendo el libro…", "Guardando el libro…"}));
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QVERIFY(p.ventana().statusBar()->currentMessage().isEmpty());
    }

    void soltarUnArchivoLoAbreConLaMismaPregunta() {
        VentanaDePrueba p;
        const QString ruta = crearLibro(p.ruta("soltado.mrn"), "soltado");
        p.escribir(0, 0, "1");
        QMimeData datos;
        datos.setUrls({QUrl::fromLocalFile(ruta)});
        // Quien lo ofrece para moverlo no debe entender que ya puede borrar el suyo.
        const Qt::DropActions posibles = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent entra(QPoint(10, 10), posibles, &datos, Qt::LeftButton, Qt::ShiftModifier);
        entra.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&p.ventana(), &entra);
        QVERIFY(entra.isAccepted());
        QCOMPARE(entra.dropAction(), Qt::CopyAction);
        Dialogos d;
        d.pulsar(QMessageBox::Discard);
        QDropEvent suelta(QPointF(10, 10), posibles, &datos, Qt::LeftButton, Qt::ShiftModifier);
        suelta.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&p.ventana(), &suelta);
        QVERIFY(suelta.isAccepted());
        QCOMPARE(suelta.dropAction(), Qt::CopyAction);
        QCoreApplication::processEvents();
        // En toda la ventana: ningún control se queda con lo que se suelta encima.
        for (const QWidget* w : p.ventana().findChildren<QWidget*>()) {
            QVERIFY2(!w->acceptDrops(), qPrintable(w->objectName()));
        }
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kPregunta);
        QCOMPARE(p.entrada(0, 0), std::string("soltado"));
        QMimeData texto;
        texto.setText(QStringLiteral("hola"));
        QDragEnterEvent deTexto(QPoint(10, 10), Qt::CopyAction, &texto, Qt::LeftButton, {});
        deTexto.ignore();
        QApplication::sendEvent(&p.ventana(), &deTexto);
        QVERIFY(!deTexto.isAccepted());
    }
};

REGISTRAR_PRUEBAS(PruebaDocumento);
#include "prueba_documento.moc"
