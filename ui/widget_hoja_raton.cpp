#include "editing/editor.h"
#include "model/libro.h"
#include "ui/texto_plano.h"
#include "ui/widget_hoja.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace interfaz {

namespace {

constexpr int kPasoZoom = 10;

int saturado(double valor) {
    constexpr double kMaximo = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(valor, -kMaximo, kMaximo));
}

QPoint puntoEntero(const QPointF& punto) {
    return {saturado(std::round(punto.x())), saturado(std::round(punto.y()))};
}

/// Tamaño sin zoom tras arrastrar un borde de un píxel a otro.
int tamanoArrastrado(int inicial, int desde, int hasta, double zoom) {
    const double movido = std::trunc((double{1} * hasta - desde) / zoom);
    return saturado(inicial + movido);
}

} // namespace

bool WidgetHoja::empezarRedimension(const QPoint& punto) {
    const nucleo::Hoja* hoja = renderizador_.hoja;
    if (const int col = renderizador_.bordeColEnPunto(punto); col >= 0) {
        columnaRedimensionada_ = col;
        inicioArrastre_ = punto.x();
        tamanoInicial_ = hoja->anchoColumna(col);
        return true;
    }
    if (const int fila = renderizador_.bordeFilaEnPunto(punto); fila >= 0) {
        filaRedimensionada_ = fila;
        inicioArrastre_ = punto.y();
        tamanoInicial_ = hoja->altoFila(fila);
        return true;
    }
    return false;
}

bool WidgetHoja::seleccionarEncabezado(const QPoint& punto) {
    if (const int col = renderizador_.colEnEncabezado(punto); col >= 0) {
        editor_.seleccionarColumna(col);
    } else if (const int fila = renderizador_.filaEnEncabezado(punto); fila >= 0) {
        editor_.seleccionarFila(fila);
    } else {
        return false;
    }
    notificarSeleccion();
    viewport()->update();
    return true;
}

void WidgetHoja::soltarGesto() {
    arrastrando_ = false;
    columnaRedimensionada_ = -1;
    filaRedimensionada_ = -1;
}

void WidgetHoja::mousePressEvent(QMouseEvent* evento) {
    confirmarEdicion(0, 0);
    if (evento->button() != Qt::LeftButton) {
        QAbstractScrollArea::mousePressEvent(evento);
        return;
    }
    const QPoint punto = puntoEntero(evento->position());
    prepararRenderizador();
    hojaDelGesto_ = libro_.hojaActiva;
    int fila = 0;
    int col = 0;
    if (empezarRedimension(punto) || seleccionarEncabezado(punto) ||
        !renderizador_.celdaEnPunto(punto, viewport()->size(), fila, col)) {
        return;
    }
    if (evento->modifiers().testFlag(Qt::ShiftModifier)) {
        editor_.extender(fila, col);
    } else {
        editor_.seleccionar(fila, col);
    }
    arrastrando_ = true;
    notificarSeleccion();
    viewport()->update();
}

void WidgetHoja::redimensionar(const QPoint& punto) {
    if (columnaRedimensionada_ >= 0) {
        editor_.redimensionarColumna(
            columnaRedimensionada_,
            tamanoArrastrado(tamanoInicial_, inicioArrastre_, punto.x(), renderizador_.zoom));
    } else {
        editor_.redimensionarFila(
            filaRedimensionada_,
            tamanoArrastrado(tamanoInicial_, inicioArrastre_, punto.y(), renderizador_.zoom));
    }
    emit libroModificado();
    ponerAlDia();
}

void WidgetHoja::actualizarCursor(const QPoint& punto) {
    Qt::CursorShape forma = Qt::ArrowCursor;
    if (renderizador_.bordeColEnPunto(punto) >= 0) {
        forma = Qt::SplitHCursor;
    } else if (renderizador_.bordeFilaEnPunto(punto) >= 0) {
        forma = Qt::SplitVCursor;
    }
    if (viewport()->cursor().shape() != forma) {
        viewport()->setCursor(forma);
    }
}

void WidgetHoja::mouseMoveEvent(QMouseEvent* evento) {
    const QPoint punto = puntoEntero(evento->position());
    prepararRenderizador();
    if (hojaDelGesto_ != libro_.hojaActiva) {
        // Con el botón pulsado se puede deshacer hasta otra hoja: el gesto no es de ella.
        soltarGesto();
    }
    if (columnaRedimensionada_ >= 0 || filaRedimensionada_ >= 0) {
        redimensionar(punto);
        return;
    }
    if (!arrastrando_) {
        actualizarCursor(punto);
        return;
    }
    int fila = 0;
    int col = 0;
    if (renderizador_.celdaEnPunto(punto, viewport()->size(), fila, col)) {
        editor_.extender(fila, col);
        notificarSeleccion();
        viewport()->update();
    }
}

