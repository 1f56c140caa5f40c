#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <vector>

using pruebas::comprobar;
using pruebas::HojaDePrueba;

namespace {

/// Número con todas sus cifras, como se escribe en una fórmula.
std::string escrito(double numero) {
    char texto[400];
    std::snprintf(texto, sizeof texto, "%.25f", numero);
    return texto;
}

std::string llamada(const std::string& nombre, const std::vector<double>& args) {
    std::string formula = "=" + nombre + "(";
    for (const double arg : args)
        formula += escrito(arg) + ";";
    formula.back() = ')';
    return formula;
}

/// La ecuación de las anualidades resuelta con más precisión que la del programa. Los términos
/// sirven para saber cuánto se cancelan.
struct Exacto {
    long double valor;
    long double escala;
};

long double factor(long double r, long double n) {
    return std::exp(n * std::log1p(r));
}

long double anualidad(long double r, long double n) {
    return r == 0 ? n : std::expm1(n * std::log1p(r)) / r;
}

Exacto vfExacto(long double r, long double n, long double pago, long double va, long double t) {
    const long double a = va * factor(r, n);
    const long double b = pago * (1 + r * t) * anualidad(r, n);
    return {-(a + b), std::abs(a) + std::abs(b)};
}

Exacto vaExacto(long double r, long double n, long double pago, long double vf, long double t) {
    const long double a = vf / factor(r, n);
    const long double b = pago * (1 + r * t) * anualidad(r, n) / factor(r, n);
    return {-(a + b), std::abs(a) + std::abs(b)};
}

Exacto pagoExacto(long double r, long double n, long double va, long double vf, long double t) {
    const long double divisor = (1 + r * t) * anualidad(r, n);
    const long double a = va * factor(r, n) / divisor;
    const long double b = vf / divisor;
    return {-(a + b), std::abs(a) + std::abs(b)};
}

void esperarExacto(const nucleo::Valor& valor, const Exacto& exacto, const std::string& formula) {
    ASSERT_EQ(valor.tipo, nucleo::TipoValor::Numero) << formula;
    const long double margen = 1e-9L * std::abs(exacto.valor) + 1e-13L * exacto.escala + 1e-300L;
    EXPECT_LE(std::abs(valor.numero - exacto.valor), margen)
        << formula << " da " << valor.numero << " y no " << static_cast<double>(exacto.valor);
}

constexpr double kTasas[] = {0,   1e-15, 1e-12,  1e-9,   1e-6,  0.0001, 0.01, 0.0725,
                             0.5, 3,     -1e-15, -1e-10, -1e-6, -0.01,  -0.2, -0.9};
constexpr double kPeriodos[] = {1, 2, 12, 60, 360, 0.5, 7.25, -3};
constexpr double kPagos[] = {0, -100, 250.75};
constexpr double kValores[] = {0, 1000, -73250.5};
constexpr double kTipos[] = {0, 1};

/// Si (1 + r)^n es un número normal del programa.
bool cabe(double r, double n) {
    return factor(r, n) > 1e-300L && factor(r, n) < 1e300L;
}

template <typename Comprobar> void porLaRejilla(Comprobar comprobarPunto) {
    for (const double r : kTasas)
        for (const double n : kPeriodos)
            for (const double tercero : kPagos)
                for (const double cuarto : kValores)
                    for (const double tipo : kTipos)
                        if (cabe(r, n))
                            comprobarPunto(r, n, tercero, cuarto, tipo);
}

} // namespace

TEST(Financieras, ValorFuturoComoLaFormulaCerrada) {
    HojaDePrueba hoja;
    porLaRejilla([&](double r, double n, double pago, double va, double tipo) {
        const std::string formula = llamada("VF", {r, n, pago, va, tipo});
        esperarExacto(hoja.valor(formula), vfExacto(r, n, pago, va, tipo), formula);
    });
}

TEST(Financieras, ValorActualComoLaFormulaCerrada) {
    HojaDePrueba hoja;
    porLaRejilla([&](double r, double n, double pago, double vf, double tipo) {
        const std::string formula = llamada("VA", {r, n, pago, vf, tipo});
        esperarExacto(hoja.valor(formula), vaExacto(r, n, pago, vf, tipo), formula);
    });
}

TEST(Financieras, PagoComoLaFormulaCerrada) {
    HojaDePrueba hoja;
    porLaRejilla([&](double r, double n, double va, double vf, double tipo) {
        const std::string formula = llamada("PAGO", {r, n, va, vf, tipo});
        esperarExacto(hoja.valor(formula), pagoExacto(r, n, va, vf, tipo), formula);
    });
}

