#include "console/proceso.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace consola {

namespace {

constexpr std::size_t kMaximoErrores = 8192;

/// Lee hasta el final, para que el otro programa no se quede esperando, y guarda el comienzo.
std::string leerTodo(int tuberia) {
    std::string texto;
    std::array<char, 4096> trozo{};
    while (true) {
        const ssize_t leidos = read(tuberia, trozo.data(), trozo.size());
        if (leidos < 0 && errno == EINTR) {
            continue;
        }
        if (leidos <= 0) {
            return texto;
        }
        const std::size_t caben = kMaximoErrores - texto.size();
        texto.append(trozo.data(), std::min(caben, static_cast<std::size_t>(leidos)));
    }
}

int esperar(pid_t proceso) {
    int estado = 0;
    while (waitpid(proceso, &estado, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

} // namespace

Acabado llamarPrograma(const std::string& ruta, const std::vector<std::string>& argumentos) {
    std::array<int, 2> tuberia{};
    if (pipe2(tuberia.data(), O_CLOEXEC) != 0) {
        return {};
    }
    std::vector<char*> argv{const_cast<char*>(ruta.c_str())};
    for (const std::string& argumento : argumentos) {
        argv.push_back(const_cast<char*>(argumento.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t acciones;
    posix_spawn_file_actions_init(&acciones);
    posix_spawn_file_actions_adddup2(&acciones, tuberia[1], STDERR_FILENO);
    pid_t proceso = 0;
    const bool llamado =
        posix_spawn(&proceso, ruta.c_str(), &acciones, nullptr, argv.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&acciones);
    close(tuberia[1]);
    Acabado acabado;
    if (llamado) {
        acabado.errores = leerTodo(tuberia[0]);
        acabado.estado = esperar(proceso);
    }
    close(tuberia[0]);
    return acabado;
}

} // namespace consola
