#include "formula/compilador.h"

#include "formula/emisor.h"
#include "formula/lexico.h"

#include <array>
#include <limits>
#include <string>

namespace motor_formulas {

namespace {

// Lo que espera en la pila de operadores: un operador binario o un signo por aplicar, o un
// paréntesis por cerrar.
constexpr std::uint8_t kFondo = 0xfd; ///< bajo todos los demás: la pila nunca está vacía
constexpr std::uint8_t kParentesis = 0xfe;
constexpr std::uint8_t kLlamada = 0xff;

// Más alto une más. Los signos unen más que "^"; "%" se aplica en cuanto aparece.
constexpr std::array<std::uint8_t, 12> kPrecedencia = {
    3, // Suma
    3, // Resta
    4, // Producto
    4, // Cociente
    5, // Potencia
    2, // Concatenar
    1, // Igual
    1, // Distinto
    1, // Menor
    1, // Mayor
    1, // MenorIgual
    1, // MayorIgual
};

bool esSigno(std::uint8_t operador) {
    return operador == static_cast<std::uint8_t>(Operacion::Negar) ||
           operador == static_cast<std::uint8_t>(Operacion::Positivo);
}

} // namespace

/// Analizador de precedencia de operadores sin recursión: los operadores que esperan su operando
/// derecho y los paréntesis abiertos están en una pila de bytes en memoria dinámica.
class Compilador {
  public:
    Compilador(std::string_view formula, const nucleo::Libro* libro, int hoja, Codigo& salida)
        : lexico_(formula), emisor_(formula, libro, hoja, salida), operadores_(salida.operadores_) {
        operadores_.clear();
        operadores_.push_back(kFondo);
    }

    bool leer() {
        avanzar();
        for (;;) {
            switch (leerOperando()) {
            case Paso::Fallo:
                return false;
            case Paso::FaltaOperando:
                continue;
            default:
                break;
            }
            switch (seguirTrasOperando()) {
            case Paso::Fallo:
                return false;
            case Paso::Completo:
                return true;
            default:
                break;
            }
        }
    }

  private:
    enum class Paso { Fallo, FaltaOperando, Completo };

    Paso leerOperando();
    Paso leerReferencia();
    Paso leerNombre();
    Paso seguirTrasOperando();
    void aplicarSignos();
    void aplicarBinarios(std::uint8_t minimo);
    void avanzar() { lexico_.siguiente(actual_); }
    bool esPorcentaje() const {
        return actual_.tipo == Token::Operador && actual_.operacion == Operacion::Porcentaje;
    }

