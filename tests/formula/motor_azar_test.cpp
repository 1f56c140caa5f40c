#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "tests/formula/motor_llano.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using motor_formulas::Motor;
using nucleo::Libro;
using nucleo::TipoValor;
using nucleo::Valor;

/// Forma de un libro al azar.
struct Forma {
    const char* nombre;
    int hojas;
    int filas;
    int columnas;
    int pasos;
    /// De cada cien formas de fórmula, cuántas leen solo celdas de más arriba o más a la izquierda:
    /// con cien no hay ciclos.
    int sinCiclos;
    unsigned semilla;
};

/// Textos de celdas al azar.
class Escritor {
  public:
    Escritor(const Forma& forma, std::mt19937& azar) : forma_(forma), azar_(azar) {}

    int entre(int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar_); }

    std::string contenido(int fila, int col) {
        switch (entre(0, 9)) {
        case 0:
            return "";
        case 1:
            return palabra();
        case 2:
            return std::to_string(entre(1, 28)) + "/2/2024";
        case 3:
        case 4:
        case 5:
            return numero();
        default:
            break;
        }
        std::string texto = "=";
        texto.append(formula(fila, col));
        return texto;
    }

  private:
    std::string numero() {
        static const char* const kNumeros[] = {"0", "1",  "2",   "3",   "5",
                                               "7", "-4", "0,1", "2,5", "1000000000000000"};
        return kNumeros[entre(0, 9)];
    }
    std::string palabra() {
        static const char* const kPalabras[] = {"pera", "Uva", "uva", "HIGO", "a", "zeta"};
        return kPalabras[entre(0, 5)];
    }
    std::string hoja() {
        if (entre(0, 5) != 0)
            return "";
        // A veces, una que no existe.
        return "'Hoja " + std::to_string(entre(1, forma_.hojas + (entre(0, 9) == 0 ? 1 : 0))) +
               "'!";
    }

    /// Una esquina que, si no ha de haber ciclos, está en una columna anterior.
    std::pair<int, int> esquina(int col, bool libre) {
        const int columnas = libre ? forma_.columnas : col;
        return {entre(0, forma_.filas - 1), entre(0, std::max(0, columnas - 1))};
    }
    std::string referencia(int fila, int col, bool libre) {
        const auto [f, c] = libre || col > 0 ? esquina(col, libre) : std::pair{fila, col};
        if (!libre && col == 0)
            return numero();
        return unir(libre ? hoja() : "", nucleo::nombreRef(f, c));
    }
    std::string rango(int col, int ancho, bool libre) {
        auto [f1, c1] = esquina(col, libre);
        auto [f2, c2] = esquina(col, libre);
        if (entre(0, 2) == 0)
            f1 = 0; // rangos que empiezan en la misma fila, como los totales acumulados
        if (ancho == 1)
            c2 = c1;
        return unir(libre ? hoja() : "", nucleo::nombreRef(f1, c1), ":", nucleo::nombreRef(f2, c2));
    }
    /// Una columna entera de alto, para que varios rangos emparejen.
    std::string columnaEntera(int col, bool libre) {
        const int c = esquina(col, libre).second;
        return unir(nucleo::nombreRef(0, c), ":", nucleo::nombreRef(forma_.filas - 1, c));
    }
    std::string tabla(int col, bool libre) {
        const int c = std::min(esquina(col, libre).second, forma_.columnas - 2);
        const int f = entre(0, forma_.filas / 4);
        return unir(nucleo::nombreRef(f, c), ":",
                    nucleo::nombreRef(forma_.filas - 1, libre || c + 1 < col ? c + 1 : c));
    }
    std::string criterio() {
        static const char* const kOps[] = {"", "=", "<>", ">", ">=", "<", "<="};
        return unir("\"", kOps[entre(0, 6)], entre(0, 2) == 0 ? palabra() : numero(), "\"");
    }

    std::string formula(int fila, int col) {
        const bool libre = entre(0, 99) >= forma_.sinCiclos;
        if (!libre && col == 0)
            return unir(numero(), "+", numero());
        const auto ref = [&] { return referencia(fila, col, libre); };
        switch (entre(0, 15)) {
        case 0:
            return unir(ref(), "+", ref());
        case 1:
            return unir(ref(), "*2-", ref());
        case 2:
            return unir("SI.ERROR(", ref(), ";", numero(), ")");
        case 3:
            return unir("SI(", ref(), ">", numero(), ";", ref(), ";", ref(), ")");
        case 4:
            return unir(ref(), "&", ref());
        case 5:
            return unir(ref(), "/", ref());
        case 6:
        case 7: {
            static const char* const kFunciones[] = {"SUMA",   "PROMEDIO", "MAX",     "MIN",
                                                     "CONTAR", "CONTARA",  "PRODUCTO"};
            const int ancho = entre(1, 2);
            std::string texto = unir(kFunciones[entre(0, 6)], "(", rango(col, ancho, libre));
            if (entre(0, 3) == 0)
                texto += unir(";", ref());
            return texto + ")";
        }
        case 8:
            return unir("SUMA(", rango(col, 1, libre), ")");
        case 9:
            return unir("CONTAR.SI(", columnaEntera(col, libre), ";", criterio(), ")");
        case 10:
            return unir("SUMAR.SI(", columnaEntera(col, libre), ";", criterio(), ";",
                        columnaEntera(col, libre), ")");
        case 11:
            return unir("PROMEDIO.SI(", rango(col, 1, libre), ";", criterio(), ")");
        case 12:
            return unir("SUMAR.SI.CONJUNTO(", columnaEntera(col, libre), ";",
                        columnaEntera(col, libre), ";", criterio(), ";", columnaEntera(col, libre),
                        ";", criterio(), ")");
        case 13:
            return unir("BUSCARV(", entre(0, 1) == 0 ? ref() : numero(), ";", tabla(col, libre),
                        ";1;", entre(0, 1) == 0 ? "VERDADERO" : "FALSO", ")");
        case 14:
            return unir("COINCIDIR(\"", palabra(), "\";", columnaEntera(col, libre), ";",
                        std::to_string(entre(-1, 1)), ")");
        default:
            return entre(0, 4) == 0 ? "1+" : unir("-", ref(), "%");
        }
    }

    template <typename... Trozos> static std::string unir(const Trozos&... trozos) {
        std::string texto;
        (texto.append(trozos), ...);
        return texto;
    }

    const Forma& forma_;
    std::mt19937& azar_;
};

