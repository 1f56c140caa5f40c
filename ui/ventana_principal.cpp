// Construcción de la ventana: qué hay en ella, cómo se conecta y por dónde pasa el foco.

#include "ui/ventana_principal.h"

#include "ui/manual.h"
#include "ui/pestanas_hojas.h"
#include "ui/preparar_aplicacion.h"
#include "ui/widget_hoja.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSessionManager>
#include <QShortcut>
#include <QSlider>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <limits>

namespace interfaz {

namespace {

constexpr int kIntervaloAutosave = 30000; ///< milisegundos

} // namespace

VentanaPrincipal::VentanaPrincipal(QWidget* parent) : QMainWindow(parent) {
    registrarRecursos();
    resize(1280, 720);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    configurarMenus();
    configurarUI();
    aplicarTema();
    actualizarRutaAutosave();
    refrescarTodo();
    widgetHoja_->setFocus();

    temporizadorAutosave_.setInterval(kIntervaloAutosave);
    connect(&temporizadorAutosave_, &QTimer::timeout, this, &VentanaPrincipal::guardarRecuperacion);
    temporizadorAutosave_.start();
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this,
            [this](QSessionManager&) { ponerASalvo(); });
    ofrecerRecuperacion();
}

VentanaPrincipal::~VentanaPrincipal() {
    // La vista mira al libro y al editor, que mueren antes que los hijos de la ventana.
    delete widgetHoja_;
}

void VentanaPrincipal::configurarUI() {
    auto* centro = new QWidget(this);
    auto* columna = new QVBoxLayout(centro);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(0);
    widgetHoja_ = new WidgetHoja(libro_, editor_, centro);
    columna->addWidget(crearBarraFormulas());
    columna->addWidget(widgetHoja_, 1);
    columna->addWidget(crearBarraPestanas());
    setCentralWidget(centro);
    configurarBarra();
    configurarBarraEstado();
    conectar();
    configurarFoco();
}

QWidget* VentanaPrincipal::crearBarraFormulas() {
    auto* barra = new QWidget;
    barra->setObjectName(QStringLiteral("barraFormulas"));
    barra->setAttribute(Qt::WA_StyledBackground);
    auto* fila = new QHBoxLayout(barra);
    fila->setContentsMargins(8, 5, 8, 5);
    fila->setSpacing(6);

    cuadroNombre_ = new QLineEdit;
    cuadroNombre_->setObjectName(QStringLiteral("cuadroNombre"));
    cuadroNombre_->setFixedWidth(80);
    cuadroNombre_->setAlignment(Qt::AlignCenter);
    cuadroNombre_->setAccessibleName(QStringLiteral("Cuadro de nombre"));
    cuadroNombre_->setToolTip(QStringLiteral("Celda activa; escribí otra para ir a ella"));
    cuadroNombre_->setAcceptDrops(false);
    fila->addWidget(cuadroNombre_);

    auto* fx = new QLabel(QStringLiteral("fx"));
    fx->setObjectName(QStringLiteral("etiquetaFx"));
    fila->addWidget(fx);

    entradaFormula_ = new QLineEdit;
    entradaFormula_->setObjectName(QStringLiteral("entradaFormula"));
    entradaFormula_->setAccessibleName(QStringLiteral("Contenido de la celda activa"));
    entradaFormula_->setAcceptDrops(false);
    // Un texto recortado al mostrarse se perdería al aceptarlo.
    entradaFormula_->setMaxLength(std::numeric_limits<int>::max());
    fx->setBuddy(entradaFormula_);
    fila->addWidget(entradaFormula_, 1);
    return barra;
}

QWidget* VentanaPrincipal::crearBarraPestanas() {
    auto* barra = new QWidget;
    barra->setObjectName(QStringLiteral("barraPestanas"));
    barra->setAttribute(Qt::WA_StyledBackground);
    auto* fila = new QHBoxLayout(barra);
    fila->setContentsMargins(8, 0, 8, 0);
    fila->setSpacing(4);

    pestanas_ = new PestanasHojas;
    fila->addWidget(pestanas_);

    botonHojaNueva_ = new QToolButton;
    botonHojaNueva_->setObjectName(QStringLiteral("btnNuevaHoja"));
    botonHojaNueva_->setText(QStringLiteral("+"));
    botonHojaNueva_->setToolTip(QStringLiteral("Hoja nueva"));
    botonHojaNueva_->setAccessibleName(QStringLiteral("Hoja nueva"));
    fila->addWidget(botonHojaNueva_);
    fila->addStretch(1);
    return barra;
}

