// Archivos bien formados con un campo cambiado: ninguno se cree sin más, ninguno pide memoria que
// no merezca, y lo que se carga se puede consultar y vuelve a guardarse igual.

#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/comun/memoria.h"
#include "tests/comun/plano_archivo.h"
#include "tests/model/bytes_de_archivo.h"
#include "tests/model/fallos.h"
#include "tests/model/libros_ejemplo.h"

#include <climits>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace nucleo;
using prueba::Campo;
using prueba::escribirBytes;
using prueba::estaReiniciado;
using prueba::igualContenido;
using prueba::leerBytes;
using prueba::Plano;

constexpr std::ptrdiff_t kMegabyte = 1024 * 1024;

class Hostil : public ::testing::Test {
  protected:
    /// Carga los bytes y, si valen, comprueba que el libro se puede usar y guardar.
    void probar(const std::string& bytes, const std::string& que, std::ptrdiff_t margen) {
        escribirBytes(ruta_, bytes);
        Libro libro;
        ResultadoArchivo resultado = kArchivoBien;
        {
            const prueba::MemoriaPedida memoria;
            resultado = Serializador::cargar(ruta_, libro);
            ASSERT_LE(memoria.pico(), margen) << que;
        }
        if (resultado == kArchivoInvalido) {
            ASSERT_TRUE(estaReiniciado(libro)) << que;
            return;
        }
        ASSERT_EQ(resultado, kArchivoBien) << que;
        ++cargados_;
        usar(libro);
        const std::string otra = carpeta_.ruta("otra.mrn");
        std::filesystem::remove(otra);
        ASSERT_EQ(Serializador::guardar(libro, otra), kArchivoBien) << que;
        Libro vuelto;
        ASSERT_EQ(Serializador::cargar(otra, vuelto), kArchivoBien) << que;
        const std::string guardado = leerBytes(otra);
        std::filesystem::remove(otra);
        ASSERT_EQ(Serializador::guardar(vuelto, otra), kArchivoBien) << que;
        ASSERT_EQ(leerBytes(otra), guardado) << que;
    }

    static void usar(Libro& libro) {
        for (auto& hoja : libro.hojas) {
            ASSERT_TRUE(hoja->celdas.comprobar());
            hoja->ultimaFilaUsada();
            hoja->ultimaColUsada();
            for (const int fila : {0, 1, 65535, INT_MAX, INT_MIN})
                hoja->fusionEn(fila, fila);
            hoja->celdas.completarLiterales();
            const Hoja copia = *hoja;
            hoja->celdas.desplazarFilas(1, 1);
            hoja->celdas.desplazarColumnas(0, -1);
            ASSERT_TRUE(hoja->celdas.comprobar());
            *hoja = copia;
        }
    }

    prueba::SinEsperarAlDisco rapido_;
    CarpetaTemporal carpeta_;
    std::string ruta_ = carpeta_.ruta("hostil.mrn");
    int cargados_ = 0;
};

TEST_F(Hostil, CadaCampoConCadaValorExtremo) {
    Libro base = prueba::libroCompleto();
    base.hojas[2]->celdas.quitarRango({70, 0, kUltimaFila, kUltimaColumna});
    ASSERT_EQ(Serializador::guardar(base, ruta_), kArchivoBien);
    const std::string bueno = leerBytes(ruta_);
    int probados = 0;
    for (const Campo& campo : Plano(bueno).campos) {
        for (const std::uint64_t valor : prueba::valoresExtremos(campo)) {
            probar(prueba::conValor(bueno, campo, valor),
                   std::string(campo.que) + " = " + std::to_string(valor), kMegabyte);
            ASSERT_FALSE(HasFailure());
            ++probados;
        }
    }
    EXPECT_GT(probados, 700);
    EXPECT_GT(cargados_, probados / 2) << "los valores raros que no son cuentas se conservan";
    EXPECT_LT(cargados_, probados);
}

TEST_F(Hostil, LasCuentasPorEncimaDelMaximoSeRechazanAunqueHayaBytes) {
    struct {
        const char* que;
        std::uint32_t maximo;
        std::string antes; ///< entre el nombre de la hoja y la cuenta
        std::size_t porElemento;
    } const casos[] = {{"anchos", 1000000, std::string(8, '\0'), 8},
                       {"altos", 1000000, std::string(12, '\0'), 8},
                       {"fusiones", 1000000, std::string(16, '\0'), 16}};
    const std::string cabecera("MRNL\1\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0", 20);
    for (const auto& caso : casos) {
        for (const std::uint32_t cuenta : {caso.maximo, caso.maximo + 1}) {
            std::string bytes = cabecera + caso.antes;
            bytes.append(reinterpret_cast<const char*>(&cuenta), 4);
            bytes.append(caso.porElemento * cuenta + 20, '\0');
            escribirBytes(ruta_, bytes);
            Libro libro;
            EXPECT_EQ(Serializador::cargar(ruta_, libro),
                      cuenta == caso.maximo ? kArchivoBien : kArchivoInvalido)
                << caso.que << " " << cuenta;
        }
    }
}

TEST_F(Hostil, ElTextoMasLargoQueSeAcepta) {
    for (const std::size_t largo : {std::size_t{16777216}, std::size_t{16777217}}) {
        const ResultadoArchivo esperado = largo == 16777216 ? kArchivoBien : kArchivoInvalido;
        Libro libro;
        libro.hojas[0]->nombre = std::string(largo, 'n');
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
        EXPECT_EQ(Serializador::cargar(ruta_, libro), esperado) << "nombre de " << largo;
        libro.reiniciar();
        libro.hojas[0]->celdaMut(0, 0).entrada = std::string(largo, 'e');
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
        EXPECT_EQ(Serializador::cargar(ruta_, libro), esperado) << "entrada de " << largo;
    }
}

TEST_F(Hostil, UnMillonDeFusionesIguales) {
    Libro libro;
    libro.hojas[0]->fusiones.assign(1000000, {-5, -5, 2000000000, 3});
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    Libro leido;
    ASSERT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
    EXPECT_TRUE(igualContenido(leido, libro));
    EXPECT_EQ(leido.hojas[0]->fusionEn(65535, 3), leido.hojas[0]->fusiones.data());
    EXPECT_EQ(leido.hojas[0]->fusionEn(0, 4), nullptr);
    EXPECT_EQ(leido.hojas[0]->ultimaFilaUsada(), 2000000000);
}

TEST_F(Hostil, BytesAlAzarTrasUnaCabeceraBuena) {
    std::mt19937 azar(41);
    for (int i = 0; i < 1000; ++i) {
        std::string bytes("MRNL\1\0\0\0\1\0\0\0\0\0\0\0", 16);
        for (auto n = azar() % 200; n > 0; --n)
            bytes.push_back(static_cast<char>(azar() % 3 == 0 ? azar() : azar() % 4));
        probar(bytes, "caso " + std::to_string(i), kMegabyte);
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(Hostil, UnBitCambiadoEnCualquierSitio) {
    Libro base = prueba::libroCompleto();
    base.hojas[2]->celdas.quitarRango({35, 0, kUltimaFila, kUltimaColumna});
    ASSERT_EQ(Serializador::guardar(base, ruta_), kArchivoBien);
    const std::string bueno = leerBytes(ruta_);
    for (std::size_t bit = 0; bit < bueno.size() * 8; bit += 7) {
        std::string malo = bueno;
        malo[bit / 8] = static_cast<char>(malo[bit / 8] ^ (1 << (bit % 8)));
        probar(malo, "bit " + std::to_string(bit), kMegabyte);
        ASSERT_FALSE(HasFailure());
    }
}

} // namespace
