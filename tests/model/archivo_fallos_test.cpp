// Cada llamada que puede fallar, falla una vez: el resultado lo dice y el libro en memoria queda
// como prometen guardar y cargar.

#include "model/archivos.h"
#include "model/autosave.h"
#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/comun/memoria.h"
#include "tests/model/bytes_de_archivo.h"
#include "tests/model/fallos.h"
#include "tests/model/libros_ejemplo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <vector>

namespace {

using namespace nucleo;
using prueba::estaReiniciado;
using prueba::FalloDeArchivo;
using prueba::FaltaDeMemoria;
using prueba::igualContenido;
using prueba::leerBytes;
using prueba::libroCompleto;
using prueba::libroDeReferencia;

/// Más grande que los bloques en que se lee un archivo.
Libro libroGrande() {
    Libro libro;
    for (int i = 0; i < 3000; ++i) {
        Celda& celda = libro.hojas[0]->celdaMut(i, i % 7);
        celda.tipo = TipoCelda::Texto;
        celda.entrada = std::string(static_cast<std::size_t>(i % 400), 'y');
    }
    return libro;
}

bool esDeAbrir(std::string_view funcion) {
    return funcion == "open" || funcion == "fstat" || funcion == "fdopen" || funcion == "flock" ||
           funcion == "fchmod" || funcion == "ftruncate";
}

class Fallos : public ::testing::Test {
  protected:
    CarpetaTemporal carpeta_;
    std::string ruta_ = carpeta_.ruta("libro.mrn");
};

/// Los de referencia y uno que no cabe en los bloques en que se lee.
std::vector<Libro> todosLosLibros() {
    std::vector<Libro> libros;
    libros.push_back(libroGrande());
    for (int n = 0; n < prueba::kLibrosDeReferencia; ++n)
        libros.push_back(libroDeReferencia(n));
    return libros;
}

/// Todo lo que se ve de un libro, con lo que el archivo no guarda.
bool igualEnTodo(const Libro& a, const Libro& b) {
    return igualContenido(a, b) && a.ruta == b.ruta && a.modificado == b.modificado;
}

TEST_F(Fallos, CadaLlamadaAlGuardarUnDocumento) {
    std::vector<Libro> libros = todosLosLibros();
    const std::vector<Libro> iguales = todosLosLibros();
    for (std::size_t i = 0; i < libros.size(); ++i) {
        std::vector<std::string> vistas;
        for (int n = 1;; ++n) {
            FalloDeArchivo fallo(n);
            const ResultadoArchivo resultado = Serializador::guardar(libros[i], ruta_);
            if (!fallo.ocurrio()) {
                EXPECT_EQ(resultado, kArchivoBien) << "libro " << i;
                break;
            }
            vistas.emplace_back(fallo.funcion());
            EXPECT_EQ(resultado, esDeAbrir(fallo.funcion()) ? kArchivoNoAbre : kArchivoNoSeEscribe)
                << "libro " << i << ", " << fallo.funcion();
            EXPECT_TRUE(igualEnTodo(libros[i], iguales[i])) << "libro " << i;
        }
        EXPECT_EQ(vistas, (std::vector<std::string>{"open", "fstat", "fdopen", "fwrite", "fflush",
                                                    "fsync", "fclose"}));
        Libro leido;
        EXPECT_EQ(Serializador::cargar(ruta_, leido), kArchivoBien);
        EXPECT_TRUE(igualContenido(leido, libros[i])) << "libro " << i;
    }
}

/// Devuelve cuántas lecturas han fallado, una cada vez.
int fallarCadaLlamadaAlCargar(const std::string& ruta) {
    int lecturas = 0;
    for (int n = 1;; ++n) {
        Libro libro = libroCompleto();
        libro.ruta = "anterior.mrn";
        Libro antes = libroCompleto();
        antes.ruta = libro.ruta;
        FalloDeArchivo fallo(n);
        const ResultadoArchivo resultado = Serializador::cargar(ruta, libro);
        if (!fallo.ocurrio())
            return lecturas;
        const std::string_view funcion = fallo.funcion();
        if (esDeAbrir(funcion)) {
            EXPECT_EQ(resultado, kArchivoNoAbre) << funcion;
            EXPECT_TRUE(igualEnTodo(libro, antes)) << funcion;
        } else if (funcion == "fread") {
            ++lecturas;
            EXPECT_EQ(resultado, kArchivoInvalido) << "lectura " << lecturas;
            EXPECT_TRUE(estaReiniciado(libro));
        } else {
            EXPECT_EQ(funcion, "fclose");
            EXPECT_EQ(resultado, kArchivoBien) << "ya está todo leído";
        }
    }
}

TEST_F(Fallos, CadaLlamadaAlCargar) {
    int masLecturas = 0;
    for (const Libro& libro : todosLosLibros()) {
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
        const int lecturas = fallarCadaLlamadaAlCargar(ruta_);
        EXPECT_GE(lecturas, 1);
        masLecturas = std::max(masLecturas, lecturas);
    }
    EXPECT_GE(masLecturas, 3) << "el grande se lee en varias veces";
}

TEST_F(Fallos, CadaLlamadaAlGuardarLaRecuperacionDejaLaAnterior) {
    const std::string ruta = carpeta_.ruta("marnel_x.mrt");
    const Libro anterior = libroCompleto();
    ASSERT_EQ(Autosave::guardar(anterior, ruta), kArchivoBien);
    const std::string antes = leerBytes(ruta);
    std::vector<std::string> vistas;
    for (int n = 1;; ++n) {
        FalloDeArchivo fallo(n);
        const ResultadoArchivo resultado = Autosave::guardar(libroGrande(), ruta);
        if (!fallo.ocurrio()) {
            EXPECT_EQ(resultado, kArchivoBien);
            break;
        }
        vistas.emplace_back(fallo.funcion());
        EXPECT_EQ(resultado, esDeAbrir(fallo.funcion()) ? kArchivoNoAbre : kArchivoNoSeEscribe)
            << fallo.funcion();
        EXPECT_EQ(leerBytes(ruta), antes) << fallo.funcion();
    }
    EXPECT_EQ(vistas.back(), "rename");
    EXPECT_NE(leerBytes(ruta), antes);
    EXPECT_FALSE(carpeta_.existe("marnel_x.mrt~"));
}

/// Mientras vive, ningún archivo puede pasar de ese tamaño: el disco está lleno.
class DiscoLleno {
  public:
    explicit DiscoLleno(std::size_t bytes) {
        anteriorSenal_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &anterior_);
        rlimit limite = anterior_;
        limite.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limite);
    }
    ~DiscoLleno() {
        setrlimit(RLIMIT_FSIZE, &anterior_);
        std::signal(SIGXFSZ, anteriorSenal_);
    }
    DiscoLleno(const DiscoLleno&) = delete;
    DiscoLleno& operator=(const DiscoLleno&) = delete;

  private:
    rlimit anterior_ = {};
    void (*anteriorSenal_)(int) = nullptr;
};

