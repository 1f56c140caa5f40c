#include "editing/cotas.h"
#include "editing/editor.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace editor {

using nucleo::Hoja;

namespace {

constexpr std::size_t kPasosMaximos = 15;

} // namespace

Editor::Estado Editor::capturar() const {
    Estado estado;
    estado.hojas.reserve(libro_.hojas.size());
    for (const std::unique_ptr<Hoja>& hoja : libro_.hojas)
        estado.hojas.push_back(hoja ? *hoja : Hoja{});
    estado.hojaActiva = libro_.hojaActiva;
    estado.seleccion = seleccion_;
    return estado;
}

void Editor::restaurar(const Estado& estado) {
    aplicarEstado(estado);
}

void Editor::aplicarEstado(Estado estado) {
    // Las hojas que siguen existiendo conservan su objeto: quien las esté mostrando puede guardar
    // un puntero.
    libro_.hojas.resize(estado.hojas.size());
    for (std::size_t i = 0; i < estado.hojas.size(); ++i) {
        std::unique_ptr<Hoja>& hoja = libro_.hojas[i];
        if (hoja)
            *hoja = std::move(estado.hojas[i]);
        else
            hoja = std::make_unique<Hoja>(std::move(estado.hojas[i]));
    }
    if (libro_.hojas.empty())
        libro_.agregarHoja();
    const int ultima = static_cast<int>(libro_.hojas.size()) - 1;
    libro_.hojaActiva = std::clamp(estado.hojaActiva, 0, ultima);
    seleccion_ = {acotarFila(estado.seleccion.anclaFila), acotarColumna(estado.seleccion.anclaCol),
                  acotarFila(estado.seleccion.activaFila),
                  acotarColumna(estado.seleccion.activaCol)};
    libro_.modificado = true;
    motor_->recalcularTodo();
}

void Editor::registrar(Paso paso) {
    historialDeshacer_.push_back(std::move(paso));
    if (historialDeshacer_.size() > kPasosMaximos)
        historialDeshacer_.pop_front();
    historialRehacer_.clear();
}

void Editor::registrarHistorial() {
    registrar({capturar(), {}, {}});
}

void Editor::recorrerHistorial(std::deque<Paso>& desde, std::deque<Paso>& hacia) {
    if (desde.empty())
        return;
    Paso paso = std::move(desde.back());
    desde.pop_back();
    hacia.push_back({capturar(), paso.hoja, paso.desdeElVecino.inverso()});
    aplicarEstado(std::move(paso.estado));
}

void Editor::deshacer() {
    recorrerHistorial(historialDeshacer_, historialRehacer_);
}

void Editor::rehacer() {
    recorrerHistorial(historialRehacer_, historialDeshacer_);
}

void Editor::olvidarTodo() {
    historialDeshacer_.clear();
    historialRehacer_.clear();
    celdasCopiadas_.clear();
    fusionesCopiadas_.clear();
    seleccion_ = {};
}

} // namespace editor
