#include "tests/formula/prueba_motor.h"

#include <vector>

namespace {

using motor_formulas::Motor;
using motor_formulas::PruebaMotor;
using nucleo::TipoCelda;

TEST_F(PruebaMotor, LosCiclosDanErrorCircular) {
    escribir("A1", "=A1");
    EXPECT_EQ(visible("A1"), "#¡CIRCULAR!");
    escribir("A1", "=B1");
    EXPECT_EQ(visible("A1"), "");
    escribir("B1", "=A1");
    EXPECT_EQ(visible("A1"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("B1"), "#¡CIRCULAR!");
    escribir("C1", "=A1+1");
    EXPECT_EQ(visible("C1"), "#¡CIRCULAR!");
    escribir("D1", "=SI.ERROR(A1;7)");
    EXPECT_EQ(visible("D1"), "7") << "escrita después solo lee el error, que está fuera";
    motor.recalcularTodo();
    EXPECT_EQ(visible("C1"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("D1"), "#¡CIRCULAR!") << "al calcularse con el ciclo está detrás de él";
    escribir("B1", "4");
    EXPECT_EQ(visible("C1"), "5");
    EXPECT_EQ(visible("D1"), "4");
}

TEST_F(PruebaMotor, UnRangoSobreSiMismoEsCircular) {
    escribir("A2", "3");
    escribir("A1", "=SUMA(A1:A3)");
    EXPECT_EQ(visible("A1"), "#¡CIRCULAR!");
    motor.recalcularTodo();
    EXPECT_EQ(visible("A1"), "#¡CIRCULAR!");
    escribir("B1", "=SUMA(B2:B9)");
    escribir("B5", "=C1");
    escribir("C1", "=B1");
    EXPECT_EQ(visible("B1"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("B5"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("C1"), "#¡CIRCULAR!");
}

TEST_F(PruebaMotor, UnBloqueDemasiadoGrandeNoRecalculaAlCambiar) {
    escribir("D1", "=SUMA(A1:B65536)");
    escribir("A1", "5");
    EXPECT_EQ(visible("D1"), "0");
    motor.recalcularTodo();
    EXPECT_EQ(visible("D1"), "5");
}

TEST_F(PruebaMotor, AlRecalcularTodoUnBloqueDemasiadoGrandeEsperaALoQueHayDentro) {
    libro.agregarHoja();
    libro.agregarHoja();
    const auto poner = [&](int hoja, const char* direccion, const char* texto) {
        const auto [fila, col] = lugar(direccion);
        nucleo::Celda& c = libro.hojas[static_cast<std::size_t>(hoja)]->celdaMut(fila, col);
        c.tipo = TipoCelda::Formula;
        c.entrada = texto;
    };
    // Cada hoja suma entera la siguiente, y lo que hay en ella depende de otras sumas.
    poner(0, "A1", "=SUMA('Hoja 2'!A1:ZZ65536)");
    poner(0, "B1", "=A1*2");
    poner(1, "C9", "=SUMA('Hoja 3'!A1:ZZ65536)");
    poner(1, "C8", "=C9+1");
    poner(2, "B7", "=2+3");
    poner(2, "A9", "=B7*10");
    // Lee su propia hoja y otra fórmula la lee a ella: manda el orden de las dependencias.
    poner(2, "D1", "=CONTAR('Hoja 1'!A1:ZZ65536)");
    motor.recalcularTodo();
    EXPECT_EQ(visible("B7", 2), "5");
    EXPECT_EQ(visible("A9", 2), "50");
    motor.limpiarCelda(2, 0, 3);
    motor.recalcularTodo();
    EXPECT_EQ(visible("C9", 1), "55");
    EXPECT_EQ(visible("C8", 1), "56");
    EXPECT_EQ(visible("A1"), "111");
    EXPECT_EQ(visible("B1"), "222");
}

TEST_F(PruebaMotor, LasFormulasDeLosBordesDeLaCuadriculaTambienSeEsperan) {
    libro.agregarHoja();
    const auto poner = [&](int hoja, int fila, int col, const char* texto) {
        nucleo::Celda& c = libro.hojas[static_cast<std::size_t>(hoja)]->celdaMut(fila, col);
        c.tipo = TipoCelda::Formula;
        c.entrada = texto;
    };
    poner(0, 0, 0, "=SUMA('Hoja 2'!A1:ZZ65536)");
    poner(1, 65535, 0, "=1");
    poner(1, 0, 701, "=20");
    poner(1, 65535, 701, "=300");
    // Fuera de la cuadrícula, como las puede traer un archivo: se calculan y no estorban.
    poner(1, 65536, 0, "=4000");
    poner(1, 0, 702, "=50000");
    motor.recalcularTodo();
    EXPECT_EQ(visible("A1"), "321");
    EXPECT_EQ(visible("ZZ65536", 1), "300");
    escribir("ZZ65536", "=400", 1);
    motor.recalcularTodo();
    EXPECT_EQ(visible("A1"), "421");
}

TEST_F(PruebaMotor, UnBloqueGrandeQueSeLeeASiMismoNoEsCircular) {
    escribir("A1", "4");
    escribir("C1", "=SUMA(A1:B65536)+SUMA(C1:D65536)");
    escribir("D1", "=C1+1");
    escribir("B1", "=A1+1");
    motor.recalcularTodo();
    EXPECT_NE(visible("C1"), "#¡CIRCULAR!");
    EXPECT_NE(visible("D1"), "#¡CIRCULAR!");
    escribir("C1", "=SUMA(A1:D65536)*0+SUMA(A1:B1)");
    motor.recalcularTodo();
    EXPECT_EQ(visible("C1"), "9");
    EXPECT_EQ(visible("D1"), "10");
}

TEST_F(PruebaMotor, DetrasDeUnBloqueGrandeLosCiclosSiguenSiendoCiclos) {
    escribir("A1", "=SUMA(D1:E65536)");
    escribir("B1", "=A1+C1");
    escribir("C1", "=B1");
    escribir("D5", "=1");
    escribir("D6", "=B1");
    motor.recalcularTodo();
    EXPECT_EQ(visible("B1"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("C1"), "#¡CIRCULAR!");
    EXPECT_EQ(visible("D6"), "#¡CIRCULAR!");
}

TEST_F(PruebaMotor, ElOrdenDeUnLoteDecideQueEstaDetrasDeUnCiclo) {
    struct Caso {
        std::vector<const char*> orden;
        const char* muestra;
    };
    // La que se escribe después del ciclo solo lee su error; la que ya estaba queda detrás de él.
    const Caso casos[] = {{{"A1", "B1", "C1"}, "7"},
                          {{"C1", "A1", "B1"}, "#¡CIRCULAR!"},
                          {{"A1", "C1", "B1"}, "#¡CIRCULAR!"}};
    for (const Caso& caso : casos) {
        libro.reiniciar();
        {
            const Motor::Lote lote(motor);
            for (const char* const direccion : caso.orden)
                escribir(direccion, direccion[0] == 'A'   ? "=B1"
                                    : direccion[0] == 'B' ? "=A1"
                                                          : "=SI.ERROR(A1;7)");
        }
        EXPECT_EQ(visible("C1"), caso.muestra) << caso.orden[0] << caso.orden[1];
        EXPECT_EQ(visible("A1"), "#¡CIRCULAR!");
    }
}

} // namespace
