#include "tests/editing/prueba_editor.h"

namespace pruebas {

class Historial : public PruebaEditor {};

TEST_F(Historial, VeinteEdicionesYVeinteVueltasDejanLaQuinta) {
    for (int i = 1; i <= 20; ++i)
        escribir("A1", std::to_string(i));
    EXPECT_EQ(editor.pasosDeshacer(), 15U);
    for (int i = 0; i < 20; ++i)
        editor.deshacer();
    EXPECT_EQ(entrada("A1"), "5");
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_EQ(editor.pasosRehacer(), 15U);
    for (int i = 0; i < 20; ++i)
        editor.rehacer();
    EXPECT_EQ(entrada("A1"), "20");
    EXPECT_EQ(editor.pasosDeshacer(), 15U);
    EXPECT_EQ(editor.pasosRehacer(), 0U);
}

TEST_F(Historial, EditarTrasDeshacerOlvidaLoQueSePodiaRehacer) {
    escribir("A1", "1");
    escribir("A1", "2");
    editor.deshacer();
    EXPECT_EQ(editor.pasosRehacer(), 1U);
    escribir("B1", "x");
    EXPECT_EQ(editor.pasosRehacer(), 0U);
    editor.rehacer();
    EXPECT_EQ(entrada("A1"), "1");
}

TEST_F(Historial, RehacerNoAplicaElLimite) {
    for (int i = 1; i <= 15; ++i)
        escribir("A1", std::to_string(i));
    editor.deshacer();
    editor.deshacer();
    EXPECT_EQ(editor.pasosDeshacer(), 13U);
    editor.rehacer();
    editor.rehacer();
    EXPECT_EQ(editor.pasosDeshacer(), 15U);
}

TEST_F(Historial, SinPasosNoHaceNada) {
    libro.modificado = false;
    editor.deshacer();
    editor.rehacer();
    EXPECT_FALSE(libro.modificado);
    EXPECT_EQ(editor.pasosDeshacer() + editor.pasosRehacer(), 0U);
}

TEST_F(Historial, DevuelveCeldasFormatosFusionesYValoresDeFilasEliminadas) {
    poner("A1", "3");
    hoja().celdaMut(0, 0).formato.negrita = true;
    poner("D9", "=A1*2+A2");
    poner("A2", "4");
    ASSERT_TRUE(hoja().fusionar(0, 1, 1, 2));
    const std::vector<nucleo::Hoja> antes = copiaDeHojas();
    editor.eliminarFilas(0, 2);
    EXPECT_EQ(visto("D7"), "#¡REF!");
    EXPECT_TRUE(hoja().fusiones.empty());
    editor.deshacer();
    EXPECT_EQ(diferencia(copiaDeHojas(), antes), "");
    EXPECT_EQ(visto("D9"), "10");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"B1:C2"});
    escribir("A1", "5");
    EXPECT_EQ(visto("D9"), "14");
}

TEST_F(Historial, DevuelveLaSeleccionYLaHojaActiva) {
    libro.agregarHoja();
    seleccionar("B2:C5");
    escribir("A1", "x");
    libro.hojaActiva = 1;
    editor.seleccionar(7, 7);
    editor.deshacer();
    EXPECT_EQ(libro.hojaActiva, 0);
    EXPECT_EQ(seleccion(), "B2:C5");
    editor.rehacer();
    EXPECT_EQ(libro.hojaActiva, 1);
    EXPECT_EQ(seleccion(), "H8:H8");
    EXPECT_EQ(entrada("A1"), "x");
}

TEST_F(Historial, DevuelveElNumeroElNombreYElOrdenDeLasHojas) {
    escribir("A1", "x");
    libro.agregarHoja();
    ASSERT_TRUE(libro.renombrarHoja(0, "Otra"));
    editor.deshacer();
    ASSERT_EQ(libro.hojas.size(), 1U);
    EXPECT_EQ(hoja().nombre, "Hoja 1");
    EXPECT_EQ(celda("A1"), nullptr);
    editor.rehacer();
    ASSERT_EQ(libro.hojas.size(), 2U);
    EXPECT_EQ(hoja(0).nombre, "Otra");
    EXPECT_EQ(hoja(1).nombre, "Hoja 2");
    EXPECT_EQ(entrada("A1"), "x");
}

TEST_F(Historial, RestaurarAcotaLaHojaActivaYMarcaElLibro) {
    libro.agregarHoja();
    editor::Editor::Estado estado = editor.capturar();
    estado.hojaActiva = -4;
    libro.modificado = false;
    editor.restaurar(estado);
    EXPECT_EQ(libro.hojaActiva, 0);
    EXPECT_TRUE(libro.modificado);
    estado.hojaActiva = 2;
    editor.restaurar(estado);
    EXPECT_EQ(libro.hojaActiva, 1);
}

