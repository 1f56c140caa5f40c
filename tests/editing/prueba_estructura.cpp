#include "editing/desplazamiento.h"
#include "tests/editing/prueba_editor.h"

#include <climits>

#include <optional>

namespace pruebas {

class Estructura : public PruebaEditor {};

TEST_F(Estructura, InsertarFilasMueveCeldasFusionesYReferencias) {
    poner("A5", "5");
    poner("A4", "4");
    poner("C1", "=A5+A4");
    ASSERT_TRUE(hoja().fusionar(2, 2, 5, 3)); // C3:D6
    libro.modificado = false;
    editor.insertarFilas(4, 2);
    EXPECT_EQ(entrada("A4"), "4");
    EXPECT_EQ(celda("A5"), nullptr);
    EXPECT_EQ(entrada("A7"), "5");
    EXPECT_EQ(entrada("C1"), "=A7+A4");
    EXPECT_EQ(visto("C1"), "9");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"C3:D8"});
    EXPECT_TRUE(libro.modificado);
}

TEST_F(Estructura, EliminarFilasQuitaMueveYRecorta) {
    ponerColumna("A1", {"1", "2", "3", "4", "5"});
    poner("F1", "=A3");
    poner("F2", "=A5");
    ASSERT_TRUE(hoja().fusionar(1, 1, 4, 1)); // B2:B5
    ASSERT_TRUE(hoja().fusionar(2, 2, 3, 3)); // C3:D4
    editor.eliminarFilas(2, 2);
    EXPECT_EQ(entradas("A1:A4"), (std::vector<std::string>{"1", "2", "5", ""}));
    EXPECT_EQ(entrada("F1"), "=#¡REF!");
    EXPECT_EQ(entrada("F2"), "=A3");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"B2:B3"});
}

TEST_F(Estructura, LasFusionesSiguenASusFilas) {
    struct Caso {
        const char* fusion;
        int desde, delta;
        const char* esperada; ///< vacía si desaparece
    };
    const Caso casos[] = {
        {"B3:C5", 0, 2, "B5:C7"},
        {"B3:C5", 2, 1, "B4:C6"},
        {"B3:C5", 3, 1, "B3:C6"},
        {"B3:C5", 4, 10, "B3:C15"},
        {"B3:C5", 5, 3, "B3:C5"},
        {"B3:C5", 0, -2, "B1:C3"},
        {"B3:C5", 0, -3, "B1:C2"},
        {"B3:C5", 2, -1, "B3:C4"},
        {"B3:C5", 2, -2, "B3:C3"},
        {"B3:B5", 2, -2, ""},
        {"B3:B5", 3, -2, ""},
        {"B3:C5", 2, -3, ""},
        {"B3:C5", 1, -8, ""},
        {"B3:C5", 4, -1, "B3:C4"},
        {"B3:C5", 4, -20, "B3:C4"},
        {"B3:C5", 5, -1, "B3:C5"},
        {"B3:C5", 1, -2, "B2:C3"},
        {"B65530:C65534", 0, 2, "B65532:C65536"},
        {"B65530:C65534", 0, 4, "B65534:C65536"},
        {"B65530:B65534", 0, 6, ""},
        {"B65530:C65534", 0, 7, ""},
        {"B65530:C65534", 65532, 100, "B65530:C65536"},
    };
    for (const Caso& caso : casos) {
        const nucleo::RangoCeldas r = rangoDe(caso.fusion);
        nucleo::Hoja porFilas;
        ASSERT_TRUE(porFilas.fusionar(r.fila1, r.col1, r.fila2, r.col2));
        editor::desplazarCeldas(porFilas, true, caso.desde, caso.delta);
        hoja() = porFilas;
        EXPECT_EQ(fusiones(), *caso.esperada ? std::vector<std::string>{caso.esperada}
                                             : std::vector<std::string>{})
            << caso.fusion << " desde " << caso.desde << ", " << caso.delta;
    }
}

