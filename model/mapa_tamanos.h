#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <unordered_map>
#include <utility>

namespace nucleo {

/// Mezcla la clave con una semilla del proceso: las filas y columnas las elige el archivo, y con
/// la dispersión identidad unas claves escogidas caerían todas en unas pocas listas.
struct DispersionSembrada {
    std::size_t operator()(int clave) const noexcept;
};

/// Tamaños distintos del predeterminado: columna o fila -> píxeles sin zoom. Se usa como un
/// `std::unordered_map`. Las copias comparten la tabla hasta que una la cambia: cada paso del
/// historial guarda una copia, y puede haber un tamaño por fila.
///
/// Pedir un iterador o una referencia para escribir aparta la tabla de las copias: dejan de valer
/// al copiar el mapa, y quien solo lee lo hace por una referencia constante.
class MapaTamanos {
    using Tabla = std::unordered_map<int, int, DispersionSembrada>;

  public:
    using key_type = int;
    using mapped_type = int;
    using value_type = Tabla::value_type;
    using size_type = std::size_t;
    using iterator = Tabla::iterator;
    using const_iterator = Tabla::const_iterator;

    MapaTamanos() = default;
    MapaTamanos(std::initializer_list<value_type> tamanos)
        : tabla_(std::make_shared<Tabla>(tamanos)) {}

    iterator begin() { return propia().begin(); }
    iterator end() { return propia().end(); }
    const_iterator begin() const { return tabla().begin(); }
    const_iterator end() const { return tabla().end(); }

    std::size_t size() const { return tabla().size(); }
    bool empty() const { return tabla().empty(); }
    void clear() { tabla_.reset(); }
    void reserve(std::size_t tamanos) { propia().reserve(tamanos); }

    iterator find(int clave) { return propia().find(clave); }
    const_iterator find(int clave) const { return tabla().find(clave); }
    std::size_t count(int clave) const { return tabla().count(clave); }
    bool contains(int clave) const { return tabla().contains(clave); }
    /// Lanza std::out_of_range si no existe.
    int& at(int clave) { return propia().at(clave); }
    const int& at(int clave) const { return tabla().at(clave); }
    int& operator[](int clave) { return propia()[clave]; }

    std::pair<iterator, bool> emplace(int clave, int tamano) {
        return propia().emplace(clave, tamano);
    }
    std::pair<iterator, bool> insert(const value_type& par) { return propia().insert(par); }
    std::pair<iterator, bool> insert_or_assign(int clave, int tamano) {
        return propia().insert_or_assign(clave, tamano);
    }
    std::size_t erase(int clave) { return propia().erase(clave); }
    iterator erase(const_iterator posicion) { return propia().erase(posicion); }

    /// Verdadero si son copias que nadie ha cambiado desde que lo son: quien guarda una copia sabe
    /// así, sin mirar los tamaños, si lo que calculó con ella sigue valiendo.
    bool comparteCon(const MapaTamanos& otro) const { return tabla_ == otro.tabla_; }

    bool operator==(const MapaTamanos& otro) const {
        return tabla_ == otro.tabla_ || tabla() == otro.tabla();
    }

  private:
    const Tabla& tabla() const;
    /// La tabla para escribir en ella, que ya no comparte nadie.
    Tabla& propia();

    std::shared_ptr<Tabla> tabla_; ///< nula si no hay ningún tamaño
};

} // namespace nucleo
