// Operaciones al azar sobre varias copias que comparten bloques, contra un mapa por copia: ninguna
// copia ve lo que se escribe en otra.

#include "model/almacen_celdas.h"
#include "model/almacen_operaciones.h"
#include "tests/model/almacen_llano.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <utility>

namespace {

using namespace nucleo;
using prueba::AlmacenLlano;

/// Un árbol diminuto: los bordes de bloque, de tramo, de franja y de hoja están a un paso.
struct GeometriaMinima {
    static constexpr int kFilas = 8;
    static constexpr int kColumnas = 3;
    static constexpr int kBitsBloque = 1;
    static constexpr int kBitsNodo = 1;
};
struct GeometriaPequena {
    static constexpr int kFilas = 128;
    static constexpr int kColumnas = 13;
    static constexpr int kBitsBloque = 3;
    static constexpr int kBitsNodo = 2;
};

template <typename G> class Copias {
    using Almacen = AlmacenEnBloques<G>;
    using Llano = AlmacenLlano<G>;
    static constexpr int kCopias = 4;

  public:
    explicit Copias(std::uint32_t semilla) : azar_(semilla) {}

    void paso() {
        const int i = hasta(kCopias);
        Almacen& almacen = almacenes_[static_cast<std::size_t>(i)];
        Llano& llano = llanos_[static_cast<std::size_t>(i)];
        switch (hasta(20)) {
        case 0:
        case 1: {
            const int otra = hasta(kCopias);
            almacenes_[static_cast<std::size_t>(otra)] = almacen;
            llanos_[static_cast<std::size_t>(otra)] = llano;
            break;
        }
        case 2:
            desplazar(almacen, llano);
            break;
        case 3: {
            const RangoCeldas rango = unRango();
            almacen.quitarRango(rango);
            llano.quitarRango(rango);
            break;
        }
        case 4:
            almacen.completarLiterales();
            llano.completarLiterales();
            break;
        case 5:
        case 6: {
            const std::uint64_t clave = unaClave();
            EXPECT_EQ(almacen.erase(clave), llano.celdas.erase(clave));
            break;
        }
        case 7:
            anexar(almacen, llano);
            break;
        case 8: {
            const std::uint64_t clave = unaClave();
            const Celda celda = unaCelda();
            EXPECT_EQ(almacen.insert_or_assign(clave, celda).second,
                      llano.celdas.insert_or_assign(clave, celda).second);
            break;
        }
        case 9: {
            const std::uint64_t clave = unaClave();
            const Celda celda = unaCelda();
            EXPECT_EQ(almacen.try_emplace(clave, celda).second,
                      llano.celdas.try_emplace(clave, celda).second);
            break;
        }
        case 10:
            quitarRecorriendo(almacen, llano);
            break;
        case 11: {
            const std::uint64_t clave = unaClave();
            const Valor valor = unValor();
            almacen.ponerValor(filaDeClaveLocal(clave), columnaDeClaveLocal(clave), valor);
            if (const auto it = llano.celdas.find(clave); it != llano.celdas.end())
                it->second.valor = valor;
            break;
        }
        case 12:
            escribirTarde(almacen, llano);
            break;
        case 13:
            if (hasta(10) == 0) {
                almacen.clear();
                llano.celdas.clear();
            }
            break;
        default: {
            const std::uint64_t clave = unaClave();
            almacen[clave] = llano.celdas[clave] = unaCelda();
        }
        }
    }

    void comprobar() {
        for (int i = 0; i < kCopias; ++i) {
            const Almacen& almacen = almacenes_[static_cast<std::size_t>(i)];
            const Llano& llano = llanos_[static_cast<std::size_t>(i)];
            ASSERT_TRUE(almacen.comprobar());
            comprobarContenido(almacen, llano);
            comprobarPreguntas(almacen, llano);
            ASSERT_EQ(almacen == almacenes_[0], llano.celdas == llanos_[0].celdas);
        }
    }

  private:
    int hasta(int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar_); }