TEST_F(Historial, RestaurarDevuelveTambienLosTamanosCapturados) {
    editor.redimensionarColumna(3, 120);
    const editor::Editor::Estado estado = editor.capturar();
    editor.redimensionarColumna(3, 200);
    editor.redimensionarFila(1, 50);
    hoja().filasInmovilizadas = 2;
    editor.restaurar(estado);
    EXPECT_EQ(diferencia(copiaDeHojas(), estado.hojas), "");
    EXPECT_EQ(editor.pasosDeshacer() + editor.pasosRehacer(), 0U);
}

TEST_F(Historial, RestaurarUnEstadoSinHojasDejaElLibroConUna) {
    editor.restaurar({});
    EXPECT_EQ(libro.hojas.size(), 1U);
    EXPECT_EQ(libro.hojaActiva, 0);
}

TEST_F(Historial, UnaHojaNulaNoSeToca) {
    libro.hojas.push_back(nullptr);
    libro.hojaActiva = 1;
    seleccionar("A1:B2");
    editor.borrarSeleccion();
    escribir("A1", "x");
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    editor.restaurar(editor.capturar());
    EXPECT_NE(libro.hojas[1], nullptr);
}

TEST_F(Historial, RestaurarNoDejaLaSeleccionFueraDeLaCuadricula) {
    editor::Editor::Estado estado = editor.capturar();
    estado.seleccion = {-1, 900, 2000000000, -2000000000};
    editor.restaurar(estado);
    EXPECT_EQ(seleccion(), "ZZ1:A65536");
}

TEST_F(Historial, RestaurarRehaceElGrafo) {
    poner("B1", "=A1");
    const editor::Editor::Estado estado = editor.capturar();
    poner("B1", "=C1");
    editor.restaurar(estado);
    poner("A1", "5");
    EXPECT_EQ(visto("B1"), "5");
    poner("C1", "9");
    EXPECT_EQ(visto("B1"), "5");
}

TEST_F(Historial, QuienMiraUnaHojaLaSigueViendoTrasDeshacer) {
    const nucleo::Hoja* mirada = libro.hojas[0].get();
    escribir("A1", "x");
    editor.deshacer();
    EXPECT_EQ(libro.hojas[0].get(), mirada);
}

TEST_F(Historial, UnaCopiaCapturadaNoCambiaAlSeguirEscribiendo) {
    poner("A1", "1");
    poner("A2", "=A1+1");
    const editor::Editor::Estado estado = editor.capturar();
    poner("A1", "50");
    poner("A3", "nueva");
    EXPECT_EQ(estado.hojas[0].celda(0, 0)->entrada, "1");
    EXPECT_EQ(estado.hojas[0].celda(1, 0)->valor, nucleo::Valor::deNumero(2));
    EXPECT_EQ(estado.hojas[0].celda(2, 0), nullptr);
}

TEST_F(Historial, OlvidarTodoDejaElEditorComoNuevo) {
    escribir("A1", "x");
    escribir("A2", "y");
    editor.deshacer();
    seleccionar("A1:B2");
    editor.copiar();
    editor.olvidarTodo();
    EXPECT_EQ(editor.pasosDeshacer() + editor.pasosRehacer(), 0U);
    EXPECT_FALSE(editor.hayCeldasCopiadas());
    EXPECT_EQ(seleccion(), "A1:A1");
    editor.pegar();
    editor.deshacer();
    EXPECT_EQ(entrada("A1"), "x");
}

/// Cada operación, y si registra un paso cuando se aplica a B2:C3 con contenido.
struct Operacion {
    const char* nombre;
    void (*hacer)(editor::Editor&);
    bool dejaPaso;
};