bool iguales(const Valor& a, const Valor& b) {
    if (a.tipo == TipoValor::Numero && b.tipo == TipoValor::Numero)
        return std::bit_cast<std::uint64_t>(a.numero) == std::bit_cast<std::uint64_t>(b.numero);
    return a.tipo == b.tipo && a.error == b.error && a.logico == b.logico && a.texto == b.texto;
}

std::string describir(const Valor& valor) {
    return std::to_string(static_cast<int>(valor.tipo)) + " " + std::to_string(valor.numero) + " " +
           valor.texto + nucleo::textoError(valor.error) + (valor.logico ? " sí" : "");
}

/// Todas las celdas del libro valen lo que las del motor llano, y el grafo dice lo mismo.
void comparar(const Libro& libro, const pruebas::MotorLlano& llano) {
    std::size_t celdas = 0;
    std::size_t conPrecedentes = 0;
    for (const auto& hoja : libro.hojas) {
        for (const auto& [clave, celda] : std::as_const(*hoja).celdas)
            celdas += celda.tipo != nucleo::TipoCelda::Vacia ? 1 : 0;
    }
    ASSERT_EQ(celdas, llano.celdas().size());
    for (const auto& [clave, celda] : llano.celdas()) {
        const nucleo::Hoja& hoja =
            *libro.hojas[static_cast<std::size_t>(nucleo::hojaDeClave(clave))];
        const int fila = nucleo::filaDeClave(clave);
        const int col = nucleo::columnaDeClave(clave);
        const nucleo::Celda* const real = hoja.celda(fila, col);
        ASSERT_NE(real, nullptr);
        ASSERT_TRUE(iguales(real->valor, celda.valor))
            << hoja.nombre << " " << nucleo::nombreRef(fila, col) << " " << celda.texto << "\n  da "
            << describir(real->valor) << "\n  y debería dar " << describir(celda.valor);
        conPrecedentes += celda.precedentes.empty() ? 0 : 1;
        if (!celda.precedentes.empty()) {
            ASSERT_EQ(libro.grafo().precedentesDe(clave), celda.precedentes) << celda.texto;
        }
    }
    ASSERT_EQ(libro.precedentes.size(), conPrecedentes);
}

class MotorAlAzar : public ::testing::TestWithParam<Forma> {};

