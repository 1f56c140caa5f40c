#pragma once

#include "rendering/renderizador.h"
#include "rendering/tema.h"

#include <QAbstractScrollArea>
#include <QString>

#include <cstdint>

class QLineEdit;
class QMenu;

namespace nucleo {
class Libro;
class Hoja;
} // namespace nucleo
namespace editor {
class Editor;
}

namespace interfaz {

/// La vista de la hoja activa: la pinta, convierte ratón y teclado en operaciones del `Editor`,
/// aloja el editor de celda y avisa con señales de lo que ha pasado. No guarda datos del libro.
class WidgetHoja : public QAbstractScrollArea {
    Q_OBJECT

  public:
    static constexpr int kZoomMinimo = 50;
    static constexpr int kZoomMaximo = 200;

    /// El libro y el editor viven más que la vista.
    WidgetHoja(nucleo::Libro& libro, editor::Editor& editor, QWidget* parent = nullptr);
    ~WidgetHoja() override;

    /// La geometría al día: hoja activa, tema y desplazamiento actuales.
    const renderizador::Renderizador& renderizador() const;
    int zoomPorcentaje() const { return zoomPorcentaje_; }
    const renderizador::Tema& tema() const { return tema_; }
    renderizador::SeleccionVista seleccionVista() const;
    /// Verdadero mientras el editor de celda está abierto.
    bool editando() const;
    QLineEdit* editorCelda() const { return editorCelda_; }

    void establecerTema(const renderizador::Tema& tema);
    /// Acota el porcentaje a 50..200.
    void establecerZoom(int porcentaje);

  public slots:
    /// Pone al día barras, editor de celda y pintura tras un cambio hecho en otra parte.
    void refrescar();
    void asegurarVisible();
    /// Abre el editor de celda con ese texto. `reemplazar` es falso al editar lo que ya había: el
    /// cursor va al final.
    void comenzarEdicion(const QString& texto, bool reemplazar);
    /// Si se está editando, escribe en la celda en que empezó la edición y mueve la celda activa.
    void confirmarEdicion(int dFila, int dCol);
    void cancelarEdicion();
    /// La barra de fórmulas refleja aquí su texto; abre el editor si hacía falta, sin darle el
    /// foco.
    void sincronizarTextoEdicion(const QString& texto);
    void copiar();
    void cortar();
    void pegar();
    /// El libro es otro, o ha cambiado por debajo: olvida edición, arrastre y redimensión sin
    /// escribir nada.
    void olvidarInteraccion();

  signals:
    void seleccionCambiada();
    void libroModificado();
    void edicionTerminada();
    void textoEdicionCambiado(QString texto);
    /// Se ha pedido otro zoom con Ctrl y la rueda; quien lleva el zoom llama a `establecerZoom`.
    void zoomPedido(int porcentaje);

  protected:
    bool event(QEvent* evento) override;
    bool viewportEvent(QEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void wheelEvent(QWheelEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void inputMethodEvent(QInputMethodEvent* evento) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery consulta) const override;

  private:
    /// Dónde empezó la edición pendiente: ahí se escribe, aunque la selección o la hoja cambien.
    struct CeldaEnEdicion {
        int hoja = -1;
        int fila = 0;
        int col = 0;
    };

    const nucleo::Hoja* hojaActiva() const;
    void prepararRenderizador() const;
    void actualizarScrollbars();
    /// Barras, editor de celda y pintura.
    void ponerAlDia();
    void posicionarEditorCelda();
    void aplicarEstiloEditorCelda();
    void abrirEditor();
    void cerrarEditor(bool devolverFoco);
    QString textoCeldaActiva() const;
    void mover(int dFila, int dCol, bool extender);
    void seleccionMovida();
    void redimensionar(const QPoint& punto);
    void actualizarCursor(const QPoint& punto);
    void ejecutarAccion(const QString& id);
    bool copiarAlPortapapeles();

    nucleo::Libro& libro_;
    editor::Editor& editor_;
    mutable renderizador::Renderizador renderizador_;
    renderizador::Tema tema_;
    std::int32_t zoomPorcentaje_ = 100;
    QLineEdit* editorCelda_ = nullptr;
    QString ultimoTSV_; ///< lo último que esta vista puso en el portapapeles del sistema
    bool arrastrando_ = false;
    int columnaRedimensionada_ = -1;
    int filaRedimensionada_ = -1;
    int inicioArrastre_ = 0; ///< x o y de la pulsación que empezó a redimensionar
    int tamanoInicial_ = 0;  ///< tamaño sin zoom al empezar a redimensionar
    CeldaEnEdicion enEdicion_;
};

} // namespace interfaz
