#include "tests/ui/muertes/conductor.h"

#include "tests/ui/eventos/textos.h"
#include "tests/ui/muertes/huella.h"
#include "tests/ui/ventana_de_prueba.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <array>
#include <cinttypes>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace pruebas {

namespace {

constexpr int kIntervaloDeSerie = 30000; ///< milisegundos
constexpr std::array<int, 5> kIntervalos = {0, 1, 3, 8, 20};

/// Una línea entera de una vez: morir a mitad no la deja cortada.
void decir(const std::string& linea) {
    const std::string entera = linea + "\n";
    if (write(STDOUT_FILENO, entera.data(), entera.size()) < 0) {
        QCoreApplication::exit(1);
    }
}

class Conductor : public QObject {
  public:
    explicit Conductor(std::uint64_t semilla) : QObject(qApp), azar_(semilla) {
        connect(&reloj_, &QTimer::timeout, this, &Conductor::paso);
        reloj_.start(0);
    }

  private:
    void paso() {
        if (QThread::currentThread()->loopLevel() == 0) {
            return; // el programa todavía se prepara
        }
        if (QWidget* modal = QApplication::activeModalWidget()) {
            contestar(qobject_cast<QMessageBox*>(modal));
            return;
        }
        if (ventana_ == nullptr && !encontrarVentana()) {
            return;
        }
        if (!documentoRoto_) {
            editar();
            anunciarEstado();
        }
    }

    void contestar(QMessageBox* cuadro) {
        if (cuadro == nullptr || cuadro == contestado_) {
            return;
        }
        contestado_ = cuadro;
        auto boton = QMessageBox::Ok;
        if (cuadro->text().startsWith(QStringLiteral("Se encontró trabajo sin guardar"))) {
            boton = azar_.deCada(10) ? QMessageBox::No : QMessageBox::Yes;
            decir("oferta");
            decir(boton == QMessageBox::Yes ? "si" : "no");
        } else if (cuadro->text().startsWith(QStringLiteral("No se pudo abrir el archivo."))) {
            documentoRoto_ = true;
            decir("roto");
        } else {
            decir("inesperado " + cuadro->text().toStdString());
        }
        cuadro->button(boton)->click();
    }

    bool encontrarVentana() {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            auto* ventana = qobject_cast<interfaz::VentanaPrincipal*>(w);
            if (ventana == nullptr || !ventana->isVisible()) {
                continue;
            }
            if (!ventana->isActiveWindow()) {
                // Sin escritorio, nadie la activa al cerrarse un cuadro.
                ventana->activateWindow();
                return false;
            }
            ventana_ = ventana;
            anunciarEstado();
            acortarReloj();
            return true;
        }
        return false;
    }

    void acortarReloj() {
        for (QTimer* reloj : ventana_->findChildren<QTimer*>()) {
            if (reloj->interval() == kIntervaloDeSerie) {
                reloj->setInterval(azar_.uno(kIntervalos));
                // Se conecta después que la ventana: cuando llega aquí, el archivo ya está escrito.
                connect(reloj, &QTimer::timeout, this, [this] {
                    if (ventana_->libro().modificado) {
                        decir("escrito");
                    }
                });
            }
        }
    }

    void anunciarEstado() {
        const std::uint64_t ahora = huella(ventana_->libro());
        // Con cambios, aunque deshagan otros, el reloj vuelve a escribirlo.
        if (ahora != anunciado_ || ventana_->libro().modificado) {
            std::array<char, 40> linea{};
            std::snprintf(linea.data(), linea.size(), "estado %016" PRIx64, ahora);
            decir(linea.data());
            anunciado_ = ahora;
        }
    }

    QWidget* foco() {
        interfaz::WidgetHoja* rejilla = ventana_->widgetHoja();
        return rejilla->editando() ? static_cast<QWidget*>(rejilla->editorCelda()) : rejilla;
    }
    void tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
        QTest::keyClick(foco(), tecla, con);
    }
    void teclear() {
        const QString texto = textoDeCelda(azar_).left(60);
        teclearEn(foco(), texto.left(1));
        teclearEn(foco(), texto.mid(1));
    }

    void editar() {
        static constexpr std::array<Qt::Key, 5> kMovimientos = {
            Qt::Key_Down, Qt::Key_Right, Qt::Key_Up, Qt::Key_Left, Qt::Key_Home};
        for (int i = azar_.hasta(4); i > 0; --i) {
            tecla(azar_.uno(kMovimientos), azar_.deCada(4) ? Qt::ShiftModifier : Qt::NoModifier);
        }
        switch (azar_.hasta(16)) {
        case 0:
            pegarTabla();
            break;
        case 1:
            tecla(Qt::Key_Delete);
            break;
        case 2:
        case 3:
            tecla(Qt::Key_Z, Qt::ControlModifier);
            break;
        case 4:
            tecla(Qt::Key_Y, Qt::ControlModifier);
            break;
        case 5:
        case 6:
            guardar();
            break;
        case 7:
            teclear(); // a medias
            break;
        case 8:
            ejecutarOrden();
            break;
        default:
            teclear();
            tecla(azar_.deCada(2) ? Qt::Key_Return : Qt::Key_Tab);
        }
    }

    /// De vez en cuando muchas celdas, para que escribir el archivo dure.
    void pegarTabla() {
        QString texto;
        const int filas = azar_.deCada(3) ? azar_.entre(300, 3000) : azar_.entre(1, 20);
        for (int fila = 0; fila < filas; ++fila) {
            texto +=
                QStringLiteral("%1\tdato %2\t=%3*2\n").arg(fila).arg(azar_.hasta(1000)).arg(fila);
        }
        QGuiApplication::clipboard()->setText(texto);
        tecla(Qt::Key_Escape);
        tecla(Qt::Key_V, Qt::ControlModifier);
    }

    void ejecutarOrden() {
        static constexpr std::array<const char*, 5> kOrdenes = {
            "Fila arriba", "Columna a la izquierda", "Hoja nueva", "Fusionar celdas",
            "Borrar contenido"};
        const QString elegida = QString::fromUtf8(azar_.uno(kOrdenes));
        for (QAction* accion : ventana_->findChildren<QAction*>()) {
            if (accion->text() == elegida && ventana_->libro().hojas.size() < 4) {
                accion->trigger();
            }
        }
    }

    void guardar() {
        if (ventana_->libro().ruta.empty()) {
            return;
        }
        // Guardar escribe antes lo que se teclea; el estado que resulta se anuncia primero.
        if (ventana_->widgetHoja()->editando()) {
            tecla(Qt::Key_Return);
        }
        anunciarEstado();
        decir("guardando");
        tecla(Qt::Key_S, Qt::ControlModifier);
        decir("guardado");
    }

    Azar azar_;
    QTimer reloj_;
    interfaz::VentanaPrincipal* ventana_ = nullptr;
    QPointer<QMessageBox> contestado_;
    bool documentoRoto_ = false;
    std::uint64_t anunciado_ = 0;
};

bool pedido = false;
std::uint64_t semillaPedida = 0;

void empezar() {
    if (pedido) {
        new Conductor(semillaPedida);
    }
}
Q_COREAPP_STARTUP_FUNCTION(empezar)

} // namespace

void conducir(std::uint64_t semilla) {
    pedido = true;
    semillaPedida = semilla;
}

} // namespace pruebas
