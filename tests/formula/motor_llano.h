#pragma once

#include "model/libro.h"
#include "model/valor.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace pruebas {

/// El motor escrito al pie de la letra sobre mapas: un grafo celda a celda, una cascada por
/// escritura y un recálculo completo que evalúa cuando todo lo leído está evaluado. Toma de un
/// libro solo los nombres de sus hojas.
class MotorLlano {
  public:
    explicit MotorLlano(const nucleo::Libro& nombres) : nombres_(nombres) {}

    void establecer(int hoja, int fila, int col, const std::string& texto);
    void recalcularTodo();

    struct Celda {
        std::string texto;
        nucleo::Valor valor;
        bool esFormula = false;
        std::vector<std::uint64_t> precedentes; ///< ordenados y sin repetir
    };
    const std::map<std::uint64_t, Celda>& celdas() const { return celdas_; }

  private:
    nucleo::Valor evaluar(std::uint64_t clave) const;
    std::vector<std::uint64_t> precedentesDe(std::uint64_t clave) const;
    void cascada(std::uint64_t clave);
    void calcular(const std::set<std::uint64_t>& afectadas);

    const nucleo::Libro& nombres_;
    std::map<std::uint64_t, Celda> celdas_;
    std::map<std::uint64_t, std::set<std::uint64_t>> lectores_;
};

} // namespace pruebas
