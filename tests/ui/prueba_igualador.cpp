// El igualador de símbolos: a qué botones toca y qué tamaño les da.

#include "tests/ui/registro.h"
#include "ui/igualador_simbolos.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QObject>
#include <QTemporaryFile>
#include <QTest>
#include <QToolButton>

#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace {

QToolButton* crearBoton(QWidget* padre, const QString& texto, const char* estilo,
                        const char* nombre = "btn_toolbar") {
    auto* boton = new QToolButton(padre);
    boton->setObjectName(QLatin1String(nombre));
    boton->setText(texto);
    boton->setStyleSheet(QString::fromUtf8(estilo));
    boton->ensurePolished();
    return boton;
}

QSizeF tinta(const QToolButton& boton) {
    return QFontMetricsF(boton.font()).tightBoundingRect(boton.text().trimmed()).size();
}

/// El tamaño que se espera, calculado aparte desde la tinta medida; -1 si no debe cambiar.
int esperado(const QToolButton& boton) {
    const QString texto = boton.text().trimmed();
    const double p = boton.font().pixelSize();
    const QSizeF t = tinta(boton);
    int letras = 0;
    for (const QChar c : texto) {
        letras += c.isLetterOrNumber() ? 1 : 0;
    }
    double f = 0;
    double m = 0;
    if (letras < 2) {
        f = std::fmin(20 / t.width(), 16 / t.height());
        m = 11;
        if (f < 1 && t.height() >= 0.95 * p) {
            return -1;
        }
    } else {
        f = std::fmin(20 / t.width(), 1.0);
        m = 10;
    }
    const int s = static_cast<int>(std::fmin(std::fmax(std::floor(f * p + 0.5), m), 40));
    return s == static_cast<int>(p) ? -1 : s;
}

} // namespace

class PruebaIgualador : public QObject {
    Q_OBJECT

