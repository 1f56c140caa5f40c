// Cuánto tarda en pintarse un fotograma entero, sin pantalla: a 1920 × 1080 y a 3840 × 2160 con
// zoom 50, arriba y abajo de la hoja, con tamaños propios en todas las filas y con 100.000
// fusiones.

#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/renderizador.h"
#include "rendering/sustitutos.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

namespace {

enum Contenido { Numeros, TextosCortos, TextosCortados, Mezcla };
enum Carga { Llana, Alturas, Fusiones, AlturasYFusiones };
enum Sitio { Arriba, Abajo };

constexpr int kColumnasLlenas = 100;
constexpr int kFilasLlenas = 700; ///< por cada extremo de la hoja: más de las que caben en la vista

void escribir(nucleo::Hoja& hoja, int fila, int col, Contenido contenido) {
    nucleo::Celda& celda = hoja.celdaMut(fila, col);
    const int semilla = fila * 31 + col * 7;
    const int clase = contenido == Mezcla ? semilla % 4 : static_cast<int>(contenido);
    if (clase == Numeros || clase == 3) {
        celda.tipo = nucleo::TipoCelda::Numero;
        celda.numero = semilla * 1.25;
        celda.formato.numero =
            clase == 3 ? nucleo::FormatoNumero::Moneda : nucleo::FormatoNumero::General;
        celda.formato.negrita = clase == 3;
    } else {
        celda.tipo = nucleo::TipoCelda::Texto;
        celda.entrada = clase == TextosCortos
                            ? "Año " + std::to_string(semilla)
                            : "Un concepto demasiado largo " + std::to_string(semilla);
    }
    if (contenido == Mezcla && semilla % 5 == 0) {
        celda.formato.colorFondo = 0xFFFFF0D0;
        celda.formato.colorTexto = 0xFF204080;
    }
}

std::unique_ptr<nucleo::Hoja> hojaLlena(Contenido contenido, Carga carga) {
    auto hoja = std::make_unique<nucleo::Hoja>();
    for (int fila = 0; fila < kFilasLlenas; ++fila) {
        for (int col = 0; col < kColumnasLlenas; ++col) {
            escribir(*hoja, fila, col, contenido);
            escribir(*hoja, nucleo::kUltimaFila - fila, col, contenido);
        }
    }
    if (carga == Alturas || carga == AlturasYFusiones) {
        for (int fila = 0; fila < nucleo::kFilas; ++fila) {
            hoja->altos[fila] = 20 + fila % 9;
        }
    }
    if (carga == Fusiones || carga == AlturasYFusiones) {
        for (int i = 0; i < 100000; ++i) {
            // De dos columnas, repartidas por toda la hoja, la mitad de las celdas de cada fila.
            const int fila = i % nucleo::kFilas;
            const int col = 4 * (i / nucleo::kFilas) + 12 * (i % 7);
            hoja->fusiones.push_back({fila, col, fila, col + 1});
        }
    }
    return hoja;
}

void pintarFotograma(benchmark::State& estado) {
    const bool grande = estado.range(0) != 0;
    const auto hoja =
        hojaLlena(static_cast<Contenido>(estado.range(1)), static_cast<Carga>(estado.range(2)));
    const bool abajo = estado.range(3) == Abajo;
    const QSize vista = grande ? QSize(3840, 2160) : QSize(1920, 1080);
    QImage imagen(vista, QImage::Format_ARGB32_Premultiplied);
    const renderizador::Tema tema = renderizador::temaClaro();
    renderizador::Renderizador r;
    r.hoja = hoja.get();
    r.tema = &tema;
    r.zoom = grande ? 0.5 : 1.0;
    if (abajo) {
        r.desplazamientoY = std::max(0, r.yDeFila(nucleo::kFilas) - vista.height());
    }
    const renderizador::SeleccionVista seleccion{3, 1, 9, 4, 3, 1};
    for ([[maybe_unused]] auto vez : estado) {
        QPainter pintor(&imagen);
        r.dibujar(pintor, vista, seleccion);
    }
}

/// Como quien recorre la hoja con la flecha: cada fotograma enseña una fila nueva.
void desplazarFilas(benchmark::State& estado) {
    nucleo::Hoja hoja;
    for (int fila = 0; fila < 50000; ++fila) {
        for (int col = 0; col < 20; ++col) {
            escribir(hoja, fila, col, Mezcla);
        }
    }
    const QSize vista(1920, 1080);
    QImage imagen(vista, QImage::Format_ARGB32_Premultiplied);
    const renderizador::Tema tema = renderizador::temaClaro();
    renderizador::Renderizador r;
    r.hoja = &hoja;
    r.tema = &tema;
    double peor = 0;
    int fila = 0;
    for ([[maybe_unused]] auto vez : estado) {
        const auto inicio = std::chrono::steady_clock::now();
        r.desplazamientoY = fila * nucleo::kAltoPredeterminado;
        fila = (fila + 37) % 49000;
        QPainter pintor(&imagen);
        r.dibujar(pintor, vista, {fila, 3, fila, 3, fila, 3});
        pintor.end();
        const std::chrono::duration<double, std::milli> tardado =
            std::chrono::steady_clock::now() - inicio;
        peor = std::max(peor, tardado.count());
    }
    estado.counters["peor_ms"] = peor;
}

/// Una pregunta de las que hace el ratón al moverse; con `cambia`, tras tocar un tamaño.
void acertarCelda(benchmark::State& estado) {
    const auto hoja = hojaLlena(Numeros, Alturas);
    renderizador::Renderizador r;
    r.hoja = hoja.get();
    r.desplazamientoY = r.yDeFila(nucleo::kFilas) - 1000;
    int fila = 0;
    int col = 0;
    for ([[maybe_unused]] auto vez : estado) {
        if (estado.range(0) != 0) {
            hoja->altos[7] = 30;
        }
        benchmark::DoNotOptimize(r.celdaEnPunto({500, 400}, {1920, 1080}, fila, col));
    }
}

} // namespace

BENCHMARK(pintarFotograma)
    ->ArgNames({"4k50", "contenido", "carga", "abajo"})
    ->ArgsProduct({{0, 1}, {Numeros, TextosCortos, TextosCortados, Mezcla}, {Llana}, {Arriba}})
    ->ArgsProduct({{0, 1}, {Mezcla}, {Llana}, {Abajo}})
    ->ArgsProduct({{0, 1}, {Mezcla}, {Alturas, Fusiones, AlturasYFusiones}, {Arriba, Abajo}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(desplazarFilas)->Unit(benchmark::kMillisecond);
BENCHMARK(acertarCelda)->ArgName("cambia")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication aplicacion(argc, argv);
    renderizador::sustituirFamilias();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
