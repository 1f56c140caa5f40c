#pragma once

#include "console/dialecto.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace consola {

/// Escribe campos en un archivo de texto. Los que lo necesitan van entre comillas; donde no las
/// hay, los saltos de línea y los separadores de un campo se vuelven espacios.
class EscritorCampos {
  public:
    EscritorCampos(std::ostream& destino, const Dialecto& dialecto);
    ~EscritorCampos();
    EscritorCampos(const EscritorCampos&) = delete;
    EscritorCampos& operator=(const EscritorCampos&) = delete;

    void campo(std::string_view texto);
    void finDeRegistro();
    /// Entrega lo pendiente; falso si el destino no lo ha admitido todo.
    bool terminar();
    /// Falso en cuanto el destino rechaza algo: no merece la pena seguir.
    bool bien() const { return destino_.good(); }

    /// Campos que han perdido sus saltos de línea o separadores.
    std::int64_t camposCambiados() const { return camposCambiados_; }

  private:
    void entregar();

    std::ostream& destino_;
    Dialecto dialecto_;
    std::string especiales_; ///< los bytes que obligan a usar comillas
    std::string pendiente_;
    bool enRegistro_ = false;
    bool principio_ = true;
    std::int64_t camposCambiados_ = 0;
};

} // namespace consola
