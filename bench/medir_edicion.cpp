#include "editing/editor.h"
#include "formula/motor.h"
#include "model/libro.h"
#include "model/limites.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>

#include "bench/memoria.h"

// Cuánto cuestan las operaciones de edición según lo que hay en el libro y según lo que cambian.

namespace {

/// Un libro con su motor y su editor.
struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor editor{libro, motor};

    nucleo::Hoja& hoja() { return *libro.hojas[0]; }
    void seleccionar(int fila1, int col1, int fila2, int col2) {
        editor.seleccionar(fila1, col1);
        editor.extender(fila2, col2);
    }
};

/// Números en columnas de hasta 62.500 filas, y en la última columna una fórmula que lee A1.
std::unique_ptr<Mesa> libroDeNumeros(int celdas) {
    constexpr int kFilasPorColumna = 62500;
    auto mesa = std::make_unique<Mesa>();
    {
        const motor_formulas::Motor::Lote lote(mesa->motor);
        for (int i = 0; i < celdas; ++i) {
            mesa->motor.establecerCelda(0, i % kFilasPorColumna, i / kFilasPorColumna,
                                        std::to_string(i * 7919LL % 1000003));
        }
    }
    mesa->motor.establecerCelda(0, 0, nucleo::kUltimaColumna, "=A1*2");
    return mesa;
}

/// 65.536 filas con cinco columnas de números y, si se pide, otras cinco de fórmulas.
std::unique_ptr<Mesa> libroDeFilas(bool conFormulas) {
    auto mesa = std::make_unique<Mesa>();
    const motor_formulas::Motor::Lote lote(mesa->motor);
    for (int fila = 0; fila < nucleo::kFilas; ++fila) {
        for (int col = 0; col < 5; ++col) {
            mesa->motor.establecerCelda(0, fila, col,
                                        std::to_string((fila * 7919LL + col * 104729LL) % 65521));
        }
        if (!conFormulas)
            continue;
        const std::string n = std::to_string(fila + 1);
        const std::string formulas[] = {"=A" + n + "+B" + n, "=C" + n + "*D" + n,
                                        "=SI(E" + n + ">1000;A" + n + ";B" + n + ")",
                                        "=REDONDEAR(F" + n + "/3;2)", "=G" + n + "+H" + n};
        for (int i = 0; i < 5; ++i)
            mesa->motor.establecerCelda(0, fila, 5 + i, formulas[i]);
    }
    return mesa;
}

void Editar(benchmark::State& estado) {
    const auto mesa = libroDeNumeros(static_cast<int>(estado.range(0)));
    int i = 0;
    for (auto _ : estado)
        mesa->editor.establecerContenido(0, 0, std::to_string(++i));
}

void DeshacerYRehacer(benchmark::State& estado) {
    const auto mesa = libroDeNumeros(static_cast<int>(estado.range(0)));
    mesa->editor.establecerContenido(0, 0, "otro");
    for (auto _ : estado) {
        mesa->editor.deshacer();
        mesa->editor.rehacer();
    }
}

/// Lo que cuesta una vuelta sin contar su recálculo: capturar y poner las hojas en su sitio.
void CapturarYReponer(benchmark::State& estado) {
    const auto mesa = libroDeNumeros(static_cast<int>(estado.range(0)));
    for (auto _ : estado) {
        editor::Editor::Estado copia = mesa->editor.capturar();
        mesa->hoja() = std::move(copia.hojas[0]);
    }
}

void MemoriaDeQuincePasos(benchmark::State& estado) {
    for (auto _ : estado) {
        estado.PauseTiming();
        const auto mesa = libroDeNumeros(static_cast<int>(estado.range(0)));
        const std::size_t antes = memoriaPedida();
        estado.ResumeTiming();
        for (int i = 0; i < 15; ++i)
            mesa->editor.establecerContenido(i * 1000 % 900, 0, "cambio " + std::to_string(i));
        estado.PauseTiming();
        estado.counters["KiB"] = static_cast<double>(memoriaPedida() - antes) / 1024;
        estado.ResumeTiming();
    }
}

void PegarTexto(benchmark::State& estado) {
    std::string texto;
    for (int i = 0; i < nucleo::kFilas; ++i)
        texto += std::to_string(i * 7919LL % 1000003) + "\n";
    Mesa mesa;
    mesa.motor.establecerCelda(0, 0, 1, "=SUMA(A1:A65536)");
    mesa.seleccionar(0, 0, 0, 0);
    for (auto _ : estado)
        mesa.editor.pegarTSV(texto);
}

