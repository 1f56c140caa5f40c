#include "tests/comun/comprobar_libro.h"

#include "formula/motor.h"
#include "model/direcciones.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace pruebas {

using nucleo::Celda;
using nucleo::Hoja;
using nucleo::Libro;
using nucleo::RangoFusion;
using nucleo::TipoCelda;

namespace {

std::string lugar(const Hoja& hoja, int fila, int col) {
    return hoja.nombre + "!" + nucleo::nombreRef(fila, col);
}

std::string lugar(const Libro& libro, std::uint64_t clave) {
    const auto hoja = static_cast<std::size_t>(nucleo::hojaDeClave(clave));
    if (hoja >= libro.hojas.size())
        return "hoja inexistente " + std::to_string(hoja);
    return lugar(*libro.hojas[hoja], nucleo::filaDeClave(clave), nucleo::columnaDeClave(clave));
}

std::string defectoDeHojas(const Libro& libro) {
    if (libro.hojas.empty())
        return "el libro no tiene hojas";
    for (const auto& hoja : libro.hojas) {
        if (!hoja)
            return "hay una hoja nula";
    }
    if (libro.hojaActiva < 0 || static_cast<std::size_t>(libro.hojaActiva) >= libro.hojas.size())
        return "la hoja activa no existe: " + std::to_string(libro.hojaActiva);
    return {};
}

std::string defectoDelAlmacen(const Hoja& hoja) {
    std::size_t vistas = 0;
    for (const auto& [clave, celda] : hoja.celdas) {
        ++vistas;
        const auto it = hoja.celdas.find(clave);
        if (it == hoja.celdas.end() || &it->second != &celda)
            return "la celda recorrida no es la que se encuentra: clave " + std::to_string(clave);
    }
    if (vistas != hoja.celdas.size())
        return hoja.nombre + " dice tener " + std::to_string(hoja.celdas.size()) +
               " celdas y son " + std::to_string(vistas);
    return hoja.celdas.comprobar() ? "" : hoja.nombre + ": el almacén está descuadrado";
}

std::string defectoDeExtension(const Hoja& hoja) {
    int fila = -1;
    int col = -1;
    for (const auto& [clave, celda] : hoja.celdas) {
        if (celda.tipo == TipoCelda::Vacia)
            continue;
        fila = std::max(fila, nucleo::filaDeClaveLocal(clave));
        col = std::max(col, nucleo::columnaDeClaveLocal(clave));
    }
    for (const RangoFusion& fusion : hoja.fusiones) {
        fila = std::max(fila, fusion.fila2);
        col = std::max(col, fusion.col2);
    }
    if (hoja.ultimaFilaUsada() != fila || hoja.ultimaColUsada() != col)
        return hoja.nombre + " dice llegar a (" + std::to_string(hoja.ultimaFilaUsada()) + ", " +
               std::to_string(hoja.ultimaColUsada()) + ") y llega a (" + std::to_string(fila) +
               ", " + std::to_string(col) + ")";
    return {};
}

std::string defectoDeFusiones(const Hoja& hoja) {
    for (std::size_t i = 0; i < hoja.fusiones.size(); ++i) {
        const RangoFusion& f = hoja.fusiones[i];
        const std::string nombre = hoja.nombre + ": la fusión " + std::to_string(i);
        if (f.fila1 > f.fila2 || f.col1 > f.col2)
            return nombre + " no está normalizada";
        if (f.fila1 < 0 || f.col1 < 0 || f.fila2 > nucleo::kUltimaFila ||
            f.col2 > nucleo::kUltimaColumna)
            return nombre + " se sale de la cuadrícula";
        if (f.fila1 == f.fila2 && f.col1 == f.col2)
            return nombre + " es de una sola celda";
        for (std::size_t j = 0; j < i; ++j) {
            const RangoFusion& g = hoja.fusiones[j];
            if (f.fila1 <= g.fila2 && g.fila1 <= f.fila2 && f.col1 <= g.col2 && g.col1 <= f.col2)
                return nombre + " se solapa con la " + std::to_string(j);
        }
    }
    return {};
}

/// Cuenta por cada celda leída cuántas fórmulas la leen según sus textos; el grafo tiene que decir
/// lo mismo en los dos sentidos, ni más ni menos.
std::string defectoDelGrafo(Libro& libro) {
    motor_formulas::Motor motor(libro);
    std::unordered_map<std::uint64_t, std::size_t> lectores;
    std::size_t formulas = 0;
    for (std::size_t i = 0; i < libro.hojas.size(); ++i) {
        for (const auto& [local, celda] : libro.hojas[i]->celdas) {
            if (celda.tipo != TipoCelda::Formula)
                continue;
            const int indice = static_cast<int>(i);
            const std::uint64_t clave = nucleo::claveCelda(indice, nucleo::filaDeClaveLocal(local),
                                                           nucleo::columnaDeClaveLocal(local));
            const auto leidas = motor.extraerPrecedentes(indice, celda.entrada);
            if (libro.precedentes.count(clave) != (leidas.empty() ? 0U : 1U))
                return lugar(libro, clave) + " sobra o falta en precedentes";
            if (leidas.empty())
                continue;
            ++formulas;
            const std::vector<std::uint64_t> guardadas = libro.precedentes.at(clave);
            if (!std::equal(guardadas.begin(), guardadas.end(), leidas.begin(), leidas.end()))
                return "los precedentes de " + lugar(libro, clave) + " no son los de su texto";
            for (const std::uint64_t leida : leidas) {
                ++lectores[leida];
                if (libro.dependientes.count(leida) == 0 ||
                    libro.dependientes.at(leida).count(clave) == 0)
                    return lugar(libro, leida) + " no sabe que la lee " + lugar(libro, clave);
            }
        }
    }
    if (libro.precedentes.size() != formulas)
        return "precedentes tiene " + std::to_string(libro.precedentes.size()) + " entradas para " +
               std::to_string(formulas) + " fórmulas";
    if (libro.dependientes.size() != lectores.size())
        return "dependientes tiene " + std::to_string(libro.dependientes.size()) +
               " entradas para " + std::to_string(lectores.size()) + " celdas leídas";
    for (const auto& [leida, cuantos] : lectores) {
        if (libro.dependientes.at(leida).size() != cuantos)
            return lugar(libro, leida) + " tiene lectores de más";
    }
    return {};
}

/// Los dos valores se ven y se leen igual. Un NaN es igual a otro, y los campos que el tipo no
/// señala no cuentan.
bool mismoValor(const nucleo::Valor& a, const nucleo::Valor& b) {
    if (a.tipo != b.tipo)
        return false;
    switch (a.tipo) {
    case nucleo::TipoValor::Numero:
        return a.numero == b.numero || (std::isnan(a.numero) && std::isnan(b.numero));
    case nucleo::TipoValor::Texto:
        return a.texto == b.texto;
    case nucleo::TipoValor::Logico:
        return a.logico == b.logico;
    case nucleo::TipoValor::Error:
        return a.error == b.error;
    case nucleo::TipoValor::Vacio:
        break;
    }
    return true;
}

/// Una fórmula que se escribe detrás de un ciclo ya formado se evalúa, y un recálculo completo la
/// da por circular: mientras haya ciclo valen las dos.
bool esCircular(const nucleo::Valor& valor) {
    return valor.tipo == nucleo::TipoValor::Error && valor.error == nucleo::ErrorCelda::Circular;
}

std::string defectoDeValores(const Libro& libro) {
    Libro copia;
    copia.hojas.clear();
    for (const auto& hoja : libro.hojas)
        copia.hojas.push_back(std::make_unique<Hoja>(*hoja));
    motor_formulas::Motor(copia).recalcularTodo();
    for (std::size_t i = 0; i < libro.hojas.size(); ++i) {
        for (const auto& [clave, celda] : libro.hojas[i]->celdas) {
            const int fila = nucleo::filaDeClaveLocal(clave);
            const int col = nucleo::columnaDeClaveLocal(clave);
            const Celda* recalculada = copia.hojas[i]->celda(fila, col);
            if (!recalculada ||
                (!mismoValor(celda.valor, recalculada->valor) && !esCircular(recalculada->valor)))
                return lugar(*libro.hojas[i], fila, col) + " (" + celda.entrada +
                       ") no muestra lo que un recálculo completo";
        }
    }
    return {};
}

} // namespace

