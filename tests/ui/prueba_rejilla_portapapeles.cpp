#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"

#include <QClipboard>

using pruebas::RejillaDePrueba;

class PruebaRejillaPortapapeles : public QObject {
    Q_OBJECT

  private slots:
    void init() { portapapeles()->clear(); }
    void copiarDejaElTextoEnElSistema();
    void loPropioSePegaConFormulasYFormato();
    void loDeOtroProgramaSePegaComoTexto();
    void conElSistemaVacioSePegaLoCopiado();
    void sinNadaQuePegarSoloAvisa();
    void cortarVaciaEnElActo();
    void unaCeldaVaciaCopiadaNoPegaNada();

  private:
    static QClipboard* portapapeles() { return QGuiApplication::clipboard(); }
};

void PruebaRejillaPortapapeles::copiarDejaElTextoEnElSistema() {
    RejillaDePrueba r;
    r.poner(0, 0, "1");
    r.poner(1, 0, "x");
    r.poner(1, 1, "=A1*2");
    r.seleccionar(0, 0, 1, 1);
    r.hoja.copiar();
    QCOMPARE(portapapeles()->text(), QStringLiteral("1\t\nx\t2"));
    QCOMPARE(r.senales(), QStringLiteral("0 0 0"));
    QVERIFY(r.editor.hayCeldasCopiadas());
}

void PruebaRejillaPortapapeles::loPropioSePegaConFormulasYFormato() {
    RejillaDePrueba r;
    r.poner(0, 0, "5");
    r.poner(1, 1, "=A1");
    r.activa().celdaMut(1, 1).formato.negrita = true;
    r.seleccionar(1, 1);
    r.hoja.copiar();
    r.seleccionar(4, 3);
    r.hoja.pegar();
    QCOMPARE(r.entrada(4, 3), QStringLiteral("=C4"));
    QVERIFY(r.activa().celda(4, 3)->formato.negrita);
    QCOMPARE(r.senales(), QStringLiteral("1 1 0"));
}

void PruebaRejillaPortapapeles::loDeOtroProgramaSePegaComoTexto() {
    RejillaDePrueba r;
    r.poner(1, 1, "=A1");
    r.seleccionar(1, 1);
    r.hoja.copiar();
    portapapeles()->setText(QStringLiteral("a\tb\r\n=1+1\r\n"));
    r.seleccionar(2, 2);
    r.hoja.pegar();
    QCOMPARE(r.entrada(2, 2), QStringLiteral("a"));
    QCOMPARE(r.entrada(2, 3), QStringLiteral("b"));
    QCOMPARE(r.entrada(3, 2), QStringLiteral("=1+1"));
    QCOMPARE(r.activa().celda(3, 2)->valor.numero, 2.0);
}

void PruebaRejillaPortapapeles::conElSistemaVacioSePegaLoCopiado() {
    RejillaDePrueba r;
    r.poner(0, 0, "=1+2");
    r.hoja.copiar();
    portapapeles()->clear();
    r.seleccionar(3, 3);
    r.hoja.pegar();
    QCOMPARE(r.entrada(3, 3), QStringLiteral("=1+2"));
}

void PruebaRejillaPortapapeles::sinNadaQuePegarSoloAvisa() {
    RejillaDePrueba r;
    r.hoja.pegar();
    QCOMPARE(r.senales(), QStringLiteral("1 1 0"));
    QVERIFY(!r.libro.modificado);
    QCOMPARE(r.editor.pasosDeshacer(), std::size_t{0});
}

void PruebaRejillaPortapapeles::cortarVaciaEnElActo() {
    RejillaDePrueba r;
    r.poner(0, 0, "=B9");
    r.hoja.cortar();
    QCOMPARE(r.entrada(0, 0), QString());
    QCOMPARE(r.senales(), QStringLiteral("0 1 0"));
    r.seleccionar(1, 0);
    r.hoja.pegar();
    QCOMPARE(r.entrada(1, 0), QStringLiteral("=B10"));
}

void PruebaRejillaPortapapeles::unaCeldaVaciaCopiadaNoPegaNada() {
    RejillaDePrueba r;
    r.poner(0, 0, "previo");
    r.hoja.copiar();
    r.seleccionar(5, 5);
    r.hoja.copiar();
    r.seleccionar(6, 6);
    r.hoja.pegar();
    QCOMPARE(r.entrada(6, 6), QString());
}

REGISTRAR_PRUEBAS(PruebaRejillaPortapapeles);

#include "prueba_rejilla_portapapeles.moc"
