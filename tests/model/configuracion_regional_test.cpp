// Con la coma como signo decimal del proceso, los números se leen y se escriben igual.

#include "model/fechas.h"
#include "model/numeros.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

namespace {

using namespace nucleo;

class ConfiguracionRegional : public ::testing::Test {
  protected:
    void SetUp() override {
        anterior_ = std::setlocale(LC_ALL, nullptr);
        if (std::setlocale(LC_ALL, "es_ES.UTF-8") == nullptr)
            GTEST_SKIP() << "es_ES.UTF-8 no está instalada";
        char texto[8];
        std::snprintf(texto, sizeof texto, "%.1f", 1.5);
        ASSERT_STREQ(texto, "1,5") << "la configuración de prueba usa la coma";
    }
    void TearDown() override { std::setlocale(LC_ALL, anterior_.c_str()); }

  private:
    std::string anterior_;
};

TEST_F(ConfiguracionRegional, NoCambiaLoQueSeLee) {
    double numero = 0;
    EXPECT_TRUE(parsearNumeroUsuario("1,5", numero));
    EXPECT_EQ(numero, 1.5);
    EXPECT_TRUE(parsearNumeroUsuario("1.5", numero));
    EXPECT_EQ(numero, 1.5);
    EXPECT_TRUE(parsearNumeroUsuario("+0x1.8p0", numero));
    EXPECT_EQ(numero, 1.5);
    EXPECT_TRUE(parsearNumeroUsuario("+1,5", numero)) << "el camino que no es el rápido";
    EXPECT_EQ(numero, 1.5);
    EXPECT_FALSE(parsearNumeroUsuario("1,5,5", numero));
    EXPECT_TRUE(parsearFecha("1/2/2024", numero));
    EXPECT_EQ(numero, 45323);
}

TEST_F(ConfiguracionRegional, NoCambiaLoQueSeEscribe) {
    Formato formato;
    EXPECT_EQ(formatearNumero(1234.5, formato), "1234,5");
    formato.numero = FormatoNumero::Moneda;
    EXPECT_EQ(formatearNumero(1234.5, formato), "$ 1.234,50");
    EXPECT_EQ(numeroConDecimales(-1234.567, 1, true), "-1.234,6");
}

} // namespace
