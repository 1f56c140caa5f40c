// Promesas de guardar y cargar:
//  1. Los bytes se componen en memoria antes de abrir el destino: si falta memoria, el archivo que
//     hubiera sigue intacto.
//  2. El destino se sobrescribe en su sitio. Un fallo al escribir, vaciar, sincronizar o cerrar da
//     `kArchivoNoSeEscribe` y puede dejar un archivo truncado.
//  3. Guardar nunca cambia el libro.
//  4. Un archivo se lee en hojas nuevas; el libro solo cambia cuando todas se han leído.
//  5. Si el archivo no abre, el libro queda como estaba; si abre y no vale, o falta memoria, queda
//     reiniciado, y reiniciarlo no pide memoria.

#include "model/serializador.h"

#include "model/archivo_libro.h"
#include "model/formato_archivo.h"

#include <new>
#include <utility>

namespace nucleo {

namespace {

/// Lo que responde `tarea`, o falso si falta memoria.
template <typename Tarea> bool siHayMemoria(Tarea&& tarea) {
    try {
        return tarea();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// Escribe en el flujo lo que `componer` deja en un EscritorBytes.
template <typename Componer> bool escribirEn(std::FILE* archivo, Componer&& componer) {
    return siHayMemoria([&] {
        EscritorBytes salida;
        componer(salida);
        return std::fwrite(salida.datos(), 1, salida.tamano(), archivo) == salida.tamano();
    });
}

/// Lo que responde `leer` con un lector que no consume de más.
template <typename Leer> bool leerDe(std::FILE* archivo, Leer&& leer) {
    return siHayMemoria([&] {
        LectorBytes entrada(archivo, LectorBytes::Modo::Justo);
        return leer(entrada);
    });
}

} // namespace

ResultadoArchivo Serializador::guardar(const Libro& libro, const std::string& ruta) {
    EscritorBytes salida;
    if (!componerLibro(libro, salida))
        return kArchivoNoSeEscribe;
    Archivo archivo = abrirParaEscribir(ruta);
    if (!archivo)
        return kArchivoNoAbre;
    return volcarYCerrar(std::move(archivo), salida.datos(), salida.tamano()) ? kArchivoBien
                                                                              : kArchivoNoSeEscribe;
}

ResultadoArchivo Serializador::cargar(const std::string& ruta, Libro& libro) {
    return cargarLibro(abrirParaLeer(ruta, Enlaces::Seguir), ruta, libro);
}

bool Serializador::escribirString(std::FILE* archivo, const std::string& texto) {
    return escribirEn(archivo, [&](EscritorBytes& salida) { escribirTexto(salida, texto); });
}

bool Serializador::escribirHoja(std::FILE* archivo, const Hoja& hoja) {
    return escribirEn(archivo, [&](EscritorBytes& salida) { escribirRegistroHoja(salida, hoja); });
}

bool Serializador::escribirCelda(std::FILE* archivo, std::uint64_t clave, const Celda& celda) {
    return escribirEn(archivo,
                      [&](EscritorBytes& salida) { escribirRegistroCelda(salida, clave, celda); });
}

bool Serializador::leerString(std::FILE* archivo, std::string& texto) {
    return leerDe(archivo, [&](LectorBytes& entrada) { return leerTextoContado(entrada, texto); });
}

bool Serializador::leerHoja(std::FILE* archivo, Hoja& hoja, std::uint32_t /*version*/) {
    return leerDe(archivo, [&](LectorBytes& entrada) { return leerRegistroHoja(entrada, hoja); });
}

bool Serializador::leerCelda(std::FILE* archivo, Hoja& hoja, std::uint32_t /*version*/) {
    return leerDe(archivo, [&](LectorBytes& entrada) {
        AlmacenCeldas aparte; // un registro a medias no debe llegar a la hoja
        AlmacenCeldas::Anexador celdas(aparte);
        if (!leerRegistroCelda(entrada, celdas))
            return false;
        celdas.terminar();
        aparte.recorrer([&](std::uint64_t clave, const Celda& celda) {
            hoja.celdas.insert_or_assign(clave, celda);
        });
        return true;
    });
}

} // namespace nucleo
