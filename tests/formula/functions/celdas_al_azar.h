#pragma once

#include "model/valor.h"
#include "tests/formula/hoja_de_prueba.h"

#include <random>
#include <string>
#include <vector>

namespace pruebas {

/// Un contenido tal como se teclea y el valor que una fórmula lee de él.
struct Muestra {
    std::string escrito;
    nucleo::Valor valor;
};

/// Celdas de todas las clases: vacías, números (también infinitos y lo que no es un número), textos
/// que parecen otra cosa, lógicos y errores.
const std::vector<Muestra>& muestras();

/// Una hoja llena al azar y la misma reunida en una tabla, para calcular con ella a mano.
class TablaAlAzar {
  public:
    TablaAlAzar(int filas, int columnas, std::mt19937& azar);

    HojaDePrueba& hoja() { return hoja_; }
    int filas() const { return filas_; }
    int columnas() const { return columnas_; }
    const nucleo::Valor& en(int fila, int col) const {
        return valores_[static_cast<std::size_t>(fila) * static_cast<std::size_t>(columnas_) +
                        static_cast<std::size_t>(col)];
    }

  private:
    HojaDePrueba hoja_;
    int filas_;
    int columnas_;
    std::vector<nucleo::Valor> valores_;
};

/// Un rectángulo al azar dentro de la tabla.
struct Zona {
    int fila;
    int col;
    int filas;
    int columnas;

    std::string texto() const;
    int celdas() const { return filas * columnas; }
    const nucleo::Valor& en(const TablaAlAzar& tabla, int posicion) const {
        return tabla.en(fila + posicion / columnas, col + posicion % columnas);
    }
};

Zona zonaAlAzar(const TablaAlAzar& tabla, std::mt19937& azar);
/// Otra zona con las mismas celdas que la dada, quizá de otra forma; la misma si no cabe ninguna.
Zona zonaIgualDeGrande(const TablaAlAzar& tabla, const Zona& zona, std::mt19937& azar);

/// Si dos valores son el mismo, también cuando ninguno es un número.
bool iguales(const nucleo::Valor& a, const nucleo::Valor& b);

/// Un texto escrito como literal de una fórmula.
std::string entreComillas(const std::string& texto);

} // namespace pruebas
