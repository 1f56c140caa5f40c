// El camino de la recuperación: qué se escribe, qué se ofrece y qué no se pisa.

#include "model/serializador.h"
#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QSessionManager>
#include <QTest>

#include <array>
#include <cstddef>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

namespace {

const QString kOferta = QStringLiteral("Se encontró trabajo sin guardar de una sesión "
                                       "anterior.\n¿Querés recuperarlo?");
const QString kSinTitulo = QStringLiteral("marnel_sin_titulo.mrt");

void crearLibro(const QString& ruta, const std::string& texto) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    motor.establecerCelda(0, 0, 0, texto);
    motor.establecerCelda(0, 1, 0, "=1+1");
    nucleo::Serializador::guardar(libro, ruta.toStdString());
}

void escribirArchivo(const QString& ruta, const QByteArray& bytes) {
    QFile archivo(ruta);
    QVERIFY(archivo.open(QIODevice::WriteOnly));
    archivo.write(bytes);
}

QByteArray leerArchivo(const QString& ruta) {
    QFile archivo(ruta);
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

std::string entradaGuardada(const std::string& ruta) {
    nucleo::Libro libro;
    nucleo::Autosave::cargar(ruta, libro);
    const nucleo::Celda* celda = libro.hojas[0]->celda(0, 0);
    return celda == nullptr ? std::string() : celda->entrada;
}

/// Hace llegar el aviso periódico sin esperar a que pase su tiempo.
void darAviso(interfaz::VentanaPrincipal& ventana) {
    for (QTimer* reloj : ventana.findChildren<QTimer*>()) {
        if (reloj->interval() == 30000) {
            QVERIFY(reloj->isActive());
            QMetaObject::invokeMethod(reloj, "timeout");
        }
    }
}

} // namespace

class PruebaRecuperacion : public QObject {
    Q_OBJECT

