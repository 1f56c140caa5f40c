#pragma once

#include <QAccessible>
#include <QPointer>

namespace nucleo {
struct Celda;
}

namespace interfaz {

class WidgetHoja;

/// Una celda de la tabla accesible, o un encabezado si no tiene fila o no tiene columna. No guarda
/// nada de la hoja: cada respuesta se lee de ella, y si la celda ya no existe deja de ser válida.
class AccesibleCelda : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    static constexpr int kEncabezado = -1; ///< fila de los de columna, columna de los de fila

    AccesibleCelda(WidgetHoja* vista, int fila, int col) : vista_(vista), fila_(fila), col_(col) {}

    int fila() const { return fila_; }
    int col() const { return col_; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text cual) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType tipo) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override { return col_; }
    int rowIndex() const override { return fila_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    bool esEncabezado() const { return fila_ == kEncabezado || col_ == kEncabezado; }
    bool esActiva() const;
    /// La celda cuyo contenido se muestra aquí: en una fusión, la primera; nulo si está vacía.
    const nucleo::Celda* contenido() const;
    QString nombre() const;

    QPointer<WidgetHoja> vista_;
    int fila_;
    int col_;
};

} // namespace interfaz
