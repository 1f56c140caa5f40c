// El programa entero en otro proceso: su argumento, las señales y lo que deja al morir.

#include "model/autosave.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QApplication>
#include <QFile>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>
#include <sys/types.h>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

constexpr int kPaciencia = 30000; ///< milisegundos; solo se agotan si el programa no responde

/// Lo que hace dentro del otro proceso la persona que lo usa: según la variable de entorno, teclea
/// en la ventana y anuncia por la salida que ya está.
void usarElPrograma() {
    const QByteArray guion = qgetenv("MARNEL_GUION_DE_PRUEBA");
    if (guion.isEmpty()) {
        return;
    }
    auto* reloj = new QTimer(qApp);
    reloj->setInterval(0);
    QObject::connect(reloj, &QTimer::timeout, qApp, [reloj, guion] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal != nullptr) {
            auto* cuadro = qobject_cast<QMessageBox*>(modal);
            std::printf("cuadro: %s\n", cuadro->text().toUtf8().constData());
            std::fflush(stdout);
            reloj->stop();
            if (guion == "responder") {
                cuadro->button(QMessageBox::Ok)->click();
                QCoreApplication::exit(0);
            }
            return;
        }
        for (QWidget* w : QApplication::topLevelWidgets()) {
            auto* ventana = qobject_cast<interfaz::VentanaPrincipal*>(w);
            if (ventana == nullptr || !ventana->isActiveWindow() || guion == "cuadro") {
                continue;
            }
            reloj->stop();
            if (guion != "mirar") {
                pruebas::teclearEn(ventana->widgetHoja(), QStringLiteral("t"));
                pruebas::teclearEn(ventana->widgetHoja()->editorCelda(), QStringLiteral("ecleado"));
            }
            if (guion == "aceptar") {
                QTest::keyClick(ventana->widgetHoja()->editorCelda(), Qt::Key_Return);
                QMetaObject::invokeMethod(ventana->findChild<QTimer*>(), "timeout");
            }
            std::printf("listo: %s, A1 = %s, maximizada = %d\n",
                        ventana->windowTitle().toUtf8().constData(),
                        ventana->libro().hojas[0]->celda(0, 0) == nullptr
                            ? ""
                            : ventana->libro().hojas[0]->celda(0, 0)->entrada.c_str(),
                        ventana->isMaximized() ? 1 : 0);
            std::fflush(stdout);
            return;
        }
    });
    reloj->start();
}
Q_COREAPP_STARTUP_FUNCTION(usarElPrograma)

/// El programa en marcha, con su carpeta temporal.
class Programa {
  public:
    Programa(const QTemporaryDir& carpeta, const char* guion, const QStringList& argumentos = {},
             const std::function<void()>& alNacer = {}) {
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        entorno.insert(QStringLiteral("TMPDIR"), carpeta.path());
        entorno.insert(QStringLiteral("MARNEL_GUION_DE_PRUEBA"), QString::fromLatin1(guion));
        entorno.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        proceso.setProcessEnvironment(entorno);
        proceso.setChildProcessModifier(alNacer);
        proceso.start(QCoreApplication::applicationFilePath(),
                      QStringList{QStringLiteral("--programa")} + argumentos);
    }
    /// La primera línea que escribe; vacía si no escribe ninguna.
    QString esperarLinea() {
        while (!proceso.canReadLine()) {
            if (!proceso.waitForReadyRead(kPaciencia)) {
                return {};
            }
        }
        return QString::fromUtf8(proceso.readLine()).trimmed();
    }
    void avisar(int senal) { kill(static_cast<pid_t>(proceso.processId()), senal); }
    bool terminaBien() {
        return proceso.waitForFinished(kPaciencia) &&
               proceso.exitStatus() == QProcess::NormalExit && proceso.exitCode() == 0;
    }

    QProcess proceso;
};

} // namespace

class PruebaPrograma : public QObject {
    Q_OBJECT

