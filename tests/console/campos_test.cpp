#include "console/codificacion.h"
#include "console/dialecto.h"
#include "console/escritor_campos.h"
#include "console/lector_campos.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using consola::Dialecto;
using consola::kCsv;
using consola::kTsv;
using consola::LectorCampos;
using Registros = std::vector<std::vector<std::string>>;

constexpr Dialecto kComas{',', true};

struct Leido {
    Registros registros;
    std::string error;
    bool windows1252 = false;
};

Leido leer(const std::string& bytes, const Dialecto& dialecto,
           std::size_t bloque = LectorCampos::kBloque) {
    std::istringstream origen(bytes);
    LectorCampos lector(origen, bloque);
    lector.elegirDialecto(dialecto);
    Leido leido;
    consola::Campo campo;
    bool empieza = true;
    while (true) {
        const auto lectura = lector.siguiente(campo);
        if (lectura != LectorCampos::Lectura::Campo) {
            leido.error = lectura == LectorCampos::Lectura::Error ? lector.error() : "";
            leido.windows1252 = lector.habiaWindows1252();
            return leido;
        }
        if (empieza) {
            leido.registros.emplace_back();
        }
        EXPECT_EQ(campo.fila, static_cast<std::int64_t>(leido.registros.size()) - 1);
        EXPECT_EQ(campo.columna, static_cast<std::int64_t>(leido.registros.back().size()));
        leido.registros.back().push_back(campo.texto);
        empieza = campo.ultimo;
    }
}

std::string escribir(const Registros& registros, const Dialecto& dialecto) {
    std::ostringstream destino;
    consola::EscritorCampos escritor(destino, dialecto);
    for (const auto& registro : registros) {
        for (const std::string& texto : registro) {
            escritor.campo(texto);
        }
        escritor.finDeRegistro();
    }
    EXPECT_TRUE(escritor.terminar());
    return destino.str();
}

TEST(LectorCampos, LeerCsv) {
    const struct {
        std::string bytes;
        Registros registros;
    } casos[] = {
        {"", {}},
        {"\n", {{""}}},
        {"a", {{"a"}}},
        {"a\n", {{"a"}}},
        {"a;", {{"a", ""}}},
        {";", {{"", ""}}},
        {";\n;", {{"", ""}, {"", ""}}},
        {"a;b\nc;d\n", {{"a", "b"}, {"c", "d"}}},
        {"a;b\r\nc;d\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a\rb\r\rc", {{"a"}, {"b"}, {""}, {"c"}}},
        {"a\n\nb", {{"a"}, {""}, {"b"}}},
        {"\"a;b\";c", {{"a;b", "c"}}},
        {"\"a\"\"b\"", {{"a\"b"}}},
        {"\"\";\"\"", {{"", ""}}},
        {"\"\"\"\"", {{"\""}}},
        {"\"a\r\nb\";c\r\nd", {{"a\r\nb", "c"}, {"d"}}},
        {"a\"b\"c;d", {{"a\"b\"c", "d"}}},
        {"\"a\"b\"c;d", {{"ab\"c", "d"}}},
        {" \"a\"", {{" \"a\""}}},
        {"\xEF\xBB\xBF"
         "a;b",
         {{"a", "b"}}},
        {"\xEF\xBB\xBF", {}},
        {"\xEF\xBB\xBF\"a\"", {{"a"}}},
        {"a;\xEF\xBB\xBF", {{"a", "\xEF\xBB\xBF"}}},
        {"ñ;€;😀", {{"ñ", "€", "😀"}}},
    };
    for (const auto& caso : casos) {
        // Los bloques pequeños ponen cada corte en cada sitio.
        for (const std::size_t bloque : {4U, 5U, 7U, 65536U}) {
            const Leido leido = leer(caso.bytes, kCsv, bloque);
            EXPECT_EQ(leido.registros, caso.registros) << caso.bytes << " de " << bloque;
            EXPECT_EQ(leido.error, "") << caso.bytes << " de " << bloque;
        }
    }
}

TEST(LectorCampos, LeerTsvSinComillas) {
    EXPECT_EQ(leer("\"a\tb\"\r\n\tc", kTsv).registros, (Registros{{"\"a", "b\""}, {"", "c"}}));
    EXPECT_EQ(leer("a;b,c\n", kTsv).registros, (Registros{{"a;b,c"}}));
}

