/// Hace los corpus de partida de los objetivos y el diccionario de las fórmulas en la carpeta que
/// se le diga: así el repositorio no guarda ninguno y cada función nueva entra sola en ellos.

#include "formula/functions/catalogo.h"
#include "formula/motor.h"
#include "model/archivo_libro.h"
#include "tests/model/libros_ejemplo.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/libro_poblado.h"

namespace {

namespace fs = std::filesystem;

class Corpus {
  public:
    Corpus(const fs::path& raiz, const char* objetivo) : carpeta_(raiz / objetivo) {
        fs::create_directories(carpeta_);
    }
    void anadir(std::string_view bytes) {
        std::ofstream archivo(carpeta_ / ("semilla-" + std::to_string(cuantas_++)),
                              std::ios::binary);
        archivo.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

  private:
    fs::path carpeta_;
    int cuantas_ = 0;
};

/// Formas de escribir que ningún ejemplo de función enseña; sin el "=".
const std::vector<std::string> kFormulas = {
    "A1+B1*C1^2-D1/E1",
    "-A1%",
    "A1&\" y \"&B1",
    "A1<>B1",
    "A1>=1,5e3",
    "$A$1+A$1+$A1",
    "SUMA($A1:B$4;A:A)",
    "'Hoja 2'!A1+'Hoja 2'!A1:B2",
    "Hoja2!ZZ65536",
    "SUMA(A1:ZZ65536)",
    "SI(A1>0;SI.ERROR(1/0;\"x\");VERDADERO)",
    "((((1))))",
    "\"comillas \"\" dentro\"",
    "no_existe(1;2;)",
    "BUSCARV(2;A1:E4;3;FALSO)",
    "SUMAR.SI(A1:A4;\">0\";B1:B4)",
    "CONTAR.SI(A1:E4;\"a*?~*\")",
    "REDONDEAR(1e308*10;-400)",
    "FECHA(2024;2;30)",
    "A1:B2",
    "1,2,3",
    "#¡REF!",
    "J10",
};

const std::vector<std::string> kPegados = {
    "1\t2\t3\n4\t5\t6\n", "=A1\t=SUMA(A1:B2)\r\n=C1\t1/2/2024", "\t\t\n\n\t",
    "una línea",          "15%\t$ 3,50\t1.234,5\t-0\tinf\tnan", "=\t==\t=1+\t=(\n\"a\tb\"",
    "\xff\xfe\t\xc3",
};

const std::vector<std::string> kSeparados = {
    "a;b;c\n1;2;3\n",
    "a,b,c\r\n\"x,y\",\"con \"\"comillas\"\"\",\"dos\nlíneas\"\r\n",
    "a\tb\n\t\n",
    "\xef\xbb\xbf"
    "ñ;á\n=A1;=SUMA(A1:B1)\n",
    "caf\xe9;\x80\n",
    "\"sin cerrar",
    "a\rb\rc",
};

std::string bytesDe(const nucleo::Libro& libro) {
    nucleo::EscritorBytes salida;
    nucleo::componerLibro(libro, salida);
    return {reinterpret_cast<const char*>(salida.datos()), salida.tamano()};
}

/// Un libro con esas fórmulas, una por fila de la columna D.
std::string libroCon(const std::vector<std::string>& formulas) {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    fuzz::poblar(libro, motor);
    for (std::size_t i = 0; i < formulas.size(); ++i)
        motor.establecerCelda(0, static_cast<int>(i), 5, "=" + formulas[i]);
    libro.hojas[0]->fusionar(2, 2, 3, 4);
    libro.hojas[0]->filasInmovilizadas = 1;
    libro.hojas[0]->anchos[1] = 200;
    return bytesDe(libro);
}

void sembrarLibros(Corpus& corpus, const std::vector<std::string>& formulas) {
    corpus.anadir(bytesDe(nucleo::Libro()));
    corpus.anadir(bytesDe(prueba::libroCompleto()));
    for (std::size_t i = 0; i + 6 <= formulas.size(); i += 6)
        corpus.anadir(libroCon({formulas.begin() + static_cast<std::ptrdiff_t>(i),
                                formulas.begin() + static_cast<std::ptrdiff_t>(i) + 6}));
    nucleo::Libro suelto;
    nucleo::Celda& celda = suelto.hojas[0]->celdaMut(0, 0);
    celda.tipo = nucleo::TipoCelda::Formula;
    celda.entrada = "=A1:B2";
    celda.formato.colorFondo = 0xffffff00;
    suelto.hojas[0]->fusiones = {{0, 0, 1, 1}};
    corpus.anadir(bytesDe(suelto));
}

/// Sucesiones de decisiones: cada operación sola, y muchas mezcladas.
void sembrarOperaciones(Corpus& corpus) {
    for (int operacion = 0; operacion < 24; ++operacion)
        corpus.anadir(std::string(1, static_cast<char>(operacion)) + "\1\2\3\4\5\6\7");
    std::mt19937 azar(7);
    for (int i = 0; i < 64; ++i) {
        std::string bytes;
        for (auto n = 8 + azar() % 40; n > 0; --n)
            bytes.push_back(static_cast<char>(azar() % 24));
        corpus.anadir(bytes);
    }
    for (const std::string& formula : {"=A1+B2", "=SUMA(A1:C3)", "=B2&\"x\"", "12,5"})
        corpus.anadir(std::string("\3\0\1\0\2", 5) + static_cast<char>(formula.size()) + formula +
                      std::string("\x09\0\1\0\2\x13\x14", 7));
}

/// Una palabra del diccionario, que solo admite ASCII: lo demás va en hexadecimal.
std::string entreComillas(std::string_view palabra) {
    std::string linea = "\"";
    for (const char letra : palabra) {
        const auto byte = static_cast<unsigned char>(letra);
        if (byte >= 0x20 && byte < 0x7f && letra != '"' && letra != '\\') {
            linea += letra;
            continue;
        }
        char hexadecimal[5];
        std::snprintf(hexadecimal, sizeof hexadecimal, "\\x%02X", static_cast<unsigned>(byte));
        linea += hexadecimal;
    }
    return linea + "\"\n";
}

bool escribirDiccionario(const fs::path& ruta) {
    std::ofstream diccionario(ruta);
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones())
        diccionario << entreComillas(std::string(funcion.nombre) + "(");
    for (const char* palabra :
         {"A1", "$B$2", "A1:B4", "ZZ65536", "Hoja2!", "'Hoja 2'!", "VERDADERO", "FALSO", "<>",
          ">=", "<=", "1e308", "0,5", "%", "&", "\"\"", ";", "MRNL", "\xc3\xb1"})
        diccionario << entreComillas(palabra);
    return diccionario.flush().good();
}

} // namespace

