#include "formula/functions/catalogo.h"
#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

using motor_formulas::Arg;
using motor_formulas::buscarFuncion;
using motor_formulas::Funcion;
using motor_formulas::funciones;
using nucleo::ErrorCelda;
using nucleo::Valor;
using pruebas::HojaDePrueba;

TEST(Catalogo, LasFuncionesEnSuOrden) {
    const std::vector<std::string_view> esperadas = {
        "SUMA",    "PRODUCTO",  "REDONDEAR",  "POTENCIA",    "RAIZ",
        "ABS",     "ENTERO",    "RESIDUO",    "PROMEDIO",    "MEDIANA",
        "MODA",    "CONTAR",    "CONTARA",    "MAX",         "MIN",
        "DESVEST", "SUMAR.SI",  "CONTAR.SI",  "PROMEDIO.SI", "SUMAR.SI.CONJUNTO",
        "Y",       "O",         "NO",         "BUSCARV",     "BUSCARH",
        "INDICE",  "COINCIDIR", "CONCATENAR", "IZQUIERDA",   "DERECHA",
        "LARGO",   "MAYUSC",    "MINUSC",     "ESPACIOS",    "HOY",
        "AHORA",   "DIA",       "MES",        "AÑO",         "DIAS",
        "VF",      "VA",        "PAGO",       "TASA",        "SI",
        "SI.ERROR"};
    ASSERT_EQ(esperadas.size(), 46U);
    // Una función nueva se añade donde convenga: aquí importa el orden de estas.
    std::vector<std::string_view> nombres;
    for (const Funcion& funcion : funciones()) {
        if (std::find(esperadas.begin(), esperadas.end(), funcion.nombre) != esperadas.end())
            nombres.push_back(funcion.nombre);
    }
    EXPECT_EQ(nombres, esperadas);
}

TEST(Catalogo, CadaFilaEstaCompleta) {
    std::set<std::string_view> vistos;
    for (const Funcion& funcion : funciones()) {
        EXPECT_TRUE(vistos.insert(funcion.nombre).second) << funcion.nombre;
        EXPECT_FALSE(funcion.familia.empty()) << funcion.nombre;
        EXPECT_TRUE(funcion.descripcion.ends_with('.')) << funcion.nombre;
        EXPECT_EQ(funcion.descripcion.find('\n'), std::string_view::npos) << funcion.nombre;
        EXPECT_NE(funcion.ejemplo.find(std::string(funcion.nombre) + "("), std::string_view::npos)
            << funcion.nombre;
        EXPECT_FALSE(funcion.resultado.empty()) << funcion.nombre;
        EXPECT_LE(funcion.cuenta.minimo, funcion.cuenta.maximo) << funcion.nombre;
        EXPECT_EQ(funcion.manejador == nullptr,
                  funcion.nombre == "SI" || funcion.nombre == "SI.ERROR")
            << funcion.nombre;
    }
}

TEST(Catalogo, BuscaElNombreExacto) {
    for (const Funcion& funcion : funciones())
        EXPECT_EQ(buscarFuncion(funcion.nombre), &funcion) << funcion.nombre;
    for (const std::string_view nombre :
         {"", "suma", "SUMA ", " SUMA", "SUM", "SUMAA", "ANO", "SUMAR,SI", "SI.", "SI.ERRO", "X"})
        EXPECT_EQ(buscarFuncion(nombre), nullptr) << nombre;
    EXPECT_EQ(buscarFuncion(std::string_view("Y\0", 2)), nullptr);
    EXPECT_EQ(buscarFuncion(std::string(1'000'000, 'S')), nullptr);
}

namespace {

std::string llamadaConUnos(const Funcion& funcion, std::size_t cuantos) {
    std::string formula = "=" + std::string(funcion.nombre) + "(";
    for (std::size_t i = 0; i < cuantos; ++i)
        formula += i == 0 ? "1" : ";1";
    return formula + ")";
}

} // namespace

TEST(Catalogo, OtroNumeroDeArgumentosEsUnErrorDeValor) {
    HojaDePrueba hoja;
    for (const Funcion& funcion : funciones()) {
        for (std::size_t cuantos = 0; cuantos < 9; ++cuantos) {
            if (!funcion.cuenta.admite(cuantos)) {
                EXPECT_EQ(hoja.texto(llamadaConUnos(funcion, cuantos)), "#¡VALOR!")
                    << llamadaConUnos(funcion, cuantos);
            }
        }
    }
}