  private slots:
    void lasSenalesDejanElTrabajoASalvo_data() {
        QTest::addColumn<int>("senal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
        QTest::newRow("SIGINT") << SIGINT;
    }
    void lasSenalesDejanElTrabajoASalvo() {
        QFETCH(int, senal);
        const QTemporaryDir carpeta;
        Programa programa(carpeta, "teclear");
        QVERIFY(programa.esperarLinea().startsWith(QStringLiteral("listo: Sin título — Marnel")));
        programa.avisar(senal);
        QVERIFY(programa.terminaBien());
        nucleo::Libro libro;
        QCOMPARE(nucleo::Autosave::cargar(carpeta.filePath("marnel_sin_titulo.mrt").toStdString(),
                                          libro),
                 nucleo::kArchivoBien);
        QCOMPARE(libro.hojas[0]->celda(0, 0)->entrada, std::string("tecleado"));
    }

    void loQueYaSeIgnorabaSeSigueIgnorando() {
        const QTemporaryDir carpeta;
        Programa programa(carpeta, "mirar", {}, [] { std::signal(SIGHUP, SIG_IGN); });
        QVERIFY(!programa.esperarLinea().isEmpty());
        QFile estado(QStringLiteral("/proc/%1/status").arg(programa.proceso.processId()));
        QVERIFY(estado.open(QIODevice::ReadOnly));
        const QString texto = QString::fromUtf8(estado.readAll());
        const qsizetype donde = texto.indexOf(QStringLiteral("SigIgn:"));
        QVERIFY(donde >= 0);
        const quint64 ignoradas =
            texto.mid(donde + 7).section(u'\n', 0, 0).trimmed().toULongLong(nullptr, 16);
        QVERIFY((ignoradas & (quint64{1} << (SIGHUP - 1))) != 0);
        QVERIFY((ignoradas & (quint64{1} << (SIGTERM - 1))) == 0);
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }

    void sinCambiosNoQuedaNada() {
        const QTemporaryDir carpeta;
        Programa programa(carpeta, "mirar");
        QVERIFY(programa.esperarLinea().endsWith(QStringLiteral("maximizada = 1")));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
        QVERIFY(!QFile::exists(carpeta.filePath("marnel_sin_titulo.mrt")));
    }

    void deUnProcesoMatadoATrabajoRecuperado() {
        const QTemporaryDir carpeta;
        {
            Programa programa(carpeta, "aceptar");
            QVERIFY(programa.esperarLinea().startsWith(QStringLiteral("listo")));
            programa.avisar(SIGKILL);
            QVERIFY(programa.proceso.waitForFinished(kPaciencia));
            QCOMPARE(programa.proceso.exitStatus(), QProcess::CrashExit);
        }
        const QByteArray anterior = qgetenv("TMPDIR");
        qputenv("TMPDIR", carpeta.path().toLocal8Bit());
        Dialogos d;
        d.pulsar(QMessageBox::Yes);
        interfaz::VentanaPrincipal ventana;
        qputenv("TMPDIR", anterior);
        QVERIFY(d.completo());
        QCOMPARE(ventana.libro().hojas[0]->celda(0, 0)->entrada, std::string("tecleado"));
        QCOMPARE(ventana.windowTitle(), QStringLiteral("Sin título* — Marnel"));
    }

    void terminarDuranteLaOfertaLaConserva() {
        const QTemporaryDir carpeta;
        const QString recuperacion = carpeta.filePath("marnel_sin_titulo.mrt");
        nucleo::Libro libro;
        nucleo::Autosave::guardar(libro, recuperacion.toStdString());
        Programa programa(carpeta, "cuadro");
        QVERIFY(programa.esperarLinea().startsWith(QStringLiteral("cuadro: Se encontró trabajo")));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
        QVERIFY(QFile::exists(recuperacion));
    }

    void elArgumentoAbreElLibro() {
        const QTemporaryDir carpeta;
        const QString ruta = carpeta.filePath(QStringLiteral("año nuevo.mrn"));
        nucleo::Libro libro;
        motor_formulas::Motor(libro).establecerCelda(0, 0, 0, "del archivo");
        nucleo::Serializador::guardar(libro, ruta.toStdString());
        Programa programa(carpeta, "mirar", {ruta, QStringLiteral("otro.mrn")});
        QCOMPARE(programa.esperarLinea(),
                 QStringLiteral("listo: año nuevo — Marnel, A1 = del archivo, maximizada = 1"));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }

    void unArgumentoQueNoExisteSeCalla() {
        const QTemporaryDir carpeta;
        Programa programa(carpeta, "mirar", {carpeta.filePath("no-existe.mrn")});
        QCOMPARE(programa.esperarLinea(),
                 QStringLiteral("listo: Sin título — Marnel, A1 = , maximizada = 1"));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }

    void unArgumentoQueNoEsUnLibroSeDice() {
        const QTemporaryDir carpeta;
        QFile archivo(carpeta.filePath("foto.mrn"));
        QVERIFY(archivo.open(QIODevice::WriteOnly));
        archivo.write("no es un libro");
        archivo.close();
        Programa programa(carpeta, "cuadro", {archivo.fileName()});
        QCOMPARE(programa.esperarLinea(),
                 QStringLiteral("cuadro: No se pudo abrir el archivo. Puede estar dañado o no ser "
                                "un libro de Marnel."));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }
};

REGISTRAR_PRUEBAS(PruebaPrograma);
#include "prueba_programa.moc"
