#include "tests/ui/registro.h"
#include "tests/ui/rejilla_de_prueba.h"

#include <QAccessible>

#include <algorithm>

using pruebas::RejillaDePrueba;

namespace {

/// Lo que se contaría a los lectores de pantalla: sin ninguno a la escucha, Qt no lo entrega.
class Oyente {
  public:
    explicit Oyente(RejillaDePrueba& r) : avisos_(r.hoja, &apuntar) {
        avisos_.ponerAlDia();
        apuntados().clear();
    }

    /// Cuántos avisos de un tipo hay desde la última vez que se olvidaron.
    int cuantos(QAccessible::Event tipo) {
        avisos_.ponerAlDia();
        return static_cast<int>(
            std::count_if(apuntados().begin(), apuntados().end(),
                          [tipo](const Aviso& aviso) { return aviso.tipo == tipo; }));
    }
    /// El nombre de la celda del último aviso de un tipo.
    QString ultima(QAccessible::Event tipo) {
        avisos_.ponerAlDia();
        QString celda;
        for (const Aviso& aviso : apuntados()) {
            celda = aviso.tipo == tipo ? aviso.celda : celda;
        }
        return celda;
    }
    void olvidar() { apuntados().clear(); }

  private:
    struct Aviso {
        QAccessible::Event tipo;
        QString celda;
    };

    static QList<Aviso>& apuntados() {
        static QList<Aviso> lista;
        return lista;
    }
    static void apuntar(QAccessibleEvent* evento) {
        QAccessibleInterface* interfaz = evento->accessibleInterface();
        apuntados().append(
            {evento->type(), interfaz != nullptr ? interfaz->text(QAccessible::Name) : QString()});
    }

    interfaz::AvisosAccesibles avisos_;
};

} // namespace

class PruebaRejillaAccesible : public QObject {
    Q_OBJECT

  private slots:
    void esUnaTablaConLoUsado();
    void cadaCeldaDiceSuDireccionSuValorYQueEs_data();
    void cadaCeldaDiceSuDireccionSuValorYQueEs();
    void losEncabezadosNombranFilasYColumnas();
    void losHijosTienenIndice();
    void lasDireccionesImposiblesNoSonNulas();
    void seSabeQueEstaSeleccionado();
    void sePuedeSeleccionar();
    void sePreguntaPorUnPunto();
    void moverLaCeldaActivaSeCuenta();
    void cambiarDeHojaSeCuenta();
    void unaHojaEnteraNoCreaTodasSusCeldas();
    void unaCeldaSobreviveASuVista();

  private:
    static QAccessibleInterface* raiz(RejillaDePrueba& r) {
        return QAccessible::queryAccessibleInterface(&r.hoja);
    }
    static QAccessibleTableInterface* tabla(RejillaDePrueba& r) {
        return raiz(r)->tableInterface();
    }
};

void PruebaRejillaAccesible::esUnaTablaConLoUsado() {
    RejillaDePrueba r;
    QCOMPARE(raiz(r)->role(), QAccessible::Table);
    QVERIFY(tabla(r) != nullptr);
    QCOMPARE(tabla(r)->rowCount(), 1);
    QCOMPARE(tabla(r)->columnCount(), 1);
    r.poner(9, 4, "x");
    QCOMPARE(tabla(r)->rowCount(), 10);
    QCOMPARE(tabla(r)->columnCount(), 5);
    r.seleccionar(20, 1);
    QCOMPARE(tabla(r)->rowCount(), 21);
    r.activa().fusiones.push_back({0, 0, 2000000000, 2000000000});
    QCOMPARE(tabla(r)->rowCount(), 65536);
    QCOMPARE(tabla(r)->columnCount(), 702);
    QCOMPARE(raiz(r)->text(QAccessible::Name), QStringLiteral("Hoja 1"));
}

