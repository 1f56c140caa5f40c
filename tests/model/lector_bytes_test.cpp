#include "model/lector_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <string>

namespace nucleo {
namespace {

using Modo = LectorBytes::Modo;

/// Lo que se lee del archivo de una vez en el modo adelantado.
constexpr std::size_t kBloque = std::size_t{256} * 1024;

struct Cerrar {
    void operator()(std::FILE* archivo) const { std::fclose(archivo); }
};
using Archivo = std::unique_ptr<std::FILE, Cerrar>;

Archivo archivoCon(std::string& bytes) {
    return Archivo(fmemopen(bytes.data(), bytes.size(), "rb"));
}

std::string bytesAlAzar(std::size_t cuantos) {
    std::mt19937 azar(7);
    std::string bytes(cuantos, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(azar());
    return bytes;
}

std::string tomados(LectorBytes& lector, std::size_t n) {
    const unsigned char* bytes = lector.tomar(n);
    return bytes == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(bytes), n);
}

TEST(LectorBytes, LeeIgualDondeSeAcabaUnBloque) {
    std::string bytes = bytesAlAzar(2 * kBloque);
    for (const Modo modo : {Modo::Justo, Modo::Adelantado}) {
        for (std::size_t antes = 0; antes <= LectorBytes::kContiguo + 1; ++antes) {
            SCOPED_TRACE(antes);
            const Archivo archivo = archivoCon(bytes);
            LectorBytes lector(archivo.get(), modo);
            // La primera lectura trae un bloque entero; después quedan de él `antes` bytes.
            ASSERT_EQ(tomados(lector, 1), bytes.substr(0, 1));
            std::string texto = "lo de antes";
            ASSERT_TRUE(lector.leerTexto(texto, kBloque - 1 - antes));
            ASSERT_TRUE(texto == bytes.substr(1, kBloque - 1 - antes));
            const std::size_t sitio = kBloque - antes;
            ASSERT_EQ(tomados(lector, LectorBytes::kContiguo),
                      bytes.substr(sitio, LectorBytes::kContiguo));
            ASSERT_EQ(tomados(lector, 3), bytes.substr(sitio + LectorBytes::kContiguo, 3));
        }
    }
}

TEST(LectorBytes, UnTextoPasaDeUnBloqueAOtro) {
    std::string bytes = bytesAlAzar(3 * kBloque + 100);
    for (const Modo modo : {Modo::Justo, Modo::Adelantado}) {
        for (const std::size_t antes :
             {std::size_t{0}, std::size_t{1}, std::size_t{63}, kBloque - 1, kBloque, kBloque + 1}) {
            for (const std::size_t largo : {std::size_t{0}, std::size_t{1}, std::size_t{64},
                                            kBloque - 1, kBloque, kBloque + 1, 2 * kBloque}) {
                SCOPED_TRACE(testing::Message() << antes << ", " << largo);
                const Archivo archivo = archivoCon(bytes);
                LectorBytes lector(archivo.get(), modo);
                std::string texto;
                ASSERT_TRUE(lector.leerTexto(texto, antes));
                ASSERT_TRUE(lector.leerTexto(texto, largo));
                ASSERT_TRUE(texto == bytes.substr(antes, largo));
                ASSERT_EQ(tomados(lector, 5), bytes.substr(antes + largo, 5));
            }
        }
    }
}

TEST(LectorBytes, LeerATrozosAlAzarDaElArchivo) {
    std::string bytes = bytesAlAzar(kBloque + 5000);
    std::mt19937 azar(9);
    for (const Modo modo : {Modo::Justo, Modo::Adelantado}) {
        const Archivo archivo = archivoCon(bytes);
        LectorBytes lector(archivo.get(), modo);
        std::size_t sitio = 0;
        while (sitio + 200 < bytes.size()) {
            const std::size_t n = azar() % 65;
            if (azar() % 3 == 0) {
                std::string texto;
                ASSERT_TRUE(lector.leerTexto(texto, 2 * n));
                ASSERT_TRUE(texto == bytes.substr(sitio, 2 * n)) << sitio;
                sitio += 2 * n;
            } else {
                ASSERT_EQ(tomados(lector, n), bytes.substr(sitio, n)) << sitio;
                sitio += n;
            }
        }
    }
}

TEST(LectorBytes, LoQueFaltaNoSeLee) {
    for (const Modo modo : {Modo::Justo, Modo::Adelantado}) {
        std::string bytes = "12345678";
        Archivo archivo = archivoCon(bytes);
        LectorBytes lector(archivo.get(), modo);
        std::uint32_t entero = 0;
        ASSERT_TRUE(lector.leer(entero));
        EXPECT_EQ(entero, 0x34333231U);
        EXPECT_EQ(lector.tomar(5), nullptr);
        EXPECT_EQ(lector.tomar(64), nullptr);

        archivo = archivoCon(bytes);
        LectorBytes otro(archivo.get(), modo);
        std::string texto;
        EXPECT_FALSE(otro.leerTexto(texto, 9));
        archivo = archivoCon(bytes);
        LectorBytes justo(archivo.get(), modo);
        EXPECT_TRUE(justo.leerTexto(texto, 8));
        EXPECT_EQ(texto, bytes);
        EXPECT_TRUE(justo.leerTexto(texto, 0));
        EXPECT_EQ(texto, "");
        EXPECT_FALSE(justo.leerTexto(texto, 1));
        EXPECT_EQ(justo.tomar(1), nullptr);
    }
}

TEST(LectorBytes, ElModoJustoNoLeeDeMas) {
    std::string bytes = bytesAlAzar(1000);
    const Archivo archivo = archivoCon(bytes);
    LectorBytes lector(archivo.get(), Modo::Justo);
    ASSERT_NE(lector.tomar(13), nullptr);
    std::string texto;
    ASSERT_TRUE(lector.leerTexto(texto, 200));
    std::int32_t entero = 0;
    ASSERT_TRUE(lector.leer(entero));
    EXPECT_EQ(std::ftell(archivo.get()), 13 + 200 + 4);
}

TEST(LectorBytes, LosEnterosSonDeMenorAMayor) {
    const unsigned char bytes[] = {0x01, 0x02, 0x03, 0x84, 0x05, 0x06, 0x07, 0x88};
    EXPECT_EQ(LectorBytes::desempaquetar<std::uint32_t>(bytes), 0x84030201U);
    EXPECT_EQ(LectorBytes::desempaquetar<std::uint64_t>(bytes), 0x8807060584030201U);
    std::string negativo = "\xff\xff\xff\xff";
    const Archivo archivo = archivoCon(negativo);
    LectorBytes lector(archivo.get(), Modo::Justo);
    std::int32_t entero = 0;
    ASSERT_TRUE(lector.leer(entero));
    EXPECT_EQ(entero, -1);
    EXPECT_FALSE(lector.leer(entero));
}

} // namespace
} // namespace nucleo
