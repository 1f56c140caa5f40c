#include "formula/motor.h"
#include "model/libro.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <string_view>

#include "bench/exponentes.h"

// Cuánto cuesta calcular una vez cada función que recorre rangos, sola y sin nada aprendido de
// otras fórmulas. El argumento es el número de filas de la hoja:
//
//     A  1, 2, 3…          B  números revueltos     C  una de 1000 palabras     D  una celda de
//     cada 100

namespace {

constexpr int kFilasMaximas = 65536;

struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};

    explicit Mesa(int filas) {
        const motor_formulas::Motor::Lote lote(motor);
        for (int fila = 0; fila < filas; ++fila) {
            const unsigned revuelto = static_cast<unsigned>(fila) * 2654435761U;
            motor.establecerCelda(0, fila, 0, std::to_string(fila + 1));
            motor.establecerCelda(0, fila, 1, std::to_string(revuelto % 100000));
            motor.establecerCelda(0, fila, 2, "Palabra " + std::to_string(revuelto % 1000));
            if (fila % 100 == 0)
                motor.establecerCelda(0, fila, 3, "marca");
        }
    }
};

/// El nombre de la medida y su fórmula; "#" es la última fila.
struct Trabajo {
    const char* nombre;
    std::string_view formula;
};

constexpr Trabajo kTrabajos[] = {
    {"SUMA", "=SUMA(A1:A#)"},
    {"SUMA_de_la_hoja", "=SUMA(A1:ZZ65536)"},
    {"MEDIANA", "=MEDIANA(B1:B#)"},
    {"MODA", "=MODA(B1:B#)"},
    {"DESVEST", "=DESVEST(B1:B#)"},
    {"CONTARA", "=CONTARA(A1:D#)"},
    {"CONTAR.SI_numero", "=CONTAR.SI(B1:B#;\">50000\")"},
    {"CONTAR.SI_texto", "=CONTAR.SI(C1:C#;\"palabra 7\")"},
    {"CONTAR.SI_comodin", "=CONTAR.SI(C1:C#;\"*a*a*7*\")"},
    {"CONTAR.SI_vacias", "=CONTAR.SI(D1:D65536;\"=\")"},
    {"SUMAR.SI", "=SUMAR.SI(C1:C#;\"palabra 7\";B1:B#)"},
    {"SUMAR.SI_vacias", "=SUMAR.SI(D1:D#;\"=\";B1:B#)"},
    {"SUMAR.SI.CONJUNTO", "=SUMAR.SI.CONJUNTO(A1:A#;B1:B#;\">50000\";C1:C#;\"palabra 7*\")"},
    {"BUSCARV_ordenada", "=BUSCARV(65536;A1:C#;3)"},
    {"BUSCARV_exacta", "=BUSCARV(\"no está\";C1:C#;1;FALSO)"},
    {"COINCIDIR_exacta", "=COINCIDIR(-1;B1:B#;0)"},
    {"COINCIDIR_vacia", "=COINCIDIR(\"\";D1:D#;0)"},
    {"INDICE", "=INDICE(A1:D#;#;2)"},
    {"CONCATENAR", "=CONCATENAR(C1:C#)"},
};

void medir(benchmark::State& estado, std::string_view plantilla) {
    const int filas = static_cast<int>(estado.range(0));
    Mesa mesa(filas);
    std::string formula;
    for (const char letra : plantilla)
        formula += letra == '#' ? std::to_string(filas) : std::string(1, letra);
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(mesa.motor.evaluarFormula(0, formula));
    estado.SetItemsProcessed(estado.iterations() * filas);
}

} // namespace

int main(int argc, char** argv) {
    for (const Trabajo& trabajo : kTrabajos) {
        benchmark::RegisterBenchmark(trabajo.nombre, medir, trabajo.formula)
            ->RangeMultiplier(4)
            ->Range(4096, kFilasMaximas)
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    ReporteExponentes reporte;
    benchmark::RunSpecifiedBenchmarks(&reporte);
    benchmark::Shutdown();
}
