// Las láminas se dibujan con letras, que necesitan una aplicación, aunque sin pantalla.

#include <gtest/gtest.h>

#include "printing/aplicacion.h"

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const impresion::Aplicacion aplicacion(argc, argv);
    return RUN_ALL_TESTS();
}
