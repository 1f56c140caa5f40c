#include "formula/motor.h"

#include "formula/precedentes.h"
#include "formula/recalculo.h"
#include "formula/reescritura.h"
#include "model/fechas.h"
#include "model/numeros.h"

#include <new>
#include <string_view>
#include <utility>

namespace motor_formulas {

namespace {

using nucleo::Celda;
using nucleo::FormatoNumero;
using nucleo::TipoCelda;
using nucleo::Valor;

/// Da a la celda el contenido de un texto que no está vacío. Las fechas se prueban antes que los
/// números: un texto que sirve para las dos cosas es una fecha.
void clasificar(const std::string& texto, Celda& celda) {
    celda.entrada = texto;
    celda.numero = 0;
    celda.valor = {};
    if (texto.size() > 1 && texto.front() == '=') {
        celda.tipo = TipoCelda::Formula;
        return;
    }
    nucleo::Formato sugerido;
    const bool sinFormato = celda.formato.numero == FormatoNumero::General;
    if (nucleo::parsearFecha(texto, celda.numero)) {
        celda.tipo = TipoCelda::Numero;
        if (sinFormato)
            celda.formato.numero = FormatoNumero::Fecha;
    } else if (nucleo::parsearNumeroUsuario(texto, celda.numero, &sugerido)) {
        celda.tipo = TipoCelda::Numero;
        if (sinFormato && sugerido.numero != FormatoNumero::General) {
            celda.formato.numero = sugerido.numero;
            celda.formato.decimales = sugerido.decimales;
            celda.formato.separadorMiles = sugerido.separadorMiles;
        }
    } else {
        celda.tipo = TipoCelda::Texto;
        celda.numero = 0;
        celda.valor = Valor::deTexto(texto);
        return;
    }
    celda.valor = Valor::deNumero(celda.numero);
}

} // namespace

Motor::Motor(nucleo::Libro& libro)
    : libro_(libro), recalculo_(std::make_unique<Recalculo>(libro)) {}

Motor::~Motor() = default;

Motor::Lote::Lote(Motor& motor) : motor_(motor) {
    ++motor_.lotesAbiertos_;
}

Motor::Lote::~Lote() {
    --motor_.lotesAbiertos_;
    if (motor_.lotesAbiertos_ == 0)
        motor_.recalcularPendientes();
}

void Motor::establecerCelda(int hoja, int fila, int col, const std::string& texto) {
    if (hoja < 0 || static_cast<std::size_t>(hoja) >= libro_.hojas.size())
        return;
    if (texto.empty()) {
        limpiarCelda(hoja, fila, col);
        return;
    }
    clasificar(texto, libro_.hojas[static_cast<std::size_t>(hoja)]->celdaMut(fila, col));
    actualizarDependencias(hoja, fila, col);
    libro_.modificado = true;
    recalcularTrasEscribir(nucleo::claveCelda(hoja, fila, col));
}

void Motor::limpiarCelda(int hoja, int fila, int col) {
    if (hoja < 0 || static_cast<std::size_t>(hoja) >= libro_.hojas.size())
        return;
    nucleo::Hoja& destino = *libro_.hojas[static_cast<std::size_t>(hoja)];
    if (std::as_const(destino).celda(fila, col) == nullptr)
        return;
    const std::uint64_t clave = nucleo::claveCelda(hoja, fila, col);
    libro_.quitarDependencias(clave);
    Celda& celda = destino.celdaMut(fila, col);
    if (celda.formato.esPredeterminado()) {
        destino.quitarCelda(fila, col);
    } else {
        const nucleo::Formato formato = celda.formato;
        celda = {};
        celda.formato = formato;
    }
    libro_.modificado = true;
    recalcularTrasEscribir(clave);
}

void Motor::recalcularTrasEscribir(std::uint64_t clave) {
    pendientes_.push_back(clave);
    if (lotesAbiertos_ == 0)
        recalcularPendientes();
}

void Motor::recalcularPendientes() {
    if (pendientes_.empty())
        return;
    recalculo_->cascada(pendientes_);
    pendientes_.clear();
}

void Motor::recalcularCascada(unsigned long long clave) {
    const std::uint64_t claves[] = {clave};
    recalculo_->cascada(claves);
}

void Motor::recalcularTodo() {
    recalculo_->todo();
    pendientes_.clear();
}

bool Motor::recalcularCargado() {
    try {
        recalcularTodo();
        return true;
    } catch (const std::bad_alloc&) {
        libro_.reiniciar();
        recalcularTodo();
        return false;
    }
}

nucleo::Valor Motor::evaluarFormula(int hoja, const std::string& texto) {
    return recalculo_->evaluar(hoja, texto);
}

std::vector<unsigned long long> Motor::extraerPrecedentes(int hoja, const std::string& texto) {
    return clavesDe(recalculo_->precedentes(hoja, texto));
}

void Motor::actualizarDependencias(int hoja, int fila, int col) {
    const std::uint64_t clave = nucleo::claveCelda(hoja, fila, col);
    const Celda* celda = nullptr;
    if (hoja >= 0 && static_cast<std::size_t>(hoja) < libro_.hojas.size())
        celda = std::as_const(*libro_.hojas[static_cast<std::size_t>(hoja)]).celda(fila, col);
    if (celda == nullptr || celda->tipo != TipoCelda::Formula)
        libro_.quitarDependencias(clave);
    else
        libro_.grafo().establecerBloques(clave, recalculo_->precedentes(hoja, celda->entrada));
}

std::string Motor::ajustarReferencias(const std::string& texto, int dFilas, int dColumnas) const {
    return motor_formulas::ajustarReferencias(texto, dFilas, dColumnas);
}

std::string Motor::ajustarPorEstructura(const std::string& texto, const std::string& hojaFormula,
                                        const std::string& hojaEstructura, bool filas, int inicio,
                                        int cantidad) const {
    return motor_formulas::ajustarPorEstructura(texto, hojaFormula, hojaEstructura, filas, inicio,
                                                cantidad);
}

void Motor::reescribirTrasEstructura(const std::string& hoja, bool filas, int inicio,
                                     int cantidad) {
    reescribirFormulas([&](std::string_view texto, const nucleo::Hoja& suya, std::string& salida) {
        return motor_formulas::ajustarPorEstructura(texto, suya.nombre, hoja, filas, inicio,
                                                    cantidad, salida);
    });
    libro_.modificado = true;
    recalcularTodo();
}

void Motor::renombrarHoja(int hoja, const std::string& nuevoNombre) {
    if (hoja < 0 || static_cast<std::size_t>(hoja) >= libro_.hojas.size())
        return;
    const std::string viejo = libro_.hojas[static_cast<std::size_t>(hoja)]->nombre;
    if (!libro_.renombrarHoja(hoja, nuevoNombre))
        return;
    reescribirFormulas([&](std::string_view texto, const nucleo::Hoja&, std::string& salida) {
        return renombrarEnFormula(texto, viejo, nuevoNombre, salida);
    });
    recalcularTodo();
}

void Motor::reescribirFormulas(
    const std::function<bool(std::string_view, const nucleo::Hoja&, std::string&)>& reescribir) {
    struct Lugar {
        int fila;
        int col;
    };
    // El texto de una fórmula no suele estar en la caché: se pide unas cuantas antes de leerlo.
    constexpr std::size_t kAdelanto = 6;
    std::vector<Lugar> lugares;
    std::string nueva;
    for (const auto& hoja : libro_.hojas) {
        lugares.clear();
        std::as_const(*hoja).celdas.recorrerFormulas([&](int fila, int col, const Celda&) {
            lugares.push_back({fila, col});
        });
        for (std::size_t i = 0; i < lugares.size(); ++i) {
            if (i + kAdelanto < lugares.size()) {
                const Lugar& proximo = lugares[i + kAdelanto];
                __builtin_prefetch(
                    std::as_const(*hoja).celda(proximo.fila, proximo.col)->entrada.data());
            }
            const auto [fila, col] = lugares[i];
            const std::string& entrada = std::as_const(*hoja).celda(fila, col)->entrada;
            // Solo se escribe la que cambia: las demás siguen en los bloques que comparten.
            if (!reescribir(textoDeFormula(entrada), *hoja, nueva))
                continue;
            std::string& destino = hoja->celdaMut(fila, col).entrada;
            if (destino.capacity() <= nueva.size()) {
                destino = std::string(); // al crecer se quedaría con el doble de memoria
                destino.reserve(nueva.size() + 1);
            }
            destino = "=";
            destino += nueva;
        }
    }
}

} // namespace motor_formulas
