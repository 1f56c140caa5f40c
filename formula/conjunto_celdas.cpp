#include "formula/conjunto_celdas.h"

#include <bit>

namespace motor_formulas {

namespace {

constexpr std::uint64_t bitDeFila(int fila) {
    return std::uint64_t{1} << (fila & 63);
}

} // namespace

ConjuntoCeldas::Columna* ConjuntoCeldas::columna(int hoja, int col) const {
    const auto indice = static_cast<std::size_t>(hoja);
    if (indice >= hojas_.size() || !hojas_[indice])
        return nullptr;
    return (*hojas_[indice])[static_cast<std::size_t>(col)].get();
}

void ConjuntoCeldas::poner(int hoja, int fila, int col) {
    const auto indice = static_cast<std::size_t>(hoja);
    if (indice >= hojas_.size())
        hojas_.resize(indice + 1);
    if (!hojas_[indice])
        hojas_[indice] = std::make_unique<Hoja>();
    std::unique_ptr<Columna>& sitio = (*hojas_[indice])[static_cast<std::size_t>(col)];
    if (!sitio)
        sitio = std::make_unique<Columna>();
    std::unique_ptr<Pagina>& pagina = sitio->paginas[static_cast<std::size_t>(fila / kFilasPagina)];
    if (!pagina)
        pagina = std::make_unique<Pagina>();
    std::uint64_t& palabra = pagina->palabras[static_cast<std::size_t>(fila % kFilasPagina / 64)];
    if ((palabra & bitDeFila(fila)) == 0)
        ++sitio->cuenta;
    palabra |= bitDeFila(fila);
}

void ConjuntoCeldas::quitar(int hoja, int fila, int col) {
    Columna* const sitio = columna(hoja, col);
    if (sitio == nullptr)
        return;
    Pagina* const pagina = sitio->paginas[static_cast<std::size_t>(fila / kFilasPagina)].get();
    if (pagina == nullptr)
        return;
    std::uint64_t& palabra = pagina->palabras[static_cast<std::size_t>(fila % kFilasPagina / 64)];
    if ((palabra & bitDeFila(fila)) != 0)
        --sitio->cuenta;
    palabra &= ~bitDeFila(fila);
}

bool ConjuntoCeldas::buscar(const nucleo::BloqueDeHoja& bloque, Cursor& cursor) const {
    const nucleo::RangoCeldas& rango = bloque.rango;
    for (; rango.col1 + cursor.col <= rango.col2; ++cursor.col, cursor.fila = 0) {
        const Columna* const sitio = columna(bloque.hoja, rango.col1 + cursor.col);
        if (sitio == nullptr || sitio->cuenta == 0)
            continue;
        for (int fila = rango.fila1 + cursor.fila; fila <= rango.fila2;) {
            const Pagina* const pagina =
                sitio->paginas[static_cast<std::size_t>(fila / kFilasPagina)].get();
            if (pagina == nullptr) {
                fila = (fila / kFilasPagina + 1) * kFilasPagina;
                continue;
            }
            const std::uint64_t palabra =
                pagina->palabras[static_cast<std::size_t>(fila % kFilasPagina / 64)] >> (fila & 63);
            if (palabra == 0) {
                fila = (fila / 64 + 1) * 64;
                continue;
            }
            fila += std::countr_zero(palabra);
            if (fila > rango.fila2)
                break;
            cursor.fila = fila - rango.fila1;
            return true;
        }
    }
    return false;
}

} // namespace motor_formulas
