#include "ui/widget_hoja.h"

#include "editing/editor.h"
#include "model/libro.h"

#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace interfaz {

namespace {

constexpr int kPasoDesplazamiento = 24;
/// Aire que queda entre la celda activa y el borde al que se ha acercado la vista.
constexpr int kAireCeldaActiva = 2;

/// Cuánto hay que desplazar un eje para que se vea el tramo [inicio, fin], que empieza a verse en
/// `limite`. Un tramo que no cabe enseña su principio: si no, la vista oscilaría entre sus
/// extremos.
int desplazamientoNecesario(int inicio, int fin, int limite, int vista) {
    if (inicio < limite) {
        return inicio - limite;
    }
    return fin > vista ? std::min(fin - vista + kAireCeldaActiva, inicio - limite) : 0;
}

void desplazar(QScrollBar* barra, int pixeles) {
    barra->setValue(static_cast<int>(std::clamp<std::int64_t>(
        std::int64_t{barra->value()} + pixeles, barra->minimum(), barra->maximum())));
}

/// Pone el recorrido de una barra. `finActiva`: dónde acaba la celda activa, contado como el
/// contenido. Con el teclado se llega más allá de él: entonces la celda activa tiene que poder
/// verse, y la vista no salta mientras siga por allí.
void ajustarBarra(QScrollBar* barra, int contenido, int visible, std::int64_t finActiva) {
    std::int64_t maximo = std::max<std::int64_t>(0, std::int64_t{contenido} - visible);
    if (finActiva > contenido) {
        maximo = std::max(
            {maximo, finActiva + kAireCeldaActiva - visible, std::int64_t{barra->value()}});
    }
    barra->setRange(
        0, static_cast<int>(std::min<std::int64_t>(maximo, std::numeric_limits<int>::max())));
    barra->setPageStep(std::max(1, visible));
}

} // namespace

WidgetHoja::WidgetHoja(nucleo::Libro& libro, editor::Editor& editor, QWidget* parent)
    : QAbstractScrollArea(parent), libro_(libro), editor_(editor),
      tema_(renderizador::temaOscuro()), editorCelda_(new QLineEdit(viewport())) {
    AvisosAccesibles::instalarFabrica();
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    // Sin esto, la primera letra con tilde pierde la tilde.
    setAttribute(Qt::WA_InputMethodEnabled);
    horizontalScrollBar()->setSingleStep(kPasoDesplazamiento);
    verticalScrollBar()->setSingleStep(kPasoDesplazamiento);
    horizontalScrollBar()->setAccessibleName(QStringLiteral("Desplazamiento horizontal"));
    verticalScrollBar()->setAccessibleName(QStringLiteral("Desplazamiento vertical"));

    editorCelda_->setObjectName(QStringLiteral("editorCelda"));
    editorCelda_->setAccessibleName(QStringLiteral("Contenido de la celda"));
    editorCelda_->hide();
    editorCelda_->setFrame(false);
    editorCelda_->setAcceptDrops(false);
    // El límite de serie cortaría los textos largos al volver a escribirlos.
    editorCelda_->setMaxLength(std::numeric_limits<int>::max());
    editorCelda_->installEventFilter(this);
    connect(editorCelda_, &QLineEdit::textEdited, this, &WidgetHoja::textoEdicionCambiado);
    actualizarScrollbars();
}

WidgetHoja::~WidgetHoja() = default;

const nucleo::Hoja* WidgetHoja::hojaActiva() const {
    const int indice = libro_.hojaActiva;
    return indice >= 0 && static_cast<std::size_t>(indice) < libro_.hojas.size()
               ? libro_.hojas[static_cast<std::size_t>(indice)].get()
               : nullptr;
}

void WidgetHoja::prepararRenderizador() const {
    renderizador_.hoja = hojaActiva();
    renderizador_.tema = &tema_;
    renderizador_.zoom = zoomPorcentaje_ / 100.0;
    renderizador_.desplazamientoX = horizontalScrollBar()->value();
    renderizador_.desplazamientoY = verticalScrollBar()->value();
}

const renderizador::Renderizador& WidgetHoja::renderizador() const {
    prepararRenderizador();
    return renderizador_;
}

renderizador::SeleccionVista WidgetHoja::seleccionVista() const {
    const editor::Seleccion& seleccion = editor_.seleccion();
    return {seleccion.filaMin(), seleccion.colMin(),   seleccion.filaMax(),
            seleccion.colMax(),  seleccion.activaFila, seleccion.activaCol};
}

void WidgetHoja::establecerTema(const renderizador::Tema& tema) {
    tema_ = tema;
    aplicarEstiloEditorCelda();
    viewport()->update();
}

