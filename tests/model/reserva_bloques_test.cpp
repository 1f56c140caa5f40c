#include "model/reserva_bloques.h"
#include "tests/comun/memoria.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <random>
#include <vector>

namespace {

using nucleo::ReservaBloques;

constexpr std::size_t kHueco = 8256;
constexpr std::size_t kPorTrozo = (ReservaBloques::kTrozo - 64) / kHueco;

/// Tantos huecos seguidos.
std::vector<void*> pedir(ReservaBloques& reserva, std::size_t cuantos) {
    std::vector<void*> huecos;
    for (std::size_t i = 0; i < cuantos; ++i)
        huecos.push_back(reserva.pedir());
    return huecos;
}

void soltar(ReservaBloques& reserva, const std::vector<void*>& huecos) {
    for (void* const hueco : huecos)
        reserva.soltar(hueco);
}

TEST(ReservaBloques, DaHuecosAlineadosQueNoSeTocan) {
    ReservaBloques reserva(kHueco);
    std::vector<void*> huecos = pedir(reserva, 3 * kPorTrozo + 1);
    EXPECT_EQ(reserva.trozos(), 4U);
    std::vector<std::uintptr_t> sitios;
    for (void* const hueco : huecos) {
        std::memset(hueco, 0xa5, kHueco);
        sitios.push_back(reinterpret_cast<std::uintptr_t>(hueco));
        EXPECT_EQ(sitios.back() % ReservaBloques::kAlineacion, 0U);
    }
    std::sort(sitios.begin(), sitios.end());
    for (std::size_t i = 1; i < sitios.size(); ++i)
        ASSERT_GE(sitios[i] - sitios[i - 1], kHueco);
    soltar(reserva, huecos);
}

TEST(ReservaBloques, VuelveADarLoQueSeLeDevuelve) {
    ReservaBloques reserva(kHueco);
    for (int vuelta = 0; vuelta < 5; ++vuelta) {
        const std::vector<void*> huecos = pedir(reserva, 2 * kPorTrozo);
        EXPECT_EQ(reserva.trozos(), 2U) << vuelta;
        soltar(reserva, huecos);
    }
}

TEST(ReservaBloques, UnTrozoLlenoVuelveATenerSitioAlSoltarUno) {
    ReservaBloques reserva(kHueco);
    std::vector<void*> huecos = pedir(reserva, kPorTrozo);
    reserva.soltar(huecos.back());
    huecos.back() = reserva.pedir();
    EXPECT_EQ(reserva.trozos(), 1U);
    soltar(reserva, huecos);
}

TEST(ReservaBloques, DevuelveAlSistemaLosTrozosVaciosQueNoGuarda) {
    ReservaBloques reserva(kHueco);
    const std::vector<void*> huecos =
        pedir(reserva, kPorTrozo * (ReservaBloques::kVaciosGuardados + 3));
    EXPECT_EQ(reserva.trozos(), ReservaBloques::kVaciosGuardados + 3);
    EXPECT_EQ(reserva.ocupados(), huecos.size() * kHueco);
    soltar(reserva, huecos);
    EXPECT_EQ(reserva.ocupados(), 0U);
    EXPECT_EQ(reserva.trozos(), ReservaBloques::kVaciosGuardados);
}

TEST(ReservaBloques, GuardaVaciosHastaLaMitadDeLosQueTienenBloques) {
    constexpr std::size_t kTrozosUsados = 8 * ReservaBloques::kVaciosGuardados;
    ReservaBloques reserva(kHueco);
    const std::vector<void*> quedan = pedir(reserva, kPorTrozo * kTrozosUsados);
    const std::vector<void*> otros = pedir(reserva, kPorTrozo * kTrozosUsados);
    EXPECT_EQ(reserva.trozos(), 2 * kTrozosUsados);
    soltar(reserva, otros);
    EXPECT_EQ(reserva.trozos(), kTrozosUsados + kTrozosUsados / 2);
    soltar(reserva, quedan);
    EXPECT_EQ(reserva.trozos(), ReservaBloques::kVaciosGuardados);
}

TEST(ReservaBloques, LlenaLosEmpezadosAntesQueLosVacios) {
    ReservaBloques reserva(kHueco);
    std::vector<void*> primero = pedir(reserva, kPorTrozo);
    std::vector<void*> segundo = pedir(reserva, kPorTrozo);
    const auto trozoDe = [](void* hueco) {
        return reinterpret_cast<std::uintptr_t>(hueco) / ReservaBloques::kTrozo;
    };
    const std::uintptr_t empezado = trozoDe(primero.front());
    reserva.soltar(primero.back());
    soltar(reserva, segundo);
    primero.back() = reserva.pedir();
    EXPECT_EQ(trozoDe(primero.back()), empezado);
    EXPECT_EQ(reserva.trozos(), 2U);
    soltar(reserva, primero);
}

TEST(ReservaBloques, SiElSistemaNoDaMasLoDiceYSigueSirviendo) {
    ReservaBloques reserva(kHueco);
    std::vector<void*> huecos = pedir(reserva, kPorTrozo);
    {
        const prueba::FaltaDeMemoria falta(1, prueba::FaltaDeMemoria::Cual::DesdeEntonces);
        EXPECT_THROW(reserva.pedir(), std::bad_alloc);
        EXPECT_TRUE(falta.ocurrio());
        reserva.soltar(huecos.back());
        huecos.back() = reserva.pedir();
    }
    EXPECT_EQ(reserva.trozos(), 1U);
    huecos.push_back(reserva.pedir());
    EXPECT_EQ(reserva.trozos(), 2U);
    soltar(reserva, huecos);
}

TEST(ReservaBloques, AlAzarNingunHuecoPierdeLoQueSeEscribioEnEl) {
    ReservaBloques reserva(kHueco);
    std::mt19937 azar(20);
    std::vector<std::uint32_t*> huecos;
    std::vector<std::uint32_t> marcas;
    for (std::uint32_t paso = 0; paso < 20000; ++paso) {
        const bool pide = huecos.empty() || azar() % 100 < (paso / 4000 % 2 == 0 ? 60U : 40U);
        if (pide) {
            huecos.push_back(static_cast<std::uint32_t*>(reserva.pedir()));
            *huecos.back() = paso;
            marcas.push_back(paso);
            continue;
        }
        const std::size_t cual = azar() % huecos.size();
        ASSERT_EQ(*huecos[cual], marcas[cual]);
        reserva.soltar(huecos[cual]);
        huecos[cual] = huecos.back();
        marcas[cual] = marcas.back();
        huecos.pop_back();
        marcas.pop_back();
    }
    for (std::size_t i = 0; i < huecos.size(); ++i) {
        EXPECT_EQ(*huecos[i], marcas[i]);
        reserva.soltar(huecos[i]);
    }
}

} // namespace
