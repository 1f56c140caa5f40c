#include "formula/indice_exacto.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using motor_formulas::Criterio;
using nucleo::Valor;

TEST(IndiceExacto, SoloRespondePorIgualdadesSinComodines) {
    const struct {
        Valor valor;
        bool esIgualdad;
    } casos[] = {
        {Valor::deNumero(3), true},      {Valor::deTexto("3"), true},
        {Valor::deTexto("=3"), true},    {Valor::deTexto("pera"), true},
        {Valor::deTexto("=pera"), true}, {Valor::deTexto("p*"), false},
        {Valor::deTexto("per?"), false}, {Valor::deTexto(""), false},
        {Valor::deTexto(">3"), false},   {Valor::deTexto("<>pera"), false},
        {Valor::deTexto("<=3"), false},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(motor_formulas::esIgualdad(Criterio::desdeValor(caso.valor)), caso.esIgualdad)
            << caso.valor.texto;
}

} // namespace
