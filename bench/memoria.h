#pragma once

#include "model/bloque_celdas.h"

#include <cstddef>
#include <malloc.h>

/// Bytes pedidos y no devueltos.
inline std::size_t memoriaPedida() {
    const struct mallinfo2 datos = mallinfo2();
    return datos.uordblks + datos.hblkhd + nucleo::BloqueCeldas<6>::reservaBloques().ocupados();
}