std::int64_t celdasLeidas(const nucleo::GrafoDependencias& grafo, std::uint64_t clave) {
    const nucleo::GrafoDependencias::IdFormula cual = grafo.formulaEn(clave);
    std::int64_t leidas = 0;
    for (std::uint32_t i = 0; cual != 0 && i < grafo.cuentaLecturas(cual); ++i) {
        const nucleo::GrafoDependencias::Lectura lectura = grafo.lectura(cual, i);
        leidas += lectura.esRectangulo ? lectura.bloque.rango.celdas() : 1;
    }
    return leidas;
}

std::int64_t celdasLeidas(const Libro& libro) {
    std::int64_t leidas = 0;
    for (std::size_t i = 0; i < libro.hojas.size(); ++i) {
        std::as_const(*libro.hojas[i])
            .celdas.recorrerFormulas([&](int fila, int col, const Celda&) {
                leidas +=
                    celdasLeidas(libro.grafo(), nucleo::claveCelda(static_cast<int>(i), fila, col));
            });
    }
    return leidas;
}

std::string defectoDelLibro(Libro& libro, const Exigencias& exigencias) {
    if (std::string defecto = defectoDeHojas(libro); !defecto.empty())
        return defecto;
    for (const auto& hoja : libro.hojas) {
        if (std::string defecto = defectoDelAlmacen(*hoja); !defecto.empty())
            return defecto;
        if (std::string defecto = defectoDeExtension(*hoja); !defecto.empty())
            return defecto;
        if (!exigencias.fusionesDelEditor)
            continue;
        if (std::string defecto = defectoDeFusiones(*hoja); !defecto.empty())
            return defecto;
    }
    if (exigencias.grafo) {
        if (std::string defecto = defectoDelGrafo(libro); !defecto.empty())
            return defecto;
    }
    return exigencias.valoresAlDia ? defectoDeValores(libro) : std::string{};
}

} // namespace pruebas
