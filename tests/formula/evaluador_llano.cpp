#include "tests/formula/evaluador_llano.h"

#include "model/fechas.h"
#include "model/numeros.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace pruebas {

namespace {

using motor_formulas::NodoExpr;
using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

const Valor kInvalido = Valor::deError(ErrorCelda::ValorInvalido);

/// El número de un valor, o el error de no tenerlo.
Valor comoNumero(const Valor& valor) {
    switch (valor.tipo) {
    case TipoValor::Numero:
    case TipoValor::Error:
        return valor;
    case TipoValor::Vacio:
        return Valor::deNumero(0);
    case TipoValor::Logico:
        return Valor::deNumero(valor.logico ? 1 : 0);
    case TipoValor::Texto:
        break;
    }
    double numero = 0;
    if (nucleo::parsearNumeroUsuario(valor.texto, numero) ||
        nucleo::parsearFecha(valor.texto, numero))
        return Valor::deNumero(numero);
    return kInvalido;
}

Valor comoLogico(const Valor& valor) {
    switch (valor.tipo) {
    case TipoValor::Numero:
        return Valor::deLogico(valor.numero != 0);
    case TipoValor::Vacio:
        return Valor::deLogico(false);
    case TipoValor::Texto:
        return kInvalido;
    default:
        return valor;
    }
}

std::string comoTexto(const Valor& valor) {
    return nucleo::textoVisible(valor, {});
}

/// Las palabras de estas pruebas solo llevan letras ASCII.
std::string minusculas(std::string texto) {
    for (char& letra : texto) {
        if ('A' <= letra && letra <= 'Z')
            letra = static_cast<char>(letra - 'A' + 'a');
    }
    return texto;
}

Valor finito(double numero) {
    return std::isfinite(numero) ? Valor::deNumero(numero) : kInvalido;
}

int comparar(const Valor& a, const Valor& b) {
    const auto clase = [](const Valor& v) {
        if (v.tipo == TipoValor::Texto)
            return 1;
        return v.tipo == TipoValor::Logico ? 2 : 0;
    };
    const auto signo = [](auto x, auto y) { return x < y ? -1 : (x > y ? 1 : 0); };
    if (clase(a) != clase(b))
        return signo(clase(a), clase(b));
    if (clase(a) == 0)
        return signo(comoNumero(a).numero, comoNumero(b).numero);
    if (clase(a) == 1)
        return signo(minusculas(a.texto), minusculas(b.texto));
    return signo(a.logico, b.logico);
}

Valor operar(const std::string& op, const Valor& a, const Valor& b) {
    if (a.tipo == TipoValor::Error)
        return a;
    if (b.tipo == TipoValor::Error)
        return b;
    if (op == "&")
        return Valor::deTexto(comoTexto(a) + comoTexto(b));
    const int orden = comparar(a, b);
    if (op == "=")
        return Valor::deLogico(orden == 0);
    if (op == "<>")
        return Valor::deLogico(orden != 0);
    if (op == "<")
        return Valor::deLogico(orden < 0);
    if (op == ">")
        return Valor::deLogico(orden > 0);
    if (op == "<=")
        return Valor::deLogico(orden <= 0);
    if (op == ">=")
        return Valor::deLogico(orden >= 0);
    const Valor x = comoNumero(a);
    const Valor y = comoNumero(b);
    if (x.tipo == TipoValor::Error)
        return x;
    if (y.tipo == TipoValor::Error)
        return y;
    if (op == "+")
        return finito(x.numero + y.numero);
    if (op == "-")
        return finito(x.numero - y.numero);
    if (op == "*")
        return finito(x.numero * y.numero);
    if (op == "/")
        return y.numero == 0 ? Valor::deError(ErrorCelda::DivCero) : finito(x.numero / y.numero);
    return finito(std::pow(x.numero, y.numero));
}

/// Si un valor cumple un criterio sin comodines.
bool cumple(const Valor& criterio, const Valor& valor) {
    std::string operando = criterio.texto;
    std::string op = "=";
    double numero = criterio.numero;
    bool esNumero = criterio.tipo == TipoValor::Numero;
    if (criterio.tipo == TipoValor::Logico) {
        numero = criterio.logico ? 1 : 0;
        esNumero = true;
    } else if (!esNumero) {
        if (criterio.tipo != TipoValor::Texto)
            operando.clear();
        for (const char* prefijo : {">=", "<=", "<>", ">", "<", "="}) {
            if (operando.starts_with(prefijo)) {
                op = prefijo;
                operando.erase(0, op.size());
                break;
            }
        }
        esNumero = nucleo::parsearNumeroUsuario(operando, numero);
    }
    const auto segun = [&op](auto x, auto y) {
        if (op == "=")
            return x == y;
        if (op == "<>")
            return x != y;
        if (op == "<")
            return x < y;
        if (op == "<=")
            return x <= y;
        return op == ">" ? x > y : x >= y;
    };
    if (!esNumero)
        return segun(minusculas(comoTexto(valor)), minusculas(operando));
    if (valor.tipo == TipoValor::Numero)
        return segun(valor.numero, numero);
    return valor.tipo != TipoValor::Vacio && op == "<>";
}

/// Posición de lo buscado entre unos valores; -1 si no está.
int buscar(const Valor& buscado, const std::vector<Valor>& valores, int tipo) {
    int candidata = -1;
    for (std::size_t i = 0; i < valores.size(); ++i) {
        if (tipo == 0) {
            if (cumple(buscado, valores[i]))
                return static_cast<int>(i);
            continue;
        }
        const bool comparables =
            buscado.tipo == valores[i].tipo &&
            (buscado.tipo == TipoValor::Numero || buscado.tipo == TipoValor::Texto);
        if (!comparables)
            continue;
        if (comparar(valores[i], buscado) * tipo > 0)
            break;
        candidata = static_cast<int>(i);
    }
    return candidata;
}

} // namespace

