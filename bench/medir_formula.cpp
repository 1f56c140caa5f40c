// Lectura y cálculo de fórmulas corrientes, en nanosegundos por fórmula.

#include "formula/compilador.h"
#include "formula/maquina.h"
#include "formula/reescritura.h"
#include "model/libro.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>

namespace {

using motor_formulas::Codigo;
using motor_formulas::Evaluador;
using motor_formulas::Maquina;

constexpr std::array kFormulas = {
    "A17+B17*2",
    "A1+1",
    "SI(A17>B17;A17;B17)",
    "SI(A17>B17;A17-B17;B17-A17)*1,5",
    "REDONDEAR(A17*B17;2)",
    "SUMA(A1:A10)",
    "(A17+B17)/(C17-D17)^2",
    "\"a\"&A17",
    "'Hoja 1'!A17+$B$17",
};

/// Una hoja con números en A1:D100.
nucleo::Libro libroConNumeros() {
    nucleo::Libro libro;
    for (int fila = 0; fila < 100; ++fila) {
        for (int col = 0; col < 4; ++col) {
            nucleo::Celda& celda = libro.hojas[0]->celdaMut(fila, col);
            celda.tipo = nucleo::TipoCelda::Numero;
            celda.numero = fila * 1.25 + col;
        }
    }
    return libro;
}

void leer(benchmark::State& estado) {
    const std::string formula = kFormulas[static_cast<std::size_t>(estado.range(0))];
    const nucleo::Libro libro;
    Codigo codigo;
    for (auto _ : estado)
        benchmark::DoNotOptimize(motor_formulas::compilar(formula, &libro, 0, codigo));
    estado.SetLabel(formula);
}
BENCHMARK(leer)->DenseRange(0, kFormulas.size() - 1);

void ejecutar(benchmark::State& estado) {
    const std::string formula = kFormulas[static_cast<std::size_t>(estado.range(0))];
    const nucleo::Libro libro = libroConNumeros();
    Codigo codigo;
    motor_formulas::compilar(formula, &libro, 0, codigo);
    Evaluador evaluador(libro, 0);
    Maquina maquina;
    for (auto _ : estado)
        benchmark::DoNotOptimize(maquina.ejecutar(codigo, evaluador));
    estado.SetLabel(formula);
}
BENCHMARK(ejecutar)->DenseRange(0, kFormulas.size() - 1);

void desplazar(benchmark::State& estado) {
    const std::string formula = kFormulas[static_cast<std::size_t>(estado.range(0))];
    for (auto _ : estado)
        benchmark::DoNotOptimize(motor_formulas::ajustarReferencias(formula, 1, 0));
    estado.SetLabel(formula);
}
BENCHMARK(desplazar)->DenseRange(0, kFormulas.size() - 1);

} // namespace

BENCHMARK_MAIN();
