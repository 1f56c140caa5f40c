#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace consola {

/// Una opción que se admite: "--rango A1:D20" lleva valor, "--json" no.
struct Opcion {
    std::string_view nombre; ///< con sus dos guiones
    std::string_view valor;  ///< cómo se llama su valor en la ayuda; vacío si no lleva
    std::string_view descripcion;
};

/// Los argumentos de una orden, ya separados en opciones y lo demás.
class Argumentos {
  public:
    /// Lee los argumentos que siguen al nombre de la orden. Devuelve vacío si son correctos, o lo
    /// que está mal. Tras "--" nada es una opción; "--opcion=valor" vale como "--opcion valor".
    std::string leer(std::span<const std::string> textos, std::span<const Opcion> admitidas);

    const std::vector<std::string>& sueltos() const { return sueltos_; }
    bool tiene(std::string_view opcion) const { return opciones_.contains(opcion); }
    /// El valor de una opción, o nulo si no se ha dado.
    const std::string* valor(std::string_view opcion) const;

  private:
    std::vector<std::string> sueltos_;
    std::map<std::string, std::string, std::less<>> opciones_;
};

} // namespace consola
