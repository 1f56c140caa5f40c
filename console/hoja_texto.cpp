#include "console/hoja_texto.h"

#include "model/limites.h"
#include "model/numeros.h"

#include <utility>

namespace consola {

namespace {

constexpr std::int64_t kCamposPorAviso = 4096;

void escribirLiteral(nucleo::Hoja& hoja, int fila, int columna, std::string texto) {
    nucleo::Celda& celda = hoja.celdaMut(fila, columna);
    celda.tipo = nucleo::TipoCelda::Texto;
    celda.valor = nucleo::Valor::deTexto(texto);
    celda.entrada = std::move(texto);
}

std::string textoDe(const nucleo::Celda& celda, Escritura escritura) {
    return escritura == Escritura::LoEscrito ? celda.entrada
                                             : nucleo::textoVisible(celda.valor, celda.formato);
}

} // namespace

std::string leerHoja(LectorCampos& lector, Lectura lectura, nucleo::Libro& libro,
                     motor_formulas::Motor& motor, int hoja, const std::function<void()>& avisar) {
    const motor_formulas::Motor::Lote lote(motor);
    nucleo::Hoja& destino = *libro.hojas[static_cast<std::size_t>(hoja)];
    Campo campo;
    std::int64_t leidos = 0;
    while (true) {
        switch (lector.siguiente(campo)) {
        case LectorCampos::Lectura::Fin:
            return {};
        case LectorCampos::Lectura::Error:
            return lector.error();
        case LectorCampos::Lectura::Campo:
            break;
        }
        if (++leidos % kCamposPorAviso == 0) {
            avisar();
        }
        if (campo.texto.empty()) {
            continue;
        }
        if (campo.fila >= nucleo::kFilas || campo.columna >= nucleo::kColumnas) {
            return "no cabe en una hoja de " + std::to_string(nucleo::kFilas) + " filas y " +
                   std::to_string(nucleo::kColumnas) + " columnas";
        }
        const int fila = static_cast<int>(campo.fila);
        const int columna = static_cast<int>(campo.columna);
        if (lectura == Lectura::Literal && campo.texto.front() == '=') {
            escribirLiteral(destino, fila, columna, std::move(campo.texto));
        } else {
            motor.establecerCelda(hoja, fila, columna, campo.texto);
        }
    }
}

void escribirHoja(const nucleo::Hoja& hoja, Escritura escritura, bool mismosCampos,
                  EscritorCampos& escritor) {
    const int ultimaFila = hoja.celdas.ultimaFilaConContenido();
    const int ultimaColumna = hoja.celdas.ultimaColConContenido();
    if (ultimaFila < 0) {
        return;
    }
    int fila = 0;
    int columna = 0; // la siguiente por escribir
    const auto rellenarHasta = [&](int hasta) {
        for (; columna < hasta; ++columna) {
            escritor.campo({});
        }
    };
    const auto cerrarHasta = [&](int hasta) {
        for (; fila < hasta; ++fila) {
            rellenarHasta(mismosCampos ? ultimaColumna + 1 : columna);
            escritor.finDeRegistro();
            columna = 0;
        }
    };
    hoja.celdas.recorrerPorFilas({0, 0, ultimaFila, ultimaColumna},
                                 [&](int f, int c, const nucleo::Celda& celda) {
                                     if (celda.tipo == nucleo::TipoCelda::Vacia) {
                                         return true;
                                     }
                                     cerrarHasta(f);
                                     rellenarHasta(c);
                                     escritor.campo(textoDe(celda, escritura));
                                     ++columna;
                                     return escritor.bien();
                                 });
    cerrarHasta(ultimaFila + 1);
}

} // namespace consola
