#pragma once

#include <QString>

/// Nombres que elige el usuario o un archivo, preparados para controles que interpretan su texto.
namespace interfaz {

/// En una sola línea y de largo razonable para un cuadro o un rótulo.
QString enUnaLinea(const QString& nombre);
/// Para rótulos en que "&" marca una tecla: pestañas y menús.
QString paraRotulo(const QString& nombre);
/// Para globos de ayuda, que interpretan marcas.
QString paraAyuda(const QString& nombre);
/// Para el título de una ventana, en que "[*]" tiene otro sentido.
QString paraTitulo(const QString& nombre);

} // namespace interfaz
