#pragma once

#include "model/hoja.h"

#include <QImage>

#include <string>

#include "printing/peticion.h"
#include "printing/resultado.h"

namespace impresion {

/// Dibuja la zona pedida de una hoja, al tamaño de la pantalla, en el PNG de la petición.
Resultado dibujarImagen(const nucleo::Hoja& hoja, const Peticion& peticion);

/// Escribe un PNG entero o no deja nada. Falso si no se puede.
bool guardarPng(const QImage& imagen, const std::string& ruta);

} // namespace impresion
