#include "ui/accesible_hoja.h"

#include "editing/editor.h"
#include "model/celda.h"
#include "model/direcciones.h"
#include "model/hoja.h"
#include "model/limites.h"
#include "ui/accesible_celda.h"
#include "ui/widget_hoja.h"

#include <QLineEdit>

#include <algorithm>
#include <cstddef>

namespace interfaz {

namespace {

constexpr std::size_t kCeldasConservadas = 1024;
/// Dirección que no es de nadie.
constexpr int kNinguna = -2;

} // namespace

struct AccesibleHoja::Recorte {
    int fila1;
    int col1;
    int filas;
    int columnas;
};

AccesibleHoja::AccesibleHoja(WidgetHoja* vista) : QAccessibleWidget(vista, QAccessible::Table) {}

AccesibleHoja::~AccesibleHoja() {
    olvidarCeldas();
}

WidgetHoja* AccesibleHoja::vista() const {
    return static_cast<WidgetHoja*>(widget());
}

bool AccesibleHoja::isValid() const {
    return QAccessibleWidget::isValid() && vista() != nullptr;
}

void AccesibleHoja::olvidarCeldas() const {
    for (const auto& [clave, id] : celdas_) {
        QAccessible::deleteAccessibleInterface(id);
    }
    celdas_.clear();
    orden_.clear();
}

QAccessibleInterface* AccesibleHoja::celda(int fila, int col) const {
    const bool posible = fila >= AccesibleCelda::kEncabezado && fila < nucleo::kFilas &&
                         col >= AccesibleCelda::kEncabezado && col < nucleo::kColumnas;
    if (!posible) {
        fila = kNinguna;
        col = kNinguna;
    }
    const std::uint64_t clave = nucleo::claveLocal(fila, col);
    if (const auto conocida = celdas_.find(clave); conocida != celdas_.end()) {
        return QAccessible::accessibleInterface(conocida->second);
    }
    if (orden_.size() >= kCeldasConservadas) {
        const auto antigua = celdas_.find(orden_.front());
        QAccessible::deleteAccessibleInterface(antigua->second);
        celdas_.erase(antigua);
        orden_.pop_front();
    }
    auto* nueva = new AccesibleCelda(vista(), fila, col);
    celdas_.emplace(clave, QAccessible::registerAccessibleInterface(nueva));
    orden_.push_back(clave);
    return nueva;
}

int AccesibleHoja::rowCount() const {
    const nucleo::Hoja* hoja = vista()->renderizador().hoja;
    const int usadas = hoja != nullptr ? std::min(hoja->ultimaFilaUsada(), nucleo::kUltimaFila) : 0;
    return std::max(usadas, vista()->editor().seleccion().activaFila) + 1;
}

int AccesibleHoja::columnCount() const {
    const nucleo::Hoja* hoja = vista()->renderizador().hoja;
    const int usadas =
        hoja != nullptr ? std::min(hoja->ultimaColUsada(), nucleo::kUltimaColumna) : 0;
    return std::max(usadas, vista()->editor().seleccion().activaCol) + 1;
}

int AccesibleHoja::indice(int fila, int col) const {
    return (fila + 1) * (columnCount() + 1) + col + 1;
}

int AccesibleHoja::childCount() const {
    return (rowCount() + 1) * (columnCount() + 1);
}

QAccessibleInterface* AccesibleHoja::child(int indice) const {
    if (indice < 0 || indice >= childCount()) {
        return nullptr;
    }
    const int porFila = columnCount() + 1;
    return celda(indice / porFila - 1, indice % porFila - 1);
}

int AccesibleHoja::indexOfChild(const QAccessibleInterface* hijo) const {
    const auto* celda = dynamic_cast<const AccesibleCelda*>(hijo);
    return celda != nullptr && celda->isValid() && celda->fila() < rowCount() &&
                   celda->col() < columnCount()
               ? indice(celda->fila(), celda->col())
               : -1;
}

QAccessibleInterface* AccesibleHoja::childAt(int x, int y) const {
    const renderizador::Renderizador& rejilla = vista()->renderizador();
    const QPoint punto = vista()->viewport()->mapFromGlobal(QPoint(x, y));
    int fila = AccesibleCelda::kEncabezado;
    int col = AccesibleCelda::kEncabezado;
    if (!rejilla.celdaEnPunto(punto, vista()->viewport()->size(), fila, col)) {
        fila = rejilla.filaEnEncabezado(punto);
        col = rejilla.colEnEncabezado(punto);
        if (fila < 0 && col < 0) {
            return nullptr;
        }
    }
    return celda(fila, col);
}

QAccessibleInterface* AccesibleHoja::focusChild() const {
    if (vista()->editorCelda()->hasFocus()) {
        return QAccessible::queryAccessibleInterface(vista()->editorCelda());
    }
    if (!vista()->hasFocus()) {
        return nullptr;
    }
    const editor::Seleccion& seleccion = vista()->editor().seleccion();
    return celda(seleccion.activaFila, seleccion.activaCol);
}

QAccessible::State AccesibleHoja::state() const {
    QAccessible::State estado = QAccessibleWidget::state();
    estado.multiSelectable = true;
    estado.extSelectable = true;
    return estado;
}

QString AccesibleHoja::text(QAccessible::Text cual) const {
    const QString propio = QAccessibleWidget::text(cual);
    const nucleo::Hoja* hoja = vista()->renderizador().hoja;
    return cual == QAccessible::Name && propio.isEmpty() && hoja != nullptr
               ? QString::fromStdString(hoja->nombre)
               : propio;
}

void* AccesibleHoja::interface_cast(QAccessible::InterfaceType tipo) {
    return tipo == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(tipo);
}

QAccessibleInterface* AccesibleHoja::cellAt(int fila, int col) const {
    return fila >= 0 && col >= 0 && fila < rowCount() && col < columnCount()
               ? celda(fila, col)
               : celda(kNinguna, kNinguna);
}

QString AccesibleHoja::rowDescription(int fila) const {
    return QString::number(fila + 1);
}

QString AccesibleHoja::columnDescription(int col) const {
    return QString::fromStdString(nucleo::nombreColumna(col));
}

AccesibleHoja::Recorte AccesibleHoja::seleccion() const {
    const editor::Seleccion& elegido = vista()->editor().seleccion();
    const int fila2 = std::min(elegido.filaMax(), rowCount() - 1);
    const int col2 = std::min(elegido.colMax(), columnCount() - 1);
    return {elegido.filaMin(), elegido.colMin(), fila2 - elegido.filaMin() + 1,
            col2 - elegido.colMin() + 1};
}

int AccesibleHoja::selectedRowCount() const {
    return seleccion().filas;
}

int AccesibleHoja::selectedColumnCount() const {
    return seleccion().columnas;
}

int AccesibleHoja::selectedCellCount() const {
    const Recorte elegido = seleccion();
    return elegido.filas * elegido.columnas;
}

QList<QAccessibleInterface*> AccesibleHoja::selectedCells() const {
    const Recorte elegido = seleccion();
    const int cuantas =
        std::min(elegido.filas * elegido.columnas, static_cast<int>(kCeldasConservadas));
    QList<QAccessibleInterface*> celdas;
    for (int i = 0; i < cuantas; ++i) {
        celdas.append(
            celda(elegido.fila1 + i / elegido.columnas, elegido.col1 + i % elegido.columnas));
    }
    return celdas;
}

QList<int> AccesibleHoja::selectedRows() const {
    const Recorte elegido = seleccion();
    QList<int> filas;
    for (int i = 0; i < elegido.filas; ++i) {
        filas.append(elegido.fila1 + i);
    }
    return filas;
}

QList<int> AccesibleHoja::selectedColumns() const {
    const Recorte elegido = seleccion();
    QList<int> columnas;
    for (int i = 0; i < elegido.columnas; ++i) {
        columnas.append(elegido.col1 + i);
    }
    return columnas;
}

bool AccesibleHoja::isRowSelected(int fila) const {
    const Recorte elegido = seleccion();
    return fila >= elegido.fila1 && fila < elegido.fila1 + elegido.filas &&
           elegido.columnas == columnCount();
}

bool AccesibleHoja::isColumnSelected(int col) const {
    const Recorte elegido = seleccion();
    return col >= elegido.col1 && col < elegido.col1 + elegido.columnas &&
           elegido.filas == rowCount();
}

bool AccesibleHoja::selectRow(int fila) {
    if (fila < 0 || fila >= rowCount()) {
        return false;
    }
    vista()->editor().seleccionarFila(fila);
    emit vista()->seleccionCambiada();
    vista()->refrescar();
    return true;
}

bool AccesibleHoja::selectColumn(int col) {
    if (col < 0 || col >= columnCount()) {
        return false;
    }
    vista()->editor().seleccionarColumna(col);
    emit vista()->seleccionCambiada();
    vista()->refrescar();
    return true;
}

void AccesibleHoja::modelChange(QAccessibleTableModelChangeEvent* /*evento*/) {
    // Las celdas leen la hoja en cada respuesta: no hay nada que corregir.
}

} // namespace interfaz
