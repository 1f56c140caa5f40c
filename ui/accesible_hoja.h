#pragma once

#include <QAccessible>
#include <QAccessibleWidget>

#include <cstdint>
#include <deque>
#include <unordered_map>

namespace interfaz {

class WidgetHoja;

/// La hoja activa como tabla para los lectores de pantalla: lo usado y hasta la celda activa, con
/// una fila y una columna de encabezados por delante.
///
/// Una hoja tiene 46 millones de celdas: sus interfaces se hacen cuando alguien las pide y solo se
/// conservan las últimas.
class AccesibleHoja : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit AccesibleHoja(WidgetHoja* vista);
    ~AccesibleHoja() override;

    /// La tabla que hay tras una interfaz de `WidgetHoja`.
    static AccesibleHoja* de(QAccessibleInterface* interfaz) {
        return dynamic_cast<AccesibleHoja*>(interfaz);
    }

    /// Nunca nula: una dirección imposible da una celda que no es válida.
    QAccessibleInterface* celda(int fila, int col) const;
    /// Índice entre los hijos; los encabezados tienen fila o columna -1.
    int indice(int fila, int col) const;

    // QAccessibleInterface
    bool isValid() const override;
    QAccessible::Role role() const override { return QAccessible::Table; }
    QAccessible::State state() const override;
    QString text(QAccessible::Text cual) const override;
    int childCount() const override;
    QAccessibleInterface* child(int indice) const override;
    int indexOfChild(const QAccessibleInterface* hijo) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType tipo) override;

    // QAccessibleTableInterface
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int fila, int col) const override;
    int rowCount() const override;
    int columnCount() const override;
    QString rowDescription(int fila) const override;
    QString columnDescription(int col) const override;
    int selectedCellCount() const override;
    int selectedRowCount() const override;
    int selectedColumnCount() const override;
    /// Las primeras de lo seleccionado: tantas como se conservan a la vez.
    QList<QAccessibleInterface*> selectedCells() const override;
    QList<int> selectedRows() const override;
    QList<int> selectedColumns() const override;
    bool isRowSelected(int fila) const override;
    bool isColumnSelected(int col) const override;
    bool selectRow(int fila) override;
    bool selectColumn(int col) override;
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* evento) override;

  private:
    struct Recorte; ///< la parte de la selección que está en la tabla

    WidgetHoja* vista() const;
    Recorte seleccion() const;
    void olvidarCeldas() const;

    mutable std::unordered_map<std::uint64_t, QAccessible::Id> celdas_;
    mutable std::deque<std::uint64_t> orden_; ///< la más antigua, primero
};

} // namespace interfaz
