// Cuánto cuesta guardar, copiar, recorrer, desplazar, abrir y salvar celdas.

#include "model/hoja.h"
#include "model/libro.h"
#include "model/numeros.h"
#include "model/serializador.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <malloc.h>
#include <random>
#include <string>
#include <unistd.h>
#include <utility>

#include "bench/memoria.h"

namespace {

using namespace nucleo;

constexpr RangoCeldas kTodo{0, 0, kUltimaFila, kUltimaColumna};

void escribirNumero(Hoja& hoja, int fila, int col, int n) {
    Celda& celda = hoja.celdaMut(fila, col);
    celda.tipo = TipoCelda::Numero;
    celda.numero = n;
    celda.entrada = std::to_string(n);
}

/// Columnas llenas de números, una tras otra.
Hoja hojaDensa(std::int64_t celdas) {
    Hoja hoja;
    for (std::int64_t i = 0; i < celdas; ++i)
        escribirNumero(hoja, static_cast<int>(i % kFilas), static_cast<int>(i / kFilas),
                       static_cast<int>(i));
    return hoja;
}

Hoja hojaDispersa(int celdas) {
    Hoja hoja;
    std::mt19937 azar(7);
    for (int i = 0; i < celdas; ++i)
        escribirNumero(hoja, static_cast<int>(azar() % kFilas),
                       static_cast<int>(azar() % kColumnas), i);
    return hoja;
}

template <typename Construir> void medirMemoria(benchmark::State& estado, Construir construir) {
    for (auto _ : estado) {
        const std::size_t antes = memoriaPedida();
        const Hoja hoja = construir(estado.range(0));
        estado.counters["bytes/celda"] =
            static_cast<double>(memoriaPedida() - antes) / static_cast<double>(hoja.celdas.size());
    }
}

void llenarDensa(benchmark::State& estado) {
    medirMemoria(estado, hojaDensa);
}
BENCHMARK(llenarDensa)->Arg(1000000)->Unit(benchmark::kMillisecond);

void llenarDispersa(benchmark::State& estado) {
    medirMemoria(estado,
                 [](std::int64_t celdas) { return hojaDispersa(static_cast<int>(celdas)); });
}
BENCHMARK(llenarDispersa)->Arg(100000)->Unit(benchmark::kMillisecond);

void copiarHoja(benchmark::State& estado) {
    const Hoja hoja = hojaDensa(estado.range(0));
    for (auto _ : estado) {
        Hoja copia = hoja;
        benchmark::DoNotOptimize(copia);
    }
}
BENCHMARK(copiarHoja)->Arg(1000)->Arg(1000000);

void editarTrasCopiar(benchmark::State& estado) {
    Hoja hoja = estado.range(0) < 0 ? hojaDispersa(100000) : hojaDensa(estado.range(0));
    std::mt19937 azar(3);
    for (auto _ : estado) {
        Hoja copia = hoja;
        escribirNumero(hoja, static_cast<int>(azar() % 60000), static_cast<int>(azar() % 15), 5);
        benchmark::DoNotOptimize(copia);
    }
}
BENCHMARK(editarTrasCopiar)->Arg(1000)->Arg(1000000)->Arg(-1);

void buscarAlAzar(benchmark::State& estado) {
    const Hoja hoja = hojaDensa(estado.range(0));
    std::mt19937 azar(3);
    double suma = 0;
    for (auto _ : estado)
        suma +=
            hoja.celdas
                .buscar(static_cast<int>(azar() % kFilas),
                        static_cast<int>(azar() % static_cast<unsigned>(estado.range(0) / kFilas)))
                ->numero;
    benchmark::DoNotOptimize(suma);
}
BENCHMARK(buscarAlAzar)->Arg(kFilas)->Arg(15 * kFilas);

void sumarRango(benchmark::State& estado) {
    const Hoja hoja = hojaDensa(1000000);
    const RangoCeldas rango{0, 0, static_cast<int>(estado.range(0)) - 1,
                            static_cast<int>(estado.range(1)) - 1};
    double suma = 0;
    for (auto _ : estado)
        hoja.celdas.recorrerPorFilas(rango, [&](int, int, const Celda& celda) {
            suma += celda.numero;
            return true;
        });
    benchmark::DoNotOptimize(suma);
    estado.SetItemsProcessed(estado.iterations() * rango.celdas());
}
BENCHMARK(sumarRango)->Args({10000, 1})->Args({1000, 10})->Args({3, 3})->Args({60000, 15});

void recorrerComoMapa(benchmark::State& estado) {
    const Hoja hoja = hojaDensa(1000000);
    double suma = 0;
    for (auto _ : estado) {
        for (const auto& [clave, celda] : hoja.celdas)
            suma += celda.numero;
    }
    benchmark::DoNotOptimize(suma);
}
BENCHMARK(recorrerComoMapa)->Unit(benchmark::kMillisecond);

void recorrerDispersaPorFilas(benchmark::State& estado) {
    const Hoja hoja = hojaDispersa(100000);
    std::size_t vistas = 0;
    for (auto _ : estado)
        hoja.celdas.recorrerPorFilas(kTodo, [&](int, int, const Celda&) {
            ++vistas;
            return true;
        });
    benchmark::DoNotOptimize(vistas);
}
BENCHMARK(recorrerDispersaPorFilas)->Unit(benchmark::kMillisecond);

/// Lo que la ventana pregunta tras cada tecla.
void preguntarTrasEditar(benchmark::State& estado) {
    Hoja hoja = hojaDensa(1000000);
    std::size_t total = 0;
    for (auto _ : estado) {
        escribirNumero(hoja, 30000, 7, 5);
        total += static_cast<std::size_t>(hoja.ultimaFilaUsada() + hoja.ultimaColUsada());
        total += hoja.celdas.resumir(kTodo).numeros;
    }
    benchmark::DoNotOptimize(total);
}
BENCHMARK(preguntarTrasEditar)->Unit(benchmark::kMicrosecond);

void insertarFila(benchmark::State& estado) {
    Hoja hoja = hojaDensa(655360);
    for (auto _ : estado) {
        estado.PauseTiming();
        Hoja copia = hoja;
        estado.ResumeTiming();
        copia.celdas.desplazarFilas(0, 1);
        benchmark::DoNotOptimize(copia);
    }
}
BENCHMARK(insertarFila)->Unit(benchmark::kMillisecond);

void insertarColumna(benchmark::State& estado) {
    const Hoja hoja = hojaDensa(655360);
    for (auto _ : estado) {
        Hoja copia = hoja;
        copia.celdas.desplazarColumnas(0, 1);
        benchmark::DoNotOptimize(copia);
    }
}
BENCHMARK(insertarColumna)->Unit(benchmark::kMicrosecond);

/// Carpeta temporal que se borra al acabar.
struct Carpeta {
    Carpeta() { std::filesystem::create_directory(ruta); }
    ~Carpeta() { std::filesystem::remove_all(ruta); }
    std::string archivo() const { return (ruta / "libro.mrn").string(); }

