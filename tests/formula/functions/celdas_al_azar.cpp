#include "tests/formula/functions/celdas_al_azar.h"

#include "model/direcciones.h"

#include <cmath>
#include <limits>

namespace pruebas {

using nucleo::ErrorCelda;
using nucleo::TipoValor;
using nucleo::Valor;

const std::vector<Muestra>& muestras() {
    static const std::vector<Muestra> todas = {
        {"", {}},
        {"", {}},
        {"", {}},
        {"=Z99", {}}, // existe, pero su valor es vacío
        {"0", Valor::deNumero(0)},
        {"1", Valor::deNumero(1)},
        {"2", Valor::deNumero(2)},
        {"5", Valor::deNumero(5)},
        {"-3,5", Valor::deNumero(-3.5)},
        {"nan", Valor::deNumero(std::numeric_limits<double>::quiet_NaN())},
        {"inf", Valor::deNumero(std::numeric_limits<double>::infinity())},
        {"a", Valor::deTexto("a")},
        {"Ab", Valor::deTexto("Ab")},
        {"ABA", Valor::deTexto("ABA")},
        {"ñu", Valor::deTexto("ñu")},
        {"ÑU*", Valor::deTexto("ÑU*")},
        {"=\"5\"", Valor::deTexto("5")},
        {"=\"\"", Valor::deTexto("")},
        {"=VERDADERO", Valor::deLogico(true)},
        {"=FALSO", Valor::deLogico(false)},
        {"=1/0", Valor::deError(ErrorCelda::DivCero)},
        {"=#¡REF!", Valor::deError(ErrorCelda::Ref)},
    };
    return todas;
}

TablaAlAzar::TablaAlAzar(int filas, int columnas, std::mt19937& azar)
    : filas_(filas), columnas_(columnas) {
    for (int fila = 0; fila < filas; ++fila) {
        for (int col = 0; col < columnas; ++col) {
            const Muestra& muestra = muestras()[azar() % muestras().size()];
            hoja_.escribir(fila, col, muestra.escrito);
            valores_.push_back(muestra.valor);
        }
    }
}

std::string Zona::texto() const {
    return nucleo::nombreRef(fila, col) + ":" +
           nucleo::nombreRef(fila + filas - 1, col + columnas - 1);
}

namespace {

int entre(int minimo, int maximo, std::mt19937& azar) {
    return std::uniform_int_distribution<int>(minimo, maximo)(azar);
}

Zona situar(const TablaAlAzar& tabla, int filas, int columnas, std::mt19937& azar) {
    return {entre(0, tabla.filas() - filas, azar), entre(0, tabla.columnas() - columnas, azar),
            filas, columnas};
}

} // namespace

Zona zonaAlAzar(const TablaAlAzar& tabla, std::mt19937& azar) {
    return situar(tabla, entre(1, tabla.filas(), azar), entre(1, tabla.columnas(), azar), azar);
}

Zona zonaIgualDeGrande(const TablaAlAzar& tabla, const Zona& zona, std::mt19937& azar) {
    const int filas = entre(1, tabla.filas(), azar);
    const int columnas = zona.celdas() / filas;
    if (filas * columnas != zona.celdas() || columnas > tabla.columnas())
        return zona;
    return situar(tabla, filas, columnas, azar);
}

bool iguales(const Valor& a, const Valor& b) {
    if (a.tipo != b.tipo)
        return false;
    switch (a.tipo) {
    case TipoValor::Vacio:
        return true;
    case TipoValor::Numero:
        return a.numero == b.numero || (std::isnan(a.numero) && std::isnan(b.numero));
    case TipoValor::Texto:
        return a.texto == b.texto;
    case TipoValor::Logico:
        return a.logico == b.logico;
    case TipoValor::Error:
        return a.error == b.error;
    }
    return false;
}

std::string entreComillas(const std::string& texto) {
    std::string escrito = "\"";
    for (const char letra : texto)
        escrito += letra == '"' ? std::string("\"\"") : std::string(1, letra);
    return escrito + "\"";
}

} // namespace pruebas
