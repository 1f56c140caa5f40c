#pragma once

#include "editing/accion_menu.h"
#include "editing/desplazamiento.h"
#include "editing/seleccion.h"
#include "formula/motor.h"
#include "model/celda.h"
#include "model/formato.h"
#include "model/hoja.h"
#include "model/libro.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace editor {

/// Fachada por la que pasa todo cambio que hace una persona: selección, escritura, historial,
/// portapapeles, estructura, orden y estilo. Las filas y columnas fuera de la cuadrícula se acotan.
class Editor {
  public:
    /// Una copia del libro para el historial. Las hojas comparten los bloques que no cambian.
    struct Estado {
        std::vector<nucleo::Hoja> hojas;
        std::int32_t hojaActiva = 0;
        Seleccion seleccion;
    };

    /// El libro y el motor viven más que el editor.
    Editor(nucleo::Libro& libro, motor_formulas::Motor& motor);

    // Selección
    const Seleccion& seleccion() const { return seleccion_; }
    void seleccionar(int fila, int col);
    void extender(int fila, int col);
    void seleccionarFila(int fila);
    void seleccionarColumna(int col);
    void seleccionarTodo();
    void normalizarActiva();
    void moverActiva(int dFila, int dCol, bool extender);
    /// Claves locales de las celdas que existen dentro de la selección.
    std::vector<std::uint64_t> clavesEnSeleccion() const;

    // Contenido y tamaños
    void establecerContenido(int fila, int col, const std::string& texto);
    void redimensionarColumna(int col, int ancho);
    void redimensionarFila(int fila, int alto);

    // Historial
    Estado capturar() const;
    void restaurar(const Estado& estado);
    void registrarHistorial();
    void deshacer();
    void rehacer();
    std::size_t pasosDeshacer() const { return historialDeshacer_.size(); }
    std::size_t pasosRehacer() const { return historialRehacer_.size(); }
    /// Olvida historial, celdas copiadas y selección: el libro es otro documento.
    void olvidarTodo();

    // Portapapeles
    bool hayCeldasCopiadas() const { return !celdasCopiadas_.empty(); }
    void copiar();
    std::string copiarTSV() const;
    void cortar();
    void borrarSeleccion();
    void pegar();
    void pegarTSV(const std::string& texto);

    // Estructura
    void insertarFilas(int fila, int cantidad);
    void eliminarFilas(int fila, int cantidad);
    void insertarColumnas(int col, int cantidad);
    void eliminarColumnas(int col, int cantidad);

    // Orden
    void ordenarSeleccion(bool ascendente);

    // Estilo y fusiones
    /// Aplica `cambio` a la celda de cada posición de la selección, por filas, creando las que
    /// faltan.
    void aplicarEstiloSeleccion(const std::function<void(nucleo::Celda&)>& cambio);
    void alternarNegrita();
    void alternarCursiva();
    void alternarSubrayado();
    void aplicarAlineacion(nucleo::AlineacionH alineacion);
    void aplicarFormato(nucleo::FormatoNumero numero);
    void cambiarDecimales(int delta);
    void aplicarColorTexto(unsigned int color);
    void aplicarColorFondo(unsigned int color);
    bool fusionarSeleccion();
    bool separarFusion();

    // Menú contextual
    std::vector<AccionMenu> menuContextualCeldas() const;
    /// Falso si el identificador no se conoce; los del portapapeles son de la vista.
    bool ejecutarAccionMenu(const std::string& id);

  private:
    struct CeldaCopiada {
        int dFila;
        int dCol;
        std::string entrada;
        nucleo::Formato formato;
    };

    /// Una entrada del historial: el estado al que lleva y el desplazamiento de filas o columnas
    /// que lleva a él desde su vecino, el que queda más cerca del presente.
    struct Paso {
        Estado estado;
        std::uint64_t hoja = 0; ///< `identidad` de la que se desplaza
        Desplazamiento desdeElVecino;
    };

    /// La hoja activa; nulo si el índice del libro no señala ninguna.
    nucleo::Hoja* hojaActiva() const;
    void colocar(int fila, int col);

    void registrar(Paso paso);
    void aplicarEstado(Estado estado);
    /// Cambia el presente por el último paso de `desde` y deja en `hacia` el camino de vuelta.
    void recorrerHistorial(std::deque<Paso>& desde, std::deque<Paso>& hacia);
    void redimensionar(bool filas, int coordenada, int tamano);
    static void redimensionarEn(std::deque<Paso>& pasos, std::uint64_t identidad, bool filas,
                                int coordenada, int tamano);

    /// Fusiona un rango de la hoja activa cuyo contenido, salvo el de la esquina, se pierde.
    /// Falso, sin cambios, si la hoja no admite la fusión.
    bool fusionar(const nucleo::RangoCeldas& rango);
    /// Inserta (`delta` > 0) o elimina filas o columnas de la hoja activa, con su paso de
    /// historial.
    void desplazar(bool filas, int desde, int delta);
    /// Como `aplicarEstiloSeleccion` con un cambio que solo depende del formato que encuentra: las
    /// celdas iguales se cambian juntas, y la hoja entera cuesta poco más que una columna.
    void aplicarFormatoSeleccion(const std::function<void(nucleo::Formato&)>& cambio);
    void alternarEstilo(bool nucleo::Formato::*estilo);

    Seleccion seleccion_;
    nucleo::Libro& libro_;
    motor_formulas::Motor* motor_;
    std::deque<Paso> historialDeshacer_;
    std::deque<Paso> historialRehacer_;
    std::vector<CeldaCopiada> celdasCopiadas_;
    std::vector<nucleo::RangoFusion> fusionesCopiadas_; ///< relativas a la esquina copiada
    int origenFila_ = 0;
    int origenCol_ = 0;
};

} // namespace editor
