#pragma once

#include <QObject>

#include <array>

class QSocketNotifier;

namespace interfaz {

/// Convierte SIGTERM, SIGHUP y SIGINT en una señal de Qt, para que el programa termine guardando el
/// trabajo. Mientras vive es la única; al destruirse devuelve los manejadores anteriores.
class GuardiaSesion : public QObject {
    Q_OBJECT
  public:
    explicit GuardiaSesion(QObject* parent = nullptr);
    ~GuardiaSesion() override;

    /// Verdadero desde que llegó una de las señales.
    bool terminoPedido() const { return terminoPedido_; }

  signals:
    void terminar();

  private:
    void leerAviso();

    std::array<int, 2> tubo_{-1, -1};
    QSocketNotifier* aviso_ = nullptr;
    bool terminoPedido_ = false;
};

} // namespace interfaz
