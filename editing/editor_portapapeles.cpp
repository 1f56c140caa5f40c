#include "editing/editor.h"
#include "model/numeros.h"

#include <cstddef>
#include <string_view>

namespace editor {

using motor_formulas::Motor;
using nucleo::Celda;
using nucleo::Hoja;
using nucleo::RangoCeldas;
using nucleo::RangoFusion;
using nucleo::TipoCelda;

namespace {

/// Verdadero si la fusión, que puede venir de un archivo, está entera dentro del rango.
bool estaDentro(const RangoFusion& fusion, const RangoCeldas& rango) {
    return fusion.fila1 <= fusion.fila2 && fusion.col1 <= fusion.col2 &&
           rango.contiene(fusion.fila1, fusion.col1) && rango.contiene(fusion.fila2, fusion.col2);
}

bool cabe(int fila, int col) {
    return fila <= nucleo::kUltimaFila && col <= nucleo::kUltimaColumna;
}

/// Lo que una celda deja en el texto copiado: un texto como se escribió, lo demás como se ve.
void anadirCampo(std::string& texto, const Celda& celda) {
    switch (celda.tipo) {
    case TipoCelda::Texto:
        texto += celda.entrada;
        break;
    case TipoCelda::Numero:
        texto += nucleo::formatearNumero(celda.numero, celda.formato);
        break;
    case TipoCelda::Formula:
        texto += nucleo::textoVisible(celda.valor, celda.formato);
        break;
    case TipoCelda::Vacia:
        break;
    }
}

/// El texto sin el salto de línea que lo termina. Los retornos de carro no cuentan, y por eso
/// tampoco los que lo siguen.
std::string_view sinUltimoSalto(std::string_view texto) {
    const std::size_t ultimo = texto.find_last_not_of('\r');
    if (ultimo != std::string_view::npos && texto[ultimo] == '\n')
        texto = texto.substr(0, ultimo);
    return texto;
}

/// Separa de `resto` lo que hay hasta `separador` y se lo quita, con el separador. `quedaMas` dice
/// si lo había.
std::string_view hasta(char separador, std::string_view& resto, bool& quedaMas) {
    const std::size_t fin = resto.find(separador);
    quedaMas = fin != std::string_view::npos;
    const std::string_view parte = resto.substr(0, fin);
    resto = quedaMas ? resto.substr(fin + 1) : std::string_view{};
    return parte;
}

} // namespace

void Editor::copiar() {
    const Hoja* hoja = hojaActiva();
    if (!hoja)
        return;
    celdasCopiadas_.clear();
    fusionesCopiadas_.clear();
    const RangoCeldas rango = seleccion_.rango();
    origenFila_ = rango.fila1;
    origenCol_ = rango.col1;
    hoja->celdas.recorrerPorFilas(rango, [&](int fila, int col, const Celda& celda) {
        celdasCopiadas_.push_back(
            {fila - rango.fila1, col - rango.col1, celda.entrada, celda.formato});
        return true;
    });
    for (const RangoFusion& fusion : hoja->fusiones) {
        if (estaDentro(fusion, rango)) {
            fusionesCopiadas_.push_back({fusion.fila1 - rango.fila1, fusion.col1 - rango.col1,
                                         fusion.fila2 - rango.fila1, fusion.col2 - rango.col1});
        }
    }
}

std::string Editor::copiarTSV() const {
    std::string texto;
    const Hoja* hoja = hojaActiva();
    if (!hoja)
        return texto;
    const RangoCeldas rango = seleccion_.rango();
    int filaEscrita = rango.fila1;
    int colEscrita = rango.col1;
    const auto avanzarHasta = [&](int fila, int col) {
        for (; filaEscrita < fila; ++filaEscrita, colEscrita = rango.col1) {
            texto.append(static_cast<std::size_t>(rango.col2 - colEscrita), '\t');
            texto += '\n';
        }
        texto.append(static_cast<std::size_t>(col - colEscrita), '\t');
        colEscrita = col;
    };
    hoja->celdas.recorrerPorFilas(rango, [&](int fila, int col, const Celda& celda) {
        avanzarHasta(fila, col);
        anadirCampo(texto, celda);
        return true;
    });
    avanzarHasta(rango.fila2, rango.col2);
    return texto;
}

void Editor::cortar() {
    copiar();
    borrarSeleccion();
}

void Editor::borrarSeleccion() {
    if (!hojaActiva())
        return;
    registrarHistorial();
    const std::vector<std::uint64_t> claves = clavesEnSeleccion();
    if (claves.empty())
        return;
    const Motor::Lote lote(*motor_);
    for (const std::uint64_t clave : claves) {
        motor_->limpiarCelda(libro_.hojaActiva, nucleo::filaDeClaveLocal(clave),
                             nucleo::columnaDeClaveLocal(clave));
    }
    libro_.modificado = true;
}

void Editor::pegar() {
    Hoja* hoja = hojaActiva();
    if (!hoja || celdasCopiadas_.empty())
        return;
    registrarHistorial();
    const int fila0 = seleccion_.filaMin();
    const int col0 = seleccion_.colMin();
    const Motor::Lote lote(*motor_);
    for (const CeldaCopiada& copiada : celdasCopiadas_) {
        const int fila = fila0 + copiada.dFila;
        const int col = col0 + copiada.dCol;
        if (!cabe(fila, col))
            continue;
        hoja->celdaMut(fila, col).formato = copiada.formato;
        if (copiada.entrada.starts_with('=')) {
            motor_->establecerCelda(libro_.hojaActiva, fila, col,
                                    motor_->ajustarReferencias(copiada.entrada, fila0 - origenFila_,
                                                               col0 - origenCol_));
        } else {
            motor_->establecerCelda(libro_.hojaActiva, fila, col, copiada.entrada);
        }
    }
    for (const RangoFusion& copiada : fusionesCopiadas_) {
        if (cabe(fila0 + copiada.fila2, col0 + copiada.col2)) {
            fusionar({fila0 + copiada.fila1, col0 + copiada.col1, fila0 + copiada.fila2,
                      col0 + copiada.col2});
        }
    }
    libro_.modificado = true;
}

void Editor::pegarTSV(const std::string& texto) {
    if (texto.empty() || !hojaActiva())
        return;
    registrarHistorial();
    const Motor::Lote lote(*motor_);
    std::string_view lineas = sinUltimoSalto(texto);
    std::string campo;
    bool hayMasLineas = true;
    for (int fila = seleccion_.filaMin(); hayMasLineas && fila <= nucleo::kUltimaFila; ++fila) {
        std::string_view campos = hasta('\n', lineas, hayMasLineas);
        bool hayMasCampos = true;
        for (int col = seleccion_.colMin(); hayMasCampos && col <= nucleo::kUltimaColumna; ++col) {
            campo = hasta('\t', campos, hayMasCampos);
            std::erase(campo, '\r');
            motor_->establecerCelda(libro_.hojaActiva, fila, col, campo);
        }
    }
    libro_.modificado = true;
}

} // namespace editor
