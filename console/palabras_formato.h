#pragma once

#include "model/formato.h"

#include <optional>
#include <string>
#include <string_view>

/// Las palabras con que un archivo de formato describe el aspecto de las celdas.
namespace consola {

/// Cambia el formato como dicen unas palabras separadas por espacios: "negrita moneda fondo
/// #FFE699". Devuelve vacío, o la palabra que no se entiende.
std::string aplicarPalabras(std::string_view palabras, nucleo::Formato& formato);

/// Las palabras que llevan de un formato a otro; vacío si son iguales.
std::string palabrasEntre(const nucleo::Formato& desde, const nucleo::Formato& hasta);

/// Saca la primera palabra de un texto y la devuelve; vacía si no queda ninguna.
std::string_view sacarPalabra(std::string_view& texto);

/// Un entero decimal entre dos cotas; nada si el texto es otra cosa.
std::optional<int> leerEntero(std::string_view texto, int minimo, int maximo);

} // namespace consola
