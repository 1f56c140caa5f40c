// Los colores de las hojas de estilo y de las paletas: que todo texto se lea.

#include "tests/ui/registro.h"
#include "tests/ui/ventana_de_prueba.h"
#include "ui/paleta.h"

#include <QColor>
#include <QFile>
#include <QObject>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

namespace {

double luminancia(const QColor& color) {
    const auto canal = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * canal(color.redF()) + 0.7152 * canal(color.greenF()) +
           0.0722 * canal(color.blueF());
}

double contraste(const QColor& a, const QColor& b) {
    const double la = luminancia(a);
    const double lb = luminancia(b);
    return (std::fmax(la, lb) + 0.05) / (std::fmin(la, lb) + 0.05);
}

QString leer(const QString& nombre) {
    QFile archivo(QStringLiteral(":/estilos/%1.qss").arg(nombre));
    if (!archivo.open(QIODevice::ReadOnly)) {
        return {};
    }
    static const QRegularExpression comentario(QStringLiteral("/\\*.*?\\*/"),
                                               QRegularExpression::DotMatchesEverythingOption);
    return QString::fromUtf8(archivo.readAll()).remove(comentario);
}

/// El color de una propiedad del bloque; no válido si no la tiene.
QColor color(const QString& bloque, const char* propiedad) {
    const QRegularExpression patron(
        QStringLiteral("(?<![-\\w])%1:\\s*(#[0-9A-Fa-f]{6})").arg(QLatin1String(propiedad)));
    const auto hallado = patron.match(bloque);
    return hallado.hasMatch() ? QColor(hallado.captured(1)) : QColor();
}

} // namespace

class PruebaEstilos : public QObject {
    Q_OBJECT

  private slots:
    void todoTextoTieneContraste_data() {
        QTest::addColumn<QString>("estilo");
        QTest::newRow("claro") << "claro";
        QTest::newRow("oscuro") << "oscuro";
    }
    void todoTextoTieneContraste() {
        QFETCH(QString, estilo);
        const QString hoja = leer(estilo);
        QVERIFY(!hoja.isEmpty());
        static const QRegularExpression regla(QStringLiteral("([^{}]+)\\{([^}]*)\\}"));
        int textos = 0;
        for (auto it = regla.globalMatch(hoja); it.hasNext();) {
            const auto hallada = it.next();
            const QByteArray selector = hallada.captured(1).trimmed().toUtf8();
            for (const auto& [texto, fondo] :
                 {std::pair("color", "background-color"),
                  std::pair("selection-color", "selection-background-color")}) {
                const QColor delante = color(hallada.captured(2), texto);
                if (!delante.isValid()) {
                    continue;
                }
                const QColor detras = color(hallada.captured(2), fondo);
                QVERIFY2(detras.isValid(), selector + ": texto sin fondo propio");
                QVERIFY2(contraste(delante, detras) >= 4.5,
                         selector + " " + QByteArray::number(contraste(delante, detras)));
                ++textos;
            }
        }
        QVERIFY(textos > 25);
    }

    void losColoresDeLaCasa() {
        QVERIFY(leer("claro").contains(QStringLiteral("#F8E2D0")));
        QVERIFY(leer("claro").contains(QStringLiteral("#C2521A")));
        QVERIFY(leer("oscuro").contains(QStringLiteral("#180C05")));
        QVERIFY(leer("oscuro").contains(QStringLiteral("#20100A")));
    }

    void losDosEstilosVistenLoMismo() {
        static const QRegularExpression regla(QStringLiteral("([^{}]+)\\{[^}]*\\}"));
        QStringList selectores[2];
        for (const int i : {0, 1}) {
            for (auto it = regla.globalMatch(leer(i == 0 ? "claro" : "oscuro")); it.hasNext();) {
                selectores[i] << it.next().captured(1).simplified();
            }
        }
        QCOMPARE(selectores[0], selectores[1]);
        for (const char* estado : {":hover", ":pressed", ":disabled", ":focus", ":checked"}) {
            QVERIFY2(selectores[0].contains(QStringLiteral("QToolButton#btn_toolbar") +
                                            QLatin1String(estado)),
                     estado);
        }
    }

    void lasPaletasTambien() {
        for (const QPalette& paleta : {interfaz::paletaClara(), interfaz::paletaOscura()}) {
            for (const auto grupo : {QPalette::Active, QPalette::Disabled, QPalette::Inactive}) {
                for (const auto& [texto, fondo] :
                     {std::pair(QPalette::WindowText, QPalette::Window),
                      std::pair(QPalette::Text, QPalette::Base),
                      std::pair(QPalette::Text, QPalette::AlternateBase),
                      std::pair(QPalette::ButtonText, QPalette::Button),
                      std::pair(QPalette::HighlightedText, QPalette::Highlight),
                      std::pair(QPalette::Link, QPalette::Window),
                      std::pair(QPalette::PlaceholderText, QPalette::Base)}) {
                    QVERIFY2(contraste(paleta.color(grupo, texto), paleta.color(grupo, fondo)) >=
                                 4.5,
                             qPrintable(QStringLiteral("%1 sobre %2, grupo %3")
                                            .arg(texto)
                                            .arg(fondo)
                                            .arg(grupo)));
                }
            }
        }
    }

    void elIconoSeVeEnTodosLosTamanos() {
        pruebas::VentanaDePrueba p;
        p.ventana();
        for (const int lado : {16, 24, 32, 48, 64, 128, 256}) {
            const QPixmap pixmap = QApplication::windowIcon().pixmap(lado, lado);
            QCOMPARE(pixmap.size(), QSize(lado, lado));
        }
        QVERIFY(!QIcon(QStringLiteral(":/icono.png")).isNull());
    }
};

REGISTRAR_PRUEBAS(PruebaEstilos);
#include "prueba_estilos.moc"
