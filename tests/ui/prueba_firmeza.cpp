// Lo que aguanta la ventana: sucesos al azar y muertes en cualquier momento, con semillas fijas.

#include "tests/ui/eventos/persona.h"
#include "tests/ui/muertes/verdugo.h"
#include "tests/ui/registro.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QObject>
#include <QTest>

#include <memory>

class PruebaFirmeza : public QObject {
    Q_OBJECT

  public slots:
    /// Recibe los enlaces, para que no se abra ningún otro programa.
    void recibirEnlace(const QUrl& /*enlace*/) {}

  private slots:
    void sucesosAlAzar_data() {
        QTest::addColumn<int>("semilla");
        for (int semilla = 1; semilla <= 4; ++semilla) {
            QTest::addRow("%d", semilla) << semilla;
        }
    }
    void sucesosAlAzar() {
        QFETCH(int, semilla);
        constexpr int kSucesos = 800;
        QGuiApplication::setQuitOnLastWindowClosed(false);
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "recibirEnlace");
        pruebas::PersonaAlAzar persona(static_cast<std::uint64_t>(semilla));
        std::string malo;
        int hechos = 0;
        for (; hechos < kSucesos && malo.empty(); ++hechos) {
            persona.siguiente();
            malo = persona.defecto();
        }
        QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
        if (!malo.empty()) {
            std::string relato = malo + ", en el suceso " + std::to_string(hechos) + " de:";
            for (const std::string& suceso : persona.ultimos()) {
                relato += "\n  " + suceso;
            }
            QFAIL(relato.c_str());
        }
    }

    void morirAlAzar_data() {
        QTest::addColumn<bool>("conDocumento");
        QTest::newRow("sin título") << false;
        QTest::newRow("con documento") << true;
    }
    void morirAlAzar() {
        QFETCH(bool, conDocumento);
        constexpr int kMuertes = 18;
        pruebas::Verdugo verdugo(PROGRAMA_QUE_MUERE, conDocumento ? 2 : 1, conDocumento);
        for (int i = 1; i <= kMuertes; ++i) {
            const std::string malo = verdugo.matar();
            QVERIFY2(malo.empty(), ("muerte " + std::to_string(i) + ": " + malo).c_str());
        }
        QVERIFY(verdugo.cuenta().recuperaciones > 0);
    }
};

REGISTRAR_PRUEBAS(PruebaFirmeza);
#include "prueba_firmeza.moc"