void WidgetHoja::establecerZoom(int porcentaje) {
    const int anterior = zoomPorcentaje_;
    zoomPorcentaje_ = std::clamp(porcentaje, kZoomMinimo, kZoomMaximo);
    // La misma celda sigue arriba a la izquierda.
    const auto escalado = [&](const QScrollBar* barra) {
        return static_cast<int>(std::int64_t{barra->value()} * zoomPorcentaje_ / anterior);
    };
    const int x = escalado(horizontalScrollBar());
    const int y = escalado(verticalScrollBar());
    actualizarScrollbars();
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
    ponerAlDia();
}

void WidgetHoja::refrescar() {
    ponerAlDia();
}

void WidgetHoja::ponerAlDia() {
    actualizarScrollbars();
    posicionarEditorCelda();
    viewport()->update();
    avisarLectores();
}

QPoint WidgetHoja::inicioDesplazable() const {
    // Un archivo puede inmovilizar más píxeles de los que caben en un `int` con su franja.
    constexpr int kPanelMaximo = 1'000'000'000;
    return {renderizador::kAnchoEncabezado + std::min(renderizador_.anchoPanelFijo(), kPanelMaximo),
            renderizador::kAltoEncabezado + std::min(renderizador_.altoPanelFijo(), kPanelMaximo)};
}

void WidgetHoja::actualizarScrollbars() {
    prepararRenderizador();
    const QSize contenido = renderizador_.tamanoContenido();
    const QPoint inicio = inicioDesplazable();
    std::int64_t finX = 0;
    std::int64_t finY = 0;
    if (const nucleo::Hoja* hoja = renderizador_.hoja) {
        const editor::Seleccion& seleccion = editor_.seleccion();
        const QRect activa = renderizador_.rectCelda(seleccion.activaFila, seleccion.activaCol);
        if (seleccion.activaCol >= hoja->columnasInmovilizadas) {
            finX = std::int64_t{activa.right()} + 1 - inicio.x() + renderizador_.desplazamientoX;
        }
        if (seleccion.activaFila >= hoja->filasInmovilizadas) {
            finY = std::int64_t{activa.bottom()} + 1 - inicio.y() + renderizador_.desplazamientoY;
        }
    }
    ajustarBarra(horizontalScrollBar(), contenido.width(), viewport()->width() - inicio.x(), finX);
    ajustarBarra(verticalScrollBar(), contenido.height(), viewport()->height() - inicio.y(), finY);
}

void WidgetHoja::asegurarVisible() {
    actualizarScrollbars();
    prepararRenderizador();
    if (const nucleo::Hoja* hoja = renderizador_.hoja) {
        const editor::Seleccion& seleccion = editor_.seleccion();
        const int fila = seleccion.activaFila;
        const int col = seleccion.activaCol;
        const QRect rect = renderizador_.rectCeldaConFusion(fila, col);
        const QPoint inicio = inicioDesplazable();
        // Una fusión que empieza en lo inmovilizado siempre enseña su principio.
        const nucleo::RangoFusion* fusion = hoja->fusionEn(fila, col);
        const int primeraFila = fusion != nullptr ? fusion->fila1 : fila;
        const int primeraCol = fusion != nullptr ? fusion->col1 : col;
        if (primeraCol >= hoja->columnasInmovilizadas) {
            desplazar(horizontalScrollBar(),
                      desplazamientoNecesario(rect.left(), rect.right(), inicio.x(),
                                              viewport()->width()));
        }
        if (primeraFila >= hoja->filasInmovilizadas) {
            desplazar(verticalScrollBar(),
                      desplazamientoNecesario(rect.top(), rect.bottom(), inicio.y(),
                                              viewport()->height()));
        }
    }
    ponerAlDia();
}

void WidgetHoja::olvidarInteraccion() {
    soltarGesto();
    cancelarEdicion();
    ponerAlDia();
}

void WidgetHoja::notificarSeleccion() {
    emit seleccionCambiada();
    avisarLectores();
}

void WidgetHoja::avisarLectores() {
    if (QAccessible::isActive()) {
        avisos_.ponerAlDia();
    }
}

void WidgetHoja::resizeEvent(QResizeEvent* evento) {
    QAbstractScrollArea::resizeEvent(evento);
    actualizarScrollbars();
    posicionarEditorCelda();
}

void WidgetHoja::scrollContentsBy(int /*dx*/, int /*dy*/) {
    posicionarEditorCelda();
    viewport()->update();
}

void WidgetHoja::paintEvent(QPaintEvent* /*evento*/) {
    prepararRenderizador();
    QPainter pintor(viewport());
    renderizador_.dibujar(pintor, viewport()->size(), seleccionVista());
}

} // namespace interfaz
