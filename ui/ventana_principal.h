#pragma once

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/libro.h"

#include <QMainWindow>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QSlider;
class QTabBar;
class QToolButton;

namespace interfaz {

class WidgetHoja;

/// La ventana del programa. Es dueña del libro, del motor, del editor y de la vista de la hoja, y
/// mantiene al día todo lo que los rodea.
///
/// Toda orden que pueda cambiar o sustituir el libro escribe antes el texto que se esté tecleando
/// en una celda.
class VentanaPrincipal : public QMainWindow {
    Q_OBJECT
  public:
    /// Puede preguntar si se recupera el trabajo de una sesión anterior.
    explicit VentanaPrincipal(QWidget* parent = nullptr);
    ~VentanaPrincipal() override;

    nucleo::Libro& libro() { return libro_; }
    motor_formulas::Motor& motor() { return motor_; }
    editor::Editor& editor() { return editor_; }
    WidgetHoja* widgetHoja() const { return widgetHoja_; }

    bool temaOscuroActivo() const { return oscuro_; }
    int zoomPorcentaje() const;
    /// Ruta del archivo de recuperación del documento actual.
    const std::string& rutaAutosave() const { return rutaAutosave_; }
    /// La carpeta de los libros, exista o no.
    static QString rutaBiblioteca();
    /// La misma, creada si falta: donde empiezan los cuadros de abrir y guardar.
    static QString carpetaBiblioteca();

  public slots:
    // Documento
    void nuevoLibro();
    void abrirLibro();
    void abrirDesdeDialogo();
    /// Carga el libro y ofrece recuperar su trabajo sin guardar. Falso, tras avisar, si no se pudo:
    /// el libro queda como estaba, o vacío si el archivo no era válido.
    bool abrirArchivo(const QString& ruta);
    /// Falso si falló, tras avisar, o si no se eligió nombre.
    bool guardarLibro();
    bool guardarLibroComo();
    /// Verdadero si se puede seguir: no había cambios, se guardaron o se descartaron.
    bool confirmarDescarte();
    void actualizarTitulo();

    // Recuperación
    void ofrecerRecuperacion();
    void actualizarRutaAutosave();
    /// Escribe el archivo de recuperación si hay cambios sin guardar.
    void guardarRecuperacion();
    /// La sesión o el programa terminan: todo lo tecleado queda en el archivo de recuperación.
    void ponerASalvo();

    // Hojas
    void cambiarHoja(int indice);
    /// Añade una hoja al final y la deja activa.
    void agregarHoja();
    void renombrarHoja(int indice);
    void eliminarHoja(int indice);
    void actualizarPestanas();

    // Vista
    void actualizarBarraFormulas();
    void actualizarResumen();
    void actualizarMemoria();
    void actualizarEstadoBotones();
    void refrescarTodo();
    void aplicarTema();
    void establecerTema(bool oscuro);
    /// Porcentaje; se acota a 50..200.
    void establecerZoom(int porcentaje);
    /// Selecciona la celda escrita en el cuadro de nombre, si lo es.
    void saltarAReferencia();
    /// Escribe en la celda activa, y en la hoja en que se empezó, el texto que se está tecleando.
    void confirmarPendiente();

    // Menús
    void inmovilizarFilas();
    void inmovilizarColumnas();
    void liberarPaneles();
    void noImplementado(const QString& funcion, const QString& fase);
    void mostrarOpciones();
    void mostrarAcercaDe();
    void reportarProblema();

  protected:
    void closeEvent(QCloseEvent* evento) override;
    void dragEnterEvent(QDragEnterEvent* evento) override;
    void dropEvent(QDropEvent* evento) override;
    bool eventFilter(QObject* receptor, QEvent* evento) override;

  private:
    using Orden = std::function<void()>;

    // Construcción
    void configurarUI();
    QWidget* crearBarraFormulas();
    QWidget* crearBarraPestanas();
    void configurarBarraEstado();
    void conectar();
    void configurarFoco();
    void configurarBarra();
    QWidget* mkIconBtn(const QString& glifo, const QString& titulo, bool marcable, Orden accion,
                       const QString& estilo = QString(), QToolButton** guardarEn = nullptr,
                       nucleo::AlineacionH alineacion = nucleo::AlineacionH::General);
    QFrame* crearGrupo(const QString& nombre, const QString& titulo,
                       const std::vector<QWidget*>& botones);
    void configurarMenus();
    QAction* agregarOrden(QMenu* menu, const QString& texto, Orden orden,
                          const QKeySequence& atajo = QKeySequence());

    /// La misma orden, seguida de un refresco de toda la ventana.
    Orden yRefrescar(Orden orden);
    /// Texto de la celda activa; el de toda la fusión si está en una.
    QString contenidoActivo() const;
    void aceptarFormula(int dFila, int dCol);
    void pasarFoco(bool adelante);
    void menuDePestana(const QPoint& punto);
    /// Verdadero si la hoja de ese índice sigue siendo la misma: mientras un cuadro está abierto el
    /// libro puede cambiar.
    bool esLaHoja(int indice, std::uint64_t identidad) const;
    const nucleo::Hoja* hojaActiva() const;
    nucleo::Hoja* hojaActiva();

    /// El libro es otro documento: nada del anterior sobrevive en la ventana.
    void olvidarDocumentoAnterior();
    /// Escribe el archivo de recuperación, tras apartar uno ajeno que haya en su sitio.
    void escribirRecuperacion();
    void descartarRecuperacion();
    void abrirSoltado(const QString& ruta);

    nucleo::Libro libro_;
    motor_formulas::Motor motor_{libro_};
    editor::Editor editor_{libro_, motor_};
    WidgetHoja* widgetHoja_ = nullptr;

    QLineEdit* cuadroNombre_ = nullptr;
    QLineEdit* entradaFormula_ = nullptr;
    QTabBar* pestanas_ = nullptr;
    QToolButton* botonHojaNueva_ = nullptr;
    QLabel* resumen_ = nullptr;
    QLabel* estado_ = nullptr;
    QSlider* deslizadorZoom_ = nullptr;
    QLabel* etiquetaZoom_ = nullptr;
    QToolButton* botonTema_ = nullptr;

    QToolButton* botonDeshacer_ = nullptr;
    QToolButton* botonRehacer_ = nullptr;
    QToolButton* botonPegar_ = nullptr;
    QToolButton* botonNegrita_ = nullptr;
    QToolButton* botonCursiva_ = nullptr;
    QToolButton* botonSubrayado_ = nullptr;

    QAction* accionOrdenAscendente_ = nullptr;
    QAction* accionOrdenDescendente_ = nullptr;
    QAction* accionModoOscuro_ = nullptr;
    std::vector<QAction*> accionesZoom_; ///< cada una con su porcentaje como dato

    bool oscuro_ = false;
    QTimer temporizadorAutosave_{this};
    std::string rutaAutosave_;
    /// El archivo de `rutaAutosave_` es de este documento: lo escribió la ventana o se recuperó.
    bool recuperacionPropia_ = false;
    /// Los cambios ya se descartaron y se está eligiendo qué libro los sustituye.
    bool cambiosDescartados_ = false;
};

} // namespace interfaz
