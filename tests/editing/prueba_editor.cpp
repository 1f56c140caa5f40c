#include "tests/editing/prueba_editor.h"

#include "model/direcciones.h"
#include "model/numeros.h"

#include <cstddef>

namespace pruebas {

Lugar lugarDe(std::string_view ref) {
    const std::size_t cifras = ref.find_first_of("0123456789");
    return {std::stoi(std::string(ref.substr(cifras))) - 1,
            nucleo::columnaDesdeNombre(ref.substr(0, cifras))};
}

nucleo::RangoCeldas rangoDe(std::string_view texto) {
    const std::size_t puntos = texto.find(':');
    const Lugar primera = lugarDe(texto.substr(0, puntos));
    const Lugar segunda =
        puntos == std::string_view::npos ? primera : lugarDe(texto.substr(puntos + 1));
    return {primera.fila, primera.col, segunda.fila, segunda.col};
}

void PruebaEditor::poner(std::string_view ref, const std::string& texto, int indice) {
    const Lugar lugar = lugarDe(ref);
    motor.establecerCelda(indice, lugar.fila, lugar.col, texto);
}

void PruebaEditor::ponerColumna(std::string_view ref, const std::vector<std::string>& textos) {
    const Lugar lugar = lugarDe(ref);
    for (std::size_t i = 0; i < textos.size(); ++i)
        motor.establecerCelda(0, lugar.fila + static_cast<int>(i), lugar.col, textos[i]);
}

void PruebaEditor::escribir(std::string_view ref, const std::string& texto) {
    const Lugar lugar = lugarDe(ref);
    editor.establecerContenido(lugar.fila, lugar.col, texto);
}

void PruebaEditor::seleccionar(std::string_view texto) {
    const nucleo::RangoCeldas rango = rangoDe(texto);
    editor.seleccionar(rango.fila1, rango.col1);
    if (texto.find(':') != std::string_view::npos)
        editor.extender(rango.fila2, rango.col2);
}

const nucleo::Celda* PruebaEditor::celda(std::string_view ref, int indice) {
    const Lugar lugar = lugarDe(ref);
    return hoja(indice).celda(lugar.fila, lugar.col);
}

std::string PruebaEditor::entrada(std::string_view ref, int indice) {
    const nucleo::Celda* c = celda(ref, indice);
    return c ? c->entrada : std::string{};
}

std::string PruebaEditor::visto(std::string_view ref, int indice) {
    const nucleo::Celda* c = celda(ref, indice);
    return c ? nucleo::textoVisible(c->valor, c->formato) : std::string{};
}

std::vector<std::string> PruebaEditor::entradas(std::string_view texto, int indice) {
    const nucleo::RangoCeldas rango = rangoDe(texto);
    std::vector<std::string> textos;
    for (int fila = rango.fila1; fila <= rango.fila2; ++fila) {
        for (int col = rango.col1; col <= rango.col2; ++col)
            textos.push_back(entrada(nucleo::nombreRef(fila, col), indice));
    }
    return textos;
}

std::vector<std::string> PruebaEditor::fusiones(int indice) {
    std::vector<std::string> textos;
    for (const nucleo::RangoFusion& fusion : hoja(indice).fusiones) {
        textos.push_back(nucleo::nombreRef(fusion.fila1, fusion.col1) + ":" +
                         nucleo::nombreRef(fusion.fila2, fusion.col2));
    }
    return textos;
}

std::string PruebaEditor::seleccion() const {
    const editor::Seleccion& s = editor.seleccion();
    return nucleo::nombreRef(s.anclaFila, s.anclaCol) + ":" +
           nucleo::nombreRef(s.activaFila, s.activaCol);
}

std::vector<nucleo::Hoja> PruebaEditor::copiaDeHojas() const {
    return editor.capturar().hojas;
}

void PruebaEditor::TearDown() {
    EXPECT_EQ(defectoDelLibro(libro, exigencias), "");
}

} // namespace pruebas
