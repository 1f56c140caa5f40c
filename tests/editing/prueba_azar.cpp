#include "editing/editor.h"
#include "formula/motor.h"
#include "model/direcciones.h"
#include "model/libro.h"
#include "model/serializador.h"
#include "tests/comun/carpeta_temporal.h"
#include "tests/comun/comprobar_libro.h"
#include "tests/editing/libro_llano.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <set>
#include <string>

namespace pruebas {

namespace {

constexpr int kFilas = 12;
constexpr int kColumnas = 8;

/// Un libro pequeño de varias hojas sobre el que se hacen operaciones al azar; cada una se compara
/// con lo que el historial llano dice que debía pasar.
class Azar {
  public:
    explicit Azar(unsigned semilla) : azar_(semilla) {
        libro_.agregarHoja();
        libro_.agregarHoja();
        presente_ = {copiaLlana(libro_), 0, {}, {}};
        for (int i = 0; i < 3; ++i)
            presente_.ejes.push_back(llano_.ejesNuevos());
    }

    void paso() {
        Foto antes = presente_;
        const bool registra = operar();
        antes.seleccion = seleccionAlOperar_;
        EXPECT_EQ(defectoDelLibro(libro_), "") << ultima_;
        asentarCirculos();
        fotografiar();
        if (registra)
            llano_.registrar(antes);
        comprobar(ultima_);
        // Ida y vuelta por el paso que hay.
        if (registra) {
            deshacer();
            rehacer();
        }
    }

    /// Va hasta el principio del historial y vuelve.
    void recorrerHistorial() {
        int pasos = 0;
        while (llano_.pasosDeshacer() > 0 && !testing::Test::HasFailure()) {
            deshacer();
            ++pasos;
        }
        while (pasos-- > 0 && !testing::Test::HasFailure())
            rehacer();
    }

    void guardarYCargar() {
        for (const auto& hoja : libro_.hojas) {
            std::unique_ptr<std::FILE, int (*)(std::FILE*)> archivo(std::tmpfile(), &std::fclose);
            ASSERT_TRUE(nucleo::Serializador::escribirHoja(archivo.get(), *hoja));
            std::rewind(archivo.get());
            nucleo::Hoja leida;
            ASSERT_TRUE(nucleo::Serializador::leerHoja(archivo.get(), leida, 1));
            EXPECT_EQ(diferencia(sinValores(copiaLlana(leida)), sinValores(copiaLlana(*hoja))), "");
            EXPECT_EQ(leida.altos, hoja->altos);
            EXPECT_EQ(leida.anchos, hoja->anchos);
        }
    }

    /// El libro entero, por un archivo de verdad, con sus valores recalculados.
    void guardarYAbrir() {
        const CarpetaTemporal carpeta;
        const std::string ruta = carpeta.ruta("libro.mrn");
        ASSERT_EQ(nucleo::Serializador::guardar(libro_, ruta), nucleo::kArchivoBien);
        nucleo::Libro abierto;
        ASSERT_EQ(nucleo::Serializador::cargar(ruta, abierto), nucleo::kArchivoBien);
        motor_formulas::Motor(abierto).recalcularTodo();
        ASSERT_EQ(abierto.hojas.size(), libro_.hojas.size());
        for (std::size_t i = 0; i < abierto.hojas.size(); ++i)
            EXPECT_EQ(diferencia({*abierto.hojas[i]}, {*libro_.hojas[i]}), "");
    }

    const std::string& ultima() const { return ultima_; }

  private:
    int hasta(int n) { return std::uniform_int_distribution<int>(0, n - 1)(azar_); }

    std::string ref() {
        std::string texto = hasta(6) == 0 ? "$" : "";
        texto += nucleo::nombreColumna(hasta(kColumnas));
        texto += hasta(6) == 0 ? "$" : "";
        return texto + std::to_string(1 + hasta(kFilas));
    }

    std::string prefijo() {
        if (hasta(4) != 0)
            return {};
        const std::string& nombre =
            libro_.hojas[static_cast<std::size_t>(hasta(static_cast<int>(libro_.hojas.size())))]
                ->nombre;
        return "'" + nombre + "'!";
    }

