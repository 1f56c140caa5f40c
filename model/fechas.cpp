#include "model/fechas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace nucleo {

namespace {

constexpr std::array<int, 12> diasDelMes{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

constexpr int kAnioInicial = 1900;
constexpr int kAnioMinimo = 1900;
constexpr int kAnioMaximo = 9999;
constexpr std::int64_t kDiasPor400Anios = 146097;

constexpr bool esBisiesto(std::int64_t anio) {
    return anio % 4 == 0 && (anio % 100 != 0 || anio % 400 == 0);
}

constexpr int largoDelMes(int mes, std::int64_t anio) {
    const int dias = diasDelMes[static_cast<std::size_t>(mes - 1)];
    return mes == 2 && esBisiesto(anio) ? dias + 1 : dias;
}

/// Bisiestos en los años 1..anio, con anio >= 0.
constexpr std::int64_t bisiestosHasta(std::int64_t anio) {
    return anio / 4 - anio / 100 + anio / 400;
}

/// Días desde el 1/1/1900 hasta el 1 de enero de un año >= 1900.
constexpr std::int64_t diasHastaAnio(std::int64_t anio) {
    return (anio - kAnioInicial) * 365 + bisiestosHasta(anio - 1) -
           bisiestosHasta(kAnioInicial - 1);
}

static_assert(diasHastaAnio(1900) == 0);
static_assert(diasHastaAnio(2300) == kDiasPor400Anios);

/// Último día que tiene un año representable: 31/12/2147483647.
constexpr std::int64_t kUltimoDia =
    diasHastaAnio(std::int64_t{std::numeric_limits<int>::max()} + 1) - 1;

/// Año de un día contado desde el 1/1/1900, en 0..kUltimoDia.
std::int64_t anioDelDia(std::int64_t dia) {
    // La media gregoriana acierta o se queda a un año; los dos pasos lo corrigen.
    std::int64_t anio = kAnioInicial + dia * 400 / kDiasPor400Anios; // dia * 400 < 2^49
    while (diasHastaAnio(anio) > dia)
        --anio;
    while (diasHastaAnio(anio + 1) <= dia)
        ++anio;
    return anio;
}

bool esBlanco(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Lee un entero con signo tras los blancos que haya y lo quita del texto. Falso si no hay cifras
/// o si no cabe en un int.
bool leerEntero(std::string_view& texto, int& numero) {
    std::size_t i = 0;
    while (i < texto.size() && esBlanco(texto[i]))
        ++i;
    bool negativo = false;
    if (i < texto.size() && (texto[i] == '+' || texto[i] == '-'))
        negativo = texto[i++] == '-';
    const std::int64_t tope =
        negativo ? -std::int64_t{std::numeric_limits<int>::min()} : std::numeric_limits<int>::max();
    const std::size_t primera = i;
    std::int64_t valor = 0;
    for (; i < texto.size() && texto[i] >= '0' && texto[i] <= '9'; ++i) {
        valor = valor * 10 + (texto[i] - '0');
        if (valor > tope)
            return false;
    }
    if (i == primera)
        return false;
    numero = static_cast<int>(negativo ? -valor : valor);
    texto.remove_prefix(i);
    return true;
}

bool leerBarra(std::string_view& texto) {
    if (texto.empty() || texto.front() != '/')
        return false;
    texto.remove_prefix(1);
    return true;
}

} // namespace

double serialDesdeFecha(int dia, int mes, int anio) {
    std::int64_t dias = anio > kAnioInicial ? diasHastaAnio(anio) : 0;
    for (int m = 1; m < std::min(mes, 13); ++m)
        dias += largoDelMes(m, anio);
    return static_cast<double>(dias + dia + 1);
}

void fechaDesdeSerial(double serial, int& dia, int& mes, int& anio) {
    std::int64_t resto = 0;
    // Con NaN la comparación falla y queda el primer día.
    if (serial >= 2)
        resto = serial < static_cast<double>(kUltimoDia + 2)
                    ? static_cast<std::int64_t>(std::floor(serial)) - 2
                    : kUltimoDia;
    const std::int64_t anioLargo = anioDelDia(resto);
    resto -= diasHastaAnio(anioLargo);
    mes = 1;
    while (resto >= largoDelMes(mes, anioLargo))
        resto -= largoDelMes(mes++, anioLargo);
    dia = static_cast<int>(resto) + 1;
    anio = static_cast<int>(anioLargo);
}

bool parsearFecha(const std::string& texto, double& serial) {
    std::string_view resto = texto;
    int dia = 0;
    int mes = 0;
    int anio = 0;
    if (!leerEntero(resto, dia) || !leerBarra(resto) || !leerEntero(resto, mes) ||
        !leerBarra(resto) || !leerEntero(resto, anio) || !resto.empty())
        return false;
    if (anio < 100)
        anio += 2000;
    if (anio < kAnioMinimo || anio > kAnioMaximo || mes < 1 || mes > 12 || dia < 1 ||
        dia > largoDelMes(mes, anio))
        return false;
    serial = serialDesdeFecha(dia, mes, anio);
    return true;
}

} // namespace nucleo
