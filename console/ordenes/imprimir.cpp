#include "console/ordenes/ordenes.h"
#include "console/proceso.h"
#include "console/progreso.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace consola {

namespace {

/// Dibujar necesita Qt, y este programa arranca sin él: lo hace otro, que está donde lo instala el
/// paquete o donde lo deja la construcción.
std::string rutaDeLaImpresora() {
    std::error_code error;
    const auto propio = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* camino : {MARNEL_IMPRESORA_INSTALADA, "../printing/marnel-impresora"}) {
        const auto ruta = propio / camino;
        if (std::filesystem::exists(ruta, error)) {
            return ruta.lexically_normal().string();
        }
    }
    return {};
}

std::vector<std::string> argumentosDe(const Argumentos& argumentos) {
    constexpr std::array<std::string_view, 3> kConValor{"--hoja", "--rango", "--papel"};
    constexpr std::array<std::string_view, 4> kSinValor{"--todas", "--horizontal", "--encabezados",
                                                        "--ajustar"};
    std::vector<std::string> pasados;
    for (const std::string_view opcion : kConValor) {
        if (const std::string* valor = argumentos.valor(opcion)) {
            pasados.emplace_back(opcion);
            pasados.push_back(*valor);
        }
    }
    for (const std::string_view opcion : kSinValor) {
        if (argumentos.tiene(opcion)) {
            pasados.emplace_back(opcion);
        }
    }
    pasados.emplace_back("--");
    pasados.insert(pasados.end(), argumentos.sueltos().begin(), argumentos.sueltos().end());
    return pasados;
}

/// Lo que dijo la impresora, en una línea y sin su nombre delante.
std::string mensajeDe(std::string_view errores) {
    constexpr std::string_view kNombre = "marnel-impresora: ";
    if (errores.starts_with(kNombre)) {
        errores.remove_prefix(kNombre.size());
    }
    return std::string(errores.substr(0, errores.find('\n')));
}

} // namespace

Resultado imprimir(const Argumentos& argumentos, Terminal& terminal) {
    const std::string impresora = rutaDeLaImpresora();
    if (impresora.empty()) {
        return {kSinPrograma, "falta el programa marnel-impresora: vuelva a instalar Marnel"};
    }
    Acabado acabado;
    {
        const Progreso progreso(terminal, "Imprimiendo");
        acabado = llamarPrograma(impresora, argumentosDe(argumentos));
    }
    if (acabado.estado < kBien || acabado.estado > kNoSeEscribe) {
        return {kSinPrograma, "no se ha podido imprimir: marnel-impresora no ha terminado"};
    }
    return {static_cast<Estado>(acabado.estado), mensajeDe(acabado.errores)};
}

} // namespace consola
