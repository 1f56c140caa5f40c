#include "console/archivos.h"
#include "console/json.h"
#include "console/ordenes/ordenes.h"
#include "console/progreso.h"
#include "console/tabla.h"
#include "console/texto_terminal.h"
#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/numeros.h"
#include "model/rango_texto.h"

#include <algorithm>
#include <ostream>
#include <vector>

namespace consola {

namespace {

Lado ladoDe(const nucleo::Celda& celda) {
    switch (celda.formato.alineacion) {
    case nucleo::AlineacionH::Izquierda:
        return Lado::Izquierda;
    case nucleo::AlineacionH::Centro:
        return Lado::Centro;
    case nucleo::AlineacionH::Derecha:
        return Lado::Derecha;
    default:
        break;
    }
    switch (celda.valor.tipo) {
    case nucleo::TipoValor::Numero:
        return Lado::Derecha;
    case nucleo::TipoValor::Logico:
    case nucleo::TipoValor::Error:
        return Lado::Centro;
    default:
        return Lado::Izquierda;
    }
}

/// Las celdas fundidas con otras de su fila, ordenadas: su texto se extiende sobre las que siguen.
std::vector<std::uint64_t> fundidasALoAncho(const nucleo::Hoja& hoja) {
    std::vector<std::uint64_t> claves;
    for (const nucleo::RangoFusion& fusion : hoja.fusiones) {
        if (fusion.col2 > fusion.col1) {
            claves.push_back(nucleo::claveLocal(fusion.fila1, fusion.col1));
        }
    }
    std::ranges::sort(claves);
    return claves;
}

Hueco huecoDe(const nucleo::Celda& celda, bool formulas) {
    if (formulas && celda.tipo == nucleo::TipoCelda::Formula) {
        return {paraTerminal(celda.entrada), Lado::Izquierda};
    }
    return {paraTerminal(nucleo::textoVisible(celda.valor, celda.formato)), ladoDe(celda)};
}

/// Las filas de un rango con su número delante; las celdas que faltan son huecos vacíos.
class FilasDeTabla {
  public:
    FilasDeTabla(const nucleo::Hoja& hoja, const nucleo::RangoCeldas& rango, bool formulas)
        : hoja_(hoja), rango_(rango), formulas_(formulas), fundidas_(fundidasALoAncho(hoja)),
          fila_(static_cast<std::size_t>(rango.col2 - rango.col1) + 2) {}

    std::span<const Hueco> cabecera() {
        vaciar();
        for (int col = rango_.col1; col <= rango_.col2; ++col) {
            hueco(col) = {nucleo::nombreColumna(col), Lado::Centro};
        }
        return fila_;
    }

    /// Llama a `hacer(fila)` con cada una, de arriba abajo; para, con falso, si devuelve falso.
    template <typename Hacer> bool recorrer(Hacer&& hacer) {
        int enCurso = rango_.fila1;
        vaciar();
        const auto cerrarHasta = [&](int fila) {
            for (; enCurso < fila; ++enCurso) {
                fila_.front() = {std::to_string(enCurso + 1), Lado::Derecha};
                if (!hacer(std::span<const Hueco>(fila_))) {
                    return false;
                }
                vaciar();
            }
            return true;
        };
        return hoja_.celdas.recorrerPorFilas(rango_, [&](int fila, int col,
                                                         const nucleo::Celda& celda) {
            if (!cerrarHasta(fila)) {
                return false;
            }
            hueco(col) = huecoDe(celda, formulas_);
            if (std::ranges::binary_search(fundidas_, nucleo::claveLocal(fila, col))) {
                hueco(col).lado = Lado::Izquierda;
            }
            return true;
        }) && cerrarHasta(rango_.fila2 + 1);
    }

  private:
    Hueco& hueco(int col) { return fila_[static_cast<std::size_t>(col - rango_.col1) + 1]; }
    void vaciar() { std::ranges::fill(fila_, Hueco{}); }