void VentanaPrincipal::configurarBarraEstado() {
    QStatusBar* barra = statusBar();
    barra->setSizeGripEnabled(false);

    estado_ = new QLabel;
    estado_->setObjectName(QStringLiteral("etiquetaEstado"));
    barra->addWidget(estado_);
    resumen_ = new QLabel;
    resumen_->setObjectName(QStringLiteral("resumen"));
    resumen_->setTextFormat(Qt::PlainText);
    resumen_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    barra->addWidget(resumen_, 1);

    deslizadorZoom_ = new QSlider(Qt::Horizontal);
    deslizadorZoom_->setObjectName(QStringLiteral("deslizadorZoom"));
    deslizadorZoom_->setRange(WidgetHoja::kZoomMinimo, WidgetHoja::kZoomMaximo);
    deslizadorZoom_->setValue(100);
    deslizadorZoom_->setSingleStep(5);
    deslizadorZoom_->setPageStep(25);
    deslizadorZoom_->setFixedWidth(110);
    deslizadorZoom_->setFocusPolicy(Qt::TabFocus);
    deslizadorZoom_->setAccessibleName(QStringLiteral("Zoom"));
    deslizadorZoom_->setToolTip(QStringLiteral("Zoom"));
    barra->addPermanentWidget(deslizadorZoom_);
    etiquetaZoom_ = new QLabel(QStringLiteral("100%"));
    etiquetaZoom_->setObjectName(QStringLiteral("etiquetaZoom"));
    etiquetaZoom_->setAlignment(Qt::AlignCenter);
    etiquetaZoom_->setBuddy(deslizadorZoom_);
    barra->addPermanentWidget(etiquetaZoom_);
    botonTema_ = new QToolButton;
    botonTema_->setObjectName(QStringLiteral("toggle_modo"));
    barra->addPermanentWidget(botonTema_);
}

void VentanaPrincipal::conectar() {
    connect(widgetHoja_, &WidgetHoja::seleccionCambiada, this, [this] {
        actualizarBarraFormulas();
        actualizarResumen();
        actualizarEstadoBotones();
    });
    connect(widgetHoja_, &WidgetHoja::libroModificado, this, [this] {
        cambiosDescartados_ = false;
        actualizarTitulo();
        actualizarBarraFormulas();
        actualizarResumen();
        actualizarPestanas();
        actualizarEstadoBotones();
    });
    connect(widgetHoja_, &WidgetHoja::textoEdicionCambiado, this, [this](const QString& texto) {
        if (entradaFormula_->text() != texto) {
            const QSignalBlocker bloqueo(entradaFormula_);
            entradaFormula_->setText(texto);
        }
    });
    connect(widgetHoja_, &WidgetHoja::edicionTerminada, this, &VentanaPrincipal::refrescarTodo);
    connect(widgetHoja_, &WidgetHoja::zoomPedido, this, &VentanaPrincipal::establecerZoom);

    connect(entradaFormula_, &QLineEdit::textEdited, widgetHoja_,
            &WidgetHoja::sincronizarTextoEdicion);
    connect(entradaFormula_, &QLineEdit::returnPressed, this, [this] { aceptarFormula(1, 0); });
    entradaFormula_->installEventFilter(this);
    connect(cuadroNombre_, &QLineEdit::returnPressed, this, &VentanaPrincipal::saltarAReferencia);
    cuadroNombre_->installEventFilter(this);

    connect(deslizadorZoom_, &QSlider::valueChanged, this, &VentanaPrincipal::establecerZoom);
    connect(botonTema_, &QToolButton::clicked, this, [this] { establecerTema(!oscuro_); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            &VentanaPrincipal::actualizarMemoria);

    connect(pestanas_, &QTabBar::currentChanged, this, &VentanaPrincipal::cambiarHoja);
    connect(pestanas_, &QTabBar::tabBarClicked, this, &VentanaPrincipal::confirmarPendiente);
    connect(pestanas_, &QTabBar::tabBarDoubleClicked, this, [this](int indice) {
        if (indice >= 0) {
            renombrarHoja(indice);
        }
    });
    connect(pestanas_, &QWidget::customContextMenuRequested, this,
            &VentanaPrincipal::menuDePestana);
    pestanas_->installEventFilter(this);
    connect(botonHojaNueva_, &QToolButton::clicked, this, &VentanaPrincipal::agregarHoja);
}

void VentanaPrincipal::configurarFoco() {
    setTabOrder(cuadroNombre_, entradaFormula_);
    setTabOrder(entradaFormula_, widgetHoja_);
    setTabOrder(widgetHoja_, pestanas_);
    setTabOrder(pestanas_, botonHojaNueva_);
    setTabOrder(botonHojaNueva_, deslizadorZoom_);
    setTabOrder(deslizadorZoom_, botonTema_);
    // En la cuadrícula el tabulador mueve la celda: de ella se sale con F6.
    connect(new QShortcut(QKeySequence(Qt::Key_F6), this), &QShortcut::activated, this,
            [this] { pasarFoco(true); });
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6), this), &QShortcut::activated, this,
            [this] { pasarFoco(false); });
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            [this] { abrirManual(this, rutaDelManual(QCoreApplication::applicationDirPath())); });
}

