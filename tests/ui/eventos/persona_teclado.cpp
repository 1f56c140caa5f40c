// Lo que llega por el teclado: teclas sueltas, atajos, textos enteros y métodos de entrada.

#include "tests/ui/eventos/persona.h"
#include "tests/ui/eventos/textos.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QInputMethodEvent>

namespace pruebas {

namespace {

constexpr Qt::KeyboardModifiers kModificadores[] = {
    Qt::NoModifier,    Qt::NoModifier,
    Qt::NoModifier,    Qt::ShiftModifier,
    Qt::ShiftModifier, Qt::ControlModifier,
    Qt::AltModifier,   Qt::ControlModifier | Qt::ShiftModifier};

} // namespace

void PersonaAlAzar::tecla() {
    static constexpr int kTeclas[] = {
        Qt::Key_Up,     Qt::Key_Down,      Qt::Key_Left,     Qt::Key_Right,     Qt::Key_Down,
        Qt::Key_Right,  Qt::Key_PageUp,    Qt::Key_PageDown, Qt::Key_Home,      Qt::Key_End,
        Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Return,   Qt::Key_Enter,     Qt::Key_Escape,
        Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F2,       Qt::Key_F6,        Qt::Key_F10,
        Qt::Key_Menu,   Qt::Key_Space,     Qt::Key_Equal,    Qt::Key_0,         Qt::Key_7,
        Qt::Key_A,      Qt::Key_B,         Qt::Key_Plus,     Qt::Key_Semicolon, Qt::Key_Insert};
    const int cual = azar_.uno(kTeclas);
    const Qt::KeyboardModifiers con = azar_.uno(kModificadores);
    anotar("tecla " + QKeySequence(cual | static_cast<int>(con)).toString().toStdString());
    QTest::keyClick(foco(), static_cast<Qt::Key>(cual), con);
}

void PersonaAlAzar::atajo() {
    static constexpr Qt::Key kTeclas[] = {Qt::Key_C, Qt::Key_X, Qt::Key_V, Qt::Key_V,
                                          Qt::Key_Z, Qt::Key_Z, Qt::Key_Y, Qt::Key_A,
                                          Qt::Key_S, Qt::Key_N, Qt::Key_O};
    const Qt::Key cual = azar_.uno(kTeclas);
    anotar("Ctrl+" + QKeySequence(cual).toString().toStdString());
    QTest::keyClick(foco(), cual, Qt::ControlModifier);
}

void PersonaAlAzar::escribirCelda() {
    const QString texto = textoDeCelda(azar_);
    QWidget* destino = foco();
    anotar("teclear " + texto.left(40).toStdString());
    teclearEn(destino, texto.left(1));
    teclearEn(foco(), texto.mid(1, 60));
    static constexpr Qt::Key kFinales[] = {Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab,
                                           Qt::Key_Escape};
    if (!azar_.deCada(4)) {
        QTest::keyClick(foco(), azar_.uno(kFinales));
    }
}

void PersonaAlAzar::escribirEnBarra() {
    auto* barra = ventana_->findChild<QLineEdit*>(QStringLiteral("entradaFormula"));
    const QString texto = textoDeCelda(azar_).left(60);
    anotar("barra de fórmulas: " + texto.toStdString());
    barra->setFocus();
    if (azar_.deCada(2)) {
        barra->selectAll();
    }
    teclearEn(barra, texto);
    static constexpr Qt::Key kFinales[] = {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape,
                                           Qt::Key_Backtab};
    if (!azar_.deCada(3)) {
        QTest::keyClick(barra, azar_.uno(kFinales));
    }
}

void PersonaAlAzar::irACelda() {
    static const char* const kDestinos[] = {"A1", "b3",  "D9",       "ZZ65536", "A65536", "ZZ1",
                                            "C4", "12B", "AAA99999", "",        "E2",     "ñ1"};
    const QString destino = QString::fromUtf8(azar_.uno(kDestinos));
    auto* cuadro = ventana_->findChild<QLineEdit*>(QStringLiteral("cuadroNombre"));
    anotar("cuadro de nombre: " + destino.toStdString());
    cuadro->setFocus();
    cuadro->selectAll();
    teclearEn(cuadro, destino);
    if (!azar_.deCada(5)) {
        QTest::keyClick(cuadro, azar_.deCada(4) ? Qt::Key_Escape : Qt::Key_Return);
    }
}

void PersonaAlAzar::metodoDeEntrada() {
    const bool composicion = azar_.deCada(2);
    const QString texto = azar_.deCada(2) ? QStringLiteral("´") : QStringLiteral("Á");
    QInputMethodEvent evento(composicion ? texto : QString(), {});
    if (!composicion) {
        evento.setCommitString(texto);
    }
    anotar(composicion ? "composición" : "carácter compuesto");
    QCoreApplication::sendEvent(foco(), &evento);
}

} // namespace pruebas