    Lexico lexico_;
    Lexema actual_;
    Emisor emisor_;
    std::vector<std::uint8_t>& operadores_;
};

/// Lee un operando, o aquello que lo precede: un signo, un paréntesis o el comienzo de una llamada.
Compilador::Paso Compilador::leerOperando() {
    switch (actual_.tipo) {
    case Token::Numero:
        emisor_.numero(actual_.numero);
        break;
    case Token::Texto: {
        std::string_view contenido = lexico_.texto(actual_);
        contenido = contenido.substr(1, contenido.size() - 2);
        if (actual_.comillasDobles)
            emisor_.textoConComillas(contenido);
        else
            emisor_.texto(contenido);
        break;
    }
    case Token::Error:
        emisor_.error(actual_.error);
        break;
    case Token::Referencia:
        return leerReferencia();
    case Token::Nombre:
        return leerNombre();
    case Token::ParenAbre:
        operadores_.push_back(kParentesis);
        avanzar();
        return Paso::FaltaOperando;
    case Token::Operador: {
        const bool menos = actual_.operacion == Operacion::Resta;
        if (!menos && actual_.operacion != Operacion::Suma)
            return Paso::Fallo;
        operadores_.push_back(
            static_cast<std::uint8_t>(menos ? Operacion::Negar : Operacion::Positivo));
        avanzar();
        return Paso::FaltaOperando;
    }
    default:
        return Paso::Fallo;
    }
    avanzar();
    return Paso::Completo;
}

Compilador::Paso Compilador::leerReferencia() {
    const Esquina primera{actual_.direccion, actual_.hoja};
    avanzar();
    if (actual_.tipo != Token::DosPuntos) {
        emisor_.celda(primera);
        return Paso::Completo;
    }
    avanzar();
    if (actual_.tipo != Token::Referencia)
        return Paso::Fallo;
    emisor_.rango(primera, {actual_.direccion, actual_.hoja.empty() ? primera.hoja : actual_.hoja});
    avanzar();
    return Paso::Completo;
}

Compilador::Paso Compilador::leerNombre() {
    const std::string_view escrito = lexico_.texto(actual_);
    // Ningún nombre conocido llega a este largo; los demás se normalizan en memoria dinámica.
    std::array<char, 32> corto;
    std::string largo;
    char* destino = corto.data();
    if (escrito.size() > corto.size()) {
        largo.resize(escrito.size());
        destino = largo.data();
    }
    const std::string_view nombre(destino, normalizarEn(escrito, destino));
    avanzar();
    if (nombre == "VERDADERO" || nombre == "FALSO") {
        emisor_.logico(nombre.front() == 'V');
        return Paso::Completo;
    }
    if (actual_.tipo != Token::ParenAbre) {
        emisor_.error(nucleo::ErrorCelda::Nombre);
        return Paso::Completo;
    }
    emisor_.abrirLlamada(nombre);
    avanzar();
    if (actual_.tipo == Token::ParenCierra) {
        emisor_.cerrarLlamada(false);
        avanzar();
        return Paso::Completo;
    }
    operadores_.push_back(kLlamada);
    return Paso::FaltaOperando;
}

/// Con un operando recién leído, aplica lo que ya puede aplicarse y llega al operando siguiente o
/// al final.
Compilador::Paso Compilador::seguirTrasOperando() {
    for (;;) {
        aplicarSignos();
        switch (actual_.tipo) {
        case Token::Operador: {
            const Operacion operacion = actual_.operacion;
            const std::uint8_t propia = kPrecedencia[static_cast<std::size_t>(operacion)];
            // "^" asocia por la derecha: espera también a otro "^".
            aplicarBinarios(operacion == Operacion::Potencia ? std::uint8_t(propia + 1) : propia);
            operadores_.push_back(static_cast<std::uint8_t>(operacion));
            avanzar();
            return Paso::FaltaOperando;
        }
        case Token::PuntoComa:
            aplicarBinarios(0);
            if (operadores_.back() != kLlamada)
                return Paso::Fallo;
            emisor_.separarArgumento();
            avanzar();
            return Paso::FaltaOperando;
        case Token::ParenCierra:
            aplicarBinarios(0);
            if (operadores_.back() == kFondo)
                return Paso::Fallo;
            if (operadores_.back() == kLlamada)
                emisor_.cerrarLlamada(true);
            operadores_.pop_back();
            avanzar();
            break;
        case Token::Fin:
            aplicarBinarios(0);
            return operadores_.back() == kFondo ? Paso::Completo : Paso::Fallo;
        default:
            return Paso::Fallo;
        }
    }
}

/// Un signo une más que los "%" que siguen a su operando, y estos más que los signos anteriores.
inline void Compilador::aplicarSignos() {
    if (esSigno(operadores_.back())) {
        emisor_.unaria(static_cast<Operacion>(operadores_.back()));
        operadores_.pop_back();
    }
    while (esPorcentaje()) {
        emisor_.unaria(Operacion::Porcentaje);
        avanzar();
    }
    while (esSigno(operadores_.back())) {
        emisor_.unaria(static_cast<Operacion>(operadores_.back()));
        operadores_.pop_back();
    }
}

/// Aplica los operadores binarios en espera que unen al menos tanto como `minimo`, hasta el último
/// paréntesis abierto.
inline void Compilador::aplicarBinarios(std::uint8_t minimo) {
    for (;;) {
        const auto operacion = static_cast<Operacion>(operadores_.back());
        if (!esBinaria(operacion) || kPrecedencia[operadores_.back()] < minimo)
            return;
        emisor_.binaria(operacion);
        operadores_.pop_back();
    }
}

bool compilar(std::string_view formula, const nucleo::Libro* libro, int hoja, Codigo& salida) {
    // Las posiciones y los destinos de los saltos son de 32 bits.
    if (formula.size() > std::numeric_limits<std::int32_t>::max())
        return false;
    return Compilador(formula, libro, hoja, salida).leer();
}

} // namespace motor_formulas
