#include "console/consola.h"

#include <csignal>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv) {
    // Quien lee la salida puede irse antes: se sabe al escribir y se dice con el estado de salida.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    const std::vector<std::string> argumentos(argv + (argc > 0 ? 1 : 0), argv + argc);
    return consola::ejecutar(argumentos, std::cin, std::cout, std::cerr,
                             isatty(STDERR_FILENO) != 0);
}
