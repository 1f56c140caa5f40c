#include "console/proceso.h"
#include "tests/comun/carpeta_temporal.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using consola::Acabado;
using consola::llamarPrograma;

Acabado interpretar(const std::string& guion) {
    return llamarPrograma("/bin/sh", {"-c", guion});
}

TEST(Proceso, DaElEstadoYLoDicho) {
    const Acabado acabado = interpretar("echo uno >&2; exit 7");
    EXPECT_EQ(acabado.estado, 7);
    EXPECT_EQ(acabado.errores, "uno\n");
    EXPECT_EQ(interpretar("true").estado, 0);
}

TEST(Proceso, LosArgumentosLleganComoEstan) {
    const Acabado acabado = llamarPrograma(
        "/bin/sh", {"-c", R"(printf '[%s]' "$@" >&2)", "sh", "a b", "", "'$(x)'", "ñ"});
    EXPECT_EQ(acabado.errores, "[a b][]['$(x)'][ñ]");
}

TEST(Proceso, LoQueNoEstaOMuereNoTieneEstado) {
    EXPECT_EQ(llamarPrograma("/no/hay/nada", {}).estado, -1);
    EXPECT_EQ(interpretar("kill -9 $$").estado, -1);
}

TEST(Proceso, QuienHablaMuchoNoSeQuedaEsperando) {
    const Acabado acabado =
        interpretar("i=0; while [ $i -lt 3000 ]; do echo 0123456789012345678901234567890123456789; "
                    "i=$((i+1)); done >&2; exit 3");
    EXPECT_EQ(acabado.estado, 3);
    EXPECT_EQ(acabado.errores.size(), 8192U);
}

/// El programa de verdad, con una impresora de mentira o sin ninguna.
class Imprimir : public testing::Test {
  protected:
    CarpetaTemporal carpeta;
    std::string programa;

    void SetUp() override {
        fs::create_directories(carpeta.ruta("bin"));
        programa = carpeta.ruta("bin/marnel-consola");
        fs::copy_file(PROGRAMA_CONSOLA, programa);
    }

    void ponerImpresora(const std::string& donde, const std::string& guion) {
        const fs::path ruta = carpeta.ruta(donde);
        fs::create_directories(ruta.parent_path());
        carpeta.escribir(donde, "#!/bin/sh\n" + guion);
        fs::permissions(ruta, fs::perms::owner_all);
    }

    Acabado imprimir(std::vector<std::string> argumentos) {
        argumentos.insert(argumentos.begin(), "imprimir");
        return llamarPrograma(programa, argumentos);
    }
};

TEST_F(Imprimir, SinImpresoraSeDice) {
    const Acabado acabado = imprimir({"a.mrn", "a.pdf"});
    EXPECT_EQ(acabado.estado, 4);
    EXPECT_EQ(acabado.errores,
              "marnel-consola: falta el programa marnel-impresora: vuelva a instalar Marnel\n");
}

TEST_F(Imprimir, LePasaLoPedido) {
    ponerImpresora("printing/marnel-impresora", "printf '[%s]' \"$@\" >&2; exit 1");
    const Acabado acabado = imprimir({"--ajustar", "--papel", "A3", "a b.mrn", "--todas", "a.pdf",
                                      "--horizontal", "--encabezados"});
    EXPECT_EQ(acabado.estado, 1);
    EXPECT_EQ(acabado.errores, "marnel-consola: [--papel][A3][--todas][--horizontal]"
                               "[--encabezados][--ajustar][--][a b.mrn][a.pdf]\n");
    EXPECT_EQ(imprimir({"a.mrn", "a.pdf", "--hoja", "X", "--rango=A1"}).errores,
              "marnel-consola: [--hoja][X][--rango][A1][--][a.mrn][a.pdf]\n");
}

TEST_F(Imprimir, DevuelveSuEstadoYSuMensaje) {
    for (const int estado : {0, 1, 2, 3}) {
        ponerImpresora("printing/marnel-impresora",
                       "echo 'marnel-impresora: así no' >&2; echo otra >&2; exit " +
                           std::to_string(estado));
        const Acabado acabado = imprimir({"a.mrn", "a.pdf"});
        EXPECT_EQ(acabado.estado, estado);
        EXPECT_EQ(acabado.errores, "marnel-consola: así no\n");
    }
    for (const char* fin : {"exit 5", "exit 127", "kill -9 $$"}) {
        ponerImpresora("printing/marnel-impresora", fin);
        EXPECT_EQ(imprimir({"a.mrn", "a.pdf"}).estado, 4) << fin;
    }
}

TEST_F(Imprimir, PrefiereLaInstalada) {
    ponerImpresora("printing/marnel-impresora", "exit 1");
    ponerImpresora("libexec/marnel/marnel-impresora", "exit 0");
    EXPECT_EQ(imprimir({"a.mrn", "a.pdf"}).estado, 0);
}

TEST_F(Imprimir, LosArgumentosSeMiranAntes) {
    EXPECT_EQ(imprimir({"a.mrn"}).estado, 1);
    EXPECT_EQ(imprimir({"a.mrn", "a.pdf", "--color"}).estado, 1);
}

} // namespace
