#pragma once

#include "console/dialecto.h"
#include "model/limites.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace consola {

/// Un campo leído y su sitio, contado desde cero.
struct Campo {
    std::string texto;
    std::int64_t fila = 0;
    std::int64_t columna = 0;
    bool ultimo = false; ///< el último de su registro
};

/// Lee los campos de un archivo de texto uno a uno, con memoria para un bloque y un campo.
///
/// Los registros acaban en salto de línea, en retorno de carro o en los dos. Se admite la marca
/// inicial de UTF-8. Lo que no es UTF-8 se lee como Windows-1252.
class LectorCampos {
  public:
    enum class Lectura { Campo, Fin, Error };

    /// El texto de una celda más largo no podría volver a leerse de un libro.
    static constexpr std::size_t kMaximoCampo = nucleo::kMaximoTexto;
    static constexpr std::size_t kBloque = 65536;

    explicit LectorCampos(std::istream& origen, std::size_t bloque = kBloque);

    /// Los primeros bytes, sin la marca inicial, para reconocer el separador. Vale hasta la primera
    /// lectura.
    std::string_view comienzo() const;
    void elegirDialecto(const Dialecto& dialecto) { dialecto_ = dialecto; }

    Lectura siguiente(Campo& campo);

    /// Qué ha fallado, cuando `siguiente` da `Error`.
    const std::string& error() const { return error_; }
    bool habiaWindows1252() const { return habiaWindows1252_; }
    std::uint64_t bytesLeidos() const { return bytesLeidos_; }

  private:
    bool llenar();
    bool quedan() { return posicion_ < fin_ || llenar(); }
    /// Copia en el campo hasta el primer byte de `paradas`, que queda sin leer.
    bool copiarHasta(std::string& texto, std::string_view paradas);
    bool leerEntreComillas(std::string& texto);
    Lectura fallar(std::string error);
    Lectura terminarCampo(Campo& campo);

    std::istream& origen_;
    Dialecto dialecto_ = kCsv;
    std::vector<char> bloque_;
    std::size_t posicion_ = 0;
    std::size_t fin_ = 0;
    std::uint64_t bytesLeidos_ = 0;
    std::int64_t fila_ = 0;
    std::int64_t columna_ = 0;
    std::int64_t linea_ = 1;
    bool separadorPendiente_ = false; ///< tras un separador hay un campo, aunque acabe el archivo
    bool habiaWindows1252_ = false;
    std::string error_;
};

} // namespace consola
