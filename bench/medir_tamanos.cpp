// Con qué exponente crece lo que cuestan las operaciones de edición y los archivos: cada tamaño se
// dobla cuatro veces. El argumento de cada medida es el número de filas.

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/limites.h"
#include "model/reserva_bloques.h"
#include "model/serializador.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <string>
#include <unistd.h>

#include "bench/exponentes.h"

namespace {

/// Un libro con su motor y su editor.
struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor editor{libro, motor};

    void seleccionar(int filas, int columnas) {
        editor.seleccionar(0, 0);
        editor.extender(filas - 1, columnas - 1);
    }
};

constexpr int kNumeros = 5;
constexpr int kFormulas = 5;
constexpr int kFilas = 65536;
/// Con cuatro tablas ni el libro más pequeño cabe, con su copia, en la memoria caché: lo que crece
/// es el trabajo y no lo que cuesta salirse de ella. El mayor tiene 2.600.000 celdas.
constexpr int kTablasQueNoCaben = 4;

/// Pone en una fila, desde una columna, cinco números revueltos y, si se pide, cinco fórmulas.
void ponerFila(Mesa& mesa, int fila, int desde, bool conFormulas) {
    for (int col = 0; col < kNumeros; ++col)
        mesa.motor.establecerCelda(0, fila, desde + col,
                                   std::to_string((fila * 7919LL + col * 104729LL) % 65521));
    if (!conFormulas)
        return;
    const auto ref = [=](int col) { return nucleo::nombreRef(fila, desde + col); };
    const std::string formulas[kFormulas] = {
        "=" + ref(0) + "+" + ref(1), "=" + ref(2) + "*" + ref(3),
        "=SI(" + ref(4) + ">1000;" + ref(0) + ";" + ref(1) + ")", "=REDONDEAR(" + ref(5) + "/3;2)",
        "=" + ref(6) + "+" + ref(7)};
    for (int i = 0; i < kFormulas; ++i)
        mesa.motor.establecerCelda(0, fila, desde + kNumeros + i, formulas[i]);
}

/// Una tabla de cinco columnas de números y, si se pide, otras cinco de fórmulas; o varias, una al
/// lado de otra.
std::unique_ptr<Mesa> mesaDe(int filas, bool conFormulas, int tablas = 1) {
    auto mesa = std::make_unique<Mesa>();
    const motor_formulas::Motor::Lote lote(mesa->motor);
    for (int fila = 0; fila < filas; ++fila) {
        for (int tabla = 0; tabla < tablas; ++tabla)
            ponerFila(*mesa, fila, tabla * (kNumeros + kFormulas), conFormulas);
    }
    return mesa;
}

/// Carpeta temporal que se borra al acabar.
struct Carpeta {
    Carpeta() { std::filesystem::create_directory(ruta); }
    ~Carpeta() { std::filesystem::remove_all(ruta); }
    std::string archivo() const { return (ruta / "libro.mrn").string(); }

    std::filesystem::path ruta =
        std::filesystem::temp_directory_path() / ("medir_tamanos_" + std::to_string(getpid()));
};

/// Hace una operación hasta que el historial está lleno: las primeras veces la memoria es nueva y
/// después se reutiliza, y un tamaño grande se repite pocas veces.
template <typename Operacion> void llenarHistorial(Operacion&& operacion) {
    constexpr int kPasosDelHistorial = 15;
    for (int i = 0; i <= kPasosDelHistorial; ++i)
        operacion();
}

int filasDe(const benchmark::State& estado) {
    return static_cast<int>(estado.range(0));
}

void insertar_fila(benchmark::State& estado) {
    const auto mesa = mesaDe(filasDe(estado) - 1, true, kTablasQueNoCaben);
    for (auto _ : estado) {
        mesa->editor.insertarFilas(0, 1);
        estado.PauseTiming();
        mesa->editor.deshacer();
        estado.ResumeTiming();
    }
}

