#include "model/numeros.h"

#include "model/fechas.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <locale.h>
#include <string_view>

namespace nucleo {

namespace {

/// Cifras tras la coma que un double puede tener distintas de cero.
constexpr int kDecimalesConCifra = 1074;
/// Lo que ocupa el mayor double con signo, punto y esos decimales.
constexpr std::size_t kLargoMaximo = 1 + 309 + 1 + kDecimalesConCifra;

/// La configuración clásica, que no sigue a la del proceso.
locale_t localeClasico() {
    static const locale_t clasico = newlocale(LC_ALL_MASK, "C", nullptr);
    return clasico;
}

/// Convierte todo el texto, con el lenguaje de strtod en la configuración clásica.
bool convertir(const char* inicio, const char* fin, double& numero) {
    // El camino rápido acepta un subconjunto del lenguaje y redondea igual.
    const auto rapido = std::from_chars(inicio, fin, numero);
    if (rapido.ec == std::errc() && rapido.ptr == fin)
        return true;
    const std::string copia(inicio, fin);
    char* hasta = nullptr;
    numero = strtod_l(copia.c_str(), &hasta, localeClasico());
    return hasta == copia.c_str() + copia.size();
}

struct Signos {
    bool moneda = false;
    bool porcentaje = false;
};

/// El texto sin espacios, "$" ni "%", con la coma y los puntos puestos como los espera strtod.
std::string limpiar(const std::string& texto, Signos& signos) {
    std::string limpio;
    limpio.reserve(texto.size());
    std::size_t comas = 0;
    std::size_t puntos = 0;
    for (const char c : texto) {
        switch (c) {
        case ' ':
            continue;
        case '$':
            signos.moneda = true;
            continue;
        case '%':
            signos.porcentaje = true;
            continue;
        case ',':
            ++comas;
            break;
        case '.':
            ++puntos;
            break;
        default:
            break;
        }
        limpio.push_back(c);
    }
    if (comas == 1 || puntos > 1)
        std::erase(limpio, '.');
    if (comas == 1)
        std::replace(limpio.begin(), limpio.end(), ',', '.');
    return limpio;
}

} // namespace

bool parsearNumeroUsuario(const std::string& texto, double& numero, Formato* inferido) {
    Signos signos;
    const std::string limpio = limpiar(texto, signos);
    double leido = 0;
    if (limpio.empty() || !convertir(limpio.data(), limpio.data() + limpio.size(), leido))
        return false;
    numero = signos.porcentaje ? leido / 100 : leido;
    if (inferido != nullptr && (signos.moneda || signos.porcentaje)) {
        inferido->numero = signos.moneda ? FormatoNumero::Moneda : FormatoNumero::Porcentaje;
        inferido->decimales = 2;
    }
    return true;
}

std::string numeroConDecimales(double valor, int decimales, bool miles) {
    std::array<char, kLargoMaximo> cifras;
    const int conCifra = decimales < 0 ? 6 : std::min(decimales, kDecimalesConCifra);
    const auto fin = std::to_chars(cifras.data(), cifras.data() + cifras.size(), valor,
                                   std::chars_format::fixed, conCifra);
    const std::string_view escrito(cifras.data(),
                                   static_cast<std::size_t>(fin.ptr - cifras.data()));
    const std::size_t signo = escrito.starts_with('-') ? 1 : 0;
    const std::size_t punto = std::min(escrito.find('.'), escrito.size());

    std::string texto;
    texto.reserve(escrito.size() + (miles ? escrito.size() / 3 : 0));
    texto.append(escrito.substr(0, signo));
    for (std::size_t i = signo; i < punto; ++i) {
        if (miles && i > signo && (punto - i) % 3 == 0)
            texto.push_back('.');
        texto.push_back(escrito[i]);
    }
    if (punto < escrito.size()) {
        texto.push_back(',');
        texto.append(escrito.substr(punto + 1));
    }
    return texto;
}

namespace {

std::string numeroGeneral(double valor) {
    if (!std::isfinite(valor))
        return textoError(ErrorCelda::ValorInvalido);
    std::array<char, 32> cifras;
    const auto fin = std::to_chars(cifras.data(), cifras.data() + cifras.size(), valor,
                                   std::chars_format::general, 10);
    std::replace(cifras.data(), fin.ptr, '.', ',');
    return {cifras.data(), fin.ptr};
}

void anadirConCeros(std::string& texto, int numero, std::size_t ancho) {
    const std::string cifras = std::to_string(numero);
    if (cifras.size() < ancho)
        texto.append(ancho - cifras.size(), '0');
    texto.append(cifras);
}

std::string textoFecha(double serial) {
    int dia = 0;
    int mes = 0;
    int anio = 0;
    fechaDesdeSerial(serial, dia, mes, anio);
    std::string texto;
    anadirConCeros(texto, dia, 2);
    texto.push_back('/');
    anadirConCeros(texto, mes, 2);
    texto.push_back('/');
    anadirConCeros(texto, anio, 4);
    return texto;
}

} // namespace

std::string formatearNumero(double valor, const Formato& formato) {
    switch (formato.numero) {
    case FormatoNumero::Numero:
        return numeroConDecimales(valor, formato.decimales, formato.separadorMiles);
    case FormatoNumero::Moneda:
        return (valor < 0 ? "-$ " : "$ ") +
               numeroConDecimales(std::fabs(valor), formato.decimales, true);
    case FormatoNumero::Porcentaje:
        return numeroConDecimales(valor * 100, formato.decimales, false) + "%";
    case FormatoNumero::Fecha:
        return textoFecha(valor);
    case FormatoNumero::General:
        break;
    }
    return numeroGeneral(valor);
}

std::string textoVisible(const Valor& valor, const Formato& formato) {
    switch (valor.tipo) {
    case TipoValor::Numero:
        return formatearNumero(valor.numero, formato);
    case TipoValor::Texto:
        return valor.texto;
    case TipoValor::Logico:
        return valor.logico ? "VERDADERO" : "FALSO";
    case TipoValor::Error:
        return textoError(valor.error);
    case TipoValor::Vacio:
        break;
    }
    return "";
}

} // namespace nucleo
