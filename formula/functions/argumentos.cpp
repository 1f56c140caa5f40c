#include "formula/functions/argumentos.h"

#include "formula/functions/catalogo.h"

#include <cstdint>

namespace motor_formulas {

using nucleo::ErrorCelda;
using nucleo::TipoValor;

VistaValor LectorArgs::valor(std::size_t indice) {
    if (fallo_)
        return {};
    const Arg& arg = args_[indice];
    if (!arg.esRango && arg.valor.tipo != TipoValor::Error)
        return vistaDe(arg.valor);
    fallo_ = true;
    error_ = arg.esRango ? ErrorCelda::ValorInvalido : arg.valor.error;
    return {};
}

double LectorArgs::numero(std::size_t indice) {
    double numero = 0;
    const VistaValor leido = valor(indice);
    if (!fallo_)
        fallo_ = !convertirEnNumero(leido, numero, error_);
    return fallo_ ? 0 : numero;
}

double LectorArgs::numero(std::size_t indice, double porDefecto) {
    return indice < args_.size() ? numero(indice) : porDefecto;
}

std::string LectorArgs::texto(std::size_t indice) {
    return convertirEnTexto(valor(indice));
}

bool LectorArgs::logico(std::size_t indice) {
    bool logico = false;
    const VistaValor leido = valor(indice);
    if (!fallo_)
        fallo_ = !convertirEnLogico(leido, logico, error_);
    return !fallo_ && logico;
}

bool LectorArgs::logico(std::size_t indice, bool porDefecto) {
    return indice < args_.size() ? logico(indice) : porDefecto;
}

bool recolectarNumeros(const std::vector<Arg>& args, std::vector<double>& numeros,
                       ErrorCelda& error) {
    return recorrerNumeros(args, nullptr, error, [&](double numero) { numeros.push_back(numero); });
}

bool recolectarNumeros(const std::vector<Arg>& args, const Evaluador& evaluador,
                       std::vector<double>& numeros, ErrorCelda& error) {
    return recorrerNumeros(args, evaluador.contexto, error,
                           [&](double numero) { numeros.push_back(numero); });
}

Matriz comoMatriz(const Arg& arg) {
    if (!arg.esRango)
        return {1, 1, {arg.valor}};
    if (!arg.prestado())
        return {arg.filas, arg.columnas, arg.valores};
    Matriz matriz{arg.filas, arg.columnas, {}};
    matriz.valores.resize(static_cast<std::size_t>(arg.celdas()));
    recorrerCeldas(arg, [&](std::int64_t posicion, const VistaValor& celda) {
        matriz.valores[static_cast<std::size_t>(posicion)] = aValor(celda);
        return true;
    });
    return matriz;
}

} // namespace motor_formulas
