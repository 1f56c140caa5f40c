// Lo que falla alrededor de la ventana, el disco y los archivos: se dice, y en memoria no se pierde
// nada.

#include "model/serializador.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QTest>

#include <csignal>
#include <cstdlib>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

const QString kNoSeGuarda = QStringLiteral("No se pudo guardar el archivo.");
const QString kNoSeAbre =
    QStringLiteral("No se pudo abrir el archivo. Puede estar dañado o no ser un libro de Marnel.");

/// Mientras vive, ningún archivo pasa de esos bytes: como un disco que se llena ahí.
class DiscoLleno {
  public:
    explicit DiscoLleno(rlim_t bytes) : anterior_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &limite_);
        const rlimit corto{bytes, limite_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &corto);
    }
    ~DiscoLleno() {
        setrlimit(RLIMIT_FSIZE, &limite_);
        std::signal(SIGXFSZ, anterior_);
    }
    DiscoLleno(const DiscoLleno&) = delete;
    DiscoLleno& operator=(const DiscoLleno&) = delete;

  private:
    rlimit limite_{};
    void (*anterior_)(int);
};

/// Mientras vive, los permisos de los archivos cuentan también para quien administra la máquina.
class SinPrivilegios {
  public:
    SinPrivilegios() { cambiado_ = geteuid() == 0 && seteuid(65534) == 0; }
    ~SinPrivilegios() {
        if (cambiado_ && seteuid(0) != 0) {
            std::abort();
        }
    }
    SinPrivilegios(const SinPrivilegios&) = delete;
    SinPrivilegios& operator=(const SinPrivilegios&) = delete;

  private:
    bool cambiado_ = false;
};

std::string entradaGuardada(const std::string& ruta, int fila) {
    nucleo::Libro libro;
    nucleo::Serializador::cargar(ruta, libro);
    const nucleo::Celda* celda = libro.hojas[0]->celda(fila, 0);
    return celda == nullptr ? std::string() : celda->entrada;
}

void escribirArchivo(const QString& ruta, const QByteArray& bytes) {
    QFile archivo(ruta);
    QVERIFY(archivo.open(QIODevice::WriteOnly));
    archivo.write(bytes);
}

} // namespace

class PruebaFallos : public QObject {
    Q_OBJECT

