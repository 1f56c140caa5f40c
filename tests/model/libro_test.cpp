#include "model/libro.h"

#include <climits>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace nucleo;

void esperarNuevo(const Libro& libro) {
    ASSERT_EQ(libro.hojas.size(), 1U);
    EXPECT_EQ(*libro.hojas[0], Hoja());
    EXPECT_EQ(libro.hojaActiva, 0);
    EXPECT_EQ(libro.ruta, "");
    EXPECT_FALSE(libro.modificado);
    EXPECT_TRUE(libro.dependientes.empty());
    EXPECT_TRUE(libro.precedentes.empty());
}

/// Un libro con hojas "A", "B", "C"… y sin cambios.
Libro conHojas(int cuantas) {
    Libro libro;
    while (static_cast<int>(libro.hojas.size()) < cuantas)
        libro.agregarHoja();
    for (int i = 0; i < cuantas; ++i)
        libro.hojas[static_cast<std::size_t>(i)]->nombre =
            std::string(1, static_cast<char>('A' + i));
    libro.modificado = false;
    return libro;
}

TEST(Libro, NaceConUnaHoja) {
    esperarNuevo(Libro());
}

TEST(Libro, ReiniciarLoDejaComoNuevo) {
    Libro libro = conHojas(3);
    libro.hojas[0]->celdaMut(1, 1).entrada = "x";
    libro.hojas[0]->fusionar(0, 0, 1, 1);
    libro.hojaActiva = 2;
    libro.ruta = "/algo.mrn";
    libro.modificado = true;
    libro.establecerPrecedentes(claveCelda(0, 0, 0), {claveCelda(0, 1, 1)});
    libro.reiniciar();
    esperarNuevo(libro);
    libro.hojas.clear();
    libro.reiniciar();
    esperarNuevo(libro);
}

TEST(Libro, LasHojasNuevasTomanElPrimerNumeroLibre) {
    Libro libro;
    EXPECT_EQ(libro.agregarHoja()->nombre, "Hoja 2");
    EXPECT_EQ(libro.agregarHoja()->nombre, "Hoja 3");
    EXPECT_TRUE(libro.modificado);
    EXPECT_EQ(libro.hojaActiva, 0);
    ASSERT_TRUE(libro.eliminarHoja(1));
    EXPECT_EQ(libro.agregarHoja()->nombre, "Hoja 4") << "Hoja 3 ya existe";
    ASSERT_TRUE(libro.renombrarHoja(1, "otra"));
    ASSERT_TRUE(libro.eliminarHoja(2));
    EXPECT_EQ(libro.agregarHoja()->nombre, "Hoja 3") << "Hoja 3 quedó libre";
}

TEST(Libro, IndicePorNombreExacto) {
    Libro libro = conHojas(3);
    libro.hojas[2]->nombre = "B";
    EXPECT_EQ(libro.indiceHoja("B"), 1) << "la primera";
    EXPECT_EQ(libro.indiceHoja("b"), -1);
    EXPECT_EQ(libro.indiceHoja(" B"), -1);
    EXPECT_EQ(libro.indiceHoja(""), -1);
}

TEST(Libro, NoSeEliminaLaUltimaHojaNiLaQueNoExiste) {
    Libro libro;
    EXPECT_FALSE(libro.eliminarHoja(0));
    esperarNuevo(libro);
    Libro dos = conHojas(2);
    for (const int indice : {-1, 2, INT_MAX, INT_MIN})
        EXPECT_FALSE(dos.eliminarHoja(indice)) << indice;
    EXPECT_EQ(dos.hojas.size(), 2U);
    EXPECT_FALSE(dos.modificado);
}

TEST(Libro, AlEliminarLaActivaSoloSeAcota) {
    struct {
        int activa;
        int eliminada;
        int queda;
    } const casos[] = {{2, 0, 1}, {1, 0, 1}, {0, 0, 0}, {0, 2, 0}, {2, 2, 1}, {1, 2, 1}};
    for (const auto& caso : casos) {
        Libro libro = conHojas(3);
        libro.hojaActiva = caso.activa;
        ASSERT_TRUE(libro.eliminarHoja(caso.eliminada));
        EXPECT_EQ(libro.hojaActiva, caso.queda)
            << "activa " << caso.activa << ", eliminada " << caso.eliminada;
        EXPECT_TRUE(libro.modificado);
        EXPECT_EQ(libro.hojas.size(), 2U);
    }
    Libro libro = conHojas(3);
    libro.eliminarHoja(1);
    EXPECT_EQ(libro.hojas[0]->nombre, "A");
    EXPECT_EQ(libro.hojas[1]->nombre, "C");
}

TEST(Libro, Renombrar) {
    Libro libro = conHojas(2);
    EXPECT_FALSE(libro.renombrarHoja(1, "A")) << "es de otra";
    EXPECT_FALSE(libro.renombrarHoja(1, ""));
    EXPECT_FALSE(libro.renombrarHoja(2, "X"));
    EXPECT_FALSE(libro.renombrarHoja(-1, "X"));
    EXPECT_FALSE(libro.modificado);
    EXPECT_TRUE(libro.renombrarHoja(1, "a")) << "las mayúsculas distinguen";
    EXPECT_EQ(libro.hojas[1]->nombre, "a");
    EXPECT_TRUE(libro.modificado);
    libro.modificado = false;
    EXPECT_TRUE(libro.renombrarHoja(1, "a")) << "el nombre que ya tiene";
    EXPECT_TRUE(libro.modificado);
}

TEST(Libro, ConNombresRepetidosMandaElPrimero) {
    Libro libro = conHojas(3);
    libro.hojas[1]->nombre = "A";
    EXPECT_FALSE(libro.renombrarHoja(1, "A")) << "el primero con ese nombre es otro";
    EXPECT_TRUE(libro.renombrarHoja(0, "A"));
}

TEST(Libro, SeMueveConSuGrafo) {
    const std::uint64_t formula = claveCelda(0, 0, 0);
    const std::uint64_t leida = claveCelda(0, 1, 0);
    Libro origen = conHojas(2);
    origen.establecerPrecedentes(formula, {leida});
    EXPECT_EQ(origen.precedentes.count(formula), 1U);

    Libro destino = std::move(origen);
    EXPECT_EQ(destino.hojas.size(), 2U);
    EXPECT_EQ(destino.precedentes.count(formula), 1U);
    EXPECT_EQ(destino.dependientes.at(leida).count(formula), 1U);
    esperarNuevo(origen); // NOLINT(bugprone-use-after-move): queda como un libro nuevo

    origen.establecerPrecedentes(leida, {formula});
    destino.intercambiar(origen);
    EXPECT_EQ(origen.precedentes.count(formula), 1U);
    EXPECT_EQ(destino.precedentes.count(leida), 1U);
    EXPECT_EQ(destino.dependientes.at(formula).size(), 1U);
    EXPECT_EQ(destino.hojas.size(), 1U);

    destino = std::move(origen);
    EXPECT_EQ(destino.hojas.size(), 2U);
    EXPECT_EQ(destino.precedentes.at(formula).size(), 1U);
}

} // namespace
