#pragma once

#include "model/celda.h"
#include "model/indice_rangos.h"
#include "model/rango.h"
#include "model/tabla_indices.h"
#include "model/vistas_grafo.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace nucleo {

/// Qué fórmula lee qué celdas y, al revés, qué fórmulas leen una celda. Las celdas se nombran por
/// su `claveCelda`.
///
/// Cada fórmula tiene una tirada de referencias contiguas, y cada referencia está además en la
/// lista doble de los lectores de lo que lee: una celda suelta o un rectángulo, que se guarda una
/// vez por muchas fórmulas que lo compartan. Poner, quitar y preguntar cuesta lo que ocupa la
/// respuesta.
class GrafoDependencias {
  public:
    using IdFormula = std::uint32_t; ///< 0 = ninguna

    /// Sustituye los precedentes de una fórmula y los recuerda en el orden dado, con sus
    /// repeticiones; con la lista vacía la saca del grafo.
    void establecerPrecedentes(std::uint64_t clave, std::span<const std::uint64_t> precedentes);
    /// Igual, con rectángulos: sus precedentes son las celdas de todos, ordenadas y sin repetir.
    void establecerBloques(std::uint64_t clave, std::span<const BloqueDeHoja> bloques);
    void quitarDependencias(std::uint64_t clave);
    /// Olvida todo y conserva la memoria para rehacerse.
    void limpiar();

    bool tienePrecedentes(std::uint64_t formula) const;
    /// Vacío si la celda no es una fórmula con precedentes.
    std::vector<std::uint64_t> precedentesDe(std::uint64_t formula) const;
    bool tieneLectores(std::uint64_t celda) const;
    /// Fórmulas que leen la celda, en orden y sin repetir.
    std::vector<std::uint64_t> lectoresDe(std::uint64_t celda) const;

    std::size_t cuentaFormulas() const { return conPrecedentes_; }
    /// Fórmulas con precedentes, en orden.
    std::vector<std::uint64_t> formulas() const;
    /// Celdas que lee alguna fórmula, en orden. Enumera los rectángulos celda a celda.
    std::vector<std::uint64_t> celdasLeidas() const;

    /// Cambia cada vez que cambian los precedentes de alguna fórmula.
    std::uint64_t version() const { return version_; }

    // Lo que sigue es para quien recalcula: nombra las fórmulas por números seguidos.

    /// La fórmula de una celda, apuntada si no lo estaba aunque no lea nada.
    IdFormula apuntarFormula(std::uint64_t clave);
    IdFormula formulaEn(std::uint64_t clave) const;
    std::uint64_t claveDe(IdFormula formula) const { return formulas_[formula].clave; }
    /// Los números de fórmula son menores que este.
    std::size_t limiteFormulas() const { return formulas_.size(); }
    /// Como `establecerBloques`, de una fórmula que aún no tiene referencias.
    void ponerBloques(IdFormula formula, std::span<const BloqueDeHoja> bloques);

    /// Lo que una fórmula lee: otra celda, que puede ser una fórmula apuntada, o un rectángulo.
    struct Lectura {
        bool esRectangulo = false;
        IdFormula formula = 0; ///< la de la celda leída; 0 si no es una fórmula apuntada
        BloqueDeHoja bloque;   ///< solo si es un rectángulo
    };
    std::uint32_t cuentaLecturas(IdFormula formula) const { return formulas_[formula].cuenta; }
    Lectura lectura(IdFormula formula, std::uint32_t indice) const;

    /// Empieza un recorrido por los lectores: ninguna fórmula está alcanzada.
    void empezarRecorrido();
    /// Añade las fórmulas que leen la celda y que este recorrido aún no había dado.
    void alcanzarLectores(std::uint64_t celda, std::vector<IdFormula>& alcanzadas);
    /// Da por alcanzada una fórmula; falso si ya lo estaba.
    bool alcanzar(IdFormula formula);

  private:
    static constexpr int kBitsBloque = 4;
    static constexpr std::uint32_t kFilasBloque = 1U << kBitsBloque;
    static constexpr std::uint32_t kEsRectangulo = 0x80000000U;

    using Ranura = std::uint32_t; ///< bloque × kFilasBloque + fila dentro del bloque; 0 = ninguna
    using IdReferencia = std::uint32_t;

    /// Lo que se sabe de una celda: la fórmula que hay en ella y el primero de sus lectores.
    struct Celdilla {
        IdFormula formula = 0;
        IdReferencia lectores = 0;
    };
    /// Celdas seguidas de una columna.
    struct Bloque {
        std::uint64_t claveBase = 0;
        std::array<Celdilla, kFilasBloque> celdillas{};
    };
    struct Formula {
        std::uint64_t clave = 0;
        IdReferencia primera = 0; ///< de sus referencias, seguidas
        std::uint32_t cuenta = 0;
        std::uint32_t recorrido = 0; ///< el último que la alcanzó
        bool tomadasComoSeDieron = false;
    };
    struct Referencia {
        std::uint32_t destino = 0; ///< ranura, o kEsRectangulo | rectángulo
        IdFormula lectora = 0;
        IdReferencia siguiente = 0; ///< en la lista de lectores del destino
        IdReferencia anterior = 0;  ///< 0 = es la primera
    };

    /// Un bloque buscado hace poco: las fórmulas seguidas leen casi siempre los mismos.
    struct BloqueReciente {
        std::uint64_t claveBase = 0;
        std::uint32_t bloque = 0; ///< 0 = ninguno
    };
    static constexpr std::size_t kRecientes = 64;

    Ranura ranuraDe(std::uint64_t clave) const;
    Ranura ranuraPara(std::uint64_t clave);
    Celdilla& celdilla(Ranura ranura) {
        return bloques_[ranura / kFilasBloque].celdillas[ranura % kFilasBloque];
    }
    const Celdilla& celdilla(Ranura ranura) const {
        return bloques_[ranura / kFilasBloque].celdillas[ranura % kFilasBloque];
    }
    std::uint64_t claveDeRanura(Ranura ranura) const;
    IdReferencia& cabezaDe(std::uint32_t destino);

    IdReferencia tomarTirada(std::uint32_t cuenta);
    void soltarTirada(IdReferencia primera, std::uint32_t cuenta);
    void enlazar(IdReferencia referencia, std::uint32_t destino, IdFormula lectora);
    void desenlazar(IdReferencia referencia);
    void soltarReferencias(IdFormula formula);
    std::uint32_t destinoPara(const BloqueDeHoja& bloque);

    template <typename Visitante> void visitarDestinos(std::uint64_t celda, Visitante&& v) const;

    TablaIndices tablaBloques_;
    std::vector<Bloque> bloques_{1};
    std::array<BloqueReciente, kRecientes> recientes_{}; ///< por columna
    std::vector<Formula> formulas_{1};
    std::vector<IdFormula> formulasLibres_;
    std::vector<Referencia> referencias_{1};
    std::vector<std::vector<IdReferencia>> tiradasLibres_; ///< por clase de largo
    IndiceRangos rangos_;
    std::vector<IdReferencia> lectoresDeRango_{0};
    std::size_t conPrecedentes_ = 0;
    std::uint32_t recorrido_ = 0;
    std::uint64_t version_ = 0;
};

} // namespace nucleo