  private slots:
    void elDiscoSeLlenaEnCualquierByte_data() {
        QTest::addColumn<int>("bytes");
        for (const int bytes : {0, 1, 4, 9, 40, 90}) {
            QTest::newRow(qPrintable(QString::number(bytes))) << bytes;
        }
    }
    void elDiscoSeLlenaEnCualquierByte() {
        QFETCH(int, bytes);
        VentanaDePrueba p;
        p.libro().ruta = p.ruta("libro.mrn").toStdString();
        p.ventana().actualizarRutaAutosave();
        p.escribir(0, 0, "lo primero");
        p.ventana().guardarRecuperacion();
        p.escribir(1, 0, "lo segundo");
        const std::size_t pasos = p.editor().pasosDeshacer();
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        {
            const DiscoLleno lleno(static_cast<rlim_t>(bytes));
            p.ventana().guardarRecuperacion();
            QVERIFY(!p.ventana().guardarLibro());
        }
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kNoSeGuarda);
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("libro* — Marnel"));
        QCOMPARE(p.entrada(0, 0), std::string("lo primero"));
        QCOMPARE(p.entrada(1, 0), std::string("lo segundo"));
        QCOMPARE(p.editor().pasosDeshacer(), pasos);
        // La copia de recuperación anterior sigue entera, y con sitio todo vuelve a guardarse.
        QCOMPARE(entradaGuardada(p.ventana().rutaAutosave(), 0), std::string("lo primero"));
        QVERIFY(p.ventana().guardarLibro());
        QCOMPARE(entradaGuardada(p.libro().ruta, 1), std::string("lo segundo"));
        QVERIFY(!p.libro().modificado);
    }

    void cerrarSinPoderGuardarDejaLaVentanaAbierta() {
        VentanaDePrueba p;
        p.libro().ruta = p.ruta("quitada/libro.mrn").toStdString();
        p.escribir(0, 0, "sigue aquí");
        Dialogos d;
        d.pulsar(QMessageBox::Save).pulsar(QMessageBox::Ok);
        QVERIFY(!p.ventana().close());
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(1).texto, kNoSeGuarda);
        QVERIFY(p.ventana().isVisible());
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.entrada(0, 0), std::string("sigue aquí"));
    }

    void elArchivoQueSeQuitaPorDebajoVuelveAlGuardar() {
        VentanaDePrueba p;
        p.libro().ruta = p.ruta("libro.mrn").toStdString();
        p.escribir(0, 0, "uno");
        QVERIFY(p.ventana().guardarLibro());
        QVERIFY(QFile::remove(p.ruta("libro.mrn")));
        p.escribir(0, 0, "dos");
        QVERIFY(p.ventana().guardarLibro());
        QCOMPARE(entradaGuardada(p.libro().ruta, 0), std::string("dos"));
    }

    void abrirLoQueNoSePuede_data() {
        QTest::addColumn<QString>("caso");
        QTest::addColumn<bool>("queda");
        QTest::newRow("no está") << "no está" << true;
        QTest::newRow("carpeta") << "carpeta" << true;
        QTest::newRow("enlace roto") << "enlace roto" << true;
        QTest::newRow("enlace a sí mismo") << "enlace a sí mismo" << true;
        QTest::newRow("sin permiso") << "sin permiso" << true;
        QTest::newRow("vacío") << "vacío" << false;
        QTest::newRow("a medias") << "a medias" << false;
        QTest::newRow("otra cosa") << "otra cosa" << false;
    }
    void abrirLoQueNoSePuede() {
        QFETCH(QString, caso);
        QFETCH(bool, queda);
        VentanaDePrueba p;
        const QString ruta = p.ruta(caso);
        nucleo::Libro otro;
        nucleo::Serializador::guardar(otro, p.ruta("entero.mrn").toStdString());
        QFile entero(p.ruta("entero.mrn"));
        QVERIFY(entero.open(QIODevice::ReadOnly));
        const QByteArray bytes = entero.readAll();
        if (caso == QStringLiteral("carpeta")) {
            QVERIFY(QDir().mkpath(ruta));
        } else if (caso.startsWith(QStringLiteral("enlace"))) {
            QVERIFY(QFile::link(caso.endsWith(u'o') && caso.contains(QStringLiteral("mismo"))
                                    ? ruta
                                    : p.ruta("nada"),
                                ruta));
        } else if (caso == QStringLiteral("sin permiso")) {
            escribirArchivo(ruta, bytes);
            QVERIFY(QFile::setPermissions(ruta, {}));
        } else if (caso == QStringLiteral("vacío")) {
            escribirArchivo(ruta, {});
        } else if (caso == QStringLiteral("a medias")) {
            escribirArchivo(ruta, bytes.left(bytes.size() / 2));
        } else if (!queda) {
            escribirArchivo(ruta, "esto no es un libro");
        }
        p.libro().ruta = p.ruta("anterior.mrn").toStdString();
        p.escribir(0, 0, "sigue");
        p.libro().modificado = false;
        p.ventana().refrescarTodo();
        Dialogos d;
        d.pulsar(QMessageBox::Ok);
        {
            std::optional<SinPrivilegios> comoCualquiera;
            if (caso == QStringLiteral("sin permiso")) {
                comoCualquiera.emplace();
            }
            QVERIFY(!p.ventana().abrirArchivo(ruta));
        }
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, kNoSeAbre);
        QCOMPARE(d.vistos().at(0).icono, QMessageBox::Warning);
        QVERIFY(!p.libro().modificado);
        QCOMPARE(p.entrada(0, 0), std::string(queda ? "sigue" : ""));
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{queda ? 1U : 0U});
        QCOMPARE(p.ventana().windowTitle(), queda ? QStringLiteral("anterior — Marnel")
                                                  : QStringLiteral("Sin título — Marnel"));
    }

    void unaRecuperacionQueNoSeLeeSeDiceYSeConserva_data() {
        QTest::addColumn<int>("bytes");
        QTest::newRow("vacía") << 0;
        QTest::newRow("solo la firma") << 4;
        QTest::newRow("a medias") << 20;
    }
    void unaRecuperacionQueNoSeLeeSeDiceYSeConserva() {
        QFETCH(int, bytes);
        VentanaDePrueba p;
        const QString ruta = p.ruta("marnel_sin_titulo.mrt");
        nucleo::Libro libro;
        nucleo::Serializador::guardar(libro, ruta.toStdString());
        QVERIFY(QFile::resize(ruta, bytes));
        Dialogos d;
        d.pulsar(QMessageBox::Yes).pulsar(QMessageBox::Ok);
        p.ventana();
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(1).texto,
                 QStringLiteral("No se pudo recuperar el trabajo sin guardar."));
        QVERIFY(!p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título — Marnel"));
        QCOMPARE(QFile(ruta).size(), qint64{bytes});
    }
};

REGISTRAR_PRUEBAS(PruebaFallos);
#include "prueba_fallos.moc"
