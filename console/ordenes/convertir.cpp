#include "console/archivo_formato.h"
#include "console/archivos.h"
#include "console/dialecto.h"
#include "console/hoja_texto.h"
#include "console/ordenes/ordenes.h"
#include "console/progreso.h"
#include "console/texto_terminal.h"
#include "formula/motor.h"

#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

namespace consola {

namespace {

struct Peticion {
    std::vector<std::string> entradas;
    std::string salida;
    std::optional<char> separadorEntrada;
    std::optional<char> separadorSalida;
    Lectura lectura = Lectura::ComoSeEscriben;
    Escritura escritura = Escritura::LoEscrito;
    const std::string* hoja = nullptr;
    const std::string* formato = nullptr;

    bool entraTexto() const { return claseDe(entradas.front()) != ClaseArchivo::Libro; }
    bool saleTexto() const { return claseDe(salida) != ClaseArchivo::Libro; }
};

void avisar(Terminal& terminal, const std::string& mensaje) {
    terminal.errores << "marnel-consola: aviso: " << mensaje << '\n';
}

Resultado leerSeparador(const Argumentos& argumentos, std::string_view opcion,
                        std::optional<char>& separador) {
    if (const std::string* texto = argumentos.valor(opcion)) {
        separador = separadorPedido(*texto);
        if (!separador) {
            return {kMalUso, "«" + *texto + "» no sirve de separador"};
        }
    }
    return {};
}

/// Lo que no casa con lo que entra y lo que sale, para no callar una opción que no hará nada.
std::string opcionQueSobra(const Argumentos& argumentos, const Peticion& peticion) {
    const bool entra = peticion.entraTexto();
    const bool sale = peticion.saleTexto();
    if (argumentos.tiene("--sin-formulas") && !entra) {
        return "--sin-formulas es para leer .tsv o .csv";
    }
    if (argumentos.tiene("--valores") && (entra || !sale)) {
        return "--valores es para pasar de .mrn a .tsv o .csv";
    }
    if (argumentos.tiene("--hoja") && (entra || !sale)) {
        return "--hoja es para pasar de .mrn a .tsv o .csv";
    }
    if (argumentos.tiene("--formato") && entra == sale) {
        return "--formato es para pasar de .mrn a texto o de texto a .mrn";
    }
    if (peticion.entradas.size() > 1 && (!entra || sale)) {
        return "solo un .mrn puede reunir varias entradas";
    }
    return {};
}

Resultado entender(const Argumentos& argumentos, Peticion& peticion) {
    peticion.entradas = argumentos.sueltos();
    peticion.salida = std::move(peticion.entradas.back());
    peticion.entradas.pop_back();
    for (const std::string& ruta : argumentos.sueltos()) {
        if (claseDe(ruta) == ClaseArchivo::Desconocida) {
            return {kMalUso, "«" + ruta + "» no acaba en .mrn, .tsv o .csv"};
        }
    }
    for (const std::string& ruta : peticion.entradas) {
        if (peticion.entradas.size() > 1 && claseDe(ruta) == ClaseArchivo::Libro) {
            return {kMalUso, "varias entradas solo pueden ser .tsv o .csv"};
        }
    }
    std::optional<char> separador;
    for (const auto& [opcion, destino] :
         {std::pair{"--separador", &separador},
          std::pair{"--separador-entrada", &peticion.separadorEntrada}}) {
        if (Resultado leido = leerSeparador(argumentos, opcion, *destino); leido.estado != kBien) {
            return leido;
        }
    }
    if (claseDe(peticion.salida) == ClaseArchivo::Csv) {
        peticion.separadorSalida = separador;
    } else if (separador) {
        peticion.separadorEntrada = separador;
    }
    peticion.lectura =
        argumentos.tiene("--sin-formulas") ? Lectura::Literal : Lectura::ComoSeEscriben;
    peticion.escritura = argumentos.tiene("--valores") ? Escritura::LoVisto : Escritura::LoEscrito;
    peticion.hoja = argumentos.valor("--hoja");
    peticion.formato = argumentos.valor("--formato");
    const std::string sobra = opcionQueSobra(argumentos, peticion);
    return sobra.empty() ? Resultado{} : Resultado{kMalUso, sobra};
}

/// Un archivo de texto de entrada, o la entrada estándar.
class Origen {
  public:
    Origen(const std::string& ruta, Terminal& terminal)
        : archivo_(ruta == "-" ? std::ifstream() : std::ifstream(ruta, std::ios::binary)),
          origen_(ruta == "-" ? terminal.entrada : archivo_) {
        std::error_code error;
        const auto bytes = std::filesystem::file_size(ruta, error);
        tamano_ = error ? 0 : bytes;
    }

