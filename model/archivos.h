#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace nucleo {

struct CerrarArchivo {
    void operator()(std::FILE* archivo) const { std::fclose(archivo); }
};
/// Un archivo abierto que se cierra solo.
using Archivo = std::unique_ptr<std::FILE, CerrarArchivo>;

/// Qué hacer cuando la ruta acaba en un enlace simbólico.
enum class Enlaces { Seguir, Rechazar };

/// Abre para leer en binario un archivo o un dispositivo de caracteres; nulo si no existe, no se
/// puede o es otra cosa (carpeta, tubería…). Nunca se queda esperando.
Archivo abrirParaLeer(const std::string& ruta, Enlaces enlaces);

/// Abre para escribir en binario, vaciándolo o creándolo con los permisos que deje la máscara del
/// proceso; nulo en los mismos casos que `abrirParaLeer`.
Archivo abrirParaEscribir(const std::string& ruta);

/// Verdadero si el archivo es de quien ejecuta el programa.
bool esPropio(std::FILE* archivo);

/// Escribe los bytes, los lleva al disco y cierra el archivo. Falso en cuanto algo falla.
bool volcarYCerrar(Archivo archivo, const unsigned char* datos, std::size_t tamano);

/// Un archivo privado que se escribe entero y entonces ocupa el sitio de otro. Mientras vive, otro
/// proceso que use el mismo nombre provisional no puede abrirlo.
class ArchivoProvisional {
  public:
    /// Solo lo lee y escribe su dueño; no sigue enlaces.
    explicit ArchivoProvisional(std::string ruta);
    ~ArchivoProvisional();
    ArchivoProvisional(const ArchivoProvisional&) = delete;
    ArchivoProvisional& operator=(const ArchivoProvisional&) = delete;

    bool abierto() const { return archivo_ != nullptr; }
    /// Una sola vez. Si algo falla da falso, borra lo escrito y el destino queda como estaba.
    bool escribirYRenombrar(const unsigned char* datos, std::size_t tamano,
                            const std::string& destino);

  private:
    std::string ruta_;
    Archivo archivo_;
    int cerrojo_ = -1;
};

} // namespace nucleo
