#include "tests/editing/prueba_editor.h"

#include <climits>

#include <map>

namespace pruebas {

class Tamanos : public PruebaEditor {
  protected:
    std::map<int, int> altos(int indice = 0) {
        return {hoja(indice).altos.begin(), hoja(indice).altos.end()};
    }
    std::map<int, int> anchos(int indice = 0) {
        return {hoja(indice).anchos.begin(), hoja(indice).anchos.end()};
    }
};

using Mapa = std::map<int, int>;

TEST_F(Tamanos, SeAcotanElTamanoYLaPosicion) {
    libro.modificado = false;
    editor.redimensionarColumna(3, 5);
    EXPECT_TRUE(libro.modificado);
    editor.redimensionarColumna(4, 601);
    editor.redimensionarColumna(-7, 100);
    editor.redimensionarColumna(INT_MAX, INT_MIN);
    EXPECT_EQ(anchos(), (Mapa{{0, 100}, {3, 20}, {4, 600}, {701, 20}}));
    libro.modificado = false;
    editor.redimensionarFila(2, 1000);
    EXPECT_TRUE(libro.modificado);
    editor.redimensionarFila(5, 13);
    editor.redimensionarFila(70000, INT_MAX);
    editor.redimensionarFila(INT_MIN, 14);
    EXPECT_EQ(altos(), (Mapa{{0, 14}, {2, 400}, {5, 14}, {65535, 400}}));
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
}

TEST_F(Tamanos, DeshacerDejaElTamanoYDeshaceLaEdicionAnterior) {
    escribir("A1", "x");
    editor.redimensionarColumna(2, 150);
    editor.deshacer();
    EXPECT_EQ(celda("A1"), nullptr);
    EXPECT_EQ(anchos(), (Mapa{{2, 150}}));
    editor.redimensionarColumna(2, 160);
    editor.redimensionarFila(4, 60);
    editor.rehacer();
    EXPECT_EQ(entrada("A1"), "x");
    EXPECT_EQ(anchos(), (Mapa{{2, 160}}));
    EXPECT_EQ(altos(), (Mapa{{4, 60}}));
}

TEST_F(Tamanos, SobrevivenAVariasVueltasYAVariosPasos) {
    for (int i = 0; i < 5; ++i) {
        editor.redimensionarFila(i, 30 + i);
        escribir("A1", std::to_string(i));
    }
    const Mapa esperados{{0, 30}, {1, 31}, {2, 32}, {3, 33}, {4, 34}};
    for (int i = 0; i < 5; ++i) {
        editor.deshacer();
        EXPECT_EQ(altos(), esperados) << i;
    }
    for (int i = 0; i < 5; ++i) {
        editor.rehacer();
        EXPECT_EQ(altos(), esperados) << i;
    }
}

TEST_F(Tamanos, VanYVienenConLasFilasInsertadas) {
    editor.redimensionarFila(1, 31); // antes de la inserción
    editor.redimensionarFila(5, 35); // después de la inserción
    editor.insertarFilas(3, 2);
    EXPECT_EQ(altos(), (Mapa{{1, 31}, {7, 35}}));
    editor.redimensionarFila(1, 41);
    editor.redimensionarFila(4, 44); // una de las insertadas
    editor.redimensionarFila(7, 47);
    editor.redimensionarFila(9, 49);
    editor.deshacer();
    EXPECT_EQ(altos(), (Mapa{{1, 41}, {5, 47}, {7, 49}}));
    editor.redimensionarFila(5, 57);
    editor.redimensionarFila(2, 52);
    editor.redimensionarFila(3, 53);
    editor.rehacer();
    EXPECT_EQ(altos(), (Mapa{{1, 41}, {2, 52}, {4, 44}, {5, 53}, {7, 57}, {9, 49}}));
}

TEST_F(Tamanos, VuelvenConLasColumnasEliminadas) {
    for (int col = 0; col < 6; ++col)
        editor.redimensionarColumna(col, 100 + col);
    editor.eliminarColumnas(2, 2);
    EXPECT_EQ(anchos(), (Mapa{{0, 100}, {1, 101}, {2, 104}, {3, 105}}));
    editor.redimensionarColumna(2, 204);
    editor.redimensionarColumna(0, 200);
    editor.deshacer();
    EXPECT_EQ(anchos(), (Mapa{{0, 200}, {1, 101}, {2, 102}, {3, 103}, {4, 204}, {5, 105}}));
    editor.redimensionarColumna(3, 303);
    editor.rehacer();
    EXPECT_EQ(anchos(), (Mapa{{0, 200}, {1, 101}, {2, 204}, {3, 105}}));
    editor.deshacer();
    EXPECT_EQ(anchos(), (Mapa{{0, 200}, {1, 101}, {2, 102}, {3, 303}, {4, 204}, {5, 105}}));
}

TEST_F(Tamanos, UnaFilaNuncaExistioAntesDeInsertarla) {
    escribir("A1", "x");
    editor.insertarFilas(0, 3);
    escribir("A1", "y");
    editor.redimensionarFila(1, 77);
    editor.deshacer();
    EXPECT_EQ(altos(), (Mapa{{1, 77}}));
    editor.deshacer();
    EXPECT_EQ(altos(), Mapa{});
    editor.deshacer();
    EXPECT_EQ(altos(), Mapa{});
    editor.rehacer();
    editor.rehacer();
    EXPECT_EQ(altos(), (Mapa{{1, 77}}));
}

TEST_F(Tamanos, InsertarFilasNoMueveAnchosNiAlReves) {
    editor.insertarFilas(0, 2);
    editor.redimensionarColumna(1, 111);
    editor.deshacer();
    EXPECT_EQ(anchos(), (Mapa{{1, 111}}));
    editor.insertarColumnas(0, 2);
    editor.redimensionarFila(1, 33);
    editor.deshacer();
    EXPECT_EQ(altos(), (Mapa{{1, 33}}));
    EXPECT_EQ(anchos(), (Mapa{{1, 111}}));
}

TEST_F(Tamanos, SonDeSuHojaAunqueSeCambieDeHojaEntreMedias) {
    libro.agregarHoja();
    editor.insertarFilas(0, 1); // en la primera hoja
    libro.hojaActiva = 1;
    editor.redimensionarFila(4, 94); // en la segunda, que no se desplaza
    libro.hojaActiva = 0;
    editor.redimensionarFila(4, 54);
    libro.hojaActiva = 1;
    editor.deshacer();
    EXPECT_EQ(altos(0), (Mapa{{3, 54}}));
    EXPECT_EQ(altos(1), (Mapa{{4, 94}}));
    editor.rehacer();
    EXPECT_EQ(altos(0), (Mapa{{4, 54}}));
    EXPECT_EQ(altos(1), (Mapa{{4, 94}}));
}

TEST_F(Tamanos, SiguenASuHojaCuandoLaVentanaLaRenombraOQuitaOtra) {
    libro.agregarHoja();
    libro.hojaActiva = 1;
    escribir("A1", "x");
    motor.renombrarHoja(1, "Gastos");
    ASSERT_TRUE(libro.eliminarHoja(0));
    motor.recalcularTodo();
    editor.redimensionarColumna(0, 222); // en la que se llamaba "Hoja 2"
    editor.deshacer();
    ASSERT_EQ(libro.hojas.size(), 2U);
    EXPECT_EQ(anchos(0), Mapa{});
    EXPECT_EQ(hoja(1).nombre, "Hoja 2");
    EXPECT_EQ(anchos(1), (Mapa{{0, 222}}));
}

TEST_F(Tamanos, UnaHojaNuevaNoHeredaLosDeLaQueSeLlamabaIgual) {
    libro.agregarHoja();
    libro.hojaActiva = 1;
    editor.redimensionarColumna(0, 111);
    escribir("A1", "x");
    ASSERT_TRUE(libro.eliminarHoja(1));
    ASSERT_EQ(libro.agregarHoja()->nombre, "Hoja 2");
    motor.recalcularTodo();
    libro.hojaActiva = 1;
    editor.redimensionarColumna(0, 222);
    editor.deshacer();
    EXPECT_EQ(anchos(1), (Mapa{{0, 111}}));
    editor.rehacer();
    EXPECT_EQ(anchos(1), (Mapa{{0, 222}}));
}

TEST_F(Tamanos, NoSobrevivenALaFilaQueSeEliminaSinVuelta) {
    editor.redimensionarFila(3, 60);
    editor.eliminarFilas(3, 1);
    EXPECT_EQ(altos(), Mapa{});
    escribir("A1", "x");
    editor.deshacer();
    EXPECT_EQ(altos(), Mapa{});
}

TEST_F(Tamanos, LosQueSalenDeLaCuadriculaVuelvenAlDeshacer) {
    editor.redimensionarFila(65535, 60);
    editor.redimensionarColumna(700, 60);
    editor.insertarFilas(10, 1);
    editor.insertarColumnas(10, 2);
    EXPECT_EQ(altos(), Mapa{});
    EXPECT_EQ(anchos(), Mapa{});
    editor.redimensionarFila(65535, 70); // la que era la 65535 desde cero era la 65534
    editor.deshacer();
    editor.deshacer();
    EXPECT_EQ(altos(), (Mapa{{65534, 70}, {65535, 60}}));
    EXPECT_EQ(anchos(), (Mapa{{700, 60}}));
}

} // namespace pruebas