TEST(Catalogo, CuantosArgumentosAdmiteCadaUna) {
    const auto admitidas = [](std::string_view nombre) {
        std::string texto;
        for (std::size_t cuantos = 0; cuantos <= 8; ++cuantos)
            texto += buscarFuncion(nombre)->cuenta.admite(cuantos) ? std::to_string(cuantos) : "";
        return texto;
    };
    struct Fila {
        std::string_view cuentas;
        std::vector<std::string_view> nombres;
    };
    const Fila filas[] = {
        {"012345678",
         {"SUMA", "PRODUCTO", "PROMEDIO", "MEDIANA", "MODA", "CONTAR", "CONTARA", "MAX", "MIN",
          "DESVEST", "CONCATENAR", "HOY", "AHORA"}},
        {"12345678", {"Y", "O"}},
        {"1",
         {"RAIZ", "ABS", "ENTERO", "NO", "LARGO", "MAYUSC", "MINUSC", "ESPACIOS", "DIA", "MES",
          "AÑO"}},
        {"12", {"IZQUIERDA", "DERECHA"}},
        {"2", {"REDONDEAR", "POTENCIA", "RESIDUO", "CONTAR.SI", "DIAS", "SI.ERROR"}},
        {"23", {"SUMAR.SI", "PROMEDIO.SI", "INDICE", "COINCIDIR", "SI"}},
        {"34", {"BUSCARV", "BUSCARH"}},
        {"345", {"VF", "VA", "PAGO"}},
        {"3456", {"TASA"}},
        {"357", {"SUMAR.SI.CONJUNTO"}},
    };
    for (const Fila& fila : filas) {
        for (const std::string_view nombre : fila.nombres)
            EXPECT_EQ(admitidas(nombre), fila.cuentas) << nombre;
    }
}

TEST(Catalogo, UnaFuncionDesconocidaNoTieneNombre) {
    pruebas::comprobar({
        {"=NADA(1)", "#¡NOMBRE?"},
        {"=NADA(1/0)", "#¡NOMBRE?"},
        {"=NADA()", "#¡NOMBRE?"},
        {"=suma(1;2)", "3"},
        {"=Súma(1;2)", "3"},
        {"=sumar.si(3;\">2\")", "3"},
    });
}

namespace {

Arg suelto(Valor valor) {
    Arg arg;
    arg.valor = std::move(valor);
    return arg;
}

Arg bloque(int filas, int columnas, std::vector<Valor> valores) {
    Arg arg;
    arg.esRango = true;
    arg.filas = filas;
    arg.columnas = columnas;
    arg.valores = std::move(valores);
    return arg;
}

} // namespace

TEST(RecolectarNumeros, ConvierteLoSueltoYFiltraLosBloques) {
    std::vector<double> numeros;
    ErrorCelda error{};
    EXPECT_TRUE(motor_formulas::recolectarNumeros(
        {suelto(Valor::deTexto("1,5")), suelto(Valor{}), suelto(Valor::deLogico(true)),
         bloque(
             2, 2,
             {Valor::deNumero(7), Valor::deTexto("8"), Valor::deLogico(true), Valor::deNumero(-9)}),
         suelto(Valor::deNumero(4))},
        numeros, error));
    EXPECT_EQ(numeros, (std::vector<double>{1.5, 1, 7, -9, 4}));
}

TEST(RecolectarNumeros, SeDetieneEnElPrimerError) {
    std::vector<double> numeros;
    ErrorCelda error{};
    EXPECT_FALSE(motor_formulas::recolectarNumeros(
        {suelto(Valor::deNumero(1)),
         bloque(1, 3,
                {Valor::deNumero(2), Valor::deError(ErrorCelda::Ref),
                 Valor::deError(ErrorCelda::DivCero)}),
         suelto(Valor::deTexto("x"))},
        numeros, error));
    EXPECT_EQ(error, ErrorCelda::Ref);
    EXPECT_FALSE(motor_formulas::recolectarNumeros({suelto(Valor::deTexto("x"))}, numeros, error));
    EXPECT_EQ(error, ErrorCelda::ValorInvalido);
}

TEST(ComoMatriz, SueltoReunidoYPrestado) {
    const motor_formulas::Matriz uno = motor_formulas::comoMatriz(suelto(Valor::deTexto("x")));
    EXPECT_EQ(uno.filas, 1);
    EXPECT_EQ(uno.columnas, 1);
    EXPECT_EQ(uno.valores, std::vector<Valor>{Valor::deTexto("x")});

    const std::vector<Valor> dos = {Valor::deNumero(1), Valor{}};
    const motor_formulas::Matriz reunida = motor_formulas::comoMatriz(bloque(2, 1, dos));
    EXPECT_EQ(reunida.filas, 2);
    EXPECT_EQ(reunida.columnas, 1);
    EXPECT_EQ(reunida.valores, dos);

    nucleo::Hoja hoja;
    nucleo::Celda& celda = hoja.celdaMut(5, 3);
    celda.tipo = nucleo::TipoCelda::Numero;
    celda.numero = 42;
    Arg prestado;
    prestado.esRango = true;
    prestado.hoja = &hoja;
    prestado.rango = {4, 2, 5, 4};
    prestado.filas = 2;
    prestado.columnas = 3;
    const motor_formulas::Matriz leida = motor_formulas::comoMatriz(prestado);
    ASSERT_EQ(leida.valores.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(leida.valores[i], i == 4 ? Valor::deNumero(42) : Valor{}) << i;
        EXPECT_EQ(motor_formulas::aValor(
                      motor_formulas::celdaDeArg(prestado, static_cast<std::int64_t>(i))),
                  leida.valores[i]);
    }
}
