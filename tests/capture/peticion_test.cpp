#include "capture/peticion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using captura::leerPeticion;
using captura::Peticion;

TEST(Peticion, SinOpcionesValenLasDeSiempre) {
    Peticion peticion;
    ASSERT_EQ(leerPeticion({"libro.mrn", "imagen.png"}, peticion), "");
    EXPECT_EQ(peticion.libro, "libro.mrn");
    EXPECT_EQ(peticion.salida, "imagen.png");
    EXPECT_EQ(peticion.ancho, 1280);
    EXPECT_EQ(peticion.alto, 720);
    EXPECT_EQ(peticion.escala, 1);
    EXPECT_EQ(peticion.zoom, 100);
    EXPECT_FALSE(peticion.oscuro);
    EXPECT_EQ(peticion.seleccion, nucleo::RangoCeldas{});
}

TEST(Peticion, LeerTodasLasOpciones) {
    Peticion peticion;
    ASSERT_EQ(leerPeticion({"--tamano", "800x600", "a.mrn", "--tema", "oscuro", "--escala", "2",
                            "b.png", "--zoom", "50", "--seleccion", "C5:A1", "--hoja", "Uno"},
                           peticion),
              "");
    EXPECT_EQ(peticion.libro, "a.mrn");
    EXPECT_EQ(peticion.salida, "b.png");
    EXPECT_EQ(peticion.ancho, 800);
    EXPECT_EQ(peticion.alto, 600);
    EXPECT_EQ(peticion.escala, 2);
    EXPECT_EQ(peticion.zoom, 50);
    EXPECT_TRUE(peticion.oscuro);
    EXPECT_EQ(peticion.seleccion, (nucleo::RangoCeldas{0, 0, 4, 2}));
    EXPECT_EQ(peticion.hoja, "Uno");
}

TEST(Peticion, DecirLoQueEstaMal) {
    const struct {
        std::vector<std::string> argumentos;
        const char* error;
    } casos[] = {
        {{}, "se esperan un libro y una imagen"},
        {{"a"}, "se esperan un libro y una imagen"},
        {{"a", "b", "c"}, "se esperan un libro y una imagen"},
        {{"a", "b", "--nada"}, "opción desconocida «--nada»"},
        {{"a", "b", "--zoom"}, "falta el valor de --zoom"},
        {{"a", "b", "--zoom", "49"}, "«49» no vale para --zoom"},
        {{"a", "b", "--zoom", "201"}, "«201» no vale para --zoom"},
        {{"a", "b", "--zoom", "100%"}, "«100%» no vale para --zoom"},
        {{"a", "b", "--zoom", ""}, "«» no vale para --zoom"},
        {{"a", "b", "--escala", "0"}, "«0» no vale para --escala"},
        {{"a", "b", "--escala", "99999999999999"}, "«99999999999999» no vale para --escala"},
        {{"a", "b", "--tamano", "800"}, "«800» no vale para --tamano"},
        {{"a", "b", "--tamano", "800x"}, "«800x» no vale para --tamano"},
        {{"a", "b", "--tamano", "99x600"}, "«99x600» no vale para --tamano"},
        {{"a", "b", "--tamano", "800x8193"}, "«800x8193» no vale para --tamano"},
        {{"a", "b", "--tema", "azul"}, "«azul» no vale para --tema"},
        {{"a", "b", "--celda", "AAA1"}, "«AAA1» no vale para --celda"},
        {{"a", "b", "--hoja", ""}, "«» no vale para --hoja"},
    };
    for (const auto& caso : casos) {
        Peticion peticion;
        EXPECT_EQ(leerPeticion(caso.argumentos, peticion), caso.error);
    }
}

} // namespace