    std::string texto() {
        const char* literales[] = {"1",    "2,5", "-7",       "12%",   "$ 30",     "x",
                                   "hola", "=",   "1/2/2020", "ñandú", "1.000,25", "=1+"};
        switch (hasta(9)) {
        case 0:
            return "=" + prefijo() + ref() + "+" + ref();
        case 1:
            return "=SUMA(" + prefijo() + ref() + ":" + ref() + ")";
        case 2:
            return "=" + ref() + "*2-" + prefijo() + ref();
        case 3:
            return "=" + ref() + "&\"A1\"&" + ref();
        case 4:
            return hasta(3) == 0 ? "" : "=MAX(" + ref() + ":" + ref() + ";1)";
        default:
            return literales[hasta(12)];
        }
    }

    nucleo::Hoja& activa() { return *libro_.hojas[static_cast<std::size_t>(libro_.hojaActiva)]; }
    Foto::Ejes& ejesActivos() {
        return presente_.ejes[static_cast<std::size_t>(libro_.hojaActiva)];
    }

    void seleccionar() {
        editor_.seleccionar(hasta(kFilas), hasta(kColumnas));
        switch (hasta(12)) {
        case 0:
            editor_.seleccionarTodo();
            break;
        case 1:
            editor_.seleccionarFila(hasta(kFilas));
            break;
        case 2:
            editor_.seleccionarColumna(hasta(kColumnas));
            break;
        case 3:
        case 4:
            break;
        default:
            editor_.extender(editor_.seleccion().anclaFila + hasta(7) - 3,
                             editor_.seleccion().anclaCol + hasta(7) - 3);
        }
    }

    void acortarSeleccion() {
        const editor::Seleccion& s = editor_.seleccion();
        editor_.seleccionar(std::min(s.filaMin(), kFilas), std::min(s.colMin(), kColumnas));
        editor_.extender(s.anclaFila + hasta(2), s.anclaCol + hasta(2));
        seleccionAlOperar_ = s;
    }

    void insertarEnEjes(bool filas, int desde, int cantidad) {
        llano_.insertar(ejesActivos(), filas, desde, cantidad);
    }
    void eliminarDeEjes(bool filas, int desde, int cantidad) {
        llano_.eliminar(ejesActivos(), filas, desde, cantidad);
    }

    /// Hace una operación; verdadero si debe dejar un paso en el historial.
    bool operar() {
        seleccionar();
        seleccionAlOperar_ = editor_.seleccion();
        const nucleo::RangoCeldas rango = editor_.seleccion().rango();
        const int operacion = hasta(30);
        ultima_ = "operación " + std::to_string(operacion) + " en " +
                  nucleo::nombreRef(rango.fila1, rango.col1) + ":" +
                  nucleo::nombreRef(rango.fila2, rango.col2);
        switch (operacion) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
            return escribir(hasta(kFilas), hasta(kColumnas), texto());
        case 6:
            return escribir(nucleo::kUltimaFila - hasta(3), nucleo::kUltimaColumna - hasta(3),
                            std::to_string(hasta(100)));
        case 7:
        case 8:
            editor_.copiar();
            return false;
        case 9:
        case 10:
        case 11: {
            const bool hay = editor_.hayCeldasCopiadas();
            editor_.pegar();
            return hay;
        }
        case 12: {
            std::string texto1 = texto() + "\t" + texto() + "\r\n\t" + texto() + "\n" + texto();
            editor_.pegarTSV(texto1);
            return true;
        }
        case 13:
            editor_.borrarSeleccion();
            return true;
        case 14:
            editor_.cortar();
            return true;
        case 15:
        case 16: {
            if (editor_.fusionarSeleccion())
                return true;
            if (rango.celdas() > 1)
                llano_.olvidarRehacer();
            return false;
        }
        case 17:
            return editor_.separarFusion();
        case 18: {
            const bool tocaFusion = activa().fusionQueToca(rango) != nullptr;
            editor_.ordenarSeleccion(hasta(2) == 0);
            return rango.celdas() > 1 && !tocaFusion;
        }
        case 19: {
            const int fila = hasta(kFilas), cantidad = 1 + hasta(3);
            insertarEnEjes(true, fila, cantidad);
            editor_.insertarFilas(fila, cantidad);
            return true;
        }
        case 20: {
            const int fila = hasta(kFilas), cantidad = 1 + hasta(3);
            eliminarDeEjes(true, fila, cantidad);
            editor_.eliminarFilas(fila, cantidad);
            return true;
        }
        case 21: {
            const int col = hasta(kColumnas), cantidad = 1 + hasta(2);
            insertarEnEjes(false, col, cantidad);
            editor_.insertarColumnas(col, cantidad);
            return true;
        }
        case 22: {
            const int col = hasta(kColumnas), cantidad = 1 + hasta(2);
            eliminarDeEjes(false, col, cantidad);
            editor_.eliminarColumnas(col, cantidad);
            return true;
        }
        case 23:
        case 24:
            return menu();
        case 25:
            return estilo();
        case 26:
        case 27:
            redimensionar();
            return false;
        case 28:
            laVentana();
            return false;
        default: {
            presente_.seleccion = editor_.seleccion();
            const bool atras = hasta(2) == 0;
            const bool habia = atras ? llano_.deshacer(presente_) : llano_.rehacer(presente_);
            atras ? editor_.deshacer() : editor_.rehacer();
            if (habia)
                comprobar(atras ? "deshacer" : "rehacer");
            return false;
        }
        }
    }

