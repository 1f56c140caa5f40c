// Un libro con un campo cambiado por otro valor, o cortado, se rechaza o se puede usar, y cargarlo
// no pide más memoria de la que su peso merece.

#include "formula/motor.h"
#include "tests/comun/comprobar_libro.h"
#include "tests/comun/memoria.h"
#include "tests/comun/plano_archivo.h"
#include "tests/confianza/libro_usado.h"
#include "tests/model/libros_ejemplo.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace {

using prueba::cargarBytes;
using prueba::guardarEnBytes;

/// Lo que piden de fijo el lector y las tablas de quien calcula.
constexpr std::ptrdiff_t kDeFijo = 512 * 1024;
/// Por byte del archivo: un registro diminuto puede ocupar un nodo en memoria.
constexpr std::ptrdiff_t kPorByte = 16;

/// Un libro con fórmulas que se leen, una fusión, tamaños y paneles.
std::string libroCorriente() {
    nucleo::Libro libro;
    motor_formulas::Motor motor(libro);
    libro.agregarHoja();
    const std::pair<const char*, const char*> filas[] = {
        {"Artículo", "Precio"},    {"Pan", "$ 2,50"},     {"Leche", "1,2"},
        {"Total", "=SUMA(B2:B3)"}, {"Fecha", "1/2/2024"}, {"Doble", "='Hoja 2'!A1*B4"},
    };
    int fila = 0;
    for (const auto& [a, b] : filas) {
        motor.establecerCelda(0, fila, 0, a);
        motor.establecerCelda(0, fila++, 1, b);
    }
    motor.establecerCelda(1, 0, 0, "=B9+1");
    nucleo::Hoja& hoja = *libro.hojas[0];
    hoja.fusionar(7, 0, 8, 2);
    hoja.anchos[1] = 120;
    hoja.altos[3] = 40;
    hoja.filasInmovilizadas = 1;
    hoja.columnasInmovilizadas = 1;
    return guardarEnBytes(libro);
}

/// Carga y calcula los bytes contando la memoria; lo que se deja cargar, se usa.
void probar(const std::string& bytes, const std::string& que, int& cargados) {
    nucleo::Libro libro;
    {
        const prueba::MemoriaPedida memoria;
        const nucleo::ResultadoArchivo resultado = cargarBytes(bytes, libro);
        if (resultado == nucleo::kArchivoBien)
            motor_formulas::Motor(libro).recalcularTodo();
        ASSERT_LE(memoria.pico(), kDeFijo + kPorByte * static_cast<std::ptrdiff_t>(bytes.size()))
            << que;
        if (resultado != nucleo::kArchivoBien) {
            ASSERT_EQ(resultado, nucleo::kArchivoInvalido) << que;
            ASSERT_TRUE(prueba::estaReiniciado(libro)) << que;
            return;
        }
    }
    ++cargados;
    ASSERT_EQ(prueba::usarLibro(libro), "") << que;
}

TEST(ArchivosRotos, CadaCampoDeUnLibroConCadaValorExtremo) {
    const std::string bueno = libroCorriente();
    int cargados = 0;
    for (const prueba::Campo& campo : prueba::Plano(bueno).campos) {
        for (const std::uint64_t valor : prueba::valoresExtremos(campo)) {
            probar(prueba::conValor(bueno, campo, valor),
                   std::string(campo.que) + " en " + std::to_string(campo.donde) + " = " +
                       std::to_string(valor),
                   cargados);
            ASSERT_FALSE(HasFatalFailure());
        }
    }
    EXPECT_GT(cargados, 500) << "los valores raros que no son cuentas se conservan";
}

