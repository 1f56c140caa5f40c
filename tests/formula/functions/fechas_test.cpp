#include "formula/functions/reloj.h"
#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

#include <ctime>
#include <tuple>

using motor_formulas::cambiarReloj;
using motor_formulas::HoraLocal;
using motor_formulas::Reloj;
using pruebas::comprobar;
using pruebas::HojaDePrueba;

namespace {

HoraLocal unaTardeDeMarzo() {
    return {5, 3, 2024, 18, 30, 15};
}

class Fechas : public testing::Test {
  protected:
    Fechas() : anterior_(cambiarReloj(unaTardeDeMarzo)) {}
    ~Fechas() override { cambiarReloj(anterior_); }

  private:
    Reloj anterior_;
};

} // namespace

TEST_F(Fechas, HoyYAhoraLeenElRelojYNoMiranSusArgumentos) {
    HojaDePrueba hoja{"=1/0 | 2"};
    comprobar(hoja, {
                        {"=HOY()", "45356"},
                        {"=HOY()=\"5/3/2024\"+0", "VERDADERO"},
                        {"=HOY(1;2;3)", "45356"},
                        {"=HOY(A1)", "45356"},
                        {"=AHORA(A1:B1)-HOY()", "0,7710069444"},
                        {"=AHORA()", "45356,77101"},
                        {"=ENTERO(AHORA())=HOY()", "VERDADERO"},
                        {"=(AHORA()-HOY())*86400-(18*3600+30*60+15)<0,001", "VERDADERO"},
                    });
}

TEST(FechasDelSistema, ElRelojDelSistemaDaLaHoraLocal) {
    const auto partes = [](const std::tm& local) {
        return std::tuple(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                          local.tm_min, local.tm_sec);
    };
    const std::time_t antes = std::time(nullptr);
    const HoraLocal hora = motor_formulas::leerReloj();
    const std::time_t despues = std::time(nullptr);
    bool esUnaDeEllas = false;
    for (std::time_t instante = antes; instante <= despues; ++instante) {
        std::tm local{};
        localtime_r(&instante, &local);
        esUnaDeEllas |= partes(local) == std::tuple(hora.anio, hora.mes, hora.dia, hora.hora,
                                                    hora.minuto, hora.segundo);
    }
    EXPECT_TRUE(esUnaDeEllas);
}

TEST_F(Fechas, PartesDeUnaFecha) {
    HojaDePrueba hoja{"15/3/2024 | 29/2/2024 | hola | 45658,75"};
    comprobar(hoja, {
                        {"=DIA(A1)", "15"},
                        {"=MES(A1)", "3"},
                        {"=AÑO(A1)", "2024"},
                        {"=año(A1)", "2024"},
                        {"=DIA(B1)", "29"},
                        {"=MES(B1+1)", "3"},
                        {"=DIA(\"31/12/1999\")", "31"},
                        {"=AÑO(\"31/12/1999\"+1)", "2000"},
                        {"=DIA(D1)&\"/\"&MES(D1)&\"/\"&AÑO(D1)", "1/1/2025"}, // sin la hora
                        {"=DIA(60)", "28"},
                        {"=MES(61)", "3"},
                        {"=DIA(0)", "1"},
                        {"=MES(-10)", "1"},
                        {"=AÑO(-10)", "1900"},
                        {"=AÑO(E1)", "1900"},
                        {"=DIA(C1)", "#¡VALOR!"},
                        {"=DIA(A1:B1)", "#¡VALOR!"},
                        {"=MES(1/0)", "#¡DIV/0!"},
                        {"=AÑO()", "#¡VALOR!"},
                        {"=DIA(1;2)", "#¡VALOR!"},
                    });
}

TEST_F(Fechas, LasSeriesEnormesNiTardanNiDesbordan) {
    HojaDePrueba hoja{"inf | nan | -inf"};
    comprobar(hoja, {
                        {"=AÑO(10^300)>9999", "VERDADERO"},
                        {"=Y(MES(10^300)>=1;MES(10^300)<=12;DIA(10^300)>=1;DIA(10^300)<=31)",
                         "VERDADERO"},
                        {"=AÑO(A1)>9999", "VERDADERO"},
                        {"=AÑO(B1)", "1900"},
                        {"=AÑO(C1)", "1900"},
                    });
}

TEST_F(Fechas, DiasEntreDosFechas) {
    HojaDePrueba hoja{"15/3/2024 | 1/3/2024"};
    comprobar(hoja, {
                        {"=DIAS(A1;B1)", "14"},
                        {"=DIAS(B1;A1)", "-14"},
                        {"=DIAS(\"1/1/2025\";\"1/1/2024\")", "366"},
                        {"=DIAS(A1+0,75;A1-1+0,25)", "1"}, // las horas no cuentan
                        {"=DIAS(A1+0,25;A1-1+0,75)", "1"},
                        {"=DIAS(-0,5;0)", "-1"},
                        {"=DIAS(A1)", "#¡VALOR!"},
                        {"=DIAS(A1;B1;1)", "#¡VALOR!"},
                        {"=DIAS(A1:B1;B1)", "#¡VALOR!"},
                        {"=DIAS(\"ayer\";B1)", "#¡VALOR!"},
                    });
}
