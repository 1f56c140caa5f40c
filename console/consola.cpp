#include "console/consola.h"

#include "console/argumentos.h"
#include "console/ayuda.h"
#include "console/orden.h"
#include "console/texto_terminal.h"

#include <algorithm>
#include <ostream>

namespace consola {

namespace {

Resultado malUso(std::string mensaje) {
    return {kMalUso, std::move(mensaje) + "; vea marnel-consola --ayuda"};
}

Resultado hacerOrden(const Orden& orden, std::span<const std::string> textos, Terminal& terminal) {
    Argumentos argumentos;
    if (std::string error = argumentos.leer(textos, orden.opciones); !error.empty()) {
        return malUso(std::move(error));
    }
    const std::size_t sueltos = argumentos.sueltos().size();
    if (sueltos < orden.minimo || sueltos > orden.maximo) {
        const std::string uso =
            std::string(orden.nombre) + (orden.uso.empty() ? "" : " " + std::string(orden.uso));
        return malUso((sueltos < orden.minimo ? "faltan argumentos: " : "sobran argumentos: ") +
                      uso);
    }
    return orden.hacer(argumentos, terminal);
}

Resultado atender(const std::vector<std::string>& argumentos, Terminal& terminal) {
    if (argumentos.empty()) {
        return malUso("falta la orden");
    }
    const std::string& primero = argumentos.front();
    if (primero == "--version") {
        terminal.salida << "marnel-consola " << MARNEL_VERSION << '\n';
        return {};
    }
    if (primero == "--ayuda" || primero == "-h") {
        escribirAyuda(terminal.salida);
        return {};
    }
    const auto todas = ordenes();
    const auto orden = std::ranges::find(todas, primero, &Orden::nombre);
    if (orden == todas.end()) {
        return malUso("no hay ninguna orden «" + primero + "»");
    }
    const std::span<const std::string> siguen(argumentos.begin() + 1, argumentos.end());
    if (siguen.size() == 1 && siguen.front() == "--ayuda") {
        escribirAyuda(terminal.salida, *orden);
        return {};
    }
    return hacerOrden(*orden, siguen, terminal);
}

} // namespace

int ejecutar(const std::vector<std::string>& argumentos, std::istream& entrada,
             std::ostream& salida, std::ostream& errores, bool interactiva) {
    Terminal terminal{entrada, salida, errores, interactiva};
    Resultado resultado = atender(argumentos, terminal);
    salida.flush();
    if (resultado.estado == kBien && !salida.good()) {
        resultado = {kNoSeEscribe, "no se puede escribir en la salida estándar"};
    }
    if (!resultado.mensaje.empty()) {
        errores << "marnel-consola: " << paraTerminal(resultado.mensaje) << '\n';
    }
    return resultado.estado;
}

} // namespace consola
