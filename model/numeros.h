#pragma once

#include "model/formato.h"
#include "model/valor.h"

#include <string>

namespace nucleo {

/// Lee un número tal como lo escribe una persona: coma decimal, punto de miles, "$" y "%".
/// `inferido`, si se da, recibe el formato que sugieren esos signos y sin ellos no cambia.
/// La lectura no depende de la configuración regional del proceso.
bool parsearNumeroUsuario(const std::string& texto, double& numero, Formato* inferido = nullptr);

/// Escribe un número con decimales fijos, coma decimal y, si se pide, punto de miles.
std::string numeroConDecimales(double valor, int decimales, bool miles);

/// Texto de un número según el formato de su celda.
std::string formatearNumero(double valor, const Formato& formato);

/// Texto que se ve de un valor según el formato de su celda.
std::string textoVisible(const Valor& valor, const Formato& formato);

} // namespace nucleo