  private slots:
    void elAvisoPeriodicoGuardaSoloLoModificado() {
        VentanaDePrueba p;
        darAviso(p.ventana());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
        p.escribir(0, 0, "tecleado");
        darAviso(p.ventana());
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("tecleado"));
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título* — Marnel"));
        p.escribir(0, 0, "otra vez");
        darAviso(p.ventana());
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("otra vez"));
        QCOMPARE(QDir(p.ruta(".")).entryList(QDir::Files), QStringList{kSinTitulo});
    }

    void guardarLoBorra() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        darAviso(p.ventana());
        Dialogos d;
        d.escribir(p.ruta("listo"));
        QVERIFY(p.ventana().guardarLibro());
        QCOMPARE(QDir(p.ruta(".")).entryList(QDir::Files), QStringList{"listo.mrn"});
        QCOMPARE(QString::fromStdString(p.ventana().rutaAutosave()), p.ruta("marnel_listo.mrt"));
    }

    void descartarLoBorraYNadieLoReescribe() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        darAviso(p.ventana());
        Dialogos d;
        d.pulsar(QMessageBox::Discard).luego([&](QWidget* w) {
            // Mientras se elige otro libro llega el aviso periódico.
            QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
            darAviso(p.ventana());
            w->close();
        });
        p.ventana().abrirLibro();
        QVERIFY(d.completo());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
        // Al no elegir ninguno, los cambios siguen ahí y vuelven a protegerse.
        darAviso(p.ventana());
        QVERIFY(QFile::exists(p.ruta(kSinTitulo)));
    }

    void seOfreceAlEmpezar() {
        VentanaDePrueba p;
        crearLibro(p.ruta(kSinTitulo), "de ayer");
        Dialogos d;
        d.pulsar(QMessageBox::Yes);
        p.ventana();
        QVERIFY(d.completo());
        const auto& cuadro = d.vistos().at(0);
        QCOMPARE(cuadro.titulo, QStringLiteral("Marnel"));
        QCOMPARE(cuadro.texto, kOferta);
        QCOMPARE(cuadro.botones, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(p.entrada(0, 0), std::string("de ayer"));
        QCOMPARE(p.valor(1, 0), QStringLiteral("2"));
        QVERIFY(p.libro().ruta.empty());
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título* — Marnel"));
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{0});
        QVERIFY(QFile::exists(p.ruta(kSinTitulo)));
        // Lo recuperado ya es de este documento: el aviso lo pone al día en su sitio.
        p.escribir(0, 0, "de hoy");
        darAviso(p.ventana());
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("de hoy"));
        QCOMPARE(QDir(p.ruta(".")).entryList(QDir::Files), QStringList{kSinTitulo});
    }

    void rechazarloLoBorra_data() {
        QTest::addColumn<bool>("cerrando");
        QTest::newRow("No") << false;
        QTest::newRow("cerrar la pregunta") << true;
    }
    void rechazarloLoBorra() {
        QFETCH(bool, cerrando);
        VentanaDePrueba p;
        crearLibro(p.ruta(kSinTitulo), "de ayer");
        Dialogos d;
        if (cerrando) {
            d.cerrar();
        } else {
            d.pulsar(QMessageBox::No);
        }
        p.ventana();
        QVERIFY(d.completo());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
        QCOMPARE(p.entrada(0, 0), std::string());
        QVERIFY(!p.libro().modificado);
    }

    void seOfreceAlAbrirElDocumento() {
        VentanaDePrueba p;
        crearLibro(p.ruta("ventas.mrn"), "guardado");
        crearLibro(p.ruta("marnel_ventas.mrt"), "sin guardar");
        p.ventana();
        Dialogos d;
        d.pulsar(QMessageBox::Yes);
        QVERIFY(p.ventana().abrirArchivo(p.ruta("ventas.mrn")));
        QVERIFY(d.completo());
        QCOMPARE(p.entrada(0, 0), std::string("sin guardar"));
        QCOMPARE(QString::fromStdString(p.libro().ruta), p.ruta("ventas.mrn"));
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("ventas* — Marnel"));
        QVERIFY(p.ventana().guardarLibro());
        QCOMPARE(entradaGuardada(p.ruta("ventas.mrn").toStdString()), std::string("sin guardar"));
        QVERIFY(!QFile::exists(p.ruta("marnel_ventas.mrt")));
    }

    void unaRecuperacionDanadaNoSePierde() {
        VentanaDePrueba p;
        crearLibro(p.ruta("ventas.mrn"), "guardado");
        escribirArchivo(p.ruta("marnel_ventas.mrt"), "dañado");
        p.ventana();
        Dialogos d;
        d.pulsar(QMessageBox::Yes).pulsar(QMessageBox::Ok);
        p.ventana().abrirArchivo(p.ruta("ventas.mrn"));
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(1).texto,
                 QStringLiteral("No se pudo recuperar el trabajo sin guardar."));
        QCOMPARE(d.vistos().at(1).icono, QMessageBox::Warning);
        QCOMPARE(p.ventana().windowTitle(), QStringLiteral("Sin título — Marnel"));
        QCOMPARE(p.pestanas()->tabText(0), QStringLiteral("Hoja 1"));
        QCOMPARE(p.entrada(0, 0), std::string());
        QCOMPARE(p.editor().pasosDeshacer(), std::size_t{0});
        QCOMPARE(QString::fromStdString(p.ventana().rutaAutosave()), p.ruta(kSinTitulo));
        QCOMPARE(leerArchivo(p.ruta("marnel_ventas.mrt")), QByteArray("dañado"));
    }

    void elAvisoApartaUnaRecuperacionDanada() {
        VentanaDePrueba p;
        escribirArchivo(p.ruta(kSinTitulo), "dañado");
        Dialogos d;
        d.pulsar(QMessageBox::Yes).pulsar(QMessageBox::Ok);
        p.ventana();
        QVERIFY(d.completo());
        p.escribir(0, 0, "nuevo");
        QCOMPARE(leerArchivo(p.ruta(kSinTitulo)), QByteArray("dañado"));
        darAviso(p.ventana());
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("nuevo"));
        QCOMPARE(leerArchivo(p.ruta(kSinTitulo + ".apartado1")), QByteArray("dañado"));
        darAviso(p.ventana());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo + ".apartado2")));
    }

    void guardarComoNoPisaLaRecuperacionDeOtro() {
        VentanaDePrueba p;
        crearLibro(p.ruta("marnel_ventas.mrt"), "de otro ventas");
        p.escribir(0, 0, "mío");
        Dialogos d;
        d.escribir(p.ruta("ventas"));
        QVERIFY(p.ventana().guardarLibro());
        p.escribir(0, 0, "mío y cambiado");
        darAviso(p.ventana());
        QCOMPARE(entradaGuardada(p.ruta("marnel_ventas.mrt").toStdString()),
                 std::string("mío y cambiado"));
        QCOMPARE(entradaGuardada(p.ruta("marnel_ventas.mrt.apartado1").toStdString()),
                 std::string("de otro ventas"));
    }

    void loQueSeDescartaDeOtroTambienSeAparta() {
        VentanaDePrueba p;
        escribirArchivo(p.ruta(kSinTitulo), "dañado");
        Dialogos d;
        d.pulsar(QMessageBox::Yes).pulsar(QMessageBox::Ok);
        p.ventana();
        p.escribir(0, 0, "1");
        d.pulsar(QMessageBox::Discard);
        QVERIFY(p.ventana().close());
        QVERIFY(d.completo());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
        QCOMPARE(leerArchivo(p.ruta(kSinTitulo + ".apartado1")), QByteArray("dañado"));
    }

    void sinDondeEscribirNoSeDiceNada() {
        VentanaDePrueba p;
        p.escribir(0, 0, "1");
        qputenv("TMPDIR", p.ruta("no/existe").toLocal8Bit());
        p.ventana().actualizarRutaAutosave();
        const Dialogos d;
        darAviso(p.ventana());
        QCOMPARE(d.inesperados(), 0);
        QVERIFY(p.libro().modificado);
        QCOMPARE(p.entrada(0, 0), std::string("1"));
    }

    void ponerASalvoIncluyeLoQueSeTeclea() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("a medias");
        p.ventana().ponerASalvo();
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("a medias"));
    }

    void elFinDeLaSesionLoDejaASalvo() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("al acabar");
        // Un gestor de sesión solo lo crea Qt; quien recibe el aviso no mira el suyo.
        alignas(QSessionManager) std::array<std::byte, sizeof(QSessionManager)> nadie{};
        emit qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(nadie));
        QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("al acabar"));
    }

    void cerrarLoDejaASalvoAntesDePreguntar() {
        VentanaDePrueba p;
        p.ventana();
        p.teclear("al cerrar");
        Dialogos d;
        d.luego([&](QWidget* w) {
            QCOMPARE(entradaGuardada(p.ruta(kSinTitulo).toStdString()), std::string("al cerrar"));
            qobject_cast<QMessageBox*>(w)->button(QMessageBox::Discard)->click();
        });
        QVERIFY(p.ventana().close());
        QVERIFY(d.completo());
        QVERIFY(!QFile::exists(p.ruta(kSinTitulo)));
    }

    void terminarDuranteLaOfertaNoLaBorra() {
        VentanaDePrueba p;
        crearLibro(p.ruta(kSinTitulo), "de ayer");
        Dialogos d;
        d.luego([](QWidget*) { QCoreApplication::exit(0); });
        p.ventana();
        QVERIFY(d.completo());
        // Un bucle completo borra el aviso de salida, que aquí no debe alcanzar a otras pruebas.
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
        QVERIFY(QFile::exists(p.ruta(kSinTitulo)));
        QVERIFY(!p.libro().modificado);
    }
};

REGISTRAR_PRUEBAS(PruebaRecuperacion);
#include "prueba_recuperacion.moc"
