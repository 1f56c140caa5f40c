// El programa entero en otro proceso: su argumento, las señales y lo que deja al morir.

#include "model/autosave.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QLibraryInfo>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/types.h>
#include <unistd.h>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

/// Segundos que se espera a un programa, de principio a fin; solo se agotan si no responde.
constexpr unsigned kPaciencia = 60;

/// Lo que hace dentro del otro proceso la persona que lo usa: según la variable de entorno, teclea
/// en la ventana y anuncia por la salida que ya está.
void usarElPrograma() {
    const QByteArray guion = qgetenv("MARNEL_GUION_DE_PRUEBA");
    if (guion.isEmpty()) {
        return;
    }
    // Se pare donde se pare, y aunque ya no viva quien lo lanzó, este proceso no queda para
    // siempre.
    alarm(2 * kPaciencia);
    auto* reloj = new QTimer(qApp);
    reloj->setInterval(0);
    QObject::connect(reloj, &QTimer::timeout, qApp, [reloj, guion] {
        if (QThread::currentThread()->loopLevel() == 0) {
            return; // el programa todavía se prepara
        }
        QWidget* modal = QApplication::activeModalWidget();
        if (modal != nullptr) {
            auto* cuadro = qobject_cast<QMessageBox*>(modal);
            const QWidget* detras = cuadro->parentWidget();
            std::printf("cuadro: %s, maximizada detrás = %d\n", cuadro->text().toUtf8().constData(),
                        detras->isVisible() && detras->isMaximized() ? 1 : 0);
            std::fflush(stdout);
            reloj->stop();
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
            std::printf(
                "listo: %s, A1 = %s, maximizada = %d, botón «%s»\n",
                ventana->windowTitle().toUtf8().constData(),
                ventana->libro().hojas[0]->celda(0, 0) == nullptr
                    ? ""
                    : ventana->libro().hojas[0]->celda(0, 0)->entrada.c_str(),
                ventana->isMaximized() ? 1 : 0,
                QCoreApplication::translate("QPlatformTheme", "Cancel").toUtf8().constData());
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
             const std::function<void()>& alNacer = {},
             const QString& ejecutable = QCoreApplication::applicationFilePath()) {
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        entorno.insert(QStringLiteral("TMPDIR"), carpeta.path());
        entorno.insert(QStringLiteral("MARNEL_GUION_DE_PRUEBA"), QString::fromLatin1(guion));
        entorno.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        proceso.setProcessEnvironment(entorno);
        proceso.setChildProcessModifier(alNacer);
        proceso.start(ejecutable, QStringList{QStringLiteral("--programa")} + argumentos);
    }
    ~Programa() {
        proceso.kill();
        proceso.waitForFinished(1000);
    }
    Programa(const Programa&) = delete;
    Programa& operator=(const Programa&) = delete;
    /// La primera línea que escribe; vacía si no escribe ninguna.
    QString esperarLinea() {
        while (!proceso.canReadLine()) {
            if (!proceso.waitForReadyRead(queda())) {
                return {};
            }
        }
        return QString::fromUtf8(proceso.readLine()).trimmed();
    }
    void avisar(int senal) {
        // De un proceso que ya murió no hay número, y el cero sería este y todos sus compañeros.
        if (const auto numero = static_cast<pid_t>(proceso.processId()); numero > 0) {
            kill(numero, senal);
        }
    }
    bool termina() {
        return proceso.state() == QProcess::NotRunning || proceso.waitForFinished(queda());
    }
    bool terminaBien() {
        return termina() && proceso.exitStatus() == QProcess::NormalExit && proceso.exitCode() == 0;
    }

    QProcess proceso;

  private:
    int queda() const { return static_cast<int>(plazo_.remainingTime()); }

    QDeadlineTimer plazo_{std::chrono::seconds(kPaciencia)};
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
        QVERIFY(programa.esperarLinea().contains(QStringLiteral("maximizada = 1")));
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
            QVERIFY(programa.termina());
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
        QCOMPARE(programa.esperarLinea(), QStringLiteral("listo: año nuevo — Marnel, A1 = del "
                                                         "archivo, maximizada = 1, botón "
                                                         "«Cancelar»"));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }

    void unArgumentoQueNoExisteSeCalla() {
        const QTemporaryDir carpeta;
        Programa programa(carpeta, "mirar", {carpeta.filePath("no-existe.mrn")});
        QVERIFY(programa.esperarLinea().startsWith(
            QStringLiteral("listo: Sin título — Marnel, A1 = , maximizada = 1")));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }

    void lasTraduccionesSeBuscanJuntoAlPrograma() {
        // Una copia del programa a la que se le dice que las del sistema no están.
        const QTemporaryDir carpeta;
        const std::filesystem::path raiz = carpeta.path().toStdString();
        const std::filesystem::path programa = raiz / "bin" / "marnel";
        std::filesystem::create_directory(raiz / "bin");
        std::filesystem::copy_file(QCoreApplication::applicationFilePath().toStdString(), programa);
        std::ofstream(raiz / "bin" / "qt.conf")
            << "[Paths]\nPlugins=" << QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString()
            << "\nTranslations=" << (raiz / "nada").string() << '\n';
        const std::filesystem::path catalogo =
            std::filesystem::path(
                QLibraryInfo::path(QLibraryInfo::TranslationsPath).toStdString()) /
            "qtbase_es.qm";
        struct Caso {
            const char* donde;
            const char* boton;
        };
        for (const auto& [donde, boton] :
             {Caso{"", "Cancel"}, Caso{"bin/shared/translations", "Cancelar"},
              Caso{"shared/translations", "Cancelar"}}) {
            if (*donde != '\0') {
                std::filesystem::create_directories(raiz / donde);
                std::filesystem::copy_file(catalogo, raiz / donde / "qtbase_es.qm");
            }
            Programa copia(carpeta, "mirar", {}, {}, QString::fromStdString(programa.string()));
            const QString linea = copia.esperarLinea();
            QVERIFY2(linea.endsWith(QStringLiteral("botón «%1»").arg(QLatin1String(boton))),
                     qPrintable(QLatin1String(donde) + QStringLiteral(": ") + linea));
            copia.avisar(SIGTERM);
            QVERIFY(copia.terminaBien());
            std::filesystem::remove_all(raiz / "bin" / "shared");
        }
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
                                "un libro de Marnel., maximizada detrás = 1"));
        programa.avisar(SIGTERM);
        QVERIFY(programa.terminaBien());
    }
};

REGISTRAR_PRUEBAS(PruebaPrograma);
#include "prueba_programa.moc"
