#pragma once

#include <QObject>

class QWidget;

/// Los botones de la cinta muestran símbolos de fuentes distintas: aquí se les da un tamaño parejo.
namespace velora {

/// Ajusta el tamaño de letra de los botones "btn_toolbar" y "btn_sigla" que cuelgan de `raiz` para
/// que la tinta de su texto ocupe lo mismo. No toca los que tienen icono o no tienen texto.
void igualarSimbolos(QWidget* raiz);

/// Filtro de eventos de toda la aplicación: iguala los símbolos de cada ventana al mostrarse.
class IgualadorSimbolos : public QObject {
    Q_OBJECT
  public:
    explicit IgualadorSimbolos(QObject* parent);

    bool eventFilter(QObject* receptor, QEvent* evento) override;
};

} // namespace velora
