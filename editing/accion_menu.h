#pragma once

#include <string>

namespace editor {

/// Una entrada del menú contextual de las celdas.
struct AccionMenu {
    std::string id;
    std::string etiqueta;
    bool habilitada = true;
    bool separadorAntes = false;
};

} // namespace editor
