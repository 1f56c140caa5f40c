#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/model/bytes_de_archivo.h"
#include "tests/model/libros_ejemplo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

namespace {

using namespace nucleo;
using prueba::escribirBytes;
using prueba::estaReiniciado;
using prueba::igualContenido;
using prueba::leerBytes;
using prueba::libroCompleto;

class Archivo : public ::testing::Test {
  protected:
    /// Un libro con algo que perder.
    static Libro conCambios() {
        Libro libro;
        libro.hojas[0]->celdaMut(0, 0).entrada = "no debe verse";
        libro.agregarHoja();
        libro.ruta = "anterior";
        libro.establecerPrecedentes(claveCelda(0, 0, 0), {claveCelda(0, 1, 0)});
        return libro;
    }

    CarpetaTemporal carpeta_;
    std::string ruta_ = carpeta_.ruta("libro.mrn");
};

std::string bytes(std::initializer_list<int> valores) {
    std::string texto;
    for (const int valor : valores)
        texto.push_back(static_cast<char>(valor));
    return texto;
}

TEST_F(Archivo, UnLibroVacioSonCincuentaBytes) {
    const Libro libro;
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    EXPECT_EQ(leerBytes(ruta_), "MRNL" + bytes({1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}) +
                                    bytes({6, 0, 0, 0}) + "Hoja 1" + std::string(24, '\0'));
}

TEST_F(Archivo, CadaCampoEnSuSitio) {
    Libro libro;
    libro.hojaActiva = -2;
    Hoja& hoja = *libro.hojas[0];
    hoja.nombre = "Ñ";
    hoja.filasInmovilizadas = 258;
    hoja.columnasInmovilizadas = -1;
    hoja.anchos[2] = 300;
    hoja.altos[-2] = 7;
    hoja.fusiones.push_back({1, 2, 3, 4});
    Celda& celda = hoja.celdaMut(258, 3);
    celda.tipo = TipoCelda::Numero;
    celda.entrada = "1,5";
    celda.numero = 1.5;
    celda.valor = Valor::deNumero(1.5);
    celda.formato = {
        FormatoNumero::Porcentaje, 9,   true, true, false, true, 0x11223344, 0xaabbccdd,
        AlineacionH::Centro,       true};
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    EXPECT_EQ(leerBytes(ruta_),
              "MRNL" + bytes({1, 0, 0, 0, 1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff}) +
                  bytes({2, 0, 0, 0}) + "Ñ" + bytes({2, 1, 0, 0, 0xff, 0xff, 0xff, 0xff}) +
                  bytes({1, 0, 0, 0, 2, 0, 0, 0, 0x2c, 1, 0, 0}) +
                  bytes({1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff, 7, 0, 0, 0}) +
                  bytes({1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0}) +
                  bytes({1, 0, 0, 0}) + bytes({3, 0, 0, 0, 2, 1, 0, 0}) + bytes({1}) +
                  bytes({3, 0, 0, 0}) + "1,5" + bytes({0, 0, 0, 0, 0, 0, 0xf8, 0x3f}) +
                  bytes({3, 9, 1, 0x0d}) + bytes({0x44, 0x33, 0x22, 0x11}) +
                  bytes({0xdd, 0xcc, 0xbb, 0xaa}) + bytes({2}));
}

TEST_F(Archivo, LoGuardadoVuelveIgual) {
    const Libro libro = libroCompleto();
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    EXPECT_TRUE(libro.modificado) << "guardar no cambia el libro";
    EXPECT_EQ(libro.ruta, "");
    Libro leido = conCambios();
    ASSERT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
    EXPECT_TRUE(igualContenido(leido, libro));
    EXPECT_EQ(leido.ruta, ruta_);
    EXPECT_FALSE(leido.modificado);
    EXPECT_TRUE(leido.precedentes.empty());
    EXPECT_TRUE(leido.dependientes.empty());
    EXPECT_TRUE(std::signbit(leido.hojas[0]->celdas.at(claveLocal(-3, 70000)).numero));
    const std::string antes = leerBytes(ruta_);
    ASSERT_EQ(Serializador::guardar(leido, ruta_), kArchivoBien);
    EXPECT_EQ(leerBytes(ruta_), antes) << "el mismo libro da los mismos bytes";
}

TEST_F(Archivo, ElValorNoSeGuarda) {
    Libro libro;
    Celda& celda = libro.hojas[0]->celdaMut(0, 0);
    celda.tipo = TipoCelda::Texto;
    celda.entrada = "x";
    celda.valor = Valor::deTexto("x");
    Serializador::guardar(libro, ruta_);
    Libro leido;
    ASSERT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
    EXPECT_EQ(leido.hojas[0]->celda(0, 0)->valor, Valor());
}

TEST_F(Archivo, LaHojaActivaQueNoExisteEsLaPrimera) {
    for (const int activa : {-1, 3, 7, 2147483647, -2147483647 - 1}) {
        Libro libro;
        libro.agregarHoja();
        libro.agregarHoja();
        libro.hojaActiva = activa;
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
        Libro leido;
        ASSERT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
        EXPECT_EQ(leido.hojaActiva, 0) << activa;
    }
}

TEST_F(Archivo, CargarSobreSuPropiaRuta) {
    Libro libro = libroCompleto();
    Serializador::guardar(libro, ruta_);
    libro.ruta = ruta_;
    ASSERT_EQ(Serializador::cargar(libro.ruta, libro), kArchivoBien);
    EXPECT_EQ(libro.ruta, ruta_);
    escribirBytes(ruta_, "basura");
    EXPECT_EQ(Serializador::cargar(libro.ruta, libro), kArchivoInvalido);
    EXPECT_TRUE(estaReiniciado(libro));
}

TEST_F(Archivo, SiNoAbreElLibroQuedaComoEstaba) {
    const std::string carpetaQueNoEsta = carpeta_.ruta("no/existe.mrn");
    for (const std::string& ruta :
         {carpeta_.ruta("no.mrn"), carpetaQueNoEsta, carpeta_.ruta(""), std::string()}) {
        Libro libro = conCambios();
        EXPECT_EQ(Serializador::cargar(ruta, libro), kArchivoNoAbre) << ruta;
        EXPECT_TRUE(igualContenido(libro, conCambios())) << ruta;
        EXPECT_EQ(libro.ruta, "anterior");
        EXPECT_TRUE(libro.modificado);
        EXPECT_EQ(libro.precedentes.size(), 1U);
    }
    const Libro libro;
    EXPECT_EQ(Serializador::guardar(libro, carpetaQueNoEsta), kArchivoNoAbre);
    EXPECT_EQ(Serializador::guardar(libro, carpeta_.ruta("")), kArchivoNoAbre);
    EXPECT_EQ(Serializador::guardar(libro, ""), kArchivoNoAbre);
}

TEST_F(Archivo, CabecerasRechazadas) {
    ASSERT_EQ(Serializador::guardar(Libro(), ruta_), kArchivoBien);
    const std::string bueno = leerBytes(ruta_);
    struct {
        const char* que;
        std::size_t donde;
        std::string bytes;
    } const casos[] = {
        {"otra magia", 0, "MRNX"},        {"magia en minúsculas", 0, "mrnl"},
        {"versión 0", 4, bytes({0})},     {"versión 2", 4, bytes({2})},
        {"versión 257", 5, bytes({1})},   {"ninguna hoja", 8, bytes({0})},
        {"1025 hojas", 8, bytes({1, 4})}, {"dos hojas y una sola escrita", 8, bytes({2})},
    };
    for (const auto& caso : casos) {
        std::string malo = bueno;
        malo.replace(caso.donde, caso.bytes.size(), caso.bytes);
        escribirBytes(ruta_, malo);
        Libro libro = conCambios();
        EXPECT_EQ(Serializador::cargar(ruta_, libro), kArchivoInvalido) << caso.que;
        EXPECT_TRUE(estaReiniciado(libro)) << caso.que;
    }
    escribirBytes(ruta_, bueno + "lo que sobra no importa");
    Libro libro;
    EXPECT_EQ(Serializador::cargar(ruta_, libro), kArchivoBien);
}

TEST_F(Archivo, SePuedenGuardarMasHojasDeLasQueSeLeen) {
    Libro libro;
    while (libro.hojas.size() < 1024)
        libro.hojas.push_back(std::make_unique<Hoja>());
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    Libro leido;
    EXPECT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
    EXPECT_EQ(leido.hojas.size(), 1024U);
    libro.hojas.push_back(std::make_unique<Hoja>());
    ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    EXPECT_EQ(Serializador::cargar(ruta_, leido), kArchivoInvalido);
    EXPECT_TRUE(estaReiniciado(leido));
}

TEST_F(Archivo, DeLasCeldasRepetidasQuedaLaUltimaEnCualquierOrden) {
    std::FILE* archivo = std::fopen(ruta_.c_str(), "wb");
    ASSERT_NE(archivo, nullptr);
    const std::string cabecera = "MRNL" + bytes({1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0});
    std::fwrite(cabecera.data(), 1, cabecera.size(), archivo);
    Serializador::escribirString(archivo, "h");
    const std::string resto = std::string(20, '\0') + bytes({7, 0, 0, 0});
    std::fwrite(resto.data(), 1, resto.size(), archivo);
    const std::pair<std::uint64_t, const char*> escritas[] = {
        {claveLocal(9, 0), "a"}, {claveLocal(3, 0), "b"},  {claveLocal(9, 0), "c"},
        {claveLocal(3, 5), "d"}, {claveLocal(-1, 0), "e"}, {claveLocal(3, 0), "f"},
        {claveLocal(-1, 0), "g"}};
    for (const auto& [clave, entrada] : escritas) {
        Celda celda;
        celda.entrada = entrada;
        ASSERT_TRUE(Serializador::escribirCelda(archivo, clave, celda));
    }
    std::fclose(archivo);
    Libro libro;
    ASSERT_EQ(Serializador::cargar(ruta_, libro), kArchivoBien);
    const AlmacenCeldas& celdas = libro.hojas[0]->celdas;
    EXPECT_EQ(celdas.size(), 4U);
    EXPECT_TRUE(celdas.comprobar());
    EXPECT_EQ(celdas.at(claveLocal(9, 0)).entrada, "c");
    EXPECT_EQ(celdas.at(claveLocal(3, 0)).entrada, "f");
    EXPECT_EQ(celdas.at(claveLocal(3, 5)).entrada, "d");
    EXPECT_EQ(celdas.at(claveLocal(-1, 0)).entrada, "g");
}

TEST_F(Archivo, GuardarSobrescribeEnSuSitio) {
    escribirBytes(ruta_, std::string(100000, 'x'));
    const std::string enlace = carpeta_.ruta("enlace.mrn");
    std::filesystem::create_symlink(ruta_, enlace);
    ASSERT_EQ(Serializador::guardar(Libro(), enlace), kArchivoBien);
    EXPECT_TRUE(std::filesystem::is_symlink(enlace));
    EXPECT_EQ(leerBytes(ruta_).size(), 50U);
}

/// Un flujo en memoria del que se lee lo que se escribió.
class Piezas : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(archivo_ = std::tmpfile(), nullptr); }
    void TearDown() override { std::fclose(archivo_); }

    std::FILE* archivo_ = nullptr;
};

