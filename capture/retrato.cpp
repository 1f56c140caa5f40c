#include "capture/retrato.h"

#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QApplication>

namespace captura {

namespace {

void prepararVista(interfaz::VentanaPrincipal& ventana, const Peticion& peticion) {
    if (!peticion.hoja.empty()) {
        ventana.cambiarHoja(ventana.libro().indiceHoja(peticion.hoja));
    }
    ventana.establecerTema(peticion.oscuro);
    ventana.establecerZoom(peticion.zoom);
    // La celda activa es la esquina que se extiende: así queda arriba a la izquierda.
    ventana.editor().seleccionar(peticion.seleccion.fila2, peticion.seleccion.col2);
    ventana.editor().extender(peticion.seleccion.fila1, peticion.seleccion.col1);
    ventana.widgetHoja()->setFocus();
    ventana.refrescarTodo();
    ventana.widgetHoja()->asegurarVisible();
    if (!peticion.escribir.empty()) {
        ventana.widgetHoja()->comenzarEdicion(QString::fromStdString(peticion.escribir), true);
    }
}

} // namespace

QPixmap retratar(const Peticion& peticion) {
    interfaz::VentanaPrincipal ventana;
    ventana.resize(peticion.ancho, peticion.alto);
    ventana.show();
    if (!ventana.abrirArchivo(QString::fromStdString(peticion.libro))) {
        return {};
    }
    prepararVista(ventana, peticion);
    QApplication::processEvents();
    return ventana.grab();
}

} // namespace captura
