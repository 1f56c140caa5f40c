#pragma once

#include "rendering/ejes.h"
#include "rendering/tema.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

class QPainter;

namespace nucleo {
class Hoja;
struct RangoFusion;
} // namespace nucleo

namespace renderizador {

class EjeVista;
class LoteCeldas;
struct Region;

inline constexpr int kAnchoEncabezado = 48; ///< franja de números de fila; el zoom no la cambia
inline constexpr int kAltoEncabezado = 26;  ///< franja de letras de columna; el zoom no la cambia

/// La selección tal como se pinta: el rectángulo, con sus extremos incluidos, y la celda activa.
struct SeleccionVista {
    std::int32_t fila1 = 0;
    std::int32_t col1 = 0;
    std::int32_t fila2 = 0;
    std::int32_t col2 = 0;
    std::int32_t filaActiva = 0;
    std::int32_t colActiva = 0;

    bool operator==(const SeleccionVista&) const = default;
};

/// Convierte filas y columnas de una hoja en píxeles de la vista, y al revés, y pinta la hoja.
///
/// Coste. Cada respuesta sale, en tiempo logarítmico, de un índice de los tamaños propios que solo
/// se rehace cuando cambian ellos o el zoom. Los tamaños negativos ocupan cero píxeles, las cuentas
/// inmovilizadas se acotan a la cuadrícula y los resultados que no caben en un `int` se saturan.
class Renderizador {
  public:
    const nucleo::Hoja* hoja = nullptr; ///< sin hoja no se pinta ni se acierta nada
    const Tema* tema = nullptr;         ///< sin tema no se pinta nada
    double zoom = 1.0;                  ///< 1.0 = 100 %
    std::int32_t desplazamientoX = 0;   ///< píxeles de vista, solo de la parte que se desplaza
    std::int32_t desplazamientoY = 0;

    // Tamaños y posiciones, en píxeles de la vista
    int anchoCol(int col) const;
    int altoFila(int fila) const;
    int anchoPanelFijo() const;
    int altoPanelFijo() const;
    int xDeCol(int col) const;
    int yDeFila(int fila) const;
    QRect rectCelda(int fila, int col) const;
    /// El rectángulo entero de la fusión que contiene la celda, anclado en su primera celda; el de
    /// la celda si no hay fusión.
    QRect rectCeldaConFusion(int fila, int col) const;

    // Aciertos: -1 o falso cuando el punto no está sobre lo que se pregunta
    bool celdaEnPunto(const QPoint& punto, const QSize& vista, int& fila, int& col) const;
    int colEnEncabezado(const QPoint& punto) const;
    int filaEnEncabezado(const QPoint& punto) const;
    /// Columna cuyo borde derecho está a menos de 5 píxeles del punto, en el encabezado.
    int bordeColEnPunto(const QPoint& punto) const;
    /// Fila cuyo borde inferior está a menos de 5 píxeles del punto, en el encabezado.
    int bordeFilaEnPunto(const QPoint& punto) const;

    /// Tamaño de lo que se desplaza: lo usado y un margen, sin encabezados ni inmovilizados.
    QSize tamanoContenido() const;
    /// Filas que se ven, en el orden en que se pintan: todas las inmovilizadas y después las demás.
    void filasVisibles(const QSize& vista, std::vector<int>& filas) const;
    void colsVisibles(const QSize& vista, std::vector<int>& cols) const;

    // Pintura, en `pintura.cpp`
    void dibujar(QPainter& pintor, const QSize& vista, const SeleccionVista& seleccion) const;
    void dibujarCeldas(QPainter& pintor, const QSize& vista, const SeleccionVista& seleccion) const;
    /// Una celda, o una fusión si se da su rectángulo entero.
    void dibujarCelda(QPainter& pintor, int fila, int col, const QRect& rect) const;
    void dibujarSeleccion(QPainter& pintor, const QSize& vista,
                          const SeleccionVista& seleccion) const;
    void dibujarEncabezados(QPainter& pintor, const QSize& vista,
                            const SeleccionVista& seleccion) const;

  private:
    // Solo con hoja
    EjeVista ejeColumnas() const;
    EjeVista ejeFilas() const;
    QRect rectFusion(const nucleo::RangoFusion& fusion) const;
    void dibujarRegion(QPainter& pintor, const Region& region, LoteCeldas& lote) const;
    /// Lo que toca a la región de la selección; quien llama ya ha recortado a ella.
    void seleccionEnRegion(QPainter& pintor, const Region& region,
                           const SeleccionVista& seleccion) const;

    mutable EjeRecordado filas_;
    mutable EjeRecordado columnas_;
};

} // namespace renderizador
