#pragma once

#include "console/consola.h"
#include "formula/motor.h"
#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

struct Hecho {
    int estado;
    std::string salida;
    std::string errores;
};

inline Hecho hacer(const std::vector<std::string>& argumentos, const std::string& entrada = "",
                   bool interactiva = false) {
    std::istringstream in(entrada);
    std::ostringstream out;
    std::ostringstream err;
    const int estado = consola::ejecutar(argumentos, in, out, err, interactiva);
    return {estado, out.str(), err.str()};
}

inline void esperarFallo(const Hecho& hecho, int estado, const std::string& mensaje) {
    EXPECT_EQ(hecho.estado, estado) << mensaje;
    EXPECT_EQ(hecho.salida, "") << mensaje;
    EXPECT_EQ(hecho.errores, "marnel-consola: " + mensaje + "\n");
}

class Ordenes : public testing::Test {
  protected:
    CarpetaTemporal carpeta;

    /// Guarda un libro hecho de lo que se teclea en cada celda.
    std::string libro(const std::vector<std::pair<const char*, const char*>>& celdas) {
        nucleo::Libro libro;
        motor_formulas::Motor motor(libro);
        for (const auto& [ref, texto] : celdas) {
            motor.establecerCelda(0, std::stoi(ref + 1) - 1, ref[0] - 'A', texto);
        }
        EXPECT_EQ(nucleo::Serializador::guardar(libro, carpeta.ruta("libro.mrn")), 0);
        return carpeta.ruta("libro.mrn");
    }

    void convertirBien(const std::vector<std::string>& argumentos) {
        std::vector<std::string> todos{"convertir"};
        todos.insert(todos.end(), argumentos.begin(), argumentos.end());
        const Hecho hecho = hacer(todos);
        EXPECT_EQ(hecho.estado, 0) << hecho.errores;
        EXPECT_EQ(hecho.salida, "");
        EXPECT_EQ(hecho.errores, "");
    }
};
