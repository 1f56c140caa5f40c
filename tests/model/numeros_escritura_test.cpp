#include "model/numeros.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace nucleo;

constexpr double kInfinito = std::numeric_limits<double>::infinity();
constexpr double kNoNumero = std::numeric_limits<double>::quiet_NaN();

std::string deFormato(double valor, FormatoNumero clase, std::uint8_t decimales = 2,
                      bool miles = false) {
    Formato formato;
    formato.numero = clase;
    formato.decimales = decimales;
    formato.separadorMiles = miles;
    return formatearNumero(valor, formato);
}

/// printf en la configuración clásica, que es la del proceso de pruebas.
std::string conPrintf(const char* formato, int decimales, double valor) {
    std::vector<char> texto(2048);
    const int largo = std::snprintf(texto.data(), texto.size(), formato, decimales, valor);
    return {texto.data(), static_cast<std::size_t>(largo)};
}

std::string agrupado(std::string cifras) {
    for (auto i = static_cast<int>(cifras.size()) - 3; i > 0; i -= 3)
        cifras.insert(static_cast<std::size_t>(i), ".");
    return cifras;
}

/// numeroConDecimales escrito paso a paso desde el texto de printf.
std::string conDecimalesLlano(double valor, int decimales, bool miles) {
    std::string texto = conPrintf("%.*f", decimales, valor);
    std::string signo;
    if (texto[0] == '-') {
        signo = "-";
        texto.erase(0, 1);
    }
    const std::size_t punto = texto.find('.');
    const std::string entera = texto.substr(0, punto);
    const std::string fraccion = punto == std::string::npos ? "" : texto.substr(punto + 1);
    return signo + (miles ? agrupado(entera) : entera) + (fraccion.empty() ? "" : "," + fraccion);
}

TEST(EscribirNumero, ConDecimales) {
    EXPECT_EQ(numeroConDecimales(1234567.891, 2, true), "1.234.567,89");
    EXPECT_EQ(numeroConDecimales(1234567.891, 2, false), "1234567,89");
    EXPECT_EQ(numeroConDecimales(1234567.891, 0, true), "1.234.568");
    EXPECT_EQ(numeroConDecimales(-1234.5, 1, true), "-1.234,5");
    EXPECT_EQ(numeroConDecimales(123, 0, true), "123");
    EXPECT_EQ(numeroConDecimales(-123, 0, true), "-123");
    EXPECT_EQ(numeroConDecimales(1000, 0, true), "1.000");
    EXPECT_EQ(numeroConDecimales(-0.0, 2, true), "-0,00");
    EXPECT_EQ(numeroConDecimales(0.125, 2, false), "0,12") << "la mitad, al par";
    EXPECT_EQ(numeroConDecimales(2.5, 0, false), "2");
    EXPECT_EQ(numeroConDecimales(999.999, 2, true), "1.000,00");
    EXPECT_EQ(numeroConDecimales(kInfinito, 2, true), "inf");
    EXPECT_EQ(numeroConDecimales(-kInfinito, 2, true), "-inf");
    EXPECT_EQ(numeroConDecimales(kNoNumero, 2, true), "nan");
    EXPECT_EQ(numeroConDecimales(1.5, -1, false), "1,500000") << "como printf, seis";
    EXPECT_EQ(numeroConDecimales(1.5, 255, false), "1,5" + std::string(254, '0'));
    EXPECT_EQ(numeroConDecimales(1e308, 255, true), conDecimalesLlano(1e308, 255, true));
    EXPECT_EQ(numeroConDecimales(5e-324, 1074, false), conDecimalesLlano(5e-324, 1074, false));
    EXPECT_EQ(numeroConDecimales(5e-324, std::numeric_limits<int>::max(), false),
              conDecimalesLlano(5e-324, 1074, false))
        << "un double no tiene más cifras";
}

TEST(EscribirNumero, General) {
    struct {
        double valor;
        const char* texto;
    } const casos[] = {{0, "0"},
                       {-0.0, "-0"},
                       {0.1 + 0.2, "0,3"},
                       {1e20, "1e+20"},
                       {1234567890, "1234567890"},
                       {12345678901, "1,23456789e+10"},
                       {-1.5, "-1,5"},
                       {1e-5, "1e-05"},
                       {0.0001, "0,0001"},
                       {1e100, "1e+100"},
                       {1.0 / 3, "0,3333333333"},
                       {9999999999.5, "1e+10"},
                       {5e-324, "4,940656458e-324"},
                       {1.7976931348623157e308, "1,797693135e+308"},
                       {kInfinito, "#¡VALOR!"},
                       {-kInfinito, "#¡VALOR!"},
                       {kNoNumero, "#¡VALOR!"}};
    for (const auto& caso : casos) {
        EXPECT_EQ(deFormato(caso.valor, FormatoNumero::General), caso.texto) << caso.valor;
        EXPECT_EQ(deFormato(caso.valor, static_cast<FormatoNumero>(5)), caso.texto)
            << "un formato desconocido es General";
        EXPECT_EQ(deFormato(caso.valor, static_cast<FormatoNumero>(255)), caso.texto);
    }
}

