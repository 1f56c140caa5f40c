#include "tests/editing/prueba_editor.h"

#include <climits>

#include <algorithm>

namespace pruebas {

class Seleccionar : public PruebaEditor {};

TEST_F(Seleccionar, AcotaFilasYColumnas) {
    struct Caso {
        int fila, col;
        std::string celda;
    };
    const Caso casos[] = {
        {-5, 900, "ZZ1"},
        {0, 0, "A1"},
        {65535, 701, "ZZ65536"},
        {65536, 702, "ZZ65536"},
        {INT_MAX, INT_MIN, "A65536"},
        {INT_MIN, INT_MAX, "ZZ1"},
    };
    for (const Caso& caso : casos) {
        editor.seleccionar(caso.fila, caso.col);
        EXPECT_EQ(seleccion(), caso.celda + ":" + caso.celda) << caso.fila << ", " << caso.col;
        editor.seleccionar(1, 1);
        editor.extender(caso.fila, caso.col);
        EXPECT_EQ(seleccion(), "B2:" + caso.celda) << caso.fila << ", " << caso.col;
    }
}

TEST_F(Seleccionar, UnaCeldaFusionadaSeleccionaSuRegionEntera) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    editor.seleccionar(2, 2);
    EXPECT_EQ(seleccion(), "B2:C3");
    editor.seleccionar(1, 2);
    EXPECT_EQ(seleccion(), "B2:C3");
    editor.seleccionar(3, 3);
    EXPECT_EQ(seleccion(), "D4:D4");
}

TEST_F(Seleccionar, ExtenderNoMiraLasFusiones) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    editor.seleccionar(0, 0);
    editor.extender(1, 1);
    EXPECT_EQ(seleccion(), "A1:B2");
}

TEST_F(Seleccionar, FilaColumnaYTodoEnUnaHojaVacia) {
    editor.seleccionarFila(3);
    EXPECT_EQ(seleccion(), "Z4:A4");
    editor.seleccionarColumna(2);
    EXPECT_EQ(seleccion(), "C100:C1");
    editor.seleccionarTodo();
    EXPECT_EQ(seleccion(), "A1:A1");
}

TEST_F(Seleccionar, FilaColumnaYTodoLleganHastaLoUsado) {
    poner("AC200", "1");
    editor.seleccionarFila(0);
    EXPECT_EQ(seleccion(), "AC1:A1");
    editor.seleccionarColumna(0);
    EXPECT_EQ(seleccion(), "A200:A1");
    editor.seleccionarTodo();
    EXPECT_EQ(seleccion(), "AC200:A1");
}

TEST_F(Seleccionar, FilaYColumnaAcotanSuArgumento) {
    editor.seleccionarFila(INT_MAX);
    EXPECT_EQ(seleccion(), "Z65536:A65536");
    editor.seleccionarFila(-1);
    EXPECT_EQ(seleccion(), "Z1:A1");
    editor.seleccionarColumna(702);
    EXPECT_EQ(seleccion(), "ZZ100:ZZ1");
    editor.seleccionarColumna(INT_MIN);
    EXPECT_EQ(seleccion(), "A100:A1");
}

TEST_F(Seleccionar, SinHojaActivaSiguenLosMinimos) {
    libro.hojaActiva = 7;
    editor.seleccionarFila(3);
    EXPECT_EQ(seleccion(), "Z4:A4");
    editor.seleccionarColumna(2);
    EXPECT_EQ(seleccion(), "C100:C1");
    editor.seleccionar(4, 4);
    EXPECT_EQ(seleccion(), "E5:E5");
    editor.seleccionarTodo();
    EXPECT_EQ(seleccion(), "A1:A1");
    editor.moverActiva(2, 3, false);
    EXPECT_EQ(seleccion(), "D3:D3");
    EXPECT_TRUE(editor.clavesEnSeleccion().empty());
    libro.hojaActiva = -1;
    editor.moverActiva(1, 0, true);
    EXPECT_EQ(seleccion(), "D3:D4");
    libro.hojaActiva = 0;
}

TEST_F(Seleccionar, UnaFusionDeUnArchivoNoSacaLaSeleccionDeLaCuadricula) {
    exigencias.fusionesDelEditor = false;
    hoja().fusiones.push_back({-10, -10, 2000000000, 2000000000});
    editor.seleccionar(5, 5);
    EXPECT_EQ(seleccion(), "A1:ZZ65536");
    editor.seleccionarFila(1);
    EXPECT_EQ(seleccion(), "ZZ2:A2");
    editor.seleccionarColumna(1);
    EXPECT_EQ(seleccion(), "B65536:B1");
    editor.seleccionarTodo();
    EXPECT_EQ(seleccion(), "ZZ65536:A1");
    editor.seleccionar(5, 5);
    editor.moverActiva(INT_MAX, INT_MAX, false);
    EXPECT_EQ(seleccion(), "A1:ZZ65536");
    escribir("F6", "x");
    EXPECT_EQ(entrada("A1"), "x");
}

TEST_F(Seleccionar, NormalizarSoloActuaSobreUnaCelda) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    seleccionar("A1:B2");
    editor.normalizarActiva();
    EXPECT_EQ(seleccion(), "A1:B2");
}

class MoverActiva : public PruebaEditor {};