    bool escribir(int fila, int col, const std::string& texto) {
        ultima_ += ", " + nucleo::nombreRef(fila, col) + " := " + texto;
        const nucleo::RangoFusion* fusion = activa().fusionEn(fila, col);
        const nucleo::Celda* celda =
            fusion ? activa().celda(fusion->fila1, fusion->col1) : activa().celda(fila, col);
        const bool cambia = celda ? celda->entrada != texto : !texto.empty();
        editor_.establecerContenido(fila, col, texto);
        return cambia;
    }

    bool menu() {
        acortarSeleccion();
        const nucleo::RangoCeldas rango = editor_.seleccion().rango();
        const int filas = rango.fila2 - rango.fila1 + 1;
        const int columnas = rango.col2 - rango.col1 + 1;
        const char* ids[] = {"insertar_fila_arriba", "insertar_fila_abajo", "insertar_col_izq",
                             "insertar_col_der",     "eliminar_filas",      "eliminar_cols"};
        const int cual = hasta(6);
        ultima_ += std::string(", ") + ids[cual];
        switch (cual) {
        case 0:
            insertarEnEjes(true, rango.fila1, filas);
            break;
        case 1:
            insertarEnEjes(true, rango.fila2 + 1, filas);
            break;
        case 2:
            insertarEnEjes(false, rango.col1, columnas);
            break;
        case 3:
            insertarEnEjes(false, rango.col2 + 1, columnas);
            break;
        case 4:
            eliminarDeEjes(true, rango.fila1, filas);
            break;
        default:
            eliminarDeEjes(false, rango.col1, columnas);
            break;
        }
        EXPECT_TRUE(editor_.ejecutarAccionMenu(ids[cual]));
        return true;
    }

    bool estilo() {
        acortarSeleccion();
        switch (hasta(5)) {
        case 0:
            editor_.alternarNegrita();
            break;
        case 1:
            editor_.aplicarFormato(static_cast<nucleo::FormatoNumero>(hasta(5)));
            break;
        case 2:
            editor_.cambiarDecimales(hasta(5) - 2);
            break;
        case 3:
            editor_.aplicarColorFondo(static_cast<unsigned>(hasta(3)));
            break;
        default:
            editor_.aplicarAlineacion(nucleo::AlineacionH::Centro);
            break;
        }
        return true;
    }

    void redimensionar() {
        const bool fila = hasta(2) == 0;
        const int indice = hasta(fila ? kFilas : kColumnas);
        const int tamano = 20 + hasta(300);
        llano_.redimensionar(ejesActivos(), fila, indice, tamano);
        if (fila)
            editor_.redimensionarFila(indice, tamano);
        else
            editor_.redimensionarColumna(indice, tamano);
    }

