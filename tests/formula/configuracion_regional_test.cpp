#include "formula/functions/catalogo.h"
#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

using pruebas::HojaDePrueba;

// La biblioteca de ventanas cambia la configuración regional del proceso; las fórmulas no lo notan.

namespace {

/// Cambia la configuración del proceso mientras vive.
class ConfiguracionRegional {
  public:
    explicit ConfiguracionRegional(const char* nombre)
        : anterior_(std::setlocale(LC_ALL, nullptr)),
          instalada_(std::setlocale(LC_ALL, nombre) != nullptr) {}
    ~ConfiguracionRegional() { std::setlocale(LC_ALL, anterior_.c_str()); }
    ConfiguracionRegional(const ConfiguracionRegional&) = delete;
    ConfiguracionRegional& operator=(const ConfiguracionRegional&) = delete;

    bool instalada() const { return instalada_; }

  private:
    std::string anterior_;
    bool instalada_;
};

std::vector<std::string> formulasConNumerosYLetras() {
    std::vector<std::string> formulas = {
        "=1,5+2.5",
        "=\"1.234,56\"+0,1",
        "=1234567,891&\"\"",
        "=1/3",
        "=\"1.5\"*2",
        "=10^20",
        "=\"15,5%\"&\" \"&15,5%",
        "=A1+A2+A3",
        "=CONTAR.SI(A1:A4;\">1,2\")",
        "=CONTAR.SI(A1:A4;\"1,5\")",
        "=\"Ñ\"<\"ñ\"",
        "=MAYUSC(A4)&MINUSC(A4)",
        "=\"árbol\"<\"zeta\"",
        "=\"i\"=\"I\"",
        "=VA(1,5%;12;-100,25)",
    };
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones()) {
        if (funcion.nombre != "HOY" && funcion.nombre != "AHORA")
            formulas.emplace_back(funcion.ejemplo);
    }
    return formulas;
}

std::vector<std::string> textosCon(const char* configuracion) {
    const ConfiguracionRegional regional(configuracion);
    if (!regional.instalada())
        return {};
    HojaDePrueba hoja{"1,5", "1.25", "1.234,5", "Ñandú i"};
    std::vector<std::string> textos;
    for (const std::string& formula : formulasConNumerosYLetras())
        textos.push_back(formula + " da " + hoja.texto(formula));
    return textos;
}

} // namespace

TEST(ConfiguracionRegionalDelProceso, NoCambiaNingunResultado) {
    const std::vector<std::string> clasica = textosCon("C");
    ASSERT_FALSE(clasica.empty());
    EXPECT_EQ(clasica[0], "=1,5+2.5 da 4");
    EXPECT_EQ(clasica[3], "=1/3 da 0,3333333333");
    for (const char* nombre : {"C.UTF-8", "es_ES.UTF-8"}) {
        const std::vector<std::string> textos = textosCon(nombre);
        if (textos.empty())
            GTEST_SKIP() << "el sistema no tiene " << nombre;
        EXPECT_EQ(textos, clasica) << nombre;
    }
}

TEST(ConfiguracionRegionalDelProceso, LaEspanolaUsaComaDecimal) {
    const ConfiguracionRegional regional("es_ES.UTF-8");
    if (!regional.instalada())
        GTEST_SKIP() << "el sistema no tiene es_ES.UTF-8";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(HojaDePrueba().texto("=0.5+\"0.25\""), "0,75");
}
