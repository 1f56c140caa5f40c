#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace prueba {

inline std::string leerBytes(const std::string& ruta) {
    std::ifstream archivo(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(archivo), {}};
}

/// Crea el archivo de nuevo: truncar uno recién escrito hace esperar al disco en algunos sistemas.
inline void escribirBytes(const std::string& ruta, const std::string& bytes) {
    std::remove(ruta.c_str());
    std::ofstream archivo(ruta, std::ios::binary | std::ios::trunc);
    archivo.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace prueba
