#include "rendering/sustitutos.h"

#include <QFont>

namespace renderizador {

void sustituirFamilias() {
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), QStringLiteral("Open Sans"));
}

} // namespace renderizador
