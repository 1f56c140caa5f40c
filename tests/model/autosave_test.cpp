#include "model/autosave.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/model/bytes_de_archivo.h"
#include "tests/model/libros_ejemplo.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace nucleo;
using prueba::escribirBytes;
using prueba::estaReiniciado;
using prueba::igualContenido;
using prueba::leerBytes;
using prueba::libroCompleto;

class Recuperacion : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const char* valor = std::getenv("TMPDIR"))
            anterior_ = valor;
        setenv("TMPDIR", raiz_.c_str(), 1);
    }
    void TearDown() override {
        if (anterior_)
            setenv("TMPDIR", anterior_->c_str(), 1);
        else
            unsetenv("TMPDIR");
    }

    CarpetaTemporal carpeta_;
    std::string raiz_ = carpeta_.ruta("."); ///< sin separador al final
    std::string ruta_ = carpeta_.ruta("marnel_ventas.mrt");

  private:
    std::optional<std::string> anterior_;
};

TEST_F(Recuperacion, RutaSegunElNombreBase) {
    struct {
        const char* documento;
        const char* nombre;
    } const casos[] = {{"", "marnel_sin_titulo.mrt"},
                       {"/casa/ventas.mrn", "marnel_ventas.mrt"},
                       {"ventas.mrn", "marnel_ventas.mrt"},
                       {"C:\\casa\\ventas.mrn", "marnel_ventas.mrt"},
                       {"/casa\\otra/ventas.mrn", "marnel_ventas.mrt"},
                       {"/casa/otra\\ventas.mrn", "marnel_ventas.mrt"},
                       {"/casa/informe", "marnel_informe.mrt"},
                       {"/datos.viejos/informe", "marnel_informe.mrt"},
                       {"\\datos.viejos\\informe", "marnel_informe.mrt"},
                       {"/casa/ventas.2024.mrn", "marnel_ventas.2024.mrt"},
                       {"/casa/año ñ.mrn", "marnel_año ñ.mrt"},
                       {"/casa/.mrn", "marnel_.mrt"},
                       {"/casa/punto.", "marnel_punto.mrt"},
                       {"/casa/", "marnel_.mrt"}};
    for (const auto& caso : casos)
        EXPECT_EQ(Autosave::generarRuta(caso.documento), raiz_ + "/" + caso.nombre)
            << caso.documento;
}

TEST_F(Recuperacion, LaCarpetaTemporalEsLaDelEntornoOLaDelSistema) {
    setenv("TMPDIR", (raiz_ + "/").c_str(), 1);
    EXPECT_EQ(Autosave::generarRuta(""), raiz_ + "/marnel_sin_titulo.mrt");
    setenv("TMPDIR", "/", 1);
    EXPECT_EQ(Autosave::generarRuta(""), "/marnel_sin_titulo.mrt");
    setenv("TMPDIR", "", 1);
    EXPECT_EQ(Autosave::generarRuta(""), "/tmp/marnel_sin_titulo.mrt");
    unsetenv("TMPDIR");
    EXPECT_EQ(Autosave::generarRuta(""), "/tmp/marnel_sin_titulo.mrt");
}

TEST_F(Recuperacion, LoGuardadoSeOfreceSeCargaYSeDescarta) {
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    const Libro libro = libroCompleto();
    ASSERT_EQ(Autosave::guardar(libro, ruta_), kArchivoBien);
    EXPECT_TRUE(Autosave::hayPendiente(ruta_));
    Libro leido;
    ASSERT_EQ(Autosave::cargar(ruta_, leido), kArchivoBien);
    EXPECT_TRUE(igualContenido(leido, libro));
    EXPECT_EQ(leido.ruta, ruta_);
    EXPECT_FALSE(leido.modificado);
    Autosave::descartar(ruta_);
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    Autosave::descartar(ruta_);
    EXPECT_EQ(Autosave::cargar(ruta_, leido), kArchivoNoAbre);
    EXPECT_TRUE(std::filesystem::is_empty(raiz_)) << "no queda ningún resto";
}

TEST_F(Recuperacion, SinRutaNoHayNada) {
    EXPECT_FALSE(Autosave::hayPendiente(""));
    Autosave::descartar("");
    EXPECT_EQ(Autosave::guardar(Libro(), ""), kArchivoNoAbre);
}

