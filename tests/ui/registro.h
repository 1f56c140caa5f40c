#pragma once

#include <QObject>

#include <memory>
#include <vector>

/// Cada archivo de pruebas de la ventana apunta aquí su clase; el programa las ejecuta todas.
namespace pruebas {

using Fabrica = std::unique_ptr<QObject> (*)();

inline std::vector<Fabrica>& fabricas() {
    static std::vector<Fabrica> todas;
    return todas;
}

struct Registro {
    explicit Registro(Fabrica fabrica) { fabricas().push_back(fabrica); }
};

} // namespace pruebas

#define REGISTRAR_PRUEBAS(Clase)                                                                   \
    static const pruebas::Registro registro##Clase(                                                \
        []() -> std::unique_ptr<QObject> { return std::make_unique<Clase>(); })
