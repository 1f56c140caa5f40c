// Cuánto tarda y cuánta memoria pide, en el peor caso, cargar y calcular un libro con un campo
// cambiado por un valor extremo o cortado en un byte; lo que se deja cargar se usa como lo usaría
// una persona.
//
//     medir_confianza [libro.mrn …]
//
// Sin argumentos muta los dieciséis libros de referencia de las pruebas. Los libros grandes se
// muestrean a pasos iguales. Tiempos de procesador; la última línea dice si se cumplen las cotas.

#include "formula/motor.h"
#include "model/bloque_celdas.h"
#include "tests/comun/memoria.h"
#include "tests/comun/plano_archivo.h"
#include "tests/confianza/libro_usado.h"
#include "tests/model/libros_ejemplo.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr double kMaximoMilisegundos = 100;
constexpr double kMaximoMegas = 64;
constexpr std::size_t kMaximoBytesPorLibro = std::size_t{400}
                                             << 20; ///< bytes que se cargan en total

double milisegundosDeProcesador() {
    timespec ahora = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ahora);
    return static_cast<double>(ahora.tv_sec) * 1e3 + static_cast<double>(ahora.tv_nsec) / 1e6;
}

/// Bytes de los bloques llenos de celdas, que no pasan por `operator new`.
double enReserva() {
    return static_cast<double>(nucleo::BloqueCeldas<6>::reservaBloques().ocupados());
}

struct Peor {
    double valor = 0;
    std::string que = "nada";

    void ver(double otro, const std::string& otroQue) {
        if (otro > valor) {
            valor = otro;
            que = otroQue;
        }
    }
};

struct Cuentas {
    std::size_t probados = 0;
    std::size_t cargados = 0;
    std::size_t defectos = 0;
    Peor carga;   ///< ms
    Peor calculo; ///< ms, recalcular lo cargado
    Peor memoria; ///< MiB por encima del peso del archivo, con el cálculo
    Peor uso;     ///< ms de recorrerlo, editarlo, deshacer y guardarlo
};

void probar(const std::string& bytes, const std::string& que, Cuentas& cuentas) {
    ++cuentas.probados;
    nucleo::Libro libro;
    bool cargado = false;
    {
        const prueba::MemoriaPedida memoria;
        const double inicio = milisegundosDeProcesador();
        cargado = prueba::cargarBytes(bytes, libro) == nucleo::kArchivoBien;
        const double fin = milisegundosDeProcesador();
        cuentas.carga.ver(fin - inicio, que);
        if (cargado)
            motor_formulas::Motor(libro).recalcularTodo();
        cuentas.calculo.ver(milisegundosDeProcesador() - fin, que);
        cuentas.memoria.ver((static_cast<double>(memoria.pico()) + enReserva() -
                             static_cast<double>(bytes.size())) /
                                (1 << 20),
                            que);
    }
    if (!cargado)
        return;
    ++cuentas.cargados;
    const double inicio = milisegundosDeProcesador();
    const std::string defecto = prueba::usarLibro(libro);
    cuentas.uso.ver(milisegundosDeProcesador() - inicio, que);
    if (!defecto.empty()) {
        ++cuentas.defectos;
        std::printf("    %s: %s\n", que.c_str(), defecto.c_str());
    }
}

Cuentas mutar(const std::string& bueno) {
    Cuentas cuentas;
    const std::size_t veces = std::max<std::size_t>(kMaximoBytesPorLibro / bueno.size() / 2, 40);
    const std::vector<prueba::Campo> campos = prueba::Plano(bueno).campos;
    const std::size_t pasoCampo = std::max<std::size_t>(campos.size() * 8 / veces, 1);
    for (std::size_t i = 0; i < campos.size(); i += pasoCampo) {
        for (const std::uint64_t valor : prueba::valoresExtremos(campos[i]))
            probar(prueba::conValor(bueno, campos[i], valor),
                   std::string(campos[i].que) + " en " + std::to_string(campos[i].donde) + " = " +
                       std::to_string(valor),
                   cuentas);
    }
    const std::size_t pasoCorte = std::max<std::size_t>(bueno.size() / veces, 1);
    for (std::size_t largo = 0; largo < bueno.size(); largo += pasoCorte)
        probar(bueno.substr(0, largo), "cortado en " + std::to_string(largo), cuentas);
    return cuentas;
}

bool esLibro(const std::string& bytes) {
    nucleo::Libro libro;
    return prueba::cargarBytes(bytes, libro) == nucleo::kArchivoBien;
}

bool informar(const std::string& nombre, const std::string& bueno) {
    const Cuentas c = mutar(bueno);
    std::printf("%s, %zu bytes: %zu archivos, %zu se cargan, %zu con defectos\n", nombre.c_str(),
                bueno.size(), c.probados, c.cargados, c.defectos);
    std::printf("  cargar   %8.2f ms   %s\n", c.carga.valor, c.carga.que.c_str());
    std::printf("  calcular %8.2f ms   %s\n", c.calculo.valor, c.calculo.que.c_str());
    std::printf("  memoria  %8.2f MiB  %s\n", c.memoria.valor, c.memoria.que.c_str());
    std::printf("  usar     %8.2f ms   %s\n", c.uso.valor, c.uso.que.c_str());
    std::fflush(stdout);
    return c.defectos == 0 && c.carga.valor <= kMaximoMilisegundos &&
           c.memoria.valor <= kMaximoMegas;
}

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication aplicacion(argc, argv);
    bool bien = true;
    if (argc < 2) {
        for (int n = 0; n < prueba::kLibrosDeReferencia; ++n)
            bien = informar("referencia " + std::to_string(n),
                            prueba::guardarEnBytes(prueba::libroDeReferencia(n))) &&
                   bien;
    }
    for (int i = 1; i < argc; ++i) {
        std::ifstream archivo(argv[i], std::ios::binary);
        const std::string bueno{std::istreambuf_iterator<char>(archivo), {}};
        if (!esLibro(bueno)) {
            std::fprintf(stderr, "%s no es un libro\n", argv[i]);
            return 1;
        }
        bien = informar(argv[i], bueno) && bien;
    }
    std::puts(bien ? "todo dentro de las cotas" : "hay cotas que no se cumplen");
    return bien ? 0 : 1;
}