void WidgetHoja::mouseReleaseEvent(QMouseEvent* /*evento*/) {
    soltarGesto();
}

void WidgetHoja::mouseDoubleClickEvent(QMouseEvent* evento) {
    const QPoint punto = puntoEntero(evento->position());
    prepararRenderizador();
    int fila = 0;
    int col = 0;
    if (evento->button() != Qt::LeftButton ||
        !renderizador_.celdaEnPunto(punto, viewport()->size(), fila, col)) {
        // Dos pulsaciones seguidas en un encabezado son dos pulsaciones.
        mousePressEvent(evento);
        return;
    }
    confirmarEdicion(0, 0);
    editor_.seleccionar(fila, col);
    notificarSeleccion();
    comenzarEdicion(textoCeldaActiva(), false);
}

void WidgetHoja::wheelEvent(QWheelEvent* evento) {
    if (evento->modifiers().testFlag(Qt::ControlModifier)) {
        ruedaPendiente_ += evento->angleDelta().y();
        const int pasos = ruedaPendiente_ / QWheelEvent::DefaultDeltasPerStep;
        ruedaPendiente_ %= QWheelEvent::DefaultDeltasPerStep;
        const int nuevo = std::clamp(zoomPorcentaje_ + pasos * kPasoZoom, kZoomMinimo, kZoomMaximo);
        if (nuevo != zoomPorcentaje_) {
            establecerZoom(nuevo);
            emit zoomPedido(nuevo);
        }
        evento->accept();
        return;
    }
    if (evento->modifiers().testFlag(Qt::ShiftModifier)) {
        // Sin la tecla: las barras la entienden como avanzar por páginas.
        QWheelEvent horizontal(evento->position(), evento->globalPosition(), evento->pixelDelta(),
                               evento->angleDelta(), evento->buttons(), Qt::NoModifier,
                               evento->phase(), evento->inverted());
        QCoreApplication::sendEvent(horizontalScrollBar(), &horizontal);
        evento->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(evento);
}

void WidgetHoja::seleccionarParaMenu(const QPoint& punto) {
    prepararRenderizador();
    int fila = 0;
    int col = 0;
    if (!renderizador_.celdaEnPunto(punto, viewport()->size(), fila, col)) {
        return;
    }
    const renderizador::SeleccionVista elegido = seleccionVista();
    if (fila < elegido.fila1 || fila > elegido.fila2 || col < elegido.col1 || col > elegido.col2) {
        editor_.seleccionar(fila, col);
        notificarSeleccion();
        viewport()->update();
    }
}

void WidgetHoja::contextMenuEvent(QContextMenuEvent* evento) {
    confirmarEdicion(0, 0);
    soltarGesto();
    QPoint donde = evento->globalPos();
    if (evento->reason() == QContextMenuEvent::Keyboard) {
        asegurarVisible();
        donde = viewport()->mapToGlobal(rectActivaVisible().center());
    } else {
        seleccionarParaMenu(evento->pos());
    }
    // Mientras el menú está abierto puede cerrarse la ventana o cambiar el libro.
    const QPointer<WidgetHoja> vivo(this);
    const auto identidad = [this] { return hojaActiva() != nullptr ? hojaActiva()->identidad : 0; };
    const std::uint64_t alAbrir = identidad();
    const QPointer<QMenu> menu(new QMenu(this));
    for (const editor::AccionMenu& entrada : editor_.menuContextualCeldas()) {
        if (entrada.separadorAntes) {
            menu->addSeparator();
        }
        QAction* accion = menu->addAction(paraRotulo(QString::fromStdString(entrada.etiqueta)));
        accion->setEnabled(entrada.habilitada);
        if (!entrada.id.empty()) {
            accion->setData(QString::fromStdString(entrada.id));
        }
    }
    const QAction* elegida = menu->exec(donde);
    const QString id = elegida != nullptr ? elegida->data().toString() : QString();
    delete menu;
    if (vivo != nullptr && !id.isEmpty() && identidad() == alAbrir) {
        ejecutarAccion(id);
    }
}

void WidgetHoja::ejecutarAccion(const QString& id) {
    if (id == QLatin1String("copiar")) {
        copiar();
    } else if (id == QLatin1String("cortar")) {
        cortar();
    } else if (id == QLatin1String("pegar")) {
        pegar();
    } else {
        editor_.ejecutarAccionMenu(id.toStdString());
        notificarSeleccion();
        emit libroModificado();
        ponerAlDia();
    }
}

} // namespace interfaz