    std::uint64_t unaClave() {
        if (hasta(15) == 0) { // fuera de la cuadrícula, también con las dos mitades enormes
            static constexpr std::array<std::uint64_t, 6> raras{
                0xffffffffffffffffULL, 0x8000000000000000ULL,          0x7fffffff7fffffffULL,
                0x00000000ffffffffULL, std::uint64_t{G::kFilas} << 32, G::kColumnas};
            return raras[static_cast<std::size_t>(hasta(6))] - static_cast<unsigned>(hasta(2));
        }
        return claveLocal(hasta(G::kFilas), hasta(G::kColumnas));
    }

    RangoCeldas unRango() {
        const int fila = hasta(G::kFilas + 4) - 2;
        const int col = hasta(G::kColumnas + 4) - 2;
        return {fila, col, fila + hasta(G::kFilas),
                col + (hasta(2) == 0 ? 0 : hasta(G::kColumnas))};
    }

    Valor unValor() {
        switch (hasta(3)) {
        case 0:
            return Valor::deNumero(hasta(3));
        case 1:
            return Valor::deTexto(std::to_string(hasta(3)));
        default:
            return {};
        }
    }

    Celda unaCelda() {
        Celda celda;
        celda.tipo = static_cast<TipoCelda>(hasta(5)); // 4 no es ninguna: solo llega de archivos
        celda.entrada = hasta(4) == 0 ? std::string(40, 'x') : std::to_string(hasta(3));
        celda.numero = hasta(3);
        celda.formato.negrita = hasta(2) == 0;
        celda.valor = unValor();
        return celda;
    }

    void desplazar(Almacen& almacen, Llano& llano) {
        const bool filas = hasta(2) == 0;
        const int lineas = filas ? G::kFilas : G::kColumnas;
        const int desde = hasta(lineas + 1);
        const int delta = hasta(2 * lineas + 2) - lineas;
        if (filas)
            almacen.desplazarFilas(desde, delta);
        else
            almacen.desplazarColumnas(desde, delta);
        if (delta != 0)
            llano.desplazar(filas, desde, delta);
    }

    void anexar(Almacen& almacen, Llano& llano) {
        typename Almacen::Anexador anexador(almacen);
        std::uint64_t clave = unaClave();
        for (int n = hasta(30); n > 0; --n) {
            anexador.anexar(clave) = llano.celdas[clave] = unaCelda();
            clave = hasta(5) == 0 ? unaClave() : clave + (std::uint64_t{1} << 32);
        }
        anexador.terminar();
    }

    void quitarRecorriendo(Almacen& almacen, Llano& llano) {
        const auto sobra = [](std::uint64_t clave) { return (clave >> 32) % 7 == 3; };
        for (auto it = almacen.begin(); it != almacen.end();) {
            if (sobra(it->first))
                it = almacen.erase(it);
            else
                ++it;
        }
        std::erase_if(llano.celdas, [&](const auto& par) { return sobra(par.first); });
    }

    /// Escribe en la referencia después de que otro haya preguntado por el contenido.
    void escribirTarde(Almacen& almacen, Llano& llano) {
        const std::uint64_t clave = unaClave();
        Celda& celda = almacen[clave];
        EXPECT_EQ(almacen.ultimaFilaConContenido(), (llano.celdas[clave], llano.ultima(true)));
        static_cast<void>(almacen.resumir({0, 0, G::kFilas, G::kColumnas}));
        if (AlmacenLlano<G>::dentro(clave))
            celda = llano.celdas[clave] = unaCelda();
    }

