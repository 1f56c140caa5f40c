#pragma once

namespace renderizador {

/// Dice a Qt con qué familia se dibuja la de la cuadrícula donde no está instalada. Se llama una
/// vez, con la aplicación ya creada y antes de pintar.
void sustituirFamilias();

} // namespace renderizador