Valor EvaluadorLlano::evaluar(const NodoExpr& nodo) const {
    switch (nodo.tipo) {
    case NodoExpr::Numero:
        return Valor::deNumero(nodo.numero);
    case NodoExpr::Texto:
        return Valor::deTexto(nodo.texto);
    case NodoExpr::Logico:
        return Valor::deLogico(nodo.logico);
    case NodoExpr::Error:
        return Valor::deError(nodo.error);
    case NodoExpr::Rango:
        return kInvalido;
    case NodoExpr::Referencia: {
        const int hoja = nodo.ref.hoja.empty() ? hoja_ : hojas_(nodo.ref.hoja);
        return hoja < 0 ? Valor::deError(ErrorCelda::Ref)
                        : celdas_(hoja, nodo.ref.fila, nodo.ref.col);
    }
    case NodoExpr::Unario: {
        const Valor valor = comoNumero(evaluar(*nodo.hijos[0]));
        if (valor.tipo == TipoValor::Error || nodo.op == "u+")
            return valor;
        return Valor::deNumero(nodo.op == "u-" ? -valor.numero : valor.numero / 100);
    }
    case NodoExpr::Binario:
        return operar(nodo.op, evaluar(*nodo.hijos[0]), evaluar(*nodo.hijos[1]));
    case NodoExpr::Funcion:
        break;
    }
    return llamar(nodo);
}

EvaluadorLlano::Argumento EvaluadorLlano::argumento(const NodoExpr& nodo) const {
    if (nodo.tipo != NodoExpr::Rango)
        return {false, 1, 1, {evaluar(nodo)}};
    const int hoja = nodo.ref.hoja.empty() ? hoja_ : hojas_(nodo.ref.hoja);
    if (hoja < 0)
        return {false, 1, 1, {Valor::deError(ErrorCelda::Ref)}};
    const auto [fila1, fila2] = std::minmax(nodo.ref.fila, nodo.ref2.fila);
    const auto [col1, col2] = std::minmax(nodo.ref.col, nodo.ref2.col);
    Argumento arg{true, fila2 - fila1 + 1, col2 - col1 + 1, {}};
    for (int fila = fila1; fila <= fila2; ++fila) {
        for (int col = col1; col <= col2; ++col)
            arg.valores.push_back(celdas_(hoja, fila, col));
    }
    return arg;
}

