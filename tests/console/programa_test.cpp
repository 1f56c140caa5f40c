#include "tests/comun/carpeta_temporal.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace {

struct Hecho {
    int estado;
    std::string salida;
};

/// El programa de verdad, tal como se llama desde una terminal.
Hecho hacer(const std::string& argumentos) {
    const std::string orden = std::string("\"") + PROGRAMA_CONSOLA + "\" " + argumentos;
    std::FILE* tuberia = popen(orden.c_str(), "r");
    std::string salida;
    std::array<char, 4096> trozo{};
    while (const std::size_t leidos = std::fread(trozo.data(), 1, trozo.size(), tuberia)) {
        salida.append(trozo.data(), leidos);
    }
    const int estado = pclose(tuberia);
    return {WIFEXITED(estado) ? WEXITSTATUS(estado) : -1, salida};
}

TEST(Programa, Evaluar) {
    const Hecho hecho = hacer("evaluar '=SUMA(1;2;3)'");
    EXPECT_EQ(hecho.estado, 0);
    EXPECT_EQ(hecho.salida, "6\n");
}

TEST(Programa, LosErroresSonUnaLineaPorLaOtraSalida) {
    EXPECT_EQ(hacer("bailar 2>/dev/null").salida, "");
    const Hecho hecho = hacer("bailar 2>&1");
    EXPECT_EQ(hecho.estado, 1);
    EXPECT_EQ(hecho.salida,
              "marnel-consola: no hay ninguna orden «bailar»; vea marnel-consola --ayuda\n");
}

TEST(Programa, EstadosDeSalida) {
    const CarpetaTemporal carpeta;
    const std::string csv = carpeta.escribir("a.csv", "a;b\n1;2\n");
    const std::string mrn = carpeta.ruta("a.mrn");
    EXPECT_EQ(hacer("convertir " + csv + " " + mrn).estado, 0);
    EXPECT_EQ(hacer("mostrar " + mrn + " --rango 2>/dev/null").estado, 1);
    EXPECT_EQ(hacer("mostrar " + csv + " 2>/dev/null").estado, 2);
    EXPECT_EQ(hacer("convertir " + mrn + " " + carpeta.ruta("no/a.csv") + " 2>/dev/null").estado,
              3);
}

TEST(Programa, UnDiscoLlenoSeDice) {
    const CarpetaTemporal carpeta;
    const std::string csv = carpeta.escribir("a.csv", "a;b\n1;2\n");
    for (const std::string& argumentos :
         {std::string("evaluar =1"), "convertir " + csv + " -", std::string("--ayuda")}) {
        const Hecho hecho = hacer(argumentos + " 2>&1 >/dev/full");
        EXPECT_EQ(hecho.estado, 3) << argumentos;
        EXPECT_EQ(hecho.salida, "marnel-consola: no se puede escribir en la salida estándar\n");
    }
}

TEST(Programa, QuienLeePuedeIrseAntes) {
    const CarpetaTemporal carpeta;
    std::string filas;
    for (int i = 0; i < 200000; ++i) {
        filas += "campo;campo\n";
    }
    const std::string csv = carpeta.escribir("a.csv", filas);
    const Hecho hecho = hacer("convertir " + csv + " - 2>/dev/null | head -n 1");
    EXPECT_EQ(hecho.salida, "campo;campo\n");
    EXPECT_EQ(hacer("convertir " + csv + " - 2>&1 >&-").estado, 3);
}

} // namespace