    const nucleo::Hoja& hoja_;
    nucleo::RangoCeldas rango_;
    bool formulas_;
    std::vector<std::uint64_t> fundidas_;
    std::vector<Hueco> fila_;
};

void escribirTabla(std::ostream& salida, const nucleo::Hoja& hoja, const nucleo::RangoCeldas& rango,
                   bool formulas) {
    FilasDeTabla filas(hoja, rango, formulas);
    Tabla tabla;
    tabla.medir(filas.cabecera());
    filas.recorrer([&](std::span<const Hueco> fila) {
        tabla.medir(fila);
        return true;
    });
    tabla.escribir(salida, filas.cabecera());
    filas.recorrer([&](std::span<const Hueco> fila) {
        tabla.escribir(salida, fila);
        return salida.good();
    });
}

std::string valorJson(const nucleo::Valor& valor) {
    switch (valor.tipo) {
    case nucleo::TipoValor::Numero:
        return numeroJson(valor.numero);
    case nucleo::TipoValor::Texto:
        return cadenaJson(valor.texto);
    case nucleo::TipoValor::Logico:
        return valor.logico ? "true" : "false";
    default:
        return "null";
    }
}

void escribirJson(std::ostream& salida, const nucleo::Hoja& hoja,
                  const nucleo::RangoCeldas& rango) {
    salida << "{\"hoja\": " << cadenaJson(hoja.nombre)
           << ", \"rango\": " << cadenaJson(nucleo::textoRango(rango)) << ", \"celdas\": [";
    const char* separador = "\n";
    hoja.celdas.recorrerPorFilas(rango, [&](int fila, int col, const nucleo::Celda& celda) {
        if (celda.tipo == nucleo::TipoCelda::Vacia) {
            return true;
        }
        salida << separador << "{\"celda\": " << cadenaJson(nucleo::nombreRef(fila, col))
               << ", \"valor\": " << valorJson(celda.valor)
               << ", \"texto\": " << cadenaJson(nucleo::textoVisible(celda.valor, celda.formato));
        if (celda.tipo == nucleo::TipoCelda::Formula) {
            salida << ", \"formula\": " << cadenaJson(celda.entrada);
        }
        if (celda.valor.tipo == nucleo::TipoValor::Error) {
            salida << ", \"error\": true";
        }
        salida << '}';
        separador = ",\n";
        return salida.good();
    });
    salida << "\n]}\n";
}

} // namespace

Resultado mostrar(const Argumentos& argumentos, Terminal& terminal) {
    nucleo::RangoCeldas rango;
    if (const std::string* pedido = argumentos.valor("--rango")) {
        const auto leido = nucleo::leerRango(*pedido);
        if (!leido) {
            return {kMalUso, "«" + paraTerminal(*pedido) + "» no es un rango como A1:D20"};
        }
        rango = *leido;
    }
    nucleo::Libro libro;
    {
        const Progreso progreso(terminal, "Calculando");
        const std::string& ruta = argumentos.sueltos().front();
        if (Resultado abierto = abrirLibro(ruta, libro); abierto.estado != kBien) {
            return abierto;
        }
        motor_formulas::Motor(libro).recalcularTodo();
    }
    int indice = 0;
    if (Resultado elegida = elegirHoja(libro, argumentos.valor("--hoja"), indice);
        elegida.estado != kBien) {
        return elegida;
    }
    const nucleo::Hoja& hoja = *libro.hojas[static_cast<std::size_t>(indice)];
    if (!argumentos.tiene("--rango")) {
        rango.fila2 = std::max(hoja.celdas.ultimaFilaConContenido(), 0);
        rango.col2 = std::max(hoja.celdas.ultimaColConContenido(), 0);
    }
    if (argumentos.tiene("--json")) {
        escribirJson(terminal.salida, hoja, rango);
    } else {
        escribirTabla(terminal.salida, hoja, rango, argumentos.tiene("--formulas"));
    }
    return {};
}

} // namespace consola