void PruebaRejillaAccesible::cadaCeldaDiceSuDireccionSuValorYQueEs_data() {
    QTest::addColumn<QString>("entrada");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("descripcion");
    const auto fila = [](const char* nombre, const char* entrada, const char* valor,
                         const char* descripcion) {
        QTest::newRow(nombre) << QString::fromUtf8(entrada) << QString::fromUtf8(valor)
                              << QString::fromUtf8(descripcion);
    };
    fila("vacía", "", "", "");
    fila("texto", "hola", "hola", "");
    fila("número", "1234,5", "1234,5", "");
    fila("moneda", "$ 1234,5", "$ 1.234,50", "");
    fila("fórmula", "=1+2", "3", "Fórmula: =1+2");
    fila("división", "=1/0", "#¡DIV/0!", "Error: división por cero. Fórmula: =1/0");
    fila("circular", "=B12", "#¡CIRCULAR!", "Error: la fórmula depende de sí misma. Fórmula: =B12");
    fila("nombre", "=NADA(1)", "#¡NOMBRE?", "Error: nombre desconocido. Fórmula: =NADA(1)");
}

void PruebaRejillaAccesible::cadaCeldaDiceSuDireccionSuValorYQueEs() {
    QFETCH(QString, entrada);
    QFETCH(QString, valor);
    QFETCH(QString, descripcion);
    RejillaDePrueba r;
    r.poner(20, 20, "hasta aquí");
    r.poner(11, 1, entrada.toStdString());
    QAccessibleInterface* celda = tabla(r)->cellAt(11, 1);
    QVERIFY(celda->isValid());
    QCOMPARE(celda->role(), QAccessible::Cell);
    QCOMPARE(celda->text(QAccessible::Name), QStringLiteral("B12"));
    QCOMPARE(celda->text(QAccessible::Value), valor);
    QCOMPARE(celda->text(QAccessible::Description), descripcion);
    QVERIFY(celda->parent() == raiz(r));
    const QRect esperado(r.hoja.viewport()->mapToGlobal(r.rect(11, 1).topLeft()),
                         r.rect(11, 1).size());
    QCOMPARE(celda->rect(), esperado);
    QVERIFY(celda->window() == r.hoja.windowHandle());
}

void PruebaRejillaAccesible::losEncabezadosNombranFilasYColumnas() {
    RejillaDePrueba r;
    r.poner(9, 4, "x");
    QAccessibleTableCellInterface* celda = tabla(r)->cellAt(6, 3)->tableCellInterface();
    QVERIFY(celda != nullptr);
    QCOMPARE(celda->rowIndex(), 6);
    QCOMPARE(celda->columnIndex(), 3);
    QCOMPARE(celda->rowExtent(), 1);
    QCOMPARE(celda->columnExtent(), 1);
    QVERIFY(celda->table() == raiz(r));
    QCOMPARE(celda->columnHeaderCells().size(), 1);
    QCOMPARE(celda->columnHeaderCells().first()->text(QAccessible::Name), QStringLiteral("D"));
    QCOMPARE(celda->columnHeaderCells().first()->role(), QAccessible::ColumnHeader);
    QCOMPARE(celda->rowHeaderCells().first()->text(QAccessible::Name), QStringLiteral("7"));
    QCOMPARE(celda->rowHeaderCells().first()->role(), QAccessible::RowHeader);
    QCOMPARE(tabla(r)->columnDescription(3), QStringLiteral("D"));
    QCOMPARE(tabla(r)->rowDescription(6), QStringLiteral("7"));
    const QPoint esquina =
        r.hoja.viewport()->mapFromGlobal(celda->columnHeaderCells().first()->rect().topLeft());
    QCOMPARE(esquina, QPoint(r.rect(0, 3).left(), 0));
}

