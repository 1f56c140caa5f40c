#include "formula/functions/argumentos.h"
#include "formula/functions/caracteres.h"
#include "formula/functions/criterio.h"
#include "formula/functions/familias.h"

#include <array>
#include <cmath>
#include <string>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

Valor concatenar(std::vector<Arg>& args, Evaluador& evaluador) {
    std::string unido;
    ErrorCelda error = ErrorCelda::ValorInvalido; // el de un texto demasiado largo
    const auto anadir = [&](std::int64_t, const VistaValor& valor) {
        if (valor.tipo == TipoValor::Error) {
            error = valor.error;
            return false;
        }
        if (valor.tipo == TipoValor::Texto)
            unido += valor.texto;
        else
            unido += convertirEnTexto(valor);
        return unido.size() <= evaluador.textoMaximo;
    };
    for (const Arg& arg : args) {
        if (!(arg.esRango ? recorrerCeldas(arg, anadir) : anadir(0, vistaDe(arg.valor))))
            return Valor::deError(error);
    }
    return Valor::deTexto(std::move(unido));
}

enum class Extremo { Izquierda, Derecha };

Valor recortar(const std::vector<Arg>& args, Extremo extremo) {
    LectorArgs lector(args);
    std::string texto = lector.texto(0);
    const double pedidos = lector.numero(1, 1);
    if (lector.fallo())
        return lector.error();
    if (pedidos < 0 || std::isnan(pedidos))
        return Valor::deError(ErrorCelda::ValorInvalido);
    const std::size_t total = contarCaracteres(texto);
    if (pedidos >= static_cast<double>(total))
        return Valor::deTexto(std::move(texto));
    const auto cuantos = static_cast<std::size_t>(pedidos);
    if (extremo == Extremo::Izquierda)
        return Valor::deTexto(texto.substr(0, finDeCaracteres(texto, cuantos)));
    return Valor::deTexto(texto.substr(finDeCaracteres(texto, total - cuantos)));
}

Valor izquierda(std::vector<Arg>& args, Evaluador&) {
    return recortar(args, Extremo::Izquierda);
}

Valor derecha(std::vector<Arg>& args, Evaluador&) {
    return recortar(args, Extremo::Derecha);
}

Valor largo(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const std::string texto = lector.texto(0);
    if (lector.fallo())
        return lector.error();
    return Valor::deNumero(static_cast<double>(contarCaracteres(texto)));
}

Valor mayusculas(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const std::string texto = lector.texto(0);
    return lector.fallo() ? lector.error() : Valor::deTexto(cambiarCaso(texto, true));
}

Valor minusculas(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const std::string texto = lector.texto(0);
    return lector.fallo() ? lector.error() : Valor::deTexto(cambiarCaso(texto, false));
}

Valor espacios(std::vector<Arg>& args, Evaluador&) {
    LectorArgs lector(args);
    const std::string texto = lector.texto(0);
    if (lector.fallo())
        return lector.error();
    std::string limpio;
    for (const char letra : texto) {
        if (letra != ' ' || (!limpio.empty() && limpio.back() != ' '))
            limpio += letra;
    }
    if (!limpio.empty() && limpio.back() == ' ')
        limpio.pop_back();
    return Valor::deTexto(std::move(limpio));
}

constexpr std::string_view kFamilia = "texto";

constexpr std::array kFunciones = {
    Funcion{"CONCATENAR",
            kFamilia,
            "valor o rango; …",
            "Une los textos de todos los valores.",
            "=CONCATENAR(A2;\": \";B2;\" kg\")",
            "Pera: 12 kg",
            {},
            concatenar},
    Funcion{"IZQUIERDA",
            kFamilia,
            "texto; [cuántos]",
            "Primeros caracteres de un texto; uno si no se dice cuántos.",
            "=IZQUIERDA(\"ñandú\";2)",
            "ña",
            {1, 2},
            izquierda},
    Funcion{"DERECHA",
            kFamilia,
            "texto; [cuántos]",
            "Últimos caracteres de un texto; uno si no se dice cuántos.",
            "=DERECHA(\"ñandú\";3)",
            "ndú",
            {1, 2},
            derecha},
    Funcion{"LARGO",
            kFamilia,
            "texto",
            "Cuántos caracteres tiene un texto.",
            "=LARGO(\"año\")",
            "3",
            {1, 1},
            largo},
    Funcion{"MAYUSC",
            kFamilia,
            "texto",
            "El texto en mayúsculas, también las letras con tilde.",
            "=MAYUSC(\"acción\")",
            "ACCIÓN",
            {1, 1},
            mayusculas},
    Funcion{"MINUSC",
            kFamilia,
            "texto",
            "El texto en minúsculas, también las letras con tilde.",
            "=MINUSC(\"ÑANDÚ\")",
            "ñandú",
            {1, 1},
            minusculas},
    Funcion{"ESPACIOS",
            kFamilia,
            "texto",
            "Quita los espacios de los extremos y deja uno solo entre palabras.",
            "=ESPACIOS(\"  hola   mundo \")",
            "hola mundo",
            {1, 1},
            espacios},
};

} // namespace

std::span<const Funcion> funcionesTexto() {
    return kFunciones;
}

} // namespace motor_formulas
