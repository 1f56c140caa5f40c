#include "tests/formula/hoja_de_prueba.h"

#include "model/formato.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

namespace pruebas {

namespace {

std::string_view sinEspaciosAlrededor(std::string_view texto) {
    const std::size_t primero = texto.find_first_not_of(' ');
    if (primero == std::string_view::npos)
        return {};
    return texto.substr(primero, texto.find_last_not_of(' ') - primero + 1);
}

} // namespace

HojaDePrueba::HojaDePrueba(std::initializer_list<std::string_view> filas) : motor_(libro_) {
    int numero = 0;
    for (const std::string_view fila : filas)
        escribirFila(numero++, fila);
}

void HojaDePrueba::escribirFila(int fila, std::string_view celdas) {
    for (int col = 0; !celdas.empty(); ++col) {
        const std::size_t fin = celdas.find('|');
        escribir(fila, col, std::string(sinEspaciosAlrededor(celdas.substr(0, fin))));
        celdas.remove_prefix(fin == std::string_view::npos ? celdas.size() : fin + 1);
    }
}

void HojaDePrueba::escribir(int fila, int col, const std::string& contenido) {
    motor_.establecerCelda(0, fila, col, contenido);
}

nucleo::Valor HojaDePrueba::valor(std::string_view formula) {
    return motor_.evaluarFormula(0, std::string(formula));
}

std::string HojaDePrueba::texto(std::string_view formula) {
    return nucleo::textoVisible(valor(formula), nucleo::Formato{});
}

void comprobar(HojaDePrueba& hoja, std::initializer_list<Caso> casos) {
    for (const Caso& caso : casos)
        EXPECT_EQ(hoja.texto(caso.formula), caso.muestra) << "en la fórmula " << caso.formula;
}

void comprobar(std::initializer_list<Caso> casos) {
    HojaDePrueba vacia;
    comprobar(vacia, casos);
}

} // namespace pruebas