TEST_P(MotorAlAzar, HaceLoMismoQueElMotorLlano) {
    const Forma forma = GetParam();
    std::mt19937 azar(forma.semilla);
    Escritor escritor(forma, azar);
    Libro libro;
    for (int hoja = 1; hoja < forma.hojas; ++hoja)
        libro.agregarHoja();
    Motor motor(libro);
    pruebas::MotorLlano llano(libro);
    const auto escribir = [&] {
        const int hoja = escritor.entre(0, forma.hojas - 1);
        const int fila = escritor.entre(0, forma.filas - 1);
        const int col = escritor.entre(0, forma.columnas - 1);
        const std::string texto = escritor.contenido(fila, col);
        motor.establecerCelda(hoja, fila, col, texto);
        llano.establecer(hoja, fila, col, texto);
    };
    {
        const Motor::Lote lote(motor);
        for (int i = 0; i < forma.filas * forma.columnas * forma.hojas; ++i)
            escribir();
    }
    comparar(libro, llano);
    for (int paso = 0; paso < forma.pasos && !HasFatalFailure(); ++paso) {
        SCOPED_TRACE(paso);
        const int accion = escritor.entre(0, 19);
        if (accion == 0) {
            motor.recalcularTodo();
            llano.recalcularTodo();
        } else if (accion < 4) {
            const Motor::Lote lote(motor);
            for (int i = escritor.entre(0, 20); i > 0; --i)
                escribir();
        } else {
            escribir();
        }
        comparar(libro, llano);
    }
}

INSTANTIATE_TEST_SUITE_P(Formas, MotorAlAzar,
                         ::testing::Values(Forma{"pequeño con ciclos", 3, 5, 5, 400, 40, 1},
                                           Forma{"pequeño y enredado", 1, 3, 4, 600, 0, 2},
                                           Forma{"sin ciclos", 2, 10, 8, 300, 100, 3},
                                           Forma{"alto sin ciclos", 1, 200, 5, 25, 100, 4},
                                           Forma{"alto con algún ciclo", 1, 170, 4, 30, 98, 5},
                                           Forma{"alto, otra vez", 2, 260, 3, 15, 100, 6}),
                         [](const auto& parametro) {
                             return "Forma" + std::to_string(parametro.index);
                         });

/// Después de recalcularlo todo, ninguna fórmula que no sea circular cambiaría al evaluarla otra
/// vez: también las que leen hojas enteras, si lo que hay en ellas no depende de quien las lee.
TEST(MotorAlAzar, TrasRecalcularTodoNadaCambiariaAunqueSeLeanHojasEnteras) {
    std::mt19937 azar(20261121);
    const auto entre = [&azar](int a, int b) {
        return std::uniform_int_distribution<int>(a, b)(azar);
    };
    for (int libroNumero = 0; libroNumero < 40; ++libroNumero) {
        SCOPED_TRACE(libroNumero);
        constexpr int kHojas = 4;
        constexpr int kFilas = 6;
        Libro libro;
        Motor motor(libro);
        for (int hoja = 1; hoja < kHojas; ++hoja)
            libro.agregarHoja();
        // El orden de las hojas no es el de sus dependencias.
        std::vector<int> nivel(kHojas);
        for (int hoja = 0; hoja < kHojas; ++hoja)
            nivel[static_cast<std::size_t>(hoja)] = (hoja * 3 + libroNumero) % kHojas;
        for (int hoja = 0; hoja < kHojas; ++hoja) {
            for (int fila = 0; fila < kFilas; ++fila) {
                const int otra = entre(0, kHojas - 1);
                const bool debajo =
                    nivel[static_cast<std::size_t>(otra)] < nivel[static_cast<std::size_t>(hoja)];
                std::string texto = "=" + std::to_string(entre(1, 9));
                if (debajo && entre(0, 1) == 0)
                    texto = "=SUMA('Hoja " + std::to_string(otra + 1) + "'!A1:ZZ65536)";
                else if (entre(0, 1) == 0)
                    texto = "=A" + std::to_string(entre(1, kFilas)) + "*0,5+1";
                motor.establecerCelda(hoja, fila, 0, texto);
            }
        }
        motor.recalcularTodo();
        for (int hoja = 0; hoja < kHojas; ++hoja) {
            for (int fila = 0; fila < kFilas; ++fila) {
                const nucleo::Celda* const celda =
                    std::as_const(*libro.hojas[static_cast<std::size_t>(hoja)]).celda(fila, 0);
                if (celda->valor.error == nucleo::ErrorCelda::Circular)
                    continue;
                EXPECT_TRUE(iguales(celda->valor, motor.evaluarFormula(hoja, celda->entrada)))
                    << hoja << " " << fila << " " << celda->entrada;
            }
        }
    }
}

} // namespace
