#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace pruebas {

/// Lo que hay en el disco: la huella de cada libro, nada si no existe.
struct Disco {
    /// Lo que se da por huella de un archivo que no es un libro entero.
    static constexpr std::uint64_t kRoto = 1;

    std::optional<std::uint64_t> recuperacion;
    std::optional<std::uint64_t> documento;
};

/// Lo que un proceso dijo antes de morir, y lo que por tanto puede haber quedado en el disco.
class Vida {
  public:
    /// `alNacer`: el disco con que empieza. `sinNada`: la huella de un libro recién creado.
    Vida(const Disco& alNacer, std::uint64_t sinNada);

    /// Una línea de las que dice. Da lo que tiene de imposible, o vacío.
    std::string leer(const std::string& linea);
    /// Lo que el disco tiene de imposible tras la muerte, o vacío.
    std::string defecto(const Disco& alMorir) const;

    bool empezoAEditar() const { return actual_.has_value(); }
    bool recupero() const { return recupero_; }
    bool documentoRoto() const { return documentoRoto_; }

  private:
    using Huella = std::optional<std::uint64_t>;

    std::string leerPrimerEstado(std::uint64_t estado);

    Disco alNacer_;
    std::uint64_t sinNada_;
    std::set<Huella> recuperaciones_;
    std::set<Huella> documentos_;
    Huella actual_;
    bool ofrecio_ = false;
    bool recupero_ = false;
    bool documentoRoto_ = false;
    bool guardando_ = false;
    bool habiaRecuperacion_ = false; ///< al empezar a guardar
};

} // namespace pruebas
