#pragma once

class QApplication;

namespace interfaz {

/// Instala los textos españoles de Qt (los botones de los cuadros). Sin catálogo quedan en inglés.
void cargarTraduccionesQt(QApplication& aplicacion);

} // namespace interfaz
