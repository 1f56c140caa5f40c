#pragma once

#include "model/libro.h"
#include "model/valor.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace motor_formulas {

class Recalculo;

/// La entrada única por la que se escriben las celdas y se mantienen al día las fórmulas.
class Motor {
  public:
    explicit Motor(nucleo::Libro& libro);
    ~Motor();
    Motor(const Motor&) = delete;
    Motor& operator=(const Motor&) = delete;

    /// Escribe el contenido de una celda y recalcula lo que depende de ella. El texto vacío la
    /// vacía; una hoja que no existe no hace nada.
    void establecerCelda(int hoja, int fila, int col, const std::string& texto);
    void limpiarCelda(int hoja, int fila, int col);

    /// Mientras viva un lote, las escrituras de este motor guardan el contenido y apuntan la celda;
    /// al morir el último, un solo recálculo parte de todas. Los lotes se anidan.
    class Lote {
      public:
        explicit Lote(Motor& motor);
        ~Lote();
        Lote(const Lote&) = delete;
        Lote& operator=(const Lote&) = delete;

      private:
        Motor& motor_;
    };

    /// Valor de una fórmula (con su "=") como si estuviera en esa hoja.
    nucleo::Valor evaluarFormula(int hoja, const std::string& texto);
    /// Celdas que lee una fórmula, en orden y sin repetir.
    std::vector<unsigned long long> extraerPrecedentes(int hoja, const std::string& texto);
    void actualizarDependencias(int hoja, int fila, int col);
    /// Recalcula la celda, si es una fórmula, y todo lo que depende de ella.
    void recalcularCascada(unsigned long long clave);
    /// Rehace el grafo y recalcula cada fórmula una vez, en orden de dependencias.
    void recalcularTodo();
    /// Recalcula un libro recién cargado. Si falta memoria da falso y lo deja reiniciado, como el
    /// que no se puede leer.
    bool recalcularCargado();

    /// Desplaza las referencias relativas, como al copiar la fórmula a otra celda.
    std::string ajustarReferencias(const std::string& texto, int dFilas, int dColumnas) const;
    /// Sigue a las celdas cuando se insertan (cantidad > 0) o eliminan filas o columnas.
    std::string ajustarPorEstructura(const std::string& texto, const std::string& hojaFormula,
                                     const std::string& hojaEstructura, bool filas, int inicio,
                                     int cantidad) const;
    void reescribirTrasEstructura(const std::string& hoja, bool filas, int inicio, int cantidad);
    /// Renombra la hoja y las referencias que la nombran; si el libro lo rechaza no cambia nada.
    void renombrarHoja(int hoja, const std::string& nuevoNombre);

  private:
    void recalcularTrasEscribir(std::uint64_t clave);
    void recalcularPendientes();
    /// Cambia el texto de las fórmulas para las que `reescribir(texto, hoja, salida)` da otro en
    /// `salida` y devuelve verdadero; los textos van sin su "=".
    void reescribirFormulas(
        const std::function<bool(std::string_view, const nucleo::Hoja&, std::string&)>& reescribir);

    nucleo::Libro& libro_;
    std::unique_ptr<Recalculo> recalculo_;
    int lotesAbiertos_ = 0;
    std::vector<std::uint64_t> pendientes_; ///< celdas escritas en el lote en curso
};

} // namespace motor_formulas