TEST(LectorCampos, RechazarLoQueNoEsTexto) {
    const struct {
        std::string bytes;
        std::string error;
    } casos[] = {
        {"\"abc", "línea 1: unas comillas no se cierran"},
        {"a;b\n\"c\nd\"\nx;\"e\nf", "línea 4: unas comillas no se cierran"},
        {"\"", "línea 1: unas comillas no se cierran"},
        {"\"a\"\"", "línea 1: unas comillas no se cierran"},
        {std::string("a;b\0c", 5), "no es un archivo de texto"},
        {std::string("a;\"b\n\0\"", 7), "no es un archivo de texto"},
        {std::string("MRNL\1\0\0\0", 8), "no es un archivo de texto"},
        {std::string("\xFF\xFE"
                     "a\0",
                     4),
         "está en UTF-16; guárdelo en UTF-8"},
        {std::string("\xFE\xFF\0a", 4), "está en UTF-16; guárdelo en UTF-8"},
    };
    for (const auto& caso : casos) {
        for (const std::size_t bloque : {4U, 65536U}) {
            EXPECT_EQ(leer(caso.bytes, kCsv, bloque).error, caso.error) << caso.bytes;
        }
    }
}

TEST(LectorCampos, LimitarLoQueOcupaUnCampo) {
    const std::string justo(LectorCampos::kMaximoCampo, 'x');
    EXPECT_EQ(leer(justo, kCsv).registros, (Registros{{justo}}));
    EXPECT_EQ(leer("a\n" + justo + "x", kCsv).error, "línea 2: un campo pasa de 16 MiB");
    EXPECT_EQ(leer("\"" + justo + "x\"", kCsv).error, "línea 1: un campo pasa de 16 MiB");
    // Muchos campos en una línea no son un campo grande.
    EXPECT_EQ(leer(std::string(1'000'000, ';'), kCsv).registros.front().size(), 1'000'001U);
}

TEST(LectorCampos, LeerComoWindows1252LoQueNoEsUtf8) {
    const Leido leido = leer("Espa\xF1"
                             "a;\x80 5;\xC3\xB1\xE9;ñ\n",
                             kCsv);
    EXPECT_EQ(leido.registros, (Registros{{"España", "€ 5", "Ã±é", "ñ"}}));
    EXPECT_TRUE(leido.windows1252);
    EXPECT_FALSE(leer("España", kCsv).windows1252);
}

TEST(LectorCampos, DecirQueFallaElOrigen) {
    std::istringstream origen("a;b");
    origen.setstate(std::ios::badbit);
    LectorCampos lector(origen);
    consola::Campo campo;
    EXPECT_EQ(lector.siguiente(campo), LectorCampos::Lectura::Error);
    EXPECT_EQ(lector.error(), "falla la lectura");
}

TEST(EscritorCampos, PonerComillasDondeHacenFalta) {
    const struct {
        Registros registros;
        Dialecto dialecto;
        std::string bytes;
    } casos[] = {
        {{}, kCsv, ""},
        {{{""}}, kCsv, "\n"},
        {{{"a", "b"}, {"c"}}, kCsv, "a;b\nc\n"},
        {{{"a;b", "1,5"}}, kCsv, "\"a;b\";1,5\n"},
        {{{"a;b", "1,5"}}, kComas, "a;b,\"1,5\"\n"},
        {{{"di \"hola\""}}, kCsv, "\"di \"\"hola\"\"\"\n"},
        {{{"a\nb", "c\rd"}}, kCsv, "\"a\nb\";\"c\rd\"\n"},
        {{{"=SUMA(A1;A2)", "+1", "-1", "@x"}}, kCsv, "\"=SUMA(A1;A2)\";+1;-1;@x\n"},
        {{{"\xEF\xBB\xBF", "\xEF\xBB\xBF"}}, kCsv, "\"\xEF\xBB\xBF\";\xEF\xBB\xBF\n"},
        {{{"a\tb", "c\nd", "\"e\""}}, kTsv, "a b\tc d\t\"e\"\n"},
        {{{"\xEF\xBB\xBF"
           "a",
           "\xEF\xBB\xBF"}},
         kTsv,
         "\xEF\xBB\xBF\xEF\xBB\xBF"
         "a\t\xEF\xBB\xBF\n"},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(escribir(caso.registros, caso.dialecto), caso.bytes);
    }
}

TEST(EscritorCampos, ContarLosCamposQueCambia) {
    std::ostringstream destino;
    consola::EscritorCampos escritor(destino, kTsv);
    for (const char* texto : {"a", "b\tc", "d\r\ne", "f"}) {
        escritor.campo(texto);
    }
    EXPECT_EQ(escritor.camposCambiados(), 2);
    EXPECT_TRUE(escritor.terminar());
    EXPECT_EQ(destino.str(), "a\tb c\td  e\tf");
}