    /// Lo que la ventana cambia sin pasar por el editor.
    void laVentana() {
        const int cuantas = static_cast<int>(libro_.hojas.size());
        switch (hasta(5)) {
        case 0:
            if (cuantas < 5) {
                libro_.agregarHoja();
                presente_.ejes.push_back(llano_.ejesNuevos());
            }
            break;
        case 1: {
            const int cual = hasta(cuantas);
            if (libro_.eliminarHoja(cual)) {
                presente_.ejes.erase(presente_.ejes.begin() + cual);
                motor_.recalcularTodo();
                editor_.seleccionar(0, 0);
            }
            break;
        }
        case 2:
            motor_.renombrarHoja(hasta(cuantas), "Hoja " + std::to_string(1 + hasta(6)));
            break;
        case 3:
            activa().filasInmovilizadas = hasta(3);
            break;
        default:
            libro_.hojaActiva = hasta(cuantas);
            editor_.seleccionar(0, 0);
        }
    }

    /// Con un ciclo a la vista, lo que se acaba de escribir detrás puede mostrar otra cosa que tras
    /// deshacer y rehacer, que recalculan todo: se recalcula también ahora.
    void asentarCirculos() {
        const nucleo::Valor circular = nucleo::Valor::deError(nucleo::ErrorCelda::Circular);
        for (const auto& hoja : libro_.hojas) {
            for (const auto& [clave, celda] : hoja->celdas) {
                if (celda.valor == circular) {
                    motor_.recalcularTodo();
                    return;
                }
            }
        }
    }

    void fotografiar() {
        presente_.hojas = copiaLlana(libro_);
        presente_.hojaActiva = libro_.hojaActiva;
        presente_.seleccion = editor_.seleccion();
    }

    void deshacer() {
        llano_.deshacer(presente_);
        editor_.deshacer();
        comprobar("deshacer, tras la " + ultima_);
    }
    void rehacer() {
        llano_.rehacer(presente_);
        editor_.rehacer();
        comprobar("rehacer, tras la " + ultima_);
    }

    /// El libro es el de la foto presente, con los tamaños que tocan, y cumple sus invariantes.
    void comprobar(const std::string& cuando) {
        SCOPED_TRACE(cuando);
        ASSERT_EQ(libro_.hojas.size(), presente_.hojas.size());
        for (std::size_t i = 0; i < libro_.hojas.size(); ++i) {
            const nucleo::Hoja& hoja = *libro_.hojas[i];
            EXPECT_EQ(diferencia(copiaLlana(hoja), presente_.hojas[i]), "");
            const auto ordenados = [](const nucleo::MapaTamanos& tamanos) {
                return std::map<int, int>(tamanos.begin(), tamanos.end());
            };
            EXPECT_EQ(ordenados(hoja.altos), llano_.tamanos(presente_.ejes[i], true)) << i;
            EXPECT_EQ(ordenados(hoja.anchos), llano_.tamanos(presente_.ejes[i], false)) << i;
        }
        EXPECT_EQ(libro_.hojaActiva, presente_.hojaActiva);
        EXPECT_EQ(editor_.seleccion(), presente_.seleccion);
        EXPECT_EQ(editor_.pasosDeshacer(), llano_.pasosDeshacer());
        EXPECT_EQ(editor_.pasosRehacer(), llano_.pasosRehacer());
        EXPECT_EQ(defectoDelLibro(libro_), "");
    }

    static HojaLlana sinValores(HojaLlana hoja) {
        for (auto& [clave, celda] : hoja.celdas)
            celda.valor = {};
        return hoja;
    }

    std::mt19937 azar_;
    nucleo::Libro libro_;
    motor_formulas::Motor motor_{libro_};
    editor::Editor editor_{libro_, motor_};
    HistorialLlano llano_;
    Foto presente_;
    editor::Seleccion seleccionAlOperar_; ///< la que guarda el paso
    std::string ultima_;
};

class OperacionesAlAzar : public testing::TestWithParam<unsigned> {};

TEST_P(OperacionesAlAzar, CumplenLoQueElHistorialLlanoDice) {
    Azar azar(GetParam());
    for (int i = 0; i < 400; ++i) {
        azar.paso();
        azar.guardarYCargar();
        if (i % 40 == 39) {
            azar.recorrerHistorial();
            azar.guardarYAbrir();
        }
        ASSERT_FALSE(HasFailure()) << "paso " << i << ": " << azar.ultima();
    }
}

INSTANTIATE_TEST_SUITE_P(Semillas, OperacionesAlAzar, testing::Range(1U, 13U));

} // namespace

} // namespace pruebas
