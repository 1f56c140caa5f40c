#include "console/archivo_formato.h"
#include "console/palabras_formato.h"
#include "model/direcciones.h"
#include "model/limites.h"
#include "model/rango_texto.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

namespace consola {

namespace {

/// Celdas a las que un archivo puede dar formato en total: más no las hace una persona.
constexpr std::int64_t kMaximoConFormato = 5'000'000;

struct Tramo {
    int primero;
    int ultimo;
};

class LectorFormato {
  public:
    explicit LectorFormato(nucleo::Libro& libro) : libro_(libro) {}

    /// Vacío, o lo que está mal en la línea.
    std::string linea(std::string_view texto) {
        std::string_view resto = texto;
        const std::string_view indicacion = sacarPalabra(resto);
        if (indicacion.empty() || indicacion.front() == '#') {
            return {};
        }
        if (indicacion == "hoja") {
            return empezarHoja(resto);
        }
        if (indicacion == "inmovilizar") {
            return inmovilizar(resto);
        }
        if (indicacion == "ancho") {
            return medida(resto, hoja().anchos, leerColumnas(sacarPalabra(resto)),
                          nucleo::kAnchoMinimo, nucleo::kAnchoMaximo);
        }
        if (indicacion == "alto") {
            return medida(resto, hoja().altos, leerFilas(sacarPalabra(resto)), nucleo::kAltoMinimo,
                          nucleo::kAltoMaximo);
        }
        if (indicacion == "fusion") {
            return fusionar(resto);
        }
        if (indicacion == "formato") {
            return formato(resto);
        }
        return "no se entiende «" + std::string(indicacion) + "»";
    }

  private:
    nucleo::Hoja& hoja() { return *libro_.hojas[static_cast<std::size_t>(std::max(indice_, 0))]; }

    std::string empezarHoja(std::string_view resto) {
        resto.remove_prefix(std::min(resto.find_first_not_of(" \t"), resto.size()));
        if (resto.empty()) {
            return "falta el nombre de la hoja";
        }
        if (static_cast<std::size_t>(indice_ + 1) >= libro_.hojas.size()) {
            return "hay más hojas que archivos de texto";
        }
        ++indice_;
        if (!nombres_.emplace(resto).second) {
            return "dos hojas no pueden llamarse igual";
        }
        hoja().nombre = resto;
        return {};
    }

    std::string inmovilizar(std::string_view resto) {
        const auto filas = leerEntero(sacarPalabra(resto), 0, nucleo::kFilas);
        const auto columnas = leerEntero(sacarPalabra(resto), 0, nucleo::kColumnas);
        if (!filas || !columnas || !sacarPalabra(resto).empty()) {
            return "se espera: inmovilizar FILAS COLUMNAS";
        }
        hoja().filasInmovilizadas = *filas;
        hoja().columnasInmovilizadas = *columnas;
        return {};
    }

    static std::optional<Tramo> leerColumnas(std::string_view texto) {
        const std::size_t dosPuntos = std::min(texto.find(':'), texto.size());
        const int primera = nucleo::columnaDesdeNombre(texto.substr(0, dosPuntos));
        const int ultima = dosPuntos == texto.size()
                               ? primera
                               : nucleo::columnaDesdeNombre(texto.substr(dosPuntos + 1));
        return primera < 0 || ultima < primera ? std::nullopt
                                               : std::optional(Tramo{primera, ultima});
    }

    static std::optional<Tramo> leerFilas(std::string_view texto) {
        const std::size_t dosPuntos = std::min(texto.find(':'), texto.size());
        const auto primera = leerEntero(texto.substr(0, dosPuntos), 1, nucleo::kFilas);
        const auto ultima = dosPuntos == texto.size()
                                ? primera
                                : leerEntero(texto.substr(dosPuntos + 1), 1, nucleo::kFilas);
        return !primera || !ultima || *ultima < *primera
                   ? std::nullopt
                   : std::optional(Tramo{*primera - 1, *ultima - 1});
    }

    static std::string medida(std::string_view& resto, nucleo::MapaTamanos& medidas,
                              std::optional<Tramo> tramo, int minimo, int maximo) {
        const auto pixeles = leerEntero(sacarPalabra(resto), minimo, maximo);
        if (!tramo || !pixeles || !sacarPalabra(resto).empty()) {
            return "se espera un tramo, como A, A:F, 1 o 1:5, y de " + std::to_string(minimo) +
                   " a " + std::to_string(maximo) + " píxeles";
        }
        for (int i = tramo->primero; i <= tramo->ultimo; ++i) {
            medidas[i] = *pixeles;
        }
        return {};
    }

    std::string fusionar(std::string_view resto) {
        const auto rango = nucleo::leerRango(sacarPalabra(resto));
        if (!rango || !sacarPalabra(resto).empty()) {
            return "se espera: fusion A1:F1";
        }
        return hoja().fusionar(rango->fila1, rango->col1, rango->fila2, rango->col2)
                   ? ""
                   : "la fusión es de una sola celda o toca otra";
    }

    std::string formato(std::string_view resto) {
        const auto rango = nucleo::leerRango(sacarPalabra(resto));
        if (!rango) {
            return "se espera: formato A1:F1 PALABRAS";
        }
        conFormato_ += rango->celdas();
        if (conFormato_ > kMaximoConFormato) {
            return "son demasiadas celdas con formato";
        }
        nucleo::Formato prueba;
        if (const std::string mala = aplicarPalabras(resto, prueba); !mala.empty()) {
            return "no se entiende «" + mala + "»";
        }
        for (int fila = rango->fila1; fila <= rango->fila2; ++fila) {
            for (int col = rango->col1; col <= rango->col2; ++col) {
                aplicarPalabras(resto, hoja().celdaMut(fila, col).formato);
            }
        }
        return {};
    }

    nucleo::Libro& libro_;
    int indice_ = -1; ///< la última hoja que se ha nombrado
    std::set<std::string, std::less<>> nombres_;
    std::int64_t conFormato_ = 0;
};

} // namespace

std::string aplicarFormato(std::istream& origen, nucleo::Libro& libro) {
    LectorFormato lector(libro);
    std::string linea;
    for (int numero = 1; std::getline(origen, linea); ++numero) {
        if (linea.ends_with('\r')) {
            linea.pop_back();
        }
        if (const std::string error = lector.linea(linea); !error.empty()) {
            return "línea " + std::to_string(numero) + ": " + error;
        }
    }
    return origen.bad() ? "falla la lectura" : "";
}

} // namespace consola
