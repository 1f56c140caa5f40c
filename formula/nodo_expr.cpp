#include "formula/nodo_expr.h"

#include <iterator>
#include <utility>

namespace motor_formulas {

NodoExpr::~NodoExpr() {
    // Los nietos pasan a una lista antes de que muera su padre: la profundidad cuesta memoria y no
    // pila.
    std::vector<std::unique_ptr<NodoExpr>> pendientes = std::move(hijos);
    while (!pendientes.empty()) {
        const std::unique_ptr<NodoExpr> nodo = std::move(pendientes.back());
        pendientes.pop_back();
        if (nodo == nullptr)
            continue;
        pendientes.insert(pendientes.end(), std::make_move_iterator(nodo->hijos.begin()),
                          std::make_move_iterator(nodo->hijos.end()));
    }
}

} // namespace motor_formulas
