#include "model/celda.h"
#include "model/formato.h"
#include "model/valor.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace nucleo;

TEST(Valor, NaceVacio) {
    const Valor valor;
    EXPECT_EQ(valor.tipo, TipoValor::Vacio);
    EXPECT_EQ(valor.numero, 0);
    EXPECT_EQ(valor.texto, "");
    EXPECT_FALSE(valor.logico);
    EXPECT_EQ(valor.error, ErrorCelda::Ninguno);
}

TEST(Valor, CadaFabricaPoneSuTipo) {
    EXPECT_EQ(Valor::deNumero(2.5).tipo, TipoValor::Numero);
    EXPECT_EQ(Valor::deNumero(2.5).numero, 2.5);
    EXPECT_EQ(Valor::deTexto("hola").tipo, TipoValor::Texto);
    EXPECT_EQ(Valor::deTexto("hola").texto, "hola");
    EXPECT_EQ(Valor::deLogico(true).tipo, TipoValor::Logico);
    EXPECT_TRUE(Valor::deLogico(true).logico);
    EXPECT_EQ(Valor::deError(ErrorCelda::Ref).tipo, TipoValor::Error);
    EXPECT_EQ(Valor::deError(ErrorCelda::Ref).error, ErrorCelda::Ref);
}

TEST(Valor, TextosDeLosErrores) {
    const std::vector<std::string> textos{"",       "#¡CIRCULAR!", "#¡DIV/0!",
                                          "#¡REF!", "#¡VALOR!",    "#¡NOMBRE?"};
    for (int codigo = 0; codigo < 256; ++codigo) {
        const auto indice = static_cast<std::size_t>(codigo);
        EXPECT_EQ(textoError(static_cast<ErrorCelda>(codigo)),
                  indice < textos.size() ? textos[indice] : "")
            << "código " << codigo;
    }
}

TEST(Formato, NaceConDosDecimalesYNadaMas) {
    const Formato formato;
    EXPECT_EQ(formato.numero, FormatoNumero::General);
    EXPECT_EQ(formato.decimales, 2);
    EXPECT_EQ(formato.alineacion, AlineacionH::General);
    EXPECT_EQ(formato.colorTexto, 0U);
    EXPECT_EQ(formato.colorFondo, 0U);
    EXPECT_FALSE(formato.separadorMiles || formato.negrita || formato.cursiva ||
                 formato.subrayado || formato.estiloExtra);
    EXPECT_TRUE(formato.esPredeterminado());
}

TEST(Formato, CualquierCampoDistintoDejaDeSerPredeterminado) {
    const std::vector<std::function<void(Formato&)>> cambios{
        [](Formato& f) { f.numero = FormatoNumero::Fecha; },
        [](Formato& f) { f.decimales = 3; },
        [](Formato& f) { f.decimales = 0; },
        [](Formato& f) { f.separadorMiles = true; },
        [](Formato& f) { f.negrita = true; },
        [](Formato& f) { f.cursiva = true; },
        [](Formato& f) { f.subrayado = true; },
        [](Formato& f) { f.colorTexto = 1; },
        [](Formato& f) { f.colorFondo = 1; },
        [](Formato& f) { f.alineacion = AlineacionH::Izquierda; },
        [](Formato& f) { f.estiloExtra = true; },
    };
    for (std::size_t i = 0; i < cambios.size(); ++i) {
        Formato formato;
        cambios[i](formato);
        EXPECT_FALSE(formato.esPredeterminado()) << "cambio " << i;
        EXPECT_NE(formato, Formato{}) << "cambio " << i;
    }
}

TEST(Celda, NaceVacia) {
    const Celda celda;
    EXPECT_EQ(celda.tipo, TipoCelda::Vacia);
    EXPECT_EQ(celda.entrada, "");
    EXPECT_EQ(celda.numero, 0);
    EXPECT_EQ(celda.valor, Valor{});
    EXPECT_TRUE(celda.formato.esPredeterminado());
}

TEST(Claves, LaLocalLlevaLaFilaEnLosBitsAltos) {
    EXPECT_EQ(claveLocal(0, 0), 0U);
    EXPECT_EQ(claveLocal(1, 0), 0x100000000ULL);
    EXPECT_EQ(claveLocal(65535, 701), 0x0000ffff000002bdULL);
    EXPECT_EQ(claveLocal(-1, -1), 0xffffffffffffffffULL);
    EXPECT_EQ(filaDeClaveLocal(claveLocal(65535, 701)), 65535);
    EXPECT_EQ(columnaDeClaveLocal(claveLocal(65535, 701)), 701);
    EXPECT_EQ(filaDeClaveLocal(claveLocal(-5, 3)), -5);
    EXPECT_EQ(columnaDeClaveLocal(claveLocal(3, -5)), -5);
}

TEST(Claves, LaDelGrafoReparteLosBitsEntreHojaFilaYColumna) {
    EXPECT_EQ(claveCelda(1, 0, 0), 0x0001000000000000ULL);
    EXPECT_EQ(claveCelda(0, 1, 0), 0x10000ULL);
    EXPECT_EQ(claveCelda(0, 0, 0xffff), 0xffffULL);
    EXPECT_EQ(claveCelda(0, 0, 0x10000), 0U) << "la columna se queda en 16 bits";
    EXPECT_EQ(claveCelda(0x10001, 0, 0), claveCelda(1, 0, 0)) << "la hoja se queda en 16 bits";
    EXPECT_EQ(claveCelda(0xffff, 0xffffff, 0xffff), 0xffff00ffffffffffULL)
        << "los bits 40..47 son cero";
}

TEST(Claves, UnaFilaMayorQueLaCuadriculaCabeHasta24Bits) {
    const std::uint64_t clave = claveCelda(1, 70000, 3);
    EXPECT_EQ(hojaDeClave(clave), 1);
    EXPECT_EQ(filaDeClave(clave), 70000);
    EXPECT_EQ(columnaDeClave(clave), 3);
    EXPECT_EQ(filaDeClave(claveCelda(0, 16777215, 0)), 16777215);
    EXPECT_EQ(filaDeClave(claveCelda(0, 16777216, 0)), 0);
    EXPECT_EQ(filaDeClave(claveCelda(0, 16777217, 0)), 1);
}

TEST(Claves, ElMismoSitioEnDosHojasSeDistingueEnLaDelGrafo) {
    EXPECT_NE(claveCelda(0, 7, 9), claveCelda(1, 7, 9));
}

} // namespace
