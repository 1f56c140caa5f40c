#include "rendering/eje_vista.h"

#include <algorithm>

namespace renderizador {

EjeVista::EjeVista(const Eje& eje, int inmovilizados, int origen, int desplazamiento)
    : eje_(eje), fijos_(std::clamp(inmovilizados, 0, eje.elementos())), origen_(origen),
      desplazamiento_(desplazamiento), panelFijo_(eje.posicion(fijos_)) {}

std::int64_t EjeVista::suma(int desde, int hasta) const {
    return hasta <= desde ? 0 : eje_.posicion(hasta) - eje_.posicion(desde);
}

std::int64_t EjeVista::inicio(int elemento) const {
    if (elemento < fijos_) {
        return origen_ + suma(0, elemento);
    }
    return finPanel() - desplazamiento_ + suma(fijos_, elemento);
}

int EjeVista::en(std::int64_t pixel) const {
    if (pixel < finPanel()) {
        return eje_.elementoEn(pixel - origen_);
    }
    const std::int64_t dentro = pixel - (finPanel() - desplazamiento_);
    if (dentro < 0) {
        return -1;
    }
    const int elemento = eje_.elementoEn(panelFijo_ + dentro);
    return elemento < elementos() ? elemento : -1;
}

int EjeVista::primeroDesplazado() const {
    return std::max(fijos_, eje_.elementoEn(panelFijo_ + desplazamiento_));
}

void EjeVista::visibles(int limite, std::vector<int>& salida) const {
    salida.clear();
    for (int elemento = 0; elemento < fijos_; ++elemento) {
        salida.push_back(elemento);
    }
    int elemento = primeroDesplazado();
    for (std::int64_t pixel = inicio(elemento); elemento < elementos() && pixel < limite;
         pixel += eje_.tamano(elemento), ++elemento) {
        salida.push_back(elemento);
    }
}

} // namespace renderizador