void VentanaPrincipal::pasarFoco(bool adelante) {
    confirmarPendiente();
    const std::array<QWidget*, 5> zonas = {widgetHoja_, pestanas_, deslizadorZoom_, cuadroNombre_,
                                           entradaFormula_};
    QWidget* foco = QApplication::focusWidget();
    // El "+" y el botón del tema son de la misma zona que su vecino.
    if (foco == botonHojaNueva_) {
        foco = pestanas_;
    } else if (foco == botonTema_) {
        foco = deslizadorZoom_;
    }
    const auto* actual = std::find(zonas.begin(), zonas.end(), foco);
    const std::size_t indice =
        actual == zonas.end() ? 0 : static_cast<std::size_t>(std::distance(zonas.begin(), actual));
    const std::size_t paso = adelante ? 1 : zonas.size() - 1;
    zonas[(indice + paso) % zonas.size()]->setFocus(adelante ? Qt::TabFocusReason
                                                             : Qt::BacktabFocusReason);
}

bool VentanaPrincipal::eventFilter(QObject* receptor, QEvent* evento) {
    if (receptor == pestanas_ && evento->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(evento)->reason() == QContextMenuEvent::Keyboard) {
        menuDePestana(pestanas_->tabRect(pestanas_->currentIndex()).center());
        return true;
    }
    if (evento->type() == QEvent::ToolTip &&
        receptor->objectName() == QLatin1String("btn_toolbar")) {
        // El globo tomaría del botón su letra, grande o en cursiva; de su ranura no toma ninguna.
        const auto* boton = static_cast<QToolButton*>(receptor);
        QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), boton->toolTip(),
                           boton->parentWidget());
        return true;
    }
    if (evento->type() != QEvent::KeyPress) {
        return QMainWindow::eventFilter(receptor, evento);
    }
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (receptor == pestanas_ && tecla == Qt::Key_F2) {
        renombrarHoja(pestanas_->currentIndex());
        return true;
    }
    if ((receptor == entradaFormula_ || receptor == cuadroNombre_) && tecla == Qt::Key_Escape) {
        widgetHoja_->cancelarEdicion();
        actualizarBarraFormulas();
        widgetHoja_->setFocus();
        return true;
    }
    // Con un texto a medias el tabulador lo acepta, como dentro de la celda.
    if (receptor == entradaFormula_ && widgetHoja_->editando() &&
        (tecla == Qt::Key_Tab || tecla == Qt::Key_Backtab)) {
        aceptarFormula(0, tecla == Qt::Key_Tab ? 1 : -1);
        return true;
    }
    return QMainWindow::eventFilter(receptor, evento);
}

} // namespace interfaz
