#pragma once

#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace motor_formulas {

/// Un libro con su motor y celdas que se nombran por su dirección.
class PruebaMotor : public ::testing::Test {
  protected:
    nucleo::Libro libro;
    Motor motor{libro};

    static std::pair<int, int> lugar(const std::string& direccion) {
        const std::size_t letras = direccion.find_first_of("0123456789");
        return {std::stoi(direccion.substr(letras)) - 1,
                nucleo::columnaDesdeNombre(direccion.substr(0, letras))};
    }
    static std::uint64_t clave(const std::string& direccion, int hoja = 0) {
        const auto [fila, col] = lugar(direccion);
        return nucleo::claveCelda(hoja, fila, col);
    }
    void escribir(const std::string& direccion, const std::string& texto, int hoja = 0) {
        const auto [fila, col] = lugar(direccion);
        motor.establecerCelda(hoja, fila, col, texto);
    }
    const nucleo::Celda* celda(const std::string& direccion, int hoja = 0) const {
        const auto [fila, col] = lugar(direccion);
        return std::as_const(*libro.hojas[static_cast<std::size_t>(hoja)]).celda(fila, col);
    }
    std::string visible(const std::string& direccion, int hoja = 0) const {
        const nucleo::Celda* const c = celda(direccion, hoja);
        return c == nullptr ? "" : nucleo::textoVisible(c->valor, {});
    }
};

} // namespace motor_formulas