TEST_F(Fallos, ElDiscoSeLlenaEnCadaByte) {
    for (int n = 0; n < prueba::kLibrosDeReferencia; ++n) {
        const Libro libro = libroDeReferencia(n);
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
        const std::string completo = leerBytes(ruta_);
        for (std::size_t caben = 0; caben < completo.size(); ++caben) {
            ResultadoArchivo resultado = kArchivoBien;
            std::filesystem::remove(ruta_);
            {
                const DiscoLleno lleno(caben);
                resultado = Serializador::guardar(libro, ruta_);
            }
            ASSERT_EQ(resultado, kArchivoNoSeEscribe) << "libro " << n << ", caben " << caben;
        }
        ASSERT_TRUE(igualContenido(libro, libroDeReferencia(n)));
        const DiscoLleno justo(completo.size());
        ASSERT_EQ(Serializador::guardar(libro, ruta_), kArchivoBien);
    }
}

TEST_F(Fallos, UnArchivoCortadoEnCualquierByteReiniciaElLibro) {
    ASSERT_EQ(Serializador::guardar(libroCompleto(), ruta_), kArchivoBien);
    const std::string completo = leerBytes(ruta_);
    for (std::size_t largo = 0; largo < completo.size(); ++largo) {
        prueba::escribirBytes(ruta_, completo.substr(0, largo));
        Libro libro = libroCompleto();
        ASSERT_EQ(Serializador::cargar(ruta_, libro), kArchivoInvalido) << largo;
        ASSERT_TRUE(estaReiniciado(libro)) << largo;
    }
}

TEST_F(Fallos, DispositivosYTuberias) {
    const Libro libro = libroGrande();
    EXPECT_EQ(Serializador::guardar(libro, "/dev/full"), kArchivoNoSeEscribe);
    EXPECT_EQ(Serializador::guardar(Libro(), "/dev/full"), kArchivoNoSeEscribe);
    EXPECT_EQ(Autosave::guardar(Libro(), "/dev/full"), kArchivoNoSeEscribe);
    EXPECT_EQ(Serializador::guardar(libro, "/dev/null"), kArchivoBien)
        << "no saber sincronizar no es un fallo";
    ASSERT_EQ(mkfifo(ruta_.c_str(), 0600), 0);
    EXPECT_EQ(Serializador::guardar(libro, ruta_), kArchivoNoAbre) << "sin quedarse esperando";
    Libro leido = libroCompleto();
    EXPECT_EQ(Serializador::cargar(ruta_, leido), kArchivoNoAbre);
    EXPECT_TRUE(igualContenido(leido, libroCompleto()));
    for (const char* dispositivo : {"/dev/null", "/dev/zero", "/dev/urandom"}) {
        Libro otro = libroCompleto();
        EXPECT_EQ(Serializador::cargar(dispositivo, otro), kArchivoInvalido) << dispositivo;
        EXPECT_TRUE(estaReiniciado(otro)) << dispositivo;
    }
}

