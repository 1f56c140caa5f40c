#include "ui/avisos_accesibles.h"

#include "editing/editor.h"
#include "model/libro.h"
#include "ui/accesible_hoja.h"
#include "ui/widget_hoja.h"

namespace interfaz {

namespace {

QAccessibleInterface* fabricar(const QString& /*clase*/, QObject* objeto) {
    auto* vista = qobject_cast<WidgetHoja*>(objeto);
    return vista != nullptr ? new AccesibleHoja(vista) : nullptr;
}

} // namespace

void AvisosAccesibles::instalarFabrica() {
    // Qt no repite una fábrica ya instalada.
    QAccessible::installFactory(fabricar);
}

void AvisosAccesibles::ponerAlDia() {
    AccesibleHoja* tabla = AccesibleHoja::de(QAccessible::queryAccessibleInterface(&vista_));
    if (tabla == nullptr) {
        return;
    }
    const int hoja = vista_.libro().hojaActiva;
    const editor::Seleccion seleccion = vista_.editor().seleccion();
    const bool otraHoja = hoja != hoja_;
    const bool otraTabla =
        otraHoja || tabla->rowCount() != filas_ || tabla->columnCount() != columnas_;
    const bool otraCelda = otraHoja || seleccion.activaFila != seleccion_.activaFila ||
                           seleccion.activaCol != seleccion_.activaCol;
    const bool otraSeleccion = otraCelda || !(seleccion == seleccion_);
    hoja_ = hoja;
    filas_ = tabla->rowCount();
    columnas_ = tabla->columnCount();
    seleccion_ = seleccion;

    if (otraHoja) {
        // La tabla se llama como la hoja.
        QAccessibleEvent nombre(&vista_, QAccessible::NameChanged);
        emisor_(&nombre);
    }
    if (otraTabla) {
        QAccessibleTableModelChangeEvent cambio(&vista_,
                                                QAccessibleTableModelChangeEvent::ModelReset);
        emisor_(&cambio);
    }
    const int activa = tabla->indice(seleccion.activaFila, seleccion.activaCol);
    if (otraSeleccion) {
        QAccessibleEvent aviso(&vista_, QAccessible::SelectionWithin);
        emisor_(&aviso);
        QAccessibleEvent elegida(&vista_, QAccessible::Selection);
        elegida.setChild(activa);
        emisor_(&elegida);
    }
    if (otraCelda && vista_.hasFocus()) {
        QAccessibleEvent foco(&vista_, QAccessible::Focus);
        foco.setChild(activa);
        emisor_(&foco);
    }
}

} // namespace interfaz