TEST(EscritorCampos, DecirQueElDestinoNoAdmiteMas) {
    std::ostringstream destino;
    destino.setstate(std::ios::badbit);
    consola::EscritorCampos escritor(destino, kCsv);
    escritor.campo("a");
    EXPECT_FALSE(escritor.terminar());
    EXPECT_FALSE(escritor.bien());
}

TEST(Campos, LoEscritoSeLeeIgual) {
    std::mt19937 azar(20261121);
    const auto hasta = [&azar](int maximo) {
        return static_cast<int>(azar() % static_cast<unsigned>(maximo + 1));
    };
    const std::vector<std::string> trozos{"\"", ";", ",", "\n", "\r", "\r\n", " ",   "a",
                                          "ñ",  "😀", "=", "\t", "'",  "12,5", "\"\""};
    for (int vuelta = 0; vuelta < 3000; ++vuelta) {
        Registros registros(static_cast<std::size_t>(hasta(4)));
        for (auto& registro : registros) {
            registro.resize(static_cast<std::size_t>(hasta(3)) + 1);
            for (std::string& texto : registro) {
                for (int i = hasta(4); i > 0; --i) {
                    texto += trozos[static_cast<std::size_t>(
                        hasta(static_cast<int>(trozos.size()) - 1))];
                }
            }
        }
        const Dialecto dialecto{";,\t|"[hasta(3)], true};
        const std::string bytes = escribir(registros, dialecto);
        const Leido leido = leer(bytes, dialecto, static_cast<std::size_t>(4 + hasta(20)));
        ASSERT_EQ(leido.registros, registros) << "vuelta " << vuelta << "\n" << bytes;
        ASSERT_EQ(leido.error, "") << bytes;
    }
}

TEST(Campos, NingunosBytesRompenLaLectura) {
    std::mt19937 azar(7);
    for (int vuelta = 0; vuelta < 3000; ++vuelta) {
        std::string bytes(azar() % 60, '\0');
        for (char& c : bytes) {
            c = azar() % 3 == 0 ? "\";,\n\r\t"[azar() % 6] : static_cast<char>(azar() % 256);
        }
        for (const Dialecto& dialecto : {kCsv, kTsv, kComas}) {
            const Leido entero = leer(bytes, dialecto);
            const Leido partido = leer(bytes, dialecto, 4);
            if (entero.error.empty() || partido.error.empty()) {
                EXPECT_EQ(entero.registros, partido.registros) << vuelta;
                EXPECT_EQ(entero.error, partido.error) << vuelta;
            }
            for (const auto& registro : entero.registros) {
                for (const std::string& texto : registro) {
                    EXPECT_TRUE(consola::esUtf8(texto)) << vuelta;
                }
            }
        }
    }
}

TEST(Dialecto, ReconocerElSeparador) {
    const struct {
        std::string comienzo;
        char separador;
    } casos[] = {
        {"", ';'},
        {"hola\n", ';'},
        {"a;b;c\n", ';'},
        {"a,b,c\n1,2,3\n", ','},
        {"a,b", ','},
        {"nombre;precio\npan;1,25\nleche;0,99\n", ';'},
        {"1,5;2,5\n3,5;4,5\n", ';'},
        {"a,b;c\nd,e\n", ','},
        {"\"a;b\",c\nd,e\n", ','},
        {"\"a,b\n,c\";d\ne;f\n", ';'},
        {"título\na;b\n", ';'},
        {"título\na,b\n", ';'},
        {"a,b\r\nc,d\r\n\r\n", ','},
        {"a,b,c\nd,e,f\ng,h", ','},
        {"a,b\nc;d\n", ','},
        {"a;b,c\nd\n", ';'},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(consola::detectarSeparador(caso.comienzo), caso.separador) << caso.comienzo;
    }
}

TEST(Dialecto, AdmitirSoloSeparadoresQueNoConfunden) {
    for (const char* texto : {";", ",", "|", ":", " "}) {
        EXPECT_EQ(consola::separadorPedido(texto), texto[0]);
    }
    for (const char* texto : {"tab", "\\t", "\t"}) {
        EXPECT_EQ(consola::separadorPedido(texto), '\t');
    }
    for (const char* texto : {"", ";;", "\"", "\n", "\r", "a", "5", "-", "=", ".", "ñ"}) {
        EXPECT_EQ(consola::separadorPedido(texto), std::nullopt) << texto;
    }
}

} // namespace
