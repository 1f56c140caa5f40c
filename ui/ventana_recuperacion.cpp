// El archivo de recuperación: cuándo se escribe, cuándo se ofrece y cuándo se borra.

#include "model/autosave.h"
#include "ui/cuadros.h"
#include "ui/espera.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QStatusBar>

#include <filesystem>

namespace interfaz {

namespace {

bool existe(const std::string& ruta) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(ruta, error));
}

/// Cambia de nombre un archivo de recuperación que no debe perderse. Falso si no se pudo.
bool apartar(const std::string& ruta) {
    constexpr int kNombresPosibles = 100;
    for (int i = 1; i <= kNombresPosibles; ++i) {
        const std::string destino = ruta + ".apartado" + std::to_string(i);
        if (!existe(destino)) {
            std::error_code error;
            std::filesystem::rename(ruta, destino, error);
            return !error;
        }
    }
    return false;
}

} // namespace

void VentanaPrincipal::actualizarRutaAutosave() {
    rutaAutosave_ = nucleo::Autosave::generarRuta(libro_.ruta);
    recuperacionPropia_ = false;
}

void VentanaPrincipal::ofrecerRecuperacion() {
    if (!nucleo::Autosave::hayPendiente(rutaAutosave_)) {
        return;
    }
    const auto respuesta = preguntar(this,
                                     QStringLiteral("Se encontró trabajo sin guardar de una sesión "
                                                    "anterior.\n¿Querés recuperarlo?"),
                                     QMessageBox::Yes | QMessageBox::No);
    if (respuesta == QMessageBox::NoButton) {
        return;
    }
    if (respuesta != QMessageBox::Yes) {
        nucleo::Autosave::descartar(rutaAutosave_);
        return;
    }
    const std::string rutaDocumento = libro_.ruta;
    nucleo::ResultadoArchivo resultado = nucleo::kArchivoBien;
    {
        const Espera espera(statusBar(), QStringLiteral("Recuperando el trabajo…"));
        resultado = nucleo::Autosave::cargar(rutaAutosave_, libro_);
        if (resultado == nucleo::kArchivoBien && !motor_.recalcularCargado()) {
            resultado = nucleo::kArchivoInvalido;
        }
        if (resultado == nucleo::kArchivoBien) {
            libro_.ruta = rutaDocumento;
            libro_.modificado = true;
            recuperacionPropia_ = true;
        } else {
            // El libro puede ser ya otro, vacío: el archivo dañado deja de ser suyo.
            actualizarRutaAutosave();
        }
        if (resultado != nucleo::kArchivoNoAbre) {
            olvidarDocumentoAnterior();
            refrescarTodo();
        }
    }
    if (resultado != nucleo::kArchivoBien) {
        advertir(this, QStringLiteral("No se pudo recuperar el trabajo sin guardar."));
    }
}

void VentanaPrincipal::guardarRecuperacion() {
    if (libro_.modificado && !cambiosDescartados_) {
        escribirRecuperacion();
    }
}

void VentanaPrincipal::ponerASalvo() {
    confirmarPendiente();
    guardarRecuperacion();
}

void VentanaPrincipal::escribirRecuperacion() {
    if (!recuperacionPropia_ && existe(rutaAutosave_) && !apartar(rutaAutosave_)) {
        return;
    }
    if (nucleo::Autosave::guardar(libro_, rutaAutosave_) == nucleo::kArchivoBien) {
        recuperacionPropia_ = true;
    }
}

void VentanaPrincipal::descartarRecuperacion() {
    if (recuperacionPropia_) {
        nucleo::Autosave::descartar(rutaAutosave_);
        recuperacionPropia_ = false;
    } else if (existe(rutaAutosave_)) {
        apartar(rutaAutosave_);
    }
}

} // namespace interfaz