void PegarCeldas(benchmark::State& estado) {
    const auto mesa = libroDeFilas(false);
    mesa->motor.establecerCelda(0, 0, 10, "=SUMA(G1:G65536)");
    mesa->seleccionar(0, 0, nucleo::kUltimaFila, 0);
    mesa->editor.copiar();
    mesa->seleccionar(0, 6, 0, 6);
    for (auto _ : estado)
        mesa->editor.pegar();
}

void BorrarColumna(benchmark::State& estado) {
    const auto mesa = libroDeFilas(false);
    mesa->motor.establecerCelda(0, 0, 10, "=SUMA(A1:A65536)");
    mesa->seleccionar(0, 0, nucleo::kUltimaFila, 0);
    for (auto _ : estado) {
        mesa->editor.borrarSeleccion();
        estado.PauseTiming();
        mesa->editor.deshacer();
        estado.ResumeTiming();
    }
}

void InsertarFila(benchmark::State& estado) {
    const auto mesa = libroDeFilas(true);
    for (auto _ : estado) {
        mesa->editor.insertarFilas(0, 1);
        estado.PauseTiming();
        mesa->editor.deshacer();
        estado.ResumeTiming();
    }
}

void Ordenar(benchmark::State& estado) {
    const bool conFormulas = estado.range(0) != 0;
    const auto mesa = libroDeFilas(conFormulas);
    mesa->seleccionar(0, 0, nucleo::kUltimaFila, conFormulas ? 9 : 4);
    bool ascendente = true;
    for (auto _ : estado) {
        mesa->editor.ordenarSeleccion(ascendente);
        ascendente = !ascendente;
    }
}

void OrdenarCasiVacia(benchmark::State& estado) {
    Mesa mesa;
    for (int i = 0; i < 100; ++i)
        mesa.motor.establecerCelda(0, i, 0, std::to_string(i * 37 % 101));
    mesa.seleccionar(0, 0, nucleo::kUltimaFila, nucleo::kUltimaColumna);
    for (auto _ : estado)
        mesa.editor.ordenarSeleccion(true);
}

void DarEstilo(benchmark::State& estado) {
    const auto mesa = libroDeFilas(false);
    mesa->seleccionar(0, 0, nucleo::kUltimaFila, static_cast<int>(estado.range(0)) - 1);
    for (auto _ : estado)
        mesa->editor.alternarNegrita();
}

void CopiarTexto(benchmark::State& estado) {
    const auto mesa = libroDeFilas(false);
    mesa->seleccionar(0, 0, nucleo::kUltimaFila, static_cast<int>(estado.range(0)) - 1);
    std::size_t octetos = 0;
    for (auto _ : estado)
        octetos += mesa->editor.copiarTSV().size();
    estado.SetBytesProcessed(static_cast<std::int64_t>(octetos));
}

/// Una edición en una hoja con muchas fusiones: el paso del historial las copia.
void EditarConFusiones(benchmark::State& estado) {
    Mesa mesa;
    for (int i = 0; i < 100000; ++i) {
        const int fila = i % 32768 * 2;
        const int col = i / 32768 * 2;
        mesa.hoja().fusiones.push_back({fila, col, fila + 1, col + 1});
    }
    int i = 0;
    for (auto _ : estado)
        mesa.editor.establecerContenido(0, 100, std::to_string(++i));
}

/// Una edición en una hoja con todos sus altos cambiados.
void EditarConAltos(benchmark::State& estado) {
    Mesa mesa;
    for (int fila = 0; fila < nucleo::kFilas; ++fila)
        mesa.hoja().altos[fila] = 30;
    int i = 0;
    for (auto _ : estado)
        mesa.editor.establecerContenido(0, 100, std::to_string(++i));
}

BENCHMARK(Editar)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DeshacerYRehacer)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(CapturarYReponer)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(MemoriaDeQuincePasos)->Arg(1000)->Arg(100000)->Arg(1000000)->Iterations(3);
BENCHMARK(PegarTexto)->Unit(benchmark::kMillisecond);
BENCHMARK(PegarCeldas)->Unit(benchmark::kMillisecond);
BENCHMARK(BorrarColumna)->Unit(benchmark::kMillisecond);
BENCHMARK(InsertarFila)->Unit(benchmark::kMillisecond);
BENCHMARK(Ordenar)->ArgName("formulas")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(OrdenarCasiVacia)->Unit(benchmark::kMicrosecond);
BENCHMARK(DarEstilo)->ArgName("columnas")->Arg(5)->Arg(26)->Unit(benchmark::kMillisecond);
BENCHMARK(CopiarTexto)->ArgName("columnas")->Arg(5)->Arg(26)->Unit(benchmark::kMillisecond);
BENCHMARK(EditarConFusiones)->Unit(benchmark::kMicrosecond);
BENCHMARK(EditarConAltos)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