    void comprobarContenido(const Almacen& almacen, const Llano& llano) {
        const std::vector<std::uint64_t> claves = llano.claves();
        ASSERT_EQ(almacen.size(), claves.size());
        std::size_t i = 0;
        almacen.recorrer([&](std::uint64_t clave, const Celda& celda) {
            ASSERT_EQ(clave, claves[i++]);
            ASSERT_EQ(celda, llano.celdas.at(clave));
        });
        ASSERT_EQ(i, claves.size());
        i = 0;
        for (const auto& [clave, celda] : almacen) {
            ASSERT_EQ(clave, claves[i++]);
            ASSERT_EQ(&celda, &almacen.at(clave));
        }
        ASSERT_EQ(i, claves.size());
        const std::uint64_t clave = unaClave();
        ASSERT_EQ(almacen.contains(clave), llano.celdas.contains(clave));
        ASSERT_EQ(almacen.find(clave) != almacen.end(), llano.celdas.contains(clave));
    }

    void comprobarPreguntas(const Almacen& almacen, const Llano& llano) {
        ASSERT_EQ(almacen.ultimaFilaConContenido(), llano.ultima(true));
        ASSERT_EQ(almacen.ultimaColConContenido(), llano.ultima(false));

        const RangoCeldas rango = unRango();
        const std::vector<std::uint64_t> claves = llano.porFilas(rango);
        ASSERT_EQ(almacen.contarEn(rango), claves.size());
        std::vector<std::uint64_t> vistas;
        const std::size_t tope = static_cast<std::size_t>(hasta(40) + 1);
        const bool entero = almacen.recorrerPorFilas(rango, [&](int fila, int col, const Celda& c) {
            vistas.push_back(claveLocal(fila, col));
            EXPECT_EQ(c, llano.celdas.at(vistas.back()));
            return vistas.size() < tope;
        });
        ASSERT_EQ(entero, claves.size() < tope);
        ASSERT_TRUE(std::equal(vistas.begin(), vistas.end(), claves.begin()));
        ASSERT_EQ(vistas.size(), std::min(tope, claves.size()));

        ResumenRango esperado;
        for (const std::uint64_t clave : claves) {
            const Celda& celda = llano.celdas.at(clave);
            esperado.conContenido += celda.tipo == TipoCelda::Vacia ? 0 : 1;
            NumerosVistos numeros;
            numeros.sumar(celda);
            esperado.numeros += static_cast<std::size_t>(numeros.cuenta);
            esperado.suma += numeros.suma;
        }
        const ResumenRango resumen = almacen.resumir(rango);
        ASSERT_EQ(resumen.conContenido, esperado.conContenido);
        ASSERT_EQ(resumen.numeros, esperado.numeros);
        ASSERT_EQ(resumen.suma, esperado.suma); // sumas de enteros pequeños: exactas

        std::vector<std::uint64_t> formulas;
        almacen.recorrerFormulas(
            [&](int fila, int col, const Celda&) { formulas.push_back(claveLocal(fila, col)); });
        std::vector<std::uint64_t> esperadas;
        for (const std::uint64_t clave : llano.claves()) {
            if (llano.celdas.at(clave).tipo == TipoCelda::Formula)
                esperadas.push_back(clave);
        }
        ASSERT_EQ(formulas, esperadas);
    }

    std::mt19937 azar_;
    std::array<Almacen, kCopias> almacenes_;
    std::array<Llano, kCopias> llanos_;
};

template <typename G> void probar(std::uint32_t semillas, int pasos) {
    for (std::uint32_t semilla = 1; semilla <= semillas; ++semilla) {
        Copias<G> copias(semilla);
        for (int paso = 0; paso < pasos; ++paso) {
            copias.paso();
            copias.comprobar();
            ASSERT_FALSE(::testing::Test::HasFailure())
                << "semilla " << semilla << ", paso " << paso;
        }
    }
}

TEST(AlmacenAlAzar, CuadriculaMinima) {
    probar<GeometriaMinima>(12, 700);
}

TEST(AlmacenAlAzar, CuadriculaPequena) {
    probar<GeometriaPequena>(6, 500);
}

TEST(AlmacenAlAzar, CuadriculaDeVerdad) {
    probar<GeometriaHoja>(3, 300);
}

} // namespace
