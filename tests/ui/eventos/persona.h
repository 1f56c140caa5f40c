#pragma once

#include "tests/ui/eventos/azar.h"
#include "tests/ui/eventos/respondedor.h"
#include "ui/ventana_principal.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <array>
#include <deque>
#include <memory>
#include <string>

namespace pruebas {

/// Alguien que aporrea la ventana de verdad con sucesos al azar: teclas, ratón, rueda,
/// portapapeles, archivos soltados, relojes, menús y cuadros.
class PersonaAlAzar {
  public:
    /// Con `narrar` dice cada suceso por la salida de errores antes de que ocurra.
    explicit PersonaAlAzar(std::uint64_t semilla, bool narrar = false);
    ~PersonaAlAzar();
    PersonaAlAzar(const PersonaAlAzar&) = delete;
    PersonaAlAzar& operator=(const PersonaAlAzar&) = delete;

    /// Un suceso más y todo lo que desencadena.
    void siguiente();
    /// El primer invariante roto, del libro o de la ventana; vacío si se cumplen todos.
    std::string defecto();

    /// Los últimos sucesos, el más reciente al final.
    const std::deque<std::string>& ultimos() const { return ultimos_; }
    int cuadrosAtendidos() const { return respondedor_.atendidos(); }
    /// Veces que el libro era demasiado grande para comprobarlo entero.
    int comprobacionesCortas() const { return cortas_; }

  private:
    void abrirVentana();
    void prepararArchivos();
    /// Donde va una tecla: el menú abierto, lo que tiene el foco o la cuadrícula.
    QWidget* foco() const;
    QWidget* cualquierControl();
    QPoint puntoDe(const QWidget* control);

    // Teclado
    void tecla();
    void atajo();
    void escribirCelda();
    void escribirEnBarra();
    void irACelda();
    void metodoDeEntrada();
    // Ratón
    void pulsacion();
    void arrastre();
    void moverSinPulsar();
    void rueda();
    void menuContextual();
    // Órdenes y ventana
    void accionDeMenu();
    void botonDeLaVentana();
    void portapapeles();
    void soltarAlgo();
    void relojes();
    void cambiarVentana();
    void cerrarVentana();
    void reabrirPrograma();
    void volverALoPequeno();

    void anotar(std::string que);

    QTemporaryDir carpeta_;
    std::array<QByteArray, 3> entornoAnterior_;
    Azar azar_;
    bool narrar_;
    QStringList archivos_;
    Respondedor respondedor_;
    std::unique_ptr<interfaz::VentanaPrincipal> ventana_;
    std::deque<std::string> ultimos_;
    int grandes_ = 0; ///< sucesos seguidos con el libro demasiado grande
    int cortas_ = 0;
};

} // namespace pruebas
