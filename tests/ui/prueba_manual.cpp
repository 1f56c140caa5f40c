// El manual: dónde se busca y qué se dice cuando no se puede enseñar.

#include "tests/ui/dialogos.h"
#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"
#include "ui/manual.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QObject>
#include <QTest>

using pruebas::Dialogos;
using pruebas::VentanaDePrueba;

class PruebaManual : public QObject {
    Q_OBJECT

  public slots:
    void recibirEnlace(const QUrl& url) { enlace_ = url; }

  private:
    QUrl enlace_;

    static void crear(const QString& ruta) {
        QVERIFY(QDir().mkpath(QFileInfo(ruta).path()));
        QFile archivo(ruta);
        QVERIFY(archivo.open(QIODevice::WriteOnly));
    }

  private slots:
    void seBuscaJuntoAlPrograma() {
        const QTemporaryDir carpeta;
        const QString programas = carpeta.filePath("bin");
        QVERIFY(QDir().mkpath(programas));
        QCOMPARE(interfaz::rutaDelManual(programas), QString());
        const QString construido = carpeta.filePath("manual/index.html");
        crear(construido);
        QCOMPARE(interfaz::rutaDelManual(programas), construido);
        const QString instalado = carpeta.filePath("share/doc/marnel/manual/index.html");
        crear(instalado);
        QCOMPARE(interfaz::rutaDelManual(programas), instalado);
    }

    void seAbreElArchivo() {
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "recibirEnlace");
        interfaz::abrirManual(nullptr, QStringLiteral("/tal vez/ñ.html"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        QCOMPARE(enlace_, QUrl::fromLocalFile(QStringLiteral("/tal vez/ñ.html")));
    }

    void siNoEstaSeDice() {
        Dialogos d;
        d.cerrar();
        interfaz::abrirManual(nullptr, QString());
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().at(0).texto, QStringLiteral("El manual no está instalado."));
    }

    void f1LoPide() {
        VentanaDePrueba p;
        p.hoja()->setFocus();
        // Las pruebas no tienen el manual al lado.
        Dialogos d;
        d.cerrar();
        QTest::keyClick(p.hoja(), Qt::Key_F1);
        QVERIFY(d.completo());
        QCOMPARE(d.vistos().size(), 1U);
    }
};

REGISTRAR_PRUEBAS(PruebaManual);
#include "prueba_manual.moc"
