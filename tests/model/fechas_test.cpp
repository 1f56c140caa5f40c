#include "model/fechas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace nucleo;

struct Fecha {
    int dia = 0;
    int mes = 0;
    int anio = 0;

    bool operator==(const Fecha&) const = default;
};

std::ostream& operator<<(std::ostream& salida, const Fecha& fecha) {
    return salida << fecha.dia << '/' << fecha.mes << '/' << fecha.anio;
}

Fecha fechaDe(double serial) {
    Fecha fecha;
    fechaDesdeSerial(serial, fecha.dia, fecha.mes, fecha.anio);
    return fecha;
}

bool bisiesto(int anio) {
    return anio % 4 == 0 && (anio % 100 != 0 || anio % 400 == 0);
}

int largo(int mes, int anio) {
    static constexpr int dias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return mes == 2 && bisiesto(anio) ? 29 : dias[mes - 1];
}

TEST(Fechas, SeriesConocidas) {
    EXPECT_EQ(serialDesdeFecha(1, 1, 1900), 2);
    EXPECT_EQ(serialDesdeFecha(28, 2, 1900), 60);
    EXPECT_EQ(serialDesdeFecha(1, 3, 1900), 61);
    EXPECT_EQ(serialDesdeFecha(1, 1, 2000), 36526);
    EXPECT_EQ(serialDesdeFecha(1, 1, 2025), 45658);
}

TEST(Fechas, LaSerieNoValida) {
    EXPECT_EQ(serialDesdeFecha(1, 1, 1850), 2) << "los años anteriores a 1900 no suman";
    EXPECT_EQ(serialDesdeFecha(1, 3, 1896), 62) << "pero sus meses son los suyos";
    EXPECT_EQ(serialDesdeFecha(1, 3, -4), 62);
    EXPECT_EQ(serialDesdeFecha(0, 1, 1900), 1);
    EXPECT_EQ(serialDesdeFecha(-5, 1, 1900), -4);
    EXPECT_EQ(serialDesdeFecha(400, 1, 1900), 401);
    EXPECT_EQ(serialDesdeFecha(1, 0, 1900), 2);
    EXPECT_EQ(serialDesdeFecha(1, 13, 1900), 367) << "no hay más de doce meses que sumar";
    EXPECT_EQ(serialDesdeFecha(1, std::numeric_limits<int>::max(), 1900), 367);
    EXPECT_EQ(serialDesdeFecha(1, std::numeric_limits<int>::min(), std::numeric_limits<int>::min()),
              2);
    EXPECT_EQ(serialDesdeFecha(1, 1, std::numeric_limits<int>::max()), 784351601981.0);
}

TEST(Fechas, FechasConocidas) {
    EXPECT_EQ(fechaDe(45658.75), (Fecha{1, 1, 2025}));
    EXPECT_EQ(fechaDe(60), (Fecha{28, 2, 1900}));
    EXPECT_EQ(fechaDe(61), (Fecha{1, 3, 1900}));
    EXPECT_EQ(fechaDe(2958465), (Fecha{31, 12, 9999}));
}

TEST(Fechas, PorDebajoDeDosEsElPrimerDia) {
    const Fecha primero{1, 1, 1900};
    for (const double serial : {2.999, 2.0, 1.999, 1.0, 0.0, -0.0, -10.0, -1e300, std::nan(""),
                                -std::nan(""), -std::numeric_limits<double>::infinity()})
        EXPECT_EQ(fechaDe(serial), primero) << serial;
    EXPECT_EQ(fechaDe(3), (Fecha{2, 1, 1900}));
}

TEST(Fechas, SeSaturaEnElUltimoAnioQueCabe) {
    const Fecha ultima{31, 12, std::numeric_limits<int>::max()};
    const double serial = serialDesdeFecha(31, 12, ultima.anio);
    EXPECT_EQ(fechaDe(serial), ultima);
    EXPECT_EQ(fechaDe(serial - 1), (Fecha{30, 12, ultima.anio}));
    for (const double mayor : {serial + 1, serial + 2, serial + 3, 1e15, 9.3e18, 1e300,
                               std::numeric_limits<double>::infinity()})
        EXPECT_EQ(fechaDe(mayor), ultima) << mayor;
}

TEST(Fechas, CadaDiaDeOchoSiglosEsElSiguienteDelAnterior) {
    Fecha esperada{1, 1, 1900};
    for (double serial = 2; esperada.anio < 2700; ++serial) {
        ASSERT_EQ(fechaDe(serial), esperada) << serial;
        ASSERT_EQ(serialDesdeFecha(esperada.dia, esperada.mes, esperada.anio), serial) << esperada;
        if (++esperada.dia > largo(esperada.mes, esperada.anio)) {
            esperada.dia = 1;
            if (++esperada.mes > 12) {
                esperada.mes = 1;
                ++esperada.anio;
            }
        }
    }
}

