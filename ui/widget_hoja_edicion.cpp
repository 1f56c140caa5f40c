#include "editing/editor.h"
#include "model/libro.h"
#include "ui/hoja_prestada.h"
#include "ui/widget_hoja.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace interfaz {

namespace {

constexpr int kFilasPorPagina = 20;
constexpr double kPuntosLetra = 10.0;

/// Verdadero si el texto de una tecla sirve para empezar a escribir en la celda.
bool empiezaPorImprimible(const QString& texto) {
    const auto puntos = texto.toUcs4();
    return !puntos.isEmpty() && QChar::isPrint(puntos.front());
}

} // namespace

bool WidgetHoja::editando() const {
    return editorCelda_->isVisibleTo(viewport());
}

QString WidgetHoja::textoCeldaActiva() const {
    const nucleo::Hoja* hoja = hojaActiva();
    const editor::Seleccion& seleccion = editor_.seleccion();
    const nucleo::Celda* celda =
        hoja != nullptr ? hoja->celda(seleccion.activaFila, seleccion.activaCol) : nullptr;
    return celda != nullptr ? QString::fromStdString(celda->entrada) : QString();
}

void WidgetHoja::aplicarEstiloEditorCelda() {
    editorCelda_->setStyleSheet(
        QStringLiteral("QLineEdit { background: %1; color: %2; border: 2px solid %3; "
                       "selection-background-color: %3; }")
            .arg(tema_.fondo.name(), tema_.texto.name(), tema_.bordeSeleccion.name()));
}

void WidgetHoja::posicionarEditorCelda() {
    if (!editando()) {
        return;
    }
    prepararRenderizador();
    const QRect rect = renderizador_.rectCeldaConFusion(enEdicion_.fila, enEdicion_.col);
    QFont letra(QStringLiteral("Segoe UI"));
    letra.setPointSizeF(kPuntosLetra * zoomPorcentaje_ / 100.0);
    editorCelda_->setFont(letra);
    editorCelda_->setGeometry(rect);
    // Al desplazarse pasa, como su celda, por debajo de los encabezados y de lo inmovilizado.
    const nucleo::Hoja* hoja = renderizador_.hoja;
    const bool fijaX = hoja != nullptr && enEdicion_.col < hoja->columnasInmovilizadas;
    const bool fijaY = hoja != nullptr && enEdicion_.fila < hoja->filasInmovilizadas;
    const QPoint inicio = inicioDesplazable();
    const QPoint esquina(fijaX ? renderizador::kAnchoEncabezado : inicio.x(),
                         fijaY ? renderizador::kAltoEncabezado : inicio.y());
    if (rect.left() >= esquina.x() && rect.top() >= esquina.y()) {
        editorCelda_->clearMask();
        return;
    }
    const QRect asoma = QRect(esquina, rect.bottomRight()).translated(-rect.topLeft());
    // Una máscara vacía no taparía nada: si no asoma, solo deja ver un punto de fuera.
    editorCelda_->setMask(asoma.isEmpty() ? QRegion(-1, -1, 1, 1) : QRegion(asoma));
}

void WidgetHoja::abrirEditor(const QString& texto) {
    if (!editando()) {
        const editor::Seleccion& seleccion = editor_.seleccion();
        enEdicion_ = {libro_.hojaActiva, seleccion.activaFila, seleccion.activaCol, {}};
        const nucleo::Hoja* hoja = hojaActiva();
        const nucleo::Celda* celda =
            hoja != nullptr ? hoja->celda(enEdicion_.fila, enEdicion_.col) : nullptr;
        if (celda != nullptr) {
            enEdicion_.entrada = celda->entrada;
        }
        aplicarEstiloEditorCelda();
        editorCelda_->show();
        posicionarEditorCelda();
    }
    if (editorCelda_->text() != texto) {
        editorCelda_->setText(texto);
    }
}

void WidgetHoja::cerrarEditor() {
    // En este orden: al esconderse con el foco lo pasaría a otro control.
    setFocus();
    editorCelda_->hide();
}

