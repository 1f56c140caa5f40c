#pragma once

#include <string>

namespace nucleo {

/// Días desde el 30/12/1899 hasta la fecha dada. No valida: los años anteriores a 1900 no suman.
double serialDesdeFecha(int dia, int mes, int anio);

/// Fecha de una serie; la parte fraccionaria se ignora. Por debajo de 2 (y NaN) da 1/1/1900; las
/// series que llevarían a un año que no cabe en un int se quedan en el último que cabe.
void fechaDesdeSerial(double serial, int& dia, int& mes, int& anio);

/// Lee "día/mes/año" entre 1900 y 9999; un año menor que 100 suma 2000. Devuelve falso si el texto
/// no es una fecha, y entonces `serial` no cambia.
bool parsearFecha(const std::string& texto, double& serial);

} // namespace nucleo
