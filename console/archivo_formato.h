#pragma once

#include "model/libro.h"

#include <istream>
#include <ostream>
#include <string>

/// El archivo de formato: lo que un libro tiene y el texto separado por tabulaciones no puede
/// llevar. Una indicación por línea; las vacías y las que empiezan por "#" no cuentan.
///
///     hoja Nombre                 comienza lo que toca a la siguiente hoja
///     inmovilizar FILAS COLUMNAS
///     ancho A 120                 o A:F; en píxeles
///     alto 1 30                   o 1:5
///     fusion A1:F1
///     formato A1:F1 PALABRAS      se suma a lo que la celda ya tenga
namespace consola {

/// Da a las hojas, ya escritas, los nombres y el aspecto que dice el archivo. Devuelve vacío, o la
/// línea y lo que está mal en ella.
std::string aplicarFormato(std::istream& origen, nucleo::Libro& libro);

/// Escribe el aspecto de una hoja de modo que `aplicarFormato` lo devuelva. Lo que ninguna edición
/// produce (tamaños y fusiones imposibles de un archivo ajeno) no se escribe.
void escribirFormato(std::ostream& destino, const nucleo::Hoja& hoja);

} // namespace consola
