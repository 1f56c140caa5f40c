#include "model/direcciones.h"
#include "tests/editing/prueba_editor.h"

#include <random>

// Las operaciones grandes son un solo lote para el motor. Si evaluaran sus lectores una vez por
// celda, las de abajo leerían cientos de miles de millones de celdas y no acabarían.

namespace pruebas {

class Lotes : public PruebaEditor {
  protected:
    static constexpr int kSumas = 100;

    void ponerSumas() {
        const motor_formulas::Motor::Lote lote(motor);
        for (int i = 0; i < kSumas; ++i)
            motor.establecerCelda(0, i, 1, "=SUMA(A1:A65536)+" + std::to_string(i));
    }
    void esperarSumas(double total) {
        for (const int i : {0, kSumas / 2, kSumas - 1})
            EXPECT_EQ(hoja().celda(i, 1)->valor, nucleo::Valor::deNumero(total + i));
    }
    static std::string columnaDeUnos() {
        std::string texto;
        for (int i = 0; i < nucleo::kFilas; ++i)
            texto += "1\n";
        return texto;
    }

    void SetUp() override {
        exigencias.grafo = false; // son millones de parejas de celda y lector
        ponerSumas();
        editor.seleccionar(0, 0);
        editor.pegarTSV(columnaDeUnos());
    }
};

TEST_F(Lotes, PegarTextoBajoMuchasSumas) {
    esperarSumas(65536);
}

TEST_F(Lotes, BorrarBajoMuchasSumas) {
    editor.extender(nucleo::kUltimaFila, 0);
    editor.borrarSeleccion();
    esperarSumas(0);
    editor.deshacer();
    esperarSumas(65536);
}

TEST_F(Lotes, CortarYPegarBajoMuchasSumas) {
    editor.extender(nucleo::kUltimaFila, 0);
    editor.cortar();
    esperarSumas(0);
    editor.seleccionar(1, 0);
    editor.pegar();
    esperarSumas(65535);
}

TEST_F(Lotes, FusionarBajoMuchasSumas) {
    editor.extender(nucleo::kUltimaFila, 0);
    EXPECT_TRUE(editor.fusionarSeleccion());
    esperarSumas(1);
}

TEST_F(Lotes, OrdenarYDarEstiloBajoMuchasSumas) {
    escribir("A65536", "0,5");
    editor.seleccionar(0, 0);
    editor.extender(nucleo::kUltimaFila, 0);
    editor.ordenarSeleccion(true);
    EXPECT_EQ(entrada("A1"), "0,5");
    esperarSumas(65535.5);
    editor.alternarNegrita();
    esperarSumas(65535.5);
}

class LotesPequenos : public PruebaEditor {};

/// Lo que queda tras pegar es lo que quedaría escribiendo las celdas de una en una, en su orden.
TEST_F(LotesPequenos, PegarEsEscribirDeUnaEnUna) {
    std::mt19937 azar(7);
    const auto hasta = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar); };
    for (int vuelta = 0; vuelta < 40; ++vuelta) {
        nucleo::Libro unaAUna;
        motor_formulas::Motor suMotor(unaAUna);
        hoja() = nucleo::Hoja();
        motor.recalcularTodo();
        editor.olvidarTodo();
        std::string texto;
        for (int fila = 0; fila < 12; ++fila) {
            for (int col = 0; col < 5; ++col) {
                // Cada fórmula lee solo filas de más arriba: sin ciclos no importa el orden.
                const auto arriba = [&] { return nucleo::nombreRef(hasta(fila), hasta(5)); };
                std::string campo;
                switch (fila == 0 ? 0 : hasta(5)) {
                case 0:
                    campo = std::to_string(hasta(50));
                    break;
                case 1:
                    campo = "=" + arriba() + "+" + arriba();
                    break;
                case 2:
                    campo = "=SUMA(" + arriba() + ":" + arriba() + ")";
                    break;
                case 3:
                    campo = "texto";
                    break;
                default:
                    break;
                }
                if (hasta(3) == 0) {
                    const std::string previa = hasta(2) == 0 ? "9" : "previa";
                    motor.establecerCelda(0, fila, col, previa);
                    suMotor.establecerCelda(0, fila, col, previa);
                }
                texto += campo;
                texto += col < 4 ? "\t" : "\n";
            }
        }
        std::size_t inicio = 0;
        for (int i = 0; i < 60; ++i) {
            const std::size_t fin = texto.find_first_of("\t\n", inicio);
            suMotor.establecerCelda(0, i / 5, i % 5, texto.substr(inicio, fin - inicio));
            inicio = fin + 1;
        }
        editor.pegarTSV(texto);
        EXPECT_EQ(diferencia({hoja()}, {*unaAUna.hojas[0]}), "") << texto;
    }
}

} // namespace pruebas
