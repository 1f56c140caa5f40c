#pragma once

#include <QDialog>

namespace interfaz {

/// Muestra dónde guarda Marnel las cosas y deja elegir el zoom y el tema, que cambian al momento.
/// Nada de esto se escribe en disco.
class DialogoOpciones : public QDialog {
    Q_OBJECT
  public:
    struct Datos {
        QString carpetaBiblioteca;
        QString archivoRecuperacion;
        int intervaloRecuperacion; ///< segundos
        int zoom;                  ///< porcentaje
        bool oscuro;
    };

    DialogoOpciones(const Datos& datos, QWidget* parent);

  signals:
    void zoomElegido(int porcentaje);
    void temaElegido(bool oscuro);
};

} // namespace interfaz
