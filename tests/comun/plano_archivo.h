#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace prueba {

/// Un campo de un archivo de libro y el mayor valor con sentido que puede tener.
struct Campo {
    std::size_t donde;
    std::size_t bytes;
    std::uint32_t maximo;
    const char* que;
};

/// Recorre los bytes de un libro bien formado y apunta dónde está cada campo.
class Plano {
  public:
    explicit Plano(const std::string& bytes) : bytes_(bytes) {
        campo(4, 0, "magia");
        campo(4, 1, "versión");
        const std::uint32_t hojas = campo(4, 1024, "hojas");
        campo(4, hojas - 1, "activa");
        for (std::uint32_t i = 0; i < hojas; ++i)
            hoja();
    }

    std::vector<Campo> campos;

  private:
    std::uint32_t campo(std::size_t largo, std::uint32_t maximo, const char* que) {
        campos.push_back({donde_, largo, maximo, que});
        std::uint32_t valor = 0;
        if (largo == 4)
            std::memcpy(&valor, bytes_.data() + donde_, 4);
        donde_ += largo;
        return valor;
    }
    void texto(const char* que) { donde_ += campo(4, 16777216, que); }
    void tamanos(const char* que, std::uint32_t ultima, std::uint32_t maximo) {
        for (std::uint32_t n = campo(4, 1000000, que); n > 0; --n) {
            campo(4, ultima, "clave de tamaño");
            campo(4, maximo, "tamaño");
        }
    }
    void hoja() {
        texto("nombre");
        campo(4, 65535, "filas inmovilizadas");
        campo(4, 701, "columnas inmovilizadas");
        tamanos("anchos", 701, 600);
        tamanos("altos", 65535, 400);
        for (std::uint32_t n = campo(4, 1000000, "fusiones"); n > 0; --n) {
            for (const std::uint32_t ultima : {65535U, 701U, 65535U, 701U})
                campo(4, ultima, "esquina de fusión");
        }
        for (std::uint32_t n = campo(4, 50000000, "celdas"); n > 0; --n)
            celda();
    }
    void celda() {
        campo(4, 701, "columna");
        campo(4, 65535, "fila");
        campo(1, 3, "tipo");
        texto("entrada");
        campo(8, 0, "número");
        campo(1, 4, "formato de número");
        campo(1, 10, "decimales");
        campo(1, 1, "separador de miles");
        campo(1, 15, "estilo");
        campo(4, 0, "color de texto");
        campo(4, 0, "color de fondo");
        campo(1, 3, "alineación");
    }

    const std::string& bytes_;
    std::size_t donde_ = 0;
};

/// Los valores con los que un archivo roto o malintencionado cambiaría un campo. Los que no caben
/// en él se quedan en sus bytes bajos; -1 es el último.
inline std::array<std::uint64_t, 8> valoresExtremos(const Campo& campo) {
    return {0,          1,          campo.maximo, std::uint64_t{campo.maximo} + 1,
            0x7fffffff, 0x80000000, 0xffffffff,   ~std::uint64_t{0}};
}

inline std::string conValor(std::string bytes, const Campo& campo, std::uint64_t valor) {
    std::memcpy(bytes.data() + campo.donde, &valor, campo.bytes);
    return bytes;
}

} // namespace prueba
