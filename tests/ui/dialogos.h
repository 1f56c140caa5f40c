#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QList>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>
#include <vector>

namespace pruebas {

/// Lo que se ve en un cuadro de mensaje.
struct CuadroVisto {
    QString titulo;
    QString texto;
    Qt::TextFormat formato = Qt::AutoText;
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    QMessageBox::StandardButtons botones;
    QMessageBox::StandardButton predeterminado = QMessageBox::NoButton;
    QStringList rotulos; ///< de los botones, sin "&", por orden alfabético
};

/// Responde a los cuadros modales y a los menús que abre la ventana, en el orden dado. Uno que
/// nadie esperaba, o que sigue abierto tras su paso, se cierra y se cuenta, para que ninguna prueba
/// se quede esperando.
class Dialogos : public QObject {
  public:
    using Paso = std::function<void(QWidget*)>;

    Dialogos() {
        reloj_.setInterval(0);
        connect(&reloj_, &QTimer::timeout, this, &Dialogos::mirar);
        reloj_.start();
    }

    Dialogos& luego(Paso paso) {
        pasos_.push_back(std::move(paso));
        return *this;
    }
    /// Pulsa ese botón del siguiente cuadro de mensaje.
    Dialogos& pulsar(QMessageBox::StandardButton boton) {
        return luego([boton](QWidget* w) {
            if (auto* cuadro = qobject_cast<QMessageBox*>(w)) {
                if (QAbstractButton* pulsado = cuadro->button(boton)) {
                    pulsado->click();
                }
            }
        });
    }
    /// Cierra el siguiente cuadro como lo haría la tecla Escape.
    Dialogos& cerrar() {
        return luego([](QWidget* w) { w->close(); });
    }
    /// Escribe ese texto en el siguiente cuadro de texto o de archivos y lo acepta.
    Dialogos& escribir(const QString& texto) {
        return luego([texto](QWidget* w) {
            auto* dialogo = qobject_cast<QDialog*>(w);
            if (auto* archivos = qobject_cast<QFileDialog*>(w)) {
                archivos->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(texto);
            } else if (auto* linea = w->findChild<QLineEdit*>()) {
                linea->setText(texto);
            }
            if (dialogo != nullptr) {
                QMetaObject::invokeMethod(dialogo, "accept");
            }
        });
    }
    /// Elige la entrada con ese texto del siguiente menú emergente; vacío lo cierra.
    Dialogos& elegir(const QString& entrada) {
        return luego([entrada](QWidget* w) {
            auto* menu = qobject_cast<QMenu*>(w);
            if (menu == nullptr) {
                return;
            }
            for (QAction* accion : menu->actions()) {
                if (!entrada.isEmpty() && accion->text() == entrada && accion->isEnabled()) {
                    menu->setActiveAction(accion);
                    QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
                    QApplication::sendEvent(menu, &intro);
                    return;
                }
            }
            menu->close();
        });
    }

    const std::vector<CuadroVisto>& vistos() const { return vistos_; }
    int inesperados() const { return inesperados_; }
    /// Verdadero si se dieron todos los pasos y nada más apareció.
    bool completo() const { return pasos_.empty() && inesperados_ == 0; }

  private:
    void mirar() {
        QWidget* abierto = QApplication::activePopupWidget();
        if (abierto == nullptr) {
            abierto = QApplication::activeModalWidget();
        }
        if (abierto == nullptr || !abierto->isVisible()) {
            return;
        }
        // De un cuadro abierto sobre otro se vuelve al de debajo, que ya tuvo su paso.
        atendidos_.removeAll(nullptr);
        if (atendidos_.contains(abierto)) {
            if (desdeAtendido_.hasExpired(kPaciencia)) {
                ++inesperados_;
                desdeAtendido_.start();
                abierto->close();
            }
            return;
        }
        atendidos_ << abierto;
        desdeAtendido_.start();
        if (auto* cuadro = qobject_cast<QMessageBox*>(abierto)) {
            apuntar(*cuadro);
        }
        if (pasos_.empty()) {
            ++inesperados_;
            abierto->close();
            return;
        }
        // Aparte: mientras se atiende a un reloj este no vuelve a sonar, y el paso puede abrir otro
        // cuadro.
        QTimer::singleShot(0, abierto,
                           [abierto, paso = std::move(pasos_.front())] { paso(abierto); });
        pasos_.pop_front();
    }

    void apuntar(const QMessageBox& cuadro) {
        CuadroVisto visto{cuadro.windowTitle(),
                          cuadro.text(),
                          cuadro.textFormat(),
                          cuadro.icon(),
                          cuadro.standardButtons(),
                          QMessageBox::NoButton,
                          {}};
        if (QPushButton* boton = cuadro.defaultButton()) {
            visto.predeterminado = cuadro.standardButton(boton);
        }
        for (const QAbstractButton* boton : cuadro.buttons()) {
            visto.rotulos << boton->text().remove(u'&');
        }
        visto.rotulos.sort();
        vistos_.push_back(visto);
    }

    static constexpr int kPaciencia = 20000; ///< milisegundos

    QTimer reloj_;
    QElapsedTimer desdeAtendido_;
    std::deque<Paso> pasos_;
    std::vector<CuadroVisto> vistos_;
    QList<QPointer<QWidget>> atendidos_;
    int inesperados_ = 0;
};

} // namespace pruebas