TEST_F(MoverActiva, SaleDeUnaFusionEnLaDireccionDelMovimiento) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    struct Caso {
        int dFila, dCol;
        const char* esperada;
    };
    const Caso casos[] = {
        {1, 0, "C4:C4"}, {-1, 0, "C1:C1"},  {0, 1, "D3:D3"}, {0, -1, "A3:A3"}, {3, 0, "C6:C6"},
        {1, 1, "D4:D4"}, {-1, -1, "A1:A1"}, {0, 0, "B2:C3"}, {-9, 0, "C1:C1"},
    };
    for (const Caso& caso : casos) {
        editor.seleccionar(2, 2);
        editor.moverActiva(caso.dFila, caso.dCol, false);
        EXPECT_EQ(seleccion(), caso.esperada) << caso.dFila << ", " << caso.dCol;
    }
}

TEST_F(MoverActiva, AlLlegarAUnaFusionLaSeleccionaEntera) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    editor.seleccionar(0, 1);
    editor.moverActiva(1, 0, false);
    EXPECT_EQ(seleccion(), "B2:C3");
}

TEST_F(MoverActiva, ExtenderMueveSoloLaEsquinaActiva) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    editor.seleccionar(0, 1);
    editor.moverActiva(1, 0, true);
    EXPECT_EQ(seleccion(), "B1:B2");
    editor.seleccionar(3, 701);
    editor.moverActiva(0, 1, true);
    EXPECT_EQ(seleccion(), "ZZ4:ZZ4");
}

TEST_F(MoverActiva, LosPasosEnormesNoDesbordan) {
    struct Caso {
        int dFila, dCol;
        const char* esperada;
    };
    const Caso casos[] = {
        {INT_MAX, INT_MAX, "ZZ65536:ZZ65536"},
        {INT_MIN, INT_MIN, "A1:A1"},
        {INT_MAX, INT_MIN, "A65536:A65536"},
    };
    for (const Caso& caso : casos) {
        editor.seleccionar(100, 100);
        editor.moverActiva(caso.dFila, caso.dCol, false);
        EXPECT_EQ(seleccion(), caso.esperada) << caso.dFila << ", " << caso.dCol;
        editor.moverActiva(caso.dFila, caso.dCol, false);
        EXPECT_EQ(seleccion(), caso.esperada) << caso.dFila << ", " << caso.dCol;
    }
}

class Claves : public PruebaEditor {};

TEST_F(Claves, SonLasDeLasCeldasQueExistenDentro) {
    for (const char* ref : {"A1", "B2", "C3", "B4", "D2"})
        poner(ref, "x");
    hoja().celdaMut(2, 1); // existe aunque esté vacía
    seleccionar("C3:B2");
    std::vector<std::uint64_t> claves = editor.clavesEnSeleccion();
    std::sort(claves.begin(), claves.end());
    EXPECT_EQ(claves,
              (std::vector<std::uint64_t>{nucleo::claveLocal(1, 1), nucleo::claveLocal(2, 1),
                                          nucleo::claveLocal(2, 2)}));
}

TEST_F(Claves, UnaSeleccionVaciaNoTieneNinguna) {
    poner("A1", "x");
    seleccionar("B2:ZZ65536");
    EXPECT_TRUE(editor.clavesEnSeleccion().empty());
}

class Escribir : public PruebaEditor {};

TEST_F(Escribir, ElMismoTextoNoDejaPaso) {
    escribir("A1", "hola");
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    escribir("A1", "hola");
    escribir("B1", "");
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    EXPECT_EQ(celda("B1"), nullptr);
    escribir("A1", "");
    EXPECT_EQ(editor.pasosDeshacer(), 2U);
    EXPECT_EQ(celda("A1"), nullptr);
}

TEST_F(Escribir, UnaCeldaVaciaConFormatoYTextoVacioNoCambia) {
    hoja().celdaMut(0, 0).formato.negrita = true;
    escribir("A1", "");
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
}

TEST_F(Escribir, EnUnaFusionVaASuPrimeraCelda) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    escribir("C3", "x");
    EXPECT_EQ(entrada("B2"), "x");
    EXPECT_EQ(celda("C3"), nullptr);
    escribir("C2", "x");
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
}

TEST_F(Escribir, AcotaYMarcaElLibroComoModificado) {
    libro.modificado = false;
    editor.establecerContenido(INT_MAX, -3, "7");
    EXPECT_EQ(entrada("A65536"), "7");
    EXPECT_TRUE(libro.modificado);
}

TEST_F(Escribir, BorrarElTextoMarcaElLibroComoModificado) {
    poner("A1", "7");
    libro.modificado = false;
    escribir("A1", "");
    EXPECT_TRUE(libro.modificado);
}

TEST_F(Escribir, RecalculaAQuienLeeLaCelda) {
    escribir("B1", "=A1*2");
    escribir("A1", "21");
    EXPECT_EQ(visto("B1"), "42");
}

TEST_F(Escribir, SinHojaActivaNoHaceNada) {
    libro.hojaActiva = 1;
    escribir("A1", "x");
    editor.redimensionarColumna(0, 100);
    editor.redimensionarFila(0, 100);
    libro.hojaActiva = 0;
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_TRUE(hoja().celdas.empty());
    EXPECT_TRUE(hoja().anchos.empty());
    EXPECT_TRUE(hoja().altos.empty());
}

} // namespace pruebas
