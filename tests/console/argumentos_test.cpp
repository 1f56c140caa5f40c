#include "console/argumentos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr consola::Opcion kOpciones[] = {{"--json", "", ""}, {"--rango", "RANGO", ""}};

struct Caso {
    std::vector<std::string> textos;
    std::string error;
    std::vector<std::string> sueltos;
    bool json;
    const char* rango; ///< nulo si no se da
};

TEST(Argumentos, SepararOpcionesDeLoDemas) {
    const Caso casos[] = {
        {{}, "", {}, false, nullptr},
        {{"a", "b"}, "", {"a", "b"}, false, nullptr},
        {{"--json", "a"}, "", {"a"}, true, nullptr},
        {{"a", "--rango", "A1:B2", "b"}, "", {"a", "b"}, false, "A1:B2"},
        {{"--rango=A1=B2"}, "", {}, false, "A1=B2"},
        {{"--rango="}, "", {}, false, ""},
        {{"--rango", "--json"}, "", {}, false, "--json"},
        {{"--", "--json", "--"}, "", {"--json", "--"}, false, nullptr},
        {{"-5", "-", "=--1", ""}, "", {"-5", "-", "=--1", ""}, false, nullptr},
        {{"--rango"}, "falta el valor de --rango", {}, false, nullptr},
        {{"--json=si"}, "la opción --json no lleva valor", {}, false, nullptr},
        {{"--json", "--json"}, "la opción --json está repetida", {}, true, nullptr},
        {{"--nada"}, "opción desconocida «--nada»", {}, false, nullptr},
        {{"--jso"}, "opción desconocida «--jso»", {}, false, nullptr},
    };
    for (const Caso& caso : casos) {
        std::string entrada;
        for (const std::string& texto : caso.textos) {
            entrada += "[" + texto + "]";
        }
        consola::Argumentos argumentos;
        EXPECT_EQ(argumentos.leer(caso.textos, kOpciones), caso.error) << entrada;
        EXPECT_EQ(argumentos.sueltos(), caso.sueltos) << entrada;
        EXPECT_EQ(argumentos.tiene("--json"), caso.json) << entrada;
        const std::string* rango = argumentos.valor("--rango");
        ASSERT_EQ(rango != nullptr, caso.rango != nullptr) << entrada;
        if (rango != nullptr) {
            EXPECT_EQ(*rango, caso.rango) << entrada;
        }
    }
}

} // namespace
