#pragma once

#include <QByteArray>

#include <string>

namespace impresion {

/// Escribe un archivo entero, en su sitio. Falso si no se puede: entonces no queda a medias. A un
/// dispositivo se le escribe, pero ni se sustituye ni se borra.
bool guardarBytes(const QByteArray& bytes, const std::string& ruta);

} // namespace impresion
