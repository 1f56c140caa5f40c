// La barra de menús y las órdenes que solo están en ella.

#include "ui/cuadros.h"
#include "ui/dialogo_opciones.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QActionGroup>
#include <QApplication>
#include <QDesktopServices>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include <utility>

namespace interfaz {

namespace {

constexpr std::array<int, 6> kNivelesZoom = {50, 75, 100, 125, 150, 200};

} // namespace

QAction* VentanaPrincipal::agregarOrden(QMenu* menu, const QString& texto, Orden orden,
                                        const QKeySequence& atajo) {
    QAction* accion = menu->addAction(texto);
    accion->setShortcut(atajo);
    connect(accion, &QAction::triggered, this, [this, orden = std::move(orden)] {
        confirmarPendiente();
        orden();
    });
    return accion;
}

void VentanaPrincipal::configurarMenus() {
    QMenu* archivo = menuBar()->addMenu(QStringLiteral("&Archivo"));
    agregarOrden(
        archivo, QStringLiteral("Libro nuevo"), [this] { nuevoLibro(); }, QKeySequence::New);
    agregarOrden(
        archivo, QStringLiteral("Abrir…"), [this] { abrirLibro(); }, QKeySequence::Open);
    archivo->addSeparator();
    agregarOrden(
        archivo, QStringLiteral("Guardar"), [this] { guardarLibro(); }, QKeySequence::Save);
    agregarOrden(archivo, QStringLiteral("Guardar como…"), [this] { guardarLibroComo(); });
    agregarOrden(archivo, QStringLiteral("Importar planilla Excel (.xlsx)…"), [this] {
        noImplementado(QStringLiteral("La importación de archivos .xlsx"),
                       QStringLiteral("Fase 3"));
    });
    agregarOrden(archivo, QStringLiteral("Importar planilla LibreOffice (.ods)…"), [this] {
        noImplementado(QStringLiteral("La importación de archivos .ods"), QStringLiteral("Fase 3"));
    });
    agregarOrden(
        archivo, QStringLiteral("Salir"), [this] { close(); },
        QKeySequence(QStringLiteral("Alt+F4")));

    QMenu* editar = menuBar()->addMenu(QStringLiteral("&Editar"));
    agregarOrden(editar, QStringLiteral("Deshacer"), yRefrescar([this] { editor_.deshacer(); }),
                 QKeySequence::Undo);
    agregarOrden(editar, QStringLiteral("Rehacer"), yRefrescar([this] { editor_.rehacer(); }),
                 QKeySequence(Qt::CTRL | Qt::Key_Y));
    agregarOrden(editar, QStringLiteral("Cortar"), yRefrescar([this] { widgetHoja_->cortar(); }),
                 QKeySequence::Cut);
    agregarOrden(
        editar, QStringLiteral("Copiar"), [this] { widgetHoja_->copiar(); }, QKeySequence::Copy);
    agregarOrden(editar, QStringLiteral("Pegar"), yRefrescar([this] { widgetHoja_->pegar(); }),
                 QKeySequence::Paste);
    agregarOrden(editar, QStringLiteral("Borrar contenido"),
                 yRefrescar([this] { editor_.borrarSeleccion(); }));
    agregarOrden(editar, QStringLiteral("Seleccionar todo"),
                 yRefrescar([this] { editor_.seleccionarTodo(); }), QKeySequence::SelectAll);
    agregarOrden(editar, QStringLiteral("Fusionar celdas"),
                 yRefrescar([this] { editor_.fusionarSeleccion(); }));
    agregarOrden(editar, QStringLiteral("Separar celdas"),
                 yRefrescar([this] { editor_.separarFusion(); }));

    QMenu* ver = menuBar()->addMenu(QStringLiteral("&Ver"));
    agregarOrden(ver, QStringLiteral("Inmovilizar filas hasta la actual"),
                 [this] { inmovilizarFilas(); });
    agregarOrden(ver, QStringLiteral("Inmovilizar columnas hasta la actual"),
                 [this] { inmovilizarColumnas(); });
    agregarOrden(ver, QStringLiteral("Liberar paneles"), [this] { liberarPaneles(); });
    QMenu* zoom = ver->addMenu(QStringLiteral("Zoom"));
    for (const int nivel : kNivelesZoom) {
        QAction* accion = agregarOrden(zoom, QStringLiteral("%1%").arg(nivel),
                                       [this, nivel] { establecerZoom(nivel); });
        accion->setData(nivel);
        accion->setCheckable(true);
        accion->setChecked(nivel == 100);
        accionesZoom_.push_back(accion);
    }

    QMenu* insertar = menuBar()->addMenu(QStringLiteral("&Insertar"));
    agregarOrden(insertar, QStringLiteral("Hoja nueva"), [this] { agregarHoja(); });
    agregarOrden(insertar, QStringLiteral("Fila arriba"),
                 yRefrescar([this] { editor_.insertarFilas(editor_.seleccion().activaFila, 1); }));
    agregarOrden(insertar, QStringLiteral("Fila abajo"), yRefrescar([this] {
                     editor_.insertarFilas(editor_.seleccion().activaFila + 1, 1);
                 }));
    agregarOrden(insertar, QStringLiteral("Columna a la izquierda"), yRefrescar([this] {
                     editor_.insertarColumnas(editor_.seleccion().activaCol, 1);
                 }));
    agregarOrden(insertar, QStringLiteral("Columna a la derecha"), yRefrescar([this] {
                     editor_.insertarColumnas(editor_.seleccion().activaCol + 1, 1);
                 }));
    QMenu* grafico = insertar->addMenu(QStringLiteral("Gráfico"));
    for (const char* clase : {"Barras", "Líneas", "Torta"}) {
        agregarOrden(grafico, QString::fromUtf8(clase), [this] {
            noImplementado(QStringLiteral("La inserción de gráficos"), QStringLiteral("Fase 2"));
        });
    }

    QMenu* datos = menuBar()->addMenu(QStringLiteral("&Datos"));
    accionOrdenAscendente_ = agregarOrden(datos, QStringLiteral("Ordenar ascendente"),
                                          yRefrescar([this] { editor_.ordenarSeleccion(true); }));
    accionOrdenDescendente_ = agregarOrden(datos, QStringLiteral("Ordenar descendente"),
                                           yRefrescar([this] { editor_.ordenarSeleccion(false); }));
    agregarOrden(datos, QStringLiteral("Filtrar…"), [this] {
        noImplementado(QStringLiteral("El filtrado de datos"),
                       QStringLiteral("una próxima versión"));
    });

    QMenu* herramientas = menuBar()->addMenu(QStringLiteral("&Herramientas"));
    agregarOrden(herramientas, QStringLiteral("Opciones"), [this] { mostrarOpciones(); });
    accionModoOscuro_ = herramientas->addAction(QStringLiteral("Modo oscuro"));
    accionModoOscuro_->setCheckable(true);
    connect(accionModoOscuro_, &QAction::toggled, this, [this](bool oscuro) {
        confirmarPendiente();
        establecerTema(oscuro);
    });

    QMenu* ayuda = menuBar()->addMenu(QStringLiteral("A&yuda"));
    agregarOrden(ayuda, QStringLiteral("Acerca de Marnel"), [this] { mostrarAcercaDe(); });
    agregarOrden(ayuda, QStringLiteral("Reportar un problema"), [this] { reportarProblema(); });
}

void VentanaPrincipal::inmovilizarFilas() {
    if (nucleo::Hoja* hoja = hojaActiva()) {
        hoja->filasInmovilizadas = editor_.seleccion().activaFila + 1;
        libro_.modificado = true;
        refrescarTodo();
    }
}

void VentanaPrincipal::inmovilizarColumnas() {
    if (nucleo::Hoja* hoja = hojaActiva()) {
        hoja->columnasInmovilizadas = editor_.seleccion().activaCol + 1;
        libro_.modificado = true;
        refrescarTodo();
    }
}

void VentanaPrincipal::liberarPaneles() {
    if (nucleo::Hoja* hoja = hojaActiva()) {
        hoja->filasInmovilizadas = 0;
        hoja->columnasInmovilizadas = 0;
        libro_.modificado = true;
        refrescarTodo();
    }
}

void VentanaPrincipal::noImplementado(const QString& funcion, const QString& fase) {
    informar(
        this,
        QStringLiteral("%1 llegará en una próxima versión de Marnel (%2).").arg(funcion, fase));
}

void VentanaPrincipal::mostrarOpciones() {
    DialogoOpciones dialogo({rutaBiblioteca(), QString::fromStdString(rutaAutosave_),
                             temporizadorAutosave_.interval() / 1000, zoomPorcentaje(), oscuro_},
                            this);
    connect(&dialogo, &DialogoOpciones::zoomElegido, this, &VentanaPrincipal::establecerZoom);
    connect(&dialogo, &DialogoOpciones::temaElegido, this, &VentanaPrincipal::establecerTema);
    dialogo.exec();
}

void VentanaPrincipal::mostrarAcercaDe() {
    QMessageBox cuadro(this);
    cuadro.setWindowTitle(QStringLiteral("Acerca de Marnel"));
    cuadro.setIconPixmap(QIcon(QStringLiteral(":/icono.png")).pixmap(64));
    cuadro.setTextFormat(Qt::RichText);
    cuadro.setText(QStringLiteral("<h2>Marnel</h2>"
                                  "<p>Versión 1.0</p>"
                                  "<p>La hoja de cálculo de la suite Quenda.</p>"
                                  "<p>© 2026 Velora</p>"));
    cuadro.addButton(QStringLiteral("Cerrar"), QMessageBox::AcceptRole);
    cuadro.exec();
}

void VentanaPrincipal::reportarProblema() {
    QDesktopServices::openUrl(QUrl(
        QStringLiteral("mailto:soporte@velora.example?subject=Problema%20con%20Marnel%201.0")));
}

} // namespace interfaz
