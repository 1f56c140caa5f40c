#include "printing/archivo.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace impresion {

bool guardarBytes(const QByteArray& bytes, const std::string& ruta) {
    std::FILE* archivo = std::fopen(ruta.c_str(), "wbe");
    if (archivo == nullptr) {
        return false;
    }
    const auto cuantos = static_cast<std::size_t>(bytes.size());
    // En un disco lleno es el vaciado, y no el cierre, quien lo dice.
    bool bien = std::fwrite(bytes.constData(), 1, cuantos, archivo) == cuantos;
    bien = std::fflush(archivo) == 0 && bien;
    bien = std::fclose(archivo) == 0 && bien;
    std::error_code error;
    if (!bien && std::filesystem::is_regular_file(ruta, error)) {
        std::filesystem::remove(ruta, error);
    }
    return bien;
}

} // namespace impresion