TEST(EscribirNumero, GeneralEsElDePrintf) {
    std::mt19937_64 azar(23);
    for (int i = 0; i < 300000; ++i) {
        double valor = std::bit_cast<double>(azar());
        if (i % 2 == 0) // números corrientes, con pocas cifras
            valor = static_cast<double>(static_cast<std::int64_t>(azar() % 2000000000000)) /
                    std::pow(10, static_cast<double>(azar() % 9));
        if (!std::isfinite(valor))
            continue;
        std::string esperado = conPrintf("%.*g", 10, valor);
        std::replace(esperado.begin(), esperado.end(), '.', ',');
        ASSERT_EQ(deFormato(valor, FormatoNumero::General), esperado);
    }
}

TEST(EscribirNumero, LosDecimalesSonLosDePrintf) {
    std::mt19937_64 azar(29);
    for (int i = 0; i < 60000; ++i) {
        double valor = std::bit_cast<double>(azar());
        if (i % 2 == 0) // mitades exactas y números corrientes
            valor =
                static_cast<double>(static_cast<std::int64_t>(azar() % 4000000000)) / 1024 - 1e6;
        const auto decimales = static_cast<int>(azar() % 256);
        const bool miles = azar() % 2 == 0;
        ASSERT_EQ(numeroConDecimales(valor, decimales % (i % 3 == 0 ? 256 : 4), miles),
                  conDecimalesLlano(valor, decimales % (i % 3 == 0 ? 256 : 4), miles))
            << "bits " << std::bit_cast<std::uint64_t>(valor);
    }
}

TEST(EscribirNumero, Numero) {
    EXPECT_EQ(deFormato(1234.5, FormatoNumero::Numero), "1234,50");
    EXPECT_EQ(deFormato(1234.5, FormatoNumero::Numero, 0, true), "1.234");
    EXPECT_EQ(deFormato(-1234567, FormatoNumero::Numero, 1, true), "-1.234.567,0");
}

TEST(EscribirNumero, Moneda) {
    EXPECT_EQ(deFormato(1234.5, FormatoNumero::Moneda), "$ 1.234,50");
    EXPECT_EQ(deFormato(-1234.5, FormatoNumero::Moneda), "-$ 1.234,50");
    EXPECT_EQ(deFormato(-0.001, FormatoNumero::Moneda), "-$ 0,00");
    EXPECT_EQ(deFormato(-0.0, FormatoNumero::Moneda), "$ 0,00");
    EXPECT_EQ(deFormato(1e6, FormatoNumero::Moneda, 0), "$ 1.000.000");
    EXPECT_EQ(deFormato(-kInfinito, FormatoNumero::Moneda), "-$ inf");
    EXPECT_EQ(deFormato(-kNoNumero, FormatoNumero::Moneda), "$ nan");
}

TEST(EscribirNumero, Porcentaje) {
    EXPECT_EQ(deFormato(0.125, FormatoNumero::Porcentaje, 1), "12,5%");
    EXPECT_EQ(deFormato(-0.5, FormatoNumero::Porcentaje, 0), "-50%");
    EXPECT_EQ(deFormato(1234.5, FormatoNumero::Porcentaje, 0, true), "123450%") << "sin miles";
    EXPECT_EQ(deFormato(1e308, FormatoNumero::Porcentaje, 2), "inf%");
}

TEST(EscribirNumero, Fecha) {
    EXPECT_EQ(deFormato(45356, FormatoNumero::Fecha), "05/03/2024");
    EXPECT_EQ(deFormato(45356.99, FormatoNumero::Fecha), "05/03/2024");
    EXPECT_EQ(deFormato(-3, FormatoNumero::Fecha), "01/01/1900");
    EXPECT_EQ(deFormato(kNoNumero, FormatoNumero::Fecha), "01/01/1900");
    EXPECT_EQ(deFormato(2958466, FormatoNumero::Fecha), "01/01/10000");
    EXPECT_EQ(deFormato(1e300, FormatoNumero::Fecha), "31/12/2147483647");
    EXPECT_EQ(deFormato(kInfinito, FormatoNumero::Fecha), "31/12/2147483647");
}

TEST(EscribirNumero, TextoVisible) {
    Formato moneda;
    moneda.numero = FormatoNumero::Moneda;
    EXPECT_EQ(textoVisible({}, moneda), "");
    EXPECT_EQ(textoVisible(Valor::deNumero(5), moneda), "$ 5,00");
    EXPECT_EQ(textoVisible(Valor::deTexto("5"), moneda), "5");
    EXPECT_EQ(textoVisible(Valor::deLogico(true), moneda), "VERDADERO");
    EXPECT_EQ(textoVisible(Valor::deLogico(false), moneda), "FALSO");
    EXPECT_EQ(textoVisible(Valor::deError(ErrorCelda::DivCero), moneda), "#¡DIV/0!");
    EXPECT_EQ(textoVisible(Valor::deError(static_cast<ErrorCelda>(99)), moneda), "");
    Valor raro = Valor::deNumero(5);
    raro.tipo = static_cast<TipoValor>(99);
    EXPECT_EQ(textoVisible(raro, moneda), "");
}

} // namespace
