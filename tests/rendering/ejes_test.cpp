#include "model/hoja.h"
#include "model/limites.h"
#include "rendering/ejes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace {

using renderizador::Eje;
using renderizador::escalar;
using renderizador::MedidasEje;

TEST(Escalar, TruncaTrasSumarMedio) {
    struct Caso {
        int tamano;
        double zoom;
        int pixeles;
    };
    constexpr int kMaximo = std::numeric_limits<int>::max();
    for (const Caso& caso :
         std::vector<Caso>{{88, 1.0, 88},
                           {88, 1.5, 132},
                           {25, 1.5, 38},
                           {24, 0.5, 12},
                           {25, 0.5, 13},
                           {1, 0.5, 1},
                           {1, 0.49, 0},
                           {0, 2.0, 0},
                           {-50, 1.0, 0},
                           {std::numeric_limits<int>::min(), 2.0, 0},
                           {kMaximo, 1.0, kMaximo},
                           {kMaximo, 2.0, kMaximo},
                           {24, std::nan(""), 0},
                           {24, std::numeric_limits<double>::infinity(), kMaximo},
                           {0, std::numeric_limits<double>::infinity(), 0},
                           {24, -1.0, 0}}) {
        EXPECT_EQ(escalar(caso.tamano, caso.zoom), caso.pixeles)
            << caso.tamano << " × " << caso.zoom;
    }
}

/// Suma elemento a elemento: lo que las sumas con memoria tienen que dar.
class EjeIngenuo {
  public:
    explicit EjeIngenuo(const MedidasEje& medidas) : medidas_(medidas) {
        for (int i = 0; i < medidas.elementos; ++i) {
            posiciones_.push_back(posiciones_.back() + tamano(i));
        }
    }
    int tamano(int elemento) const {
        const auto propio = medidas_.tamanos.find(elemento);
        return escalar(propio == medidas_.tamanos.end() ? medidas_.predeterminado : propio->second,
                       medidas_.zoom);
    }
    std::int64_t posicion(int elemento) const {
        return posiciones_[static_cast<std::size_t>(elemento)];
    }
    int elementoEn(std::int64_t posicion) const {
        for (int i = 0; i < medidas_.elementos; ++i) {
            if (this->posicion(i + 1) > posicion) {
                return i;
            }
        }
        return medidas_.elementos;
    }

  private:
    MedidasEje medidas_;
    std::vector<std::int64_t> posiciones_{0};
};

void comparar(const MedidasEje& medidas, std::mt19937& azar) {
    const Eje eje(medidas);
    const EjeIngenuo ingenuo(medidas);
    for (int i = 0; i < medidas.elementos; ++i) {
        ASSERT_EQ(eje.tamano(i), ingenuo.tamano(i)) << i;
        ASSERT_EQ(eje.posicion(i), ingenuo.posicion(i)) << i;
    }
    const std::int64_t total = ingenuo.posicion(medidas.elementos);
    ASSERT_EQ(eje.posicion(medidas.elementos), total);
    ASSERT_EQ(eje.posicion(medidas.elementos + 5), total);
    ASSERT_EQ(eje.posicion(-5), 0);
    std::uniform_int_distribution<std::int64_t> pixel(-5, total + 50);
    for (int vez = 0; vez < 200; ++vez) {
        const std::int64_t donde = pixel(azar);
        ASSERT_EQ(eje.elementoEn(donde), ingenuo.elementoEn(donde)) << donde;
    }
    for (int i = 0; i < medidas.elementos; i += 7) {
        for (const std::int64_t donde : {ingenuo.posicion(i) - 1, ingenuo.posicion(i)}) {
            ASSERT_EQ(eje.elementoEn(donde), ingenuo.elementoEn(donde)) << donde;
        }
    }
}

TEST(Eje, ResponderComoSumarUnoAUno) {
    std::mt19937 azar(20261121);
    // Pocos tamaños propios se ordenan; muchos se reparten en una tabla: las dos formas.
    for (const int cuantos : {0, 1, 5, 40, 45, 300, 702}) {
        for (const double zoom : {0.5, 0.77, 1.0, 1.5, 2.0}) {
            nucleo::MapaTamanos tamanos;
            std::uniform_int_distribution<int> elemento(-20, nucleo::kColumnas + 20);
            std::uniform_int_distribution<int> tamano(-10, 600);
            for (int i = 0; i < cuantos; ++i) {
                tamanos[elemento(azar)] = tamano(azar);
            }
            SCOPED_TRACE(testing::Message() << cuantos << " propios, zoom " << zoom);
            comparar({tamanos, nucleo::kColumnas, nucleo::kAnchoPredeterminado, zoom}, azar);
        }
    }
}

TEST(Eje, TodoDeTamanoCeroNoContieneNada) {
    const nucleo::MapaTamanos tamanos;
    const Eje eje({tamanos, 100, 24, 0.001});
    EXPECT_EQ(eje.posicion(100), 0);
    EXPECT_EQ(eje.elementoEn(0), 100);
    EXPECT_EQ(eje.elementoEn(-1), 0);
}

TEST(EjeRecordado, SeRehaceAlCambiarLoQueMideAunqueElZoomNoSeaUnNumero) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    nucleo::MapaTamanos tamanos;
    renderizador::EjeRecordado recordado;
    for (const double zoom : {kNaN, 2.0, kNaN, kNaN, 1.0, 1.0}) {
        const Eje& eje = recordado.de({tamanos, 100, 24, zoom});
        EXPECT_EQ(eje.tamano(3), renderizador::escalar(24, zoom)) << zoom;
    }
    tamanos[3] = 50;
    EXPECT_EQ(recordado.de({tamanos, 100, 24, 1.0}).tamano(3), 50);
    EXPECT_EQ(recordado.de({tamanos, 2, 24, 1.0}).elementos(), 2);
}

TEST(Eje, TamanosEnormesNoDesbordan) {
    nucleo::MapaTamanos tamanos;
    for (int i = 0; i < nucleo::kFilas; ++i) {
        tamanos[i] = std::numeric_limits<int>::max();
    }
    const MedidasEje medidas{tamanos, nucleo::kFilas, nucleo::kAltoPredeterminado, 2.0};
    const Eje eje(medidas);
    const std::int64_t uno = std::numeric_limits<int>::max();
    EXPECT_EQ(eje.posicion(nucleo::kFilas), uno * nucleo::kFilas);
    EXPECT_EQ(eje.elementoEn(uno * 1000), 1000);
}

} // namespace
