#pragma once

#include "formula/codigo.h"
#include "formula/conjunto_celdas.h"
#include "formula/contexto_recalculo.h"
#include "formula/maquina.h"
#include "formula/precedentes.h"
#include "model/grafo_dependencias.h"
#include "model/libro.h"
#include "model/valor.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace motor_formulas {

/// Evalúa fórmulas en orden de dependencias, cada una una vez. Guarda su memoria de trabajo de un
/// recálculo a otro.
///
/// Todas las fórmulas por calcular están en un conjunto. Calcular una es buscar en lo que lee la
/// primera que aún esté en el conjunto, calcularla antes, y seguir buscando; cuando no queda
/// ninguna se evalúa y sale del conjunto. Encontrar una que se está calculando cierra un ciclo: las
/// que están en él o lo leen se quedan en el conjunto, y su valor es "#¡CIRCULAR!".
class Recalculo {
  public:
    explicit Recalculo(nucleo::Libro& libro) : libro_(libro) {}

    /// Rehace el grafo y calcula todas las fórmulas. Las que leen un rango demasiado grande para
    /// ser una dependencia se calculan después de las fórmulas que hay dentro.
    void todo();
    /// Calcula las fórmulas que hay en esas celdas, escritas en ese orden, y cuantas dependen de
    /// ellas. Los valores son los de calcular tras cada escritura.
    void cascada(std::span<const std::uint64_t> claves);

    /// Lo que lee una fórmula (con su "="), como rectángulos; vale hasta la siguiente llamada.
    std::span<const nucleo::BloqueDeHoja> precedentes(int hoja, const std::string& texto);
    /// El valor de una fórmula (con su "=") que no está en ninguna celda.
    nucleo::Valor evaluar(int hoja, const std::string& texto);

  private:
    using IdFormula = nucleo::GrafoDependencias::IdFormula;

    enum class Estado : std::uint8_t {
        Hecha, ///< o ajena a este recálculo
        Pendiente,
        EnCurso,
        Circular,
        Aplazada, ///< espera a las que hay dentro de un rango demasiado grande
    };
    enum class Modo : std::uint8_t {
        Cascada,
        Leyendo,   ///< el grafo se rehace a medida que se leen las fórmulas
        Aplazadas, ///< el grafo ya está, y los rangos demasiado grandes no hacen esperar
    };
    /// Por dónde va la búsqueda entre lo que lee una fórmula.
    struct Cursor {
        std::uint32_t lectura = 0;
        ConjuntoCeldas::Cursor celda;

        /// Deja atrás la celda en la que está.
        void saltar() { ++celda.fila; }
    };
    struct Marco {
        IdFormula formula = 0;
        Cursor cursor;
    };
    /// Un rango demasiado grande que lee una fórmula aplazada.
    struct RangoBlando {
        IdFormula formula = 0;
        nucleo::BloqueDeHoja bloque;
    };
    /// Tramo de `alcanzadas_`: las que alcanza una escritura y ninguna posterior.
    struct Tanda {
        std::size_t desde;
        std::size_t hasta;
    };
    /// Nodo de la búsqueda de componentes de `ordenarAplazadas`.
    struct Componente {
        std::uint32_t orden = 0; ///< 0 = sin visitar
        std::uint32_t menor = 0;
    };

    static constexpr std::uint64_t kMaximoPasosBlandos = 20'000'000;

    nucleo::GrafoDependencias& grafo() { return libro_.grafo(); }
    Estado& estado(IdFormula formula) { return estados_[formula]; }
    const nucleo::Celda* celdaFormula(std::uint64_t clave) const;
    void marcarPendiente(IdFormula formula, const nucleo::Celda& celda);
    void adelantar(std::size_t indice) const;
    void alcanzarDesde(std::uint64_t clave);

    void resolver(IdFormula formula);
    void abrir(IdFormula formula);
    bool leerYRegistrar(IdFormula formula);
    IdFormula siguienteSinHacer(IdFormula formula, std::span<const RangoBlando> blandos,
                                Cursor& cursor);
    void cerrar(Estado final);
    void fijar(IdFormula formula, Estado final);
    void calcular(IdFormula formula);
    bool leer(IdFormula formula);
    void guardar(std::uint64_t clave, const nucleo::Valor& valor);

    void resolverAplazadas();
    void ordenarDesde(IdFormula formula);
    std::span<const RangoBlando> blandosDe(IdFormula formula) const;
    void empezar(Modo modo);
    void terminar();
    void olvidarInterrumpido();

    nucleo::Libro& libro_;
    Modo modo_ = Modo::Cascada;
    bool enMarcha_ = false; ///< también si el último se quedó a medias por falta de memoria
    std::vector<Estado> estados_; ///< por fórmula; fuera de un recálculo todas `Hecha`
    /// Por fórmula, la celda en la que está. Guardar resultados no mueve las celdas de su sitio, y
    /// las de un bloque que se aparta siguen vivas en la copia que lo compartía, con el mismo
    /// texto.
    std::vector<const nucleo::Celda*> celdas_;
    ConjuntoCeldas sinHacer_;         ///< las que no están en `Hecha`
    std::vector<IdFormula> formulas_; ///< las de este recálculo
    std::vector<IdFormula> alcanzadas_;
    std::vector<Tanda> tandas_;
    std::vector<std::uint32_t> turnos_; ///< por fórmula: la tanda a la que pertenece
    std::vector<Marco> pila_;

    Codigo codigo_;
    IdFormula leida_ = 0; ///< la fórmula que está en `codigo_`
    bool formulaValida_ = false;
    Precedentes precedentes_;
    Maquina maquina_;
    ContextoRecalculo contexto_;

    std::vector<IdFormula> aplazadas_;
    std::vector<RangoBlando> blandos_; ///< por fórmula
    std::vector<Componente> componentes_;
    std::vector<IdFormula> enComponente_;
    std::uint32_t ultimoOrden_ = 0;
    std::uint64_t pasosBlandos_ = 0;
};

} // namespace motor_formulas