TEST(Financieras, CasosAMano) {
    HojaDePrueba hoja{"nan | 0,01 | =1/0"};
    comprobar(hoja, {
                        {"=PAGO(0;10;1000)", "-100"},
                        {"=PAGO(0;10;1000;500)", "-150"},
                        {"=PAGO(1%;12;1000)", "-88,84878868"},
                        {"=PAGO(1%;12;1000;0;1)", "-87,9690977"},
                        {"=PAGO(0;10;0)", "0"}, // y no -0
                        {"=PAGO(1%;0;1000)", "#¡DIV/0!"},
                        {"=PAGO(0;0;1000)", "#¡DIV/0!"},
                        {"=VF(0;10;-100)", "1000"},
                        {"=VF(0;10;-100;-500)", "1500"},
                        {"=VF(1%;12;-100)", "1268,250301"},
                        {"=VF(1%;0;-100;-500)", "500"},
                        {"=VF(0;0;-100)", "0"},
                        {"=VA(0;10;-100)", "1000"},
                        {"=VA(1%;12;-100)", "1125,507747"},
                        {"=VA(1%;0;-100;-500)", "500"},
                        // Cualquier tipo que no sea 0 paga al principio.
                        {"=VF(1%;12;-100;0;-7)=VF(1%;12;-100;0;1)", "VERDADERO"},
                        {"=VF(1%;12;-100;0;A1)=VF(1%;12;-100;0;1)", "VERDADERO"},
                        {"=VF(1%;12;-100;0;FALSO)=VF(1%;12;-100)", "VERDADERO"},
                        {"=VF(B1;\"12\";-100)=VF(1%;12;-100)", "VERDADERO"},
                    });
}

TEST(Financieras, DivisoresNulosYResultadosQueNoCaben) {
    comprobar({
        {"=VA(-1;5;-100)", "#¡DIV/0!"},
        {"=VA(-1;5;0;100)", "#¡DIV/0!"},
        {"=VA(-1;-5;-100)", "#¡DIV/0!"},
        {"=VA(-0,999999;200;-100)", "#¡DIV/0!"}, // (1 + r)^n se queda en 0
        {"=VF(-1;-5;-100)", "#¡DIV/0!"},
        {"=VF(-1;5;-100;-700)", "100"}, // solo queda el último pago
        {"=VF(-1;5;-100;-700;1)", "0"},
        {"=VF(-1;0;-100;-700)", "700"},
        {"=VA(-1;0;-100;-700)", "700"},
        {"=PAGO(-1;5;1000;300)", "-300"},
        {"=PAGO(-1;5;1000;300;1)", "#¡DIV/0!"},
        {"=PAGO(-1;-5;1000)", "#¡DIV/0!"},
        {"=PAGO(-2;2;1000)", "#¡DIV/0!"}, // (−1)² − 1
        {"=VF(-3;2;-100;-10)", "-60"},    // por debajo de −1 con periodos enteros
        {"=VF(-3;0,5;-100)", "#¡VALOR!"},
        {"=VF(1;5000;-100)", "#¡VALOR!"},
        {"=VF(10^300;10;-100)", "#¡VALOR!"},
        {"=VA(1;5000;-100)", "100"}, // el pago perpetuo
        {"=PAGO(1;5000;100)", "-100"},
        {"=PAGO(1;-5000;100;300)", "300"},
        {"=SI.ERROR(VF(1;5000;-100);\"enorme\")", "enorme"},
    });
}

TEST(Financieras, ArgumentosQueNoSirven) {
    HojaDePrueba hoja{"=1/0 | =#¡REF! | 1"};
    for (const std::string_view nombre : {"VF", "VA", "PAGO", "TASA"}) {
        const std::string f = "=" + std::string(nombre);
        EXPECT_EQ(hoja.texto(f + "(1;2)"), "#¡VALOR!") << nombre;
        EXPECT_EQ(hoja.texto(f + "()"), "#¡VALOR!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(1;2;3;4;5;6;7)"), "#¡VALOR!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(A1;B1;3)"), "#¡DIV/0!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(1;B1;A1)"), "#¡REF!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(1;2;3;4;A1)"), "#¡DIV/0!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(1;2;C1:C2)"), "#¡VALOR!") << nombre;
        EXPECT_EQ(hoja.texto(f + "(1;\"x\";A1)"), "#¡VALOR!") << nombre;
    }
    EXPECT_EQ(hoja.texto("=VF(1;2;3;4;5;6)"), "#¡VALOR!");
    EXPECT_EQ(hoja.texto("=PAGO(1;2;3;4;5;6)"), "#¡VALOR!");
}

