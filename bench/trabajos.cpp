/// Mide en Marnel los trabajos que `bench/comparar` reparte entre los programas. Recibe un libro en
/// texto tabulado y escribe una línea "trabajo milisegundos" por repetición.

#include "editing/editor.h"
#include "formula/motor.h"
#include "model/libro.h"
#include "model/serializador.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

struct Banco {
    nucleo::Libro libro;
    motor_formulas::Motor motor{libro};
    editor::Editor ed{libro, motor};
};

double milisegundos(const std::function<void()>& trabajo) {
    const auto inicio = std::chrono::steady_clock::now();
    trabajo();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - inicio)
        .count();
}

/// Memoria residente del proceso, en MB.
double residente() {
    std::ifstream estado("/proc/self/statm");
    long total = 0;
    long paginas = 0;
    estado >> total >> paginas;
    return static_cast<double>(paginas) * 4096 / 1e6;
}

void leer(const std::string& ruta, Banco& banco) {
    std::ifstream entrada(ruta);
    const motor_formulas::Motor::Lote lote(banco.motor);
    std::string linea;
    for (int fila = 0; std::getline(entrada, linea); ++fila) {
        std::istringstream campos(linea);
        std::string campo;
        for (int col = 0; std::getline(campos, campo, '\t'); ++col)
            banco.motor.establecerCelda(0, fila, col, campo);
    }
}

std::string texto(int numero) {
    return std::to_string(numero);
}

using Trabajo = std::function<void(Banco&, const std::string&, int)>;

void anotar(const char* nombre, double valor) {
    std::cout << nombre << ' ' << valor << '\n';
}

const std::map<std::string, Trabajo>& trabajos() {
    static const std::map<std::string, Trabajo> tabla = {
        {"todo", [](Banco& b, const std::string&,
                    int) { anotar("todo", milisegundos([&] { b.motor.recalcularTodo(); })); }},
        {"primera",
         [](Banco& b, const std::string&, int i) {
             anotar("primera",
                    milisegundos([&] { b.motor.establecerCelda(0, 0, 0, texto(i + 2)); }));
         }},
        {"medio",
         [](Banco& b, const std::string&, int i) {
             anotar("medio",
                    milisegundos([&] { b.motor.establecerCelda(0, 5000, 0, texto(i + 2)); }));
         }},
        {"editar",
         [](Banco& b, const std::string&, int i) {
             if (i == 0)
                 b.motor.establecerCelda(0, 0, 20, "=A1*2");
             anotar("editar",
                    milisegundos([&] { b.ed.establecerContenido(0, 0, texto(i + 1000)); }));
         }},
        {"insertar",
         [](Banco& b, const std::string&, int) {
             anotar("insertar", milisegundos([&] { b.ed.insertarFilas(0, 1); }));
         }},
        {"ordenar",
         [](Banco& b, const std::string&, int i) {
             const nucleo::Hoja& hoja = *b.libro.hojas[0];
             b.ed.seleccionar(0, 0);
             b.ed.extender(hoja.ultimaFilaUsada(), hoja.ultimaColUsada());
             anotar("ordenar", milisegundos([&] { b.ed.ordenarSeleccion(i % 2 == 0); }));
         }},
        {"pegar",
         [](Banco& b, const std::string&, int i) {
             std::string filas;
             for (int fila = 0; fila < 65536; ++fila)
                 filas += texto(fila * 7 + i) + "\n";
             b.ed.seleccionar(0, 0);
             anotar("pegar", milisegundos([&] { b.ed.pegarTSV(filas); }));
         }},
        {"archivo",
         [](Banco& b, const std::string& ruta, int) {
             const std::string archivo = ruta + ".mrn";
             anotar("guardar",
                    milisegundos([&] { nucleo::Serializador::guardar(b.libro, archivo); }));
             auto otro = std::make_unique<Banco>();
             anotar("abrir", milisegundos([&] {
                        nucleo::Serializador::cargar(archivo, otro->libro);
                        otro->motor.recalcularTodo();
                    }));
         }},
    };
    return tabla;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::cerr << "uso: marnel_trabajos LIBRO.tsv VECES TRABAJO...\n";
        return 1;
    }
    const std::string ruta = argv[1];
    const int veces = std::atoi(argv[2]);
    if (std::string(argv[3]) == "memoria") {
        // Un proceso recién arrancado que solo abre el libro: lo que crece es lo que el libro pesa.
        Banco banco;
        const double antes = residente();
        if (nucleo::Serializador::cargar(ruta + ".mrn", banco.libro) != nucleo::kArchivoBien)
            return 2;
        banco.motor.recalcularTodo();
        anotar("memoria", residente() - antes);
        return 0;
    }
    Banco banco;
    leer(ruta, banco);
    for (int k = 3; k < argc; ++k) {
        const auto trabajo = trabajos().find(argv[k]);
        if (trabajo == trabajos().end()) {
            std::cerr << "no hay ningún trabajo \"" << argv[k] << "\"\n";
            return 1;
        }
        for (int i = 0; i < veces; ++i)
            trabajo->second(banco, ruta, i);
    }
    return 0;
}