    bool abierto() const { return origen_.good(); }
    std::istream& flujo() { return origen_; }
    std::uint64_t tamano() const { return tamano_; } ///< en bytes; 0 si no se sabe

  private:
    std::ifstream archivo_;
    std::istream& origen_;
    std::uint64_t tamano_ = 0;
};

/// Un archivo de texto de salida, o la salida estándar. Lo que quede a medias se borra.
class Destino {
  public:
    Destino(const std::string& ruta, Terminal& terminal)
        : ruta_(ruta),
          archivo_(estandar() ? std::ofstream() : std::ofstream(ruta, std::ios::binary)),
          destino_(estandar() ? terminal.salida : archivo_) {}

    bool abierto() const { return destino_.good(); }
    std::ostream& flujo() { return destino_; }

    /// Cierra; falso si algo no se ha escrito.
    bool cerrar() {
        if (!estandar()) {
            archivo_.close();
        }
        return destino_.good();
    }
    void descartar() {
        archivo_.close();
        std::error_code error;
        if (!estandar() && std::filesystem::is_regular_file(ruta_, error)) {
            std::filesystem::remove(ruta_, error);
        }
    }

  private:
    bool estandar() const { return ruta_ == "-"; }

    const std::string& ruta_;
    std::ofstream archivo_;
    std::ostream& destino_;
};

Dialecto dialectoDeEntrada(const std::string& ruta, const std::optional<char>& pedido,
                           const LectorCampos& lector) {
    if (claseDe(ruta) == ClaseArchivo::Tsv) {
        return kTsv;
    }
    return {pedido ? *pedido : detectarSeparador(lector.comienzo()), true};
}

Dialecto dialectoDeSalida(const Peticion& peticion) {
    if (claseDe(peticion.salida) == ClaseArchivo::Tsv) {
        return kTsv;
    }
    return {peticion.separadorSalida.value_or(kCsv.separador), true};
}

void avisarDeLectura(Terminal& terminal, const std::string& ruta, const LectorCampos& lector) {
    if (lector.habiaWindows1252()) {
        avisar(terminal, "«" + paraTerminal(ruta) +
                             "» no está en UTF-8: lo que no lo es se lee como Windows-1252");
    }
}

Resultado cerrarTexto(Terminal& terminal, const Peticion& peticion, EscritorCampos& escritor,
                      Destino& destino) {
    if (!escritor.terminar() || !destino.cerrar()) {
        destino.descartar();
        return noSeEscribe(peticion.salida);
    }
    if (escritor.camposCambiados() > 0) {
        avisar(terminal, "en " + std::to_string(escritor.camposCambiados()) +
                             " celdas, los saltos de línea y las tabulaciones se han escrito "
                             "como espacios");
    }
    return {};
}

/// De texto a texto pasa campo a campo, sin libro: no hay límite de filas ni de memoria.
Resultado deTextoATexto(const Peticion& peticion, Terminal& terminal) {
    const std::string& ruta = peticion.entradas.front();
    if (esElMismoArchivo(ruta, peticion.salida)) {
        return {kMalUso, "la entrada y la salida son el mismo archivo"};
    }
    Origen origen(ruta, terminal);
    if (!origen.abierto()) {
        return noSeLee(ruta);
    }
    LectorCampos lector(origen.flujo());
    lector.elegirDialecto(dialectoDeEntrada(ruta, peticion.separadorEntrada, lector));
    Campo campo;
    auto lectura = lector.siguiente(campo);
    if (lectura == LectorCampos::Lectura::Error) {
        return noSeLee(ruta, lector.error());
    }
    Destino destino(peticion.salida, terminal);
    if (!destino.abierto()) {
        return noSeEscribe(peticion.salida);
    }
    EscritorCampos escritor(destino.flujo(), dialectoDeSalida(peticion));
    Progreso progreso(terminal, "Convirtiendo");
    for (; lectura == LectorCampos::Lectura::Campo; lectura = lector.siguiente(campo)) {
        escritor.campo(campo.texto);
        if (campo.ultimo) {
            escritor.finDeRegistro();
            progreso.avance(lector.bytesLeidos(), origen.tamano());
        }
        if (!escritor.bien()) {
            break;
        }
    }
    if (lectura == LectorCampos::Lectura::Error) {
        destino.descartar();
        return noSeLee(ruta, lector.error());
    }
    avisarDeLectura(terminal, ruta, lector);
    return cerrarTexto(terminal, peticion, escritor, destino);
}

Resultado leerEntrada(const Peticion& peticion, std::size_t cual, Terminal& terminal,
                      nucleo::Libro& libro, motor_formulas::Motor& motor) {
    const std::string& ruta = peticion.entradas[cual];
    Origen origen(ruta, terminal);
    if (!origen.abierto()) {
        return noSeLee(ruta);
    }
    LectorCampos lector(origen.flujo());
    lector.elegirDialecto(dialectoDeEntrada(ruta, peticion.separadorEntrada, lector));
    Progreso progreso(terminal, "Leyendo");
    const std::string error =
        leerHoja(lector, peticion.lectura, libro, motor, static_cast<int>(cual),
                 [&] { progreso.avance(lector.bytesLeidos(), origen.tamano()); });
    if (!error.empty()) {
        return noSeLee(ruta, error);
    }
    avisarDeLectura(terminal, ruta, lector);
    return {};
}

Resultado deTextoALibro(const Peticion& peticion, Terminal& terminal) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    for (std::size_t i = 1; i < peticion.entradas.size(); ++i) {
        libro.agregarHoja();
    }
    for (std::size_t i = 0; i < peticion.entradas.size(); ++i) {
        if (Resultado leida = leerEntrada(peticion, i, terminal, libro, motor);
            leida.estado != kBien) {
            return leida;
        }
    }
    if (peticion.formato != nullptr) {
        std::ifstream origen(*peticion.formato, std::ios::binary);
        if (!origen) {
            return noSeLee(*peticion.formato);
        }
        if (const std::string error = aplicarFormato(origen, libro); !error.empty()) {
            return noSeLee(*peticion.formato, error);
        }
    }
    return guardarLibro(libro, peticion.salida);
}

Resultado deLibroATexto(const Peticion& peticion, Terminal& terminal) {
    nucleo::Libro libro;
    {
        const Progreso progreso(terminal, "Abriendo");
        if (Resultado abierto = abrirLibro(peticion.entradas.front(), libro);
            abierto.estado != kBien) {
            return abierto;
        }
        if (peticion.escritura == Escritura::LoVisto) {
            motor_formulas::Motor(libro).recalcularTodo();
        }
    }
    int indice = 0;
    if (Resultado elegida = elegirHoja(libro, peticion.hoja, indice); elegida.estado != kBien) {
        return elegida;
    }
    const nucleo::Hoja& hoja = *libro.hojas[static_cast<std::size_t>(indice)];
    Destino destino(peticion.salida, terminal);
    if (!destino.abierto()) {
        return noSeEscribe(peticion.salida);
    }
    const Dialecto dialecto = dialectoDeSalida(peticion);
    EscritorCampos escritor(destino.flujo(), dialecto);
    escribirHoja(hoja, peticion.escritura, dialecto.comillas, escritor);
    if (Resultado cerrado = cerrarTexto(terminal, peticion, escritor, destino);
        cerrado.estado != kBien) {
        return cerrado;
    }
    if (peticion.formato != nullptr) {
        Destino formato(*peticion.formato, terminal);
        if (formato.abierto()) {
            escribirFormato(formato.flujo(), hoja);
        }
        if (!formato.cerrar()) {
            formato.descartar();
            return noSeEscribe(*peticion.formato);
        }
    }
    if (libro.hojas.size() > 1 && peticion.hoja == nullptr) {
        avisar(terminal, "el libro tiene " + std::to_string(libro.hojas.size()) +
                             " hojas y solo se escribe «" + paraTerminal(hoja.nombre) + "»");
    }
    return {};
}

Resultado deLibroALibro(const Peticion& peticion, Terminal& terminal) {
    const Progreso progreso(terminal, "Copiando");
    nucleo::Libro libro;
    if (Resultado abierto = abrirLibro(peticion.entradas.front(), libro); abierto.estado != kBien) {
        return abierto;
    }
    return guardarLibro(libro, peticion.salida);
}

} // namespace

Resultado convertir(const Argumentos& argumentos, Terminal& terminal) {
    Peticion peticion;
    if (Resultado entendida = entender(argumentos, peticion); entendida.estado != kBien) {
        return entendida;
    }
    if (peticion.entraTexto()) {
        return peticion.saleTexto() ? deTextoATexto(peticion, terminal)
                                    : deTextoALibro(peticion, terminal);
    }
    return peticion.saleTexto() ? deLibroATexto(peticion, terminal)
                                : deLibroALibro(peticion, terminal);
}

} // namespace consola