void WidgetHoja::comenzarEdicion(const QString& texto, bool reemplazar) {
    const editor::Seleccion& seleccion = editor_.seleccion();
    const bool enOtraCelda = enEdicion_.hoja != libro_.hojaActiva ||
                             enEdicion_.fila != seleccion.activaFila ||
                             enEdicion_.col != seleccion.activaCol;
    if (editando() && enOtraCelda) {
        confirmarEdicion(0, 0);
    }
    asegurarVisible();
    abrirEditor(texto);
    if (!reemplazar) {
        editorCelda_->end(false);
    }
    editorCelda_->setFocus();
    emit textoEdicionCambiado(editorCelda_->text());
}

void WidgetHoja::sincronizarTextoEdicion(const QString& texto) {
    abrirEditor(texto);
}

void WidgetHoja::escribirEdicion(const QString& texto) {
    if (enEdicion_.hoja < 0 || static_cast<std::size_t>(enEdicion_.hoja) >= libro_.hojas.size()) {
        return;
    }
    // Lo que no se ha tocado se escribe con sus mismos octetos, aunque no sean UTF-8 válido.
    const bool intacto = texto == QString::fromStdString(enEdicion_.entrada);
    const HojaPrestada prestada(libro_, enEdicion_.hoja);
    editor_.establecerContenido(enEdicion_.fila, enEdicion_.col,
                                intacto ? enEdicion_.entrada : texto.toStdString());
}

void WidgetHoja::confirmarEdicion(int dFila, int dCol) {
    if (!editando()) {
        return;
    }
    const QString texto = editorCelda_->text();
    cerrarEditor();
    escribirEdicion(texto);
    if (dFila != 0 || dCol != 0) {
        editor_.moverActiva(dFila, dCol, false);
    }
    emit edicionTerminada();
    notificarSeleccion();
    emit libroModificado();
    asegurarVisible();
}

void WidgetHoja::cancelarEdicion() {
    if (!editando()) {
        return;
    }
    cerrarEditor();
    emit edicionTerminada();
    notificarSeleccion();
    viewport()->update();
}

bool WidgetHoja::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto != editorCelda_ || evento->type() != QEvent::KeyPress) {
        return QAbstractScrollArea::eventFilter(objeto, evento);
    }
    const auto& tecla = static_cast<const QKeyEvent&>(*evento);
    const bool mayusculas = tecla.modifiers().testFlag(Qt::ShiftModifier);
    switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        confirmarEdicion(mayusculas ? -1 : 1, 0);
        return true;
    case Qt::Key_Tab:
        confirmarEdicion(0, mayusculas ? -1 : 1);
        return true;
    case Qt::Key_Backtab:
        confirmarEdicion(0, -1);
        return true;
    case Qt::Key_Escape:
        cancelarEdicion();
        return true;
    default:
        return false;
    }
}

bool WidgetHoja::focusNextPrevChild(bool /*siguiente*/) {
    return false;
}

void WidgetHoja::mover(int dFila, int dCol, bool extender) {
    editor_.moverActiva(dFila, dCol, extender);
    notificarSeleccion();
    asegurarVisible();
}

void WidgetHoja::irAlInicio(bool hoja) {
    editor_.seleccionar(hoja ? 0 : editor_.seleccion().activaFila, 0);
    notificarSeleccion();
    asegurarVisible();
}

bool WidgetHoja::moverConTecla(const QKeyEvent& evento) {
    const bool mayusculas = evento.modifiers().testFlag(Qt::ShiftModifier);
    switch (evento.key()) {
    case Qt::Key_Up:
        mover(-1, 0, mayusculas);
        return true;
    case Qt::Key_Down:
        mover(1, 0, mayusculas);
        return true;
    case Qt::Key_Left:
        mover(0, -1, mayusculas);
        return true;
    case Qt::Key_Right:
        mover(0, 1, mayusculas);
        return true;
    case Qt::Key_Tab:
        mover(0, mayusculas ? -1 : 1, mayusculas);
        return true;
    case Qt::Key_Backtab:
        mover(0, -1, mayusculas);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        mover(mayusculas ? -1 : 1, 0, mayusculas);
        return true;
    case Qt::Key_PageUp:
        mover(-kFilasPorPagina, 0, mayusculas);
        return true;
    case Qt::Key_PageDown:
        mover(kFilasPorPagina, 0, mayusculas);
        return true;
    case Qt::Key_Home:
        irAlInicio(evento.modifiers().testFlag(Qt::ControlModifier));
        return true;
    default:
        return false;
    }
}

