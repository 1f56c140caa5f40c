#include "formula/functions/catalogo.h"
#include "formula/functions/reloj.h"
#include "tests/formula/hoja_de_prueba.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// El manual se lee tal como está publicado: lo que dice de cada función es lo que
// dice la tabla del código, y cada ejemplo muestra lo que dice que muestra.

using motor_formulas::Funcion;
using motor_formulas::funciones;
using pruebas::HojaDePrueba;

namespace {

std::vector<std::string> lineasDeLaAyuda() {
    std::vector<std::string> lineas;
    for (const char* pagina : {"/manual/formulas.md", "/manual/funciones.md"}) {
        std::ifstream archivo(std::string(MARNEL_DOCS) + pagina);
        for (std::string linea; std::getline(archivo, linea);)
            lineas.push_back(linea);
    }
    return lineas;
}

std::string unidas(const std::vector<std::string>& lineas) {
    std::string texto;
    for (const std::string& linea : lineas)
        texto += linea + "\n";
    return texto;
}

/// El comienzo del apartado de una función.
std::string apartado(const Funcion& funcion) {
    std::ostringstream texto;
    texto << "### " << funcion.nombre << "\n\n"
          << "`" << funcion.nombre << "(" << funcion.argumentos << ")`\n\n"
          << funcion.descripcion << "\n\n"
          << "`" << funcion.ejemplo << "` → `" << funcion.resultado << "`\n";
    return texto.str();
}

struct Ejemplo {
    std::string formula;
    std::string muestra;
};

/// Los pares «`=fórmula` → `lo que muestra`».
std::vector<Ejemplo> ejemplosDeLaAyuda(const std::string& texto) {
    std::vector<std::string> trozos; // los impares están entre acentos graves
    std::istringstream lector(texto);
    for (std::string trozo; std::getline(lector, trozo, '`');)
        trozos.push_back(trozo);
    std::vector<Ejemplo> ejemplos;
    for (std::size_t i = 1; i + 2 < trozos.size(); i += 2) {
        if (trozos[i].starts_with('=') && trozos[i + 1] == " → ")
            ejemplos.push_back({trozos[i], trozos[i + 2]});
    }
    return ejemplos;
}

/// Copia en la hoja la tabla de ejemplo: las líneas que empiezan por «| **fila** |». Devuelve
/// cuántas hay.
int copiarTablaDeEjemplo(const std::vector<std::string>& lineas, HojaDePrueba& hoja) {
    int filas = 0;
    for (const std::string& linea : lineas) {
        const std::string comienzo = "| **" + std::to_string(filas + 1) + "** |";
        if (linea.starts_with(comienzo))
            hoja.escribirFila(filas++, std::string_view(linea).substr(comienzo.size()));
    }
    return filas;
}

motor_formulas::HoraLocal tardeDeAnoNuevo() {
    return {1, 1, 2025, 18, 0, 0};
}

class Ayuda : public testing::Test {
  protected:
    Ayuda() : anterior_(motor_formulas::cambiarReloj(tardeDeAnoNuevo)) {}
    ~Ayuda() override { motor_formulas::cambiarReloj(anterior_); }

  private:
    motor_formulas::Reloj anterior_;
};

} // namespace

TEST_F(Ayuda, TieneElApartadoDeCadaFuncionComoEnLaTabla) {
    const std::string texto = unidas(lineasDeLaAyuda());
    for (const Funcion& funcion : funciones()) {
        EXPECT_NE(texto.find(apartado(funcion)), std::string::npos)
            << "pase herramientas/hacer-funciones: docs/manual/funciones.md debe tener:\n"
            << apartado(funcion);
    }
}

TEST_F(Ayuda, NoTieneApartadosDeMas) {
    std::size_t apartados = 0;
    for (const std::string& linea : lineasDeLaAyuda())
        apartados += linea.starts_with("### ") ? 1 : 0;
    EXPECT_EQ(apartados, funciones().size());
}

TEST_F(Ayuda, CadaEjemploMuestraLoQueDice) {
    const std::vector<std::string> lineas = lineasDeLaAyuda();
    HojaDePrueba hoja;
    ASSERT_EQ(copiarTablaDeEjemplo(lineas, hoja), 6);
    const std::vector<Ejemplo> ejemplos = ejemplosDeLaAyuda(unidas(lineas));
    EXPECT_GT(ejemplos.size(), 100U);
    for (const Ejemplo& ejemplo : ejemplos)
        EXPECT_EQ(hoja.texto(ejemplo.formula), ejemplo.muestra) << ejemplo.formula;
}
