// Las letras necesitan una aplicación, aunque sin pantalla.

#include "rendering/sustitutos.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication aplicacion(argc, argv);
    renderizador::sustituirFamilias();
    return RUN_ALL_TESTS();
}
