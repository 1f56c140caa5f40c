#include "tests/editing/prueba_editor.h"

#include <map>

namespace pruebas {

class Menu : public PruebaEditor {
  protected:
    /// Las entradas, una por línea: separador, marca de habilitada, identificador y etiqueta.
    std::string menu() const {
        std::string texto;
        for (const editor::AccionMenu& accion : editor.menuContextualCeldas()) {
            texto += accion.separadorAntes ? "---\n" : "";
            texto += (accion.habilitada ? "+" : "-") + accion.id + ": " + accion.etiqueta + "\n";
        }
        return texto;
    }
};

TEST_F(Menu, DeUnaSolaCelda) {
    seleccionar("B2");
    EXPECT_EQ(menu(), "+cortar: Cortar\n"
                      "+copiar: Copiar\n"
                      "+pegar: Pegar\n"
                      "---\n"
                      "+borrar: Borrar contenido\n"
                      "---\n"
                      "-fusionar: Fusionar celdas\n"
                      "-separar: Separar celdas\n"
                      "---\n"
                      "+insertar_fila_arriba: Insertar fila arriba\n"
                      "+insertar_fila_abajo: Insertar fila abajo\n"
                      "+insertar_col_izq: Insertar columna a la izquierda\n"
                      "+insertar_col_der: Insertar columna a la derecha\n"
                      "---\n"
                      "+eliminar_filas: Eliminar fila\n"
                      "+eliminar_cols: Eliminar columna\n"
                      "---\n"
                      "-ordenar_asc: Ordenar ascendente\n"
                      "-ordenar_desc: Ordenar descendente\n");
}

TEST_F(Menu, DeVariasCeldas) {
    seleccionar("C4:B2");
    EXPECT_EQ(menu(), "+cortar: Cortar\n"
                      "+copiar: Copiar\n"
                      "+pegar: Pegar\n"
                      "---\n"
                      "+borrar: Borrar contenido\n"
                      "---\n"
                      "+fusionar: Fusionar celdas\n"
                      "-separar: Separar celdas\n"
                      "---\n"
                      "+insertar_fila_arriba: Insertar 3 filas arriba\n"
                      "+insertar_fila_abajo: Insertar 3 filas abajo\n"
                      "+insertar_col_izq: Insertar 2 columnas a la izquierda\n"
                      "+insertar_col_der: Insertar 2 columnas a la derecha\n"
                      "---\n"
                      "+eliminar_filas: Eliminar 3 filas\n"
                      "+eliminar_cols: Eliminar 2 columnas\n"
                      "---\n"
                      "+ordenar_asc: Ordenar ascendente\n"
                      "+ordenar_desc: Ordenar descendente\n");
}

TEST_F(Menu, FusionarYSepararSegunLaCeldaActiva) {
    const auto habilitadas = [&] {
        std::string texto;
        for (const editor::AccionMenu& accion : editor.menuContextualCeldas()) {
            if (accion.id == "fusionar" || accion.id == "separar")
                texto += accion.habilitada ? "1" : "0";
        }
        return texto;
    };
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    seleccionar("B2");
    EXPECT_EQ(habilitadas(), "01");
    seleccionar("A1:B2");
    EXPECT_EQ(habilitadas(), "01");
    seleccionar("A1:B5");
    EXPECT_EQ(habilitadas(), "10");
    libro.hojaActiva = 9;
    seleccionar("B2");
    EXPECT_EQ(habilitadas(), "00");
    libro.hojaActiva = 0;
}

TEST_F(Menu, InsertarDejaLaSeleccionDondeEstaba) {
    struct Caso {
        const char* id;
        std::map<std::string, std::string> esperadas;
    };
    const Caso casos[] = {
        {"insertar_fila_arriba", {{"A1", "a1"}, {"B4", "b2"}, {"C5", "c3"}, {"D6", "d4"}}},
        {"insertar_fila_abajo", {{"A1", "a1"}, {"B2", "b2"}, {"C3", "c3"}, {"D6", "d4"}}},
        {"insertar_col_izq", {{"A1", "a1"}, {"D2", "b2"}, {"E3", "c3"}, {"F4", "d4"}}},
        {"insertar_col_der", {{"A1", "a1"}, {"B2", "b2"}, {"C3", "c3"}, {"F4", "d4"}}},
    };
    for (const Caso& caso : casos) {
        hoja() = nucleo::Hoja();
        motor.recalcularTodo();
        for (const char* ref : {"a1", "b2", "c3", "d4"})
            poner(ref, ref);
        poner("A9", "=D4");
        const std::size_t pasos = editor.pasosDeshacer();
        seleccionar("C3:B2");
        EXPECT_TRUE(editor.ejecutarAccionMenu(caso.id)) << caso.id;
        EXPECT_EQ(seleccion(), "C3:B2") << caso.id;
        for (const auto& [ref, texto] : caso.esperadas)
            EXPECT_EQ(entrada(ref), texto) << caso.id << " " << ref;
        EXPECT_EQ(hoja().celdas.size(), 5U) << caso.id;
        EXPECT_EQ(entrada(caso.id[9] == 'f' ? "A11" : "A9"), "=" + caso.esperadas.rbegin()->first)
            << caso.id;
        EXPECT_EQ(editor.pasosDeshacer(), std::min<std::size_t>(pasos + 1, 15)) << caso.id;
    }
}

TEST_F(Menu, LasDemasAccionesHacenLoQueDicen) {
    ponerColumna("B2", {"2", "1"});
    seleccionar("B2:B3");
    EXPECT_TRUE(editor.ejecutarAccionMenu("ordenar_asc"));
    EXPECT_EQ(entradas("B2:B3"), (std::vector<std::string>{"1", "2"}));
    EXPECT_TRUE(editor.ejecutarAccionMenu("ordenar_desc"));
    EXPECT_EQ(entradas("B2:B3"), (std::vector<std::string>{"2", "1"}));
    EXPECT_TRUE(editor.ejecutarAccionMenu("fusionar"));
    EXPECT_EQ(fusiones(), std::vector<std::string>{"B2:B3"});
    EXPECT_TRUE(editor.ejecutarAccionMenu("separar"));
    EXPECT_TRUE(fusiones().empty());
    EXPECT_TRUE(editor.ejecutarAccionMenu("borrar"));
    EXPECT_EQ(celda("B2"), nullptr);
    ponerColumna("A1", {"1", "2", "3", "4"});
    poner("D4", "d");
    seleccionar("B2:C3");
    EXPECT_TRUE(editor.ejecutarAccionMenu("eliminar_filas"));
    EXPECT_EQ(entradas("A1:A3"), (std::vector<std::string>{"1", "4", ""}));
    EXPECT_EQ(seleccion(), "C2:C2");
    seleccionar("B2:C3");
    EXPECT_TRUE(editor.ejecutarAccionMenu("eliminar_cols"));
    EXPECT_EQ(entrada("B2"), "d");
    EXPECT_EQ(seleccion(), "B3:B3");
}

TEST_F(Menu, LosIdentificadoresDesconocidosSonFalsos) {
    poner("A1", "x");
    seleccionar("A1:B2");
    for (const char* id : {"", "copiar", "cortar", "pegar", "Borrar", "borrar ", "insertar_fila"})
        EXPECT_FALSE(editor.ejecutarAccionMenu(id)) << id;
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
}

TEST_F(Menu, SinHojaActivaSeReconocenYNoHacenNada) {
    poner("A1", "x");
    seleccionar("A1:B2");
    const std::vector<nucleo::Hoja> antes = copiaDeHojas();
    libro.hojaActiva = 1;
    for (const editor::AccionMenu& accion : editor.menuContextualCeldas()) {
        const bool esDeLaVista =
            accion.id == "cortar" || accion.id == "copiar" || accion.id == "pegar";
        EXPECT_EQ(editor.ejecutarAccionMenu(accion.id), !esDeLaVista) << accion.id;
    }
    EXPECT_FALSE(editor.ejecutarAccionMenu("otra"));
    libro.hojaActiva = 0;
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_EQ(diferencia(copiaDeHojas(), antes), "");
}

TEST_F(Menu, SepararFueraDeUnaFusionNoDejaRastro) {
    libro.modificado = false;
    seleccionar("A1");
    EXPECT_TRUE(editor.ejecutarAccionMenu("separar"));
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_FALSE(libro.modificado);
}

TEST_F(Menu, InsertarDetrasDeLaUltimaFilaNoPierdeNada) {
    poner("A65536", "última");
    poner("ZZ1", "derecha");
    editor.seleccionar(65535, 701);
    EXPECT_TRUE(editor.ejecutarAccionMenu("insertar_fila_abajo"));
    EXPECT_TRUE(editor.ejecutarAccionMenu("insertar_col_der"));
    EXPECT_EQ(entrada("A65536"), "última");
    EXPECT_EQ(entrada("ZZ1"), "derecha");
    EXPECT_EQ(editor.pasosDeshacer(), 2U);
    EXPECT_TRUE(editor.ejecutarAccionMenu("insertar_fila_arriba"));
    EXPECT_EQ(celda("A65536"), nullptr);
}

} // namespace pruebas