TEST(ArchivosRotos, CortadoEnCadaByte) {
    const std::string bueno = libroCorriente();
    int cargados = 0;
    for (std::size_t largo = 0; largo < bueno.size(); ++largo) {
        probar(bueno.substr(0, largo), "cortado en " + std::to_string(largo), cargados);
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_EQ(cargados, 0);
}

TEST(ArchivosRotos, LosDeReferenciaSeUsan) {
    int cargados = 0;
    for (int n = 0; n < prueba::kLibrosDeReferencia; ++n)
        probar(guardarEnBytes(prueba::libroDeReferencia(n)), "libro " + std::to_string(n),
               cargados);
    EXPECT_EQ(cargados, prueba::kLibrosDeReferencia);
}

/// La petición de memoria que falla, al cargar o al calcular, deja el libro reiniciado y el motor
/// listo para otro.
TEST(ArchivosRotos, FaltaMemoriaAlAbrir) {
    const std::string bytes = libroCorriente();
    for (const auto cual :
         {prueba::FaltaDeMemoria::Cual::SoloUna, prueba::FaltaDeMemoria::Cual::DesdeEntonces}) {
        bool ocurrio = true;
        for (int n = 1; ocurrio; ++n) {
            nucleo::Libro libro;
            motor_formulas::Motor motor(libro);
            bool abierto = false;
            {
                const prueba::FaltaDeMemoria falta(n, cual);
                abierto =
                    cargarBytes(bytes, libro) == nucleo::kArchivoBien && motor.recalcularCargado();
                ocurrio = falta.ocurrio();
            }
            ASSERT_EQ(abierto, !ocurrio) << "petición " << n;
            if (ocurrio) {
                ASSERT_TRUE(prueba::estaReiniciado(libro)) << "petición " << n;
                ASSERT_EQ(cargarBytes(bytes, libro), nucleo::kArchivoBien);
                ASSERT_TRUE(motor.recalcularCargado());
            }
            ASSERT_EQ(pruebas::defectoDelLibro(libro), "") << "petición " << n;
        }
    }
}

/// Los registros más pequeños en los sitios donde más memoria ocupa cada uno.
TEST(ArchivosRotos, RegistrosDiminutosYDispersos) {
    constexpr int kRegistros = 30000;
    std::vector<std::pair<const char*, nucleo::Libro>> libros;
    const auto nuevo = [&](const char* que) -> nucleo::Hoja& {
        libros.emplace_back(que, nucleo::Libro());
        return *libros.back().second.hojas[0];
    };
    nucleo::Hoja& separadas = nuevo("una celda en cada bloque");
    for (int i = 0; i < kRegistros; ++i)
        separadas.celdaMut(i * 64 % 65536, i / 1024);
    nucleo::Hoja& columnas = nuevo("una celda en cada columna y tramo");
    for (int i = 0; i < 32 * 702; ++i)
        columnas.celdaMut(i % 32 * 2048, i / 32);
    nucleo::Hoja& fuera = nuevo("celdas fuera de la cuadrícula");
    for (int i = 0; i < kRegistros; ++i)
        fuera.celdas[nucleo::claveLocal(70000 + 977 * i, 800 + i)];
    nucleo::Hoja& tamanos = nuevo("tamaños de filas que no existen");
    for (int i = 0; i < kRegistros; ++i)
        tamanos.altos[-977 * i] = 1;
    nucleo::Hoja& formulas = nuevo("fórmulas de dos letras");
    for (int i = 0; i < kRegistros; ++i) {
        nucleo::Celda& celda = formulas.celdaMut(i * 64 % 65536, i / 1024);
        celda.tipo = nucleo::TipoCelda::Formula;
        celda.entrada = "=A1";
    }
    libros.emplace_back("hojas vacías", nucleo::Libro());
    while (libros.back().second.hojas.size() < 1024)
        libros.back().second.agregarHoja();
    for (const auto& [que, libro] : libros) {
        nucleo::Libro leido;
        const std::string bytes = guardarEnBytes(libro);
        const prueba::MemoriaPedida memoria;
        ASSERT_EQ(cargarBytes(bytes, leido), nucleo::kArchivoBien) << que;
        const std::ptrdiff_t alCargar = memoria.pico();
        EXPECT_LE(alCargar, kDeFijo + kPorByte * static_cast<std::ptrdiff_t>(bytes.size())) << que;
    }
}

} // namespace

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication aplicacion(argc, argv);
    return RUN_ALL_TESTS();
}
