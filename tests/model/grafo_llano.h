#pragma once

#include "model/celda.h"
#include "model/indice_rangos.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <vector>

namespace pruebas {

/// El grafo escrito con dos mapas, celda a celda: la referencia con la que se compara el de verdad.
class GrafoLlano {
  public:
    std::map<std::uint64_t, std::set<std::uint64_t>> dependientes;
    std::map<std::uint64_t, std::vector<std::uint64_t>> precedentes;

    void establecerPrecedentes(std::uint64_t clave, std::vector<std::uint64_t> lista) {
        quitarDependencias(clave);
        if (lista.empty())
            return;
        for (const std::uint64_t precedente : lista)
            dependientes[precedente].insert(clave);
        precedentes[clave] = std::move(lista);
    }

    void establecerBloques(std::uint64_t clave, std::span<const nucleo::BloqueDeHoja> bloques) {
        std::vector<std::uint64_t> lista;
        for (const nucleo::BloqueDeHoja& bloque : bloques) {
            for (int fila = bloque.rango.fila1; fila <= bloque.rango.fila2; ++fila) {
                for (int col = bloque.rango.col1; col <= bloque.rango.col2; ++col)
                    lista.push_back(nucleo::claveCelda(bloque.hoja, fila, col));
            }
        }
        std::sort(lista.begin(), lista.end());
        lista.erase(std::unique(lista.begin(), lista.end()), lista.end());
        establecerPrecedentes(clave, std::move(lista));
    }

    void quitarDependencias(std::uint64_t clave) {
        const auto entrada = precedentes.find(clave);
        if (entrada == precedentes.end())
            return;
        for (const std::uint64_t precedente : entrada->second) {
            const auto conjunto = dependientes.find(precedente);
            if (conjunto == dependientes.end())
                continue;
            conjunto->second.erase(clave);
            if (conjunto->second.empty())
                dependientes.erase(conjunto);
        }
        precedentes.erase(entrada);
    }
};

} // namespace pruebas