void faltaMemoriaAlCargar(const std::string& ruta, FaltaDeMemoria::Cual cual) {
    for (int n = 1;; ++n) {
        Libro libro = libroCompleto();
        ResultadoArchivo resultado = kArchivoBien;
        bool ocurrio = false;
        {
            const FaltaDeMemoria falta(n, cual);
            resultado = Serializador::cargar(ruta, libro);
            ocurrio = falta.ocurrio();
        }
        if (!ocurrio) {
            EXPECT_EQ(resultado, kArchivoBien);
            EXPECT_GT(n, 3);
            return;
        }
        ASSERT_EQ(resultado, kArchivoInvalido) << "petición " << n;
        ASSERT_TRUE(estaReiniciado(libro)) << "petición " << n;
    }
}

TEST_F(Fallos, FaltaMemoriaAlCargar) {
    for (int n = 0; n < prueba::kLibrosDeReferencia; ++n) {
        ASSERT_EQ(Serializador::guardar(libroDeReferencia(n), ruta_), kArchivoBien);
        faltaMemoriaAlCargar(ruta_, FaltaDeMemoria::Cual::SoloUna);
        faltaMemoriaAlCargar(ruta_, FaltaDeMemoria::Cual::DesdeEntonces);
    }
}

TEST_F(Fallos, FaltaMemoriaAlGuardarYElArchivoAnteriorQuedaIntacto) {
    ASSERT_EQ(Serializador::guardar(Libro(), ruta_), kArchivoBien);
    const Libro libro = libroGrande();
    for (int n = 1;; ++n) {
        ResultadoArchivo resultado = kArchivoBien;
        bool ocurrio = false;
        {
            const FaltaDeMemoria falta(n, FaltaDeMemoria::Cual::DesdeEntonces);
            resultado = Serializador::guardar(libro, ruta_);
            ocurrio = falta.ocurrio();
        }
        if (!ocurrio) {
            EXPECT_EQ(resultado, kArchivoBien);
            EXPECT_GT(n, 3);
            return;
        }
        ASSERT_EQ(resultado, kArchivoNoSeEscribe) << "petición " << n;
        ASSERT_EQ(leerBytes(ruta_).size(), 50U) << "petición " << n;
    }
}

/// Cada pieza suelta, escrita donde no cabe entera o leída de donde se acaba antes.
TEST_F(Fallos, CadaPiezaEnCadaByte) {
    const Libro libro = libroCompleto();
    const std::uint64_t clave = claveLocal(100, 5);
    const Celda celda = *libro.hojas[0]->celda(100, 5);
    struct {
        const char* que;
        std::function<bool(std::FILE*)> escribir;
        std::function<bool(std::FILE*)> leer;
    } const piezas[] = {
        {"texto", [](std::FILE* f) { return Serializador::escribirString(f, "doce bytes.."); },
         [](std::FILE* f) {
             std::string texto;
             return Serializador::leerString(f, texto);
         }},
        {"hoja", [&](std::FILE* f) { return Serializador::escribirHoja(f, *libro.hojas[0]); },
         [](std::FILE* f) {
             Hoja hoja;
             return Serializador::leerHoja(f, hoja, 1);
         }},
        {"celda", [&](std::FILE* f) { return Serializador::escribirCelda(f, clave, celda); },
         [](std::FILE* f) {
             Hoja hoja;
             return Serializador::leerCelda(f, hoja, 1);
         }},
    };
    for (const auto& pieza : piezas) {
        const auto escribir = [&] {
            const Archivo archivo = abrirParaEscribir(ruta_);
            std::setbuf(archivo.get(), nullptr); // que el fallo llegue a quien escribe
            return pieza.escribir(archivo.get());
        };
        const auto leer = [&] { return pieza.leer(abrirParaLeer(ruta_, Enlaces::Seguir).get()); };
        ASSERT_TRUE(escribir()) << pieza.que;
        const std::string entera = leerBytes(ruta_);
        for (std::size_t largo = 0; largo < entera.size(); ++largo) {
            prueba::escribirBytes(ruta_, entera.substr(0, largo));
            ASSERT_FALSE(leer()) << pieza.que << " cortada en " << largo;
            std::filesystem::remove(ruta_);
            const DiscoLleno lleno(largo);
            ASSERT_FALSE(escribir()) << pieza.que << ", caben " << largo;
        }
        ASSERT_TRUE(escribir());
        for (int n = 1;; ++n) {
            const FaltaDeMemoria falta(n, FaltaDeMemoria::Cual::DesdeEntonces);
            const bool leida = leer();
            if (!falta.ocurrio()) {
                ASSERT_TRUE(leida) << pieza.que;
                break;
            }
            ASSERT_FALSE(leida) << pieza.que << ", petición " << n;
        }
        for (int n = 1;; ++n) {
            const FaltaDeMemoria falta(n, FaltaDeMemoria::Cual::DesdeEntonces);
            const bool escrita = escribir();
            if (!falta.ocurrio()) {
                ASSERT_TRUE(escrita) << pieza.que;
                break;
            }
            ASSERT_FALSE(escrita) << pieza.que << ", petición " << n;
        }
    }
}

} // namespace
