#pragma once

#include "tests/comun/carpeta_temporal.h"
#include "tests/ui/eventos/azar.h"
#include "tests/ui/muertes/vida.h"

#include <cstdint>
#include <string>

namespace pruebas {

/// Cuántas muertes hubo y dónde encontraron al programa.
struct Cuenta {
    int muertes = 0;
    int arrancando = 0;      ///< antes de poder editar
    int aMedioEscribir = 0;  ///< con el archivo de recuperación a medio escribir
    int documentosRotos = 0; ///< con el documento a medio guardar
    int recuperaciones = 0;  ///< arranques que recuperaron lo que dejó la muerte anterior

    Cuenta& operator+=(const Cuenta& otra);
};

/// Arranca el programa una y otra vez sobre la misma carpeta temporal, lo mata con SIGKILL en
/// cualquier momento y mira que lo que queda en el disco, y lo que recupera la vez siguiente, sea
/// un estado que existió.
class Verdugo {
  public:
    /// `programa`: el ejecutable que arranca con "--programa". Con `conDocumento` edita un libro
    /// guardado, y a veces lo guarda; sin él, un libro sin título.
    Verdugo(std::string programa, std::uint64_t semilla, bool conDocumento);

    /// Una vida y una muerte. Da lo que tuvo de imposible, o vacío.
    std::string matar();
    const Cuenta& cuenta() const { return cuenta_; }

  private:
    struct Proceso;

    Disco mirarDisco() const;
    std::string archivosDeMas() const;
    /// Vuelve a dejar un documento en el sitio del que se rompió al guardarlo, como haría una
    /// persona con su copia de recuperación.
    std::string reponerDocumento();
    Proceso nacer();
    /// Lee lo que dice hasta que llega su hora; entonces lo mata y lee lo que quede.
    std::string vivirYMorir(const Proceso& proceso, Vida& vida);

    std::string programa_;
    Azar azar_;
    bool conDocumento_;
    CarpetaTemporal carpeta_;
    std::string documento_;
    std::string recuperacion_;
    std::uint64_t sinNada_;
    Cuenta cuenta_;
};

} // namespace pruebas