void PruebaRejillaAccesible::losHijosTienenIndice() {
    RejillaDePrueba r;
    r.poner(3, 4, "x");
    QCOMPARE(raiz(r)->childCount(), 5 * 6);
    QStringList nombres;
    for (int i = 0; i < raiz(r)->childCount(); ++i) {
        QAccessibleInterface* hijo = raiz(r)->child(i);
        QVERIFY(hijo != nullptr);
        QCOMPARE(raiz(r)->indexOfChild(hijo), i);
        nombres << hijo->text(QAccessible::Name);
    }
    QCOMPARE(nombres.mid(0, 8), (QStringList{QString(), "A", "B", "C", "D", "E", "1", "A1"}));
    QCOMPARE(nombres.last(), QStringLiteral("E4"));
    QVERIFY(raiz(r)->child(-1) == nullptr);
    QVERIFY(raiz(r)->child(30) == nullptr);
    QCOMPARE(raiz(r)->indexOfChild(raiz(r)), -1);
}

void PruebaRejillaAccesible::lasDireccionesImposiblesNoSonNulas() {
    RejillaDePrueba r;
    for (const QPoint& donde : {QPoint(-1, 0), QPoint(0, -1), QPoint(70000, 0), QPoint(0, 702),
                                QPoint(-5, -5), QPoint(1, 1)}) {
        QAccessibleInterface* celda = tabla(r)->cellAt(donde.x(), donde.y());
        QVERIFY(celda != nullptr);
        QVERIFY(!celda->isValid());
        QCOMPARE(celda->text(QAccessible::Name), QString());
        QVERIFY(celda->state().invalid);
        QCOMPARE(celda->rect(), QRect());
    }
}

void PruebaRejillaAccesible::seSabeQueEstaSeleccionado() {
    RejillaDePrueba r;
    r.poner(9, 9, "x");
    r.seleccionar(1, 1, 3, 2);
    QCOMPARE(tabla(r)->selectedCellCount(), 6);
    QCOMPARE(tabla(r)->selectedRows(), (QList<int>{1, 2, 3}));
    QCOMPARE(tabla(r)->selectedColumns(), (QList<int>{1, 2}));
    QCOMPARE(tabla(r)->selectedCells().size(), 6);
    QCOMPARE(tabla(r)->selectedCells().last()->text(QAccessible::Name), QStringLiteral("C4"));
    QVERIFY(tabla(r)->cellAt(2, 1)->state().selected);
    QVERIFY(!tabla(r)->cellAt(4, 1)->state().selected);
    QVERIFY(tabla(r)->cellAt(3, 2)->state().focused);
    QVERIFY(!tabla(r)->cellAt(1, 1)->state().focused);
    QVERIFY(!tabla(r)->isRowSelected(1));
    QCOMPARE(raiz(r)->focusChild()->text(QAccessible::Name), QStringLiteral("C4"));
    r.tecla(Qt::Key_F2);
    QVERIFY(raiz(r)->focusChild()->object() == r.editorCelda());
}

void PruebaRejillaAccesible::sePuedeSeleccionar() {
    RejillaDePrueba r;
    r.poner(9, 9, "x");
    QVERIFY(tabla(r)->selectRow(4));
    QCOMPARE(r.seleccion(), QStringLiteral("Z5>A5"));
    QVERIFY(tabla(r)->isRowSelected(4));
    QCOMPARE(r.senales(), QStringLiteral("1 0 0"));
    QVERIFY(tabla(r)->selectColumn(2));
    QCOMPARE(r.seleccion(), QStringLiteral("C100>C1"));
    QVERIFY(tabla(r)->isColumnSelected(2));
    QVERIFY(!tabla(r)->isColumnSelected(3));
    QVERIFY(!tabla(r)->selectRow(-1));
    QVERIFY(!tabla(r)->selectColumn(5000));
}

