#pragma once

namespace prueba {

/// Mientras vive, la llamada número `n` (desde 1) a las funciones del sistema con las que se leen
/// y escriben archivos falla como lo haría de verdad; con 0 solo se cuentan.
class FalloDeArchivo {
  public:
    explicit FalloDeArchivo(int n);
    ~FalloDeArchivo();
    FalloDeArchivo(const FalloDeArchivo&) = delete;
    FalloDeArchivo& operator=(const FalloDeArchivo&) = delete;

    /// Verdadero si el fallo llegó a ocurrir.
    bool ocurrio() const;
    /// El nombre de la función que falló, o vacío.
    const char* funcion() const;
};

/// Mientras vive, nada espera al disco: para pruebas que guardan miles de veces.
class SinEsperarAlDisco {
  public:
    SinEsperarAlDisco();
    ~SinEsperarAlDisco();
    SinEsperarAlDisco(const SinEsperarAlDisco&) = delete;
    SinEsperarAlDisco& operator=(const SinEsperarAlDisco&) = delete;
};

} // namespace prueba