TEST_F(Recuperacion, TieneElMismoFormatoQueUnDocumento) {
    ASSERT_EQ(Autosave::guardar(libroCompleto(), ruta_), kArchivoBien);
    const std::string documento = carpeta_.ruta("libro.mrn");
    ASSERT_EQ(Serializador::guardar(libroCompleto(), documento), kArchivoBien);
    EXPECT_EQ(leerBytes(ruta_), leerBytes(documento));
}

TEST_F(Recuperacion, UnArchivoDanadoSeOfreceYNoSeCarga) {
    escribirBytes(ruta_, "MRNLbasura");
    EXPECT_TRUE(Autosave::hayPendiente(ruta_));
    Libro libro = libroCompleto();
    EXPECT_EQ(Autosave::cargar(ruta_, libro), kArchivoInvalido);
    EXPECT_TRUE(estaReiniciado(libro));
    EXPECT_EQ(leerBytes(ruta_), "MRNLbasura") << "el archivo dañado se queda";
}

TEST_F(Recuperacion, SoloLoLeeSuDuenyo) {
    const mode_t mascara = umask(0);
    ASSERT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoBien);
    umask(mascara);
    struct stat datos = {};
    ASSERT_EQ(stat(ruta_.c_str(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777U, 0600U);

    chmod(ruta_.c_str(), 0666);
    escribirBytes(ruta_ + "~", "resto de otra vez");
    chmod((ruta_ + "~").c_str(), 0666);
    ASSERT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoBien);
    ASSERT_EQ(stat(ruta_.c_str(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777U, 0600U);
    EXPECT_EQ(leerBytes(ruta_).size(), 50U);
    EXPECT_FALSE(std::filesystem::exists(ruta_ + "~"));
}

TEST_F(Recuperacion, NoSigueEnlacesPuestosPorOtros) {
    const std::string ajeno = carpeta_.ruta("ajeno");
    escribirBytes(ajeno, "intacto");
    std::filesystem::create_symlink(ajeno, ruta_);
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    Libro libro = libroCompleto();
    EXPECT_EQ(Autosave::cargar(ruta_, libro), kArchivoNoAbre);
    EXPECT_TRUE(igualContenido(libro, libroCompleto()));

    std::filesystem::create_symlink(ajeno, ruta_ + "~");
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre);
    std::filesystem::remove(ruta_ + "~");
    std::filesystem::create_hard_link(ajeno, ruta_ + "~");
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre) << "tiene otro nombre";
    std::filesystem::remove(ruta_ + "~");
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoBien) << "el enlace se sustituye";
    EXPECT_FALSE(std::filesystem::is_symlink(ruta_));
    EXPECT_EQ(leerBytes(ajeno), "intacto");
}

TEST_F(Recuperacion, LaDeOtraPersonaNoSeOfrece) {
    if (geteuid() != 0)
        GTEST_SKIP() << "hace falta poder regalar un archivo";
    ASSERT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoBien);
    ASSERT_EQ(chown(ruta_.c_str(), 12345, 12345), 0);
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    escribirBytes(ruta_ + "~", "");
    ASSERT_EQ(chown((ruta_ + "~").c_str(), 12345, 12345), 0);
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre);
}

TEST_F(Recuperacion, UnaCarpetaOUnaTuberiaNoSonRecuperaciones) {
    std::filesystem::create_directory(ruta_);
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre);
    std::filesystem::remove(ruta_);
    ASSERT_EQ(mkfifo(ruta_.c_str(), 0600), 0);
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre);
    EXPECT_TRUE(std::filesystem::is_fifo(ruta_)) << "no la sustituye";
}

TEST_F(Recuperacion, DosProcesosNoMezclanSusArchivosProvisionales) {
    const std::string provisional = ruta_ + "~";
    const int otro = open(provisional.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(otro, 0);
    ASSERT_EQ(flock(otro, LOCK_EX), 0);
    ASSERT_EQ(write(otro, "a medias", 8), 8);
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoNoAbre) << "lo tiene el otro";
    EXPECT_FALSE(Autosave::hayPendiente(ruta_));
    EXPECT_EQ(leerBytes(provisional), "a medias");
    close(otro);
    EXPECT_EQ(Autosave::guardar(Libro(), ruta_), kArchivoBien) << "el otro murió a mitad";
    EXPECT_EQ(leerBytes(ruta_).size(), 50U);
}

} // namespace
