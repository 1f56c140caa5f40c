#include "ui/accesible_celda.h"

#include "editing/editor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/limites.h"
#include "model/numeros.h"
#include "ui/accesible_hoja.h"
#include "ui/widget_hoja.h"

#include <QWindow>

#include <string>

namespace interfaz {

namespace {

QString enPalabras(nucleo::ErrorCelda error) {
    switch (error) {
    case nucleo::ErrorCelda::Circular:
        return QStringLiteral("Error: la fórmula depende de sí misma");
    case nucleo::ErrorCelda::DivCero:
        return QStringLiteral("Error: división por cero");
    case nucleo::ErrorCelda::Ref:
        return QStringLiteral("Error: referencia que no existe");
    case nucleo::ErrorCelda::ValorInvalido:
        return QStringLiteral("Error: valor no válido");
    case nucleo::ErrorCelda::Nombre:
        return QStringLiteral("Error: nombre desconocido");
    case nucleo::ErrorCelda::Ninguno:
        break;
    }
    return QStringLiteral("Error");
}

QString valorMostrado(const nucleo::Celda& celda) {
    switch (celda.tipo) {
    case nucleo::TipoCelda::Texto:
        return QString::fromStdString(celda.entrada);
    case nucleo::TipoCelda::Numero:
        return QString::fromStdString(nucleo::formatearNumero(celda.numero, celda.formato));
    case nucleo::TipoCelda::Formula:
        return QString::fromStdString(nucleo::textoVisible(celda.valor, celda.formato));
    default:
        return {};
    }
}

QString descripcion(const nucleo::Celda& celda) {
    if (celda.tipo != nucleo::TipoCelda::Formula) {
        return {};
    }
    const QString formula = QStringLiteral("Fórmula: ") + QString::fromStdString(celda.entrada);
    return celda.valor.tipo == nucleo::TipoValor::Error
               ? enPalabras(celda.valor.error) + QStringLiteral(". ") + formula
               : formula;
}

} // namespace

bool AccesibleCelda::isValid() const {
    return vista_ != nullptr && fila_ >= kEncabezado && fila_ < nucleo::kFilas &&
           col_ >= kEncabezado && col_ < nucleo::kColumnas;
}

QWindow* AccesibleCelda::window() const {
    return vista_ != nullptr ? vista_->window()->windowHandle() : nullptr;
}

QAccessibleInterface* AccesibleCelda::parent() const {
    return vista_ != nullptr ? QAccessible::queryAccessibleInterface(vista_) : nullptr;
}

QString AccesibleCelda::nombre() const {
    if (fila_ == kEncabezado) {
        return QString::fromStdString(nucleo::nombreColumna(col_));
    }
    return col_ == kEncabezado ? QString::number(fila_ + 1)
                               : QString::fromStdString(nucleo::nombreRef(fila_, col_));
}

const nucleo::Celda* AccesibleCelda::contenido() const {
    const nucleo::Hoja* hoja = vista_->renderizador().hoja;
    if (hoja == nullptr || esEncabezado()) {
        return nullptr;
    }
    const nucleo::RangoFusion* fusion = hoja->fusionEn(fila_, col_);
    return fusion != nullptr ? hoja->celda(fusion->fila1, fusion->col1) : hoja->celda(fila_, col_);
}

QString AccesibleCelda::text(QAccessible::Text cual) const {
    if (!isValid()) {
        return {};
    }
    if (cual == QAccessible::Name) {
        return nombre();
    }
    const nucleo::Celda* celda = contenido();
    if (celda == nullptr) {
        return {};
    }
    if (cual == QAccessible::Value) {
        return valorMostrado(*celda);
    }
    return cual == QAccessible::Description ? descripcion(*celda) : QString();
}

QRect AccesibleCelda::rect() const {
    if (!isValid()) {
        return {};
    }
    const renderizador::Renderizador& vista = vista_->renderizador();
    QRect rect;
    if (esEncabezado()) {
        rect = vista.rectCelda(std::max(fila_, 0), std::max(col_, 0));
        if (fila_ == kEncabezado) {
            rect.setTop(0);
            rect.setHeight(renderizador::kAltoEncabezado);
        }
        if (col_ == kEncabezado) {
            rect.setLeft(0);
            rect.setWidth(renderizador::kAnchoEncabezado);
        }
    } else {
        rect = vista.rectCeldaConFusion(fila_, col_);
    }
    return {vista_->viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}

QAccessible::Role AccesibleCelda::role() const {
    if (fila_ == kEncabezado) {
        return QAccessible::ColumnHeader;
    }
    return col_ == kEncabezado ? QAccessible::RowHeader : QAccessible::Cell;
}

bool AccesibleCelda::esActiva() const {
    const editor::Seleccion& seleccion = vista_->editor().seleccion();
    return seleccion.activaFila == fila_ && seleccion.activaCol == col_;
}

QAccessible::State AccesibleCelda::state() const {
    QAccessible::State estado;
    if (!isValid()) {
        estado.invalid = true;
        return estado;
    }
    estado.selectable = true;
    estado.selected = isSelected();
    if (!esEncabezado()) {
        estado.focusable = true;
        estado.editable = true;
        estado.active = esActiva();
        estado.focused = esActiva() && vista_->hasFocus();
    }
    const QRect enVista(vista_->viewport()->mapFromGlobal(rect().topLeft()), rect().size());
    estado.offscreen = !enVista.intersects(vista_->viewport()->rect());
    return estado;
}

void* AccesibleCelda::interface_cast(QAccessible::InterfaceType tipo) {
    return tipo == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
}

bool AccesibleCelda::isSelected() const {
    if (!isValid()) {
        return false;
    }
    const editor::Seleccion& seleccion = vista_->editor().seleccion();
    const bool enFilas = seleccion.filaMin() <= fila_ && fila_ <= seleccion.filaMax();
    const bool enColumnas = seleccion.colMin() <= col_ && col_ <= seleccion.colMax();
    return (enFilas || fila_ == kEncabezado) && (enColumnas || col_ == kEncabezado);
}

QList<QAccessibleInterface*> AccesibleCelda::columnHeaderCells() const {
    AccesibleHoja* tabla = AccesibleHoja::de(parent());
    return tabla != nullptr && !esEncabezado()
               ? QList<QAccessibleInterface*>{tabla->celda(kEncabezado, col_)}
               : QList<QAccessibleInterface*>{};
}

QList<QAccessibleInterface*> AccesibleCelda::rowHeaderCells() const {
    AccesibleHoja* tabla = AccesibleHoja::de(parent());
    return tabla != nullptr && !esEncabezado()
               ? QList<QAccessibleInterface*>{tabla->celda(fila_, kEncabezado)}
               : QList<QAccessibleInterface*>{};
}

} // namespace interfaz