int main(int cuantos, char** argumentos) {
    if (cuantos != 2) {
        std::fprintf(stderr, "uso: marnel_fuzz_semillas CARPETA\n");
        return 1;
    }
    const fs::path raiz = argumentos[1];
    std::vector<std::string> formulas = kFormulas;
    for (const motor_formulas::Funcion& funcion : motor_formulas::funciones())
        formulas.emplace_back(funcion.ejemplo.substr(1));

    Corpus formula(raiz, "formula");
    for (const std::string& texto : formulas)
        formula.anadir(texto);
    Corpus pegado(raiz, "pegado");
    for (const std::string& texto : kPegados) {
        pegado.anadir(std::string("\0\0\1\0\0\2", 6) + texto);
        pegado.anadir(std::string("\1\0\4\1\0\3", 6) + texto);
    }
    Corpus separados(raiz, "separados");
    for (const std::string& texto : kSeparados) {
        for (const char primero : {'\0', '\1', '\2', '\3'})
            separados.anadir(primero + texto);
    }
    Corpus operaciones(raiz, "operaciones");
    sembrarOperaciones(operaciones);
    Corpus libro(raiz, "libro");
    sembrarLibros(libro, formulas);
    return escribirDiccionario(raiz / "formula.dic") ? 0 : 1;
}
