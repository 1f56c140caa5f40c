#pragma once

class QApplication;

namespace interfaz {

/// Da a la aplicación su identidad: igualador de símbolos, nombre, icono, letra y traducciones.
void prepararAplicacion(QApplication& aplicacion);

/// Hace visibles los recursos compilados; llamarla otra vez no hace nada.
void registrarRecursos();

} // namespace interfaz
