#include "tests/editing/prueba_editor.h"

#include <climits>

namespace pruebas {

using nucleo::AlineacionH;
using nucleo::Celda;
using nucleo::Formato;
using nucleo::FormatoNumero;

class Estilo : public PruebaEditor {};

TEST_F(Estilo, ElNuevoValorLoDecideLaCeldaActiva) {
    struct Caso {
        void (editor::Editor::*alternar)();
        bool Formato::*estilo;
    };
    const Caso casos[] = {
        {&editor::Editor::alternarNegrita, &Formato::negrita},
        {&editor::Editor::alternarCursiva, &Formato::cursiva},
        {&editor::Editor::alternarSubrayado, &Formato::subrayado},
    };
    for (const Caso& caso : casos) {
        hoja() = nucleo::Hoja();
        const auto tiene = [&](const char* ref) { return celda(ref)->formato.*caso.estilo; };
        hoja().celdaMut(0, 1).formato.*caso.estilo = true; // B1
        seleccionar("A1:B2");                              // la activa, B2, no existe
        (editor.*caso.alternar)();
        EXPECT_TRUE(tiene("A1") && tiene("B1") && tiene("A2") && tiene("B2"));
        hoja().celdaMut(0, 0).formato.*caso.estilo = false;
        seleccionar("A1:B2");
        (editor.*caso.alternar)();
        EXPECT_FALSE(tiene("A1") || tiene("B1") || tiene("A2") || tiene("B2"));
        (editor.*caso.alternar)();
        EXPECT_TRUE(tiene("A1") && tiene("B1") && tiene("A2") && tiene("B2"));
    }
}

TEST_F(Estilo, CreaUnaCeldaEnCadaPosicionYNoTocaContenidos) {
    poner("B2", "=1+1");
    const Celda antes = *celda("B2");
    seleccionar("C3:A1");
    libro.modificado = false;
    editor.aplicarColorFondo(0xff112233U);
    EXPECT_TRUE(libro.modificado);
    EXPECT_EQ(hoja().celdas.size(), 9U);
    EXPECT_EQ(celda("B2")->entrada, antes.entrada);
    EXPECT_EQ(celda("B2")->valor, antes.valor);
    EXPECT_EQ(celda("B2")->tipo, antes.tipo);
    for (const auto& [clave, c] : hoja().celdas)
        EXPECT_EQ(c.formato.colorFondo, 0xff112233U);
    EXPECT_EQ(hoja().ultimaFilaUsada(), 1);
}

TEST_F(Estilo, RecorrePorFilasCadaPosicionUnaVez) {
    seleccionar("A1:C2");
    std::uint32_t orden = 0;
    editor.aplicarEstiloSeleccion([&](Celda& c) { c.formato.colorTexto = ++orden; });
    EXPECT_EQ(celda("A1")->formato.colorTexto, 1U);
    EXPECT_EQ(celda("C1")->formato.colorTexto, 3U);
    EXPECT_EQ(celda("A2")->formato.colorTexto, 4U);
    EXPECT_EQ(orden, 6U);
}

TEST_F(Estilo, DarFormatoALaCuadriculaEnteraNoAgotaLaMemoria) {
    poner("C3", "x");
    editor.seleccionar(0, 0);
    editor.extender(65535, 701);
    editor.alternarNegrita();
    editor.aplicarColorFondo(7);
    EXPECT_EQ(hoja().celdas.size(), std::size_t{65536} * 702);
    EXPECT_EQ(entrada("C3"), "x");
    EXPECT_TRUE(celda("ZZ65536")->formato.negrita);
    EXPECT_EQ(celda("C3")->formato.colorFondo, 7U);
    editor.deshacer();
    editor.deshacer();
    EXPECT_EQ(hoja().celdas.size(), 1U);
}

TEST_F(Estilo, LosDecimalesPartenDeGeneralYSeAcotan) {
    seleccionar("A1");
    editor.cambiarDecimales(1);
    EXPECT_EQ(celda("A1")->formato.numero, FormatoNumero::Numero);
    EXPECT_EQ(celda("A1")->formato.decimales, 3);
    struct Caso {
        int antes, delta, despues;
    };
    const Caso casos[] = {
        {0, -1, 0},        {1, -1, 0},      {9, 1, 10},    {10, 1, 10},
        {2, INT_MAX, 10},  {2, INT_MIN, 0}, {255, -1, 10}, {255, INT_MAX, 10},
        {255, INT_MIN, 0}, {200, -195, 5},  {3, 0, 3},
    };
    for (const Caso& caso : casos) {
        hoja().celdaMut(0, 0).formato.decimales = static_cast<std::uint8_t>(caso.antes);
        editor.cambiarDecimales(caso.delta);
        EXPECT_EQ(celda("A1")->formato.decimales, caso.despues)
            << caso.antes << " + " << caso.delta;
    }
}

TEST_F(Estilo, CambiarDecimalesConservaUnFormatoQueNoEsGeneral) {
    seleccionar("A1");
    editor.aplicarFormato(FormatoNumero::Porcentaje);
    editor.cambiarDecimales(-1);
    EXPECT_EQ(celda("A1")->formato.numero, FormatoNumero::Porcentaje);
    EXPECT_EQ(celda("A1")->formato.decimales, 1);
}

TEST_F(Estilo, LaMonedaPonePuntoDeMilesYOtroFormatoNoLoQuita) {
    seleccionar("A1:A2");
    editor.aplicarFormato(FormatoNumero::Numero);
    EXPECT_FALSE(celda("A2")->formato.separadorMiles);
    editor.aplicarFormato(FormatoNumero::Moneda);
    EXPECT_EQ(celda("A2")->formato.numero, FormatoNumero::Moneda);
    EXPECT_TRUE(celda("A2")->formato.separadorMiles);
    editor.aplicarFormato(FormatoNumero::Fecha);
    EXPECT_EQ(celda("A2")->formato.numero, FormatoNumero::Fecha);
    EXPECT_TRUE(celda("A2")->formato.separadorMiles);
}

TEST_F(Estilo, AlineacionYColoresSeGuardanTalCual) {
    seleccionar("A1");
    editor.aplicarAlineacion(AlineacionH::Derecha);
    editor.aplicarColorTexto(0x12345678U);
    editor.aplicarColorFondo(0xffffffffU);
    Formato esperado;
    esperado.alineacion = AlineacionH::Derecha;
    esperado.colorTexto = 0x12345678U;
    esperado.colorFondo = 0xffffffffU;
    EXPECT_EQ(celda("A1")->formato, esperado);
    editor.aplicarColorTexto(0);
    EXPECT_EQ(celda("A1")->formato.colorTexto, 0U);
}

TEST_F(Estilo, NoRecalcula) {
    exigencias.valoresAlDia = false;
    poner("A1", "=1+1");
    hoja().celdaMut(0, 0).valor = nucleo::Valor::deNumero(99);
    seleccionar("A1:B2");
    editor.alternarNegrita();
    EXPECT_EQ(visto("A1"), "99");
}

class Fusiones : public PruebaEditor {};

TEST_F(Fusiones, SoloQuedaElContenidoDeLaEsquina) {
    poner("A1", "queda");
    poner("B2", "5");
    hoja().celdaMut(0, 1).formato.negrita = true;
    poner("D1", "=B2+1");
    libro.modificado = false;
    seleccionar("B2:A1");
    EXPECT_TRUE(editor.fusionarSeleccion());
    EXPECT_EQ(entradas("A1:B2"), (std::vector<std::string>{"queda", "", "", ""}));
    EXPECT_EQ(celda("B2"), nullptr);
    EXPECT_EQ(celda("B1"), nullptr);
    EXPECT_EQ(visto("D1"), "1");
    EXPECT_EQ(fusiones(), std::vector<std::string>{"A1:B2"});
    EXPECT_TRUE(libro.modificado);
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    EXPECT_EQ(seleccion(), "B2:A1");
    editor.deshacer();
    EXPECT_EQ(visto("D1"), "6");
    EXPECT_TRUE(celda("B1")->formato.negrita);
}

TEST_F(Fusiones, UnaFormulaDeLaEsquinaQueLeiaLoFusionadoSeRecalcula) {
    poner("A1", "=SUMA(A2:A3)");
    ponerColumna("A2", {"4", "5"});
    seleccionar("A1:A3");
    ASSERT_TRUE(editor.fusionarSeleccion());
    EXPECT_EQ(visto("A1"), "0");
}

TEST_F(Fusiones, UnaSolaCeldaSeRechazaSinPaso) {
    escribir("A1", "x");
    editor.deshacer();
    seleccionar("A1");
    EXPECT_FALSE(editor.fusionarSeleccion());
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    EXPECT_EQ(editor.pasosRehacer(), 1U);
}

TEST_F(Fusiones, UnRechazoDejaElHistorialComoEstabaTambienLleno) {
    for (const int ediciones : {0, 1, 14, 15, 20}) {
        nucleo::Libro otro;
        motor_formulas::Motor suMotor(otro);
        editor::Editor suEditor(otro, suMotor);
        otro.hojas[0]->fusionar(1, 1, 2, 2);
        for (int i = 0; i < ediciones; ++i)
            suEditor.establecerContenido(0, 0, std::to_string(i));
        suMotor.establecerCelda(0, 3, 3, "=A1");
        suEditor.seleccionar(0, 0);
        suEditor.extender(1, 1);
        const editor::Editor::Estado antes = suEditor.capturar();
        const std::size_t pasos = suEditor.pasosDeshacer();
        EXPECT_FALSE(suEditor.fusionarSeleccion());
        EXPECT_EQ(suEditor.pasosDeshacer(), pasos);
        EXPECT_EQ(diferencia(suEditor.capturar().hojas, antes.hojas), "");
        EXPECT_EQ(suEditor.seleccion(), antes.seleccion);
        for (std::size_t i = 0; i < pasos; ++i)
            suEditor.deshacer();
        const nucleo::Celda* a1 = otro.hojas[0]->celda(0, 0);
        EXPECT_EQ(a1 ? a1->entrada : "", ediciones > 15 ? std::to_string(ediciones - 16) : "")
            << ediciones;
    }
}

TEST_F(Fusiones, UnRechazoVaciaLoQueSePodiaRehacer) {
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    escribir("A1", "1");
    escribir("A1", "2");
    editor.deshacer();
    seleccionar("A1:B2");
    EXPECT_FALSE(editor.fusionarSeleccion());
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    EXPECT_EQ(editor.pasosRehacer(), 0U);
    EXPECT_EQ(entrada("A1"), "1");
}

TEST_F(Fusiones, SepararConservaElContenido) {
    poner("B2", "x");
    ASSERT_TRUE(hoja().fusionar(1, 1, 2, 2));
    seleccionar("A1");
    EXPECT_FALSE(editor.separarFusion());
    EXPECT_EQ(editor.pasosDeshacer(), 0U);
    seleccionar("C3");
    libro.modificado = false;
    EXPECT_TRUE(editor.separarFusion());
    EXPECT_TRUE(libro.modificado);
    EXPECT_TRUE(fusiones().empty());
    EXPECT_EQ(entrada("B2"), "x");
    EXPECT_EQ(editor.pasosDeshacer(), 1U);
    editor.deshacer();
    EXPECT_EQ(fusiones(), std::vector<std::string>{"B2:C3"});
}

TEST_F(Fusiones, DeTodaLaCuadriculaCuestaLoQueHayEnElla) {
    poner("C3", "x");
    poner("A1", "queda");
    editor.seleccionar(0, 0);
    editor.extender(65535, 701);
    EXPECT_TRUE(editor.fusionarSeleccion());
    EXPECT_EQ(hoja().celdas.size(), 1U);
    EXPECT_EQ(fusiones(), std::vector<std::string>{"A1:ZZ65536"});
}

} // namespace pruebas
