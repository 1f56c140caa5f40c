#pragma once

#include <string>

namespace interfaz {
class VentanaPrincipal;
}

namespace pruebas {

/// Lo primero en que la ventana no muestra lo que hay en su libro: título, pestañas, barra de
/// fórmulas, botones, zoom, selección o ruta de recuperación. Vacío si todo concuerda.
std::string defectoDeLaVentana(interfaz::VentanaPrincipal& ventana);

} // namespace pruebas
