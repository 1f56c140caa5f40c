#include "editing/editor.h"
#include "formula/motor.h"
#include "model/libro.h"
#include "tests/editing/libro_llano.h"

#include <climits>
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>

// Un libro con lo que puede traer un archivo mal hecho, y operaciones con argumentos cualesquiera:
// nada se sale de la cuadrícula y deshacer lo devuelve todo como estaba.

namespace pruebas {

namespace {

class Hostil {
  public:
    explicit Hostil(unsigned semilla) : azar_(semilla) {
        libro_.agregarHoja();
        nucleo::Hoja& hoja = *libro_.hojas[0];
        for (const std::uint64_t clave :
             {nucleo::claveLocal(70000, 3), nucleo::claveLocal(3, 900), nucleo::claveLocal(-1, -1),
              nucleo::claveLocal(INT_MAX, 0), nucleo::claveLocal(65536, 702)}) {
            nucleo::Celda& celda = hoja.celdas[clave];
            celda.tipo = nucleo::TipoCelda::Texto;
            celda.entrada = "fuera";
        }
        nucleo::Celda& rara = hoja.celdaMut(2, 2);
        rara.tipo = static_cast<nucleo::TipoCelda>(77);
        rara.entrada = "rara";
        rara.formato.numero = static_cast<nucleo::FormatoNumero>(200);
        rara.formato.decimales = 255;
        rara.formato.alineacion = static_cast<nucleo::AlineacionH>(9);
        hoja.fusiones = {{INT_MIN, INT_MIN, INT_MAX, 0},
                         {4, 4, 6, 6},
                         {5, 5, 8, 8},
                         {9, 9, 3, 3},
                         {1, 1, 1, 1},
                         {65530, 690, 70000, 800},
                         {INT_MAX, INT_MAX, INT_MIN, 0},
                         {-5, 10, 2, 12}};
        hoja.altos = {{INT_MIN, 0}, {INT_MAX, -1}, {0, INT_MAX}, {65535, INT_MIN}, {-1, 5}};
        hoja.anchos = {{INT_MAX, 7}, {0, -3}, {701, INT_MAX}, {702, 1}};
        hoja.filasInmovilizadas = INT_MAX;
        hoja.columnasInmovilizadas = -7;
        motor_.recalcularTodo();
    }

    void paso() {
        seleccionar();
        const editor::Editor::Estado antes = editor_.capturar();
        const std::size_t pasos = editor_.pasosDeshacer();
        ultima_ = "operación " + std::to_string(operar());
        comprobarCotas();
        if (editor_.pasosDeshacer() <= pasos && pasos < 15)
            return;
        const editor::Editor::Estado despues = editor_.capturar();
        if (editor_.pasosRehacer() > 0)
            return;
        editor_.deshacer();
        if (pasos < 15) {
            EXPECT_EQ(diferencia(editor_.capturar().hojas, antes.hojas), "") << ultima_;
            EXPECT_EQ(editor_.seleccion(), antes.seleccion) << ultima_;
        }
        editor_.rehacer();
        EXPECT_EQ(diferencia(editor_.capturar().hojas, despues.hojas), "") << ultima_;
    }

    const std::string& ultima() const { return ultima_; }

  private:
    int hasta(int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar_); }

    int cualquiera() {
        constexpr int kExtremos[] = {INT_MIN, -65536,      -1,      65534, 65535, 65536,  700,  701,
                                     702,     INT_MAX - 1, INT_MAX, 70000, 65537, -32768, 32767};
        return hasta(2) == 0 ? hasta(14) - 2
                             : kExtremos[hasta(static_cast<int>(std::size(kExtremos)))];
    }

