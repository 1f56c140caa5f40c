#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/limites.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>

#include "bench/exponentes.h"

// Cuánto cuesta recalcular según la forma de las dependencias. El argumento de cada medida es el
// número de filas o de fórmulas; se toma doblándolo para ver con qué exponente crece el tiempo.

namespace {

/// Un libro de una hoja con su motor.
struct Mesa {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};

    void poner(int fila, int col, const std::string& texto) {
        motor.establecerCelda(0, fila, col, texto);
    }
};

using Preparar = void (*)(Mesa&, int);

std::unique_ptr<Mesa> mesaCon(Preparar preparar, int tamano) {
    auto mesa = std::make_unique<Mesa>();
    const motor_formulas::Motor::Lote lote(mesa->motor);
    preparar(*mesa, tamano);
    return mesa;
}

template <typename... Trozos> std::string unir(const Trozos&... trozos) {
    std::string texto;
    (texto.append(trozos), ...);
    return texto;
}

std::string ref(int fila, int col) {
    return nucleo::nombreRef(fila, col);
}

/// Valores que no caen en orden, siempre los mismos.
int revuelto(int i, int modulo) {
    return static_cast<int>((static_cast<std::uint64_t>(i) * 2654435761ULL) %
                            static_cast<std::uint64_t>(modulo));
}

void cadena(Mesa& mesa, int filas) {
    mesa.poner(0, 0, "1");
    for (int fila = 1; fila < filas; ++fila)
        mesa.poner(fila, 0, unir("=", ref(fila - 1, 0), "+1"));
}

/// La misma cadena de abajo arriba: cada fórmula lee una que viene después.
void cadenaInversa(Mesa& mesa, int filas) {
    mesa.poner(filas - 1, 0, "1");
    for (int fila = 0; fila < filas - 1; ++fila)
        mesa.poner(fila, 0, unir("=", ref(fila + 1, 0), "+1"));
}

/// Cinco números y cinco fórmulas de una fila, desde una columna.
void filaDeTabla(Mesa& mesa, int fila, int desde) {
    const auto c = [=](int col) { return ref(fila, desde + col); };
    for (int col = 0; col < 5; ++col)
        mesa.poner(fila, desde + col, unir(std::to_string(revuelto(fila * 5 + col, 10007)), ",25"));
    mesa.poner(fila, desde + 5, unir("=", c(0), "+", c(1), "*2"));
    mesa.poner(fila, desde + 6, unir("=", c(2), "*", c(3), "-", c(5)));
    mesa.poner(fila, desde + 7, unir("=SI(", c(5), ">", c(4), ";", c(5), ";", c(4), ")"));
    mesa.poner(fila, desde + 8, unir("=REDONDEAR(", c(6), "*0,21;2)"));
    mesa.poner(fila, desde + 9, unir("=", c(7), "+", c(8), "*3"));
}

/// Cuatro tablas, una al lado de otra: ni las más cortas caben en la memoria caché, y lo que crece
/// es el trabajo y no lo que cuesta salirse de ella. Las más largas tienen 2.600.000 celdas.
void tablas(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila) {
        for (int desde = 0; desde < 40; desde += 10)
            filaDeTabla(mesa, fila, desde);
    }
}

/// Sumas sobre ventanas de una columna y cuentas y sumas condicionales sobre toda ella.
void ventanas(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila) {
        mesa.poner(fila, 0, std::to_string(revuelto(fila, 1009)));
        mesa.poner(fila, 1, unir(std::to_string(revuelto(fila + 7, 997)), ",5"));
    }
    const int alto = filas / 2;
    for (int i = 0; i < filas / 10; ++i) {
        const int desde = revuelto(i, filas - alto);
        mesa.poner(i, 3, unir("=SUMA(", ref(desde, 0), ":", ref(desde + alto - 1, 0), ")"));
    }
    const std::string columna = unir("A1:", ref(filas - 1, 0));
    for (int i = 0; i < filas / 50; ++i) {
        const std::string criterio = unir("\">", std::to_string(i * 5), "\"");
        mesa.poner(i, 4, unir("=CONTAR.SI(", columna, ";", criterio, ")"));
        mesa.poner(i, 5,
                   unir("=SUMAR.SI(", columna, ";", criterio, ";B1:", ref(filas - 1, 1), ")"));
    }
}

/// Tantas búsquedas exactas y ordenadas como filas tiene la tabla.
void busquedas(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila) {
        mesa.poner(fila, 0, std::to_string(fila * 3));
        mesa.poner(fila, 1, std::to_string(revuelto(fila, 100003)));
    }
    const std::string hasta = unir("$A$1:$B$", std::to_string(filas));
    for (int fila = 0; fila < filas; ++fila) {
        const std::string buscado = std::to_string(revuelto(fila, filas) * 3);
        mesa.poner(fila, 3, unir("=BUSCARV(", buscado, ";", hasta, ";2;FALSO)"));
        mesa.poner(fila, 4, unir("=BUSCARV(", buscado, ";", hasta, ";2;VERDADERO)"));
    }
}

void busquedasDeTextos(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila) {
        mesa.poner(fila, 0, unir("Artículo ", std::to_string(revuelto(fila, 1000003))));
        mesa.poner(fila, 1, std::to_string(fila));
    }
    const std::string hasta = unir("$A$1:$B$", std::to_string(filas));
    for (int fila = 0; fila < filas; ++fila)
        mesa.poner(fila, 3, unir("=BUSCARV(", ref(filas - 1 - fila, 0), ";", hasta, ";2;FALSO)"));
}

