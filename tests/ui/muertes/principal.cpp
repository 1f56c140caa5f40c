// morir_al_azar SEMILLA VECES: mata el programa tantas veces mientras alguien edita y comprueba
// cada vez lo que queda. Con "--programa SEMILLA [libro]" es el programa que muere: el de siempre,
// con alguien que lo usa dentro.

#include "tests/ui/muertes/conductor.h"
#include "tests/ui/muertes/verdugo.h"
#include "ui/programa.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

int main(int argc, char* argv[]) {
    if (argc >= 3 && std::strcmp(argv[1], "--programa") == 0) {
        pruebas::conducir(std::strtoull(argv[2], nullptr, 10));
        std::vector<char*> argumentos = {argv[0]};
        argumentos.insert(argumentos.end(), argv + 3, argv + argc);
        argumentos.push_back(nullptr);
        return qMain(static_cast<int>(argumentos.size()) - 1, argumentos.data());
    }
    if (argc != 3) {
        std::fprintf(stderr, "uso: %s SEMILLA VECES\n", argv[0]);
        return 2;
    }
    const std::uint64_t semilla = std::strtoull(argv[1], nullptr, 10);
    const long veces = std::strtol(argv[2], nullptr, 10);
    const std::string programa = std::filesystem::read_symlink("/proc/self/exe");
    std::array<std::unique_ptr<pruebas::Verdugo>, 2> verdugos = {
        std::make_unique<pruebas::Verdugo>(programa, 2 * semilla, false),
        std::make_unique<pruebas::Verdugo>(programa, 2 * semilla + 1, true)};
    for (long i = 0; i < veces; ++i) {
        const auto cual = static_cast<std::size_t>(i % 2);
        if (const std::string malo = verdugos.at(cual)->matar(); !malo.empty()) {
            std::printf("semilla %s, muerte %ld: %s\n", argv[1], i + 1, malo.c_str());
            return 1;
        }
    }
    pruebas::Cuenta cuenta = verdugos[0]->cuenta();
    cuenta += verdugos[1]->cuenta();
    std::printf("%d muertes: %d arrancando, %d con la recuperación a medio escribir, %d con el "
                "documento a medio guardar; %d arranques recuperaron el trabajo; 0 defectos\n",
                cuenta.muertes, cuenta.arrancando, cuenta.aMedioEscribir, cuenta.documentosRotos,
                cuenta.recuperaciones);
    return 0;
}