TEST_F(Estructura, PorColumnasOcurreLoMismoQuePorFilas) {
    poner("E1", "5");
    poner("D1", "4");
    poner("A3", "=E1+D1");
    ASSERT_TRUE(hoja().fusionar(2, 2, 3, 5)); // C3:F4
    ASSERT_TRUE(hoja().fusionar(0, 699, 0, 701));
    editor.redimensionarColumna(3, 104);
    editor.redimensionarColumna(4, 105);
    editor.insertarColumnas(4, 2);
    EXPECT_EQ(entradas("D1:G1"), (std::vector<std::string>{"4", "", "", "5"}));
    EXPECT_EQ(entrada("A3"), "=G1+D1");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"C3:H4"});
    EXPECT_EQ(hoja().anchos, (decltype(hoja().anchos){{3, 104}, {6, 105}}));
    editor.eliminarColumnas(3, 3);
    EXPECT_EQ(entradas("C1:E1"), (std::vector<std::string>{"", "5", ""}));
    EXPECT_EQ(entrada("A3"), "=D1+#¡REF!");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"C3:E4"});
    EXPECT_EQ(hoja().anchos, (decltype(hoja().anchos){{3, 105}}));
}

TEST_F(Estructura, EliminarDejaElCursorEnLaPrimeraPosicionEliminada) {
    seleccionar("B2:D9");
    editor.eliminarFilas(4, 3);
    EXPECT_EQ(seleccion(), "D5:D5");
    seleccionar("B2:D9");
    editor.eliminarColumnas(5, 1);
    EXPECT_EQ(seleccion(), "F9:F9");
    ASSERT_TRUE(hoja().fusionar(3, 3, 8, 8));
    seleccionar("A1:D4");
    editor.eliminarFilas(4, 1);
    EXPECT_EQ(seleccion(), "D4:I8");
}

TEST_F(Estructura, InsertarNoMueveLaSeleccion) {
    seleccionar("B2:D9");
    editor.insertarFilas(0, 3);
    editor.insertarColumnas(0, 3);
    EXPECT_EQ(seleccion(), "B2:D9");
}

TEST_F(Estructura, UnaCantidadMenorQueUnoNoCambiaNada) {
    poner("A1", "1");
    seleccionar("C3");
    const std::vector<nucleo::Hoja> antes = copiaDeHojas();
    for (const int cantidad : {0, -1, INT_MIN}) {
        editor.insertarFilas(0, cantidad);
        editor.eliminarFilas(0, cantidad);
        editor.insertarColumnas(0, cantidad);
        editor.eliminarColumnas(0, cantidad);
        EXPECT_EQ(diferencia(copiaDeHojas(), antes), "") << cantidad;
        EXPECT_EQ(editor.pasosDeshacer(), 0U) << cantidad;
        EXPECT_EQ(seleccion(), "C3:C3") << cantidad;
    }
}

TEST_F(Estructura, LoQueSalePorElFinalSePierde) {
    poner("A65536", "última");
    poner("A65535", "penúltima");
    poner("ZZ1", "derecha");
    editor.insertarFilas(10, 1);
    EXPECT_EQ(entrada("A65536"), "penúltima");
    editor.insertarColumnas(701, 1);
    EXPECT_EQ(celda("ZZ1"), nullptr);
    EXPECT_EQ(hoja().celdas.size(), 1U);
}

TEST_F(Estructura, NingunaPosicionNiCantidadSacaNadaDeLaCuadricula) {
    const int posiciones[] = {INT_MIN, -1, 0, 1, 700, 701, 702, 65535, 65536, 70000, INT_MAX};
    const int cantidades[] = {1, 3, 702, 65535, 65536, 65537, INT_MAX - 1, INT_MAX};
    for (const int posicion : posiciones) {
        for (const int cantidad : cantidades) {
            nucleo::Libro otro;
            motor_formulas::Motor suMotor(otro);
            editor::Editor suEditor(otro, suMotor);
            for (const char* ref : {"A1", "B2", "ZZ1", "A65536", "ZZ65536"}) {
                const Lugar lugar = lugarDe(ref);
                suMotor.establecerCelda(0, lugar.fila, lugar.col, "=C2+1");
            }
            otro.hojas[0]->fusionar(3, 0, 5, 3);
            otro.hojas[0]->fusionar(65530, 690, 65535, 701);
            suEditor.redimensionarColumna(701, 30);
            suEditor.redimensionarFila(65535, 30);
            const std::vector<nucleo::Hoja> antes = suEditor.capturar().hojas;
            const auto probar = [&](void (editor::Editor::*operacion)(int, int)) {
                (suEditor.*operacion)(posicion, cantidad);
                EXPECT_EQ(defectoDelLibro(otro), "") << posicion << ", " << cantidad;
                EXPECT_LE(otro.hojas[0]->ultimaFilaUsada(), 65535) << posicion << ", " << cantidad;
                EXPECT_LE(otro.hojas[0]->ultimaColUsada(), 701) << posicion << ", " << cantidad;
                EXPECT_LE(suEditor.seleccion().activaFila, 65535);
                EXPECT_LE(suEditor.seleccion().activaCol, 701);
                EXPECT_EQ(suEditor.pasosDeshacer(), 1U);
                suEditor.deshacer();
                EXPECT_EQ(diferencia(suEditor.capturar().hojas, antes), "")
                    << posicion << ", " << cantidad;
            };
            probar(&editor::Editor::insertarFilas);
            probar(&editor::Editor::eliminarFilas);
            probar(&editor::Editor::insertarColumnas);
            probar(&editor::Editor::eliminarColumnas);
        }
    }
}