void ordenar(benchmark::State& estado, bool conFormulas) {
    const auto mesa = mesaDe(filasDe(estado), conFormulas);
    mesa->seleccionar(filasDe(estado), conFormulas ? kNumeros + kFormulas : kNumeros);
    bool ascendente = true;
    const auto ordenarUnaVez = [&] {
        mesa->editor.ordenarSeleccion(ascendente);
        ascendente = !ascendente;
    };
    llenarHistorial(ordenarUnaVez);
    for (auto _ : estado)
        ordenarUnaVez();
}

void pegar_texto(benchmark::State& estado) {
    std::string texto;
    for (int i = 0; i < filasDe(estado); ++i)
        texto += std::to_string(i * 7919LL % 1000003) + "\n";
    Mesa mesa;
    mesa.motor.establecerCelda(0, 0, 1, "=SUMA(A1:A65536)");
    mesa.editor.seleccionar(0, 0);
    llenarHistorial([&] { mesa.editor.pegarTSV(texto); });
    for (auto _ : estado)
        mesa.editor.pegarTSV(texto);
}

void copiar_texto(benchmark::State& estado) {
    const auto mesa = mesaDe(filasDe(estado), false);
    mesa->seleccionar(filasDe(estado), kNumeros);
    for (auto _ : estado)
        benchmark::DoNotOptimize(mesa->editor.copiarTSV());
}

void dar_estilo(benchmark::State& estado) {
    const auto mesa = mesaDe(filasDe(estado), false);
    mesa->seleccionar(filasDe(estado), kNumeros);
    llenarHistorial([&] { mesa->editor.alternarNegrita(); });
    for (auto _ : estado)
        mesa->editor.alternarNegrita();
}

void deshacer_borrado(benchmark::State& estado) {
    const auto mesa = mesaDe(filasDe(estado), true, kTablasQueNoCaben);
    mesa->seleccionar(filasDe(estado), 1);
    for (auto _ : estado) {
        mesa->editor.borrarSeleccion();
        mesa->editor.deshacer();
    }
}

void guardar(benchmark::State& estado) {
    const Carpeta carpeta;
    const auto mesa = mesaDe(filasDe(estado), true, kTablasQueNoCaben);
    for (auto _ : estado)
        nucleo::Serializador::guardar(mesa->libro, carpeta.archivo());
}

/// Como en un programa recién arrancado: sin la memoria que deja el libro anterior, de la que solo
/// se guarda lo que ocupa un libro pequeño.
void abrir(benchmark::State& estado) {
    constexpr int kFilasQueLlenanLoGuardado =
        static_cast<int>(nucleo::ReservaBloques::kVaciosGuardados * nucleo::ReservaBloques::kTrozo /
                         (kNumeros * sizeof(nucleo::Celda))) +
        1;
    const Carpeta carpeta;
    nucleo::Serializador::guardar(mesaDe(filasDe(estado), true)->libro, carpeta.archivo());
    for (auto _ : estado) {
        estado.PauseTiming();
        const auto ocupante = mesaDe(kFilasQueLlenanLoGuardado, false);
        {
            Mesa mesa;
            estado.ResumeTiming();
            nucleo::Serializador::cargar(carpeta.archivo(), mesa.libro);
            mesa.motor.recalcularTodo();
            estado.PauseTiming();
        }
        estado.ResumeTiming();
    }
}

BENCHMARK(insertar_fila)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK_CAPTURE(ordenar, numeros, false)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK_CAPTURE(ordenar, formulas, true)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(pegar_texto)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(copiar_texto)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(dar_estilo)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(deshacer_borrado)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(guardar)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);
BENCHMARK(abrir)->RangeMultiplier(2)->Range(kFilas / 16, kFilas);

} // namespace

int main(int argc, char** argv) {
    // Lo que tarda el sistema en dar páginas nuevas solo lo pagan los tamaños grandes, que las
    // devuelven al acabar cada vez: aquí no se devuelven, y crece solo el trabajo.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    ReporteExponentes reporte;
    benchmark::RunSpecifiedBenchmarks(&reporte);
    return reporte.peor() <= kExponenteMaximo ? 0 : 1;
}