void PruebaRejillaAccesible::sePreguntaPorUnPunto() {
    RejillaDePrueba r;
    r.poner(9, 9, "x");
    const auto nombre = [&](QPoint donde) {
        const QPoint global = r.hoja.viewport()->mapToGlobal(donde);
        QAccessibleInterface* hijo = raiz(r)->childAt(global.x(), global.y());
        return hijo == nullptr ? QStringLiteral("nada") : hijo->text(QAccessible::Name);
    };
    QCOMPARE(nombre(r.centro(2, 3)), QStringLiteral("D3"));
    QCOMPARE(nombre({r.centro(0, 3).x(), 5}), QStringLiteral("D"));
    QCOMPARE(nombre({5, r.centro(2, 0).y()}), QStringLiteral("3"));
    QCOMPARE(nombre({5, 5}), QStringLiteral("nada"));
}

void PruebaRejillaAccesible::moverLaCeldaActivaSeCuenta() {
    RejillaDePrueba r;
    Oyente oyente(r);
    r.tecla(Qt::Key_Down);
    QCOMPARE(oyente.cuantos(QAccessible::Focus), 1);
    QCOMPARE(oyente.ultima(QAccessible::Focus), QStringLiteral("A2"));
    QCOMPARE(oyente.ultima(QAccessible::Selection), QStringLiteral("A2"));
    r.tecla(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(oyente.cuantos(QAccessible::Focus), 2);
    QCOMPARE(oyente.ultima(QAccessible::Focus), QStringLiteral("B2"));
    // Lo que no cambia no se repite.
    r.hoja.refrescar();
    r.hoja.asegurarVisible();
    QCOMPARE(oyente.cuantos(QAccessible::Focus), 2);
    // Y lo que cambia por fuera, como al saltar a una referencia, también se cuenta.
    r.seleccionar(30, 3);
    r.hoja.asegurarVisible();
    QCOMPARE(oyente.ultima(QAccessible::Focus), QStringLiteral("D31"));
}

void PruebaRejillaAccesible::cambiarDeHojaSeCuenta() {
    RejillaDePrueba r;
    r.libro.agregarHoja();
    Oyente oyente(r);
    r.libro.hojaActiva = 1;
    r.hoja.refrescar();
    QCOMPARE(oyente.cuantos(QAccessible::TableModelChanged), 1);
    QCOMPARE(oyente.ultima(QAccessible::NameChanged), QStringLiteral("Hoja 2"));
    QCOMPARE(oyente.ultima(QAccessible::Focus), QStringLiteral("A1"));
    oyente.olvidar();
    r.poner(50, 50, "crece");
    r.hoja.refrescar();
    QCOMPARE(oyente.cuantos(QAccessible::TableModelChanged), 1);
    QCOMPARE(oyente.cuantos(QAccessible::Focus), 0);
}

void PruebaRejillaAccesible::unaHojaEnteraNoCreaTodasSusCeldas() {
    RejillaDePrueba r;
    r.poner(65535, 701, "x");
    r.editor.seleccionarTodo();
    QCOMPARE(raiz(r)->childCount(), 65537 * 703);
    QCOMPARE(tabla(r)->selectedCellCount(), 65536 * 702);
    QVERIFY(tabla(r)->selectedCells().size() <= 1024);
    QCOMPARE(raiz(r)->child(65537 * 703 - 1)->text(QAccessible::Name), QStringLiteral("ZZ65536"));
    for (int i = 0; i < 5000; ++i) {
        QCOMPARE(tabla(r)->cellAt(i, i % 700)->tableCellInterface()->rowIndex(), i);
    }
    // Pedir dos veces la misma da la misma mientras se conserva.
    QVERIFY(tabla(r)->cellAt(3, 3) == tabla(r)->cellAt(3, 3));
}

void PruebaRejillaAccesible::unaCeldaSobreviveASuVista() {
    QAccessible::Id id = 0;
    {
        RejillaDePrueba r;
        id = QAccessible::uniqueId(tabla(r)->cellAt(0, 0));
        QVERIFY(QAccessible::accessibleInterface(id) != nullptr);
    }
    QVERIFY(QAccessible::accessibleInterface(id) == nullptr);
}

REGISTRAR_PRUEBAS(PruebaRejillaAccesible);

#include "prueba_rejilla_accesible.moc"