void totalesAcumulados(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila) {
        mesa.poner(fila, 0, unir(std::to_string(revuelto(fila, 1009)), ",1"));
        mesa.poner(fila, 1, unir("=SUMA(A$1:A", std::to_string(fila + 1), ")"));
    }
}

/// Totales acumulados de una columna que a su vez se calcula.
void acumuladosDeFormulas(Mesa& mesa, int filas) {
    mesa.poner(0, 0, "1");
    for (int fila = 0; fila < filas; ++fila) {
        if (fila > 0)
            mesa.poner(fila, 0, unir("=", ref(fila - 1, 0), "*1,0001"));
        mesa.poner(fila, 1, unir("=SUMA(A$1:A", std::to_string(fila + 1), ")"));
    }
}

void numerosBajoUnaSuma(Mesa& mesa, int filas) {
    for (int fila = 0; fila < filas; ++fila)
        mesa.poner(fila, 0, std::to_string(fila));
    mesa.poner(0, 1, unir("=SUMA(A1:", ref(filas - 1, 0), ")"));
}

/// Números por toda la hoja y una fórmula que lee uno.
void numerosYUnLector(Mesa& mesa, int celdas) {
    constexpr int kFilasPorColumna = 50000;
    for (int i = 0; i < celdas; ++i)
        mesa.poner(i % kFilasPorColumna, i / kFilasPorColumna, std::to_string(i));
    mesa.poner(0, 50, "=A1*2");
}

void recalcularTodo(benchmark::State& estado, Preparar preparar) {
    const auto mesa = mesaCon(preparar, static_cast<int>(estado.range(0)));
    for (auto _ : estado)
        mesa->motor.recalcularTodo();
}

void cambiar(benchmark::State& estado, Preparar preparar, int filaDividida) {
    const auto filas = static_cast<int>(estado.range(0));
    const auto mesa = mesaCon(preparar, filas);
    const int fila = filaDividida == 0 ? 0 : filas / filaDividida;
    int valor = 0;
    for (auto _ : estado)
        mesa->poner(fila, 0, std::to_string(++valor));
}

/// Escribe la primera celda de cada libro: todo lo que depende de ella se recalcula.
void cambiarElPrimero(benchmark::State& estado, Preparar preparar) {
    cambiar(estado, preparar, 0);
}
/// Escribe una celda de en medio, que está en todas las ventanas.
void cambiarEnMedio(benchmark::State& estado, Preparar preparar) {
    cambiar(estado, preparar, 2);
}

void pegar(benchmark::State& estado, Preparar preparar) {
    const auto filas = static_cast<int>(estado.range(0));
    const auto mesa = mesaCon(preparar, filas);
    int vuelta = 0;
    for (auto _ : estado) {
        ++vuelta;
        const motor_formulas::Motor::Lote lote(mesa->motor);
        for (int fila = 0; fila < filas; ++fila)
            mesa->poner(fila, 0, std::to_string(fila + vuelta));
    }
}

void insertarFila(benchmark::State& estado, Preparar preparar) {
    const auto mesa = mesaCon(preparar, static_cast<int>(estado.range(0)));
    for (auto _ : estado) {
        mesa->libro.hojas[0]->celdas.desplazarFilas(0, 1);
        mesa->motor.reescribirTrasEstructura("Hoja 1", true, 0, 1);
        estado.PauseTiming();
        mesa->libro.hojas[0]->celdas.desplazarFilas(0, -1);
        mesa->motor.reescribirTrasEstructura("Hoja 1", true, 0, -1);
        estado.ResumeTiming();
    }
}

void registrar(const char* nombre, void (*trabajo)(benchmark::State&, Preparar), Preparar preparar,
               int mayor) {
    auto* const medida = benchmark::RegisterBenchmark(nombre, trabajo, preparar);
    for (int veces = 16; veces >= 1; veces /= 2)
        medida->Arg(mayor / veces);
    medida->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    registrar("cadena/todo", recalcularTodo, cadena, 65536);
    registrar("cadena/primero", cambiarElPrimero, cadena, 65536);
    registrar("cadena_inversa/todo", recalcularTodo, cadenaInversa, 65536);
    registrar("tablas/todo", recalcularTodo, tablas, 65536);
    registrar("tablas/insertar_fila", insertarFila, tablas, 65535);
    registrar("busquedas/todo", recalcularTodo, busquedas, 10000);
    registrar("busquedas_textos/todo", recalcularTodo, busquedasDeTextos, 10000);
    registrar("acumulados/todo", recalcularTodo, totalesAcumulados, 5000);
    registrar("acumulados/primero", cambiarElPrimero, totalesAcumulados, 5000);
    registrar("acumulados_formulas/todo", recalcularTodo, acumuladosDeFormulas, 5000);
    registrar("acumulados_formulas/primero", cambiarElPrimero, acumuladosDeFormulas, 5000);
    registrar("bajo_suma/pegar", pegar, numerosBajoUnaSuma, 65536);
    registrar("un_lector/cambiar", cambiarElPrimero, numerosYUnLector, 1000000);
    // Aquí el trabajo es el producto de fórmulas y ventanas: su exponente natural es 2.
    registrar("cuadrado/ventanas/todo", recalcularTodo, ventanas, 10000);
    registrar("cuadrado/ventanas/en_medio", cambiarEnMedio, ventanas, 10000);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    ReporteExponentes reporte;
    benchmark::RunSpecifiedBenchmarks(&reporte);
    return reporte.peor() <= kExponenteMaximo ? 0 : 1;
}
