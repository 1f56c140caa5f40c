#pragma once

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/libro.h"
#include "tests/comun/comprobar_libro.h"
#include "tests/editing/libro_llano.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace pruebas {

/// Dirección de una celda: "B3" es {2, 1}.
struct Lugar {
    int fila = 0;
    int col = 0;
};
Lugar lugarDe(std::string_view ref);
/// Rango escrito "B2:C3" o una sola celda.
nucleo::RangoCeldas rangoDe(std::string_view texto);

/// Un libro con su motor y su editor, que se maneja con direcciones escritas. Al terminar cada
/// prueba el libro tiene que cumplir sus invariantes.
class PruebaEditor : public testing::Test {
  protected:
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor editor{libro, motor};
    Exigencias exigencias;

    nucleo::Hoja& hoja(int indice = 0) { return *libro.hojas.at(static_cast<std::size_t>(indice)); }

    /// Escribe por el motor, sin dejar paso en el historial.
    void poner(std::string_view ref, const std::string& texto, int indice = 0);
    /// Escribe una columna de celdas hacia abajo desde `ref`, también sin historial.
    void ponerColumna(std::string_view ref, const std::vector<std::string>& textos);
    /// Escribe por el editor en la hoja activa.
    void escribir(std::string_view ref, const std::string& texto);
    /// Selecciona con el ancla en la primera esquina y el cursor en la segunda.
    void seleccionar(std::string_view rango);

    const nucleo::Celda* celda(std::string_view ref, int indice = 0);
    std::string entrada(std::string_view ref, int indice = 0);
    /// Lo que se ve en la celda.
    std::string visto(std::string_view ref, int indice = 0);
    std::vector<std::string> entradas(std::string_view rango, int indice = 0);
    /// Las fusiones de una hoja, escritas "A1:B2".
    std::vector<std::string> fusiones(int indice = 0);
    /// La selección escrita "ancla:activa".
    std::string seleccion() const;
    std::vector<nucleo::Hoja> copiaDeHojas() const;

    void TearDown() override;
};

} // namespace pruebas
