#include "rendering/eje_vista.h"

#include <algorithm>

namespace renderizador {

EjeVista::EjeVista(const MedidasEje& medidas, const Eje* indice, int inmovilizados, int origen,
                   int desplazamiento)
    : medidas_(medidas), prestado_(indice), fijos_(std::clamp(inmovilizados, 0, medidas.elementos)),
      origen_(origen), desplazamiento_(desplazamiento), panelFijo_(suma(0, fijos_)) {}

const Eje& EjeVista::indice() const {
    if (prestado_ != nullptr) {
        return *prestado_;
    }
    if (!propio_) {
        propio_.emplace(medidas_);
    }
    return *propio_;
}

int EjeVista::tamano(int elemento) const {
    return prestado_ != nullptr ? prestado_->tamano(elemento) : medidas_.tamano(elemento);
}

std::int64_t EjeVista::suma(int desde, int hasta) const {
    if (prestado_ == nullptr) {
        return medidas_.suma(desde, hasta);
    }
    return hasta <= desde ? 0 : prestado_->posicion(hasta) - prestado_->posicion(desde);
}

std::int64_t EjeVista::inicio(int elemento) const {
    if (elemento < fijos_ || elemento < 0) {
        return origen_ + suma(0, elemento);
    }
    return finPanel() - desplazamiento_ + suma(fijos_, elemento);
}

int EjeVista::en(std::int64_t pixel) const {
    const Eje& eje = indice();
    if (pixel < finPanel()) {
        const int elemento = eje.elementoEn(pixel - origen_);
        return elemento < fijos_ ? elemento : -1;
    }
    const std::int64_t dentro = pixel - (finPanel() - desplazamiento_);
    if (dentro < 0) {
        return -1;
    }
    const int elemento = eje.elementoEn(eje.posicion(fijos_) + dentro);
    return elemento < elementos() ? elemento : -1;
}

int EjeVista::primeroDesplazado() const {
    if (desplazamiento_ < 0) {
        return fijos_;
    }
    const Eje& eje = indice();
    return std::max(fijos_, eje.elementoEn(eje.posicion(fijos_) + desplazamiento_));
}

void EjeVista::visibles(int limite, std::vector<int>& salida) const {
    salida.clear();
    for (int elemento = 0; elemento < fijos_; ++elemento) {
        salida.push_back(elemento);
    }
    const Eje& eje = indice();
    int elemento = primeroDesplazado();
    for (std::int64_t pixel = inicio(elemento); elemento < elementos() && pixel < limite;
         pixel += eje.tamano(elemento), ++elemento) {
        salida.push_back(elemento);
    }
}

} // namespace renderizador