    std::filesystem::path ruta =
        std::filesystem::temp_directory_path() / ("medir_modelo_" + std::to_string(getpid()));
};

Libro libroDenso(std::int64_t celdas) {
    Libro libro;
    *libro.hojas[0] = hojaDensa(celdas);
    return libro;
}

void guardarLibro(benchmark::State& estado) {
    const Carpeta carpeta;
    const Libro libro = libroDenso(estado.range(0));
    for (auto _ : estado)
        benchmark::DoNotOptimize(Serializador::guardar(libro, carpeta.archivo()));
    estado.SetItemsProcessed(estado.iterations() * estado.range(0));
}
BENCHMARK(guardarLibro)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void cargarLibro(benchmark::State& estado) {
    const Carpeta carpeta;
    Serializador::guardar(libroDenso(estado.range(0)), carpeta.archivo());
    for (auto _ : estado) {
        Libro libro;
        benchmark::DoNotOptimize(Serializador::cargar(carpeta.archivo(), libro));
        estado.PauseTiming();
        libro.reiniciar();
        malloc_trim(0);
        estado.ResumeTiming();
    }
    estado.SetItemsProcessed(estado.iterations() * estado.range(0));
}
BENCHMARK(cargarLibro)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void completarTrasCargar(benchmark::State& estado) {
    const Carpeta carpeta;
    Serializador::guardar(libroDenso(1000000), carpeta.archivo());
    for (auto _ : estado) {
        estado.PauseTiming();
        Libro libro;
        Serializador::cargar(carpeta.archivo(), libro);
        estado.ResumeTiming();
        libro.hojas[0]->celdas.completarLiterales();
    }
}
BENCHMARK(completarTrasCargar)->Unit(benchmark::kMillisecond);

void leerNumero(benchmark::State& estado, const char* texto) {
    double numero = 0;
    const std::string entrada = texto;
    for (auto _ : estado) {
        benchmark::DoNotOptimize(parsearNumeroUsuario(entrada, numero));
        benchmark::DoNotOptimize(numero);
    }
}
BENCHMARK_CAPTURE(leerNumero, entero, "123456");
BENCHMARK_CAPTURE(leerNumero, conComa, "1.234,56");
BENCHMARK_CAPTURE(leerNumero, moneda, "$ 1.234,56");
BENCHMARK_CAPTURE(leerNumero, palabra, "Enero de 2024");

void escribirTextoDeNumero(benchmark::State& estado, FormatoNumero clase) {
    Formato formato;
    formato.numero = clase;
    for (auto _ : estado)
        benchmark::DoNotOptimize(formatearNumero(45321.678, formato));
}
BENCHMARK_CAPTURE(escribirTextoDeNumero, general, FormatoNumero::General);
BENCHMARK_CAPTURE(escribirTextoDeNumero, moneda, FormatoNumero::Moneda);
BENCHMARK_CAPTURE(escribirTextoDeNumero, fecha, FormatoNumero::Fecha);

} // namespace

BENCHMARK_MAIN();
