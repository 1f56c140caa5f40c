#include "console/archivo_formato.h"
#include "console/palabras_formato.h"
#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/limites.h"
#include "model/rango_texto.h"

#include <algorithm>
#include <map>
#include <vector>

namespace consola {

namespace {

/// El formato que tendría cada texto recién tecleado en una celda nueva: solo hay que escribir lo
/// que difiere de él.
class FormatoTecleado {
  public:
    nucleo::Formato de(const nucleo::Celda& celda) {
        if (celda.tipo != nucleo::TipoCelda::Numero) {
            return {};
        }
        libro_.reiniciar();
        motor_.establecerCelda(0, 0, 0, celda.entrada);
        const nucleo::Celda* tecleada = libro_.hojas.front()->celda(0, 0);
        return tecleada == nullptr ? nucleo::Formato{} : tecleada->formato;
    }

  private:
    nucleo::Libro libro_;
    motor_formulas::Motor motor_{libro_};
};

struct Mancha {
    nucleo::RangoCeldas rango;
    std::string palabras;
};

/// Junta las celdas de iguales palabras en rectángulos: primero a lo ancho, luego hacia abajo.
class JuntadorDeManchas {
  public:
    void anadir(int fila, int col, const std::string& palabras) {
        if (!tira_.empty() && tira_.back().rango.fila1 == fila &&
            tira_.back().rango.col2 + 1 == col && tira_.back().palabras == palabras) {
            tira_.back().rango.col2 = col;
            return;
        }
        if (!tira_.empty() && tira_.back().rango.fila1 != fila) {
            cerrarFila();
        }
        tira_.push_back({{fila, col, fila, col}, palabras});
    }

    std::vector<Mancha> terminar() {
        cerrarFila();
        return std::move(manchas_);
    }

  private:
    void cerrarFila() {
        std::map<std::pair<int, int>, std::size_t> abiertas;
        for (Mancha& mancha : tira_) {
            const std::pair columnas(mancha.rango.col1, mancha.rango.col2);
            const auto encima = abiertas_.find(columnas);
            if (encima != abiertas_.end() &&
                manchas_[encima->second].rango.fila2 + 1 == mancha.rango.fila1 &&
                manchas_[encima->second].palabras == mancha.palabras) {
                manchas_[encima->second].rango.fila2 = mancha.rango.fila1;
                abiertas.emplace(columnas, encima->second);
            } else {
                abiertas.emplace(columnas, manchas_.size());
                manchas_.push_back(std::move(mancha));
            }
        }
        abiertas_ = std::move(abiertas);
        tira_.clear();
    }

    std::vector<Mancha> tira_;                            ///< las de la fila en curso
    std::map<std::pair<int, int>, std::size_t> abiertas_; ///< las que tocan la fila anterior
    std::vector<Mancha> manchas_;
};

std::string nombreFila(int fila) {
    return std::to_string(fila + 1);
}

void escribirMedidas(std::ostream& destino, const char* indicacion,
                     const nucleo::MapaTamanos& medidas, int ultimo, int minimo, int maximo,
                     std::string (*nombrar)(int)) {
    const std::map<int, int> enOrden(medidas.begin(), medidas.end());
    for (auto it = enOrden.lower_bound(0); it != enOrden.end() && it->first <= ultimo;) {
        const auto [primero, pixeles] = *it;
        int final = primero;
        for (++it; it != enOrden.end() && it->first == final + 1 && it->first <= ultimo &&
                   it->second == pixeles;
             ++it) {
            ++final;
        }
        if (pixeles >= minimo && pixeles <= maximo) {
            destino << indicacion << ' ' << nombrar(primero)
                    << (final == primero ? "" : ":" + nombrar(final)) << ' ' << pixeles << '\n';
        }
    }
}

bool cabe(const nucleo::RangoFusion& fusion) {
    return fusion.fila1 >= 0 && fusion.fila1 <= fusion.fila2 && fusion.fila2 < nucleo::kFilas &&
           fusion.col1 >= 0 && fusion.col1 <= fusion.col2 && fusion.col2 < nucleo::kColumnas;
}

} // namespace

void escribirFormato(std::ostream& destino, const nucleo::Hoja& hoja) {
    if (!hoja.nombre.empty() && hoja.nombre.find_first_of("\r\n") == std::string::npos) {
        destino << "hoja " << hoja.nombre << '\n';
    }
    if (hoja.filasInmovilizadas > 0 || hoja.columnasInmovilizadas > 0) {
        destino << "inmovilizar " << std::clamp(hoja.filasInmovilizadas, 0, nucleo::kFilas) << ' '
                << std::clamp(hoja.columnasInmovilizadas, 0, nucleo::kColumnas) << '\n';
    }
    escribirMedidas(destino, "ancho", hoja.anchos, nucleo::kUltimaColumna, nucleo::kAnchoMinimo,
                    nucleo::kAnchoMaximo, nucleo::nombreColumna);
    escribirMedidas(destino, "alto", hoja.altos, nucleo::kUltimaFila, nucleo::kAltoMinimo,
                    nucleo::kAltoMaximo, nombreFila);
    for (const nucleo::RangoFusion& fusion : hoja.fusiones) {
        if (cabe(fusion)) {
            destino << "fusion "
                    << nucleo::textoRango({fusion.fila1, fusion.col1, fusion.fila2, fusion.col2})
                    << '\n';
        }
    }
    FormatoTecleado tecleado;
    JuntadorDeManchas manchas;
    hoja.celdas.recorrerPorFilas({0, 0, nucleo::kUltimaFila, nucleo::kUltimaColumna},
                                 [&](int fila, int col, const nucleo::Celda& celda) {
                                     const std::string palabras =
                                         palabrasEntre(tecleado.de(celda), celda.formato);
                                     if (!palabras.empty()) {
                                         manchas.anadir(fila, col, palabras);
                                     }
                                     return true;
                                 });
    for (const Mancha& mancha : manchas.terminar()) {
        destino << "formato " << nucleo::textoRango(mancha.rango) << ' ' << mancha.palabras << '\n';
    }
}

} // namespace consola
