#pragma once

#include "rendering/renderizador.h"
#include "rendering/tema.h"
#include "ui/avisos_accesibles.h"

#include <QAbstractScrollArea>
#include <QString>

#include <cstdint>
#include <string>

class QLineEdit;

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
    /// Los métodos de entrada y la tecla de menú se abren en la celda activa.
    QVariant inputMethodQuery(Qt::InputMethodQuery consulta) const override;
    const nucleo::Libro& libro() const { return libro_; }
    editor::Editor& editor() const { return editor_; }

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
    /// El zoom ha cambiado con Ctrl y la rueda.
    void zoomPedido(int porcentaje);

  protected:
    void paintEvent(QPaintEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void wheelEvent(QWheelEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    /// El tabulador mueve la celda activa, no el foco.
    bool focusNextPrevChild(bool siguiente) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void inputMethodEvent(QInputMethodEvent* evento) override;

  private:
    /// Dónde empezó la edición pendiente: ahí se escribe, aunque la selección o la hoja cambien.
    struct CeldaEnEdicion {
        int hoja = 0;
        int fila = 0;
        int col = 0;
        std::string entrada; ///< lo que tenía la celda, tal cual, si el editor empezó por ello
    };

    const nucleo::Hoja* hojaActiva() const;
    void prepararRenderizador() const;
    /// El rectángulo de la celda activa que se ve, en píxeles de la vista.
    QRect rectActivaVisible() const;
    /// Donde acaban encabezados e inmovilizados y empieza lo que se desplaza.
    QPoint inicioDesplazable() const;
    void actualizarScrollbars();
    /// Barras, editor de celda y pintura.
    void ponerAlDia();
    /// Avisa a la ventana y a los lectores de pantalla de que la selección ha cambiado.
    void notificarSeleccion();
    void avisarLectores();

    // Edición
    void posicionarEditorCelda();
    void aplicarEstiloEditorCelda();
    void abrirEditor(const QString& texto);
    void cerrarEditor();
    void escribirEdicion(const QString& texto);
    QString textoCeldaActiva() const;
    bool moverConTecla(const QKeyEvent& evento);
    void mover(int dFila, int dCol, bool extender);
    void irAlInicio(bool hoja);

    // Ratón
    bool empezarRedimension(const QPoint& punto);
    bool seleccionarEncabezado(const QPoint& punto);
    void redimensionar(const QPoint& punto);
    /// Acaba el arrastre o la redimensión en curso.
    void soltarGesto();
    void actualizarCursor(const QPoint& punto);
    /// El menú se abre sobre lo seleccionado; fuera de ello, selecciona la celda del punto.
    void seleccionarParaMenu(const QPoint& punto);
    void ejecutarAccion(const QString& id);

    nucleo::Libro& libro_;
    editor::Editor& editor_;
    mutable renderizador::Renderizador renderizador_;
    renderizador::Tema tema_;
    std::int32_t zoomPorcentaje_ = 100;
    QLineEdit* editorCelda_ = nullptr;
    QString ultimoTSV_;    ///< lo último que esta vista puso en el portapapeles del sistema
    int hojaDelGesto_ = 0; ///< la activa al empezar a arrastrar o a redimensionar
    bool arrastrando_ = false;
    int columnaRedimensionada_ = -1;
    int filaRedimensionada_ = -1;
    int inicioArrastre_ = 0; ///< x o y de la pulsación que empezó a redimensionar
    int tamanoInicial_ = 0;  ///< tamaño sin zoom al empezar a redimensionar
    CeldaEnEdicion enEdicion_;
    int ruedaPendiente_ = 0; ///< giro de la rueda que aún no llega a un paso de zoom
    AvisosAccesibles avisos_{*this};
};

} // namespace interfaz