TEST(Tasa, CasosAMano) {
    comprobar({
        {"=REDONDEAR(TASA(12;-100;1000);4)", "0,0292"},
        {"=REDONDEAR(TASA(12;-100;1200);9)", "0"},
        {"=REDONDEAR(TASA(10;0;-100;200);9)", "0,071773463"}, // 2^(1/10) − 1
        {"=REDONDEAR(TASA(12;-100;1000;0;0;0,5);4)", "0,0292"},
        {"=REDONDEAR(TASA(12;-100;1000;0;0;-7);4)", "0,0292"}, // como si fuera 0,1
        {"=REDONDEAR(TASA(12;-100;1000;0;0;-1);4)", "0,0292"},
        {"=REDONDEAR(TASA(12;-100;1000;0;0;-1,5);4)", "0,0292"},
        {"=REDONDEAR(TASA(12;-100;1000;0;0;0);4)", "0,0292"},
        {"=TASA(12;0;0)", "0,1"}, // cualquier tasa vale: la de partida
        // Nunca se salda: cada paso parte en dos lo que falta hasta −1, hasta que ya no se mueve.
        {"=REDONDEAR(TASA(12;100;1000);9)", "-1"},
        {"=REDONDEAR(TASA(12;0;1000);1)", "-0,9"}, // el saldo ya no se distingue de 0
        {"=TASA(0;-100;1000)", "#¡VALOR!"},
        {"=TASA(0;-100;1000;-1000)", "0,1"},
    });
}

TEST(Tasa, DevuelveLaTasaConLaQueSeCalculoElPago) {
    HojaDePrueba hoja;
    for (const double r : {0.0001, 0.002, 0.01, 0.05, 0.1, 0.3, -0.001, -0.02}) {
        for (const double n : {2.0, 12.0, 48.0, 240.0}) {
            for (const double vf : {0.0, -200.0}) {
                for (const double tipo : kTipos) {
                    const double va = 1000;
                    const auto pago = static_cast<double>(pagoExacto(r, n, va, vf, tipo).valor);
                    const std::string formula =
                        llamada("TASA", {n, pago, va, vf, tipo, r * 0.99 + 0.0001});
                    const nucleo::Valor valor = hoja.valor(formula);
                    ASSERT_EQ(valor.tipo, nucleo::TipoValor::Numero) << formula;
                    EXPECT_NEAR(valor.numero, r, 1e-9) << formula;
                }
            }
        }
    }
}

namespace {

/// El método tal como se describe, con las potencias formadas directamente.
std::optional<double> tasaPorDefinicion(double n, double pago, double va, double vf, double t,
                                        double r) {
    const auto f = [&](double tasa) {
        if (tasa == 0)
            return va + pago * n + vf;
        const double potencia = std::pow(1 + tasa, n);
        return va * potencia + pago * (1 + tasa * t) * (potencia - 1) / tasa + vf;
    };
    if (!(r > -1))
        r = 0.1;
    for (int paso = 0; paso < 100; ++paso) {
        const double valor = f(r);
        if (std::abs(valor) < 1e-9)
            return r;
        const double pendiente = (f(r + 1e-6) - valor) / 1e-6;
        if (pendiente == 0 || std::isnan(pendiente))
            return std::nullopt;
        double siguiente = r - valor / pendiente;
        if (!(siguiente > -1))
            siguiente = (r - 1) * 0.5;
        if (std::abs(siguiente - r) < 1e-12)
            return siguiente;
        r = siguiente;
    }
    return std::nullopt;
}

} // namespace

TEST(Tasa, ConvergeDondeConvergeElMetodo) {
    HojaDePrueba hoja;
    std::mt19937 azar(11);
    const auto entre = [&](double a, double b) {
        return std::uniform_real_distribution<double>(a, b)(azar);
    };
    int convergen = 0;
    for (int i = 0; i < 5000; ++i) {
        const double n = std::floor(entre(1, 120));
        const double va = entre(-5000, 5000);
        const double pago = entre(-500, 500);
        const double vf = i % 3 == 0 ? 0 : entre(-5000, 5000);
        const double tipo = i % 2;
        const double inicial = i % 5 == 0 ? entre(-0.9, 2) : 0.1;
        const std::string formula = llamada("TASA", {n, pago, va, vf, tipo, inicial});
        const nucleo::Valor valor = hoja.valor(formula);
        const std::optional<double> esperada = tasaPorDefinicion(n, pago, va, vf, tipo, inicial);
        const bool igual = esperada.has_value() == (valor.tipo == nucleo::TipoValor::Numero) &&
                           (!esperada || std::abs(*esperada - valor.numero) < 1e-6);
        EXPECT_TRUE(igual) << formula << " da " << hoja.texto(formula) << " y no "
                           << esperada.value_or(-99);
        convergen += esperada.has_value() ? 1 : 0;
    }
    EXPECT_TRUE(4000 < convergen && convergen < 5000) << convergen;
}
