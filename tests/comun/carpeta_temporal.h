#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

/// Una carpeta vacía que desaparece con la prueba.
class CarpetaTemporal {
  public:
    CarpetaTemporal() {
        std::string plantilla = std::filesystem::temp_directory_path() / "marnel_prueba_XXXXXX";
        const char* hecha = mkdtemp(plantilla.data());
        ruta_ = hecha == nullptr ? std::string() : plantilla;
    }
    ~CarpetaTemporal() {
        std::error_code error;
        std::filesystem::remove_all(ruta_, error);
    }
    CarpetaTemporal(const CarpetaTemporal&) = delete;
    CarpetaTemporal& operator=(const CarpetaTemporal&) = delete;

    std::string ruta(const std::string& nombre) const { return ruta_ + "/" + nombre; }

    std::string escribir(const std::string& nombre, const std::string& contenido) const {
        std::ofstream(ruta(nombre), std::ios::binary) << contenido;
        return ruta(nombre);
    }
    std::string leer(const std::string& nombre) const {
        std::ostringstream contenido;
        contenido << std::ifstream(ruta(nombre), std::ios::binary).rdbuf();
        return contenido.str();
    }
    bool existe(const std::string& nombre) const { return std::filesystem::exists(ruta(nombre)); }

  private:
    std::string ruta_;
};