    void seleccionar() {
        editor_.seleccionar(cualquiera(), cualquiera());
        switch (hasta(8)) {
        case 0:
            editor_.seleccionarFila(cualquiera());
            break;
        case 1:
            editor_.seleccionarColumna(cualquiera());
            break;
        case 2:
            editor_.seleccionarTodo();
            break;
        case 3:
            editor_.extender(cualquiera(), cualquiera());
            break;
        case 4:
            editor_.moverActiva(cualquiera(), cualquiera(), hasta(2) == 0);
            break;
        default:
            editor_.seleccionar(hasta(14), hasta(14));
            editor_.extender(hasta(14), hasta(14));
        }
    }

    int operar() {
        const int operacion = hasta(22);
        const bool pequena = editor_.seleccion().rango().celdas() < 10000;
        switch (operacion) {
        case 0:
        case 1:
            editor_.establecerContenido(cualquiera(), cualquiera(),
                                        "=A1+" + std::to_string(hasta(9)));
            break;
        case 2:
            editor_.establecerContenido(hasta(14), hasta(14), std::to_string(hasta(99)));
            break;
        case 3:
            editor_.copiar();
            break;
        case 4:
            editor_.cortar();
            break;
        case 5:
        case 6:
            editor_.pegar();
            break;
        case 7:
            editor_.pegarTSV("1\t=B2\nx\t\n");
            break;
        case 8:
            editor_.borrarSeleccion();
            break;
        case 9:
            editor_.insertarFilas(cualquiera(), cualquiera());
            break;
        case 10:
            editor_.eliminarFilas(cualquiera(), hasta(4) == 0 ? cualquiera() : hasta(4));
            break;
        case 11:
            editor_.insertarColumnas(cualquiera(), cualquiera());
            break;
        case 12:
            editor_.eliminarColumnas(cualquiera(), hasta(4) == 0 ? cualquiera() : hasta(4));
            break;
        case 13:
            editor_.ordenarSeleccion(hasta(2) == 0);
            break;
        case 14:
            editor_.fusionarSeleccion();
            break;
        case 15:
            editor_.separarFusion();
            break;
        case 16:
            if (pequena)
                editor_.cambiarDecimales(cualquiera());
            break;
        case 17:
            if (pequena)
                editor_.aplicarFormato(static_cast<nucleo::FormatoNumero>(hasta(256)));
            break;
        case 18:
            editor_.redimensionarFila(cualquiera(), cualquiera());
            editor_.redimensionarColumna(cualquiera(), cualquiera());
            break;
        case 19: {
            const auto acciones = editor_.menuContextualCeldas();
            editor_.ejecutarAccionMenu(
                acciones[static_cast<std::size_t>(hasta(static_cast<int>(acciones.size())))].id);
            break;
        }
        case 20:
            if (pequena) {
                EXPECT_LT(editor_.copiarTSV().size(), 1000000U);
            }
            break;
        default:
            hasta(2) == 0 ? editor_.deshacer() : editor_.rehacer();
        }
        return operacion;
    }

    void comprobarCotas() {
        const editor::Seleccion& s = editor_.seleccion();
        const bool dentro = s.filaMin() >= 0 && s.filaMax() < nucleo::kFilas && s.colMin() >= 0 &&
                            s.colMax() < nucleo::kColumnas;
        EXPECT_TRUE(dentro) << ultima_;
        for (const auto& hoja : libro_.hojas)
            EXPECT_TRUE(hoja->celdas.comprobar()) << ultima_;
    }

    std::mt19937 azar_;
    nucleo::Libro libro_;
    motor_formulas::Motor motor_{libro_};
    editor::Editor editor_{libro_, motor_};
    std::string ultima_;
};

class LibroHostil : public testing::TestWithParam<unsigned> {};

TEST_P(LibroHostil, AguantaCualquierArgumento) {
    Hostil hostil(GetParam());
    for (int i = 0; i < 250; ++i) {
        hostil.paso();
        ASSERT_FALSE(HasFailure()) << "paso " << i << ": " << hostil.ultima();
    }
}

INSTANTIATE_TEST_SUITE_P(Semillas, LibroHostil, testing::Range(1U, 9U));

} // namespace

} // namespace pruebas
