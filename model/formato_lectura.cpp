#include "model/formato_archivo.h"

#include <bit>
#include <cstring>
#include <utility>

namespace nucleo {

namespace {

constexpr std::size_t kInicioCelda = 8 + 1 + 4;
constexpr std::size_t kColaCelda = 8 + 4 + 4 + 4 + 1;

bool leerCuenta(LectorBytes& entrada, std::uint32_t maximo, std::uint32_t& cuenta) {
    return entrada.leer(cuenta) && cuenta <= maximo;
}

bool leerTamanos(LectorBytes& entrada, MapaTamanos& tamanos) {
    std::uint32_t cuenta = 0;
    if (!leerCuenta(entrada, kMaximoTamanos, cuenta))
        return false;
    for (std::uint32_t i = 0; i < cuenta; ++i) {
        const unsigned char* bytes = entrada.tomar(8);
        if (bytes == nullptr)
            return false;
        const auto clave = LectorBytes::desempaquetar<std::uint32_t>(bytes);
        const auto tamano = LectorBytes::desempaquetar<std::uint32_t>(bytes + 4);
        tamanos[static_cast<std::int32_t>(clave)] = static_cast<std::int32_t>(tamano);
    }
    return true;
}

bool leerFusiones(LectorBytes& entrada, std::vector<RangoFusion>& fusiones) {
    std::uint32_t cuenta = 0;
    if (!leerCuenta(entrada, kMaximoFusiones, cuenta))
        return false;
    for (std::uint32_t i = 0; i < cuenta; ++i) {
        RangoFusion fusion;
        if (!entrada.leer(fusion.fila1) || !entrada.leer(fusion.col1) ||
            !entrada.leer(fusion.fila2) || !entrada.leer(fusion.col2))
            return false;
        fusiones.push_back(fusion);
    }
    return true;
}

Formato formatoDe(const unsigned char* bytes) {
    Formato formato;
    formato.numero = static_cast<FormatoNumero>(bytes[0]);
    formato.decimales = bytes[1];
    formato.separadorMiles = bytes[2] != 0;
    formato.negrita = (bytes[3] & 1U) != 0;
    formato.cursiva = (bytes[3] & 2U) != 0;
    formato.subrayado = (bytes[3] & 4U) != 0;
    formato.estiloExtra = (bytes[3] & 8U) != 0;
    formato.colorTexto = LectorBytes::desempaquetar<std::uint32_t>(bytes + 4);
    formato.colorFondo = LectorBytes::desempaquetar<std::uint32_t>(bytes + 8);
    formato.alineacion = static_cast<AlineacionH>(bytes[12]);
    return formato;
}

bool leerCabecera(LectorBytes& entrada, std::uint32_t& cuentaHojas, std::int32_t& activa) {
    const unsigned char* magia = entrada.tomar(kMagia.size());
    std::uint32_t version = 0;
    return magia != nullptr && std::memcmp(magia, kMagia.data(), kMagia.size()) == 0 &&
           entrada.leer(version) && version == kVersion &&
           leerCuenta(entrada, kMaximoHojas, cuentaHojas) && cuentaHojas > 0 &&
           entrada.leer(activa);
}

} // namespace

bool leerTextoContado(LectorBytes& entrada, std::string& texto) {
    std::uint32_t largo = 0;
    return leerCuenta(entrada, kMaximoTexto, largo) && entrada.leerTexto(texto, largo);
}

bool leerRegistroCelda(LectorBytes& entrada, AlmacenCeldas::Anexador& celdas) {
    const unsigned char* inicio = entrada.tomar(kInicioCelda);
    if (inicio == nullptr)
        return false;
    const auto clave = LectorBytes::desempaquetar<std::uint64_t>(inicio);
    const auto largo = LectorBytes::desempaquetar<std::uint32_t>(inicio + 9);
    if (largo > kMaximoTexto)
        return false;
    Celda& celda = celdas.anexar(clave);
    celda.tipo = static_cast<TipoCelda>(inicio[8]);
    if (!entrada.leerTexto(celda.entrada, largo))
        return false;
    const unsigned char* cola = entrada.tomar(kColaCelda);
    if (cola == nullptr)
        return false;
    celda.numero = std::bit_cast<double>(LectorBytes::desempaquetar<std::uint64_t>(cola));
    celda.formato = formatoDe(cola + 8);
    return true;
}

bool leerRegistroHoja(LectorBytes& entrada, Hoja& hoja) {
    std::uint32_t cuentaCeldas = 0;
    if (!leerTextoContado(entrada, hoja.nombre) || !entrada.leer(hoja.filasInmovilizadas) ||
        !entrada.leer(hoja.columnasInmovilizadas) || !leerTamanos(entrada, hoja.anchos) ||
        !leerTamanos(entrada, hoja.altos) || !leerFusiones(entrada, hoja.fusiones) ||
        !leerCuenta(entrada, kMaximoCeldas, cuentaCeldas))
        return false;
    AlmacenCeldas::Anexador celdas(hoja.celdas);
    for (std::uint32_t i = 0; i < cuentaCeldas; ++i) {
        if (!leerRegistroCelda(entrada, celdas))
            return false;
    }
    celdas.terminar();
    return true;
}

bool leerLibro(LectorBytes& entrada, std::vector<std::unique_ptr<Hoja>>& hojas,
               std::int32_t& activa) {
    std::uint32_t cuentaHojas = 0;
    if (!leerCabecera(entrada, cuentaHojas, activa))
        return false;
    for (std::uint32_t i = 0; i < cuentaHojas; ++i) {
        auto hoja = std::make_unique<Hoja>();
        if (!leerRegistroHoja(entrada, *hoja))
            return false;
        hojas.push_back(std::move(hoja));
    }
    return true;
}

} // namespace nucleo