TEST_F(Estructura, UnaPosicionFueraDeLaCuadriculaEsLaMasCercana) {
    poner("A1", "1");
    poner("A65536", "2");
    editor.insertarFilas(-3, 1);
    EXPECT_EQ(entradas("A1:A2"), (std::vector<std::string>{"", "1"}));
    EXPECT_EQ(celda("A65536"), nullptr);
    poner("A65536", "3");
    editor.eliminarFilas(70000, 2);
    EXPECT_EQ(celda("A65536"), nullptr);
    EXPECT_EQ(seleccion(), "A65536:A65536");
}

TEST_F(Estructura, LasFormulasDeOtrasHojasSiguenALasCeldas) {
    libro.agregarHoja();
    poner("A5", "7");
    poner("A1", "='Hoja 1'!A5+A5", 1);
    poner("A5", "100", 1);
    editor.insertarFilas(2, 1);
    EXPECT_EQ(entrada("A1", 1), "='Hoja 1'!A6+A5");
    EXPECT_EQ(visto("A1", 1), "107");
    editor.deshacer();
    EXPECT_EQ(entrada("A1", 1), "='Hoja 1'!A5+A5");
    EXPECT_EQ(visto("A1", 1), "107");
}

TEST_F(Estructura, LasFusionesYTamanosDeUnArchivoNoDesbordan) {
    exigencias.fusionesDelEditor = false;
    nucleo::Hoja& h = hoja();
    h.fusiones = {{INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                  {INT_MAX, 0, INT_MAX, 5},
                  {5, 5, 2, 2},
                  {-7, -7, -7, -7},
                  {2, 0, 2000000000, 3}};
    h.altos[INT_MAX] = 5;
    h.altos[INT_MIN] = 5;
    h.altos[65535] = -9;
    h.anchos[INT_MAX] = 0;
    h.anchos[701] = INT_MAX;
    for (const int cantidad : {1, 65536, INT_MAX}) {
        for (const int posicion : {0, 3, 65535, INT_MAX}) {
            const nucleo::Hoja intacta = h;
            editor.insertarFilas(posicion, cantidad);
            editor.insertarColumnas(posicion, cantidad);
            editor.eliminarFilas(posicion, cantidad);
            editor.eliminarColumnas(posicion, cantidad);
            for (int i = 0; i < 4; ++i)
                editor.deshacer();
            EXPECT_EQ(diferencia({h}, {intacta}), "") << posicion << ", " << cantidad;
        }
    }
}

TEST(Desplazamiento, LlevaCadaCoordenadaASuDestino) {
    struct Caso {
        bool filas;
        int desde, delta, coordenada;
        std::optional<int> destino;
    };
    const Caso casos[] = {
        {true, 3, 0, 5, 5},
        {true, 3, 2, 2, 2},
        {true, 3, 2, 3, 5},
        {true, 3, 2, 65533, 65535},
        {true, 3, 2, 65534, std::nullopt},
        {true, 3, -2, 2, 2},
        {true, 3, -2, 3, std::nullopt},
        {true, 3, -2, 4, std::nullopt},
        {true, 3, -2, 5, 3},
        {false, 3, 2, 699, 701},
        {false, 3, 2, 700, std::nullopt},
        {true, 0, -65536, 65535, std::nullopt},
        {true, 0, 65536, 0, std::nullopt},
        {true, 0, 65536, INT_MAX, std::nullopt},
        {true, 0, -65536, INT_MAX, std::nullopt},
        {true, 0, 65536, INT_MIN, INT_MIN},
    };
    for (const Caso& caso : casos) {
        const editor::Desplazamiento paso{caso.filas, caso.desde, caso.delta};
        EXPECT_EQ(paso.destino(caso.coordenada), caso.destino)
            << caso.desde << ", " << caso.delta << ": " << caso.coordenada;
    }
}

} // namespace pruebas