void WidgetHoja::keyPressEvent(QKeyEvent* evento) {
    if (editando()) {
        // Se pregunta a la ventana porque, si no es la activa, nadie dice tener el foco.
        if (window()->focusWidget() == editorCelda_) {
            // El editor no la quiso: no mueve la celda, y devolvérsela no acabaría nunca.
            evento->ignore();
            return;
        }
        // Se edita desde la barra de fórmulas y el foco ha vuelto aquí: la tecla es del texto.
        editorCelda_->setFocus();
        QCoreApplication::sendEvent(editorCelda_, evento);
        return;
    }
    if (moverConTecla(*evento)) {
        return;
    }
    switch (evento->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        editor_.borrarSeleccion();
        notificarSeleccion();
        emit libroModificado();
        ponerAlDia();
        return;
    case Qt::Key_F2:
        comenzarEdicion(textoCeldaActiva(), false);
        return;
    default:
        break;
    }
    if (!evento->modifiers().testFlag(Qt::ControlModifier) &&
        empiezaPorImprimible(evento->text())) {
        comenzarEdicion(evento->text(), true);
        return;
    }
    QAbstractScrollArea::keyPressEvent(evento);
}

void WidgetHoja::inputMethodEvent(QInputMethodEvent* evento) {
    if (editando()) {
        // Como en `keyPressEvent`: se edita desde la barra de fórmulas y lo compuesto es del texto.
        editorCelda_->setFocus();
        QCoreApplication::sendEvent(editorCelda_, evento);
    } else if (!evento->preeditString().isEmpty()) {
        // La composición sigue dentro de la celda.
        comenzarEdicion(QString(), true);
        QCoreApplication::sendEvent(editorCelda_, evento);
    } else if (empiezaPorImprimible(evento->commitString())) {
        comenzarEdicion(evento->commitString(), true);
    }
    evento->accept();
}

QVariant WidgetHoja::inputMethodQuery(Qt::InputMethodQuery consulta) const {
    switch (consulta) {
    case Qt::ImEnabled:
        return true;
    case Qt::ImCursorRectangle:
        return rectActivaVisible().translated(viewport()->pos());
    default:
        return QAbstractScrollArea::inputMethodQuery(consulta);
    }
}

QRect WidgetHoja::rectActivaVisible() const {
    prepararRenderizador();
    const editor::Seleccion& seleccion = editor_.seleccion();
    const QRect rect = renderizador_.rectCeldaConFusion(seleccion.activaFila, seleccion.activaCol);
    const QRect visible = rect & viewport()->rect();
    return visible.isEmpty() ? rect : visible;
}

void WidgetHoja::copiar() {
    editor_.copiar();
    ultimoTSV_ = QString::fromStdString(editor_.copiarTSV());
    QGuiApplication::clipboard()->setText(ultimoTSV_);
}

void WidgetHoja::cortar() {
    copiar();
    editor_.borrarSeleccion();
    emit libroModificado();
    ponerAlDia();
}

void WidgetHoja::pegar() {
    const QString texto = QGuiApplication::clipboard()->text();
    const bool esNuestro = texto.isEmpty() || texto == ultimoTSV_;
    if (esNuestro && editor_.hayCeldasCopiadas()) {
        editor_.pegar();
    } else if (!texto.isEmpty()) {
        editor_.pegarTSV(texto.toStdString());
    }
    notificarSeleccion();
    emit libroModificado();
    ponerAlDia();
}

} // namespace interfaz
