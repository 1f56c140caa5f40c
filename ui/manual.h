#pragma once

#include <QString>

class QWidget;

namespace interfaz {

/// La portada del manual, buscada donde lo instala el paquete y donde lo deja la construcción,
/// respecto a la carpeta del programa. Vacía si no está.
QString rutaDelManual(const QString& carpetaDelPrograma);

/// Enseña el manual en el navegador; si no puede, dice dónde está o que falta.
void abrirManual(QWidget* ventana, const QString& ruta);

} // namespace interfaz