TEST_F(Piezas, SeEncadenanSinLeerDeMas) {
    const Libro libro = libroCompleto();
    Celda celda;
    celda.tipo = TipoCelda::Texto;
    celda.entrada = std::string(70000, 'z');
    ASSERT_TRUE(Serializador::escribirString(archivo_, ""));
    ASSERT_TRUE(Serializador::escribirString(archivo_, std::string(300, 's')));
    ASSERT_TRUE(Serializador::escribirHoja(archivo_, *libro.hojas[0]));
    ASSERT_TRUE(Serializador::escribirCelda(archivo_, claveLocal(4, 5), celda));
    ASSERT_TRUE(Serializador::escribirString(archivo_, "fin"));
    std::rewind(archivo_);
    std::string texto = "algo";
    Hoja hoja;
    Hoja suelta;
    EXPECT_TRUE(Serializador::leerString(archivo_, texto));
    EXPECT_EQ(texto, "");
    EXPECT_TRUE(Serializador::leerString(archivo_, texto));
    EXPECT_EQ(texto, std::string(300, 's'));
    EXPECT_TRUE(Serializador::leerHoja(archivo_, hoja, 1));
    EXPECT_EQ(hoja, *libro.hojas[0]);
    EXPECT_TRUE(Serializador::leerCelda(archivo_, suelta, 1));
    EXPECT_EQ(*suelta.celda(4, 5), celda);
    EXPECT_TRUE(Serializador::leerString(archivo_, texto));
    EXPECT_EQ(texto, "fin");
    EXPECT_FALSE(Serializador::leerString(archivo_, texto));
    EXPECT_FALSE(Serializador::leerHoja(archivo_, hoja, 1));
    EXPECT_FALSE(Serializador::leerCelda(archivo_, suelta, 1));
}

