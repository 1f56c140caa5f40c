#include "formula/functions/argumentos.h"
#include "formula/functions/bloque.h"
#include "formula/functions/criterio.h"
#include "formula/functions/familias.h"

#include <array>
#include <cmath>
#include <compare>
#include <optional>
#include <string>

namespace motor_formulas {

namespace {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

constexpr std::int64_t kNoEncontrado = -1;

/// El contexto del recálculo, si sabe buscar en la línea mejor que recorriéndola.
ContextoRecalculo* contextoPara(const Linea& linea, const Evaluador& evaluador) {
    const bool sabe = evaluador.contexto != nullptr && linea.vertical() &&
                      evaluador.contexto->conviene(linea.bloque().arg());
    return sabe ? evaluador.contexto : nullptr;
}

/// Última celda, de la clase de lo buscado, antes de la primera que lo rebasa en ese orden. Las de
/// otras clases no cuentan. Un lógico o un vacío no encuentra nada.
std::int64_t buscarOrdenado(const Linea& linea, const VistaValor& buscado, Orden orden,
                            ContextoRecalculo* contexto) {
    if (buscado.tipo != TipoValor::Numero && buscado.tipo != TipoValor::Texto)
        return kNoEncontrado;
    if (contexto != nullptr)
        return contexto->buscarOrdenado(linea.bloque().arg(), linea.cual(), buscado, orden);
    const std::string minusculas = cambiarCaso(buscado.texto, false);
    const auto rebasa = [&](const VistaValor& celda) {
        const std::partial_ordering comparada =
            buscado.tipo == TipoValor::Numero
                ? celda.numero <=> buscado.numero
                : std::partial_ordering(compararEnMinusculas(celda.texto, minusculas));
        return orden == Orden::Ascendente ? std::is_gt(comparada) : std::is_lt(comparada);
    };
    std::int64_t candidata = kNoEncontrado;
    linea.recorrer([&](std::int64_t indice, const VistaValor& celda) {
        if (celda.tipo != buscado.tipo)
            return true;
        if (rebasa(celda))
            return false;
        candidata = indice;
        return true;
    });
    return candidata;
}

/// Primera celda que cumple el criterio que forma lo buscado. Si una vacía lo cumple, también vale
/// el primer hueco entre las celdas que existen.
std::int64_t buscarExacto(const Linea& linea, const VistaValor& buscado,
                          ContextoRecalculo* contexto) {
    const Criterio criterio = Criterio::desdeValor(aValor(buscado));
    if (contexto != nullptr) {
        const std::optional<std::int64_t> encontrada =
            contexto->buscarExacto(linea.bloque().arg(), linea.cual(), criterio);
        if (encontrada)
            return *encontrada;
    }
    const bool valenHuecos = criterio.cumple(VistaValor{});
    std::int64_t siguiente = 0;
    std::int64_t encontrada = kNoEncontrado;
    linea.recorrer([&](std::int64_t indice, const VistaValor& celda) {
        if (valenHuecos && siguiente < indice)
            encontrada = siguiente;
        else if (criterio.cumple(celda))
            encontrada = indice;
        siguiente = indice + 1;
        return encontrada == kNoEncontrado;
    });
    if (encontrada == kNoEncontrado && valenHuecos && siguiente < linea.largo())
        return siguiente;
    return encontrada;
}

/// Número de fila o de columna que da un argumento, truncado y contado desde 0; negativo si no está
/// entre 1 y `cuantas`.
std::int64_t indiceDeNumero(double numero, std::int64_t cuantas) {
    const double truncado = std::trunc(numero);
    if (!(truncado >= 1 && truncado <= static_cast<double>(cuantas)))
        return -1;
    return static_cast<std::int64_t>(truncado) - 1;
}

enum class Sentido { Vertical, Horizontal };

/// BUSCARV, y BUSCARH cambiando filas por columnas.
Valor buscarEnTabla(const std::vector<Arg>& args, Sentido sentido, const Evaluador& evaluador) {
    const bool vertical = sentido == Sentido::Vertical;
    const Bloque tabla(args[1]);
    LectorArgs lector(args);
    const VistaValor buscado = lector.valor(0);
    const double numero = lector.numero(2);
    if (lector.fallo())
        return lector.error();
    const std::int64_t cual = indiceDeNumero(numero, vertical ? tabla.columnas() : tabla.filas());
    if (cual < 0)
        return Valor::deError(ErrorCelda::Ref);
    const bool ordenada = lector.logico(3, true);
    if (lector.fallo())
        return lector.error();
    const Linea claves = vertical ? Linea::columna(tabla, 0) : Linea::fila(tabla, 0);
    ContextoRecalculo* const contexto = contextoPara(claves, evaluador);
    const std::int64_t encontrada =
        ordenada ? buscarOrdenado(claves, buscado, Orden::Ascendente, contexto)
                 : buscarExacto(claves, buscado, contexto);
    if (encontrada == kNoEncontrado)
        return Valor::deError(ErrorCelda::ValorInvalido);
    if (contexto != nullptr)
        return aValor(contexto->valor(tabla.arg(), encontrada, cual));
    return aValor(vertical ? tabla.en(encontrada, cual) : tabla.en(cual, encontrada));
}

Valor buscarV(std::vector<Arg>& args, Evaluador& evaluador) {
    return buscarEnTabla(args, Sentido::Vertical, evaluador);
}

Valor buscarH(std::vector<Arg>& args, Evaluador& evaluador) {
    return buscarEnTabla(args, Sentido::Horizontal, evaluador);
}

Valor indice(std::vector<Arg>& args, Evaluador&) {
    const Bloque matriz(args[0]);
    LectorArgs lector(args);
    double fila = lector.numero(1);
    double columna = lector.numero(2, 1);
    if (lector.fallo())
        return lector.error();
    if (matriz.filas() == 1 && args.size() == 2)
        std::swap(fila, columna);
    const std::int64_t indiceFila = indiceDeNumero(fila, matriz.filas());
    const std::int64_t indiceColumna = indiceDeNumero(columna, matriz.columnas());
    if (indiceFila < 0 || indiceColumna < 0)
        return Valor::deError(ErrorCelda::Ref);
    return aValor(matriz.en(indiceFila, indiceColumna));
}

Valor coincidir(std::vector<Arg>& args, Evaluador& evaluador) {
    const Bloque rango(args[1]);
    LectorArgs lector(args);
    const VistaValor buscado = lector.valor(0);
    if (lector.fallo())
        return lector.error();
    if (rango.filas() != 1 && rango.columnas() != 1)
        return Valor::deError(ErrorCelda::ValorInvalido);
    const double tipo = lector.numero(2, 1);
    if (lector.fallo())
        return lector.error();
    const Linea linea = rango.columnas() == 1 ? Linea::columna(rango, 0) : Linea::fila(rango, 0);
    ContextoRecalculo* const contexto = contextoPara(linea, evaluador);
    std::int64_t encontrada = kNoEncontrado;
    if (tipo > 0)
        encontrada = buscarOrdenado(linea, buscado, Orden::Ascendente, contexto);
    else if (tipo < 0)
        encontrada = buscarOrdenado(linea, buscado, Orden::Descendente, contexto);
    else if (tipo == 0)
        encontrada = buscarExacto(linea, buscado, contexto);
    if (encontrada == kNoEncontrado)
        return Valor::deError(ErrorCelda::ValorInvalido);
    return Valor::deNumero(static_cast<double>(encontrada + 1));
}

constexpr std::string_view kFamilia = "búsqueda";

constexpr std::array kFunciones = {
    Funcion{"BUSCARV",
            kFamilia,
            "valor; tabla; columna; [ordenada]",
            "Busca en la primera columna de una tabla y da otra celda de la fila hallada.",
            "=BUSCARV(\"Naranja\";A2:C6;3;FALSO)",
            "1,2",
            {3, 4},
            buscarV},
    Funcion{"BUSCARH",
            kFamilia,
            "valor; tabla; fila; [ordenada]",
            "Busca en la primera fila de una tabla y da otra celda de la columna hallada.",
            "=BUSCARH(\"Precio\";A1:C6;3;FALSO)",
            "2",
            {3, 4},
            buscarH},
    Funcion{"INDICE",
            kFamilia,
            "tabla; fila; [columna]",
            "Celda de una tabla por su número de fila y de columna.",
            "=INDICE(A2:C6;3;2)",
            "8",
            {2, 3},
            indice},
    Funcion{"COINCIDIR",
            kFamilia,
            "valor; fila o columna; [tipo]",
            "Posición de un valor en una fila o una columna.",
            "=COINCIDIR(\"Naranja\";A2:A6;0)",
            "4",
            {2, 3},
            coincidir},
};

} // namespace

std::span<const Funcion> funcionesBusqueda() {
    return kFunciones;
}

} // namespace motor_formulas
