#pragma once

#include <QMessageBox>
#include <QString>

/// Cuadros de mensaje del programa: titulados "Marnel" y con el texto siempre literal, porque los
/// nombres de hojas y archivos los elige cualquiera.
namespace interfaz {

/// Respuesta a una pregunta; `NoButton` si el cuadro se cerró sin responder porque el programa
/// termina. Cerrarlo a mano equivale a su botón de escape.
QMessageBox::StandardButton
preguntar(QWidget* parent, const QString& texto, QMessageBox::StandardButtons botones,
          QMessageBox::StandardButton predeterminado = QMessageBox::NoButton);

void advertir(QWidget* parent, const QString& texto);
void informar(QWidget* parent, const QString& texto);

} // namespace interfaz