TEST(Fechas, LasSeriesEnormesVuelvenASiMismas) {
    std::mt19937_64 azar(11);
    for (int i = 0; i < 20000; ++i) {
        const auto serial = static_cast<double>(2 + azar() % 784351602344ULL);
        const Fecha fecha = fechaDe(serial);
        ASSERT_EQ(serialDesdeFecha(fecha.dia, fecha.mes, fecha.anio), serial) << fecha;
    }
}

TEST(Fechas, LoQueEsYLoQueNoEsUnaFecha) {
    struct {
        const char* texto;
        double serial; ///< 0 si no es una fecha
    } const casos[] = {
        {"1/1/1900", 2},
        {"01/03/1900", 61},
        {"29/2/2024", 45351},
        {"29/2/2023", 0},
        {"29/2/1900", 0},
        {"29/2/2000", 36585},
        {"31/04/2024", 0},
        {"30/04/2024", 45412},
        {"31/12/9999", 2958465},
        {"1/1/10000", 0},
        {"1/1/1899", 0},
        {"31/12/1899", 0},
        {"1/1/24", 45292},
        {"1/2/24", 45323},
        {"1/1/99", 72686},
        {"1/1/100", 0},
        {"1/1/0", 36526},
        {"1/1/-5", 34700},
        {"1/1/-100", 2},
        {"1/1/-101", 0},
        {"0/1/2024", 0},
        {"-1/1/2024", 0},
        {"1/0/2024", 0},
        {"1/13/2024", 0},
        {"1/-1/2024", 0},
        {"+1/+1/+2024", 45292},
        {" 1/ 1/ 2024", 45292},
        {"\t1/\n1/\v\f\r2024", 45292},
        {"1 /1/2024", 0},
        {"1/1 /2024", 0},
        {"1/1/24 ", 0},
        {"1/1/24x", 0},
        {"1/1/24/", 0},
        {"1/1/2024\n", 0},
        {"1/1", 0},
        {"1/1/", 0},
        {"1//2024", 0},
        {"/1/2024", 0},
        {"+ 1/1/2024", 0},
        {"+-1/1/2024", 0},
        {"1-1-2024", 0},
        {"", 0},
        {" ", 0},
        {"hoy", 0},
        {"0000000000000000000001/1/2024", 45292},
        {"99999999999999/1/1", 0},
        {"1/99999999999999/1", 0},
        {"1/1/99999999999999999999999999", 0},
        {"1/1/2147483648", 0},
        {"1/1/-2147483648", 0},
        {"1/1/-2147483649", 0},
        {"4294967297/1/2024", 0},
        {"1,5/1/2024", 0},
    };
    for (const auto& caso : casos) {
        double serial = -1;
        EXPECT_EQ(parsearFecha(caso.texto, serial), caso.serial != 0) << '"' << caso.texto << '"';
        EXPECT_EQ(serial, caso.serial != 0 ? caso.serial : -1) << '"' << caso.texto << '"';
    }
}

TEST(Fechas, UnByteNuloEsUnCaracterMas) {
    double serial = -1;
    EXPECT_FALSE(parsearFecha(std::string("1/1/2024\0", 9), serial));
    EXPECT_EQ(serial, -1);
}

/// El lenguaje es el de sscanf con "%d/%d/%d%c", mientras los números quepan.
TEST(Fechas, ElLenguajeEsElDeSscanf) {
    std::mt19937 azar(5);
    const std::string letras = "0123456789/ +-\t\n,x";
    int aceptadas = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string texto;
        for (int parte = 0; parte < 3; ++parte) {
            if (azar() % 4 == 0)
                texto.push_back(letras[azar() % letras.size()]);
            texto += std::to_string(azar() % (parte == 2 ? 3000U : 14U));
            if (azar() % 4 == 0)
                texto.push_back(letras[azar() % letras.size()]);
            if (parte < 2)
                texto.push_back('/');
        }
        int dia = 0;
        int mes = 0;
        int anio = 0;
        char sobra = 0;
        const int leidos = std::sscanf(texto.c_str(), "%d/%d/%d%c", &dia, &mes, &anio, &sobra);
        anio += anio < 100 ? 2000 : 0;
        const bool esperado = leidos == 3 && mes >= 1 && mes <= 12 && dia >= 1 && anio >= 1900 &&
                              anio <= 9999 && dia <= largo(mes, anio);
        double serial = 0;
        ASSERT_EQ(parsearFecha(texto, serial), esperado) << '"' << texto << '"';
        if (esperado) {
            ++aceptadas;
            ASSERT_EQ(serial, serialDesdeFecha(dia, mes, anio)) << '"' << texto << '"';
        }
    }
    EXPECT_GT(aceptadas, 10000);
}

} // namespace