Valor EvaluadorLlano::llamar(const NodoExpr& nodo) const {
    const std::string& nombre = nodo.texto;
    if (nombre == "SI") {
        const Valor condicion = comoLogico(evaluar(*nodo.hijos[0]));
        if (condicion.tipo == TipoValor::Error)
            return condicion;
        return evaluar(*nodo.hijos[condicion.logico ? 1 : 2]);
    }
    if (nombre == "SI.ERROR") {
        const Valor valor = evaluar(*nodo.hijos[0]);
        return valor.tipo == TipoValor::Error ? evaluar(*nodo.hijos[1]) : valor;
    }
    std::vector<Argumento> args;
    for (const auto& hijo : nodo.hijos)
        args.push_back(argumento(*hijo));

    if (nombre == "CONTAR" || nombre == "CONTARA") {
        double cuenta = 0;
        for (const Argumento& arg : args) {
            for (const Valor& valor : arg.valores) {
                if (nombre == "CONTARA")
                    cuenta += valor.tipo != TipoValor::Vacio ? 1 : 0;
                else
                    cuenta += valor.tipo == TipoValor::Numero ||
                                      (!arg.esRango && valor.tipo == TipoValor::Logico)
                                  ? 1
                                  : 0;
            }
        }
        return Valor::deNumero(cuenta);
    }
    if (nombre == "SUMAR.SI" || nombre == "CONTAR.SI" || nombre == "PROMEDIO.SI" ||
        nombre == "SUMAR.SI.CONJUNTO") {
        const bool conjunto = nombre == "SUMAR.SI.CONJUNTO";
        const Argumento& numeros = conjunto ? args[0] : args[args.size() == 3 ? 2 : 0];
        const std::size_t primera = conjunto ? 1 : 0;
        const std::size_t fin = conjunto ? args.size() : 2;
        for (std::size_t k = primera; k < fin; k += 2) {
            if (args[k + 1].valores[0].tipo == TipoValor::Error)
                return args[k + 1].valores[0];
            if (args[k].valores.size() != numeros.valores.size())
                return kInvalido;
        }
        double suma = 0;
        double sumados = 0;
        double cumplen = 0;
        for (std::size_t i = 0; i < numeros.valores.size(); ++i) {
            bool todas = true;
            for (std::size_t k = primera; k < fin; k += 2)
                todas = todas && cumple(args[k + 1].valores[0], args[k].valores[i]);
            cumplen += todas ? 1 : 0;
            if (todas && numeros.valores[i].tipo == TipoValor::Numero) {
                suma += numeros.valores[i].numero;
                ++sumados;
            }
        }
        if (nombre == "CONTAR.SI")
            return Valor::deNumero(cumplen);
        if (nombre == "PROMEDIO.SI")
            return sumados == 0 ? Valor::deError(ErrorCelda::DivCero)
                                : Valor::deNumero(suma / sumados);
        return Valor::deNumero(suma);
    }
    if (nombre == "BUSCARV" || nombre == "COINCIDIR") {
        const bool vertical = nombre == "BUSCARV";
        const Valor& buscado = args[0].valores[0];
        if (buscado.tipo == TipoValor::Error)
            return buscado;
        const Argumento& tabla = args[1];
        std::vector<Valor> claves;
        for (int fila = 0; fila < tabla.filas; ++fila)
            claves.push_back(tabla.valores[static_cast<std::size_t>(fila * tabla.columnas)]);
        // Las pruebas siempre dan el último argumento: el orden o el tipo de búsqueda.
        const Valor& modo = args.back().valores[0];
        const int tipo = vertical ? (modo.logico ? 1 : 0) : static_cast<int>(modo.numero);
        const int fila = buscar(buscado, claves, tipo);
        if (fila < 0)
            return kInvalido;
        if (!vertical)
            return Valor::deNumero(fila + 1);
        const int col = static_cast<int>(args[2].valores[0].numero) - 1;
        return tabla.valores[static_cast<std::size_t>(fila * tabla.columnas + col)];
    }

    std::vector<double> numeros;
    for (const Argumento& arg : args) {
        for (const Valor& valor : arg.valores) {
            if (valor.tipo == TipoValor::Error)
                return valor;
            if (valor.tipo == TipoValor::Vacio || (arg.esRango && valor.tipo != TipoValor::Numero))
                continue;
            const Valor numero = comoNumero(valor);
            if (numero.tipo == TipoValor::Error)
                return numero;
            numeros.push_back(numero.numero);
        }
    }
    double suma = 0;
    double producto = 1;
    for (const double numero : numeros) {
        suma += numero;
        producto *= numero;
    }
    if (nombre == "SUMA")
        return Valor::deNumero(suma);
    if (nombre == "PROMEDIO")
        return numeros.empty() ? Valor::deError(ErrorCelda::DivCero)
                               : Valor::deNumero(suma / static_cast<double>(numeros.size()));
    if (numeros.empty())
        return Valor::deNumero(0);
    if (nombre == "PRODUCTO")
        return Valor::deNumero(producto);
    if (nombre == "MAX")
        return Valor::deNumero(*std::max_element(numeros.begin(), numeros.end()));
    if (nombre == "MIN")
        return Valor::deNumero(*std::min_element(numeros.begin(), numeros.end()));
    return Valor::deError(ErrorCelda::Nombre);
}

} // namespace pruebas