  private slots:
    void cadaTextoTomaSuTamano_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<int>("pixeles");
        for (const char* texto :
             {"↩", "✂", "⎘", "⊕", "N", "$", "%", ",0", ",00", "ABCDEFG", "ñá", ".", "  x  ", "█"}) {
            for (const int pixeles : {8, 12, 15, 24, 40}) {
                QTest::newRow(QByteArray(texto) + " a " + QByteArray::number(pixeles))
                    << QString::fromUtf8(texto) << pixeles;
            }
        }
    }
    void cadaTextoTomaSuTamano() {
        QFETCH(QString, texto);
        QFETCH(int, pixeles);
        QWidget padre;
        const QString estilo = QStringLiteral("font-weight: 700; font-size: %1px;").arg(pixeles);
        QToolButton* boton = crearBoton(&padre, texto, estilo.toUtf8().constData());
        QCOMPARE(boton->font().pixelSize(), pixeles);
        const int s = esperado(*boton);
        velora::igualarSimbolos(&padre);
        if (s < 0) {
            QCOMPARE(boton->styleSheet(), estilo);
        } else {
            QCOMPARE(boton->styleSheet(),
                     QStringLiteral("font-weight: 700;  font-size: %1px;").arg(s));
            boton->ensurePolished();
            QCOMPARE(boton->font().pixelSize(), s);
        }
    }

    void losTamanosSeAcotan() {
        QWidget padre;
        QToolButton* punto = crearBoton(&padre, ".", "font-size: 15px;");
        QToolButton* sigla = crearBoton(&padre, "ABCDEFGHIJKL", "font-size: 15px;");
        velora::igualarSimbolos(&padre);
        QVERIFY(punto->styleSheet().contains(QStringLiteral("font-size: 40px;")));
        QVERIFY(sigla->styleSheet().contains(QStringLiteral("font-size: 10px;")));
    }

    void unaSiglaNuncaCrece() {
        QWidget padre;
        QToolButton* sigla = crearBoton(&padre, "il", "font-size: 12px;");
        QVERIFY(tinta(*sigla).width() < 20);
        velora::igualarSimbolos(&padre);
        QCOMPARE(sigla->styleSheet(), QStringLiteral("font-size: 12px;"));
    }

    void seQuitanTodosLosTamanosAnteriores() {
        QWidget padre;
        QToolButton* boton =
            crearBoton(&padre, "+", "font-size : 9px ; color: red; font-size:11.5px");
        velora::igualarSimbolos(&padre);
        QCOMPARE(boton->styleSheet().count(QStringLiteral("font-size")), 1);
        QVERIFY(boton->styleSheet().contains(QStringLiteral("color: red;")));
    }

    void noSeTocaLoQueNoEsDeLaCinta_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<bool>("icono");
        QTest::newRow("vacío") << ""
                               << "btn_toolbar" << false;
        QTest::newRow("en blanco") << "   "
                                   << "btn_toolbar" << false;
        QTest::newRow("con icono") << "+"
                                   << "btn_toolbar" << true;
        QTest::newRow("otro nombre") << "+"
                                     << "slot_btn" << false;
        QTest::newRow("parecido") << "+"
                                  << "btn_toolbar2" << false;
    }
    void noSeTocaLoQueNoEsDeLaCinta() {
        QFETCH(QString, texto);
        QFETCH(QString, nombre);
        QFETCH(bool, icono);
        QWidget padre;
        QToolButton* boton =
            crearBoton(&padre, texto, "font-size: 9px;", nombre.toUtf8().constData());
        if (icono) {
            QPixmap pixmap(8, 8);
            pixmap.fill(Qt::red);
            boton->setIcon(pixmap);
        }
        velora::igualarSimbolos(&padre);
        QCOMPARE(boton->styleSheet(), QStringLiteral("font-size: 9px;"));
    }

    void tambienLasSiglasYLosNietos() {
        QWidget padre;
        auto* hijo = new QWidget(&padre);
        QToolButton* boton = crearBoton(hijo, "+", "font-size: 9px;", "btn_sigla");
        velora::igualarSimbolos(&padre);
        QVERIFY(boton->styleSheet() != QStringLiteral("font-size: 9px;"));
        velora::igualarSimbolos(nullptr);
    }

    void repetirApenasCambiaNada() {
        QWidget padre;
        QToolButton* boton = crearBoton(&padre, "⊕", "font-size: 9px;");
        velora::igualarSimbolos(&padre);
        boton->ensurePolished();
        const int tamano = boton->font().pixelSize();
        QVERIFY(tamano > 9);
        for (int i = 0; i < 5; ++i) {
            velora::igualarSimbolos(&padre);
            boton->ensurePolished();
            // La tinta medida a otro tamaño puede redondear a un píxel de distancia.
            QVERIFY(std::abs(boton->font().pixelSize() - tamano) <= 1);
            QCOMPARE(boton->styleSheet().count(QStringLiteral("font-size")), 1);
        }
    }

    void elFiltroActuaAlMostrarVentanasYNoConsumeNada() {
        velora::IgualadorSimbolos filtro(nullptr);
        QWidget ventana;
        QWidget* hijo = new QWidget(&ventana);
        QToolButton* boton = crearBoton(&ventana, "+", "font-size: 9px;");
        QEvent mostrar(QEvent::Show);
        QEvent ocultar(QEvent::Hide);
        QVERIFY(!filtro.eventFilter(hijo, &mostrar));
        QVERIFY(!filtro.eventFilter(&ventana, &ocultar));
        QVERIFY(!filtro.eventFilter(this, &mostrar));
        QCOMPARE(boton->styleSheet(), QStringLiteral("font-size: 9px;"));
        QVERIFY(!filtro.eventFilter(&ventana, &mostrar));
        QVERIFY(boton->styleSheet() != QStringLiteral("font-size: 9px;"));
    }

    void elDiagnosticoSoloConLaVariable() {
        // La salida de errores se desvía a un archivo para leer lo que escribe la función.
        for (const bool pedido : {false, true}) {
            QTemporaryFile archivo;
            QVERIFY(archivo.open());
            std::fflush(stderr);
            const int original = dup(2);
            dup2(archivo.handle(), 2);
            if (pedido) {
                qputenv("VELORA_SIMBOLOS", "");
            }
            QWidget padre;
            const QToolButton* boton = crearBoton(&padre, "+", "font-size: 9px;");
            const QSizeF medida = tinta(*boton);
            const int s = esperado(*boton);
            velora::igualarSimbolos(&padre);
            qunsetenv("VELORA_SIMBOLOS");
            std::fflush(stderr);
            dup2(original, 2);
            close(original);
            archivo.seek(0);
            const QString linea = QString::asprintf("simbolo \"+\" tinta %.0fx%.0f a 9px -> %dpx\n",
                                                    medida.width(), medida.height(), s);
            QCOMPARE(QString::fromUtf8(archivo.readAll()), pedido ? linea : QString());
        }
    }
};

REGISTRAR_PRUEBAS(PruebaIgualador);
#include "prueba_igualador.moc"