const Operacion kOperaciones[] = {
    {"escribir", [](editor::Editor& e) { e.establecerContenido(1, 1, "otra"); }, true},
    {"borrar", [](editor::Editor& e) { e.borrarSeleccion(); }, true},
    {"cortar", [](editor::Editor& e) { e.cortar(); }, true},
    {"copiar", [](editor::Editor& e) { e.copiar(); }, false},
    {"pegar sin haber copiado", [](editor::Editor& e) { e.pegar(); }, false},
    {"pegar texto", [](editor::Editor& e) { e.pegarTSV("x"); }, true},
    {"pegar texto vacío", [](editor::Editor& e) { e.pegarTSV(""); }, false},
    {"insertar filas", [](editor::Editor& e) { e.insertarFilas(1, 1); }, true},
    {"eliminar filas", [](editor::Editor& e) { e.eliminarFilas(1, 1); }, true},
    {"insertar columnas", [](editor::Editor& e) { e.insertarColumnas(1, 1); }, true},
    {"eliminar columnas", [](editor::Editor& e) { e.eliminarColumnas(1, 1); }, true},
    {"insertar cero filas", [](editor::Editor& e) { e.insertarFilas(1, 0); }, false},
    {"eliminar filas negativas", [](editor::Editor& e) { e.eliminarFilas(1, -1); }, false},
    {"insertar cero columnas", [](editor::Editor& e) { e.insertarColumnas(1, 0); }, false},
    {"eliminar cero columnas", [](editor::Editor& e) { e.eliminarColumnas(1, 0); }, false},
    {"ordenar", [](editor::Editor& e) { e.ordenarSeleccion(true); }, true},
    {"negrita", [](editor::Editor& e) { e.alternarNegrita(); }, true},
    {"cursiva", [](editor::Editor& e) { e.alternarCursiva(); }, true},
    {"subrayado", [](editor::Editor& e) { e.alternarSubrayado(); }, true},
    {"alinear", [](editor::Editor& e) { e.aplicarAlineacion(nucleo::AlineacionH::Centro); }, true},
    {"formato", [](editor::Editor& e) { e.aplicarFormato(nucleo::FormatoNumero::Moneda); }, true},
    {"decimales", [](editor::Editor& e) { e.cambiarDecimales(1); }, true},
    {"color de texto", [](editor::Editor& e) { e.aplicarColorTexto(0xff0000ffU); }, true},
    {"color de fondo", [](editor::Editor& e) { e.aplicarColorFondo(0xff00ff00U); }, true},
    {"fusionar", [](editor::Editor& e) { e.fusionarSeleccion(); }, true},
    {"separar donde no hay fusión", [](editor::Editor& e) { e.separarFusion(); }, false},
    {"ensanchar", [](editor::Editor& e) { e.redimensionarColumna(1, 200); }, false},
    {"alargar", [](editor::Editor& e) { e.redimensionarFila(1, 200); }, false},
    {"mover", [](editor::Editor& e) { e.moverActiva(1, 1, false); }, false},
};

TEST_F(Historial, CadaOperacionDejaUnPasoOSeLoCalla) {
    for (const Operacion& operacion : kOperaciones) {
        nucleo::Libro otro;
        motor_formulas::Motor suMotor(otro);
        editor::Editor suEditor(otro, suMotor);
        suMotor.establecerCelda(0, 1, 1, "1");
        suMotor.establecerCelda(0, 2, 2, "=B2");
        suEditor.seleccionar(1, 1);
        suEditor.extender(2, 2);
        const editor::Editor::Estado antes = suEditor.capturar();
        otro.modificado = false;
        operacion.hacer(suEditor);
        EXPECT_EQ(suEditor.pasosDeshacer(), operacion.dejaPaso ? 1U : 0U) << operacion.nombre;
        if (!operacion.dejaPaso)
            continue;
        EXPECT_TRUE(otro.modificado) << operacion.nombre;
        EXPECT_EQ(defectoDelLibro(otro), "") << operacion.nombre;
        const std::vector<nucleo::Hoja> despues = suEditor.capturar().hojas;
        suEditor.deshacer();
        EXPECT_EQ(diferencia(suEditor.capturar().hojas, antes.hojas), "") << operacion.nombre;
        EXPECT_EQ(suEditor.seleccion(), antes.seleccion) << operacion.nombre;
        suEditor.rehacer();
        EXPECT_EQ(diferencia(suEditor.capturar().hojas, despues), "") << operacion.nombre;
    }
}

TEST_F(Historial, SinHojaActivaNingunaOperacionHaceNada) {
    poner("B2", "1");
    seleccionar("B2:C3");
    editor.copiar();
    const std::vector<nucleo::Hoja> antes = copiaDeHojas();
    for (const int indice : {-1, 1, 2000000000}) {
        libro.hojaActiva = indice;
        for (const Operacion& operacion : kOperaciones) {
            operacion.hacer(editor);
            EXPECT_EQ(editor.pasosDeshacer(), 0U) << operacion.nombre;
        }
        editor.pegar();
        EXPECT_EQ(editor.copiarTSV(), "");
        EXPECT_EQ(diferencia(copiaDeHojas(), antes), "") << indice;
    }
    libro.hojaActiva = 0;
}

} // namespace pruebas
