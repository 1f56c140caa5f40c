#include "formula/compilador.h"
#include "formula/emisor.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace motor_formulas {

namespace {

Operacion unariaDe(std::string_view texto) {
    return operacionEntre(texto, Operacion::Negar, Operacion::Porcentaje);
}

Esquina esquinaDe(const RefCelda& ref) {
    return {{ref.fila, ref.col, ref.filaAbs, ref.colAbs}, ref.hoja};
}

/// Recorre un árbol en orden postfijo con su propia pila.
class Aplanador {
  public:
    explicit Aplanador(Emisor& emisor) : emisor_(emisor) {}

    void recorrer(const NodoExpr* raiz) {
        entrar(raiz);
        while (!pendientes_.empty()) {
            Pendiente& actual = pendientes_.back();
            const NodoExpr& nodo = *actual.nodo;
            if (actual.hijo < actual.hijos) {
                if (nodo.tipo == NodoExpr::Funcion && actual.hijo > 0)
                    emisor_.separarArgumento();
                entrar(nodo.hijos[actual.hijo++].get());
                continue;
            }
            pendientes_.pop_back();
            salir(nodo);
        }
    }

  private:
    struct Pendiente {
        const NodoExpr* nodo;
        std::size_t hijo;
        std::size_t hijos;
    };

    void entrar(const NodoExpr* nodo);
    void salir(const NodoExpr& nodo);

    Emisor& emisor_;
    std::vector<Pendiente> pendientes_;
};

void Aplanador::entrar(const NodoExpr* nodo) {
    if (nodo == nullptr)
        return emisor_.invalido();
    switch (nodo->tipo) {
    case NodoExpr::Numero:
        return emisor_.numero(nodo->numero);
    case NodoExpr::Texto:
        return emisor_.texto(nodo->texto);
    case NodoExpr::Logico:
        return emisor_.logico(nodo->logico);
    case NodoExpr::Referencia:
        return emisor_.celda(esquinaDe(nodo->ref));
    case NodoExpr::Rango:
        return emisor_.rango(esquinaDe(nodo->ref), esquinaDe(nodo->ref2));
    case NodoExpr::Error:
        return emisor_.error(nodo->error);
    case NodoExpr::Funcion:
        emisor_.abrirLlamada(nodo->texto);
        pendientes_.push_back({nodo, 0, nodo->hijos.size()});
        return;
    case NodoExpr::Unario:
    case NodoExpr::Binario: {
        const bool unario = nodo->tipo == NodoExpr::Unario;
        const std::size_t operandos = unario ? 1 : 2;
        if (nodo->hijos.size() < operandos ||
            (unario && unariaDe(nodo->op) == Operacion::OperadorDesconocido))
            return emisor_.invalido();
        pendientes_.push_back({nodo, 0, operandos});
        return;
    }
    }
    emisor_.invalido();
}

void Aplanador::salir(const NodoExpr& nodo) {
    if (nodo.tipo == NodoExpr::Funcion)
        return emisor_.cerrarLlamada(!nodo.hijos.empty());
    if (nodo.tipo == NodoExpr::Unario)
        return emisor_.unaria(unariaDe(nodo.op));
    emisor_.binaria(binariaDe(nodo.op));
}

} // namespace

void aplanar(const NodoExpr& nodo, const nucleo::Libro* libro, int hoja, Codigo& salida) {
    Emisor emisor({}, libro, hoja, salida);
    Aplanador(emisor).recorrer(&nodo);
}

void aplanarLlamada(std::string_view nombre, const NodoExpr& nodo, const nucleo::Libro* libro,
                    int hoja, Codigo& salida) {
    Emisor emisor({}, libro, hoja, salida);
    emisor.abrirLlamada(nombre);
    for (std::size_t i = 0; i < nodo.hijos.size(); ++i) {
        if (i > 0)
            emisor.separarArgumento();
        Aplanador(emisor).recorrer(nodo.hijos[i].get());
    }
    emisor.cerrarLlamada(!nodo.hijos.empty());
}

} // namespace motor_formulas
