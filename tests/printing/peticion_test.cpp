#include <gtest/gtest.h>

#include "printing/peticion.h"

using impresion::leerPeticion;
using impresion::Papel;
using impresion::Peticion;

namespace {

TEST(Peticion, SinOpciones) {
    Peticion peticion;
    EXPECT_EQ(leerPeticion({"a.mrn", "a.pdf"}, peticion), "");
    EXPECT_EQ(peticion.libro, "a.mrn");
    EXPECT_EQ(peticion.salida, "a.pdf");
    EXPECT_FALSE(peticion.enImagen());
    EXPECT_EQ(peticion.papel, Papel::A4);
    EXPECT_FALSE(peticion.rango);
    EXPECT_FALSE(peticion.horizontal || peticion.todas || peticion.ajustar || peticion.encabezados);
}

TEST(Peticion, ConTodas) {
    Peticion peticion;
    EXPECT_EQ(leerPeticion({"--papel", "carta", "a.mrn", "--rango", "b3:a1", "--horizontal",
                            "--ajustar", "--encabezados", "--hoja", "Enero", "--", "--a.PDF"},
                           peticion),
              "");
    EXPECT_EQ(peticion.papel, Papel::Carta);
    EXPECT_EQ(peticion.rango, (nucleo::RangoCeldas{0, 0, 2, 1}));
    EXPECT_TRUE(peticion.horizontal && peticion.ajustar && peticion.encabezados);
    EXPECT_EQ(peticion.hoja, "Enero");
    EXPECT_EQ(peticion.salida, "--a.PDF");
}

TEST(Peticion, LoQueEstaMalSeDice) {
    const struct {
        std::vector<std::string> argumentos;
        const char* error;
    } casos[] = {
        {{}, "se esperan un libro y un .pdf o .png"},
        {{"a.mrn"}, "se esperan un libro y un .pdf o .png"},
        {{"a.mrn", "a.pdf", "b.pdf"}, "se esperan un libro y un .pdf o .png"},
        {{"a.mrn", "a.doc"}, "«a.doc» no acaba en .pdf o .png"},
        {{"a.mrn", ".pdf"}, "«.pdf» no acaba en .pdf o .png"},
        {{"a.mrn", "a.pdf", "--color"}, "opción desconocida «--color»"},
        {{"a.mrn", "a.pdf", "--rango"}, "falta el valor de --rango"},
        {{"a.mrn", "a.pdf", "--rango", "A0"}, "«A0» no vale para --rango"},
        {{"a.mrn", "a.pdf", "--papel", "B4"}, "«B4» no vale para --papel"},
        {{"a.mrn", "a.pdf", "--hoja", ""}, "«» no vale para --hoja"},
        {{"a.mrn", "a.pdf", "--todas", "--hoja", "X"}, "--todas no va con --hoja ni con --rango"},
        {{"a.mrn", "a.pdf", "--todas", "--rango", "A1"}, "--todas no va con --hoja ni con --rango"},
        {{"a.mrn", "a.png", "--todas"}, "--todas, --horizontal y --ajustar son para un .pdf"},
        {{"a.mrn", "a.png", "--ajustar"}, "--todas, --horizontal y --ajustar son para un .pdf"},
    };
    for (const auto& caso : casos) {
        Peticion peticion;
        EXPECT_EQ(leerPeticion(caso.argumentos, peticion), caso.error);
    }
}

} // namespace
