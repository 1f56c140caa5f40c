#include "ui/cuadros.h"

namespace interfaz {

namespace {

QMessageBox::StandardButton mostrar(QWidget* parent, QMessageBox::Icon icono, const QString& texto,
                                    QMessageBox::StandardButtons botones,
                                    QMessageBox::StandardButton predeterminado) {
    QMessageBox cuadro(icono, QStringLiteral("Marnel"), QString(), botones, parent);
    cuadro.setTextFormat(Qt::PlainText);
    cuadro.setText(texto);
    cuadro.setDefaultButton(predeterminado);
    cuadro.exec();
    return cuadro.clickedButton() == nullptr ? QMessageBox::NoButton
                                             : cuadro.standardButton(cuadro.clickedButton());
}

} // namespace

QMessageBox::StandardButton preguntar(QWidget* parent, const QString& texto,
                                      QMessageBox::StandardButtons botones,
                                      QMessageBox::StandardButton predeterminado) {
    return mostrar(parent, QMessageBox::Question, texto, botones, predeterminado);
}

void advertir(QWidget* parent, const QString& texto) {
    mostrar(parent, QMessageBox::Warning, texto, QMessageBox::Ok, QMessageBox::Ok);
}

void informar(QWidget* parent, const QString& texto) {
    mostrar(parent, QMessageBox::Information, texto, QMessageBox::Ok, QMessageBox::Ok);
}

} // namespace interfaz