TEST_F(Piezas, UnaCeldaAMediasNoLlegaALaHoja) {
    Celda celda;
    celda.entrada = "nueva";
    ASSERT_TRUE(Serializador::escribirCelda(archivo_, claveLocal(0, 0), celda));
    std::string bytesCelda(34 + 5, '\0');
    std::rewind(archivo_);
    ASSERT_EQ(std::fread(bytesCelda.data(), 1, bytesCelda.size(), archivo_), bytesCelda.size());
    Hoja hoja;
    hoja.celdaMut(0, 0).entrada = "vieja";
    for (std::size_t largo = 0; largo < bytesCelda.size(); ++largo) {
        std::FILE* corto = std::tmpfile();
        std::fwrite(bytesCelda.data(), 1, largo, corto);
        std::rewind(corto);
        EXPECT_FALSE(Serializador::leerCelda(corto, hoja, 1)) << largo;
        std::fclose(corto);
        EXPECT_EQ(hoja.celda(0, 0)->entrada, "vieja") << largo;
    }
}

TEST_F(Piezas, EscribirEnUnArchivoDeSoloLecturaEsUnFallo) {
    std::FILE* soloLectura = std::fopen("/dev/null", "rb");
    ASSERT_NE(soloLectura, nullptr);
    EXPECT_FALSE(Serializador::escribirString(soloLectura, "x"));
    EXPECT_FALSE(Serializador::escribirCelda(soloLectura, 0, Celda()));
    EXPECT_FALSE(Serializador::escribirHoja(soloLectura, Hoja()));
    std::fclose(soloLectura);
}

} // namespace
