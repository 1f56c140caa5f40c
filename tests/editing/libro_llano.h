#pragma once

#include "editing/seleccion.h"
#include "model/libro.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace pruebas {

/// Una hoja copiada celda a celda, sin compartir nada con la original. Los tamaños van aparte.
struct HojaLlana {
    std::string nombre;
    std::map<std::uint64_t, nucleo::Celda> celdas;
    std::vector<nucleo::RangoFusion> fusiones;
    int filasInmovilizadas = 0;
    int columnasInmovilizadas = 0;

    bool operator==(const HojaLlana&) const = default;
};

/// Todo lo que el historial guarda de un libro, y qué filas y columnas son cada una: un número que
/// nadie más tiene y que las acompaña cuando se desplazan.
struct Foto {
    std::vector<HojaLlana> hojas;
    int hojaActiva = 0;
    editor::Seleccion seleccion;

    struct Ejes {
        int hoja = 0;
        std::vector<int> filas;
        std::vector<int> columnas;
    };
    std::vector<Ejes> ejes; ///< por hoja
};

/// Lo que el editor promete del historial y de los tamaños, hecho a lo bruto: pilas de fotos
/// enteras, y un tamaño por cada fila y columna que alguien haya cambiado alguna vez.
class HistorialLlano {
  public:
    HistorialLlano() = default;
    /// Una operación con paso acaba de llevar el libro de `antes` a como está.
    void registrar(const Foto& antes);
    void olvidarRehacer() { rehacer_.clear(); }
    /// Lleva la foto presente un paso atrás o adelante; falso si no lo hay.
    bool deshacer(Foto& presente) { return volver(deshacer_, rehacer_, presente); }
    bool rehacer(Foto& presente) { return volver(rehacer_, deshacer_, presente); }
    std::size_t pasosDeshacer() const { return deshacer_.size(); }
    std::size_t pasosRehacer() const { return rehacer_.size(); }

    /// Ejes de una hoja que se acaba de añadir.
    Foto::Ejes ejesNuevos();
    void insertar(Foto::Ejes& ejes, bool filas, int desde, int cantidad);
    void eliminar(Foto::Ejes& ejes, bool filas, int desde, int cantidad);
    void redimensionar(const Foto::Ejes& ejes, bool fila, int indice, int tamano);

    /// Tamaños que debe tener la hoja de esos ejes.
    std::map<int, int> tamanos(const Foto::Ejes& ejes, bool filas) const;

  private:
    static bool volver(std::vector<Foto>& desde, std::vector<Foto>& hacia, Foto& presente);

    std::vector<Foto> deshacer_;
    std::vector<Foto> rehacer_;
    std::map<int, int> tamanos_; ///< por número de fila o columna
    int siguiente_ = 0;
};

HojaLlana copiaLlana(const nucleo::Hoja& hoja);
std::vector<HojaLlana> copiaLlana(const nucleo::Libro& libro);

/// En qué se diferencian dos hojas, para leerlo en el fallo de una prueba; vacío si son iguales.
std::string diferencia(const HojaLlana& una, const HojaLlana& otra);
/// Lo mismo de dos listas de hojas, tamaños incluidos.
std::string diferencia(const std::vector<nucleo::Hoja>& unas,
                       const std::vector<nucleo::Hoja>& otras);

} // namespace pruebas
