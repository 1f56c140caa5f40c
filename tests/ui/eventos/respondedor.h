#pragma once

#include "tests/ui/eventos/azar.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class QDialog;
class QFileDialog;
class QMenu;

namespace pruebas {

/// Contesta al azar, y siempre acaba cerrando, cada cuadro modal y cada menú que se abra: nadie se
/// queda esperando.
class Respondedor : public QObject {
  public:
    /// `archivos`: rutas que escribe en los cuadros de abrir y guardar.
    Respondedor(Azar& azar, QStringList archivos);

    /// Cuadros y menús que ha cerrado o visto cerrarse.
    int atendidos() const { return atendidos_; }

  private:
    void mirar();
    void atender(QWidget* abierto);
    void atenderMenu(QMenu* menu);
    void atenderArchivos(QFileDialog* cuadro);
    void atenderCuadro(QDialog* cuadro);
    /// Teclas y pulsaciones sueltas en el cuadro, que pueden cerrarlo o no.
    void tantear(QWidget* abierto);

    Azar& azar_;
    QStringList archivos_;
    QTimer reloj_;
    QPointer<QWidget> atendido_;
    int intentos_ = 0;
    int atendidos_ = 0;
};

} // namespace pruebas
